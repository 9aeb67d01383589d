// Runs the case files under data/: each line calls one function and names its result.
#include "ValueCases.h"

#include "vb/Clock.h"
#include "vb/Conversion.h"
#include "vb/Error.h"
#include "vb/Format.h"
#include "vb/Strings.h"

#include <functional>
#include <gtest/gtest.h>
#include <map>

using vb::Variant;
using Args = std::vector<Variant>;

namespace {

std::string text(const Variant &v) {
    return vb::CStr(v);
}
long whole(const Variant &v) {
    return vb::CLng(v);
}

long inStr(const Args &a, vb::Compare cmp) {
    if (a.size() == 3)
        return vb::InStr(whole(a[0]), text(a[1]), text(a[2]), cmp);
    return vb::InStr(text(a[0]), text(a[1]), cmp);
}

const std::map<std::string, std::function<Variant(const Args &)>> &functions() {
    using vb::Compare;
    static const std::map<std::string, std::function<Variant(const Args &)>> table = {
        {"Val", [](const Args &a) { return Variant(vb::Val(a[0])); }},
        {"CInt", [](const Args &a) { return Variant(vb::CInt(a[0])); }},
        {"CLng", [](const Args &a) { return Variant(vb::CLng(a[0])); }},
        {"CDbl", [](const Args &a) { return Variant(vb::CDbl(a[0])); }},
        {"CBool", [](const Args &a) { return Variant(vb::CBool(a[0])); }},
        {"CStr", [](const Args &a) { return Variant(vb::CStr(a[0])); }},
        {"TextOf", [](const Args &a) { return Variant(vb::TextOf(a[0])); }},
        {"CDate", [](const Args &a) { return Variant(vb::CDate(a[0])); }},
        {"IsNumeric", [](const Args &a) { return Variant(vb::IsNumeric(a[0])); }},
        {"IsDate", [](const Args &a) { return Variant(vb::IsDate(a[0])); }},
        {"Int", [](const Args &a) { return Variant(vb::Int(vb::CDbl(a[0]))); }},
        {"Fix", [](const Args &a) { return Variant(vb::Fix(vb::CDbl(a[0]))); }},
        {"Round",
         [](const Args &a) {
             int decimals = a.size() > 1 ? static_cast<int>(whole(a[1])) : 0;
             return Variant(vb::Round(vb::CDbl(a[0]), decimals));
         }},
        {"Str", [](const Args &a) { return Variant(vb::Str(vb::CDbl(a[0]))); }},
        {"Format",
         [](const Args &a) {
             return Variant(a.size() > 1 ? vb::Format(a[0], text(a[1])) : vb::Format(a[0]));
         }},
        {"Trim", [](const Args &a) { return Variant(vb::Trim(text(a[0]))); }},
        {"LTrim", [](const Args &a) { return Variant(vb::LTrim(text(a[0]))); }},
        {"RTrim", [](const Args &a) { return Variant(vb::RTrim(text(a[0]))); }},
        {"UCase", [](const Args &a) { return Variant(vb::UCase(text(a[0]))); }},
        {"LCase", [](const Args &a) { return Variant(vb::LCase(text(a[0]))); }},
        {"Left", [](const Args &a) { return Variant(vb::Left(text(a[0]), whole(a[1]))); }},
        {"Right", [](const Args &a) { return Variant(vb::Right(text(a[0]), whole(a[1]))); }},
        {"Mid",
         [](const Args &a) {
             if (a.size() == 3)
                 return Variant(vb::Mid(text(a[0]), whole(a[1]), whole(a[2])));
             return Variant(vb::Mid(text(a[0]), whole(a[1])));
         }},
        {"Len",
         [](const Args &a) { return Variant(static_cast<std::int32_t>(vb::Len(text(a[0])))); }},
        {"InStr",
         [](const Args &a) {
             return Variant(static_cast<std::int32_t>(inStr(a, Compare::Binary)));
         }},
        {"InStrText",
         [](const Args &a) { return Variant(static_cast<std::int32_t>(inStr(a, Compare::Text))); }},
        {"Replace",
         [](const Args &a) { return Variant(vb::Replace(text(a[0]), text(a[1]), text(a[2]))); }},
        {"Space", [](const Args &a) { return Variant(vb::Space(whole(a[0]))); }},
        {"String", [](const Args &a) { return Variant(vb::String(whole(a[0]), text(a[1]))); }},
        {"Chr", [](const Args &a) { return Variant(vb::Chr(static_cast<int>(whole(a[0])))); }},
        {"Asc", [](const Args &a) { return Variant(vb::Asc(text(a[0]))); }},
        {"StrComp",
         [](const Args &a) {
             return Variant(vb::StrComp(text(a[0]), text(a[1]), Compare::Binary));
         }},
        {"StrCompText",
         [](const Args &a) { return Variant(vb::StrComp(text(a[0]), text(a[1]), Compare::Text)); }},
    };
    return table;
}

std::string outcome(const vbtest::ValueCase &c) {
    auto it = functions().find(c.function);
    if (it == functions().end())
        return "unknown function " + c.function;
    try {
        return vbtest::render(it->second(c.args));
    } catch (const vb::Error &e) {
        return "!" + std::to_string(e.number());
    }
}

/// Each case file runs with the session's defaults and a clock fixed on
/// 15 March 2024, so that dates without a year read the same on any day.
class ValueCasesTest : public ::testing::Test {
protected:
    void SetUp() override { vb::setClock(vb::DateSerial(2024, 3, 15)); }
    void TearDown() override {
        vb::setClock(std::nullopt);
        vb::setShortDateFormat("dd/mm/yyyy");
    }

    static void runFile(const std::string &name) {
        std::vector<vbtest::ValueCase> cases = vbtest::readValueCases(TEST_DATA_DIR "/" + name);
        ASSERT_FALSE(cases.empty());
        for (const vbtest::ValueCase &c : cases)
            EXPECT_EQ(outcome(c), c.expected) << name << ":" << c.line << " " << c.function;
    }
};

TEST_F(ValueCasesTest, Conversions) {
    runFile("conversion.cases");
}
TEST_F(ValueCasesTest, NumberFormats) {
    runFile("number_format.cases");
}
TEST_F(ValueCasesTest, DateFormats) {
    runFile("date_format.cases");
}
TEST_F(ValueCasesTest, Strings) {
    runFile("strings.cases");
}

} // namespace
