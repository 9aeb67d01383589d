#include "SharedDatabase.h"

#include "TestCluster.h"

namespace durability {

SharedDatabase::SharedDatabase(Engine engine, const DurabilityFolder &folder) {
    if (engine == Engine::SQLite) {
        db_ = folder.demoDatabase("shared.db").string();
        return;
    }
    const std::string cluster = pgtest::clusterUri(whyNot_);
    if (cluster.empty()) {
        return;
    }
    records::DemoOptions demo;
    demo.items = records::demoFeaturedItems;
    server_ = std::make_unique<records::ScratchServerDatabase>(cluster, demo);
    db_ = server_->uri();
}

std::string engineName(Engine engine) {
    return engine == Engine::SQLite ? "SQLite" : "PostgreSQL";
}

} // namespace durability
