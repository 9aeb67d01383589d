#include "ado/SentStatements.h"

#include <utility>

namespace ado {

void SentStatements::setRecording(bool on) {
    recording_ = on;
    if (!on)
        sent_.clear();
}

void SentStatements::record(Operation op, std::string_view sent) {
    if (!recording_)
        return;
    switch (op) {
    case Operation::Open:
    case Operation::Execute:
    case Operation::Procedure:
        sent_.emplace_back(sent);
        break;
    case Operation::BeginTrans:
        sent_.emplace_back("BeginTrans");
        break;
    case Operation::CommitTrans:
        sent_.emplace_back("CommitTrans");
        break;
    case Operation::RollbackTrans:
        sent_.emplace_back("RollbackTrans");
        break;
    case Operation::Update:
    case Operation::Any:
        break;
    }
}

std::vector<std::string> SentStatements::take() {
    return std::exchange(sent_, {});
}

} // namespace ado
