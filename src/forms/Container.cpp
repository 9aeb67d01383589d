#include "forms/Container.h"

#include "forms/Form.h"

namespace forms {

std::vector<Control *> Container::children() const {
    std::vector<Control *> out;
    for (Control *c : form().controls()) {
        if (c->container() == this) {
            out.push_back(c);
        }
    }
    return out;
}

} // namespace forms
