#!/usr/bin/env bash
# Installed as Linux software: `cmake --install` into a throwaway prefix puts
# the program, its manual page and its program folder where they belong, and
# the installed program runs on a demo database with its installed
# ShopSetting.txt, not the source tree's.
#
#   install_test.sh BUILD_DIR VERSION
set -euo pipefail

build="$1"
version="$2"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix="$work/usr"
fail() { echo "FAILED: $*"; exit 1; }

cmake --install "$build" --prefix "$prefix" >"$work/install.log" ||
    { cat "$work/install.log"; fail "cmake --install"; }
for f in bin/stockverify share/man/man1/stockverify.1 share/stockverify/ShopSetting.txt \
         share/stockverify/reports/rptGodownStockVerification.rpt \
         share/stockverify/reports/rptUnProcessedQuantities.rpt \
         share/doc/stockverify/configuration.md; do
    [ -f "$prefix/$f" ] || fail "$f was not installed"
done
# Nothing of the build's own (libraries, tests) goes with it.
extra=$(cd "$prefix" && find . -type f | grep -vE '^\./(bin/stockverify|share/man/man1/stockverify\.1|share/stockverify/|share/doc/stockverify/)' || true)
[ -z "$extra" ] || fail "installed besides the program: $extra"

sv="$prefix/bin/stockverify"
"$sv" --version >"$work/version.txt"
[ "$(sed -n 1p "$work/version.txt")" = "stockverify $version" ] ||
    fail "--version says '$(sed -n 1p "$work/version.txt")', not 'stockverify $version'"
grep -qE '^SQLite 3\.[0-9]+\.[0-9]+$' "$work/version.txt" || fail "--version names no SQLite: $(cat "$work/version.txt")"
# grep -q would stop reading early, and under pipefail ldd's broken pipe would read as no libpq.
if ldd "$sv" | grep 'libpq\.so' >/dev/null; then
    grep -qE '^libpq [0-9]+\.[0-9]+(\.[0-9]+)?$' "$work/version.txt" ||
        fail "linked with libpq, --version does not name it: $(cat "$work/version.txt")"
elif grep -q '^libpq' "$work/version.txt"; then
    fail "--version names a libpq that is not linked"
fi
[ "$("$sv" -V)" = "$(cat "$work/version.txt")" ] || fail "-V is not --version"

# A demo database and a short scenario on it.
"$sv" init-db "$work/demo.db" --demo --items 12 --date 2026-11-22 >"$work/init.txt"
grep -qE "the clerk of logins? (.*, )?$(id -un)(,.*)? is RAHUL MEHTA \(user 1\)$" "$work/init.txt" || fail "init-db: $(cat "$work/init.txt")"
cat >"$work/register.scn" <<'SCN'
db demo.db
set company 1
set user 1
set godown 1
set interface 1005
set processdate 2026-11-22
set title "Stock Verification"
show register
expect flexMaster cell 1 1 "SVA2"
close
SCN
"$sv" script "$work/register.scn" || fail "the scenario on the installed program"

# The slip is shaped by the installed ShopSetting.txt: without the company
# name once the installed copy says so, whatever the source tree says.
slip() { "$sv" print --db "$work/demo.db" --godown 1 --entry 5 --date 2026-11-22 --to slip "$1"; }
slip "$work/with.prn"
grep -qF "HARBOURLINE TRADING CO." "$work/with.prn" || fail "the slip has no company name"
sed -i 's/^PrintCompanyName :=1/PrintCompanyName :=0/' "$prefix/share/stockverify/ShopSetting.txt"
slip "$work/without.prn"
if grep -qF "HARBOURLINE TRADING CO." "$work/without.prn"; then
    fail "the installed program read another ShopSetting.txt than its own"
fi
echo "installed, ran the demo, read its own program folder"
