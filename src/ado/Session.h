// An open connection: its provider, its transaction, its trace file and its fault hook.
#pragma once

#include "ado/FaultInjector.h"
#include "ado/Operation.h"
#include "ado/Provider.h"
#include "ado/SentStatements.h"
#include "ado/SqlTrace.h"

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace ado {

/// What every handle of one open connection shares. Recordsets and commands
/// make their calls through `call`, so that each is counted by the fault hook
/// and written to the trace.
class Session {
public:
    Session(std::unique_ptr<Provider> provider, std::string connectionString)
        : provider_(std::move(provider)), connectionString_(std::move(connectionString)) {}

    Provider &provider() { return *provider_; }
    bool isOpen() const { return provider_ != nullptr; }
    /// Lets the provider go: the database closes once nothing reads from it.
    void close() { provider_.reset(); }
    const std::string &connectionString() const { return connectionString_; }

    bool inTransaction() const { return inTransaction_; }
    void setInTransaction(bool open) { inTransaction_ = open; }
    int commandTimeout() const { return commandTimeout_; }
    void setCommandTimeout(int seconds) { commandTimeout_ = seconds; }

    FaultInjector &faults() { return faults_; }
    SqlTrace &trace() { return trace_; }
    SentStatements &sent() { return sent_; }

    /// While a tool runs statements of its own on the module's connection
    /// (a test's setup, a check of the tables), the fault hook and the record
    /// of statements look away: they are there for the module's calls.
    class Unobserved {
    public:
        explicit Unobserved(Session &session)
            : session_(session), was_(std::exchange(session.unobserved_, true)) {}
        ~Unobserved() { session_.unobserved_ = was_; }
        Unobserved(const Unobserved &) = delete;
        Unobserved &operator=(const Unobserved &) = delete;

    private:
        Session &session_;
        bool was_;
    };

    /// Numbers a call for the trace (recordsets keep theirs for the close block).
    long nextSequence() { return ++sequence_; }

    /// Runs one call to the database: counts it for the fault hook (which may
    /// fail it first), times it, and writes its block to the trace, failed or not.
    /// `body` takes the StatementLog to fill and returns the call's result.
    template <class Body>
    auto call(Operation op, std::string_view what, std::string_view sent, Body &&body,
              long sequence = 0) -> decltype(body(std::declval<StatementLog &>())) {
        StatementLog log;
        log.detailed = trace_.active();
        if (sequence == 0)
            sequence = nextSequence();
        // The clock is read only for the trace: a save of many rows pays nothing for it.
        auto start = log.detailed ? std::chrono::steady_clock::now()
                                  : std::chrono::steady_clock::time_point{};
        try {
            if (!unobserved_) {
                sent_.record(op, sent);
                faults_.beforeCall(op, sent);
            }
            if constexpr (std::is_void_v<decltype(body(log))>) {
                body(log);
                record(sequence, what, sent, log, start, nullptr);
            } else {
                auto result = body(log);
                record(sequence, what, sent, log, start, nullptr);
                return result;
            }
        } catch (const vb::Error &e) {
            record(sequence, what, sent, log, start, &e);
            throw;
        }
    }

private:
    void record(long sequence, std::string_view what, std::string_view sent,
                const StatementLog &log, std::chrono::steady_clock::time_point start,
                const vb::Error *error) {
        if (!trace_.active())
            return;
        std::chrono::duration<double, std::milli> ms = std::chrono::steady_clock::now() - start;
        trace_.write({sequence, what, sent, log, ms.count(), error});
    }

    std::unique_ptr<Provider> provider_;
    std::string connectionString_;
    bool inTransaction_ = false;
    int commandTimeout_ = 30;
    long sequence_ = 0;
    FaultInjector faults_;
    SqlTrace trace_;
    SentStatements sent_;
    bool unobserved_ = false;
};

} // namespace ado
