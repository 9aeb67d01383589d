// A module with the register loaded, a settings file of the test's own and the slip read back.
#pragma once

#include "frame/ModuleSession.h"

#include "module/printing/frmPrint.h"
#include "module/register/frmMaster.h"
#include "vb/FileChannels.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace tqsv2731::test {

/// The settings of the worked example: an 80 column page, no costs, no code
/// column, every rule line, the title on top, no company block.
inline std::map<std::string, std::string> exampleSettings() {
    return {{"port", "LPT1"},
            {"internalprintnoofrecords", "60"},
            {"pagewidth", "80"},
            {"SlNo", "5"},
            {"Qty", "9"},
            {"Unit", "6"},
            {"Rate", "9"},
            {"Amount", "11"},
            {"ExtraLine", "0"},
            {"EndPage", "0"},
            {"Seperator", "0"},
            {"printheadertopline", "1"},
            {"printheaderbottomline", "1"},
            {"printdetailbottomline", "1"},
            {"spaceinlinecode", "0"},
            {"printfooterineachpage", "0"},
            {"showcostintrans", "0"},
            {"showitemcodeinprint", "0"},
            {"printinsavedorder", "1"},
            {"showtotalqty", "1"},
            {"headerleftmargin", "0"},
            {"linesafteraddress", "0"},
            {"linesafterheader", "0"},
            {"totalheadcount", "0"},
            {"printtransnameabove", "2"},
            {"linetoskipfirst", "0"},
            {"PrintCompanyName", "0"},
            {"printadd1", "0"},
            {"printadd2", "0"},
            {"printadd3", "0"}};
}

class SlipFixture {
public:
    explicit SlipFixture(const SessionValues &values = {}) : s(values) {
        s.m.AppPath = s.folder.path().string();
        register_ = &s.m.frmMaster();
    }
    ~SlipFixture() { vb::FileCloseAll(); }

    /// Writes ShopSetting.txt, one "key :=value" line each, CR LF ends.
    void settings(const std::map<std::string, std::string> &values) {
        std::string text;
        for (const auto &[key, value] : values) {
            text += key + " :=" + value + "\r\n";
        }
        settingsText(text);
    }
    void settingsText(const std::string &text) {
        std::ofstream(s.folder.path() / "ShopSetting.txt", std::ios::binary) << text;
    }

    /// An entry of one line in godown 1, as the worked example has it.
    std::int32_t sampleEntry() {
        s.execute("insert into aUnit (UnitId, UnitCode, UnitName) values (901, 'Nos', 'Numbers')");
        s.execute("insert into aItem (ItemId, itemcode, ItemName, ItemCategoryID, UnitsId, "
                  "itemrate) values (9001, 'SMP001', 'Sample item', 1, 901, 2.5)");
        return entryWith({{9001, "5", "4", "0", "1"}});
    }

    struct Line {
        int item;
        std::string avail, verified, availBad, verifiedBad;
    };
    /// A new entry of godown 1, dated the day before the session's, with these lines.
    std::int32_t entryWith(const std::vector<Line> &lines, std::int32_t id = 90) {
        s.execute("insert into loiStockVerificationHeader (svhid, svhno, svhdate, svhremarks, "
                  "svhverificationby, svhGodownid, svhFutureVc) values (" +
                  std::to_string(id) + ", 'SVT" + std::to_string(id) +
                  "', '2026-11-21', 'Test count', 'A CLERK', 1, '" +
                  (s.m.intInterfaceID == 1013 ? "TN00001" : "AN00001") + "')");
        for (const Line &l : lines) {
            s.execute("insert into loiStockVerificationDetail (svdid, svdGodownID, svdItemID, "
                      "svdAvailStock, svdVerifiedStock, svdavailbadstock, svdverifiedbadstock, "
                      "svdcostprice) values (" +
                      std::to_string(id) + ", 1, " + std::to_string(l.item) + ", " + l.avail +
                      ", " + l.verified + ", " + l.availBad + ", " + l.verifiedBad + ", 0)");
        }
        return id;
    }

    /// Selects the entry's row in the register (reloading its grid first).
    void select(std::int32_t id) {
        frmMaster &f = *register_;
        f.GridPopulate(f.strListSql, f.strListTable, "");
        for (int row = 1; row < f.flexMaster.Rows(); ++row) {
            if (f.flexMaster.TextMatrix(row, 0) == std::to_string(id)) {
                f.flexMaster.setRow(row);
                return;
            }
        }
        throw std::runtime_error("entry " + std::to_string(id) + " is not in the register");
    }

    /// PrintBill to the screen's slip file, as "To Screen" does.
    void printToScreen(std::int32_t id) {
        select(id);
        s.m.frmPrint().optScreen.setValue(true);
        s.m.frmMaster().PrintBill(id);
    }

    std::filesystem::path slipFile() const { return s.folder.path() / "state" / "StockVer.txt"; }

    std::string slip() const {
        std::ifstream in(slipFile(), std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        return text.str();
    }

    /// The slip's lines without their CR LF.
    std::vector<std::string> slipLines() const {
        std::vector<std::string> lines;
        std::string all = slip();
        std::size_t at = 0;
        while (at < all.size()) {
            std::size_t end = all.find("\r\n", at);
            if (end == std::string::npos) {
                lines.push_back(all.substr(at));
                break;
            }
            lines.push_back(all.substr(at, end - at));
            at = end + 2;
        }
        return lines;
    }

    ModuleSession s;

private:
    frmMaster *register_ = nullptr;
};

} // namespace tqsv2731::test
