#include "services/ServiceObject.h"

namespace services {

ServiceObject::~ServiceObject() = default;

} // namespace services
