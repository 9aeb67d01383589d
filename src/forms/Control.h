// forms::Control: what every control of a form has (name, geometry, state, focus and key events).
#pragma once

#include "forms/Colors.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace forms {

class Container;
class Form;

/// The kinds of control, so that a host can draw and drive them generically.
enum class ControlKind {
    Label,
    TextBox,
    CommandButton,
    CheckBox,
    OptionButton,
    ComboBox,
    Frame,
    PictureBox,
    Image,
    Line,
    Menu,
    DatePicker,
    FlexGrid,
    ListView,
};

/// The base of all controls.
///
/// Naming scheme of the whole forms library, written down once:
/// - a property of the old platform is a getter with its old name and a setter
///   with "set" in front: `Text()` / `setText(...)`, `ListIndex()` /
///   `setListIndex(...)`; an indexed property takes the index first:
///   `TextMatrix(r, c)` / `setTextMatrix(r, c, text)`; a write-only property
///   has only its setter (`FlexGrid::setSort`);
/// - a method of the old platform keeps its name: `SetFocus()`, `AddItem(...)`,
///   `Clear()`, `Move(...)`;
/// - an event is a std::function member named "on" + the event name
///   (`onClick`, `onKeyPress`, `onRowColChange`); arguments the old event
///   passed by reference are references here (`int& KeyAscii`), so that a
///   handler can change or drop (0) a key. A form binds its events once, in
///   its constructor, to the routines with their original names;
/// - what exists only for hosts and the runtime is in lowerCamelCase
///   (`kind()`, `container()`, `canTakeFocus()`).
///
/// A control is a member of its form's class and registers itself with the
/// form when constructed, so the form knows its controls by name and index,
/// in creation order. Geometry is in twips (1440 to the inch), relative to the
/// container. Events fired by code (a property set, SetFocus) always fire, as
/// they did; a user's click or key goes through forms::Input, which refuses a
/// control that is disabled or invisible (itself, a container, or its form).
class Control {
public:
    Control(Form &form, ControlKind kind, std::string_view name, int index = -1);
    Control(Container &container, ControlKind kind, std::string_view name, int index = -1);
    virtual ~Control();
    Control(const Control &) = delete;
    Control &operator=(const Control &) = delete;

    ControlKind kind() const { return kind_; }
    Form &form() const { return *form_; }
    /// The frame or picture box the control stands in; nullptr for the form itself.
    Container *container() const { return container_; }
    /// The name with the index of a control array: "txtQty(2)", or "txtQty".
    std::string qualifiedName() const;

    const std::string &Name() const { return name_; }
    /// Index within a control array; -1 for a control that is not in one.
    int Index() const { return index_; }

    bool Enabled() const { return enabled_; }
    void setEnabled(bool enabled);
    bool Visible() const { return visible_; }
    void setVisible(bool visible);

    int Left() const { return left_; }
    int Top() const { return top_; }
    int Width() const { return width_; }
    int Height() const { return height_; }
    void setLeft(int twips) { left_ = twips; }
    void setTop(int twips) { top_ = twips; }
    void setWidth(int twips) { width_ = twips; }
    void setHeight(int twips) { height_ = twips; }
    /// Move(left, top[, width[, height]]): a negative width or height keeps it.
    void Move(int left, int top, int width = -1, int height = -1);

    /// Position in the form's Tab order. Setting it moves the others up or
    /// down so that the indexes stay 0, 1, 2, ... without gaps, as it did.
    int TabIndex() const { return tabIndex_; }
    void setTabIndex(int index);
    bool TabStop() const { return tabStop_; }
    void setTabStop(bool stop) { tabStop_ = stop; }
    /// Whether moving the focus onto this control first asks the old one to Validate.
    bool CausesValidation() const { return causesValidation_; }
    void setCausesValidation(bool v) { causesValidation_ = v; }

    const std::string &ToolTipText() const { return toolTipText_; }
    void setToolTipText(std::string_view text) { toolTipText_ = text; }
    const std::string &Tag() const { return tag_; }
    void setTag(std::string_view tag) { tag_ = tag; }
    Color ForeColor() const { return foreColor_; }
    void setForeColor(Color c) { foreColor_ = c; }
    Color BackColor() const { return backColor_; }
    void setBackColor(Color c) { backColor_ = c; }
    int MousePointer() const { return mousePointer_; }
    void setMousePointer(int pointer);

    /// Gives this control the focus, with Validate, LostFocus and GotFocus as
    /// for any focus move. Raises 5 ("Invalid procedure call or argument")
    /// when the control cannot take the focus now: disabled or invisible, in a
    /// disabled or invisible container, on a form that is not shown or is
    /// disabled, or a kind that never takes it (label, frame, line, image).
    void SetFocus();

    /// True when the control is enabled and visible and so are its containers.
    bool effectivelyEnabled() const;
    bool effectivelyVisible() const;
    /// True when the control could take the focus now (SetFocus would not raise).
    bool canTakeFocus() const;
    /// True when the control has the focus of its form.
    bool hasFocus() const;
    /// Whether this kind of control ever takes the focus.
    virtual bool focusable() const { return true; }
    /// The access key of the control's caption (after "&"), 0 when it has none.
    virtual char32_t accessKey() const { return 0; }

    // Events every control may raise. Not every kind raises all of them: a
    // label never has the focus, so its key events never fire.
    std::function<void()> onClick;
    std::function<void()> onDblClick;
    std::function<void()> onGotFocus;
    std::function<void()> onLostFocus;
    std::function<void(bool &Cancel)> onValidate;
    std::function<void(int &KeyCode, int Shift)> onKeyDown;
    std::function<void(int &KeyAscii)> onKeyPress;
    std::function<void(int &KeyCode, int Shift)> onKeyUp;
    std::function<void(int Button, int Shift, double X, double Y)> onMouseDown;
    std::function<void(int Button, int Shift, double X, double Y)> onMouseUp;
    std::function<void(int Button, int Shift, double X, double Y)> onMouseMove;

protected:
    /// Runs an event handler if one is bound, keeping the form alive meanwhile
    /// (a handler may unload its own form). The handler is copied first, so a
    /// handler that rebinds its own event runs to its end.
    template <class Handler, class... Args> void raise(const Handler &handler, Args &&...args) {
        if (!handler) {
            return;
        }
        Handler copy = handler;
        FormHold hold(*form_);
        copy(std::forward<Args>(args)...);
    }

    /// Moves the focus here as a user's action does (Validate first); false
    /// when the control that had the focus refused to let it go.
    bool focusHere();

    // What the control itself does with user input, after the events have
    // run and left the key standing. Overridden by the kinds that do something.
    virtual void defaultKeyDown(int keyCode, int shift);
    virtual void defaultKeyPress(char32_t keyAscii);
    /// A mouse click after the focus has come: a button clicks, a check box
    /// toggles, an option button turns on; the rest raise Click.
    virtual void userClick();
    /// The access key was pressed: buttons click, check and option boxes act
    /// as clicked, labels and frames pass the focus to the next control.
    virtual void accessKeyPressed();

private:
    friend class Form;
    friend class Input;

    /// Keeps a form from being reset while one of its handlers runs.
    class FormHold {
    public:
        explicit FormHold(Form &form);
        ~FormHold();
        FormHold(const FormHold &) = delete;
        FormHold &operator=(const FormHold &) = delete;

    private:
        Form &form_;
    };

    void fireGotFocus() { raise(onGotFocus); }
    void fireLostFocus() { raise(onLostFocus); }
    bool fireValidate();
    void fireKeyDown(int &keyCode, int shift) { raise(onKeyDown, keyCode, shift); }
    void fireKeyPress(int &keyAscii) { raise(onKeyPress, keyAscii); }
    void fireKeyUp(int &keyCode, int shift) { raise(onKeyUp, keyCode, shift); }
    void fireMouse(const std::function<void(int, int, double, double)> &handler, int button,
                   int shift, double x, double y) {
        raise(handler, button, shift, x, y);
    }

    Form *form_;
    Container *container_ = nullptr;
    ControlKind kind_;
    std::string name_;
    int index_;
    bool enabled_ = true;
    bool visible_ = true;
    int left_ = 0;
    int top_ = 0;
    int width_ = 0;
    int height_ = 0;
    int tabIndex_ = 0;
    bool tabStop_ = true;
    bool causesValidation_ = true;
    std::string toolTipText_;
    std::string tag_;
    Color foreColor_ = vbWindowText;
    Color backColor_ = vbWindowBackground;
    int mousePointer_ = 0;
};

} // namespace forms
