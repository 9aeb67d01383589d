// forms::Container: a control that holds other controls (Frame, PictureBox).
#pragma once

#include "forms/Control.h"

#include <vector>

namespace forms {

/// A control that other controls stand in. A control made with a container
/// takes its position relative to it, is hidden and disabled with it, and
/// (for option buttons) forms one group with the others in it.
class Container : public Control {
public:
    using Control::Control;

    /// The controls whose container this is, in creation order.
    std::vector<Control *> children() const;
};

} // namespace forms
