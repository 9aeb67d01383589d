// The run-time errors that the forms runtime raises, with the old numbers and texts.
#pragma once

#include "vb/Error.h"

namespace forms::errors {

vb::Error invalidProcedureCall(); // 5
vb::Error objectNotSet();         // 91
vb::Error invalidPropertyValue(); // 380
vb::Error invalidArrayIndex();    // 381
vb::Error textReadOnly();         // 383
vb::Error alreadyShownModal();    // 400
vb::Error modelessAboveModal();   // 401
vb::Error invalidRow();           // 30009
vb::Error invalidCol();           // 30010
vb::Error lastNonFixedRow();      // 30015
vb::Error indexOutOfBounds();     // 35600
vb::Error elementNotFound();      // 35601
vb::Error keyNotUnique();         // 35602

} // namespace forms::errors
