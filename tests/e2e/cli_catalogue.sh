#!/bin/bash
# vkmstep-cli catalogue: every entry of the four catalogues, in file order, against the
# bundled setting files; exit code 2 and the missing-file text for a missing archive or
# a missing member.
. "$(dirname "$0")/lib.sh" "$@"
DATA="$SRC/data/setting"

check_catalogue() { # kind file
    # value TAB category TAB digital; the files hold whole numbers and explicit categories
    iconv -f CP932 -t UTF-8 "$DATA/$2" | tr -d '\r' | awk -F'\t' '{ print $2 "\t" $4 "\t" $1 }' > "$WORK/expected"
    if ! "$CLI" catalogue "$1" > "$WORK/actual" 2> "$WORK/err"; then
        echo "FAIL: catalogue $1 exited non-zero: $(cat "$WORK/err")"; fail=1; return
    fi
    if ! cmp -s "$WORK/expected" "$WORK/actual"; then
        echo "FAIL: catalogue $1 differs from $2"; diff "$WORK/expected" "$WORK/actual" | head -5; fail=1
    fi
    if [ "$(wc -l < "$WORK/actual")" -lt 5 ]; then
        echo "FAIL: catalogue $1 printed too few lines"; fail=1
    fi
}

check_catalogue out Set08.e
check_catalogue in Set09.e
check_catalogue cusin Set06.e
check_catalogue cusout Set07.e

# blanks of padded digital texts are kept
if ! "$CLI" catalogue cusin | grep -qP '^0\tNONE\t NO$'; then
    echo "FAIL: padded digital text \" NO\" not printed as stored"; fail=1
fi

expect_missing() { # description expected-path args...
    local what="$1" path="$2"; shift 2
    "$CLI" "$@" > "$WORK/out" 2> "$WORK/err"
    local rc=$?
    if [ $rc -ne 2 ]; then echo "FAIL: $what: exit code $rc, expected 2"; fail=1; fi
    if ! grep -q "^Cannot find following file. Cannot load.$" "$WORK/err" || ! grep -qF "$path" "$WORK/err"; then
        echo "FAIL: $what: stderr lacks the missing-file text"; cat "$WORK/err"; fail=1
    fi
    if [ -s "$WORK/out" ]; then echo "FAIL: $what: printed entries"; fail=1; fi
}

expect_missing "missing archive" "$WORK/none/VKM.e" --archive "$WORK/none/VKM.e" catalogue out
VKM_ARCHIVE="$WORK/none2/VKM.e" expect_missing "missing archive from the environment" "$WORK/none2/VKM.e" catalogue in

PACK="$BIN/../tools/lhapack"
if [ -x "$PACK" ]; then
    files=()
    for n in 01 02 03 04 05 06 08 09 10 11; do files+=("$DATA/Set$n.e"); done
    "$PACK" "$WORK/short.e" "${files[@]}"
    expect_missing "archive without Set07.e" "Set07.e" --archive "$WORK/short.e" catalogue out
fi

"$CLI" catalogue nonsense > /dev/null 2>&1
if [ $? -ne 2 ]; then echo "FAIL: unknown catalogue name accepted"; fail=1; fi

finish "cli_catalogue: all checks passed"
