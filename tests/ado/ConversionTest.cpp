// Date literals and values written into typed columns, case by case from data/conversions.cases.
#include "ado/sql/DateText.h"
#include "ado/sqlite/ValueConversion.h"

#include "vb/Error.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace {

using namespace ado::sqlite;
using ado::sql::canonicalDate;

// The text between the first pair of single quotes, and what follows " => ".
struct Line {
    std::string head, text, expected;
};

Line split(const std::string &line) {
    auto open = line.find('\'');
    auto close = line.find('\'', open + 1);
    auto arrow = line.find(" => ", close);
    return {line.substr(0, open), line.substr(open + 1, close - open - 1), line.substr(arrow + 4)};
}

std::string describe(const StoredValue &v) {
    if (const auto *i = std::get_if<std::int64_t>(&v))
        return "int " + std::to_string(*i);
    if (const auto *d = std::get_if<double>(&v)) {
        char buffer[32];
        std::snprintf(buffer, sizeof buffer, "real %g", *d);
        return buffer;
    }
    if (const auto *s = std::get_if<std::string>(&v))
        return "text " + *s;
    return "null";
}

TEST(ConversionTest, CasesFromDataFile) {
    std::ifstream in(std::string(TEST_DATA_DIR) + "/conversions.cases");
    ASSERT_TRUE(in) << "conversions.cases not found";
    std::string line;
    int number = 0, cases = 0;
    while (std::getline(in, line)) {
        ++number;
        if (line.empty() || line[0] == '#')
            continue;
        ++cases;
        Line c = split(line);
        SCOPED_TRACE("conversions.cases line " + std::to_string(number) + ": " + line);
        std::string found;
        if (c.head == "date ") {
            auto date = canonicalDate(std::string_view(c.text));
            found = date ? *date : "none";
        } else {
            ColumnType type = columnTypeOf(c.head.substr(6));
            try {
                found = describe(toStored(vb::Variant(c.text), type));
            } catch (const vb::Error &e) {
                EXPECT_EQ(e.number(), -2147217913);
                found = "error " + e.description();
            }
        }
        EXPECT_EQ(found, c.expected);
    }
    EXPECT_GT(cases, 50);
}

TEST(ConversionTest, ValuesOtherThanTextGoInByTheirKind) {
    ColumnType integer = columnTypeOf("int"), decimal = columnTypeOf("numeric(18,3)"),
               text = columnTypeOf("varchar(10)"), date = columnTypeOf("datetime");
    EXPECT_EQ(describe(toStored(vb::Variant(2.5), integer)), "int 2"); // half to even
    EXPECT_EQ(describe(toStored(vb::Variant(3.5), integer)), "int 4");
    EXPECT_EQ(describe(toStored(vb::Variant(true), integer)), "int -1");
    EXPECT_EQ(describe(toStored(vb::Variant(true), columnTypeOf("bit"))), "int 1");
    EXPECT_EQ(describe(toStored(vb::Variant(std::int32_t{7}), decimal)), "int 7");
    EXPECT_EQ(describe(toStored(vb::Variant(1.25), decimal)), "real 1.25");
    EXPECT_EQ(describe(toStored(vb::Variant(1.5), text)), "text 1.5");
    EXPECT_EQ(describe(toStored(vb::Variant::null(), integer)), "null");
    EXPECT_EQ(describe(toStored(vb::Variant(), text)), "null");
    vb::Date noon{vb::DateSerial(2026, 11, 22).serial + 0.5};
    EXPECT_EQ(describe(toStored(vb::Variant(noon), date)), "text 2026-11-22 12:00:00");
    auto overflow = [&] { toStored(vb::Variant(3e9), integer); };
    EXPECT_THROW(overflow(), vb::Error);
}

TEST(ConversionTest, ReadBackTypesByColumnKind) {
    EXPECT_EQ(readBack(std::int64_t{5}, ColumnKind::Integer), vb::Variant(5));
    EXPECT_EQ(readBack(std::int64_t{5}, ColumnKind::Decimal), vb::Variant(5.0));
    EXPECT_EQ(readBack(std::int64_t{5000000000}, ColumnKind::Integer), vb::Variant(5e9));
    EXPECT_EQ(readBack(std::int64_t{1}, ColumnKind::Bit), vb::Variant(true));
    EXPECT_EQ(readBack(std::string("2026-11-22 00:00:00"), ColumnKind::Date),
              vb::Variant(vb::DateSerial(2026, 11, 22)));
    EXPECT_EQ(readBack(std::string("2026-11-22 00:00:00"), ColumnKind::Unknown),
              vb::Variant(vb::DateSerial(2026, 11, 22)));
    EXPECT_EQ(readBack(std::string("2026-11-22 00:00:00"), ColumnKind::Text),
              vb::Variant("2026-11-22 00:00:00"));
    EXPECT_EQ(readBack(std::string("not a date"), ColumnKind::Date), vb::Variant("not a date"));
    EXPECT_TRUE(readBack(std::monostate{}, ColumnKind::Text).isNull());
}

} // namespace
