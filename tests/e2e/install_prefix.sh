#!/bin/bash
# The installed program: `cmake --install` into a temporary prefix, then the installed
# executables run from an unrelated folder, with no VKM_ARCHIVE and a private home, so that
# everything they read must come from the prefix: the setting archive for the CLI and the
# editor, the sample programs, the help. The desktop entry, icon and file type are checked
# where a desktop looks for them (and by the desktop's own tools where they are installed).
set -u
BIN=$(cd "$1" && pwd)
SRC=$(cd "$2" && pwd)
BUILD=$(dirname "$BIN")
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
fail=0
bad() { echo "FAIL: $*"; fail=1; }

PREFIX="$WORK/prefix"
cmake --install "$BUILD" --prefix "$PREFIX" > "$WORK/install.log" 2>&1 ||
    { cat "$WORK/install.log"; echo "FAIL: cmake --install"; exit 1; }

DATA="$PREFIX/share/vkmstep"
for f in bin/vkmstep bin/vkmstep-cli bin/vkm-sim share/vkmstep/VKM.e share/vkmstep/Help/Eng/Index.html \
    share/vkmstep/step_help1.pdf share/applications/vkmstep.desktop share/mime/packages/vkmstep.xml; do
    [ -s "$PREFIX/$f" ] || bad "not installed: $f"
done
samples=("$DATA"/Help/SampleCodes/Eng/*.gsp)
[ -f "${samples[0]}" ] || bad "no sample programs in $DATA/Help/SampleCodes/Eng"
# The installation holds the data once, in its data folder: nothing beside the executables.
extra=$(find "$PREFIX/bin" -mindepth 1 ! -name vkmstep ! -name vkmstep-cli ! -name vkm-sim)
[ -z "$extra" ] || bad "more than the executables in bin: $extra"
[ $fail = 0 ] || exit 1

# A private home, settings store and runtime folder, an unrelated working folder, and no
# path to the build's archive.
mkdir -p "$WORK/home" "$WORK/run" "$WORK/elsewhere"
chmod 700 "$WORK/run"
echo '{"screens":[{"name":"s1","x":0,"y":0,"width":1280,"height":1024,"logicalDpi":96}]}' > "$WORK/screens.json"
unset VKM_ARCHIVE
export HOME="$WORK/home" XDG_CONFIG_HOME="$WORK/home/.config" XDG_DATA_HOME="$WORK/home/.local/share"
export XDG_RUNTIME_DIR="$WORK/run" XDG_CACHE_HOME="$WORK/home/.cache" QT_QPA_PLATFORMTHEME=
export QT_QPA_PLATFORM="offscreen:configfile=$WORK/screens.json"
cd "$WORK/elsewhere" || exit 1

# The CLI on every installed sample (the password-protected one too), named relative to
# the working folder and with nothing on standard input: it passes the checks and lists
# exactly what the build's CLI lists with the build's archive (so the installed one read
# the same catalogue from the prefix).
[ -f "$DATA/Help/SampleCodes/Eng/protected.gsp" ] || bad "the password-protected sample is not installed"
for sample in "${samples[@]}"; do
    name=$(basename "$sample")
    rel="../prefix/share/vkmstep/Help/SampleCodes/Eng/$name"
    out=$("$PREFIX/bin/vkmstep-cli" check "$rel" 2>&1 < /dev/null)
    [ "$out" = OK ] || bad "installed check $name: $out"
    "$PREFIX/bin/vkmstep-cli" dump "$rel" > "$WORK/installed.dump" 2>&1 < /dev/null ||
        bad "installed dump $name failed: $(head -5 "$WORK/installed.dump")"
    VKM_ARCHIVE="$BIN/VKM.e" "$BIN/vkmstep-cli" dump "$sample" > "$WORK/build.dump" 2>&1 < /dev/null
    cmp -s "$WORK/installed.dump" "$WORK/build.dump" ||
        bad "installed dump of $name differs from the build's:"$'\n'"$(diff "$WORK/build.dump" "$WORK/installed.dump" | head)"
done

# The editor opens a sample (relative path) and shows itself; a missing archive or a failed
# start would stop it at a message box, which the time limit catches.
shot="$WORK/shot.png"
timeout 60 "$PREFIX/bin/vkmstep" --screenshot "$shot" ../prefix/share/vkmstep/Help/SampleCodes/Eng/counter.gsp \
    > "$WORK/editor.log" 2>&1
rc=$?
[ $rc = 0 ] || bad "installed editor exited $rc: $(head -20 "$WORK/editor.log")"
python3 - "$shot" <<'PY' || bad "no screenshot of the installed editor"
import struct, sys
data = open(sys.argv[1], 'rb').read(24)
assert data[:8] == b'\x89PNG\r\n\x1a\n', 'not a PNG'
width, height = struct.unpack('>II', data[16:24])
assert width >= 1024 and height >= 600, (width, height)
PY
log="$XDG_DATA_HOME/vkmstep/error.log"
[ ! -s "$log" ] || bad "the installed editor reported errors: $(head -5 "$log")"
grep -rqs "$BUILD" "$WORK/editor.log" "$XDG_DATA_HOME" "$XDG_CONFIG_HOME" &&
    bad "the installed editor names the build folder: $(grep -rs "$BUILD" "$WORK/editor.log" "$XDG_DATA_HOME" "$XDG_CONFIG_HOME" | head -3)"
# Its settings name its own folder for companion tools.
grep -qs "MYPATH=$PREFIX/bin" "$XDG_CONFIG_HOME/VKM_STP.conf" || bad "MYPATH is not the installed folder"

# Without the prefix's archive the installed CLI finds none: it never looked elsewhere.
mv "$DATA/VKM.e" "$WORK/VKM.e.away"
out=$("$PREFIX/bin/vkmstep-cli" check "../prefix/share/vkmstep/Help/SampleCodes/Eng/counter.gsp" 2>&1)
[ "$out" != OK ] || bad "the installed CLI found an archive outside the prefix"
mv "$WORK/VKM.e.away" "$DATA/VKM.e"

# So the installed programs look for their delivered files in $DATA (the setting archive is
# found there the same way as the guide and the manual), and nothing lies beside the
# executables. The guide and the manual must be there under the names the program asks for.
help_names=$(sed -n 's/.*k\(HelpIndex\|HelpManual\)\[\] = "\([^"]*\)";.*/\2/p' "$SRC/src/core/base/paths.h")
[ "$(echo "$help_names" | wc -w)" = 2 ] || bad "the names of the guide and the manual are not in paths.h: $help_names"
for name in $help_names; do
    [ -s "$DATA/$name" ] || bad "the installed editor would not find $name in $DATA"
    [ ! -e "$PREFIX/bin/$name" ] || bad "$name lies beside the executables"
done
cmp -s "$DATA/Help/Eng/Index.html" "$SRC/help/Eng/Index.html" || bad "the installed guide is not help/Eng/Index.html"
[ "$(head -c 5 "$DATA/step_help1.pdf")" = "%PDF-" ] || bad "the installed manual is not a PDF"

# Desktop entry, icon and file type agree with each other and with the desktop's tools.
desktop="$PREFIX/share/applications/vkmstep.desktop"
mimexml="$PREFIX/share/mime/packages/vkmstep.xml"
type=$(sed -n 's/.*<mime-type type="\([^"]*\)".*/\1/p' "$mimexml")
[ -n "$type" ] || bad "no MIME type in $mimexml"
grep -qx "MimeType=$type;" "$desktop" || bad "the desktop entry does not open $type"
icon=$(sed -n 's/^Icon=//p' "$desktop")
[ -f "$PREFIX/share/icons/hicolor/scalable/apps/$icon.svg" ] || bad "no scalable icon named $icon"
for size in 48 128; do
    python3 - "$PREFIX/share/icons/hicolor/${size}x${size}/apps/$icon.png" "$size" <<'PY' || bad "no ${size} px icon named $icon"
import struct, sys
data = open(sys.argv[1], 'rb').read(24)
assert data[:8] == b'\x89PNG\r\n\x1a\n'
assert struct.unpack('>II', data[16:24]) == (int(sys.argv[2]),) * 2
PY
done
exec_line=$(sed -n 's/^Exec=//p' "$desktop")
[ -x "$PREFIX/bin/${exec_line%% *}" ] || bad "Exec= names no installed program: $exec_line"
[[ "$exec_line" == *%[fFuU]* ]] || bad "Exec= passes no file: $exec_line"
if command -v xmllint > /dev/null; then
    xmllint --noout "$mimexml" "$PREFIX/share/icons/hicolor/scalable/apps/$icon.svg" || bad "xmllint"
fi
if command -v desktop-file-validate > /dev/null; then
    desktop-file-validate "$desktop" || bad "desktop-file-validate"
fi
if command -v update-desktop-database > /dev/null; then
    update-desktop-database "$PREFIX/share/applications" || bad "update-desktop-database"
    grep -q "^$type=.*vkmstep.desktop" "$PREFIX/share/applications/mimeinfo.cache" ||
        bad "the desktop database does not open $type with the editor"
fi
if command -v update-mime-database > /dev/null; then
    update-mime-database "$PREFIX/share/mime" || bad "update-mime-database"
    [ -f "$PREFIX/share/mime/${type}.xml" ] || bad "the MIME database has no $type"
    # The extension in any case: no case-sensitive flag on the glob.
    glob=$(grep ":$type:\*\.gsp" "$PREFIX/share/mime/globs2")
    [ -n "$glob" ] || bad "the MIME database has no *.gsp glob"
    [[ "$glob" != *:cs* ]] || bad "the *.gsp glob is case-sensitive: $glob"
fi

[ $fail = 0 ] && echo "PASS"
exit $fail
