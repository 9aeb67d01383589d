// forms::Form: a window with its controls, its lifecycle (load, show, unload) and focus.
#pragma once

#include "forms/Colors.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace forms {

class CommandButton;
class Control;
class Menu;
class Screen;

// Show styles.
inline constexpr int vbModeless = 0;
inline constexpr int vbModal = 1;

// UnloadMode of QueryUnload: why the form is closing.
inline constexpr int vbFormControlMenu = 0; // the close box
inline constexpr int vbFormCode = 1;        // Unload called by code
inline constexpr int vbAppWindows = 2;
inline constexpr int vbAppTaskManager = 3;
inline constexpr int vbFormMDIForm = 4;
inline constexpr int vbFormOwner = 5;

/// A form. A module's form class derives from it, holds its controls as
/// members (each registers itself here, in creation order) and binds its
/// events in its constructor.
///
/// Lifecycle, as on the old platform:
/// - Load runs Form_Load (the form counts as loaded during it). Touching a
///   form that is not loaded loads it: FormSlot does that for the module.
/// - Show loads if needed, makes the form visible and active, raises Activate
///   and gives the focus to the first control in Tab order if none has it.
///   A modal Show then runs Ui::runModal and returns when the form has been
///   unloaded or hidden.
/// - Unload raises QueryUnload (which may cancel) and Unload (which may
///   cancel too); then the form is hidden, no longer loaded, and the form
///   below it becomes active again and raises Activate. The object and its
///   controls stay as they were: a handler that unloaded its own form goes
///   on safely. The next touch through FormSlot makes a fresh form.
///
/// Keys: with KeyPreview on the form sees KeyDown, KeyPress and KeyUp before
/// the focused control; a form handler that sets the key to 0 keeps it from
/// the control. See forms::Input for the whole order.
class Form {
public:
    Form(Screen &screen, std::string_view name);
    virtual ~Form();
    Form(const Form &) = delete;
    Form &operator=(const Form &) = delete;

    Screen &screen() const { return *screen_; }
    const std::string &Name() const { return name_; }

    const std::string &Caption() const { return caption_; }
    void setCaption(std::string_view caption) { caption_ = caption; }
    const std::string &Tag() const { return tag_; }
    void setTag(std::string_view tag) { tag_ = tag; }
    /// Colour of the form's surface and of what is drawn on it (a screen palette sets them).
    Color BackColor() const { return backColor_; }
    void setBackColor(Color c) { backColor_ = c; }
    Color ForeColor() const { return foreColor_; }
    void setForeColor(Color c) { foreColor_ = c; }
    /// A disabled form takes no user input.
    bool Enabled() const { return enabled_; }
    void setEnabled(bool enabled) { enabled_ = enabled; }
    /// True while the form is shown. Setting it shows (modeless) or hides.
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
    void Move(int left, int top, int width = -1, int height = -1);
    int MousePointer() const { return mousePointer_; }
    void setMousePointer(int pointer);
    bool KeyPreview() const { return keyPreview_; }
    void setKeyPreview(bool on) { keyPreview_ = on; }

    bool Loaded() const { return loaded_; }
    /// Whether Form_Load has begun at least once on this object.
    bool LoadedOnce() const { return loadedOnce_; }
    /// The old Load statement: runs Form_Load unless the form is loaded. If
    /// Form_Load raises, the form is not loaded and the error goes on.
    void Load();
    /// Shows the form; vbModal waits in Ui::runModal until it is unloaded or
    /// hidden. Raises 400 ("Form already displayed; can't show modally") for
    /// a modal Show of a shown form, and 401 ("Can't show non-modal form when
    /// modal form is displayed") for a modeless Show above a modal form.
    void Show(int modal = vbModeless, Form *owner = nullptr);
    /// Hides the form; a modal Show of it returns.
    void Hide();
    /// The old Unload statement; returns false when QueryUnload or Unload
    /// cancelled. Unloading a form that is not loaded does nothing.
    bool Unload(int unloadMode = vbFormCode);
    /// True while the form is shown modally.
    bool isModal() const { return modal_; }
    Form *owner() const { return owner_; }

    /// Shows a popup menu (a top menu of this form) through the host and runs
    /// the Click of the item chosen, before returning.
    void PopupMenu(Menu &menu);

    /// The controls of the form, in creation order.
    const std::vector<Control *> &controls() const { return controls_; }
    /// The control with that name (letter case ignored) and index (-1 for a
    /// control that is not in an array); nullptr when there is none.
    Control *findControl(std::string_view name, int index = -1) const;
    /// The control that has the focus, or nullptr.
    Control *ActiveControl() const { return activeControl_; }
    /// The controls that have a place in the Tab order (all but menus, lines
    /// and images), by TabIndex, whether or not they can take the focus now.
    std::vector<Control *> controlsInTabOrder() const;
    /// The controls that Tab visits now, in Tab order.
    std::vector<Control *> tabOrder() const;
    /// The default and cancel buttons, or nullptr.
    CommandButton *defaultButton() const;
    CommandButton *cancelButton() const;

    /// How many handlers of this form are running (and modal Shows waiting);
    /// FormSlot keeps an unloaded form alive until it is 0.
    int busyCount() const { return busy_; }

    std::function<void()> onLoad;
    std::function<void()> onActivate;
    std::function<void()> onDeactivate;
    std::function<void(int &Cancel, int UnloadMode)> onQueryUnload;
    std::function<void(int &Cancel)> onUnload;
    std::function<void(int &KeyAscii)> onKeyPress;
    std::function<void(int &KeyCode, int Shift)> onKeyDown;
    std::function<void(int &KeyCode, int Shift)> onKeyUp;

private:
    friend class Control;
    friend class Input;
    friend class Screen;

    void addControl(Control &control);
    void removeControl(Control &control);
    void reorderTabIndex(Control &control, int index);
    bool isGroupStop(const Control &control) const;

    /// Moves the focus, asking the control that has it to Validate first when
    /// `to` causes validation. Returns false when Validate cancelled.
    bool moveFocus(Control *to);
    /// Moves the focus on from the focused control in Tab order (back with `backwards`).
    void tabFrom(Control *from, bool backwards);
    /// Gives the focus to the next control that can take it after `control`
    /// in Tab order (what the access key of a label or frame does).
    void focusAfter(const Control &control);
    /// When the focused control can no longer hold the focus (disabled or
    /// hidden, or its container was), passes it on in Tab order.
    void keepFocusValid();
    void becameActive();

    void fireKeyDown(int &keyCode, int shift) { raise(onKeyDown, keyCode, shift); }
    void fireKeyPress(int &keyAscii) { raise(onKeyPress, keyAscii); }
    void fireKeyUp(int &keyCode, int shift) { raise(onKeyUp, keyCode, shift); }

    /// Runs a handler of the form's own events, keeping the form alive meanwhile.
    template <class Handler, class... Args> void raise(const Handler &handler, Args &&...args) {
        if (!handler) {
            return;
        }
        Handler copy = handler;
        ++busy_;
        struct Release {
            int &count;
            ~Release() { --count; }
        } release{busy_};
        copy(std::forward<Args>(args)...);
    }

    Screen *screen_;
    std::string name_;
    std::string caption_;
    std::string tag_;
    Color backColor_ = vbButtonFace;
    Color foreColor_ = vbButtonText;
    bool enabled_ = true;
    bool visible_ = false;
    bool loaded_ = false;
    bool loadedOnce_ = false;
    bool modal_ = false;
    bool keyPreview_ = false;
    int left_ = 0;
    int top_ = 0;
    int width_ = 0;
    int height_ = 0;
    int mousePointer_ = 0;
    int busy_ = 0;
    Form *owner_ = nullptr;
    Control *activeControl_ = nullptr;
    std::vector<Control *> controls_;
};

} // namespace forms
