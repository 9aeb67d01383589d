// services::ServiceObject: what every object made by CreateObject is.
#pragma once

#include <string_view>

namespace services {

/// The common base of the sibling services, so that CreateObject can hand any
/// of them out by name, as the old late-bound objects were.
class ServiceObject {
public:
    virtual ~ServiceObject();
    /// The creation name in its usual spelling ("BaseServices.clsBaseData").
    virtual std::string_view creationName() const = 0;
};

} // namespace services
