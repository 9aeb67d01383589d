#!/usr/bin/env bash
# `stockverify run` opens no session it cannot stand behind: a config file it
# cannot use (exit 3), a login that is no clerk or a --user the login may not
# give (exit 4), each with a message that names the file, line or login, and
# all of it before the terminal is taken.
#
#   run_refusals_test.sh PATH/TO/stockverify
set -euo pipefail

sv="$1"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
login=$(id -un)
export STOCKVERIFY_SYSCONFDIR="$work/etc" XDG_CONFIG_HOME="$work/cfg" XDG_STATE_HOME="$work/state"
mkdir -p "$work/etc" "$work/cfg/stockverify"
failed=0

# expect CODE MESSAGE ARGS...: run exits with CODE and says MESSAGE (the
# whole first line of stderr) without drawing anything on stdout.
expect() {
    local code="$1" message="$2" rc=0
    shift 2
    "$sv" run "$@" </dev/null >"$work/out.txt" 2>"$work/err.txt" || rc=$?
    local said
    said=$(head -n 1 "$work/err.txt")
    if [ "$rc" != "$code" ] || [ "$said" != "$message" ]; then
        echo "FAILED: run $*"
        echo "  expected $code: $message"
        echo "  got      $rc: $said"
        failed=1
    elif [ -s "$work/out.txt" ]; then
        echo "FAILED: run $* drew on the terminal before refusing"
        failed=1
    fi
}

"$sv" init-db "$work/shop.db" >/dev/null
"$sv" init-db "$work/demo.db" --demo --items 12 --date 2026-11-22 >/dev/null
base=(--company 1 --godown 1 --date 2026-11-22)

# Config files.
expect 3 "stockverify run: File not found: the config file of 'dock', neither $work/etc/dock.conf nor $work/cfg/stockverify/dock.conf" \
    --config dock --db "$work/demo.db" "${base[@]}"
expect 3 "stockverify run: File not found: the config file $work/none.conf" \
    --config "$work/none.conf" --db "$work/demo.db" "${base[@]}"
printf 'db = %s\n# the dock terminals\ngodwn = 2\n' "$work/demo.db" >"$work/etc/dock.conf"
expect 3 "stockverify run: $work/etc/dock.conf:3: unknown setting 'godwn'" --config dock "${base[@]}"
rm "$work/etc/dock.conf"
mkdir "$work/cfg/stockverify/stockverify.conf"
expect 3 "stockverify run: Path/File access error: the config file $work/cfg/stockverify/stockverify.conf is not a file" \
    --db "$work/demo.db" "${base[@]}"
rmdir "$work/cfg/stockverify/stockverify.conf"
printf 'allow-user-option = %s\n' "$login" >"$work/cfg/stockverify/stockverify.conf"
expect 3 "stockverify run: $work/cfg/stockverify/stockverify.conf:1: allow-user-option is read only from the files of the system folder (/etc/stockverify)" \
    --db "$work/demo.db" "${base[@]}"
rm "$work/cfg/stockverify/stockverify.conf"
expect 2 "stockverify run: unknown option '--allow-user-option'" \
    --allow-user-option "$login" --db "$work/demo.db" "${base[@]}"

# The clerk.
expect 4 "stockverify run: login '$login' maps to no user: the administrator adds it to the table svUserLogin" \
    --db "$work/shop.db" "${base[@]}"
expect 4 "stockverify run: --user 2 is refused: login '$login' is not in allow-user-option of the system config files (/etc/stockverify); the clerk is the user the login maps to" \
    --db "$work/demo.db" --user 2 "${base[@]}"
printf 'user = 2\n' >"$work/cfg/stockverify/stockverify.conf"
expect 4 "stockverify run: --user 2 is refused: login '$login' is not in allow-user-option of the system config files (/etc/stockverify); the clerk is the user the login maps to" \
    --db "$work/demo.db" "${base[@]}"
rm "$work/cfg/stockverify/stockverify.conf"
"$sv" sql --db "$work/demo.db" "insert into svUserLogin (login, UserID) values ('$login', 3)" >/dev/null
expect 4 "stockverify run: login '$login' maps to users 1 and 3 in svUserLogin: the administrator keeps one" \
    --db "$work/demo.db" "${base[@]}"
"$sv" sql --db "$work/demo.db" "delete from svUserLogin where login = '$login'" >/dev/null
"$sv" sql --db "$work/demo.db" "insert into svUserLogin (login, UserID) values ('$login', 9)" >/dev/null
expect 4 "stockverify run: login '$login' maps to user 9, who is not in lousers" \
    --db "$work/demo.db" "${base[@]}"
"$sv" sql --db "$work/demo.db" "update svUserLogin set UserID = 1 where login = '$login'" >/dev/null

# The login's own user passes, since it chooses nobody else; so does any
# user the administrator allows. Either way the session the clerk check and the session
# goes on to the terminal, which standard input here is not. A relative trace
# lands in the state folder.
rc=0
"$sv" run --db "$work/demo.db" --user 1 "${base[@]}" </dev/null >/dev/null 2>"$work/err.txt" || rc=$?
if [ "$rc" != 1 ] || grep -q "refused\|maps to" "$work/err.txt"; then
    echo "FAILED: the login's own --user: exit $rc, $(cat "$work/err.txt")"
    failed=1
fi
printf 'allow-user-option = someone, %s\n' "$login" >"$work/etc/stockverify.conf"
rc=0
"$sv" run --db "$work/demo.db" --user 2 --trace-sql trace.txt "${base[@]}" </dev/null >/dev/null \
    2>"$work/err.txt" || rc=$?
if [ "$rc" != 1 ] || grep -q "refused\|maps to" "$work/err.txt"; then
    echo "FAILED: an allowed --user: exit $rc, $(cat "$work/err.txt")"
    failed=1
fi
[ -s "$work/state/stockverify/trace.txt" ] ||
    { echo "FAILED: the trace of an allowed --user is not in the state folder"; failed=1; }
rm "$work/etc/stockverify.conf"
"$sv" run --db "$work/demo.db" --state "$work/elsewhere" --trace-sql trace.txt "${base[@]}" \
    </dev/null >/dev/null 2>&1 || true
grep -q svUserLogin "$work/elsewhere/trace.txt" ||
    { echo "FAILED: --state does not hold the trace of the login's lookup"; failed=1; }

[ "$failed" = 0 ] && echo "every refusal said why, with its exit code"
exit "$failed"
