#include "hosts/script/ScenarioParser.h"

#include "hosts/script/Failure.h"

#include <gtest/gtest.h>

namespace script {
namespace {

Scenario parse(std::string_view text) {
    return parseScenario(text, "p.scn", ".", {"orders"});
}

TEST(ScenarioParserTest, BadLinesNameTheirLineAndFault) {
    struct Case {
        const char *text;
        int line;
        const char *message;
    };
    const Case cases[] = {
        {"# c\n\nfrobnicate x\n", 3, "unknown command \"frobnicate\""},
        {"show register\n", 1, "unknown show target \"register\" (known: orders)"},
        {"type \"open\n", 1, "a quoted text is not closed"},
        {"type \"a\\q\"\n", 1, "unknown escape \\q"},
        {"type \"a\"b\n", 1, "a blank must follow a quoted text"},
        {"click\n", 1, "missing a control"},
        {"click cmd-OK\n", 1, "bad control name \"cmd-OK\""},
        {"click txtQty(x)\n", 1, "bad control index"},
        {"click cmdOK now\n", 1, "unexpected \"now\" at the end of the line"},
        {"select lvw cell 1 2\n", 1, "select wants a row"},
        {"hover lvw row 1\n", 1, "hover cannot aim at that part"},
        {"press Enter Hyper+X\n", 1, "unknown key \"Hyper+X\""},
        {"answer maybe\n", 1, "answer takes ok, cancel, yes, no"},
        {"set colour 3\n", 1, "set knows connection"},
        {"set company x\n", 1, "a number must be a whole number, not \"x\""},
        {"set processdate 2026-02-30\n", 1, "must be a day as YYYY-MM-DD"},
        {"set clock 2026-02-03 25:00\n", 1, "the time must be HH:MM or HH:MM:SS"},
        {"db demo items 5\n", 1, "at least 12 items"},
        {"db demo colour red\n", 1, "db demo takes items N and date"},
        {"expect msgbox \"a\" icon 3\n", 1, "expect msgbox takes style N, and title \"TEXT\" or untitled"},
        {"expect pointer busy\n", 1, "must be a whole number"},
        {"expect txtA\n", 1, "wants .Property VALUE, cell ROW COL VALUE, column N ..., or rows"},
        {"expect txtA.Text\n", 1, "missing the expected value"},
        {"expect rows\n", 1, "missing a SELECT statement"},
        {"sql\n", 1, "missing a SQL statement"},
    };
    for (const Case &c : cases) {
        try {
            parse(c.text);
            ADD_FAILURE() << c.text << " parsed";
        } catch (const BadScript &bad) {
            EXPECT_EQ(bad.line(), c.line) << c.text;
            EXPECT_NE(bad.message().find(c.message), std::string::npos)
                << c.text << " gave: " << bad.message();
        }
    }
}

TEST(ScenarioParserTest, BlocksRunToABlankLine) {
    Scenario s = parse("expect rows select a, b from t\n"
                       "1 | x \n"
                       "# a comment inside the block\n"
                       "2\t\"\"\n"
                       "\n"
                       "expect lvwLines rows\n"
                       "nut|3|\n");
    ASSERT_EQ(s.steps.size(), 2u);
    const auto &rows = std::get<ExpectRowsStep>(s.steps[0].action);
    EXPECT_EQ(rows.query, "select a, b from t");
    EXPECT_EQ(rows.rows, (Rows{{"1", "x"}, {"2", ""}}));
    const auto &list = std::get<ExpectControlRowsStep>(s.steps[1].action);
    EXPECT_EQ(list.control.name, "lvwLines");
    EXPECT_EQ(list.rows, (Rows{{"nut", "3", ""}}));
    EXPECT_EQ(s.steps[1].line, 6);
    EXPECT_EQ(s.lastLine, 7);
}

TEST(ScenarioParserTest, ControlNamesWithFormsIndexesAndDottedProperties) {
    Scenario s = parse("expect frmMaster!txtQty(2).Text \"a \\\"b\\\"\\n\"\n"
                       "expect lvwRequest.ListItems.Count 3\n"
                       "rightclick lvwRequest row 2 choose mnuAdd\n"
                       "EXPECT Focus none\n");
    const auto &p = std::get<ExpectPropertyStep>(s.steps[0].action);
    EXPECT_EQ(p.control.form, "frmMaster");
    EXPECT_EQ(p.control.name, "txtQty");
    EXPECT_EQ(p.control.index, 2);
    EXPECT_EQ(p.control.text(), "frmMaster!txtQty(2)");
    EXPECT_EQ(p.property, "Text");
    EXPECT_EQ(p.value, "a \"b\"\n");
    EXPECT_EQ(std::get<ExpectPropertyStep>(s.steps[1].action).property, "ListItems.Count");
    const auto &click = std::get<PointerStep>(s.steps[2].action);
    EXPECT_EQ(click.gesture, PointerStep::Gesture::RightClick);
    EXPECT_EQ(click.spot.kind, Spot::Kind::Row);
    EXPECT_EQ(click.spot.row, 2);
    EXPECT_EQ(click.menuChoice, "mnuAdd");
    EXPECT_FALSE(std::get<ExpectFocusStep>(s.steps[3].action).control.has_value());
}

TEST(ScenarioParserTest, SessionLinesKeepTheirValues) {
    Scenario s = parse("set connection sqlite:/tmp/a b.db\n"
                       "set clock 2026-11-22 10:30\n"
                       "set title \"Stock Verification \"\n"
                       "db demo date 2026-01-31 items 40\n");
    EXPECT_EQ(std::get<SetStep>(s.steps[0].action).text, "sqlite:/tmp/a b.db");
    vb::DateTimeParts clock = vb::partsOf(std::get<SetStep>(s.steps[1].action).date);
    EXPECT_EQ(clock.day, 22);
    EXPECT_EQ(clock.hour, 10);
    EXPECT_EQ(clock.minute, 30);
    EXPECT_EQ(std::get<SetStep>(s.steps[2].action).text, "Stock Verification ");
    const auto &db = std::get<DbStep>(s.steps[3].action);
    EXPECT_EQ(db.items, 40);
    EXPECT_EQ(db.date, std::chrono::sys_days{std::chrono::year{2026} / 1 / 31});
}

} // namespace
} // namespace script
