#!/usr/bin/env bash
# A short melody in Shur with koron and sori typed into a new score through tahrir-cli,
# saved, reloaded and compared with the golden files (TAHRIR_UPDATE_GOLDEN=1 refreshes them).
set -euo pipefail
cli="$1"
golden="$2"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
app="$work/app"

"$cli" new --app-folder "$app" --tempo 60 --rhythm 2/4 --measures 2 -o "$work/new.srv"
# Sol, La koron, Si flat | Do, Si flat, La koron (with a barline), Sol sori held; a tempo
# mark before it, answered 80, and an undo/redo pair that must change nothing.
keys="Right Right Shift+4 5 Enter Shift+4 6 K Enter Shift+6 7 B Ins Right Right"
keys+=" Shift+4 1 PageUp Enter Shift+4 7 B Enter 6 K Shift+6 Enter Shift+F7"
keys+=" 5 S Shift+0 Enter Del T Ctrl+Z Ctrl+Y"
"$cli" type --app-folder "$app" "$work/new.srv" --keys "$keys" --answers "80" \
    -o "$work/shur.srv" --json > "$work/state.json"
# Reloading the saved score and saving it from the editor again changes no byte.
"$cli" type --app-folder "$app" "$work/shur.srv" -o "$work/again.srv"
cmp "$work/shur.srv" "$work/again.srv"

if [[ "${TAHRIR_UPDATE_GOLDEN:-}" == 1 ]]; then
    cp "$work/state.json" "$golden/shur_state.json"
    cp "$work/shur.srv" "$golden/shur.srv"
fi
diff -u "$golden/shur_state.json" "$work/state.json"
cmp "$golden/shur.srv" "$work/shur.srv"
