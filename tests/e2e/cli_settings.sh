#!/bin/bash
# vkmstep-cli and the editor's settings: the code page of legacy texts comes from the
# editor's own store ("General"/CodePage), --codepage overrides it, an unknown name is
# refused; an unusable TMPDIR stops the tool with one message and nothing written at the
# root; dump lists a step that holds only a remark.
. "$(dirname "$0")/lib.sh" "$@"

python3 - "$SRC/tests/data/gsp" "$WORK" <<'PY' || { echo "FAIL: fixtures"; exit 1; }
import os, sys
sys.path.insert(0, sys.argv[1])
from make_fixtures import *
# Remark 1 in code page 1252 ("café"), remark 4 on a step without functions.
img = image([step([out(Y001, 1, TIMER, 100)], [inp(X001, 0, 2)])],
            remarks={1: b'caf\xe9', 4: 'heading only'})
with open(os.path.join(sys.argv[2], 'texts.gsp'), 'wb') as f:
    f.write(transfer_text(img))
PY

export XDG_CONFIG_HOME="$WORK/config"
mkdir -p "$XDG_CONFIG_HOME"

# No store: the machine's code page; the byte 0xE9 does not read as "é".
"$CLI" dump "$WORK/texts.gsp" > "$WORK/default.dump" 2> "$WORK/err" || bad "dump without a store: $(cat "$WORK/err")"
grep -qF 'step 1 "café"' "$WORK/default.dump" && bad "code page 1252 used without being asked for"

# The editor's store names code page 1252: the tool reads it. The file is written as the
# editor's store writes it (Qt escapes the group "General" as "%General").
printf '[%%General]\nCodePage=CP1252\n' > "$XDG_CONFIG_HOME/vkmstep.conf"
"$CLI" dump "$WORK/texts.gsp" > "$WORK/store.dump" 2> "$WORK/err" || bad "dump with a store: $(cat "$WORK/err")"
grep -qF 'step 1 "café"' "$WORK/store.dump" || bad "CodePage of the editor's store not applied: $(head -5 "$WORK/store.dump")"
[ -s "$WORK/err" ] && bad "dump with a store printed: $(cat "$WORK/err")"
# The tool only reads the store.
[ "$(cat "$XDG_CONFIG_HOME/vkmstep.conf")" = "$(printf '[%%General]\nCodePage=CP1252')" ] || bad "the store was changed"

# --codepage wins over the store.
"$CLI" --codepage windows-31j dump "$WORK/texts.gsp" > "$WORK/option.dump" || bad "dump --codepage"
cmp -s "$WORK/option.dump" "$WORK/default.dump" || bad "--codepage windows-31j did not override the store"
printf '[%%General]\n' > "$XDG_CONFIG_HOME/vkmstep.conf"
"$CLI" --codepage CP1252 dump "$WORK/texts.gsp" > "$WORK/option2.dump" || bad "dump --codepage CP1252"
cmp -s "$WORK/option2.dump" "$WORK/store.dump" || bad "--codepage CP1252 differs from the stored CP1252"

# Unknown names: the option is refused (exit 2, nothing printed on stdout), a stored one is
# warned about and the default stays.
"$CLI" --codepage no-such-page dump "$WORK/texts.gsp" > "$WORK/out" 2> "$WORK/err"
rc=$?
[ $rc = 2 ] || bad "unknown --codepage exited $rc, expected 2"
grep -q "unknown code page no-such-page" "$WORK/err" || bad "unknown --codepage: $(cat "$WORK/err")"
[ -s "$WORK/out" ] && bad "unknown --codepage printed a listing"
printf '[%%General]\nCodePage=no-such-page\n' > "$XDG_CONFIG_HOME/vkmstep.conf"
"$CLI" dump "$WORK/texts.gsp" > "$WORK/out" 2> "$WORK/err" || bad "unknown stored code page stopped the tool"
grep -q "no-such-page" "$WORK/err" || bad "unknown stored code page not warned about"
cmp -s "$WORK/out" "$WORK/default.dump" || bad "unknown stored code page changed the listing"

# A step that has only a remark is listed, with nothing under it.
grep -qx 'step 4 "heading only"' "$WORK/default.dump" || bad "remark-only step not listed: $(cat "$WORK/default.dump")"
after=$(sed -n '/^step 4 /{n;p}' "$WORK/default.dump")
[ -z "$after" ] || bad "remark-only step lists functions: $after"
grep -q '^step [235]' "$WORK/default.dump" && bad "empty steps are listed"

# An unusable TMPDIR: one message naming it, exit 1, nothing unpacked anywhere else.
rm -f "$XDG_CONFIG_HOME/vkmstep.conf"
TMPDIR="$WORK/no/such/folder" "$CLI" dump "$WORK/texts.gsp" > "$WORK/out" 2> "$WORK/err"
rc=$?
[ $rc = 1 ] || bad "unusable TMPDIR exited $rc, expected 1"
grep -qF "Cannot create a temporary folder in:" "$WORK/err" || bad "unusable TMPDIR: $(cat "$WORK/err")"
grep -qF "$WORK/no/such/folder" "$WORK/err" || bad "unusable TMPDIR not named"
[ "$(grep -c . "$WORK/err")" -le 4 ] || bad "unusable TMPDIR: more than one message: $(cat "$WORK/err")"
[ -s "$WORK/out" ] && bad "unusable TMPDIR: printed a listing"
for f in /setting /Set01.e /eusr2.tmp; do
    [ -e "$f" ] && bad "$f written at the root"
done

exit $fail
