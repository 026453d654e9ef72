#!/bin/bash
# The workbook of a program opens in a real spreadsheet program: LibreOffice, headless,
# converts it to CSV, and the CSV holds the printed sheet's cells. Skipped (exit 77)
# where LibreOffice is not installed; it is too large for the CI machines.
. "$(dirname "$0")/lib.sh" "$@"
SOFFICE=$(command -v soffice || command -v libreoffice || true)
if [ -z "$SOFFICE" ]; then
    echo "SKIP: LibreOffice (soffice) is not installed; the workbook was not opened by a spreadsheet program"
    exit 77
fi
export XDG_RUNTIME_DIR="$WORK/run"
mkdir -m 700 "$XDG_RUNTIME_DIR"

python3 "$SRC/tests/e2e/print_fixtures.py" "$SRC/tests/data/gsp" "$WORK" || { echo "FAIL: fixtures"; exit 1; }
"$CLI" export "$WORK/print.gsp" "$WORK/print.xlsx" --memo || { echo "FAIL: export"; exit 1; }
# A profile of its own, so that other LibreOffice runs on the machine do not interfere.
"$SOFFICE" -env:UserInstallation="file://$WORK/profile" --headless \
    --convert-to "csv:Text - txt - csv (StarCalc):44,34,76" --outdir "$WORK" "$WORK/print.xlsx" \
    > "$WORK/soffice.log" 2>&1
[ -s "$WORK/print.csv" ] || { echo "FAIL: LibreOffice did not convert the workbook: $(cat "$WORK/soffice.log")"; exit 1; }

# What the sheet must hold, row by row (trailing empty cells dropped): the file name, the
# titles, one row per step with the shown values (the timer delay doubled, the counter's
# operand as a number, "***" where a cell does not apply), the memo lines.
python3 - "$WORK/print.csv" "$WORK/print.gsp" <<'PY'
import csv, sys
rows = [r for r in csv.reader(open(sys.argv[1], encoding='utf-8', newline=''))]
def trim(r):
    while r and r[-1] == '':
        r = r[:-1]
    return r
rows = [trim(r) for r in rows]
star5 = ['***'] * 5
titles = ['STEP', 'Remark'] + ['Category', 'Output', 'Logic', 'Delay\nKind', 'Delay'] * 2
expected = [
    [sys.argv[2]],
    None,  # titles, checked below
    ['1', 'first', 'OUT', 'Y001', 'HIGH', 'TIMER', '100', 'OUT', 'EMAKE', 'HIGH', 'STC', '3',
     'IN', 'X001', '', 'AND', 'IN', 'X002', '', 'END'],
    ['2', '', 'COUNT', 'CN16', 'INC', '', ''] + star5 + ['COUNT', 'CN16', '***', '>=', '', '65000', '***', 'END'],
    ['3', '', 'OUT', 'Y002', 'HIGH', 'STC', '4'] + star5 + ['IN', 'X003', '', 'END'],
    ['4', '', 'JMP', 'J001', 'JMP', '', ''] + star5 + ['ALL', 'ALL', '***', 'END'],
    ['Check the needle'],
    ['0120'],
]
ok = len(rows) == len(expected)
if not ok:
    print('FAIL: %d rows, expected %d: %r' % (len(rows), len(expected), rows))
for i, (got, want) in enumerate(zip(rows, expected)):
    if want is None:
        rel = got[15] if len(got) > 15 else ''
        want = titles + ['Category', 'Input', 'Stat.', rel] * 4
        if rel not in ('8', '\u25ba'):
            print('FAIL: relation title %r' % rel)
            ok = False
    if got != want:
        print('FAIL: row %d is %r, expected %r' % (i + 1, got, want))
        ok = False
sys.exit(0 if ok else 1)
PY
rc=$?
[ $rc = 0 ] && echo "cli_export_calc: LibreOffice reads the workbook as printed"
exit $rc
