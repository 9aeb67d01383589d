#include "forms/Errors.h"

namespace forms::errors {

vb::Error invalidProcedureCall() {
    return vb::Error::standard(vb::err::InvalidProcedureCall);
}
vb::Error objectNotSet() {
    return vb::Error::standard(vb::err::ObjectNotSet);
}
vb::Error invalidPropertyValue() {
    return vb::Error(380, "", "Invalid property value");
}
vb::Error invalidArrayIndex() {
    return vb::Error(381, "", "Invalid property array index");
}
vb::Error textReadOnly() {
    return vb::Error(383, "", "'Text' property is read-only");
}
vb::Error alreadyShownModal() {
    return vb::Error(400, "", "Form already displayed; can't show modally");
}
vb::Error modelessAboveModal() {
    return vb::Error(401, "", "Can't show non-modal form when modal form is displayed");
}
vb::Error invalidRow() {
    return vb::Error(30009, "", "Invalid Row value");
}
vb::Error invalidCol() {
    return vb::Error(30010, "", "Invalid Col value");
}
vb::Error lastNonFixedRow() {
    return vb::Error(30015, "", "Cannot remove last non-fixed row");
}
vb::Error indexOutOfBounds() {
    return vb::Error(35600, "", "Index out of bounds");
}
vb::Error elementNotFound() {
    return vb::Error(35601, "", "Element not found");
}
vb::Error keyNotUnique() {
    return vb::Error(35602, "", "Key is not unique in collection");
}

} // namespace forms::errors
