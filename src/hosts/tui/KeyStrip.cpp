#include "hosts/tui/KeyStrip.h"

#include "hosts/tui/Canvas.h"
#include "hosts/tui/CellScale.h"
#include "hosts/tui/TextFit.h"

#include "forms/CheckBox.h"
#include "forms/ComboBox.h"
#include "forms/CommandButton.h"
#include "forms/Form.h"
#include "forms/Label.h"
#include "forms/ListView.h"
#include "forms/Menu.h"
#include "forms/OptionButton.h"
#include "forms/Utf8.h"

#include "vb/Strings.h"

#include <algorithm>

namespace tui {

namespace {

using forms::ControlKind;

bool live(const forms::Control &c) {
    return c.effectivelyVisible() && c.effectivelyEnabled();
}

bool isList(const forms::Control &c) {
    return c.kind() == ControlKind::ListView || c.kind() == ControlKind::FlexGrid;
}

/// "Alt+N" for an access key.
std::string altKey(char32_t key) {
    return "Alt+" + vb::UCase(forms::utf8::encode(key));
}

/// A caption as a hint shows it: no "&", no trailing colon or blanks.
std::string actionOf(std::string_view caption) {
    std::string shown = vb::Trim(forms::displayCaption(caption));
    while (!shown.empty() && (shown.back() == ':' || shown.back() == ' ')) {
        shown.pop_back();
    }
    return shown;
}

std::string captionOf(const forms::Control &c) {
    switch (c.kind()) {
    case ControlKind::CommandButton:
        return static_cast<const forms::CommandButton &>(c).Caption();
    case ControlKind::Label:
        return static_cast<const forms::Label &>(c).Caption();
    case ControlKind::OptionButton:
        return static_cast<const forms::OptionButton &>(c).Caption();
    case ControlKind::CheckBox:
        return static_cast<const forms::CheckBox &>(c).Caption();
    default:
        return {};
    }
}

/// The controls of the form in the order they stand on it.
std::vector<const forms::Control *> byPosition(const forms::Form &form) {
    std::vector<const forms::Control *> out(form.controls().begin(), form.controls().end());
    std::stable_sort(out.begin(), out.end(), [](const auto *a, const auto *b) {
        TwipsRect ra = formTwips(*a);
        TwipsRect rb = formTwips(*b);
        // Controls whose tops differ by less than a row stand on one line.
        if (std::abs(ra.top - rb.top) >= 120) {
            return ra.top < rb.top;
        }
        return ra.left < rb.left;
    });
    return out;
}

/// The items of the form's popup menu (a top menu that is hidden, so it
/// shows only when code pops it up), or "" when it has none.
std::string popupItems(const forms::Form &form) {
    for (const forms::Control *c : form.controls()) {
        if (c->kind() != ControlKind::Menu) {
            continue;
        }
        const auto &menu = static_cast<const forms::Menu &>(*c);
        if (menu.parentMenu() || menu.Visible() || menu.items().empty()) {
            continue;
        }
        std::string items;
        for (const forms::Menu *item : menu.items()) {
            if (item->Visible()) {
                items += (items.empty() ? "" : "/") + actionOf(item->Caption());
            }
        }
        return items;
    }
    return {};
}

bool columnsWiderThanList(const forms::ListView &list) {
    int total = 0;
    for (const forms::ColumnHeader *h : list.ColumnHeaders().inDisplayOrder()) {
        total += std::max(0, h->Width());
    }
    return total > list.Width();
}

/// Where the Tab-order text of a tool tip names a function key: "F3".
std::string functionKeyIn(std::string_view tip) {
    auto at = tip.find("Shortcut: F");
    if (at == std::string_view::npos) {
        return {};
    }
    std::string_view rest = tip.substr(at + 10);
    std::size_t n = 1;
    while (n < rest.size() && n < 3 && rest[n] >= '0' && rest[n] <= '9') {
        ++n;
    }
    return n > 1 ? std::string(rest.substr(0, n)) : std::string();
}

/// The action a tool tip tells before its shortcut, or the caption.
std::string tipAction(const forms::Control &c, std::string_view tip) {
    std::string caption = actionOf(captionOf(c));
    if (!caption.empty() && caption.find_first_not_of(". ") != std::string::npos) {
        return caption;
    }
    std::string before = vb::Trim(tip.substr(0, tip.find("Shortcut:")));
    while (!before.empty() && (before.back() == '.' || before.back() == ' ')) {
        before.pop_back();
    }
    return before;
}

void focusedHints(const forms::Form &form, const forms::Control &focused, const KeyNames &names,
                  std::vector<KeyHint> &out) {
    if (isList(focused)) {
        bool formKeys = form.KeyPreview() && form.onKeyPress;
        if (focused.onKeyPress || formKeys) {
            out.push_back({names.ctrlEnter, "Add"});
        }
        if (focused.onKeyDown) {
            out.push_back({"Del", "Delete"});
        }
        if (focused.kind() == ControlKind::ListView) {
            std::string items = popupItems(form);
            if (!items.empty() && (focused.onMouseDown || focused.onMouseUp)) {
                out.push_back({"Shift+F10", "Menu"});
            }
            if (columnsWiderThanList(static_cast<const forms::ListView &>(focused))) {
                out.push_back({"←→", "Columns"});
            }
        }
    } else if (focused.kind() == ControlKind::ComboBox) {
        const auto &combo = static_cast<const forms::ComboBox &>(focused);
        if (combo.Style() != forms::vbComboSimple && combo.ListCount() > 0) {
            out.push_back({"F4", "List"});
        }
    }
}

} // namespace

std::vector<KeyHint> keyHints(const forms::Form &form, const KeyNames &names) {
    std::vector<KeyHint> out;
    const forms::Control *focused = form.ActiveControl();
    if (focused && live(*focused)) {
        focusedHints(form, *focused, names, out);
    }
    auto controls = byPosition(form);
    for (const forms::Control *c : controls) {
        if (c->kind() == ControlKind::CommandButton && live(*c) && c->accessKey()) {
            out.push_back({altKey(c->accessKey()), actionOf(captionOf(*c))});
        }
    }
    for (const forms::Control *c : controls) {
        if (c->kind() == ControlKind::CommandButton && live(*c) &&
            static_cast<const forms::CommandButton &>(*c).Cancel()) {
            out.push_back({"Esc", actionOf(captionOf(*c))});
            break;
        }
    }
    if (form.KeyPreview() && form.onKeyPress) {
        bool listAway = std::any_of(controls.begin(), controls.end(), [&](const auto *c) {
            return isList(*c) && live(*c) && c != focused;
        });
        if (listAway) {
            out.push_back({"Ctrl+D", "List"});
        }
    }
    for (const forms::Control *c : controls) {
        std::string key = functionKeyIn(c->ToolTipText());
        if (!key.empty() && live(*c) && c->onClick) {
            out.push_back({key, tipAction(*c, c->ToolTipText())});
        }
    }
    for (const forms::Control *c : controls) {
        bool captioned = c->kind() == ControlKind::Label ||
                         c->kind() == ControlKind::OptionButton ||
                         c->kind() == ControlKind::CheckBox;
        if (captioned && live(*c) && c->accessKey()) {
            out.push_back({altKey(c->accessKey()), actionOf(captionOf(*c))});
        }
    }
    // A key shows once, with the first thing it does.
    std::vector<KeyHint> unique;
    for (KeyHint &h : out) {
        if (std::none_of(unique.begin(), unique.end(),
                         [&](const KeyHint &u) { return u.key == h.key; })) {
            unique.push_back(std::move(h));
        }
    }
    return unique;
}

int paintKeyStrip(Canvas &canvas, int x, int y, int width, const std::vector<KeyHint> &hints,
                  Style style) {
    int used = 0;
    for (const KeyHint &h : hints) {
        int gap = used == 0 ? 0 : 2;
        int need = columnsOf(h.key) + 1 + columnsOf(h.action);
        if (used + gap + need > width) {
            break;
        }
        used += gap;
        used += canvas.text(x + used, y, h.key, style.with(attrBold));
        used += 1;
        used += canvas.text(x + used, y, h.action, style);
    }
    return used;
}

} // namespace tui
