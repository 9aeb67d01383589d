#include "ado/postgresql/PgConnection.h"

#include "ado/postgresql/PgErrorMapping.h"

namespace ado::postgresql {

namespace {

// SQL Server's functions that the server has no match for, made for each
// connection in its own temporary schema: nothing is left in the database,
// and a database without the module's schema still runs the module's text.
// The text functions give bpchar, which keeps the collation of the text they
// were given, so that their results compare ignoring letter case and
// trailing blanks as the columns do (left(svhFutureVc, 1) <> 't'); where
// they search inside text or match a regular expression they name the
// collation "C", since the columns' collation refuses both. avg of integers
// cuts its result to an integer, as SQL Server's does.
constexpr const char *helperFunctions = R"(
create function pg_temp.sv_fail(message text) returns text language plpgsql
    as $$ begin raise exception '%', message; end $$;
create function pg_temp.sv_len(x text) returns integer language sql immutable
    as $$ select length(rtrim(x, ' ')) $$;
create function pg_temp.sv_len(x anynonarray) returns integer language sql immutable
    as $$ select length(rtrim(x::text, ' ')) $$;
create function pg_temp.sv_isnumeric(x text) returns integer language sql immutable
    as $$ select case when x collate "C" ~ '\S'
        and (x collate "C" ~ '^\s*[$£€¥]?[-+]?[\d,]*(\.\d*)?\s*$'
        or x collate "C" ~ '^\s*[$£€¥]?[-+]?([\d,]*\d[\d,]*(\.\d*)?|[\d,]*\.\d+)[eEdD][-+]?\d+\s*$')
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
create function pg_temp.sv_isnull(x text, y text) returns bpchar language sql immutable
    as $$ select coalesce(x, y)::bpchar $$;
create function pg_temp.sv_isnull(x text, y numeric) returns bpchar language sql immutable
    as $$ select coalesce(x, y::text)::bpchar $$;
-- A column's value read through isnull keeps its trailing blanks (a cast to text drops them).
create function pg_temp.sv_isnull(x bpchar, y text) returns bpchar language sql immutable
    as $$ select coalesce(x, y::bpchar) $$;
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
-- The text functions take bpchar, and read it through its output function, so that
-- a column's trailing blanks stay (a cast to text drops them).
create function pg_temp.sv_left(x bpchar, n integer) returns bpchar language sql immutable
    as $$ select case when n < 0
        then pg_temp.sv_fail('Invalid length parameter passed to the left function.')
        else left(textin(bpcharout(x)), n) end::bpchar $$;
create function pg_temp.sv_right(x bpchar, n integer) returns bpchar language sql immutable
    as $$ select case when n < 0
        then pg_temp.sv_fail('Invalid length parameter passed to the right function.')
        else right(textin(bpcharout(x)), n) end::bpchar $$;
create function pg_temp.sv_substring(x bpchar, s integer, n integer) returns bpchar
    language sql immutable as $$ select case when n < 0
        then pg_temp.sv_fail('Invalid length parameter passed to the substring function.')
        else substring(textin(bpcharout(x)) from s for n) end::bpchar $$;
create function pg_temp.sv_upper(x bpchar) returns bpchar language sql immutable
    as $$ select upper(textin(bpcharout(x)))::bpchar $$;
create function pg_temp.sv_lower(x bpchar) returns bpchar language sql immutable
    as $$ select lower(textin(bpcharout(x)))::bpchar $$;
create function pg_temp.sv_ltrim(x bpchar) returns bpchar language sql immutable
    as $$ select ltrim(textin(bpcharout(x)), ' ')::bpchar $$;
create function pg_temp.sv_rtrim(x text) returns bpchar language sql immutable
    as $$ select rtrim(x, ' ')::bpchar $$;
create function pg_temp.sv_replace(x bpchar, f text, t text) returns bpchar
    language sql immutable as $$ select replace(textin(bpcharout(x)) collate "C", f, t)::bpchar $$;
-- SQL Server's LIKE pattern as an anchored regular expression, for ~* (PgDialect.cpp).
-- % is any run, _ any one character, [..] a set of characters and ranges, [^..] the
-- characters outside it; a [ without a ] after it stands for itself, as does every
-- character after the escape. A range written backwards holds nothing.
create function pg_temp.sv_like_char(c text) returns text language sql immutable
    as $$ select case when ascii(c) < 128 and c collate "C" !~ '[A-Za-z0-9]'
        then '\' || c else c end $$;
create function pg_temp.sv_like_regex(pattern text, escape_char text default null) returns text
    language plpgsql immutable as $$
declare
    p text collate "C" := pattern;
    e text collate "C" := escape_char;
    n integer := length(pattern);
    out text collate "C" := '^(?:';
    i integer := 1;
    k integer;
    c text collate "C";
    low text collate "C";
    high text collate "C";
    members text collate "C";
    first boolean;
    negated boolean;
begin
    if e is not null and length(e) <> 1 then
        raise exception 'The invalid escape character "%" was specified in a LIKE predicate.', e;
    end if;
    while i <= n loop
        c := substr(p, i, 1);
        i := i + 1;
        if c = e and i <= n then
            out := out || pg_temp.sv_like_char(substr(p, i, 1));
            i := i + 1;
        elsif c = '%' then
            out := out || '.*';
        elsif c = '_' then
            out := out || '.';
        elsif c = '[' and strpos(substr(p, i + 1), ']') > 0 then
            k := i;
            negated := substr(p, k, 1) = '^';
            if negated then
                k := k + 1;
            end if;
            members := '';
            first := true;
            while k <= n and (first or substr(p, k, 1) <> ']') loop
                first := false;
                low := substr(p, k, 1);
                high := low;
                k := k + 1;
                if k + 1 <= n and substr(p, k, 1) = '-' and substr(p, k + 1, 1) <> ']' then
                    high := substr(p, k + 1, 1);
                    k := k + 2;
                end if;
                if low <= high then
                    members := members || pg_temp.sv_like_char(low) ||
                        case when high = low then '' else '-' || pg_temp.sv_like_char(high) end;
                end if;
            end loop;
            i := k + 1;
            out := out || case when members <> ''
                                   then '[' || case when negated then '^' else '' end || members || ']'
                               when negated then '.'
                               else '[^\s\S]' end;
        else
            out := out || pg_temp.sv_like_char(c);
        end if;
    end loop;
    -- Trailing blanks of the text may stay unmatched, as SQL Server lets them.
    return out || ') *$';
end $$;
)";

// The writes that wait in one pipeline at most: the server's replies to them
// fit in the socket's buffers, and a refused row is met within as many rows.
constexpr std::size_t aheadLimit = 500;

bool failed(const PgResult &r) {
    auto s = r ? PQresultStatus(r.get()) : PGRES_FATAL_ERROR;
    return s != PGRES_COMMAND_OK && s != PGRES_TUPLES_OK;
}

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
    settle();
    ++roundTrips_;
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
    endCursors();
    inTransaction_ = false;
    exec("commit", "CommitTrans");
}

// A cursor opened in the transaction ends with it: those still read take
// their other rows first, and those closed need no close any more.
void PgConnection::endCursors() {
    auto ending = std::move(ending_);
    ending_.clear();
    for (auto &[name, readRest] : ending)
        if (PQstatus(conn_) != CONNECTION_BAD)
            readRest();
    std::erase_if(closing_,
                  [&](const std::string &name) { return closedInTransaction_.count(name) > 0; });
    closedInTransaction_.clear();
}

std::string PgConnection::newCursorName() {
    return "sv_c" + std::to_string(++cursors_);
}

PgResult PgConnection::openCursor(const std::string &name, std::string_view sql, long rows,
                                  std::string_view shown, std::function<void()> readRest) {
    // Outside a transaction the server keeps the rows for the cursor when
    // the statement's own transaction ends (WITH HOLD); inside one the cursor
    // reads as the statement goes, and ends with the transaction.
    const bool held = !inTransaction_;
    std::vector<PgResult> r = together({"declare " + name + " scroll cursor" +
                                            (held ? " with hold" : "") + " for " +
                                            std::string(sql),
                                        "fetch forward " + std::to_string(rows) + " from " + name},
                                       shown);
    if (!held)
        ending_.emplace(name, std::move(readRest));
    return std::move(r.back());
}

PgResult PgConnection::fetch(const std::string &name, long rows, std::string_view shown) {
    std::string count = rows < 0 ? std::string("all") : std::to_string(rows);
    return std::move(together({"fetch forward " + count + " from " + name}, shown).back());
}

long PgConnection::countAfter(const std::string &name, long position, std::string_view shown) {
    std::vector<PgResult> r = together(
        {"move forward all in " + name, "move absolute " + std::to_string(position) + " in " + name},
        shown);
    return std::atol(PQcmdTuples(r.front().get()));
}

void PgConnection::closeCursor(const std::string &name) {
    if (ending_.erase(name))
        closedInTransaction_.insert(name);
    closing_.push_back(name);
}

std::vector<PgResult> PgConnection::together(std::vector<std::string> statements,
                                             std::string_view shown) {
    settle();
    applyTimeout();
    const std::size_t own = statements.size();
    for (const auto &name : closing_)
        statements.insert(statements.begin(), "close " + name);
    closing_.clear();
    const bool guarded = inTransaction_;
    if (!PQenterPipelineMode(conn_))
        fail(nullptr, shown);
    if (guarded)
        sendOne(nullptr, "savepoint sv_statement", {});
    for (const auto &statement : statements)
        sendOne(nullptr, statement, {});
    if (guarded)
        sendOne(nullptr, "release savepoint sv_statement", {});
    ++roundTrips_;
    if (!PQpipelineSync(conn_))
        fail(nullptr, shown);
    PgResult savepoint = guarded ? takeResult() : nullptr;
    std::vector<PgResult> results;
    for (std::size_t i = 0; i < statements.size(); ++i)
        results.push_back(takeResult());
    PgResult release = guarded ? takeResult() : nullptr;
    // Outside a transaction the statements' own transaction ends at the sync,
    // and with it a held cursor takes the rest of its rows: that may fail too.
    PgResult ending = takeSync();
    PQexitPipelineMode(conn_);
    if (ending)
        fail(ending.get(), shown);
    if (guarded && failed(savepoint))
        fail(savepoint.get(), shown);
    for (auto &r : results)
        if (failed(r)) {
            if (guarded && PQstatus(conn_) != CONNECTION_BAD)
                exec("rollback to savepoint sv_statement; release savepoint sv_statement", shown);
            fail(r.get(), shown);
        }
    if (guarded && failed(release))
        fail(release.get(), shown);
    results.erase(results.begin(), results.end() - static_cast<std::ptrdiff_t>(own));
    return results;
}

void PgConnection::rollback() {
    // The writes still in the pipeline go with the transaction: a refused one
    // among them changes nothing that the rollback leaves.
    if (!ahead_.empty() && PQstatus(conn_) != CONNECTION_BAD)
        drainAhead();
    ahead_.clear();
    if (inTransaction_)
        endCursors();
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
    const std::string &name = preparedName(sql, shown);
    return send(&name, sql, params, shown);
}

const std::string &PgConnection::preparedName(const std::string &sql, std::string_view shown) {
    auto it = prepared_.find(sql);
    if (it == prepared_.end()) {
        settle();
        std::string name = "sv" + std::to_string(prepared_.size() + 1);
        // A refused prepare would end a transaction as a refused statement would.
        if (inTransaction_)
            exec("savepoint sv_statement", shown);
        ++roundTrips_;
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
    return it->second;
}

void PgConnection::sendAhead(const std::string &sql, const std::vector<Param> &params,
                             std::string shown, std::function<void(const PGresult &)> done) {
    const std::string &name = preparedName(sql, shown);
    if (!inTransaction_) {
        PgResult r = send(&name, sql, params, shown);
        done(*r);
        return;
    }
    applyTimeout();
    queueAhead({std::move(shown), std::move(done), name, params});
    if (ahead_.size() >= aheadLimit)
        settle();
}

// The writes of one pipeline share one savepoint: a savepoint for each row
// would cost the server a subtransaction for each.
void PgConnection::queueAhead(Ahead write) {
    if (ahead_.empty()) {
        if (!PQenterPipelineMode(conn_))
            fail(nullptr, write.shown);
        sendOne(nullptr, "savepoint sv_batch", {});
    }
    sendOne(&write.statement, "", write.params);
    ahead_.push_back(std::move(write));
}

std::optional<PgConnection::Refusal> PgConnection::drainAhead() {
    std::vector<Ahead> ahead = std::move(ahead_);
    ahead_.clear();
    sendOne(nullptr, "release savepoint sv_batch", {});
    ++roundTrips_;
    if (!PQpipelineSync(conn_))
        fail(nullptr, ahead.front().shown);
    PgResult savepoint = takeResult();
    std::vector<PgResult> results;
    for (std::size_t i = 0; i < ahead.size(); ++i)
        results.push_back(takeResult());
    PgResult release = takeResult();
    PgResult sync(PQgetResult(conn_));
    PQexitPipelineMode(conn_);
    if (failed(savepoint))
        return Refusal{std::move(ahead.front().shown), std::move(savepoint), {}};
    for (std::size_t i = 0; i < ahead.size(); ++i)
        if (failed(results[i])) {
            // After a failure the server skipped the rest up to the sync.
            ahead.resize(i + 1);
            Refusal refusal{std::move(ahead.back().shown), std::move(results[i]), {}};
            ahead.pop_back();
            refusal.before = std::move(ahead);
            return refusal;
        }
    if (failed(release))
        return Refusal{std::move(ahead.front().shown), std::move(release), {}};
    for (std::size_t i = 0; i < ahead.size(); ++i)
        ahead[i].done(*results[i]);
    return std::nullopt;
}

void PgConnection::settle() {
    if (ahead_.empty())
        return;
    std::optional<Refusal> refusal = drainAhead();
    if (!refusal)
        return;
    if (PQstatus(conn_) != CONNECTION_BAD) {
        // The refused write alone is undone: the batch goes back to its
        // savepoint, and the writes before the refused one are sent again.
        // Those after it never ran.
        exec("rollback to savepoint sv_batch; release savepoint sv_batch", refusal->shown);
        for (auto &write : refusal->before)
            queueAhead(std::move(write));
        settle();
    }
    fail(refusal->result.get(), refusal->shown);
}

PgResult PgConnection::send(const std::string *prepared, std::string_view sql,
                            const std::vector<Param> &params, std::string_view shown) {
    settle();
    applyTimeout();
    if (inTransaction_)
        return pipelined(prepared, sql, params, shown);
    ++roundTrips_;
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

// The answer to a pipeline's sync: nothing, or the error the server gave at it.
PgResult PgConnection::takeSync() {
    PgResult error;
    int nothing = 0;
    while (nothing < 2) {
        PGresult *r = PQgetResult(conn_);
        if (!r) {
            if (PQstatus(conn_) == CONNECTION_BAD)
                break;
            ++nothing;
            continue;
        }
        nothing = 0;
        const auto status = PQresultStatus(r);
        if (status == PGRES_PIPELINE_SYNC) {
            PQclear(r);
            break;
        }
        if (!error && status == PGRES_FATAL_ERROR)
            error.reset(r);
        else
            PQclear(r);
    }
    return error;
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
    ++roundTrips_;
    if (!PQpipelineSync(conn_))
        fail(nullptr, shown);
    PgResult savepoint = takeResult();
    PgResult result = takeResult();
    PgResult release = takeResult();
    PgResult sync(PQgetResult(conn_));
    PQexitPipelineMode(conn_);
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
