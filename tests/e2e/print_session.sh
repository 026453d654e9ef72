#!/bin/bash
# Printing from the editor as a user does: the sample program opened from the command line,
# the Print button, the preview, "Print Note", "Create Excel file", a name in the save
# dialog, No to opening it. The workbook the editor made holds the same sheet as the one the
# command-line export makes of the same file, and the last workbook is remembered.
set -u
BIN=$(cd "$1" && pwd)
SRC=$(cd "$2" && pwd)
CLI="$BIN/vkmstep-cli"
DRIVER="$BIN/e2e_print_session"
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
fail=0
bad() { echo "FAIL: $*"; fail=1; }

[ -x "$DRIVER" ] || { echo "FAIL: $DRIVER is not built"; exit 1; }
mkdir -p "$WORK/home" "$WORK/run" "$WORK/shots"
chmod 700 "$WORK/run"
export HOME="$WORK/home" XDG_CONFIG_HOME="$WORK/home/.config" XDG_DATA_HOME="$WORK/home/.local/share"
export XDG_RUNTIME_DIR="$WORK/run" QT_QPA_PLATFORMTHEME=
if [ -z "${DISPLAY:-}" ]; then
    export QT_QPA_PLATFORM="offscreen:configfile=$SRC/tests/support/screens.json"
fi

cp "$SRC/data/samples/counter.gsp" "$WORK/counter.gsp"
"$DRIVER" --shots "${VKM_SHOTS:-$WORK/shots}" --workbook "$WORK/from-editor.xlsx" "$WORK/counter.gsp" \
    || bad "the print session failed (exit $?)"
[ -f "$WORK/from-editor.xlsx" ] || bad "the editor made no workbook"
"$CLI" export "$WORK/counter.gsp" "$WORK/from-cli.xlsx" --memo || bad "export failed"

python3 - "$WORK/from-editor.xlsx" "$WORK/from-cli.xlsx" "$WORK/counter.gsp" <<'PY' || bad "the two workbooks differ"
import sys, zipfile
def part(path, name):
    return zipfile.ZipFile(path).read(name)
ok = True
for name in ('xl/worksheets/sheet1.xml', 'xl/sharedStrings.xml'):
    if part(sys.argv[1], name) != part(sys.argv[2], name):
        print('FAIL: %s differs between the editor and the CLI' % name)
        ok = False
if sys.argv[3].encode() not in part(sys.argv[1], 'xl/sharedStrings.xml'):
    print('FAIL: the workbook does not name the program file')
    ok = False
sys.exit(0 if ok else 1)
PY
grep -rq "LatestExcelFullFname=.*from-editor.xlsx" "$WORK/home/.config" || bad "the workbook is not remembered as the last one"

[ $fail = 0 ] && echo "print_session: printing from the editor works end to end"
exit $fail
