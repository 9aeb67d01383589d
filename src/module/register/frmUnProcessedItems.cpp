#include "module/register/frmUnProcessedItems.h"

#include "forms/MsgBox.h"
#include "forms/Screen.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "services/CreateObject.h"
#include "services/PrintEngine.h"
#include "services/clsScreenPalette.h"
#include "vb/Conversion.h"
#include "vb/Strings.h"

namespace tqsv2731 {

namespace {

constexpr std::string_view FormName = "frmUnProcessedItems";


struct Column {
    const char *header;
    const char *field;
    int width;
};

constexpr Column columns[] = {
    {"Trans No", "TransNo", 1200},       {"Date", "GDate", 1100},
    {"From ", "Fromlocation", 1300},     {"To", "ToLocation", 1300},
    {"Item Description", "ItemDescription", 2600}, {"Quantity", "TransQty", 1000},
    {"Unit Code", "UnitCode", 900},      {"ItemId", "ItemId", 0},
};

} // namespace

frmUnProcessedItems &Module::frmUnProcessedItems() {
    return slotOf<tqsv2731::frmUnProcessedItems>(frmUnProcessedItems_).get();
}

frmUnProcessedItems::frmUnProcessedItems(Module &m) : Form(m.screen(), FormName), m_(m) {
    setCaption("Unprocessed Items");
    Label1.setCaption("The total stock verfication cannot be done on this location at this time "
                      "because the following items are unprocessed.");
    cmdPreview.setCaption("&Preview...");
    cmdOK.setCaption("OK");
    for (const Column &c : columns) {
        lvwUnProcessed.ColumnHeaders().Add(0, "", c.header, c.width);
    }
    Move(0, 0, 9600, 5400);
    Image1.Move(120, 120, 480, 480);
    Label1.Move(720, 120, 8640, 480);
    lvwUnProcessed.Move(120, 720, 9360, 3840);
    cmdPreview.Move(6000, 4680, 1560, 360);
    cmdOK.Move(7800, 4680, 1560, 360);
    bindEvents();
}

void frmUnProcessedItems::bindEvents() {
    onLoad = [this] { Form_Load(); };
    cmdOK.onClick = [this] { cmdOK_Click(); };
    cmdPreview.onClick = [this] { cmdPreview_Click(); };
}

void frmUnProcessedItems::Form_Load() {
    try {
        if (!m_.objScreenPalette) {
            throw vb::Error::standard(vb::err::ObjectNotSet);
        }
        m_.objScreenPalette->ApplyScreenPalette(*this);
        // The register hands the rows over before the form loads (a form
        // loaded without them fails here, and its report says so).
        while (!rsUnProcessed.Eof()) {
            forms::ListItem &item = lvwUnProcessed.ListItems().Add(
                0, "", vb::CStr(rsUnProcessed.Fields(columns[0].field).Value()));
            for (int i = 1; i < 8; ++i) {
                item.setSubItems(i, vb::CStr(rsUnProcessed.Fields(columns[i].field).Value()));
            }
            rsUnProcessed.MoveNext();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "Form_Load", e);
    }
}

void frmUnProcessedItems::cmdOK_Click() {
    Unload();
}

void frmUnProcessedItems::cmdPreview_Click() {
    try {
        setMousePointer(forms::vbHourglass);
        // The reports live in the folder of the sibling application, found by
        // swapping that one word in this application's path.
        crptReportFileName = vb::Replace(vb::UCase(m_.AppPath), "INVENTORY", "RVLDT") +
                             "\\Reports\\rptUnProcessedQuantities.rpt";
        crptWindowTitle = "Incomplete Transactions";
        crptSelectionFormula = "{vwquantityunprocessed.itemid} IN [" + GetItemIdString() + "]";
        startReport();
        setMousePointer(forms::vbDefault);
    } catch (const vb::Error &e) {
        if (e.description() == "Invalid file name.") {
            forms::MsgBox(m_.screen(), "Report File '" + crptReportFileName + "' not found",
                          forms::vbCritical, m_.strMsgboxCaption);
        }
        TrackError(m_, FormName, "CmdPreview_Click", e);
        setMousePointer(forms::vbDefault);
    }
}

void frmUnProcessedItems::startReport() {
    auto crptUnProcessed = services::CreateObject<services::ReportControl>(
        "Crystal.CrystalReport", m_.context());
    crptUnProcessed->ReportFileName = crptReportFileName;
    crptUnProcessed->LogOnServer("pdsodbc.dll", "admindsnv2", "adminv2", "admin", "quenbarro471");
    crptUnProcessed->WindowTitle = crptWindowTitle;
    crptUnProcessed->WindowState = 2;
    crptUnProcessed->WindowShowPrintBtn = true;
    crptUnProcessed->WindowShowExportBtn = true;
    crptUnProcessed->WindowShowNavigationCtls = true;
    crptUnProcessed->WindowShowCancelBtn = true;
    crptUnProcessed->WindowShowCloseBtn = true;
    crptUnProcessed->WindowShowSearchBtn = true;
    crptUnProcessed->SelectionFormula = crptSelectionFormula;
    crptUnProcessed->Action(1);
}

std::string frmUnProcessedItems::GetItemIdString() {
    std::string ids;
    try {
        auto &items = lvwUnProcessed.ListItems();
        for (int i = 1; i <= items.Count(); ++i) {
            const std::string id = items(i).SubItems(7);
            if (vb::InStr(1, ids, id + ",", vb::Compare::Text) == 0) {
                ids += id + ", ";
            }
        }
        if (vb::Right(ids, 2) == ", ") {
            ids = vb::Left(ids, static_cast<long>(ids.size()) - 2);
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "GetItemIdString", e);
    }
    return ids;
}

} // namespace tqsv2731
