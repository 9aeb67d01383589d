-- The clock of a procedure's body: the program's clock where the program set it for the
-- session (the data layer does so before calling a procedure whose body reads it), so that a
-- procedure stamps the same time as the module's own statements; the server's clock for a
-- session that set none (an administrator's psql).
CREATE FUNCTION sv_getdate() RETURNS TIMESTAMP(3) LANGUAGE sql STABLE
    AS $$ SELECT coalesce(nullif(current_setting('stockverify.now', true), '')::timestamp(3),
                          localtimestamp(3)) $$;
