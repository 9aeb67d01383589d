// The error numbers and texts of the old data layer, and the vb::Error values built from them.
#pragma once

#include "vb/Error.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace ado {

/// Numbers as the old data layer raised them. The negative ones are the
/// provider's HRESULTs seen as signed 32-bit numbers.
namespace errnum {
inline constexpr std::int32_t InvalidArgument = 3001;
inline constexpr std::int32_t NoCurrentRecord = 3021;
inline constexpr std::int32_t IllegalOperation = 3219;
inline constexpr std::int32_t ClosedInTransaction = 3246;
inline constexpr std::int32_t NotUpdatable = 3251;
inline constexpr std::int32_t ItemNotFound = 3265;
inline constexpr std::int32_t ObjectClosed = 3704;
inline constexpr std::int32_t ObjectOpen = 3705;
inline constexpr std::int32_t ConnectionNotUsable = 3709;
/// A statement the server refused (syntax, unknown column, unknown function...).
inline constexpr std::int32_t Statement = -2147217900;
/// A table or view that does not exist ("Invalid object name 'x'.").
inline constexpr std::int32_t InvalidObject = -2147217865;
/// A value that cannot be converted to the column's type.
inline constexpr std::int32_t Conversion = -2147217913;
/// Text longer than its column ("String or binary data would be truncated.").
inline constexpr std::int32_t Truncation = -2147217833;
/// A divisor of zero ("Divide by zero error encountered."): the provider
/// gives it the number of a value out of range, as it gives truncation.
inline constexpr std::int32_t DivideByZero = -2147217833;
/// A key or other constraint refused a row.
inline constexpr std::int32_t Constraint = -2147217873;
/// A statement that waited too long, for a lock or by its command timeout.
inline constexpr std::int32_t Timeout = -2147217871;
/// A multiple-step operation failed: a value that cannot go into its field.
inline constexpr std::int32_t MultipleStep = -2147217887;
/// The row to update is gone or changed.
inline constexpr std::int32_t RowNotLocated = -2147217864;
/// Backward moves on a forward-only cursor.
inline constexpr std::int32_t NoBackwardFetch = -2147217884;
/// CommitTrans or RollbackTrans with no transaction open.
inline constexpr std::int32_t NoTransaction = -2147168242;
/// BeginTrans while a transaction is open.
inline constexpr std::int32_t TransactionExists = -2147168237;
/// Unspecified failure: a connection that cannot be made, a provider fault.
inline constexpr std::int32_t Unspecified = -2147467259;
} // namespace errnum

/// Errors that the data access objects themselves raise, with the old texts.
/// `source` names the object ("ADODB.Recordset").
vb::Error adoError(std::int32_t number, std::string_view source);
/// The same with a description of the caller's own.
vb::Error adoError(std::int32_t number, std::string_view source, std::string description);

/// The old text of an ADO error number, "" for a number this layer does not raise itself.
std::string adoErrorText(std::int32_t number);

} // namespace ado
