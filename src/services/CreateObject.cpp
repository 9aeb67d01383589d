#include "services/CreateObject.h"

#include "services/FaultEntry.h"
#include "services/PrintEngine.h"
#include "services/clsActivityTrail.h"
#include "services/clsBaseData.h"
#include "services/clsBaseTools.h"
#include "services/clsGridColumnProfile.h"
#include "services/clsScreenPalette.h"
#include "vb/Strings.h"

#include <array>
#include <functional>

namespace services {

namespace {

struct Factory {
    std::string name;
    ObjectFactory make;
};

template <class Service> Factory factoryOf() {
    return {std::string(Service::CreationName),
            [](const Context &context) { return std::make_shared<Service>(context); }};
}

const std::array<Factory, 8> &factories() {
    static const std::array<Factory, 8> all{
        factoryOf<BaseServices::clsBaseData>(),
        factoryOf<BaseServices::clsBaseTools>(),
        factoryOf<FaultDesk::FaultEntry>(),
        factoryOf<StockActivityTrail::clsActivityTrail>(),
        factoryOf<ScreenPalette::clsScreenPalette>(),
        factoryOf<GridColumnProfiles::clsGridColumnProfile>(),
        factoryOf<PrintEngine>(),
        factoryOf<ReportControl>(),
    };
    return all;
}

/// Classes entered by registerCreatable, after the six services.
std::vector<Factory> &registered() {
    static std::vector<Factory> all;
    return all;
}

} // namespace

void registerCreatable(std::string_view creationName, ObjectFactory make) {
    for (const Factory &factory : factories()) {
        if (vb::StrComp(creationName, factory.name, vb::Compare::Text) == 0) {
            throw vb::Error(vb::err::InvalidProcedureCall, "services",
                            factory.name + " is a service of its own and cannot be replaced");
        }
    }
    for (Factory &factory : registered()) {
        if (vb::StrComp(creationName, factory.name, vb::Compare::Text) == 0) {
            factory.make = std::move(make);
            return;
        }
    }
    registered().push_back({std::string(creationName), std::move(make)});
}

std::shared_ptr<ServiceObject> CreateObject(std::string_view creationName, const Context &context) {
    for (const Factory &factory : factories()) {
        if (vb::StrComp(creationName, factory.name, vb::Compare::Text) == 0) {
            return factory.make(context);
        }
    }
    for (const Factory &factory : registered()) {
        if (vb::StrComp(creationName, factory.name, vb::Compare::Text) == 0) {
            return factory.make(context);
        }
    }
    // The old runtime named no source for a class it could not find.
    throw vb::Error::standard(429);
}

std::vector<std::string> creationNames() {
    std::vector<std::string> names;
    for (const Factory &factory : factories()) {
        names.emplace_back(factory.name);
    }
    for (const Factory &factory : registered()) {
        names.emplace_back(factory.name);
    }
    return names;
}

} // namespace services
