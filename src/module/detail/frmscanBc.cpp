#include "module/detail/frmscanBc.h"

#include "ado/Recordset.h"
#include "forms/MsgBox.h"
#include "module/detail/frmStockVerificationDetail.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "services/CreateObject.h"
#include "services/clsBaseData.h"
#include "services/clsBaseTools.h"
#include "services/clsScreenPalette.h"
#include "vb/Conversion.h"
#include "vb/Strings.h"

namespace tqsv2731 {

namespace {

constexpr std::string_view FormName = "frmscanBc";

/// An object variable that was never set fails as the old one did.
template <class Service> Service &made(const std::shared_ptr<Service> &service) {
    if (!service) {
        throw vb::Error::standard(vb::err::ObjectNotSet);
    }
    return *service;
}

} // namespace

tqsv2731::frmscanBc &Module::frmscanBc() {
    return slotOf<tqsv2731::frmscanBc>(frmscanBc_).get();
}

frmscanBc::frmscanBc(Module &m) : Form(m.screen(), FormName), m_(m) {
    setCaption("Scanning Barcode");
    lblscanbc.setCaption("Scan Barcode:");
    cmdBarcode.setCaption(" ...");
    CmdClose.setCaption("&Close");
    onLoad = [this] { Form_Load(); };
    txtBarcode.onKeyPress = [this](int &KeyAscii) { txtBarcode_KeyPress(KeyAscii); };
    CmdClose.onClick = [this] { CmdClose_Click(); };
}

void frmscanBc::Form_Load() {
    try {
        objBaseTools = services::CreateObject<BaseServices::clsBaseTools>(
            "BaseServices.clsBaseTools", m_.context());
        objBaseData = services::CreateObject<BaseServices::clsBaseData>("BaseServices.clsBaseData",
                                                                        m_.context());
        made(objBaseData).adocon = m_.adocon;
        made(m_.objScreenPalette).ApplyScreenPalette(*this);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "Form_Load", e);
    }
}

void frmscanBc::txtBarcode_KeyPress(int &KeyAscii) {
    try {
        if (KeyAscii == 13) {
            const std::string strBarcode = vb::Trim(txtBarcode.Text());
            if (strBarcode.empty()) {
                return;
            }
            ado::Recordset rs;
            rs.Open("select itemid from aitempackingdetail where packingbarcode='" + strBarcode +
                        "'",
                    m_.adocon, ado::adOpenKeyset, ado::adLockOptimistic);
            if (!rs.Eof()) {
                std::int32_t lngItemId = 0;
                DisplayBarcodeItemDetails(strBarcode, lngItemId);
                Unload();
            } else {
                if (rs.State() == ado::adStateOpen) {
                    rs.Close();
                }
                made(objBaseData).strTableName = "apackagesettings";
                const vb::Variant duplication =
                    made(objBaseData).fnReturnField("AllowItemCodeDuplication");
                if (!(vb::IsNull(duplication) || vb::IsEmpty(duplication)) &&
                    vb::CBool(duplication)) {
                    forms::MsgBox(screen(), "Scan valid barcode", forms::vbInformation,
                                  m_.strMsgboxCaption);
                    txtBarcode.SetFocus();
                    return;
                }
                rs.Open("select itemid from aitem where itemcode='" + strBarcode + "'", m_.adocon,
                        ado::adOpenKeyset, ado::adLockOptimistic);
                if (rs.Eof()) {
                    forms::MsgBox(screen(), "Scan valid barcode", forms::vbInformation,
                                  m_.strMsgboxCaption);
                    txtBarcode.SetFocus();
                    return;
                }
                std::int32_t lngItemId = vb::CLng(rs.Fields("itemid").Value());
                DisplayBarcodeItemDetails(" ", lngItemId);
                rs.Close();
            }
        }
        // A read of the settings on every key: where item codes may repeat,
        // only a number can be typed here.
        made(objBaseData).strTableName = "apackagesettings";
        const vb::Variant duplication = made(objBaseData).fnReturnField("AllowItemCodeDuplication");
        if (!(vb::IsNull(duplication) || vb::IsEmpty(duplication)) && vb::CBool(duplication)) {
            made(objBaseTools).TextValidateNum(txtBarcode, KeyAscii, 13);
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtBarcode_KeyPress", e);
    }
}

void frmscanBc::DisplayBarcodeItemDetails(const std::string &strBarcode,
                                          std::int32_t &lngItemId) {
    try {
        if (lngItemId == 0) {
            made(objBaseData).strTableName = "aitempackingdetail";
            lngItemId = vb::CLng(made(objBaseData).fnReturnField(
                "itemid", " packingbarcode='" + vb::Trim(strBarcode) + "'"));
        }
        frmStockVerificationDetail &detail = m_.frmStockVerificationDetail();
        forms::ComboBox &combo = detail.cboItem.Visible() ? detail.cboItem : detail.cboAllItems;
        combo.setListIndex(-1);
        detail.txtAvailStock.setText("");
        detail.txtBadStock.setText("");
        detail.txtVerifiedBadStock.setText("");
        detail.txtVerifiedStock.setText("");
        if (lngItemId == 0) {
            combo.setText("");
        } else {
            made(objBaseTools).selectcomboitembyvalue(combo, vb::Variant(lngItemId));
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "DisplayBarcodeItemDetails", e);
    }
}

void frmscanBc::CmdClose_Click() {
    Unload();
}

} // namespace tqsv2731
