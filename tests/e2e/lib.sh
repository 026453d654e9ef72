# The set-up every end-to-end script shares; each sources it with its two arguments:
#   . "$(dirname "$0")/lib.sh" "$@"    (the build's bin folder, the source folder)
# It gives BIN, SRC, CLI, SIM, a scratch folder WORK removed on exit (with any vkm-sim the
# script started), and bad(), which reports a failed check and lets the script go on.
set -u
BIN=$(cd "$1" && pwd)
SRC=$(cd "$2" && pwd)
CLI="$BIN/vkmstep-cli"
SIM="$BIN/vkm-sim"
ARCHIVE="${VKM_ARCHIVE:-$BIN/VKM.e}" # the setting archive the editor reads
WORK=$(mktemp -d)
SIMPID=
fail=0
bad() { echo "FAIL: $*"; fail=1; }
stop_sim() { [ -n "$SIMPID" ] && kill "$SIMPID" 2>/dev/null && wait "$SIMPID" 2>/dev/null; SIMPID=; }
trap 'stop_sim; rm -rf "$WORK"' EXIT

# Starts vkm-sim (answering at once) with the given arguments; DEV is its line, sim.log what
# it received.
start_sim() {
    stop_sim
    : > "$WORK/sim.log"
    # The new process truncates the file only once it runs: the old path must not be read.
    rm -f "$WORK/sim.out"
    "$SIM" --baud 0 --log "$WORK/sim.log" "$@" > "$WORK/sim.out" &
    SIMPID=$!
    for _ in $(seq 100); do [ -s "$WORK/sim.out" ] && break; sleep 0.05; done
    DEV=$(head -n 1 "$WORK/sim.out")
    [ -n "$DEV" ] || { echo "FAIL: vkm-sim did not start"; exit 1; }
}

# For the editor's own windows: a private home, settings store, runtime folder (instance
# lock) and temporary folder, so a run touches nothing of the user's and everything it
# leaves behind can be seen; the offscreen platform at 1280 x 1024 unless there is a display
# (with "window-system" the caller finds a display itself). The driver must be built.
editor_home() { # driver [window-system]
    [ -x "$1" ] || { echo "FAIL: $1 is not built"; exit 1; }
    mkdir -p "$WORK/home" "$WORK/run" "$WORK/tmp" "$WORK/cwd"
    chmod 700 "$WORK/run"
    export HOME="$WORK/home" XDG_CONFIG_HOME="$WORK/home/.config" XDG_DATA_HOME="$WORK/home/.local/share"
    export XDG_RUNTIME_DIR="$WORK/run" TMPDIR="$WORK/tmp" QT_QPA_PLATFORMTHEME=
    if [ -z "${DISPLAY:-}" ] && [ "${2:-}" != window-system ]; then
        export QT_QPA_PLATFORM="offscreen:configfile=$SRC/tests/support/screens.json"
    fi
}

# The closing line: a summary when every check passed, and the exit code.
finish() { # summary
    [ $fail = 0 ] && echo "$1"
    exit $fail
}
