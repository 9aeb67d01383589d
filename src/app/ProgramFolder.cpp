#include "app/ProgramFolder.h"

#include "vb/Error.h"

namespace app {

std::filesystem::path defaultProgramFolder() {
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
    // Installed: PREFIX/bin/stockverify beside PREFIX/share/stockverify.
    const std::filesystem::path installed =
        program.parent_path().parent_path() / "share" / "stockverify";
    if (std::filesystem::is_directory(installed)) {
        return installed;
    }
    const std::filesystem::path source = STOCKVERIFY_SOURCE_DIR;
    if (std::filesystem::is_directory(source)) {
        return source;
    }
    throw vb::Error(vb::err::PathNotFound, "stockverify",
                    "Path not found: no program folder, neither " + installed.string() + " nor " +
                        source.string() + "; give it with --home DIR");
}

} // namespace app
