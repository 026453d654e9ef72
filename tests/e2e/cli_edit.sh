#!/bin/bash
# vkmstep-cli edit: each tests/e2e/edit/NAME.script is run through the editor's rules and
# what it prints, its exit code and the listing of the program it saved are compared with
# NAME.expected. Lines "#: in FILE" (a program of tests/data/gsp to start from; otherwise a
# new program) and "#: OPTIONS" (more options of edit) set up the run. A saved program
# must pass check; a refused one must leave nothing behind. Each script runs in a folder
# of its own holding the files of tests/e2e/edit/clip (clipboard texts to load); when
# NAME.clipboard exists, the script's "clipboard-save saved.clipboard" must write exactly
# its bytes.
. "$(dirname "$0")/lib.sh" "$@"

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
    run="$WORK/run-$name"
    mkdir -p "$run"
    cp "$SRC"/tests/e2e/edit/clip/* "$run"/
    (cd "$run" && "$CLI" edit "${options[@]}" "${source[@]}" "$out" - < "$script" > "$WORK/stdout" 2> "$WORK/stderr")
    rc=$?
    clipboard="${script%.script}.clipboard"
    if [ -f "$clipboard" ] && ! cmp -s "$clipboard" "$run/saved.clipboard"; then
        bad "$name: the clipboard saved is not $clipboard:"$'\n'"$(od -c "$run/saved.clipboard" 2>&1 | head -20)"
    fi
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

# The desktop's clipboard: a script reads back what it put there, byte for byte, and a
# block pasted from it copies back the same; off screen, and on a virtual X display when
# there is one.
sys="$WORK/system"
mkdir -p "$sys"
printf '0\r\nOutput\r\nNOTREM\t256\t1\t2\t5' > "$sys/block.in"
printf 'clipboard-load %s\nclipboard-save %s\nclipboard-load %s\npaste 2 out1\ncopy 2 out1 2 out1.delay\nclipboard-save %s\n' \
    "$SRC/tests/e2e/edit/clip/wide.txt" "$sys/wide" "$sys/block.in" "$sys/block" > "$sys/script"
for platform in offscreen xvfb; do
    if [ $platform = xvfb ]; then
        command -v xvfb-run > /dev/null || continue
        run=(xvfb-run -a env -u QT_QPA_PLATFORM)
    else
        run=(env QT_QPA_PLATFORM=offscreen)
    fi
    rm -f "$sys/wide" "$sys/block"
    "${run[@]}" "$CLI" edit --system-clipboard --new "$sys/out.gsp" "$sys/script" > /dev/null 2>&1
    cmp -s "$SRC/tests/e2e/edit/clip/wide.txt" "$sys/wide" || bad "--system-clipboard ($platform): not read back as written"
    cmp -s "$sys/block.in" "$sys/block" || bad "--system-clipboard ($platform): the pasted block did not copy back the same"
done

finish "cli_edit: $count scripts passed"
