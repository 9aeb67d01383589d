#!/usr/bin/env bash
# End to end in a real terminal: `stockverify run` on a fresh demo database in
# tmux, driven by keys and read back from the screen with capture-pane.
#
#   tmux_register_test.sh PATH/TO/stockverify
#
# A step is a few lines: `press_for ACTION` finds ACTION on the key strip (the
# bottom line) and sends the key it shows, so the path uses only what a clerk
# is told; `keys` sends text (a scanned barcode, a remark) or keys as tmux
# names them; `wait_for` polls the screen until a text shows (bounded: it
# fails with the screen printed), `expect_not` checks a text is absent. Add a
# path by appending steps.
set -euo pipefail

exe=$(realpath "$1")
work=$(mktemp -d)
socket="stockverify-tui-$$"
tmux_() { tmux -u -L "$socket" -f /dev/null "$@"; }
cleanup() {
    tmux_ kill-server 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT

screen() { tmux_ capture-pane -p -t sv; }
keys() { tmux_ send-keys -t sv "$@"; }
fail() {
    echo "FAILED: $*"
    echo "---- screen ----"
    screen || true
    echo "---- stderr ----"
    cat "$work/stderr.txt" 2>/dev/null || true
    exit 1
}
# wait_for TEXT [SECONDS]: polls the screen every 50 ms until TEXT shows.
wait_for() {
    local limit=$((SECONDS + ${2:-10}))
    until screen | grep -qF -- "$1"; do
        ((SECONDS < limit)) || fail "'$1' did not show within ${2:-10} s"
        sleep 0.05
    done
}
expect_not() {
    if screen | grep -qF -- "$1"; then fail "'$1' is on the screen"; fi
}
# strip_key ACTION: the key the strip shows for ACTION ("New", "Add"), or "".
strip_key() {
    local line entry key=""
    line=$(screen | tail -n 1)
    # Hints stand two blanks apart: "Alt+N New  Ctrl+Enter Add  Alt+D Done by".
    while IFS= read -r entry; do
        entry="${entry# }"
        [ "${entry#* }" = "$1" ] && { key="${entry%% *}"; break; }
    done < <(sed 's/  \+/\n/g' <<<"$line")
    echo "$key"
}
# press_for ACTION: waits until the strip offers ACTION, then presses its key.
press_for() {
    local limit=$((SECONDS + 10)) key=""
    until key=$(strip_key "$1") && [ -n "$key" ]; do
        ((SECONDS < limit)) || fail "the key strip does not offer '$1'"
        sleep 0.05
    done
    case "$key" in
        Alt+?) keys "M-$(tr '[:upper:]' '[:lower:]' <<<"${key#Alt+}")" ;;
        Ctrl+Enter | Ctrl+J) keys C-j ;;
        Ctrl+?) keys "C-$(tr '[:upper:]' '[:lower:]' <<<"${key#Ctrl+}")" ;;
        Shift+F10) keys S-F10 ;;
        Esc) keys Escape ;;
        Del) keys DC ;;
        F[0-9]*) keys "$key" ;;
        *) fail "the strip shows '$key' for '$1', which this test cannot press" ;;
    esac
}
# row_of TEXT: the screen line that holds TEXT.
row_of() { screen | grep -F -- "$1" | head -1; }
# wait_exit CODE: the program ends with CODE within 10 s.
wait_exit() {
    local limit=$((SECONDS + 10))
    until [ -s "$work/rc.txt" ]; do
        ((SECONDS < limit)) || fail "stockverify did not exit"
        sleep 0.05
    done
    [ "$(cat "$work/rc.txt")" = "$1" ] || fail "exit code $(cat "$work/rc.txt"), not $1"
}

"$exe" init-db "$work/demo.db" --demo --items 50 --date 2026-11-22 >/dev/null
tmux_ new-session -d -s sv -x 110 -y 40 \
    "cd '$work' && '$exe' run --db demo.db --company 1 --godown 1 --interface 1005 \
     --title 'Stock Verification' --date 2026-11-22 2>stderr.txt; echo \$? > rc.txt"

# The register of godown 1: the entries after the floor date, the newest last.
wait_for "Verification No"
wait_for "SVA5"
row_of "SVA2" | grep -qF "SUNITA IYER" || fail "SVA2 is not SUNITA IYER's"
row_of "SVA3" | grep -qF "Yes" || fail "SVA3 does not show as deleted"
expect_not "SVA1 " # dated before the floor
expect_not "Busy"
for caption in New Edit Delete Print Close; do
    screen | grep -qE "\[ +$caption +\]" || fail "no button $caption"
done

# A new entry, by the clerk of the login that runs the test, with only the keys the strip shows: New, the list (Ctrl+D),
# a new line (Ctrl+Enter), two packing barcodes scanned in one burst (each
# counts one and is accepted at once), the item screen closed, a remark, OK;
# the register shows the new row.
press_for New
wait_for "Godown Stock Verification"
wait_for "SlNo"
press_for List
press_for Add
wait_for "Scan Barcode"
keys 8900000000111 Enter 8900000001019 Enter
press_for Close
wait_for "Basmati Rice 5 kg bag"
wait_for "Cola 330 ml can"
press_for Remarks
keys "shelf recount"
press_for OK
wait_for "SVA6"
row_of "SVA6" | grep -qF "22/11/2026" || fail "SVA6 is not dated on the process date"
row_of "SVA6" | grep -qF "shelf recount" || fail "SVA6 has not the remark"
# No --user: the clerk is the one init-db mapped this login to.
row_of "SVA6" | grep -qF "RAHUL MEHTA" || fail "SVA6 is not saved by the login's clerk"

# Close leaves the program, and the terminal with it.
press_for Close
wait_exit 0

# A demo made today (init-db's default) opens with its entries listed on
# today's register, as `./dev run` opens it, whatever the day.
rm -f "$work/rc.txt"
"$exe" init-db "$work/today.db" --demo --items 12 >/dev/null
tmux_ kill-session -t sv 2>/dev/null || true
tmux_ new-session -d -s sv -x 110 -y 40 \
    "cd '$work' && '$exe' run --db today.db --company 1 --godown 1 \
     --date $(date +%F) 2>stderr.txt; echo \$? > rc.txt"
wait_for "SVA5"
wait_for "SVA2"
press_for Close
wait_exit 0
echo "register opened, an entry saved, closed"
