// The SQL Server type of a column, read from the type a table declares.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ado::sql {

/// How values of a column are stored, compared and read back.
enum class ColumnKind {
    Unknown, // no declared type, or one this layer does not know: values go in as given
    Text,    // char, varchar, nchar, nvarchar, text
    Integer, // int, integer, smallint, bigint, tinyint
    Bit,     // bit: 0 or 1, read back as a Boolean
    Decimal, // numeric, decimal
    Float,   // float, real, double
    Money,   // money, smallmoney
    Date,    // datetime, date, smalldatetime, datetime2: text "YYYY-MM-DD HH:MM:SS"
};

struct ColumnType {
    ColumnKind kind = ColumnKind::Unknown;
    /// The type's name in lower case without its length: "int", "varchar".
    std::string name;
    /// The declared length of a text type (varchar(20) is 20), 0 when none is given.
    int length = 0;
    /// Digits in all and after the point of numeric and decimal (18 and 0
    /// when not declared), money (19, 4) and smallmoney (10, 4).
    int precision = 0;
    int scale = 0;
    /// The values an integer type takes (int's range for the other kinds).
    std::int64_t low = -2147483648LL;
    std::int64_t high = 2147483647LL;

    /// Integer, Bit, Decimal, Float or Money: a column that refuses text that is no number.
    bool numeric() const;
};

/// The type of a declared type text such as "INT", "varchar(20)" or "NUMERIC(18,3)".
ColumnType columnTypeOf(std::string_view declared);

} // namespace ado::sql
