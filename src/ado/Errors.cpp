#include "ado/Errors.h"

namespace ado {

std::string adoErrorText(std::int32_t number) {
    switch (number) {
    case errnum::InvalidArgument:
        return "Arguments are of the wrong type, are out of acceptable range, or are in "
               "conflict with one another.";
    case errnum::NoCurrentRecord:
        return vb::standardErrorText(number);
    case errnum::IllegalOperation:
        return "Operation is not allowed in this context.";
    case errnum::ClosedInTransaction:
        return "Connection object cannot be explicitly closed while in a transaction.";
    case errnum::NotUpdatable:
        return "Current Recordset does not support updating. This may be a limitation of the "
               "provider, or of the selected locktype.";
    case errnum::ItemNotFound:
        return "Item cannot be found in the collection corresponding to the requested name or "
               "ordinal.";
    case errnum::ObjectClosed:
        return "Operation is not allowed when the object is closed.";
    case errnum::ObjectOpen:
        return "Operation is not allowed when the object is open.";
    case errnum::ConnectionNotUsable:
        return "The connection cannot be used to perform this operation. It is either closed or "
               "invalid in this context.";
    case errnum::RowNotLocated:
        return "Row cannot be located for updating. Some values may have been changed since it "
               "was last read.";
    case errnum::NoBackwardFetch:
        return "Rowset does not support fetching backward.";
    case errnum::NoTransaction:
        return "No transaction is active.";
    case errnum::TransactionExists:
        return "Only one transaction can be active on this session.";
    case errnum::MultipleStep:
        return "Multiple-step operation generated errors. Check each status value.";
    default:
        return "";
    }
}

vb::Error adoError(std::int32_t number, std::string_view source) {
    return vb::Error(number, std::string(source), adoErrorText(number));
}

vb::Error adoError(std::int32_t number, std::string_view source, std::string description) {
    return vb::Error(number, std::string(source), std::move(description));
}

} // namespace ado
