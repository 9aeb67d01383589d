#!/usr/bin/env bash
# The manual page tells what --help tells: every command that `stockverify
# --help` lists has its section in the manual, every option that a --help
# text names is in the manual, and the manual names no command or option
# that --help does not know.
#
#   manual_test.sh PATH/TO/stockverify PATH/TO/stockverify.1
set -euo pipefail

exe="$1"
manual="$2"
failed=0

commands_of_help() {
    "$exe" --help | sed -n '/^Commands:/,/^$/p' | sed -n 's/^  \([a-z][a-z-]*\) .*/\1/p' | sort -u
}
# The manual's command sections: ".SS init\-db" under COMMANDS.
commands_of_manual() {
    sed -n '/^\.SH COMMANDS/,/^\.SH /p' "$manual" | sed -n 's/^\.SS //p' | sed 's/\\-/-/g' | sort -u
}
# Long and short options as a reader sees them: "--db", "-V".
options_in() { grep -oE '(^|[^a-zA-Z0-9-])(--[a-z][a-z-]*|-[a-zA-Z])\b' | grep -oE -- '-.*' | sort -u; }
options_of_help() {
    {
        "$exe" --help
        for c in $(commands_of_help); do "$exe" "$c" --help; done
    } | options_in
}
# troff writes a dash as \- and switches fonts with \fB ... \fR.
options_of_manual() { sed -e 's/\\-/-/g' -e 's/\\f[BIRP]//g' "$manual" | options_in; }

compare() {
    local what="$1" help="$2" manual_side="$3"
    local missing extra
    missing=$(comm -23 <(echo "$help") <(echo "$manual_side"))
    extra=$(comm -13 <(echo "$help") <(echo "$manual_side"))
    if [ -n "$missing" ]; then
        echo "FAILED: $what in --help but not in the manual: $missing"
        failed=1
    fi
    if [ -n "$extra" ]; then
        echo "FAILED: $what in the manual but not in --help: $extra"
        failed=1
    fi
}

help_commands=$(commands_of_help)
[ -n "$help_commands" ] || { echo "FAILED: --help lists no commands"; exit 1; }
compare "commands" "$help_commands" "$(commands_of_manual)"
compare "options" "$(options_of_help)" "$(options_of_manual)"

# Every exit status that run --help lists is in the manual's EXIT STATUS,
# whose entries are the lines after .TP (".B 4", ".BI 128+ N").
manual_codes=$(sed -n '/^\.SH EXIT STATUS/,/^\.SH [A-Z ]*$/p' "$manual" |
    awk 'prev == ".TP" { $1 = ""; gsub(/ /, ""); print } { prev = $0 }' | sort -u)
help_codes=$("$exe" run --help | sed -n '/^Exit codes:/,$p' | sed -n 's/^  \([0-9][0-9+N]*\) .*/\1/p' | sort -u)
[ -n "$help_codes" ] || { echo "FAILED: run --help lists no exit codes"; failed=1; }
missing=$(comm -23 <(echo "$help_codes") <(echo "$manual_codes"))
[ -z "$missing" ] || { echo "FAILED: exit codes of run --help not in the manual: $missing"; failed=1; }

# The manual's title line names the version the program says it is.
version=$("$exe" --version | sed -n 's/^stockverify //p')
grep -q "^\.TH STOCKVERIFY 1 .* \"stockverify $version\"" "$manual" ||
    { echo "FAILED: the manual's .TH line does not name stockverify $version"; failed=1; }

# The manual reads without troff's complaints.
warnings=$(groff -man -Tutf8 -ww -z "$manual" 2>&1 || true)
[ -z "$warnings" ] || { echo "FAILED: groff warns: $warnings"; failed=1; }
[ "$failed" = 0 ] && echo "the manual and --help agree"
exit "$failed"
