#!/usr/bin/env bash
# tahrir-cli type tried from outside: the note entry of a sori Mi key by key, the measure
# range, clicks, auditions, and the exit codes of bad input.
set -uo pipefail
cli="$1"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
app="$work/app"
failures=0

fail() {
    echo "FAIL: $*"
    failures=$((failures + 1))
}
# The value of one key of the JSON state, as printed (strings keep their quotes).
field() {
    grep -o "\"$1\": \(\"[^\"]*\"\|\[[^]]*\]\|\[\[.*\]\]\|[-0-9]*\)" <<<"$2" | head -1 |
        sed "s/^\"$1\": //"
}
pen() { field pen "$1" | sed 's/ *"$/"/'; } # trailing blanks cut
expect() { # what, got, wanted
    [[ "$2" == "$3" ]] || fail "$1: got [$2], wanted [$3]"
}
state() { # score, keys, answers
    "$cli" type --app-folder "$app" "$1" --keys "$2" --answers "${3:-}" -o "$work/out.srv" --json
}
line_of() { # index in the saved score, trailing blanks cut
    "$cli" lines --app-folder "$app" "$work/out.srv" | awk -F'\t' -v i="$1" '$1 == i { print $3 }' |
        sed 's/ *$//'
}

# A score whose line 4, its last, is a quarter rest.
printf '"Sv5 Tahrir score"\r\n"x\r\n"\r\n       G  \r\nTEMPO60\r\nRHYTM4/4\r\n03  8    \r\n' \
    >"$work/rest.srv"
# Step by step: duration, pitch, sori, Enter (the score grows by a copy), then a new pitch
# keeps the sori until S is pressed again, because S reads the lit state of the line.
s=$(state "$work/rest.srv" "Shift+6 3 S")
expect "pen and pages after 3 S" "$(pen "$s") $(field undoIndex "$s")" '"33  8S" 1'
expect "nothing sounded before Enter" "$(field sounded "$s")" "[]"
s=$(state "$work/rest.srv" "Shift+6 3 S Enter")
expect "line 4 after Enter" "$(line_of 4)" "33  8S"
expect "line 5 is its copy" "$(line_of 5)" "33  8S"
expect "cursor on the new line" "$(field currentLine "$s")/$(field lastLine "$s")" "5/5"
expect "one page written" "$(field undoIndex "$s")/$(field undoTop "$s")" "2/2"
expect "sori Mi sounds on the sori channel" "$(field sounded "$s")" "[[64, 4]]"
expect "lit: quarter, sori, Mi" "$(field lit "$s")" "[7, 14, 58, 59, 60, 63, 71, 72]"
s=$(state "$work/rest.srv" "Shift+6 3 S Enter 5 S Enter")
expect "S again takes it off" "$(line_of 5)" "53  8"
expect "natural Sol sounds" "$(field sounded "$s")" "[[64, 4], [67, 3]]"

# A directive typed on a note sounds the pen, the note under the cursor.
s=$(state "$work/rest.srv" "3 Enter Left F2")
expect "REP{ before the Mi" "$(line_of 4)" "REP{"
expect "the Mi sounds again" "$(field sounded "$s")" "[[64, 3], [64, 3]]"

# Shift+F8 times the cue from the live tempo bar, which the score's tempo of 90 has set:
# 6000 / (90 x 1 x 8) = 8.3 for a beat of a quarter.
sed 's/TEMPO60/TEMPO90/' "$work/rest.srv" >"$work/ninety.srv"
state "$work/ninety.srv" "3 Enter Shift+F8" >/dev/null
expect "speed cue at tempo 90" "$(line_of 5)" "LvT=8"

# The header line has no symbol: a click on it moves nothing.
expect "cursor after Click:1" "$(field currentLine "$(state "$work/rest.srv" "3 Enter Click:1")")" 5

# A new score of three measures: numeric + stops at the third, whose label is the last shown.
"$cli" new --app-folder "$app" --tempo 60 --rhythm 2/4 --measures 3 -o "$work/three.srv" ||
    fail "new score"
state "$work/three.srv" "Right NumPlus NumPlus NumPlus NumPlus NumPlus Shift+F2" >/dev/null
expect "measure label typed at the end" "$(line_of 5)" "L^Ms=3"

# Exit codes: a missing score and an unwritable output are 2, a bad token is 1.
code() { "$cli" type --app-folder "$app" "$@" 2>/dev/null; echo $?; }
expect "missing score" "$(code "$work/missing.srv" -o "$work/o.srv")" 2
expect "unwritable output" "$(code "$work/rest.srv" -o "$work/no/such/o.srv")" 2
expect "bad token" "$(code "$work/rest.srv" --keys "Shift+Q+" -o "$work/o.srv")" 1

exit $((failures > 0))
