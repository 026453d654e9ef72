#!/bin/bash
# vkmstep-cli diff on program files made by the editor's own rules (vkmstep-cli edit): the
# same program twice, one changed delay, one disabled row, a different remark, a step that
# only one program has, and a shipped sample against a changed copy of it; then the calls
# that must end with exit code 2 and a reason rather than look like "the programs differ".
set -u
BIN=$(cd "$1" && pwd)
SRC=$(cd "$2" && pwd)
CLI="$BIN/vkmstep-cli"
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
fail=0
bad() { echo "FAIL: $*"; fail=1; }

# edit IN|--new OUT, the script on standard input.
make() {
    "$CLI" edit "$@" - > "$WORK/edit.out" 2>&1 || bad "edit $*: $(cat "$WORK/edit.out")"
}
# expect NAME RC A B, the expected listing on standard input.
expect() {
    local name=$1 rc=$2
    "$CLI" diff "$WORK/$3" "$WORK/$4" > "$WORK/out" 2> "$WORK/err"
    local got=$?
    [ $got = "$rc" ] || bad "$name: exit $got, expected $rc: $(cat "$WORK/out" "$WORK/err")"
    if ! diff -u - "$WORK/out" > "$WORK/delta"; then
        bad "$name: listing differs:"
        cat "$WORK/delta"
    fi
}

make --new "$WORK/base.gsp" << 'EOF'
type 2 out1 Y002
type 2 out1.logic HIGH
type 2 out1.kind STC
type 2 out1.delay 2
type 2 in1 X001
type 2 in1.state POS LEV
type 2 in1.rel END
type 3 out1 Y003
type 3 out1.logic HIGH
type 3 out1.kind TIMER
type 3 out1.delay 100
type 3 in1 X001
type 3 in1.state NEG LEV
type 3 in1.rel END
type 4 remark close the clamp
EOF

cp "$WORK/base.gsp" "$WORK/same.gsp"
expect identical 0 base.gsp same.gsp << 'EOF'
The programs are the same.
EOF

make "$WORK/base.gsp" "$WORK/delay.gsp" <<< 'type 3 out1.delay 250'
expect "changed delay" 1 base.gsp delay.gsp << 'EOF'
Step 3
  output 1 delay value: 100 -> 250
1 difference in 1 step
EOF
# The other way round: the same field, the sides exchanged.
expect "changed delay, reversed" 1 delay.gsp base.gsp << 'EOF'
Step 3
  output 1 delay value: 250 -> 100
1 difference in 1 step
EOF

make "$WORK/base.gsp" "$WORK/rem.gsp" <<< 'rem 2 2'
expect "disabled row" 1 base.gsp rem.gsp << 'EOF'
Step 2
  disabled: no -> yes
1 difference in 1 step
EOF

make "$WORK/base.gsp" "$WORK/remark.gsp" <<< 'type 4 remark open the clamp'
expect "different remark" 1 base.gsp remark.gsp << 'EOF'
Step 4
  remark: "close the clamp" -> "open the clamp"
1 difference in 1 step
EOF

# A step the other program lacks, and a changed function read with its name.
make "$WORK/base.gsp" "$WORK/more.gsp" << 'EOF'
type 2 out1 Y001
type 6 out1 Y004
type 6 out1.logic LOW
type 6 out1.kind STC
type 6 out1.delay 5
type 6 in1 X002
type 6 in1.state NEG LEV
type 6 in1.rel END
EOF
"$CLI" diff "$WORK/base.gsp" "$WORK/more.gsp" > "$WORK/out" 2>&1
rc=$?
[ $rc = 1 ] || bad "added step: exit $rc"
grep -qx 'Step 2' "$WORK/out" || bad "added step: step 2 missing: $(cat "$WORK/out")"
grep -q '^  output 1 function: Y002 (.*) -> Y001 (.*)$' "$WORK/out" ||
    bad "added step: the function change is not read with names: $(cat "$WORK/out")"
grep -qx '  input 1 state: (empty) -> NEG LEV' "$WORK/out" || bad "added step: input state of step 6 missing"
grep -qx '  output 1 delay value: (empty) -> 5' "$WORK/out" || bad "added step: delay of step 6 missing"
tail -1 "$WORK/out" | grep -qx '8 differences in 2 steps' || bad "added step: summary: $(tail -1 "$WORK/out")"

# A shipped sample against a copy changed in a remark and a disabled row.
cp "$SRC/data/samples/counter.gsp" "$WORK/sample.gsp"
make "$WORK/sample.gsp" "$WORK/sample2.gsp" << 'EOF'
type 1 remark changed here
rem 1 1
EOF
"$CLI" diff "$WORK/sample.gsp" "$WORK/sample2.gsp" > "$WORK/out" 2>&1
rc=$?
[ $rc = 1 ] || bad "sample: exit $rc: $(cat "$WORK/out")"
[ "$(head -1 "$WORK/out")" = "Step 1" ] || bad "sample: $(cat "$WORK/out")"
grep -q '^  remark: .* -> "changed here"$' "$WORK/out" || bad "sample: remark line: $(cat "$WORK/out")"
grep -qx '  disabled: no -> yes' "$WORK/out" || bad "sample: disabled line: $(cat "$WORK/out")"
"$CLI" diff "$WORK/sample.gsp" "$SRC/data/samples/counter.gsp" > /dev/null 2>&1 ||
    bad "sample: a copy differs from its original"

# Wrong calls: exit 2 and a reason on standard error, nothing that looks like a listing.
printf 'not a program\r\n' > "$WORK/junk.gsp"
mkdir "$WORK/folder.gsp"
for args in "base.gsp" "base.gsp same.gsp extra.gsp" "base.gsp missing.gsp" "junk.gsp base.gsp" "base.gsp folder.gsp"; do
    read -r -a list <<< "$args"
    (cd "$WORK" && "$CLI" diff "${list[@]}") > "$WORK/out" 2> "$WORK/err"
    rc=$?
    [ $rc = 2 ] || bad "diff $args: exit $rc, expected 2"
    [ -s "$WORK/err" ] || bad "diff $args: no reason given"
    [ -s "$WORK/out" ] && bad "diff $args: printed a listing: $(cat "$WORK/out")"
done
# The reason names the file at fault (and only that one) and what is wrong with it.
# reason A B FILE WHAT
reason() {
    (cd "$WORK" && "$CLI" diff "$1" "$2") > "$WORK/out" 2> "$WORK/err"
    local rc=$?
    [ $rc = 2 ] || bad "diff $1 $2: exit $rc, expected 2"
    grep -q "$3: $4" "$WORK/err" || bad "diff $1 $2: \"$3: $4\" not said: $(cat "$WORK/err")"
    grep -q "base.gsp:" "$WORK/err" && bad "diff $1 $2: blames base.gsp: $(cat "$WORK/err")"
}
reason base.gsp missing.gsp missing.gsp 'no such file'
reason junk.gsp base.gsp junk.gsp 'not a step program'
reason base.gsp junk.gsp junk.gsp 'not a step program'
reason folder.gsp base.gsp folder.gsp 'a folder, not a program file'
reason base.gsp folder.gsp folder.gsp 'a folder, not a program file'
"$CLI" --help | grep -q '^  diff A.gsp B.gsp' || bad "diff is not in the help"

[ $fail = 0 ] && echo "cli_diff: all passed"
exit $fail
