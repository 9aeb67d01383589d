#include "ado/FaultInjector.h"

#include "ado/Errors.h"

#include <cctype>

namespace ado {

namespace {

bool isStatement(Operation op) {
    return op == Operation::Open || op == Operation::Execute || op == Operation::Procedure;
}

} // namespace

std::string statementWords(std::string_view text) {
    std::string out;
    bool blank = false;
    for (char c : text) {
        if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
            blank = !out.empty();
            continue;
        }
        if (blank)
            out += ' ';
        blank = false;
        out += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return out;
}

void FaultInjector::failNth(int nth, vb::Error error, Operation kind) {
    if (nth < 1)
        throw adoError(errnum::InvalidArgument, "ADODB.Connection");
    armed_.push_back({kind, std::nullopt, nth, std::move(error)});
}

void FaultInjector::failStatement(int nth, std::string_view firstWords, vb::Error error) {
    if (nth < 1)
        throw adoError(errnum::InvalidArgument, "ADODB.Connection");
    armed_.push_back({Operation::Any, statementWords(firstWords), nth, std::move(error)});
}

void FaultInjector::clear() {
    armed_.clear();
}

bool FaultInjector::matches(const Armed &armed, Operation op, std::string_view sent) {
    if (armed.firstWords) {
        // A prefix of whole text, not of whole words: "update loiStock" also
        // names "update loiStockVerificationHeader", as a reader expects.
        return isStatement(op) && statementWords(sent).starts_with(*armed.firstWords);
    }
    return armed.kind == Operation::Any || armed.kind == op;
}

void FaultInjector::beforeCall(Operation op, std::string_view sent) {
    ++calls_;
    auto due = armed_.end();
    for (auto it = armed_.begin(); it != armed_.end(); ++it)
        if (matches(*it, op, sent) && --it->remaining <= 0 && due == armed_.end())
            due = it;
    if (due == armed_.end())
        return;
    vb::Error error = due->error;
    armed_.erase(due);
    throw error;
}

} // namespace ado
