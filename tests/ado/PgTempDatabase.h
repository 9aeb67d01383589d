// The tables of TempDatabase.h on the throwaway PostgreSQL cluster, made again for each test.
#pragma once

#include "ado/Connection.h"
#include "pg/TestCluster.h"

#include <string>
#include <string_view>

namespace adotest {

/// The shared test tables as a database for this module declares them on the
/// server: text columns sv_text with a check named COLUMN_length, bit columns
/// the domain sv_bit, money numeric(19,4). The header has its key, which the
/// server provider needs to change a row that a recordset read.
inline constexpr std::string_view pgTestSchema = R"(
drop table if exists loiStockVerificationHeader, loiStockVerificationDetail, aItem cascade;
do $$ begin
  if not exists (select 1 from pg_type where typname = 'sv_bit') then
    create domain sv_bit as smallint check (value in (0, 1));
  end if;
  if not exists (select 1 from pg_type where typname = 'sv_text') then
    create collation sv_ci (provider = icu, locale = 'und-u-ks-level2', deterministic = false);
    create domain sv_text as bpchar collate sv_ci;
    create function sv_concat(a bpchar, b bpchar) returns bpchar language sql immutable strict
        as $f$ select (textin(bpcharout(a)) || textin(bpcharout(b)))::bpchar $f$;
    create operator || (leftarg = bpchar, rightarg = bpchar, function = sv_concat);
    create function sv_concat(a bpchar, b text) returns bpchar language sql immutable strict
        as $f$ select (textin(bpcharout(a)) || b)::bpchar $f$;
    create operator || (leftarg = bpchar, rightarg = text, function = sv_concat);
    create function sv_concat(a text, b bpchar) returns bpchar language sql immutable strict
        as $f$ select (a || textin(bpcharout(b)))::bpchar $f$;
    create operator || (leftarg = text, rightarg = bpchar, function = sv_concat);
  end if;
end $$;
create table loiStockVerificationHeader (
    svhid int primary key,
    svhno sv_text constraint svhno_length check (length(svhno) <= 20),
    svhdate timestamp(3),
    svhremarks sv_text constraint svhremarks_length check (length(svhremarks) <= 250),
    svhVerificationby sv_text constraint svhverificationby_length
        check (length(svhVerificationby) <= 50),
    svhGodownid int not null,
    svhFutureVc sv_text constraint svhfuturevc_length check (length(svhFutureVc) <= 7),
    svhcancelled int not null default 0, svhposted sv_bit not null default 0,
    svhcancelledRemarks sv_text constraint svhcancelledremarks_length
        check (length(svhcancelledRemarks) <= 255),
    updatetime timestamp(3));
create table loiStockVerificationDetail (
    svdid int, svdGodownID int, svdLocationid int, svdShipmentID int, svdItemID int,
    svdAvailStock numeric(18,3), svdVerifiedStock numeric(18,3),
    svdavailbadstock numeric(18,3), svdverifiedbadstock numeric(18,3),
    svdcostprice numeric(19,4));
create table aItem (ItemId int primary key,
    itemcode sv_text constraint itemcode_length check (length(itemcode) <= 20),
    itemrate double precision, Active sv_bit default 1);
-- What the tests' own checks of the tables call, as the embedded database has them.
create or replace function ifnull(a anyelement, b anyelement) returns anyelement
    language sql as $f$ select coalesce(a, b) $f$;
create or replace function sv_concat_step(a text, b text) returns text
    language sql as $f$ select case when a is null then b when b is null then a
                                    else a || ',' || b end $f$;
create or replace aggregate group_concat(text) (sfunc = sv_concat_step, stype = text);
create or replace function sv_concat_step(a text, b text, sep text) returns text
    language sql as $f$ select case when a is null then b when b is null then a
                                    else a || sep || b end $f$;
create or replace aggregate group_concat(text, text) (sfunc = sv_concat_step, stype = text);
)";

/// Runs native statements on the cluster, outside the module's provider;
/// raises std::runtime_error with the server's message when one fails.
void pgNative(const std::string &uri, std::string_view sql);

/// The cluster's database with `schema` made afresh. `skipped()` says why
/// there is none (GTEST_SKIP with it).
class PgTempDatabase {
public:
    explicit PgTempDatabase(std::string_view schema = pgTestSchema) {
        uri_ = pgtest::clusterUri(whyNot_);
        if (!uri_.empty())
            pgNative(uri_, schema);
    }
    const std::string &uri() const { return uri_; }
    bool available() const { return !uri_.empty(); }
    const std::string &whyNot() const { return whyNot_; }
    ado::Connection connect() const {
        ado::Connection c;
        c.Open(uri_);
        return c;
    }

private:
    std::string uri_;
    std::string whyNot_;
};

} // namespace adotest
