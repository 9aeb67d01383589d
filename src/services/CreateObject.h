// services::CreateObject: a sibling service by its creation name, as the old CreateObject did.
#pragma once

#include "services/Context.h"
#include "services/ServiceObject.h"
#include "vb/Error.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace services {

/// A new service object for its creation name, letter case ignored
/// ("BaseServices.clsBaseData", "baseservices.clsbasedata"). The object keeps
/// a copy of `context`. An unknown name raises 429 ("ActiveX component can't
/// create object").
std::shared_ptr<ServiceObject> CreateObject(std::string_view creationName, const Context &context);

/// The same, for a variable of the service's own class: a name that makes an
/// object of another class raises 13 ("Type mismatch"), as assigning it to
/// such a variable did.
///   auto objBaseData = services::CreateObject<BaseServices::clsBaseData>(
///       "BaseServices.clsBaseData", context);
template <class Service>
std::shared_ptr<Service> CreateObject(std::string_view creationName, const Context &context) {
    auto object = std::dynamic_pointer_cast<Service>(CreateObject(creationName, context));
    if (!object) {
        throw vb::Error::standard(vb::err::TypeMismatch);
    }
    return object;
}

/// The creation names CreateObject knows, in their usual spelling.
std::vector<std::string> creationNames();

/// Makes an object of a class for CreateObject.
using ObjectFactory = std::function<std::shared_ptr<ServiceObject>(const Context &)>;

/// Enters a creatable class of a layer above this one (the module's public
/// class) under its creation name, as registering a component made it
/// known by name. Entering a name again replaces its factory; the name of
/// one of the six services or of the print engine's two objects raises 5.
void registerCreatable(std::string_view creationName, ObjectFactory make);

} // namespace services
