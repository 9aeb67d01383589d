// forms::FormSlot: the one instance of a form, loaded on first touch and fresh after Unload.
#pragma once

#include "forms/Form.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace forms {

/// The old platform's global form instance. get() is the touch: it makes the
/// form and runs Form_Load when the form is not loaded, so a form unloaded
/// by Unload comes back fresh (design state, a new Form_Load) on the next
/// touch, as it did. An unloaded form is not destroyed at once: a form often
/// unloads itself inside its own handler and that handler goes on, and a
/// modal Show of it may still be returning. The slot keeps such forms and
/// frees each one, at a later touch, once none of its handlers runs
/// (Form::busyCount is 0).
template <class T> class FormSlot {
public:
    using Factory = std::function<std::unique_ptr<T>()>;

    explicit FormSlot(Factory make) : make_(std::move(make)) {}

    /// The loaded form, made and loaded now if it is not.
    T &get() {
        if (current_ && current_->Loaded()) {
            return *current_;
        }
        if (current_ && !current_->LoadedOnce()) {
            current_->Load();
            return *current_;
        }
        if (current_) {
            retired_.push_back(std::move(current_));
        }
        std::erase_if(retired_, [](const std::unique_ptr<T> &f) { return f->busyCount() == 0; });
        current_ = make_();
        current_->Load();
        return *current_;
    }

    /// The form object without loading it: setting a property of the form's
    /// own (not of a control) made the instance but ran no Form_Load, so a
    /// caller could hand a form its data before showing it. The next get()
    /// or Show loads this same object.
    T &unloaded() {
        if (current_ && (current_->Loaded() || !current_->LoadedOnce())) {
            return *current_;
        }
        if (current_) {
            retired_.push_back(std::move(current_));
        }
        std::erase_if(retired_, [](const std::unique_ptr<T> &f) { return f->busyCount() == 0; });
        current_ = make_();
        return *current_;
    }

    /// The form as it stands, without touching it: nullptr before the first
    /// touch; after an Unload, the unloaded form.
    T *peek() const { return current_.get(); }
    bool loaded() const { return current_ && current_->Loaded(); }
    /// How many unloaded forms are still kept alive.
    std::size_t retiredCount() const { return retired_.size(); }

private:
    Factory make_;
    std::unique_ptr<T> current_;
    std::vector<std::unique_ptr<T>> retired_;
};

} // namespace forms
