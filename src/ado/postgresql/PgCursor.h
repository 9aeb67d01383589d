// The rows of a statement run on the server.
#pragma once

#include "ado/Provider.h"
#include "ado/postgresql/PgCatalog.h"
#include "ado/postgresql/PgConnection.h"
#include "ado/sql/Translator.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ado::postgresql {

/// The statement's rows arrive whole: under read-committed the server gives
/// a statement one snapshot, so rows read later would be the same rows, and
/// a recordset left half read holds nothing open on the connection. Keyset
/// and forward-only recordsets both read from here.
class PgCursor : public Cursor {
public:
    /// `rerun` runs the statement again for `restart`.
    PgCursor(PgResult result, const sql::Translation &translation, const PgCatalog &catalog,
             std::function<PgResult()> rerun);

    const std::vector<FieldInfo> &fields() const override { return fields_; }
    const std::string &baseTable() const override { return baseTable_; }
    bool rowsIdentified() const override { return identified_; }
    bool next(Row &row) override;
    void restart() override;
    /// The rows are all here: what is left is counted without reading it.
    std::optional<long> remaining() override {
        return result_ ? PQntuples(result_.get()) - next_ : 0;
    }

private:
    PgResult result_;
    std::function<PgResult()> rerun_;
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
