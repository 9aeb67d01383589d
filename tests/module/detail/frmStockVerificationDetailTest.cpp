#include "frame/ModuleSession.h"

#include "forms/Input.h"
#include "forms/ListView.h"
#include "forms/MsgBox.h"
#include "module/detail/frmStockVerificationDetail.h"
#include "module/entry/frmStockVerification.h"
#include "module/frame/Module.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tqsv2731 {
namespace {

/// A module with its register loaded (which makes the shared services) and
/// the detail form shown above the entry form, as the entry form opens it.
class DetailSession {
public:
    explicit DetailSession(const test::SessionValues &values = {}) : s(values) { s.m.frmMaster(); }

    frmStockVerification &entry() { return s.m.frmStockVerification(); }

    /// A row as the register loads it from a stored entry.
    void storedRow(int itemId, const std::string &description, const std::string &avail,
                   const std::string &verified) {
        forms::ListView &list = entry().lvwRequest;
        const std::string n = std::to_string(list.ListItems().Count() + 1);
        forms::ListItem &row = list.ListItems().Add(0, "", n);
        const std::vector<std::string> cells{
            "1", "",  description, avail, verified, "0.000", "0.000", std::to_string(itemId),
            n,   "1", "1",         "2.5", "PCS"};
        for (std::size_t i = 0; i < cells.size(); ++i) {
            row.setSubItems(static_cast<int>(i) + 1, cells[i]);
        }
    }

    frmStockVerificationDetail &open(const std::string &mode, int selected = 1) {
        s.m.strDetailMode = mode;
        if (mode == "E") {
            entry().intSelectedItem = static_cast<std::int16_t>(selected);
            entry().lvwRequest.ListItems()(selected).setSelected(true);
        }
        frmStockVerificationDetail &form = s.m.frmStockVerificationDetail();
        form.Show();
        return form;
    }

    /// Puts an item in the combo and makes it current, as a scan does.
    static void choose(frmStockVerificationDetail &form, int itemId, const std::string &text) {
        form.cboItem.AddItem(text);
        form.cboItem.setItemData(form.cboItem.NewIndex(), itemId);
        form.cboItem.setListIndex(form.cboItem.NewIndex());
    }

    std::vector<std::string> row(int index) {
        const forms::ListItem &item = entry().lvwRequest.ListItems()(index);
        std::vector<std::string> cells{item.Text()};
        for (int n = 1; n <= 13; ++n) {
            cells.push_back(item.SubItems(n));
        }
        return cells;
    }

    test::ModuleSession s;
};

std::string locationStatement(int godown, int item) {
    const std::string g = std::to_string(godown);
    const std::string i = std::to_string(item);
    return "SELECT locationid, itemid, qty, LoiLocation.lLocationName  FROM(SELECT locationid, "
           "godownId, ItemId, SUM(qty) qty FROM (SELECT ladlocationid locationid, ladgodownid "
           "godownId, ladItemId ItemId ,SUM(ladItemQty) Qty   FROM loilocationArrivalDetails WHERE "
           "ladgodownId = " +
           g + " AND ladItemId = " + i +
           " AND ladCancel = 0 and ladconfirmed=1 GROUP BY ladlocationid, ladgodownId,ladItemId  "
           "UNION ALL SELECT lidlocationid, lidgodownId, lidItemId, - SUM(lidItemQty) FROM "
           "loilocationIssueDetails WHERE lidgodownId = " +
           g + " AND lidItemId =  " + i +
           " AND lidCancel = 0 and lidConfirmed=1 GROUP BY lidlocationid, lidgodownId,lidItemId) a "
           "GROUP BY locationid, godownId, ItemId HAVING Sum(qty) > 0)B, LOiLocation WHERE "
           "B.LocationId = LOiLocation.lLocationId AND b.GodownId = loiLocation.lGodownId order by "
           "locationid asc";
}

TEST(DetailStockTest, ChoosingAnItemSendsTheStockStatementThenTheLocationQuestion) {
    DetailSession d;
    frmStockVerificationDetail &f = d.open("N");
    d.s.forget();
    DetailSession::choose(f, 1, "Basmati Rice 5 kg bag");

    const std::vector<std::string> sent = d.s.sent();
    ASSERT_EQ(sent.size(), 2u);
    EXPECT_EQ(sent[0], "Select gsitemid,isnull(sum(gsstock),0),isnull(sum(gsbadstock),0)  from "
                       "vwinquirygodownstock where gsgodownid=1  and gsitemid=1 group by gsitemid");
    EXPECT_EQ(d.s.sentHow()[0], "open keyset pessimistic");
    EXPECT_EQ(sent[1], locationStatement(1, 1));
    EXPECT_EQ(d.s.sentHow()[1], "open keyset optimistic");
    EXPECT_TRUE(d.s.m.blnItemHasLocation);
}

TEST(DetailStockTest, BookStockFillsBothPairsAsTheDatabaseGivesIt) {
    DetailSession d;
    frmStockVerificationDetail &f = d.open("N");
    DetailSession::choose(f, 2, "Toor Dal 1 kg");
    EXPECT_EQ(f.txtAvailStock.Text(), "45.5");
    EXPECT_EQ(f.txtVerifiedStock.Text(), "45.5");
    EXPECT_EQ(f.txtBadStock.Text(), "0.75");
    EXPECT_EQ(f.txtVerifiedBadStock.Text(), "0.75");
    EXPECT_EQ(f.txtVerifiedStock.ToolTipText(), "45.500");

    // Item 5 has no stock row: the boxes keep what the last item left.
    DetailSession::choose(f, 5, "Dish Wash Liquid 500 ml");
    EXPECT_EQ(f.txtAvailStock.Text(), "45.5");
    EXPECT_EQ(f.txtVerifiedBadStock.Text(), "0.75");
}

TEST(DetailStockTest, TheLocationQuestionAsksForTheEntryAddedLast) {
    DetailSession d;
    frmStockVerificationDetail &f = d.open("N");
    f.cboItem.AddItem("Ball Point Pen Blue box of 10");
    f.cboItem.setItemData(0, 9);
    f.cboItem.AddItem("Mineral Water 1.5 L");
    f.cboItem.setItemData(1, 11);
    d.s.forget();
    f.cboItem.setListIndex(0);

    const std::vector<std::string> sent = d.s.sent();
    ASSERT_EQ(sent.size(), 2u);
    EXPECT_NE(sent[0].find("gsitemid=9 group by"), std::string::npos) << sent[0];
    EXPECT_EQ(sent[1], locationStatement(1, 11));
    EXPECT_FALSE(d.s.m.blnItemHasLocation) << "item 11 has 5 in and 5 out, no balance";
}

TEST(DetailListRowTest, AnAddedRowFillsTheFourteenColumnsByPosition) {
    DetailSession d;
    d.s.m.strFetchedItemCode = "STA000009";
    frmStockVerificationDetail &f = d.open("N");
    DetailSession::choose(f, 2, "Toor Dal 1 kg");
    f.txtVerifiedStock.setText("44.25");
    f.cmdOK_Click();

    ASSERT_EQ(d.entry().lvwRequest.ListItems().Count(), 1);
    // The item code is whatever the fetch dialog left, even for another item.
    EXPECT_EQ(d.row(1),
              (std::vector<std::string>{"1", " ", "STA000009", "Toor Dal 1 kg", "45.500", "44.250",
                                        "0.750", "0.750", "2", "1", "1", "1", "3.25", "KG"}));
    EXPECT_TRUE(d.entry().lvwRequest.ListItems()(1).Selected());
    EXPECT_EQ(f.cboItem.ListIndex(), -1);
    EXPECT_EQ(f.txtVerifiedStock.Text(), "");
}

TEST(DetailListRowTest, ShipmentAndLocationAreTheGodownsFirstWhateverTheItem) {
    test::SessionValues harbour;
    harbour.godown = 2;
    DetailSession d(harbour);
    frmStockVerificationDetail &f = d.open("N");
    DetailSession::choose(f, 7, "Steel Padlock 50 mm");
    f.txtVerifiedStock.setText("");
    f.cmdOK_Click();
    DetailSession::choose(f, 12, "Hand Sanitizer 250 ml");
    f.cmdOK_Click();

    EXPECT_EQ(d.row(1),
              (std::vector<std::string>{"1", " ", "", "Steel Padlock 50 mm", "26.000", "0.000",
                                        "0.000", "0.000", "7", "1", "5", "2", "6.25", "PCS"}))
        << "an emptied count goes in as 0";
    EXPECT_EQ(d.row(2),
              (std::vector<std::string>{"2", " ", "", "Hand Sanitizer 250 ml", "10.000", "10.000",
                                        "0.000", "0.000", "12", "2", "5", "2", "3.5", "PCS"}));
}

TEST(DetailListRowTest, AChangedRowGetsItsCountsAndTheMarkAndTheFormStepsOn) {
    DetailSession d;
    d.storedRow(1, "Basmati Rice 5 kg bag", "147.000", "147.000");
    d.storedRow(9, "Ball Point Pen Blue box of 10", "22.000", "22.000");
    frmStockVerificationDetail &f = d.open("E");
    EXPECT_EQ(f.Caption(), "Basmati Rice 5 kg bag");
    EXPECT_EQ(f.txtVerifiedStock.Text(), "147.000") << "the row's values win over the stock";

    f.txtVerifiedStock.setText("150");
    f.txtVerifiedBadStock.setText("1.5");
    f.cmdOK_Click();
    EXPECT_EQ(d.row(1),
              (std::vector<std::string>{"1", "1", "", "Basmati Rice 5 kg bag", "147.000", "150.000",
                                        "0.000", "1.500", "1", "-1", "1", "1", "2.5", "PCS"}));
    EXPECT_EQ(d.entry().intSelectedItem, 2);
    EXPECT_EQ(f.Caption(), "Ball Point Pen Blue box of 10");
    EXPECT_FALSE(d.s.m.blnEntryChanged)
        << "the audit snapshot is of the next row by the time it is asked; the mark is the record";

    // On the last row the change closes the form and asks nothing more.
    f.txtVerifiedStock.setText("21");
    f.cmdOK_Click();
    EXPECT_EQ(d.row(2)[5], "21.000");
    EXPECT_EQ(d.row(2)[9], "-1");
    EXPECT_FALSE(f.Loaded());
}

TEST(DetailFormTest, ArrangeWindowClearsTheCallersWishAndKeepsThePanelsHidden) {
    DetailSession d;
    frmStockVerificationDetail &f = d.open("N");
    bool wish = true;
    f.setHeight(6000);
    f.ArrangeWindow(true, wish);
    EXPECT_FALSE(wish);
    EXPECT_EQ(f.Height(), 3620);
    EXPECT_EQ(f.fraButtons.Top(), 2470);
    EXPECT_FALSE(f.flxLocations.Visible());
    EXPECT_FALSE(f.flxexpiry.Visible());
    EXPECT_FALSE(f.lblQtyLocationWise.Visible());
}

TEST(DetailFormTest, EachStepAddsTheItemToTheComboAgain) {
    DetailSession d;
    d.storedRow(1, "Basmati Rice 5 kg bag", "147.000", "148.000");
    d.storedRow(4, "Green Tea 25 bags", "66.000", "60.000");
    d.storedRow(8, "Fresh Milk 1 L", "35.000", "35.000");
    frmStockVerificationDetail &f = d.open("E");
    f.cmdNext_Click();
    f.cmdNext_Click();
    f.cmdPrev_Click();
    EXPECT_EQ(f.cboItem.ListCount(), 4);
    EXPECT_EQ(f.cboItem.Text(), "Green Tea 25 bags");
    EXPECT_EQ(f.txtVerifiedStock.Text(), "60.000");
    EXPECT_FALSE(f.txtBarcode.Enabled());
    EXPECT_FALSE(f.optAllItems.Enabled());
    // Green tea keeps expiry dates, yet the wish to show them is cleared again.
    EXPECT_FALSE(f.blnShowExpiry);
    EXPECT_FALSE(f.flxexpiry.Visible());
    EXPECT_EQ(f.flxexpiry.Rows(), 2);
}

TEST(DetailFormTest, InTheTotalInterfaceABadStockPointPassesTheIntegerRule) {
    test::SessionValues total;
    total.interfaceId = 1013;
    DetailSession d(total);
    d.s.m.blnIntegerQuantity = true;
    frmStockVerificationDetail &f = d.open("N");
    EXPECT_FALSE(f.fraBadStock.Visible());
    DetailSession::choose(f, 11, "Mineral Water 1.5 L");
    EXPECT_EQ(f.txtVerifiedBadStock.Text(), "5") << "hidden, yet filled";
    f.txtVerifiedStock.setText("3");
    f.txtVerifiedBadStock.setText("4.5");
    f.cmdOK_Click();
    EXPECT_TRUE(d.s.ui.boxes().empty());
    ASSERT_EQ(d.entry().lvwRequest.ListItems().Count(), 1);
    EXPECT_EQ(d.row(1)[7], "4.500");
}

TEST(DetailKeysTest, EnterInVerifiedBadStockStaysWhenTheItemHasLocationStock) {
    DetailSession d;
    frmStockVerificationDetail &f = d.open("N");
    forms::Input input(d.s.screen);
    DetailSession::choose(f, 1, "Basmati Rice 5 kg bag");
    f.txtVerifiedBadStock.SetFocus();
    input.keyStroke(forms::vbKeyReturn);
    EXPECT_TRUE(f.txtVerifiedBadStock.hasFocus()) << "item 1 has location stock";

    DetailSession::choose(f, 11, "Mineral Water 1.5 L");
    f.txtVerifiedBadStock.SetFocus();
    input.keyStroke(forms::vbKeyReturn);
    EXPECT_TRUE(f.cmdOK.hasFocus()) << "item 11 has none: Enter moves on";
}

TEST(DetailKeysTest, TheVerifiedBoxesRefuseSignsAndUnderIntegersThePoint) {
    DetailSession d;
    frmStockVerificationDetail &f = d.open("N");
    int key = '-';
    f.txtVerifiedStock_KeyPress(key);
    EXPECT_EQ(key, 0);
    key = '7';
    f.txtVerifiedStock_KeyPress(key);
    EXPECT_EQ(key, '7');
    d.s.m.blnIntegerQuantity = true;
    d.s.ui.queueAnswer(forms::vbOK, "Only Integer Quantity is allowed");
    key = '.';
    f.txtVerifiedBadStock_KeyPress(key);
    EXPECT_EQ(key, 0);
    EXPECT_EQ(d.s.ui.boxes().back().buttons, forms::vbInformation);
    EXPECT_EQ(d.s.ui.boxes().back().title, "Stock Verification");
}

TEST(DetailFormTest, LoadingBeforeTheRegisterReportsTheMissingPalette) {
    test::ModuleSession s;
    // The entry form, which the detail form's load touches, fails the same way first.
    s.ui.queueAnswer(forms::vbOK);
    s.ui.queueAnswer(forms::vbOK);
    frmStockVerificationDetail &f = s.m.frmStockVerificationDetail();
    ASSERT_EQ(s.ui.boxes().size(), 2u);
    EXPECT_EQ(s.ui.boxes()[1].prompt.rfind("Error 91 in Form_Load (frmStockVerificationDetail)", 0),
              0u)
        << s.ui.boxes()[1].prompt;
    // The load stopped at the palette: the steps after it did not run.
    EXPECT_TRUE(f.cboAllItems.Visible());
    EXPECT_TRUE(f.Loaded());
}

} // namespace
} // namespace tqsv2731
