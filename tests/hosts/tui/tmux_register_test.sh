#!/usr/bin/env bash
# End to end in a real terminal: `stockverify run` on a fresh demo database in
# tmux, driven by keys and read back from the screen with capture-pane.
#
#   tmux_register_test.sh PATH/TO/stockverify
#
# A step is a few lines: `keys` sends keys as tmux names them (M-n is Alt+N,
# Enter, Tab, S-F10, or text), `wait_for` polls the screen until a text shows
# (bounded: it fails with the screen printed), `expect_not` checks a text is
# absent. Add a path by appending steps.
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

"$exe" init-db "$work/demo.db" --demo --items 50 >/dev/null
tmux_ new-session -d -s sv -x 110 -y 40 \
    "cd '$work' && '$exe' run --db demo.db --company 1 --user 1 --godown 1 --interface 1005 \
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

# A new entry: New, the detail form from the list (Ctrl+D, Ctrl+Enter), two
# packing barcodes scanned in one burst (each counts one and is accepted at
# once), the detail form closed, a remark, OK; the register shows the new row.
keys M-n
wait_for "Godown Stock Verification"
wait_for "SlNo"
keys C-d C-j
wait_for "Scan Barcode"
keys 8900000000111 Enter 8900000001019 Enter
keys M-c
wait_for "Basmati Rice 5 kg bag"
wait_for "Cola 330 ml can"
keys M-r "shelf recount"
keys M-o
wait_for "SVA6"
row_of "SVA6" | grep -qF "22/11/2026" || fail "SVA6 is not dated on the process date"
row_of "SVA6" | grep -qF "shelf recount" || fail "SVA6 has not the remark"

# Close leaves the program, and the terminal with it.
keys M-c
wait_exit 0
echo "register opened, an entry saved, closed"
