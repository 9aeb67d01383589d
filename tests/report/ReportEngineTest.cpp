#include "report/Definition.h"
#include "report/Document.h"
#include "report/PdfWriter.h"
#include "report/Table.h"
#include "vb/Error.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

namespace report {
namespace {

namespace fs = std::filesystem;

std::string errorOf(const std::function<void()> &action) {
    try {
        action();
    } catch (const vb::Error &e) {
        return std::to_string(e.number()) + " " + e.description();
    }
    return "no error";
}

const char *listing = "# a listing\n"
                      "title Items\n"
                      "size 40 12\n"
                      "parameter Godown number\n"
                      "query select * from t\n"
                      "query where g = {?Godown}\n"
                      "header center Godown {?Godown}\n"
                      "pageheader right Page {page} of {pages}\n"
                      "column No; {serial}; 3; right\n"
                      "column Item; Name; 20; left\n"
                      "column Qty; Qty; 8; right; 0.000; sum\n"
                      "total Total\n"
                      "footer\n"
                      "footer End of {Name}\n";

Table rows(int count) {
    Table t{{"Name", "Qty"}, {}};
    for (int i = 1; i <= count; ++i) {
        t.rows.push_back({vb::Variant("item " + std::to_string(i)), vb::Variant(i * 1.5)});
    }
    return t;
}

TEST(ReportDefinitionTest, ReadsTheLinesAndJoinsTheQuery) {
    const Definition d = parseDefinition(listing, "listing.rpt");
    EXPECT_EQ(d.title, "Items");
    EXPECT_EQ(d.width, 40);
    EXPECT_EQ(d.lines, 12);
    EXPECT_EQ(d.query, "select * from t where g = {?Godown}");
    ASSERT_EQ(d.columns.size(), 3u);
    EXPECT_TRUE(d.columns[2].sum);
    EXPECT_EQ(d.columns[2].format, "0.000");
    EXPECT_EQ(d.header[0].align, Align::Center);
}

TEST(ReportDefinitionTest, MalformedLinesAreRefusedNamingTheLine) {
    EXPECT_EQ(errorOf([] { parseDefinition("title x\nquery q\ncolum A; b; 3; left\n", "r"); }),
              "5 r:3: unknown keyword 'colum'");
    EXPECT_EQ(errorOf([] { parseDefinition("query q\ncolumn A; b; wide; left\n", "r"); }),
              "5 r:2: 'wide' is no number from 1 to 200");
    EXPECT_EQ(errorOf([] { parseDefinition("query q\ncolumn A; b; 3; middle\n", "r"); }),
              "5 r:2: 'middle' is no alignment (left, center, right)");
    EXPECT_EQ(errorOf([] { parseDefinition("column A; b; 3; left\n", "r"); }),
              "5 r:1: the report has no query");
    EXPECT_EQ(errorOf([] { parseDefinition("query q\nparameter P date\ncolumn A; b; 3; left", "r"); }),
              "5 r:2: a parameter is NAME number or NAME text");
}

TEST(ReportDefinitionTest, FilesThatAreMissingBinaryOrHugeAreRefused) {
    const fs::path dir = fs::temp_directory_path() / ("report-test-" + std::to_string(getpid()));
    fs::create_directories(dir);
    EXPECT_EQ(errorOf([&] { readDefinition(dir / "none.rpt"); }), "20504 Invalid file name.");
    std::ofstream(dir / "binary.rpt", std::ios::binary) << std::string("query q\0x", 9);
    EXPECT_EQ(errorOf([&] { readDefinition(dir / "binary.rpt"); }).substr(0, 3), "75 ");
    std::ofstream(dir / "huge.rpt") << std::string(2 << 20, '#');
    EXPECT_EQ(errorOf([&] { readDefinition(dir / "huge.rpt"); }).substr(0, 3), "75 ");
    fs::remove_all(dir);
}

TEST(ReportLayoutTest, RowsFillThePagesBetweenHeadersAndFooters) {
    const Definition d = parseDefinition(listing, "listing.rpt");
    const Document doc = layOut(d, {vb::Variant(7)}, rows(12));
    // Page 1: header, page header, rule, headings, rule: 7 rows fit in 12.
    ASSERT_EQ(doc.pages.size(), 3u);
    EXPECT_EQ(doc.pages[0][0], std::string(16, ' ') + "Godown 7");
    EXPECT_EQ(doc.pages[0][1], "                             Page 1 of 3");
    EXPECT_EQ(doc.pages[0][3], " No Item                      Qty");
    EXPECT_EQ(doc.pages[0][5], "  1 item 1                  1.500");
    EXPECT_EQ(doc.pages[0][11], "  7 item 7                 10.500");
    EXPECT_EQ(doc.pages[1][0], "                             Page 2 of 3")
        << "the header stands on the first page only";
    EXPECT_EQ(doc.pages[1][4], "  8 item 8                 12.000");
    // Page 2 holds rows 8 to 12, the totals' rule and line and the footer's
    // empty line; its second line runs over to page 3.
    EXPECT_EQ(doc.pages[1][9], "---------------------------------");
    EXPECT_EQ(doc.pages[1][10], "    Total                 117.000");
    EXPECT_EQ(doc.pages[1][11], "");
    EXPECT_EQ(doc.pages[2][4], "End of item 1") << "{Name} is the first row's";
    EXPECT_EQ(doc.pages[2][5], "") << "the rest of the last page is empty";
    for (const auto &page : doc.pages) {
        EXPECT_EQ(page.size(), 12u);
    }
}

TEST(ReportLayoutTest, ParametersAndPlaceholdersMustBeKnown) {
    const Definition d = parseDefinition(listing, "listing.rpt");
    EXPECT_EQ(errorOf([&] { layOut(d, {}, rows(1)); }), "5 The parameter Godown has no value");
    EXPECT_EQ(boundQuery(d, {vb::Variant(7.0)}), "select * from t where g = 7");
    Definition bad = d;
    bad.footer.push_back({Align::Left, "{Price}"});
    EXPECT_EQ(errorOf([&] { layOut(bad, {vb::Variant(7)}, rows(1)); }),
              "5 The report names {Price}, which is neither a parameter nor a field");
    Definition empty = d;
    empty.emptyText = "Nothing to show.";
    const Document none = layOut(empty, {vb::Variant(7)}, rows(0));
    ASSERT_EQ(none.pages.size(), 1u);
    EXPECT_EQ(none.pages[0][5], "Nothing to show.");
}

TEST(ReportSelectionTest, KeepsTheRowsTheFormulaNames) {
    Table t{{"ItemId", "Name"},
            {{vb::Variant(3), vb::Variant("a")},
             {vb::Variant(12), vb::Variant("b")},
             {vb::Variant(7), vb::Variant("c")}}};
    EXPECT_EQ(applySelectionFormula(t, "{vwquantityunprocessed.itemid} IN [12, 3]").rows.size(), 2u);
    EXPECT_EQ(applySelectionFormula(t, "{v.ItemId} IN [4]").rows.size(), 1u - 1u);
    EXPECT_EQ(applySelectionFormula(t, "{v.name} = 'C'").rows.size(), 1u);
    EXPECT_EQ(applySelectionFormula(t, "").rows.size(), 3u);
    EXPECT_EQ(errorOf([&] { applySelectionFormula(t, "{v.price} IN [1]"); }),
              "5 The selection formula \"{v.price} IN [1]\" names the field price, which the "
              "report's rows lack");
    EXPECT_EQ(errorOf([&] { applySelectionFormula(t, "{v.ItemId} > 3"); }),
              "5 The selection formula \"{v.ItemId} > 3\" is neither {field} IN [list] nor "
              "{field} = value");
}

std::string run(const std::string &command) {
    std::string out;
    FILE *pipe = popen(command.c_str(), "r");
    char buffer[4096];
    while (pipe && fgets(buffer, sizeof buffer, pipe)) {
        out += buffer;
    }
    if (pipe) {
        pclose(pipe);
    }
    return out;
}

TEST(ReportPdfTest, EachPageBecomesAPdfPageWithItsTextAndAnEmbeddedFont) {
    const Definition d = parseDefinition(listing, "listing.rpt");
    const Document doc = layOut(d, {vb::Variant(7)}, rows(12));
    const fs::path file = fs::temp_directory_path() / ("report-" + std::to_string(getpid()) + ".pdf");
    writePdf(doc, file);
    EXPECT_NE(run("pdfinfo " + file.string()).find("Pages:           3"), std::string::npos);
    const std::string text = run("pdftotext -layout " + file.string() + " -");
    EXPECT_NE(text.find("Page 2 of 3"), std::string::npos) << text;
    EXPECT_NE(text.find("item 12"), std::string::npos);
    EXPECT_NE(text.find("117.000"), std::string::npos);
    const std::string fonts = run("pdffonts " + file.string());
    EXPECT_NE(fonts.find("DejaVuSansMono"), std::string::npos) << fonts;
    EXPECT_NE(fonts.find(" yes yes "), std::string::npos) << "embedded, as a subset: " << fonts;
    fs::remove(file);

    EXPECT_EQ(errorOf([&] { writePdf(doc, "/no/such/folder/x.pdf"); }).substr(0, 3), "75 ");
}

} // namespace
} // namespace report
