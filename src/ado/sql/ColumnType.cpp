#include "ado/sql/ColumnType.h"

#include <algorithm>

#include <cctype>
#include <cstdlib>
#include <limits>

namespace ado::sql {

bool ColumnType::numeric() const {
    switch (kind) {
    case ColumnKind::Integer:
    case ColumnKind::Bit:
    case ColumnKind::Decimal:
    case ColumnKind::Float:
    case ColumnKind::Money:
        return true;
    default:
        return false;
    }
}

namespace {

ColumnKind kindOfName(std::string_view n) {
    if (n == "char" || n == "varchar" || n == "nchar" || n == "nvarchar" || n == "text" ||
        n == "ntext" || n == "clob" || n == "character")
        return ColumnKind::Text;
    if (n == "int" || n == "integer" || n == "smallint" || n == "bigint" || n == "tinyint")
        return ColumnKind::Integer;
    if (n == "bit")
        return ColumnKind::Bit;
    if (n == "numeric" || n == "decimal")
        return ColumnKind::Decimal;
    if (n == "float" || n == "real" || n == "double")
        return ColumnKind::Float;
    if (n == "money" || n == "smallmoney")
        return ColumnKind::Money;
    if (n == "datetime" || n == "date" || n == "smalldatetime" || n == "datetime2")
        return ColumnKind::Date;
    return ColumnKind::Unknown;
}

} // namespace

ColumnType columnTypeOf(std::string_view declared) {
    ColumnType type;
    std::size_t i = 0;
    while (i < declared.size() && std::isspace(static_cast<unsigned char>(declared[i])))
        ++i;
    while (i < declared.size() &&
           (std::isalnum(static_cast<unsigned char>(declared[i])) || declared[i] == '_'))
        type.name += static_cast<char>(std::tolower(static_cast<unsigned char>(declared[i++])));
    type.kind = kindOfName(type.name);
    if (type.name == "smallint")
        type.low = -32768, type.high = 32767;
    else if (type.name == "tinyint")
        type.low = 0, type.high = 255;
    else if (type.name == "bigint")
        type.low = std::numeric_limits<std::int64_t>::min(),
        type.high = std::numeric_limits<std::int64_t>::max();
    std::string arguments;
    if (auto open = declared.find('(', i); open != std::string_view::npos) {
        arguments = std::string(declared.substr(open + 1));
        type.length = std::atoi(arguments.c_str());
    }
    if (type.kind == ColumnKind::Decimal) {
        type.precision = arguments.empty() ? 18 : std::clamp(type.length, 1, 38);
        auto comma = arguments.find(',');
        if (comma != std::string::npos)
            type.scale = std::clamp(std::atoi(arguments.c_str() + comma + 1), 0, type.precision);
    } else if (type.kind == ColumnKind::Money) {
        type.precision = type.name == "smallmoney" ? 10 : 19;
        type.scale = 4;
    }
    return type;
}

} // namespace ado::sql
