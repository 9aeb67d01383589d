#include "ado/FaultInjector.h"

#include "ado/Errors.h"

namespace ado {

void FaultInjector::failNth(int nth, vb::Error error, Operation kind) {
    if (nth < 1)
        throw adoError(errnum::InvalidArgument, "ADODB.Connection");
    armed_.push_back({kind, nth, std::move(error)});
}

void FaultInjector::clear() {
    armed_.clear();
}

void FaultInjector::beforeCall(Operation op) {
    ++calls_;
    auto due = armed_.end();
    for (auto it = armed_.begin(); it != armed_.end(); ++it)
        if ((it->kind == Operation::Any || it->kind == op) && --it->remaining <= 0 &&
            due == armed_.end())
            due = it;
    if (due == armed_.end())
        return;
    vb::Error error = due->error;
    armed_.erase(due);
    throw error;
}

} // namespace ado
