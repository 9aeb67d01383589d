#include "testforms/TestTargets.h"

#include "testforms/frmOrders.h"
#include "testforms/frmRestless.h"

#include "forms/Form.h"

#include "vb/Error.h"

namespace script::test {

ShowTargets testTargets() {
    return {
        {"orders", [](const ShowContext &context) { frmOrders(context).Show(forms::vbModal); }},
        {"restless",
         [](const ShowContext &context) { frmRestless(context.screen).Show(forms::vbModal); }},
        {"broken",
         [](const ShowContext &context) {
             forms::Form form(context.screen, "frmBroken");
             form.onLoad = [] { throw vb::Error::standard(vb::err::InvalidProcedureCall); };
             form.Show(forms::vbModal);
         }},
    };
}

} // namespace script::test
