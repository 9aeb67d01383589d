#include "ServiceFixture.h"

#include "ado/Recordset.h"
#include "module/records/DatabaseFile.h"
#include "vb/Conversion.h"

#include <cstdlib>

namespace servicetest {

namespace {

std::filesystem::path newFolder(const char *prefix) {
    std::string pattern = (std::filesystem::temp_directory_path() / prefix).string() + "-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("cannot make a temporary folder");
    }
    return pattern;
}

// The demo database, made once for the whole run and removed at its end.
class DemoTemplate {
public:
    DemoTemplate() : folder_(newFolder("svctest-demo")) {
        records::DatabaseFileOptions options;
        options.demo = records::DemoOptions{};
        options.demo->items = records::demoFeaturedItems;
        records::createDatabaseFile(path(), options);
    }
    ~DemoTemplate() {
        std::error_code ignored; // a folder already gone needs no removing
        std::filesystem::remove_all(folder_, ignored);
    }
    std::filesystem::path path() const { return folder_ / "demo.db"; }

private:
    std::filesystem::path folder_;
};

const std::filesystem::path &demoDatabase() {
    static const DemoTemplate demo;
    static const std::filesystem::path path = demo.path();
    return path;
}

} // namespace

ServiceTest::ServiceTest() : folder(newFolder("svctest")), context(screen, folder / "state") {
    std::filesystem::copy_file(demoDatabase(), folder / "test.db");
    adocon.Open("sqlite:" + (folder / "test.db").string());
    context.connection = adocon;
    context.companyId = 1;
}

ServiceTest::~ServiceTest() {
    if (adocon.State() == 1) {
        adocon.Close();
    }
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

std::string ServiceTest::scalar(std::string_view sql) const {
    ado::Recordset rs = adocon.Execute(sql);
    if (rs.Eof()) {
        return "<no row>";
    }
    const vb::Variant value = rs.Fields(0).Value();
    return value.isNull() ? "<null>" : vb::CStr(value);
}

} // namespace servicetest
