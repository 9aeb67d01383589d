#include "GodownBook.h"

#include "ado/sqlite/NativeStatement.h"

#include <stdexcept>

namespace durability {

std::int64_t thousandths(const std::string &text) {
    std::size_t at = 0;
    const bool negative = !text.empty() && text[0] == '-';
    if (negative) {
        ++at;
    }
    std::int64_t whole = 0;
    bool digits = false;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
        whole = whole * 10 + (text[at] - '0');
        digits = true;
    }
    std::int64_t fraction = 0;
    int places = 0;
    if (at < text.size() && text[at] == '.') {
        for (++at; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
            if (places < 3) {
                fraction = fraction * 10 + (text[at] - '0');
                ++places;
            } else if (text[at] != '0') {
                throw std::invalid_argument("not an exact quantity: " + text);
            }
        }
    }
    if (!digits || at != text.size()) {
        throw std::invalid_argument("not an exact quantity: " + text);
    }
    for (; places < 3; ++places) {
        fraction *= 10;
    }
    const std::int64_t value = whole * 1000 + fraction;
    return negative ? -value : value;
}

namespace {

std::string decimal(std::int64_t thousandths) {
    const std::int64_t magnitude = thousandths < 0 ? -thousandths : thousandths;
    std::string fraction = std::to_string(magnitude % 1000);
    fraction.insert(0, 3 - fraction.size(), '0');
    return (thousandths < 0 ? "-" : "") + std::to_string(magnitude / 1000) + "." + fraction;
}

} // namespace

void PrintTo(const Quantity &q, std::ostream *out) {
    *out << "good " << decimal(q.good) << " bad " << decimal(q.bad);
}

GodownBook::GodownBook(const std::string &database, std::int32_t godown)
    : godown_(std::to_string(godown)) {
    if (database.starts_with("postgresql://"))
        server_ = std::make_unique<records::PostgresDatabase>(database);
    else
        connection_.Open(database.starts_with("sqlite:") ? database : "sqlite:" + database);
}

std::vector<std::vector<std::string>> GodownBook::rows(const std::string &sql) {
    if (server_) {
        std::vector<std::vector<std::string>> out;
        for (const auto &row : server_->rows(sql)) {
            std::vector<std::string> values;
            for (const auto &value : row)
                values.push_back(value.value_or("NULL"));
            out.push_back(std::move(values));
        }
        return out;
    }
    ado::sqlite::NativeStatement st(connection_, sql);
    std::vector<std::vector<std::string>> out;
    while (st.step()) {
        std::vector<std::string> row;
        for (int c = 0; c < st.columnCount(); ++c) {
            row.push_back(st.isNull(c) ? "NULL" : st.text(c));
        }
        out.push_back(std::move(row));
    }
    return out;
}

std::string GodownBook::integrity() {
    if (server_) {
        server_->execute("CREATE EXTENSION IF NOT EXISTS amcheck");
        rows("SELECT bt_index_check(i.indexrelid, true) FROM pg_index i "
             "JOIN pg_class c ON c.oid = i.indrelid JOIN pg_namespace n ON n.oid = c.relnamespace "
             "WHERE n.nspname = 'public'");
        return "ok";
    }
    std::string all;
    for (const auto &row : rows("pragma integrity_check")) {
        all += (all.empty() ? "" : "\n") + row[0];
    }
    return all;
}

std::int64_t GodownBook::lastEntryId() {
    const auto r = rows("select coalesce(max(svhid), 0) from loiStockVerificationHeader "
                        "where svhGodownid = " +
                        godown_);
    return std::stoll(r.at(0).at(0));
}

std::int64_t GodownBook::lastLiveEntryId() {
    const auto r = rows("select coalesce(max(svhid), 0) from loiStockVerificationHeader "
                        "where svhcancelled = 0 and svhGodownid = " +
                        godown_);
    return std::stoll(r.at(0).at(0));
}

std::vector<std::vector<std::string>> GodownBook::entriesAfter(std::int64_t afterId) {
    return rows("select svhid, svhno, svhFutureVc, svhcancelled from loiStockVerificationHeader "
                "where svhGodownid = " +
                godown_ + " and svhid > " + std::to_string(afterId) + " order by svhid");
}

std::map<std::int64_t, std::int64_t> GodownBook::linesAfter(std::int64_t afterId) {
    std::map<std::int64_t, std::int64_t> out;
    for (const auto &row : rows("select svdid, count(*) from loiStockVerificationDetail "
                                "where svdGodownID = " +
                                godown_ + " and svdid > " + std::to_string(afterId) +
                                " group by svdid")) {
        out[std::stoll(row[0])] = std::stoll(row[1]);
    }
    return out;
}

std::map<std::int64_t, std::int64_t> GodownBook::trailAfter(std::int64_t afterId,
                                                        const std::string &action) {
    std::map<std::int64_t, std::int64_t> out;
    for (const auto &row : rows("select cast(TransKey as integer) k, count(*) from aActivityTrail "
                                "where GodownID = " +
                                godown_ + " and ActionType = '" + action +
                                "' and cast(TransKey as integer) > " +
                                std::to_string(afterId) + " group by k")) {
        out[std::stoll(row[0])] = std::stoll(row[1]);
    }
    return out;
}

std::vector<std::string> GodownBook::repeatedNumbers() {
    std::vector<std::string> out;
    for (const auto &row : rows("select svhno from loiStockVerificationHeader where "
                                "svhGodownid = " +
                                godown_ + " group by svhno having count(*) > 1")) {
        out.push_back(row[0]);
    }
    return out;
}

StockByItem GodownBook::stock() {
    StockByItem out;
    for (const auto &row : rows("select gsItemId, gsShipmentId, gsStock, gsBadStock "
                                "from moigodownstock where gsGodownId = " +
                                godown_)) {
        Quantity &q = out[{std::stoll(row[0]), std::stoll(row[1])}];
        q.good += thousandths(row[2]);
        q.bad += thousandths(row[3]);
    }
    return out;
}

StockByItem GodownBook::countedChanges(std::int64_t afterId) {
    StockByItem out;
    for (const auto &row :
         rows("select svdItemID, svdShipmentID, svdAvailStock, svdVerifiedStock, "
              "svdavailbadstock, svdverifiedbadstock from loiStockVerificationDetail d "
              "join loiStockVerificationHeader h on h.svhid = d.svdid and "
              "h.svhGodownid = d.svdGodownID where h.svhcancelled = 0 and svdGodownID = " +
              godown_ + " and svdid > " + std::to_string(afterId))) {
        Quantity &q = out[{std::stoll(row[0]), std::stoll(row[1])}];
        q.good += thousandths(row[3]) - thousandths(row[2]);
        q.bad += thousandths(row[5]) - thousandths(row[4]);
    }
    return out;
}

StockByItem posted(StockByItem before, const StockByItem &changes) {
    for (const auto &[key, change] : changes) {
        Quantity &q = before[key];
        q.good += change.good;
        q.bad += change.bad;
    }
    return before;
}

} // namespace durability
