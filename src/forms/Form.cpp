#include "forms/Form.h"

#include "forms/CommandButton.h"
#include "forms/Control.h"
#include "forms/Errors.h"
#include "forms/Menu.h"
#include "forms/OptionButton.h"
#include "forms/Screen.h"
#include "forms/Ui.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace forms {

namespace {

/// Counts a running handler or modal Show of a form, so that FormSlot does
/// not free an unloaded form under it.
class Busy {
public:
    explicit Busy(int &count) : count_(count) { ++count_; }
    ~Busy() { --count_; }
    Busy(const Busy &) = delete;
    Busy &operator=(const Busy &) = delete;

private:
    int &count_;
};

bool sameName(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return std::tolower(static_cast<unsigned char>(x)) ==
                      std::tolower(static_cast<unsigned char>(y));
           });
}

/// Controls that have a Tab index, in Tab order.
std::vector<Control *> byTabIndex(const std::vector<Control *> &controls) {
    std::vector<Control *> out;
    for (Control *c : controls) {
        if (c->TabIndex() >= 0) {
            out.push_back(c);
        }
    }
    std::stable_sort(out.begin(), out.end(),
                     [](Control *a, Control *b) { return a->TabIndex() < b->TabIndex(); });
    return out;
}

} // namespace

Form::Form(Screen &screen, std::string_view name) : screen_(&screen), name_(name) {}

Form::~Form() {
    screen_->removeShown(*this);
}

void Form::setVisible(bool visible) {
    if (visible) {
        Show(vbModeless);
    } else {
        Hide();
    }
}

void Form::Move(int left, int top, int width, int height) {
    left_ = left;
    top_ = top;
    if (width >= 0) {
        width_ = width;
    }
    if (height >= 0) {
        height_ = height;
    }
}

void Form::setMousePointer(int pointer) {
    if (pointer == mousePointer_) {
        return;
    }
    mousePointer_ = pointer;
    screen_->notifyPointer();
}

void Form::Load() {
    if (loaded_) {
        return;
    }
    // The form counts as loaded while Form_Load runs (it may touch itself);
    // if Form_Load raises, it is not loaded after all.
    struct Undo {
        bool &loaded;
        bool done = false;
        ~Undo() {
            if (!done) {
                loaded = false;
            }
        }
    } undo{loaded_};
    loaded_ = true;
    loadedOnce_ = true;
    raise(onLoad);
    undo.done = true;
}

void Form::Show(int modal, Form *owner) {
    bool modalShown = std::any_of(screen_->shown_.begin(), screen_->shown_.end(),
                                  [](Form *f) { return f->isModal(); });
    if (modal != vbModeless && visible_) {
        throw errors::alreadyShownModal();
    }
    if (modal == vbModeless && !visible_ && modalShown) {
        throw errors::modelessAboveModal();
    }
    Load();
    Busy busy(busy_);
    if (!visible_) {
        Form *below = screen_->ActiveForm();
        owner_ = owner;
        modal_ = modal != vbModeless;
        visible_ = true;
        screen_->pushShown(*this);
        if (below) {
            below->raise(below->onDeactivate);
        }
        becameActive();
    }
    if (modal_) {
        screen_->ui().runModal(*this);
    }
}

void Form::Hide() {
    if (!visible_) {
        return;
    }
    bool wasActive = screen_->ActiveForm() == this;
    visible_ = false;
    modal_ = false;
    screen_->removeShown(*this);
    Form *now = screen_->ActiveForm();
    if (wasActive && now) {
        now->becameActive();
    }
}

bool Form::Unload(int unloadMode) {
    if (!loaded_) {
        return true;
    }
    Busy busy(busy_);
    int cancel = 0;
    raise(onQueryUnload, cancel, unloadMode);
    if (!loaded_) {
        return true; // a QueryUnload handler unloaded the form itself
    }
    if (cancel != 0) {
        return false;
    }
    raise(onUnload, cancel);
    if (!loaded_) {
        return true;
    }
    if (cancel != 0) {
        return false;
    }
    loaded_ = false;
    activeControl_ = nullptr;
    Hide();
    return true;
}

void Form::PopupMenu(Menu &menu) {
    Menu *chosen = screen_->ui().popupMenu(*this, menu);
    if (!chosen) {
        return;
    }
    if (chosen->parentMenu() != &menu) {
        throw errors::invalidProcedureCall();
    }
    if (chosen->Enabled() && chosen->Visible()) {
        chosen->choose();
    }
}

Control *Form::findControl(std::string_view name, int index) const {
    for (Control *c : controls_) {
        if (c->Index() == index && sameName(c->Name(), name)) {
            return c;
        }
    }
    return nullptr;
}

std::vector<Control *> Form::controlsInTabOrder() const {
    return byTabIndex(controls_);
}

std::vector<Control *> Form::tabOrder() const {
    std::vector<Control *> out;
    for (Control *c : byTabIndex(controls_)) {
        if (c->TabStop() && c->canTakeFocus() && isGroupStop(*c)) {
            out.push_back(c);
        }
    }
    return out;
}

bool Form::isGroupStop(const Control &control) const {
    // Tab stops at one option button of a group: the one that is on, or the
    // first in Tab order when none is.
    if (control.kind() != ControlKind::OptionButton) {
        return true;
    }
    const Control *first = nullptr;
    for (Control *c : byTabIndex(controls_)) {
        if (c->kind() != ControlKind::OptionButton || c->container() != control.container()) {
            continue;
        }
        if (static_cast<OptionButton *>(c)->Value()) {
            return c == &control;
        }
        if (!first && c->TabStop() && c->canTakeFocus()) {
            first = c;
        }
    }
    return first == &control;
}

CommandButton *Form::defaultButton() const {
    for (Control *c : controls_) {
        if (c->kind() == ControlKind::CommandButton && static_cast<CommandButton *>(c)->Default()) {
            return static_cast<CommandButton *>(c);
        }
    }
    return nullptr;
}

CommandButton *Form::cancelButton() const {
    for (Control *c : controls_) {
        if (c->kind() == ControlKind::CommandButton && static_cast<CommandButton *>(c)->Cancel()) {
            return static_cast<CommandButton *>(c);
        }
    }
    return nullptr;
}

void Form::addControl(Control &control) {
    if (control.tabIndex_ >= 0) {
        int next = 0;
        for (Control *c : controls_) {
            next = std::max(next, c->tabIndex_ + 1);
        }
        control.tabIndex_ = next;
    }
    controls_.push_back(&control);
}

void Form::removeControl(Control &control) {
    if (activeControl_ == &control) {
        activeControl_ = nullptr;
    }
    std::erase(controls_, &control);
}

void Form::reorderTabIndex(Control &control, int index) {
    std::vector<Control *> order = byTabIndex(controls_);
    std::erase(order, &control);
    index = std::min<int>(index, static_cast<int>(order.size()));
    order.insert(order.begin() + index, &control);
    for (std::size_t i = 0; i < order.size(); ++i) {
        order[i]->tabIndex_ = static_cast<int>(i);
    }
}

bool Form::moveFocus(Control *to) {
    Control *from = activeControl_;
    if (from == to) {
        return true;
    }
    if (from && to && to->CausesValidation() && !from->fireValidate()) {
        return false;
    }
    activeControl_ = to;
    if (from) {
        from->fireLostFocus();
    }
    if (to && activeControl_ == to) {
        to->fireGotFocus();
    }
    return true;
}

void Form::tabFrom(Control *from, bool backwards) {
    std::vector<Control *> order = tabOrder();
    if (order.empty()) {
        return;
    }
    int n = static_cast<int>(order.size());
    auto it = std::find(order.begin(), order.end(), from);
    int pos;
    if (it != order.end()) {
        pos = static_cast<int>(it - order.begin());
        pos = backwards ? (pos + n - 1) % n : (pos + 1) % n;
    } else {
        // The focus stands on no Tab stop (an option that is off, or
        // nothing): go on from its place in the Tab order.
        int at = from ? from->TabIndex() : -1;
        pos = backwards ? n - 1 : 0;
        for (int i = 0; i < n; ++i) {
            int k = backwards ? n - 1 - i : i;
            if (backwards ? order[k]->TabIndex() < at : order[k]->TabIndex() > at) {
                pos = k;
                break;
            }
        }
    }
    moveFocus(order[pos]);
}

void Form::focusAfter(const Control &control) {
    for (Control *c : byTabIndex(controls_)) {
        if (c->TabIndex() > control.TabIndex() && c->canTakeFocus()) {
            moveFocus(c);
            return;
        }
    }
}

void Form::keepFocusValid() {
    Control *from = activeControl_;
    if (!from || from->canTakeFocus()) {
        return;
    }
    if (!visible_) {
        if (!from->effectivelyEnabled() || !from->effectivelyVisible()) {
            activeControl_ = nullptr; // a hidden form moves no focus and raises nothing
        }
        return;
    }
    std::vector<Control *> order = tabOrder();
    Control *to = nullptr;
    for (Control *c : order) {
        if (c->TabIndex() > from->TabIndex()) {
            to = c;
            break;
        }
    }
    if (!to && !order.empty()) {
        to = order.front();
    }
    activeControl_ = to;
    from->fireLostFocus();
    if (to && activeControl_ == to) {
        to->fireGotFocus();
    }
}

void Form::becameActive() {
    raise(onActivate);
    if (!activeControl_ && visible_ && screen_->ActiveForm() == this) {
        std::vector<Control *> order = tabOrder();
        if (!order.empty()) {
            moveFocus(order.front());
        }
    }
}

} // namespace forms
