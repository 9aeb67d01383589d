// The --trace-sql file: every statement sent, its translation, its rows and its time.
#pragma once

#include "ado/Operation.h"
#include "ado/Provider.h"
#include "vb/Error.h"

#include <fstream>
#include <string>
#include <string_view>

namespace ado {

/// Appends one block per call to a text file (format in docs/sql-dialect.md):
///
///     #12 2026-11-22 10:15:02.123 open keyset optimistic
///     sent:    select * from aItem where itemcode='A1'
///     sqlite:  select * from aItem where itemcode='A1' COLLATE CITEXT
///     rows:    not read yet
///     time:    0.041 ms
///
/// and a short block when a recordset closes, with the rows it read and wrote.
class SqlTrace {
public:
    /// Starts appending to `path` (made when missing); "" stops. A file that
    /// cannot be opened raises 75 (Path/File access error) naming it.
    void open(std::string_view path);
    bool active() const { return out_.is_open(); }
    const std::string &path() const { return path_; }

    struct Call {
        long sequence;
        std::string_view what; // "open keyset optimistic", "execute", "insert into T"
        std::string_view sent; // the text as the module sent it
        const StatementLog &log;
        double milliseconds;
        const vb::Error *error; // the failure, if the call failed
    };
    void write(const Call &call);
    void writeClosed(long sequence, long read, long added, long changed);

private:
    void line(std::string_view label, std::string_view text);

    std::ofstream out_;
    std::string path_;
};

} // namespace ado
