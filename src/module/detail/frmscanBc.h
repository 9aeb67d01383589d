// frmscanBc: the older barcode dialog, which fed the detail form from outside; nothing opens it now.
#pragma once

#include "forms/CommandButton.h"
#include "forms/Form.h"
#include "forms/Label.h"
#include "forms/TextBox.h"

#include <cstdint>
#include <memory>
#include <string>

namespace BaseServices {
class clsBaseData;
class clsBaseTools;
} // namespace BaseServices

namespace tqsv2731 {

class Module;

/// "Scanning Barcode": a barcode or item code typed here puts the item on the
/// detail form, whose combo must already hold it. The detail form took this
/// work over (its own txtBarcode); no path creates this dialog any more, and
/// it is kept as it was, without the active, godown and duplicate checks the
/// detail form makes. Its " ..." button and F3 open the fetch dialog, which
/// comes with the fetch dialog of its own; until then neither is bound.
class frmscanBc : public forms::Form {
public:
    explicit frmscanBc(Module &m);

    forms::Label lblscanbc{*this, "lblscanbc"};
    forms::TextBox txtBarcode{*this, "txtBarcode"};
    forms::CommandButton cmdBarcode{*this, "cmdBarcode"};
    forms::CommandButton CmdClose{*this, "CmdClose"};

    std::shared_ptr<BaseServices::clsBaseTools> objBaseTools;
    std::shared_ptr<BaseServices::clsBaseData> objBaseData;

    void Form_Load();
    /// Enter looks the text up as a packing barcode, then as an item code;
    /// every key that goes on is filtered as a number where item codes may
    /// repeat.
    void txtBarcode_KeyPress(int &KeyAscii);
    /// Shows the item (found by the packing barcode when `lngItemId` is 0)
    /// in the detail form's visible combo, with its four boxes emptied.
    void DisplayBarcodeItemDetails(const std::string &strBarcode, std::int32_t &lngItemId);
    void CmdClose_Click();

private:
    Module &m_;
};

} // namespace tqsv2731
