#include "hosts/script/ControlProperties.h"

#include "hosts/script/Text.h"

#include "forms/CheckBox.h"
#include "forms/ComboBox.h"
#include "forms/CommandButton.h"
#include "forms/DatePicker.h"
#include "forms/FlexGrid.h"
#include "forms/Form.h"
#include "forms/Frame.h"
#include "forms/Label.h"
#include "forms/ListView.h"
#include "forms/Menu.h"
#include "forms/OptionButton.h"
#include "forms/PictureBox.h"
#include "forms/TextBox.h"

#include "vb/DateFormat.h"

#include <algorithm>
#include <functional>
#include <map>

namespace script {

namespace {

using forms::Control;
using forms::ControlKind;

struct Property {
    const char *name;
    std::function<std::string(const Control &)> read;
};

std::string text(bool b) {
    return b ? "True" : "False";
}
std::string text(int n) {
    return std::to_string(n);
}
std::string text(forms::Color c) {
    return std::to_string(c);
}
std::string text(const std::string &s) {
    return s;
}

/// A property of one kind of control, read through its getter.
template <class T, class Getter> Property of(const char *name, Getter getter) {
    return {name, [getter](const Control &c) { return text(getter(static_cast<const T &>(c))); }};
}

std::vector<Property> common() {
    return {
        of<Control>("Name", [](auto &c) { return c.Name(); }),
        of<Control>("Index", [](auto &c) { return c.Index(); }),
        of<Control>("Enabled", [](auto &c) { return c.Enabled(); }),
        of<Control>("Visible", [](auto &c) { return c.Visible(); }),
        of<Control>("TabIndex", [](auto &c) { return c.TabIndex(); }),
        of<Control>("TabStop", [](auto &c) { return c.TabStop(); }),
        of<Control>("ToolTipText", [](auto &c) { return c.ToolTipText(); }),
        of<Control>("Tag", [](auto &c) { return c.Tag(); }),
        of<Control>("ForeColor", [](auto &c) { return c.ForeColor(); }),
        of<Control>("BackColor", [](auto &c) { return c.BackColor(); }),
        of<Control>("Left", [](auto &c) { return c.Left(); }),
        of<Control>("Top", [](auto &c) { return c.Top(); }),
        of<Control>("Width", [](auto &c) { return c.Width(); }),
        of<Control>("Height", [](auto &c) { return c.Height(); }),
        of<Control>("MousePointer", [](auto &c) { return c.MousePointer(); }),
    };
}

std::vector<Property> gridProperties() {
    using forms::FlexGrid;
    return {
        of<FlexGrid>("Rows", [](auto &g) { return g.Rows(); }),
        of<FlexGrid>("Cols", [](auto &g) { return g.Cols(); }),
        of<FlexGrid>("FixedRows", [](auto &g) { return g.FixedRows(); }),
        of<FlexGrid>("FixedCols", [](auto &g) { return g.FixedCols(); }),
        of<FlexGrid>("Row", [](auto &g) { return g.Row(); }),
        of<FlexGrid>("Col", [](auto &g) { return g.Col(); }),
        of<FlexGrid>("RowSel", [](auto &g) { return g.RowSel(); }),
        of<FlexGrid>("ColSel", [](auto &g) { return g.ColSel(); }),
        of<FlexGrid>("TopRow", [](auto &g) { return g.TopRow(); }),
        of<FlexGrid>("LeftCol", [](auto &g) { return g.LeftCol(); }),
        of<FlexGrid>("Text", [](auto &g) { return g.Text(); }),
        of<FlexGrid>("CellForeColor", [](auto &g) { return g.CellForeColor(); }),
        of<FlexGrid>("CellBackColor", [](auto &g) { return g.CellBackColor(); }),
        of<FlexGrid>("ForeColorSel", [](auto &g) { return g.ForeColorSel(); }),
        of<FlexGrid>("BackColorSel", [](auto &g) { return g.BackColorSel(); }),
    };
}

std::vector<Property> listProperties() {
    using forms::ListView;
    auto selected = [](const ListView &l) { return l.selectedItemOrNull(); };
    return {
        of<ListView>("ListItems.Count", [](auto &l) { return l.ListItems().Count(); }),
        of<ListView>("ColumnHeaders.Count", [](auto &l) { return l.ColumnHeaders().Count(); }),
        of<ListView>("SelectedItem.Index",
                     [selected](auto &l) { return selected(l) ? selected(l)->Index() : 0; }),
        of<ListView>("SelectedItem.Text",
                     [selected](auto &l) { return selected(l) ? selected(l)->Text() : ""; }),
        of<ListView>("Sorted", [](auto &l) { return l.Sorted(); }),
        of<ListView>("SortKey", [](auto &l) { return l.SortKey(); }),
        of<ListView>("SortOrder", [](auto &l) { return l.SortOrder(); }),
    };
}

std::vector<Property> editProperties() {
    using forms::TextBox;
    return {
        of<TextBox>("Text", [](auto &t) { return t.Text(); }),
        of<TextBox>("MaxLength", [](auto &t) { return t.MaxLength(); }),
        of<TextBox>("SelStart", [](auto &t) { return t.SelStart(); }),
        of<TextBox>("SelLength", [](auto &t) { return t.SelLength(); }),
        of<TextBox>("SelText", [](auto &t) { return t.SelText(); }),
        of<TextBox>("Locked", [](auto &t) { return t.Locked(); }),
        of<TextBox>("Alignment", [](auto &t) { return t.Alignment(); }),
    };
}

std::vector<Property> comboProperties() {
    using forms::ComboBox;
    return {
        of<ComboBox>("Text", [](auto &c) { return c.Text(); }),
        of<ComboBox>("ListIndex", [](auto &c) { return c.ListIndex(); }),
        of<ComboBox>("ListCount", [](auto &c) { return c.ListCount(); }),
        of<ComboBox>("Style", [](auto &c) { return c.Style(); }),
        of<ComboBox>("Sorted", [](auto &c) { return c.Sorted(); }),
        of<ComboBox>("NewIndex", [](auto &c) { return c.NewIndex(); }),
    };
}

std::vector<Property> captionedProperties(ControlKind kind) {
    using namespace forms;
    switch (kind) {
    case ControlKind::Label:
        return {of<Label>("Caption", [](auto &l) { return l.Caption(); }),
                of<Label>("Alignment", [](auto &l) { return l.Alignment(); })};
    case ControlKind::CommandButton:
        return {of<CommandButton>("Caption", [](auto &b) { return b.Caption(); }),
                of<CommandButton>("Default", [](auto &b) { return b.Default(); }),
                of<CommandButton>("Cancel", [](auto &b) { return b.Cancel(); })};
    case ControlKind::CheckBox:
        return {of<CheckBox>("Caption", [](auto &b) { return b.Caption(); }),
                of<CheckBox>("Value", [](auto &b) { return b.Value(); })};
    case ControlKind::OptionButton:
        return {of<OptionButton>("Caption", [](auto &b) { return b.Caption(); }),
                of<OptionButton>("Value", [](auto &b) { return b.Value(); })};
    case ControlKind::Frame:
        return {of<Frame>("Caption", [](auto &f) { return f.Caption(); })};
    case ControlKind::Menu:
        return {of<Menu>("Caption", [](auto &m) { return m.Caption(); }),
                of<Menu>("Checked", [](auto &m) { return m.Checked(); })};
    case ControlKind::PictureBox:
        return {of<PictureBox>("Picture", [](auto &p) { return p.Picture(); })};
    case ControlKind::DatePicker:
        return {of<DatePicker>("Value",
                               [](auto &d) { return vb::formatDate(d.Value(), "yyyy-mm-dd"); }),
                of<DatePicker>("CustomFormat", [](auto &d) { return d.CustomFormat(); })};
    default:
        return {};
    }
}

std::vector<Property> propertiesOf(ControlKind kind) {
    std::vector<Property> all = common();
    std::vector<Property> own = kind == ControlKind::TextBox    ? editProperties()
                                : kind == ControlKind::ComboBox ? comboProperties()
                                : kind == ControlKind::FlexGrid ? gridProperties()
                                : kind == ControlKind::ListView ? listProperties()
                                                                : captionedProperties(kind);
    all.insert(all.end(), own.begin(), own.end());
    return all;
}

const std::vector<Property> &propertiesFor(ControlKind kind) {
    static std::map<ControlKind, std::vector<Property>> cache;
    auto it = cache.find(kind);
    if (it == cache.end()) {
        it = cache.emplace(kind, propertiesOf(kind)).first;
    }
    return it->second;
}

} // namespace

std::optional<std::string> controlProperty(const forms::Control &control, std::string_view name) {
    for (const Property &p : propertiesFor(control.kind())) {
        if (sameName(p.name, name)) {
            return p.read(control);
        }
    }
    return std::nullopt;
}

std::vector<std::string> controlPropertyNames(const forms::Control &control) {
    std::vector<std::string> names;
    for (const Property &p : propertiesFor(control.kind())) {
        names.emplace_back(p.name);
    }
    return names;
}

namespace {

struct FormProperty {
    const char *name;
    std::string (*read)(const forms::Form &);
};

const std::vector<FormProperty> &formProperties() {
    using forms::Form;
    static const std::vector<FormProperty> all{
        {"Name", [](const Form &f) { return f.Name(); }},
        {"Caption", [](const Form &f) { return f.Caption(); }},
        {"Enabled", [](const Form &f) { return text(f.Enabled()); }},
        {"Visible", [](const Form &f) { return text(f.Visible()); }},
        {"MousePointer", [](const Form &f) { return text(f.MousePointer()); }},
        {"KeyPreview", [](const Form &f) { return text(f.KeyPreview()); }},
        {"Tag", [](const Form &f) { return f.Tag(); }},
        {"Left", [](const Form &f) { return text(f.Left()); }},
        {"Top", [](const Form &f) { return text(f.Top()); }},
        {"Width", [](const Form &f) { return text(f.Width()); }},
        {"Height", [](const Form &f) { return text(f.Height()); }},
        {"ActiveControl",
         [](const Form &f) {
             return f.ActiveControl() ? f.ActiveControl()->qualifiedName() : std::string();
         }},
    };
    return all;
}

} // namespace

std::optional<std::string> formProperty(const forms::Form &form, std::string_view name) {
    for (const FormProperty &p : formProperties()) {
        if (sameName(p.name, name)) {
            return p.read(form);
        }
    }
    return std::nullopt;
}

std::vector<std::string> formPropertyNames() {
    std::vector<std::string> names;
    for (const FormProperty &p : formProperties()) {
        names.emplace_back(p.name);
    }
    return names;
}

std::string kindName(const forms::Control &control) {
    static const std::map<ControlKind, const char *> names{
        {ControlKind::Label, "Label"},
        {ControlKind::TextBox, "TextBox"},
        {ControlKind::CommandButton, "CommandButton"},
        {ControlKind::CheckBox, "CheckBox"},
        {ControlKind::OptionButton, "OptionButton"},
        {ControlKind::ComboBox, "ComboBox"},
        {ControlKind::Frame, "Frame"},
        {ControlKind::PictureBox, "PictureBox"},
        {ControlKind::Image, "Image"},
        {ControlKind::Line, "Line"},
        {ControlKind::Menu, "Menu"},
        {ControlKind::DatePicker, "DatePicker"},
        {ControlKind::FlexGrid, "FlexGrid"},
        {ControlKind::ListView, "ListView"},
    };
    return names.at(control.kind());
}

} // namespace script
