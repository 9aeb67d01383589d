#include "module/printing/SlipSettings.h"

#include "module/frame/Module.h"
#include "module/frame/basStockVerification.h"
#include "module/register/frmMaster.h"
#include "vb/Conversion.h"
#include "vb/Error.h"
#include "vb/Strings.h"
#include "vb/WindowsPath.h"

#include <system_error>

namespace tqsv2731 {

namespace {

vb::Variant read(Module &m, frmMaster &form, std::string_view key) {
    form.strSettingKey = std::string(key);
    return FileCode(m, form.strSettingKey, form.strSettingsFile);
}

std::string upperTrimmed(const vb::Variant &value) {
    return vb::Trim(vb::UCase(vb::TextOf(value)));
}

} // namespace

std::string SettingsFilePath(Module &m) {
    return vb::PathIgnoringCase(m.AppPath + "\\ShopSetting.txt").string();
}

std::string DriveCFile(Module &m, std::string_view windowsPath) {
    const std::filesystem::path root = m.context().stateDirectory;
    // A folder that cannot be made is left to the open of the file, which
    // then fails with the old "Path not found".
    std::error_code error;
    std::filesystem::create_directories(root, error);
    return vb::DrivePath(root, windowsPath).string();
}

std::string ReadSettingText(Module &m, frmMaster &form, std::string_view key) {
    return upperTrimmed(read(m, form, key));
}

std::int16_t ReadSettingCInt(Module &m, frmMaster &form, std::string_view key) {
    return vb::CInt(vb::Variant(upperTrimmed(read(m, form, key))));
}

std::int16_t ReadSettingVal(Module &m, frmMaster &form, std::string_view key) {
    return vb::CInt(vb::Variant(vb::Val(upperTrimmed(read(m, form, key)))));
}

std::int16_t ReadSettingRawCInt(Module &m, frmMaster &form, std::string_view key) {
    return vb::CInt(read(m, form, key));
}

std::int16_t Int16(long value) {
    if (value < -32768 || value > 32767) {
        throw vb::Error::standard(vb::err::Overflow);
    }
    return static_cast<std::int16_t>(value);
}

} // namespace tqsv2731
