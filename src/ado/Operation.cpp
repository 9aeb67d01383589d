#include "ado/Operation.h"

namespace ado {

std::string_view operationName(Operation op) {
    switch (op) {
    case Operation::Any:
        return "any";
    case Operation::Open:
        return "open";
    case Operation::Execute:
        return "execute";
    case Operation::Update:
        return "update";
    case Operation::Procedure:
        return "procedure";
    case Operation::BeginTrans:
        return "begin transaction";
    case Operation::CommitTrans:
        return "commit transaction";
    case Operation::RollbackTrans:
        return "rollback transaction";
    }
    return "?";
}

} // namespace ado
