// Readers that wait for a writer's uncommitted rows, as SQL Server's read-committed readers do.
#pragma once

#include <string_view>

namespace ado::postgresql {

class PgConnection;

/// The server's read committed gives a reader the last committed rows at once, where SQL
/// Server's reader waits for the writer's locks and then reads what it committed. The module
/// depends on that wait: a save reads the next svhid of the godown while another clerk's save
/// may have written, and not committed, that very number; without the wait both entries get
/// it. So writes take one lock of the database, as the embedded database's writer does: a
/// transaction takes it at its first write and holds it to its end, and every statement that
/// reads first waits until no other connection holds it. Shared locks are never kept, so a
/// transaction that has only read holds nothing, and a writer never waits for a reader: there
/// is no deadlock between two saves. Writes outside a transaction commit at once and take
/// nothing. Each wait lasts at most the statement timeout.
class WriterLock {
public:
    explicit WriterLock(PgConnection &connection) : connection_(connection) {}

    /// Before a statement that reads only: waits until no other connection is writing.
    void beforeRead();
    /// Before a statement that writes: inside a transaction, takes the lock for the rest of it.
    void beforeWrite();
    /// The transaction has ended and the server has let the lock go.
    void released() { held_ = false; }

    /// True when `sql` (a statement as sent to the server) only reads.
    static bool readsOnly(std::string_view sql);

private:
    PgConnection &connection_;
    bool held_ = false;
};

} // namespace ado::postgresql
