// SQL Server's conversions of values into a column's type, as the embedded database stores them.
#pragma once

#include "ado/sql/ColumnType.h"
#include "vb/Variant.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace ado::sqlite {

using sql::ColumnKind;
using sql::ColumnType;
using sql::columnTypeOf;

/// A value as it goes into the database: null, an integer, a real or text.
using StoredValue = std::variant<std::monostate, std::int64_t, double, std::string>;

/// The value to store for `value` in a column of `type`, converted as SQL
/// Server converts: text that is a number goes into a numeric column as the
/// number, text that is no number is refused with SQL Server's own message
/// (error -2147217913); dates go in as text "YYYY-MM-DD HH:MM:SS", and date
/// text in the forms of DateText.h likewise; numbers and dates going into a
/// text column take the text the old language gave them (vb::CStr). Null and
/// Empty store null.
/// A number going into numeric(p,s), decimal(p,s) or money is rounded half
/// away from zero to s places; one too large for p digits raises SQL
/// Server's arithmetic overflow error (ExactDecimal.h).
StoredValue toStored(const vb::Variant &value, const ColumnType &type);

/// Text as a column of `type` with a length (varchar(20)) keeps it: longer
/// text raises -2147217833 "String or binary data would be truncated.",
/// except that blanks at its end past the length are dropped.
std::string fittedText(std::string text, const ColumnType &type);

/// A stored number as a column of `type` keeps it: rounded to the scale of
/// a numeric or money column and checked against its precision; other
/// values and types as they are.
StoredValue exactNumeric(const StoredValue &stored, const ColumnType &type);

/// Text converted to an integer type ("int", "smallint", "tinyint", "bigint"):
/// blanks around, a sign and digits; the empty text is 0.
std::int64_t textToInteger(std::string_view text, const ColumnType &type);
/// Text converted to numeric/decimal/money: a sign, digits and one point; no exponent.
double textToDecimal(std::string_view text, const ColumnType &type);
/// Text converted to float/real: as decimal, with an exponent; the empty text is 0.
double textToFloat(std::string_view text);
/// A number converted to an integer type: rounded half to even, range checked.
std::int64_t numberToInteger(double value, const ColumnType &type);

/// The value a column of `kind` gives back: integers as Long (Double when
/// they do not fit), numeric kinds as Double, bit as Boolean, date text as
/// vb::Date, null as Null. A value of no known type (an expression such as
/// max(svhdate)) that has the stored form of a date is a date too.
vb::Variant readBack(const StoredValue &stored, ColumnKind kind);

} // namespace ado::sqlite
