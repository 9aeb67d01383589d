#include "ado/postgresql/PgCursor.h"

#include "ado/postgresql/PgDialect.h"
#include "ado/sql/DateText.h"

#include <cstdint>
#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <limits>

namespace ado::postgresql {

namespace {
// Type oids of the server's built-in types.
constexpr Oid boolOid = 16, int8Oid = 20, int2Oid = 21, int4Oid = 23, float4Oid = 700,
              float8Oid = 701, numericOid = 1700, timestampOid = 1114, timestamptzOid = 1184,
              dateOid = 1082;
} // namespace

vb::Variant readValue(const char *text, Oid type, bool bit) {
    switch (type) {
    case boolOid:
        return vb::Variant(text[0] == 't');
    case int2Oid:
    case int4Oid:
    case int8Oid: {
        long long v = std::strtoll(text, nullptr, 10);
        if (bit)
            return vb::Variant(v != 0);
        if (v >= std::numeric_limits<std::int32_t>::min() &&
            v <= std::numeric_limits<std::int32_t>::max())
            return vb::Variant(static_cast<std::int32_t>(v));
        return vb::Variant(static_cast<double>(v));
    }
    case float4Oid:
    case float8Oid:
    case numericOid:
        return vb::Variant(std::strtod(text, nullptr));
    case timestampOid:
    case timestamptzOid:
    case dateOid:
        if (auto date = sql::parseDate(text))
            return vb::Variant(*date);
        break;
    default:
        break;
    }
    return vb::Variant(std::string(text));
}

namespace {

bool folded(const std::string &name) {
    return sql::lowerCase(name) == name;
}

// A column of a star, or of a statement whose select list is not known: the
// schema's name of the column it reads, where the server folded that.
std::string schemaNamed(const std::string &name, const std::string *schemaName) {
    return schemaName && folded(name) && sql::lowerCase(*schemaName) == name ? *schemaName : name;
}

} // namespace

std::vector<std::string> resultNames(const std::vector<std::string> &serverNames,
                                     const std::vector<std::optional<std::string>> &items,
                                     const std::vector<const std::string *> &schemaNames) {
    const std::size_t n = serverNames.size();
    std::vector<std::string> out;
    for (std::size_t i = 0; i < n; ++i)
        out.push_back(schemaNamed(serverNames[i], schemaNames[i]));
    // The items before the first star stand at the first columns, those after
    // the last star at the last ones; the stars' columns lie between. Items
    // between two stars cannot be placed: their columns keep the rule of stars.
    std::size_t front = 0;
    while (front < items.size() && items[front])
        ++front;
    std::size_t back = 0;
    while (back < items.size() - front && items[items.size() - 1 - back])
        ++back;
    if (front + back > n || (front == items.size() && items.size() != n))
        return out; // a select list that does not match the result: the schema's names only
    auto named = [&](std::size_t column, const std::string &written) {
        if (!written.empty() && sql::lowerCase(written) == sql::lowerCase(serverNames[column]))
            out[column] = folded(serverNames[column]) ? written : serverNames[column];
        else
            out[column] = serverNames[column];
    };
    for (std::size_t i = 0; i < front; ++i)
        named(i, *items[i]);
    for (std::size_t i = 0; i < back; ++i)
        named(n - 1 - i, *items[items.size() - 1 - i]);
    return out;
}

PgCursor::PgCursor(PgResult result, const sql::Translation &translation, const PgCatalog &catalog,
                   std::function<PgResult()> rerun)
    : result_(std::move(result)), rerun_(std::move(rerun)), baseTable_(translation.baseTable),
      identified_(translation.rowidAdded) {
    describe(catalog, translation.columnNames);
}

// The first batch arrives with the cursor's open, in the same round trip.
constexpr long firstBatch = 100;
// Batches grow to this, so that a recordset read to its end costs few round trips.
constexpr long largestBatch = 10000;

PgCursor::PgCursor(std::shared_ptr<PgConnection> connection, std::string shown,
                   const sql::Translation &translation, const PgCatalog &catalog)
    : connection_(std::move(connection)), sql_(translation.sql), shown_(std::move(shown)),
      baseTable_(translation.baseTable), identified_(translation.rowidAdded) {
    // The statement becomes the cursor's query: a closing semicolon would end it early.
    while (!sql_.empty() && (std::isspace(static_cast<unsigned char>(sql_.back())) ||
                             sql_.back() == ';'))
        sql_.pop_back();
    result_ = openOnServer();
    describe(catalog, translation.columnNames);
}

PgCursor::~PgCursor() {
    if (!name_.empty())
        connection_->closeCursor(name_);
}

PgResult PgCursor::openOnServer() {
    name_ = connection_->newCursorName();
    PgResult first =
        connection_->openCursor(name_, sql_, firstBatch, shown_, [this] { readRest(); });
    fetched_ = PQntuples(first.get());
    batch_ = firstBatch * 4;
    if (fetched_ < firstBatch) {
        connection_->closeCursor(name_);
        name_.clear();
    }
    return first;
}

void PgCursor::readRest() {
    try {
        PgResult rest = connection_->fetch(name_, -1, shown_);
        fetched_ += PQntuples(rest.get());
        rest_.push_back(std::move(rest));
    } catch (const vb::Error &e) {
        restError_ = e;
    }
    name_.clear();
}

bool PgCursor::rowAtHand() {
    while (!result_ || next_ >= PQntuples(result_.get())) {
        if (!rest_.empty()) {
            result_ = std::move(rest_.front());
            rest_.pop_front();
        } else if (restError_) {
            throw *restError_;
        } else if (name_.empty()) {
            return false;
        } else {
            result_ = onServer([&] { return connection_->fetch(name_, batch_, shown_); });
            const long got = PQntuples(result_.get());
            fetched_ += got;
            if (got < batch_) {
                connection_->closeCursor(name_);
                name_.clear();
            }
            batch_ = std::min(batch_ * 4, largestBatch);
        }
        next_ = 0;
    }
    return true;
}

std::optional<long> PgCursor::remaining() {
    long left = result_ ? PQntuples(result_.get()) - next_ : 0;
    for (const auto &r : rest_)
        left += PQntuples(r.get());
    if (restError_)
        return std::nullopt;
    if (!name_.empty())
        left += onServer([&] { return connection_->countAfter(name_, fetched_, shown_); });
    return left;
}

// A fetch the server refused leaves the cursor unusable: it is given up (it
// ends with the transaction), and a later read meets the same error.
template <class Body> auto PgCursor::onServer(Body &&body) -> decltype(body()) {
    try {
        return body();
    } catch (const vb::Error &e) {
        name_.clear();
        restError_ = e;
        throw;
    }
}

void PgCursor::describe(const PgCatalog &catalog, const std::vector<std::optional<std::string>> &writtenNames) {
    int columns = PQnfields(result_.get()) - (identified_ ? 1 : 0);
    std::string base = sql::lowerCase(baseTable_);
    std::vector<std::string> serverNames;
    std::vector<const std::string *> schemaNames;
    for (int i = 0; i < columns; ++i) {
        std::string name = PQfname(result_.get(), i);
        FieldInfo field{name == unnamedColumn ? "" : name, ""};
        bool bit = false;
        const std::string *schemaName = nullptr;
        Oid table = PQftable(result_.get(), i);
        if (table != InvalidOid) {
            auto t = catalog.tableName.find(table);
            auto c = catalog.columnAt.find({table, PQftablecol(result_.get(), i)});
            if (auto w = catalog.writtenAt.find({table, PQftablecol(result_.get(), i)});
                w != catalog.writtenAt.end())
                schemaName = &w->second;
            if (t != catalog.tableName.end() && c != catalog.columnAt.end()) {
                if (!base.empty() && sql::lowerCase(t->second) == base)
                    field.baseColumn = c->second;
                bit = catalog.tables.columnType(t->second, c->second).kind == sql::ColumnKind::Bit;
            }
        }
        serverNames.push_back(field.name);
        schemaNames.push_back(schemaName);
        fields_.push_back(std::move(field));
        types_.push_back(PQftype(result_.get(), i));
        bits_.push_back(bit);
    }
    auto names = resultNames(serverNames, writtenNames, schemaNames);
    for (std::size_t i = 0; i < fields_.size(); ++i)
        fields_[i].name = names[i];
}

bool PgCursor::next(Row &row) {
    if (!rowAtHand())
        return false;
    row.values.resize(fields_.size());
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        int c = static_cast<int>(i);
        row.values[i] = PQgetisnull(result_.get(), next_, c)
                            ? vb::Variant::null()
                            : readValue(PQgetvalue(result_.get(), next_, c), types_[i], bits_[i]);
    }
    row.rowid = 0;
    if (identified_) {
        int at = static_cast<int>(fields_.size());
        const char *identity = PQgetvalue(result_.get(), next_, at);
        constexpr Oid tidOid = 27;
        row.rowid = PQftype(result_.get(), at) == tidOid ? rowidOfTid(identity)
                                                         : std::strtoll(identity, nullptr, 10);
    }
    ++next_;
    return true;
}

void PgCursor::restart() {
    next_ = 0;
    if (!connection_) {
        result_ = rerun_();
        return;
    }
    // The statement runs again, on a new cursor: a new snapshot, as a rerun reads.
    if (!name_.empty())
        connection_->closeCursor(name_);
    name_.clear();
    rest_.clear();
    restError_.reset();
    result_ = openOnServer();
}

} // namespace ado::postgresql
