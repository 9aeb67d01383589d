// services::FormSnapshot: the values a user can change on a form, to tell later whether they did.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace forms {
class Form;
}

namespace services {

/// What the controls of a form hold, control by control in creation order:
/// the text of text boxes, the text and chosen item of combos, the value of
/// check boxes, option buttons and date pickers, and every cell of lists and
/// grids. Captions, colours, positions and the form's Tag are no values a
/// user enters and are left out.
struct FormSnapshot {
    /// (control and facet, value), e.g. ("txtno.Text", "SVA6").
    std::vector<std::pair<std::string, std::string>> values;

    friend bool operator==(const FormSnapshot &, const FormSnapshot &) = default;
};

FormSnapshot snapshotOf(const forms::Form &form);

} // namespace services
