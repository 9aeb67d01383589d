#!/usr/bin/env bash
# The keys of the forms as four terminal types send them: `stockverify run`
# in tmux under TERM=xterm-256color, screen-256color, linux and vt220.
#
#   tmux_keys_test.sh PATH/TO/stockverify
#
# tmux would translate its own key names into the sequences of the terminal it
# emulates, whatever TERM says, so every key here is written as raw bytes:
# the named keys (arrows, Home, End, F3) from the type's terminfo entry, as
# `tput` reads it, and the keys terminfo has no name for as such a terminal
# sends them (Alt+letter ESC and the letter, Ctrl+letter its control byte,
# Ctrl+Enter xterm's modifyOtherKeys report, or Ctrl+J where the type cannot
# report it). Each key is checked by what it does on the screen.
set -euo pipefail

exe=$(realpath "$1")
work=$(mktemp -d)
socket="stockverify-keys-$$"
tmux_() { tmux -u -L "$socket" -f /dev/null "$@"; }
cleanup() {
    tmux_ kill-server 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT

term=""
screen() { tmux_ capture-pane -p -t sv; }
fail() {
    echo "FAILED under TERM=$term: $*"
    echo "---- screen ----"
    screen || true
    echo "---- stderr ----"
    cat "$work/stderr.txt" 2>/dev/null || true
    exit 1
}
# wait_for TEXT: polls the screen until TEXT shows (bounded).
wait_for() {
    local limit=$((SECONDS + 10))
    until screen | grep -qF -- "$1"; do
        ((SECONDS < limit)) || fail "'$1' did not show"
        sleep 0.05
    done
}
wait_gone() {
    local limit=$((SECONDS + 10))
    while screen | grep -qF -- "$1"; do
        ((SECONDS < limit)) || fail "'$1' did not go"
        sleep 0.05
    done
}
cursor_x() { tmux_ display -p -t sv '#{cursor_x}'; }
wait_cursor() {
    local limit=$((SECONDS + 10))
    until [ "$(cursor_x)" = "$1" ]; do
        ((SECONDS < limit)) || fail "the cursor stands at column $(cursor_x), not $1 ($2)"
        sleep 0.05
    done
}
# send HEX...: bytes as the terminal would write them, in one write.
send() { tmux_ send-keys -t sv -H "$@"; }
hex() { od -An -tx1 | xargs; }
# cap NAME...: sends the first of the capabilities the type's entry has.
cap() {
    local name bytes
    for name in "$@"; do
        if bytes=$(tput -T"$term" "$name" 2>/dev/null) && [ -n "$bytes" ]; then
            # shellcheck disable=SC2046
            send $(printf '%s' "$bytes" | hex)
            return
        fi
    done
    fail "the terminfo entry has none of $*"
}
alt() { send 1b "$(printf '%s' "$1" | hex)"; }
escape() { send 1b; }
ctrl_d() { send 04; }
enter() { send 0d; }
ctrl_enter() {
    if infocmp -x "$term" | grep -q 'kUP5='; then
        send $(printf '\033[27;5;13~' | hex)
    else
        send 0a
    fi
}

"$exe" init-db "$work/demo.db" --demo --items 20 --date 2026-11-22 >/dev/null

for term in xterm-256color screen-256color linux vt220; do
    # A VT220 has no Alt key: there Escape, then a letter within the escape
    # delay, is Alt+letter, which the last step uses.
    delay=25
    [ "$term" = vt220 ] && delay=600
    rm -f "$work/rc.txt"
    tmux_ kill-session -t sv 2>/dev/null || true
    tmux_ new-session -d -s sv -x 110 -y 40 \
        "cd '$work' && TERM=$term '$exe' run --db demo.db --company 1 --user 1 --godown 1 \
         --date 2026-11-22 --escape-delay $delay 2>stderr.txt; echo \$? > rc.txt; sleep 60"
    wait_for "SVA5"

    # Ctrl+Enter on the register is New.
    ctrl_enter
    wait_for "Godown Stock Verification"
    # Alt+R goes to the remarks; Left, Home and End move the caret.
    alt r
    send 61 62
    wait_for "Remarks: ab"
    end=$(cursor_x)
    cap kcub1
    wait_cursor $((end - 1)) "Left"
    cap khome kfnd
    wait_cursor $((end - 2)) "Home"
    cap kend kslt
    wait_cursor "$end" "End"
    # Shift+Tab and Tab come back to the remarks (the Linux console's
    # Shift+Tab is ESC Tab, which read by hand would be Escape and Tab). A
    # VT220 has no Shift+Tab of its own.
    if tput -T"$term" kcbt >/dev/null 2>&1; then
        cap kcbt
        send 09 63
        wait_for "Remarks: abc"
    fi

    # Ctrl+D and Ctrl+Enter: a new line's item screen; F3 its fetch dialog,
    # which Escape closes.
    ctrl_d
    ctrl_enter
    wait_for "Scan Barcode"
    cap kf3
    wait_for "Fetch Item"
    escape
    wait_gone "Fetch Item"
    wait_for "Scan Barcode"
    alt c
    wait_gone "Scan Barcode"

    # Closing asks to save, in a box whose buttons Yes, No, Cancel the
    # arrows choose between. Escape is Cancel; Down, Down, Left, Right stand
    # on Cancel (a lost key ends on another button); Right, Down, Up on No.
    alt c
    wait_for "Save Changes?"
    escape
    wait_gone "Save Changes?"
    wait_for "Alt+O OK"
    alt c
    wait_for "Save Changes?"
    cap kcud1
    cap kcud1
    cap kcub1
    cap kcuf1
    enter
    wait_gone "Save Changes?"
    wait_for "Alt+O OK"
    wait_for "Remarks: ab"
    alt c
    wait_for "Save Changes?"
    cap kcuf1
    cap kcud1
    cap kcuu1
    enter
    wait_gone "Godown Stock Verification"
    if screen | grep -qF "SVA6"; then fail "No saved the entry"; fi

    if [ "$term" = vt220 ]; then
        send 1b
        sleep 0.1
        send 63
    else
        alt c
    fi
    limit=$((SECONDS + 10))
    until [ -s "$work/rc.txt" ]; do
        ((SECONDS < limit)) || fail "stockverify did not exit"
        sleep 0.05
    done
    [ "$(cat "$work/rc.txt")" = 0 ] || fail "exit code $(cat "$work/rc.txt")"
    echo "TERM=$term: Ctrl+Enter, Alt letters, arrows, Home, End, Shift+Tab, F3, Escape arrived"
done

# A type the machine has no entry for: a message that says what to do, exit
# code 3, and no session.
term=nonesuch
rm -f "$work/rc.txt"
tmux_ kill-session -t sv 2>/dev/null || true
tmux_ new-session -d -s sv -x 110 -y 40 \
    "cd '$work' && TERM=nonesuch '$exe' run --db demo.db --company 1 --user 1 --godown 1 \
     2>stderr.txt; echo \$? > rc.txt; sleep 60"
limit=$((SECONDS + 10))
until [ -s "$work/rc.txt" ]; do
    ((SECONDS < limit)) || fail "stockverify did not exit"
    sleep 0.05
done
[ "$(cat "$work/rc.txt")" = 5 ] || fail "exit code $(cat "$work/rc.txt"), not 5"
grep -qF "the terminal type 'nonesuch' (TERM) has no entry" "$work/stderr.txt" ||
    fail "the message does not name the type"
grep -qF "ncurses-term" "$work/stderr.txt" || fail "the message does not say what to install"
echo "TERM=nonesuch: refused with exit code 5"
