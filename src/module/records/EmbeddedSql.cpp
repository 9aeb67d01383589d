#include "module/records/EmbeddedSql.h"

#include "vb/Error.h"

#include <string>

namespace records {

std::string_view embeddedSql(std::string_view name) {
    for (const auto &file : embeddedSqlFiles())
        if (file.name == name)
            return file.text;
    throw vb::Error(vb::err::FileNotFound, "records",
                    "No embedded SQL file '" + std::string(name) + "'");
}

} // namespace records
