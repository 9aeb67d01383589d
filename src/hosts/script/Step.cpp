#include "hosts/script/Step.h"

namespace script {

std::string ControlRef::text() const {
    std::string out = form.empty() ? name : form + "!" + name;
    if (index >= 0) {
        out += "(" + std::to_string(index) + ")";
    }
    return out;
}

} // namespace script
