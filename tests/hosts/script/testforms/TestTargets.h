// script::test::testTargets: the show targets of the runner's tests and runtime scenarios.
#pragma once

#include "hosts/script/ShowTarget.h"

namespace script::test {

/// "orders" shows frmOrders; "restless" a form whose keystrokes never stop;
/// "broken" raises error 5 from Show, as a form whose Form_Load has no
/// failure handler would.
ShowTargets testTargets();

} // namespace script::test
