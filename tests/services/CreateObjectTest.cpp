#include "services/CreateObject.h"

#include "ServiceFixture.h"
#include "services/clsBaseData.h"
#include "services/clsBaseTools.h"
#include "vb/Strings.h"

namespace servicetest {
namespace {

using CreateObjectTest = ServiceTest;

TEST_F(CreateObjectTest, MakesEachServiceWhateverTheLetterCase) {
    const auto names = services::creationNames();
    ASSERT_GE(names.size(), 6u);
    for (std::size_t i = 0; i < 6; ++i) {
        for (const std::string &spelling : {names[i], vb::LCase(names[i]), vb::UCase(names[i])}) {
            EXPECT_EQ(services::CreateObject(spelling, context)->creationName(), names[i]);
        }
    }
    auto a = services::CreateObject<BaseServices::clsBaseData>("baseservices.clsbasedata", context);
    a->strTableName = "aItem";
    EXPECT_EQ(services::CreateObject<BaseServices::clsBaseData>("BaseServices.clsBaseData", context)
                  ->strTableName,
              "")
        << "each call makes a new object";
}

TEST_F(CreateObjectTest, UnknownNameRaises429AndAnotherClassTypeMismatch) {
    for (std::string_view name : {"BaseServices.clsBaseDat", "", " BaseServices.clsBaseData"}) {
        const vb::Error e = errorOf([&] { services::CreateObject(name, context); });
        EXPECT_EQ(e.number(), 429) << name;
        EXPECT_EQ(e.description(), "ActiveX component can't create object");
    }
    EXPECT_EQ(errorOf([&] {
                  services::CreateObject<BaseServices::clsBaseData>("BaseServices.clsBaseTools",
                                                                    context);
              }).number(),
              vb::err::TypeMismatch);
}

class Creatable : public services::ServiceObject {
public:
    explicit Creatable(int version) : version(version) {}
    std::string_view creationName() const override { return "tqsvtest.clsCreatable"; }
    int version;
};

services::ObjectFactory creatable(int version) {
    return [version](const services::Context &) { return std::make_shared<Creatable>(version); };
}

TEST_F(CreateObjectTest, RegisteredClassesAreMadeByNameButNoServiceIsReplaced) {
    services::registerCreatable("tqsvtest.clsCreatable", creatable(1));
    services::registerCreatable("TQSVTEST.CLSCREATABLE", creatable(2));
    EXPECT_EQ(services::CreateObject<Creatable>("tqsvtest.clscreatable", context)->version, 2);
    EXPECT_EQ(errorOf([] {
                  services::registerCreatable("baseservices.clsBaseData", creatable(3));
              }).number(),
              vb::err::InvalidProcedureCall);
    const auto names = services::creationNames();
    EXPECT_EQ(std::count(names.begin(), names.end(), "tqsvtest.clsCreatable"), 1);
}

TEST(ContextTest, StateDirectoryFollowsXdgThenHome) {
    const char *xdg = std::getenv("XDG_STATE_HOME");
    const std::string saved = xdg ? xdg : "";
    const auto home = std::filesystem::path(std::getenv("HOME")) / ".local/state/stockverify";
    setenv("XDG_STATE_HOME", "/var/tmp/xdg-state", 1);
    EXPECT_EQ(services::defaultStateDirectory(), "/var/tmp/xdg-state/stockverify");
    setenv("XDG_STATE_HOME", "relative/state", 1); // not absolute: ignored
    EXPECT_EQ(services::defaultStateDirectory(), home);
    unsetenv("XDG_STATE_HOME");
    EXPECT_EQ(services::defaultStateDirectory(), home);
    if (xdg != nullptr) {
        setenv("XDG_STATE_HOME", saved.c_str(), 1);
    }
}

} // namespace
} // namespace servicetest
