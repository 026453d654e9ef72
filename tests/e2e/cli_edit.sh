#!/bin/bash
# vkmstep-cli edit: each tests/e2e/edit/NAME.script is run through the editor's rules and
# what it prints, its exit code and the listing of the program it saved are compared with
# NAME.expected. Lines "#: in FILE" (a program of tests/data/gsp to start from; otherwise a
# new program) and "#: OPTIONS" (more options of edit) set up the run. A saved program
# must pass check; a refused one must leave nothing behind.
set -u
BIN="$1"
SRC="$2"
CLI="$BIN/vkmstep-cli"
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
fail=0
bad() { echo "FAIL: $*"; fail=1; }

count=0
for script in "$SRC"/tests/e2e/edit/*.script; do
    name=$(basename "$script" .script)
    expected="${script%.script}.expected"
    [ -f "$expected" ] || { bad "$name: no $expected"; continue; }
    count=$((count + 1))
    source=(--new)
    options=()
    while IFS= read -r line; do
        case "$line" in
        "#: in "*) source=("$SRC/tests/data/gsp/${line#'#: in '}") ;;
        "#: "*) read -r -a more <<< "${line#'#: '}"; options+=("${more[@]}") ;;
        esac
    done < "$script"
    out="$WORK/$name.gsp"
    "$CLI" edit "${options[@]}" "${source[@]}" "$out" - < "$script" > "$WORK/stdout" 2> "$WORK/stderr"
    rc=$?
    {
        cat "$WORK/stdout"
        sed 's/^/stderr: /' "$WORK/stderr"
        echo "exit $rc"
        if [ $rc = 0 ]; then
            "$CLI" dump "$out"
        elif [ -e "$out" ]; then
            echo "a file was written"
        fi
    } > "$WORK/actual"
    diff -u "$expected" "$WORK/actual" > "$WORK/diff" || bad "$name:"$'\n'"$(cat "$WORK/diff")"
    if [ $rc = 0 ]; then
        checked=$("$CLI" check "$out" 2>&1)
        [ "$checked" = OK ] || bad "$name: the saved program does not pass check: $checked"
    fi
done
[ $count -gt 0 ] || bad "no scripts in $SRC/tests/e2e/edit"

# The script from a file, and the usage of a wrong call.
printf 'memo from a file\n' > "$WORK/file.script"
"$CLI" edit --new "$WORK/file.gsp" "$WORK/file.script" > /dev/null 2>&1 || bad "a script file was not run"
"$CLI" dump "$WORK/file.gsp" 2>/dev/null | grep -q '| from a file' || bad "the script file's memo is not saved"
"$CLI" edit --new "$WORK/x.gsp" > /dev/null 2> "$WORK/stderr"
[ $? = 2 ] || bad "edit without a script did not exit 2"
grep -q "^usage: vkmstep-cli edit" "$WORK/stderr" || bad "edit without a script printed no usage"
"$CLI" edit --answer maybe --new "$WORK/x.gsp" - < /dev/null > /dev/null 2>&1
[ $? = 2 ] || bad "an unknown answer did not exit 2"
"$CLI" edit "$WORK/missing.gsp" "$WORK/x.gsp" - < /dev/null > /dev/null 2>&1
[ $? = 1 ] || bad "a missing program did not exit 1"
[ -e "$WORK/x.gsp" ] && bad "a failed edit wrote a file"

[ $fail = 0 ] && echo "cli_edit: $count scripts passed"
exit $fail
