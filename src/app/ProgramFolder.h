// The program folder of the module (ShopSetting.txt, reports/) when --home does not name one.
#pragma once

#include <filesystem>

namespace app {

/// The installed folder share/stockverify beside the program's bin/ when the
/// program runs installed; else the source tree the program was built from,
/// which holds the same files, when it runs from a build. Raises vb::Error 76
/// naming both places when neither is there.
std::filesystem::path defaultProgramFolder();

} // namespace app
