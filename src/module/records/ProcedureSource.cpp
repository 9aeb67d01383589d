#include "module/records/ProcedureSource.h"

#include "vb/Error.h"

namespace records {

namespace {
constexpr std::string_view paramsPrefix = "-- params: ";
constexpr std::string_view folder = "procedures/";
constexpr std::string_view extension = ".sql";
} // namespace

ProcedureSource procedureSource(std::string_view fileName, std::string_view text) {
    if (!fileName.starts_with(folder) || !fileName.ends_with(extension) ||
        fileName.size() <= folder.size() + extension.size())
        throw vb::Error(vb::err::BadFileNameOrNumber, "records",
                        "Not a procedure file name: " + std::string(fileName));
    const auto lineEnd = text.find('\n');
    const std::string_view first = text.substr(0, lineEnd);
    if (!first.starts_with(paramsPrefix) || lineEnd == std::string_view::npos)
        throw vb::Error(vb::err::InvalidProcedureCall, "records",
                        std::string(fileName) + " does not start with \"" +
                            std::string(paramsPrefix) + "\" and a body");
    ProcedureSource source;
    source.name =
        fileName.substr(folder.size(), fileName.size() - folder.size() - extension.size());
    source.params = first.substr(paramsPrefix.size());
    while (!source.params.empty() && (source.params.back() == '\r' || source.params.back() == ' '))
        source.params.pop_back();
    source.body = text.substr(lineEnd + 1);
    return source;
}

} // namespace records
