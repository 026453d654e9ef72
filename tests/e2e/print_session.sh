#!/bin/bash
# Printing from the editor as a user does: the sample program opened from the command line,
# the Print button, the preview, "Print Note", "Create Excel file", a name in the save
# dialog, No to opening it. The workbook the editor made holds the same sheet as the one the
# command-line export makes of the same file, and the last workbook is remembered.
. "$(dirname "$0")/lib.sh" "$@"
DRIVER="$BIN/e2e_print_session"

editor_home "$DRIVER"
mkdir -p "$WORK/shots"

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

finish "print_session: printing from the editor works end to end"
