#include "ado/postgresql/PgConnection.h"

#include "ado/postgresql/PgErrorMapping.h"

namespace ado::postgresql {

namespace {

// SQL Server's functions that the server has no match for, made for each
// connection in its own temporary schema: nothing is left in the database,
// and a database without the module's schema still runs the module's text.
// The text functions give citext, so that their results compare ignoring
// letter case as the columns do (left(svhFutureVc, 1) <> 't'); avg of
// integers cuts its result to an integer, as SQL Server's does.
constexpr const char *helperFunctions = R"(
create function pg_temp.sv_fail(message text) returns text language plpgsql
    as $$ begin raise exception '%', message; end $$;
create function pg_temp.sv_len(x text) returns integer language sql immutable
    as $$ select length(rtrim(x, ' ')) $$;
create function pg_temp.sv_len(x anynonarray) returns integer language sql immutable
    as $$ select length(rtrim(x::text, ' ')) $$;
create function pg_temp.sv_isnumeric(x text) returns integer language sql immutable
    as $$ select case when x ~ '\S' and (x ~ '^\s*[$£€¥]?[-+]?[\d,]*(\.\d*)?\s*$'
        or x ~ '^\s*[$£€¥]?[-+]?([\d,]*\d[\d,]*(\.\d*)?|[\d,]*\.\d+)[eEdD][-+]?\d+\s*$')
        then 1 else 0 end $$;
create function pg_temp.sv_isnumeric(x anynonarray) returns integer language sql immutable
    as $$ select pg_temp.sv_isnumeric(x::text) $$;
-- getdate() is the program's clock, which the provider sets before a statement that reads it
-- (a clock fixed by a test stays fixed); the server's own clock where none was set.
create function pg_temp.sv_getdate() returns timestamp(3) language sql stable
    as $$ select coalesce(nullif(current_setting('stockverify.now', true), '')::timestamp(3),
                          localtimestamp(3)) $$;
-- A float as convert(varchar, x) writes it: 6 significant digits, and the exponent form with
-- three exponent digits beyond 6 digits before the point or below 0.0001 ("1.23457e+006").
create function pg_temp.sv_floattext(d double precision) returns text
    language plpgsql immutable strict as $$
declare
    e text := to_char(d, '9.99999EEEE');
    x integer;
    m text;
begin
    if d = 0 or d <> d or d in ('Infinity', '-Infinity') then
        return d::text;
    end if;
    x := substring(e from 'e([-+][0-9]+)$')::integer;
    if x < -4 or x >= 6 then
        m := rtrim(rtrim(trim(substring(e from '^(.*)e')), '0'), '.');
        return m || 'e' || (case when x < 0 then '-' else '+' end) || lpad(abs(x)::text, 3, '0');
    end if;
    m := round(d::numeric, 5 - x)::text;
    if position('.' in m) > 0 then
        m := rtrim(rtrim(m, '0'), '.');
    end if;
    return m;
end $$;
-- Any value as text for convert(varchar, x): floats as above, the rest as the server writes
-- them. The branch for floats is only planned when a float comes.
create function pg_temp.sv_text(x text) returns text language sql immutable
    as $$ select x $$;
create function pg_temp.sv_text(x anynonarray) returns text language plpgsql immutable strict as $$
begin
    if pg_typeof(x) in ('double precision'::regtype, 'real'::regtype) then
        return pg_temp.sv_floattext(x::text::double precision);
    end if;
    return x::text;
end $$;
create function pg_temp.sv_isnull(x text, y text) returns citext language sql immutable
    as $$ select coalesce(x, y)::citext $$;
create function pg_temp.sv_isnull(x text, y numeric) returns citext language sql immutable
    as $$ select coalesce(x, y::text)::citext $$;
create function pg_temp.sv_isnull(x anyelement, y anyelement) returns anyelement
    language sql immutable as $$ select coalesce(x, y) $$;
-- Two numbers of different types (isnull(sum(qty), 0): numeric and integer) find the
-- overload of the wider one, where the polymorphic one wants both of one type.
create function pg_temp.sv_isnull(x integer, y integer) returns integer language sql immutable
    as $$ select coalesce(x, y) $$;
create function pg_temp.sv_isnull(x bigint, y bigint) returns bigint language sql immutable
    as $$ select coalesce(x, y) $$;
create function pg_temp.sv_isnull(x numeric, y numeric) returns numeric language sql immutable
    as $$ select coalesce(x, y) $$;
create function pg_temp.sv_isnull(x double precision, y double precision)
    returns double precision language sql immutable as $$ select coalesce(x, y) $$;
create function pg_temp.sv_int(x text) returns integer language sql immutable
    as $$ select x::integer $$;
create function pg_temp.sv_int(x numeric) returns integer language sql immutable
    as $$ select trunc(x)::integer $$;
create function pg_temp.sv_int(x double precision) returns integer language sql immutable
    as $$ select trunc(x)::integer $$;
create function pg_temp.sv_avg_step(s numeric[], x numeric) returns numeric[]
    language sql immutable strict as $$ select array[s[1] + 1, s[2] + x] $$;
create function pg_temp.sv_avg_step(s numeric[], x integer) returns numeric[]
    language sql immutable strict as $$ select array[s[1] + 1, s[2] + x] $$;
create function pg_temp.sv_avg_step(s numeric[], x double precision) returns numeric[]
    language sql immutable strict as $$ select array[s[1] + 1, s[2] + x::numeric] $$;
create function pg_temp.sv_avg_int(s numeric[]) returns integer language sql immutable
    as $$ select case when s[1] = 0 then null else trunc(s[2] / s[1])::integer end $$;
create function pg_temp.sv_avg_numeric(s numeric[]) returns numeric language sql immutable
    as $$ select case when s[1] = 0 then null else s[2] / s[1] end $$;
create function pg_temp.sv_avg_float(s numeric[]) returns double precision language sql immutable
    as $$ select case when s[1] = 0 then null else (s[2] / s[1])::double precision end $$;
create aggregate pg_temp.sv_avg(integer) (sfunc = pg_temp.sv_avg_step, stype = numeric[],
    finalfunc = pg_temp.sv_avg_int, initcond = '{0,0}');
create aggregate pg_temp.sv_avg(numeric) (sfunc = pg_temp.sv_avg_step, stype = numeric[],
    finalfunc = pg_temp.sv_avg_numeric, initcond = '{0,0}');
create aggregate pg_temp.sv_avg(double precision) (sfunc = pg_temp.sv_avg_step,
    stype = numeric[], finalfunc = pg_temp.sv_avg_float, initcond = '{0,0}');
create function pg_temp.sv_left(x text, n integer) returns citext language sql immutable
    as $$ select case when n < 0
        then pg_temp.sv_fail('Invalid length parameter passed to the left function.')
        else left(x, n) end::citext $$;
create function pg_temp.sv_right(x text, n integer) returns citext language sql immutable
    as $$ select case when n < 0
        then pg_temp.sv_fail('Invalid length parameter passed to the right function.')
        else right(x, n) end::citext $$;
create function pg_temp.sv_substring(x text, s integer, n integer) returns citext
    language sql immutable as $$ select case when n < 0
        then pg_temp.sv_fail('Invalid length parameter passed to the substring function.')
        else substring(x from s for n) end::citext $$;
create function pg_temp.sv_upper(x text) returns citext language sql immutable
    as $$ select upper(x)::citext $$;
create function pg_temp.sv_lower(x text) returns citext language sql immutable
    as $$ select lower(x)::citext $$;
create function pg_temp.sv_ltrim(x text) returns citext language sql immutable
    as $$ select ltrim(x, ' ')::citext $$;
create function pg_temp.sv_rtrim(x text) returns citext language sql immutable
    as $$ select rtrim(x, ' ')::citext $$;
create function pg_temp.sv_replace(x text, f text, t text) returns citext language sql immutable
    as $$ select replace(x, f, t)::citext $$;
)";

struct Params {
    std::vector<const char *> values;
    explicit Params(const std::vector<Param> &params) {
        for (const auto &p : params)
            values.push_back(p ? p->c_str() : nullptr);
    }
};

} // namespace

PgConnection::PgConnection(const std::string &uri) : conn_(PQconnectdb(uri.c_str())) {
    if (!conn_ || PQstatus(conn_) != CONNECTION_OK) {
        vb::Error e = connectionError(conn_);
        PQfinish(conn_);
        conn_ = nullptr;
        throw e;
    }
    PQsetClientEncoding(conn_, "UTF8");
    exec(helperFunctions, "");
}

PgConnection::~PgConnection() {
    PQfinish(conn_);
}

void PgConnection::fail(const PGresult *result, std::string_view shown) {
    if (PQstatus(conn_) == CONNECTION_BAD) {
        // A connection that is gone ends the transaction: the server rolled it back.
        inTransaction_ = false;
        timeout_ = -1;
    }
    throw serverError(result, shown);
}

PgResult PgConnection::exec(std::string_view sql, std::string_view shown) {
    PgResult r(PQexec(conn_, std::string(sql).c_str()));
    auto status = r ? PQresultStatus(r.get()) : PGRES_FATAL_ERROR;
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK)
        fail(r.get(), shown);
    return r;
}

void PgConnection::setTimeout(int seconds) {
    wantedTimeout_ = seconds;
}

// A setting made inside a transaction that rolls back is undone with it, so
// after a rollback the setting is made again before the next statement.
void PgConnection::applyTimeout() {
    if (wantedTimeout_ == timeout_)
        return;
    exec("set statement_timeout = " + std::to_string(wantedTimeout_ * 1000), "");
    timeout_ = wantedTimeout_;
}

void PgConnection::begin() {
    exec("begin", "BeginTrans");
    inTransaction_ = true;
}

void PgConnection::commit() {
    inTransaction_ = false;
    exec("commit", "CommitTrans");
}

void PgConnection::rollback() {
    inTransaction_ = false;
    timeout_ = -1;
    // A connection that is gone took its transaction with it: the server
    // rolled it back, which is what was asked, and the module's error path
    // goes on to report the error that broke the connection.
    if (PQstatus(conn_) == CONNECTION_BAD)
        return;
    exec("rollback", "RollbackTrans");
}

PgResult PgConnection::run(std::string_view sql, const std::vector<Param> &params,
                           std::string_view shown) {
    return send(nullptr, sql, params, shown);
}

PgResult PgConnection::runPrepared(const std::string &sql, const std::vector<Param> &params,
                                   std::string_view shown) {
    auto it = prepared_.find(sql);
    if (it == prepared_.end()) {
        std::string name = "sv" + std::to_string(prepared_.size() + 1);
        // A refused prepare would end a transaction as a refused statement would.
        if (inTransaction_)
            exec("savepoint sv_statement", shown);
        PgResult r(PQprepare(conn_, name.c_str(), sql.c_str(), 0, nullptr));
        if (!r || PQresultStatus(r.get()) != PGRES_COMMAND_OK) {
            if (inTransaction_ && PQstatus(conn_) != CONNECTION_BAD)
                exec("rollback to savepoint sv_statement; release savepoint sv_statement", shown);
            fail(r.get(), shown);
        }
        if (inTransaction_)
            exec("release savepoint sv_statement", shown);
        it = prepared_.emplace(sql, name).first;
    }
    return send(&it->second, sql, params, shown);
}

PgResult PgConnection::send(const std::string *prepared, std::string_view sql,
                            const std::vector<Param> &params, std::string_view shown) {
    applyTimeout();
    if (inTransaction_)
        return pipelined(prepared, sql, params, shown);
    Params p(params);
    int n = static_cast<int>(params.size());
    PgResult r(
        prepared ? PQexecPrepared(conn_, prepared->c_str(), n, p.values.data(), nullptr, nullptr, 0)
                 : PQexecParams(conn_, std::string(sql).c_str(), n, nullptr, p.values.data(),
                                nullptr, nullptr, 0));
    auto status = r ? PQresultStatus(r.get()) : PGRES_FATAL_ERROR;
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK)
        fail(r.get(), shown);
    return r;
}

void PgConnection::sendOne(const std::string *prepared, std::string_view sql,
                           const std::vector<Param> &params) {
    Params p(params);
    int n = static_cast<int>(params.size());
    int ok = prepared ? PQsendQueryPrepared(conn_, prepared->c_str(), n, p.values.data(), nullptr,
                                            nullptr, 0)
                      : PQsendQueryParams(conn_, std::string(sql).c_str(), n, nullptr,
                                          p.values.data(), nullptr, nullptr, 0);
    if (!ok)
        fail(nullptr, sql);
}

// The first result of the next query in the pipeline; the rest of it is read and dropped.
PgResult PgConnection::takeResult() {
    PgResult first;
    while (PGresult *r = PQgetResult(conn_)) {
        if (!first)
            first.reset(r);
        else
            PQclear(r);
    }
    return first;
}

PgResult PgConnection::pipelined(const std::string *prepared, std::string_view sql,
                                 const std::vector<Param> &params, std::string_view shown) {
    if (!PQenterPipelineMode(conn_))
        fail(nullptr, shown);
    sendOne(nullptr, "savepoint sv_statement", {});
    sendOne(prepared, sql, params);
    sendOne(nullptr, "release savepoint sv_statement", {});
    if (!PQpipelineSync(conn_))
        fail(nullptr, shown);
    PgResult savepoint = takeResult();
    PgResult result = takeResult();
    PgResult release = takeResult();
    PgResult sync(PQgetResult(conn_));
    PQexitPipelineMode(conn_);
    auto failed = [](const PgResult &r) {
        auto s = r ? PQresultStatus(r.get()) : PGRES_FATAL_ERROR;
        return s != PGRES_COMMAND_OK && s != PGRES_TUPLES_OK;
    };
    if (failed(savepoint))
        fail(savepoint.get(), shown);
    if (failed(result)) {
        if (PQstatus(conn_) != CONNECTION_BAD)
            exec("rollback to savepoint sv_statement; release savepoint sv_statement", shown);
        fail(result.get(), shown);
    }
    if (failed(release))
        fail(release.get(), shown);
    return result;
}

} // namespace ado::postgresql
