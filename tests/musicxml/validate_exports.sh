#!/usr/bin/env bash
# Exports every demo and test score and validates it, with the golden exports, against
# the MusicXML schema. Exit 77 (skipped) when the schema or xmllint is missing.
set -u
cli=$1 schema=$2 source=$3
command -v xmllint >/dev/null || { echo "xmllint not found: skipped"; exit 77; }
[ -f "$schema" ] || { echo "no schema at $schema: skipped"; exit 77; }
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
failed=0 count=0
while IFS= read -r score; do
  name=$(basename "$score" .srv)
  if ! "$cli" export-musicxml "$score" -o "$out/$name.musicxml" --app-folder "$out/app"; then
    echo "export failed: $score"; failed=1; continue
  fi
  files+=("$out/$name.musicxml")
done < <(find "$source/data/demo" "$source/tests/data" -name '*.srv' | sort)
files+=("$source"/tests/data/musicxml/*.musicxml)
for f in "${files[@]}"; do
  count=$((count + 1))
  xmllint --noout --schema "$schema" "$f" 2>&1 | grep -v ' validates$' && failed=1
done
echo "$count files checked"
exit $failed
