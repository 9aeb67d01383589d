// The rows of a statement run on the server.
#pragma once

#include "ado/Provider.h"
#include "ado/postgresql/PgCatalog.h"
#include "ado/postgresql/PgConnection.h"
#include "ado/sql/Translator.h"
#include "vb/Error.h"

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ado::postgresql {

/// The rows of a recordset come through a cursor on the server, a batch at
/// a time, so that a recordset opened only to add rows, or read in part,
/// costs what it reads and not what the table holds; the cursor reads the
/// statement's one snapshot, so rows read later are the rows of the open.
/// Its rows are counted on the server. The rows of Execute arrive whole.
/// Keyset and forward-only recordsets both read from here.
class PgCursor : public Cursor {
public:
    /// Rows that arrived whole; `rerun` runs the statement again for `restart`.
    PgCursor(PgResult result, const sql::Translation &translation, const PgCatalog &catalog,
             std::function<PgResult()> rerun);
    /// Opens a cursor on the server over `translation`'s select.
    PgCursor(std::shared_ptr<PgConnection> connection, std::string shown,
             const sql::Translation &translation, const PgCatalog &catalog);
    ~PgCursor() override;
    PgCursor(const PgCursor &) = delete;
    PgCursor &operator=(const PgCursor &) = delete;

    const std::vector<FieldInfo> &fields() const override { return fields_; }
    const std::string &baseTable() const override { return baseTable_; }
    bool rowsIdentified() const override { return identified_; }
    bool next(Row &row) override;
    void restart() override;
    /// What is left here, and what the server has yet to send counted there.
    std::optional<long> remaining() override;

private:
    /// The fields, from the first result.
    // writtenNames: the select list's names as the statement writes them.
    void describe(const PgCatalog &catalog, const std::vector<std::optional<std::string>> &writtenNames);
    PgResult openOnServer();
    /// True when `result_` has a row at `next_`, fetching the next batch if need be.
    bool rowAtHand();
    /// The transaction that the cursor lives in ends: the rows left come now.
    void readRest();
    template <class Body> auto onServer(Body &&body) -> decltype(body());

    PgResult result_;
    std::function<PgResult()> rerun_;
    std::shared_ptr<PgConnection> connection_; // for a cursor on the server
    std::string sql_, shown_;
    std::string name_;        // of the cursor on the server while it has rows to give
    std::deque<PgResult> rest_; // rows taken before they were asked for
    std::optional<vb::Error> restError_; // met while taking them, raised in their place
    long fetched_ = 0;        // rows the server has sent
    long batch_ = 0;          // rows asked for by the next fetch
    std::vector<FieldInfo> fields_;
    std::vector<Oid> types_;
    std::vector<bool> bits_;
    std::string baseTable_;
    bool identified_ = false;
    int next_ = 0;
};

/// The names of a result's columns. The server folds names written without
/// quotes to lower case; a column is named as the select list writes it
/// (`items`, Translation::columnNames: the alias of `a.CashGroupID CurID`),
/// and a column of a star as the schema writes it (`schemaNames`, by
/// column: null where the catalog knows none). `serverNames` are the names
/// the server gave, "" for none.
std::vector<std::string> resultNames(const std::vector<std::string> &serverNames,
                                     const std::vector<std::optional<std::string>> &items,
                                     const std::vector<const std::string *> &schemaNames);

/// A value of a result, as text from the server, read as the old data layer
/// read the column's type.
vb::Variant readValue(const char *text, Oid type, bool bit);

} // namespace ado::postgresql
