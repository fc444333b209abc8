#pragma once
// Timed notes into the sheet: sample times become durations in 32nds with a carried
// rounding error, long notes split into tied standard lengths, gaps become rests, and a
// quarter-tone pitch becomes a step and an accidental, exactly or under the dastgah boxes.
// Any tracker that yields timed notes inserts through here.

#include <optional>
#include <string>
#include <vector>

#include "core/dastgah_scale.h"
#include "core/document.h"

namespace tahrir::transcribe {

// One note as a tracker hands it over. Times are samples at InsertOptions::sampleRate.
struct TimedNote {
    double start = 0;
    double end = 0;
    double note = 0;   // MIDI number, .5 for a quarter tone
    bool rest = false; // a silence of this length rather than a note
};

struct InsertOptions {
    double sampleRate = 11000; // samples a second of the note times
    double tempo = 60;         // quarter notes a minute
    int MinDuration = 1;       // smallest note in 32nds: 1, 2, 4 or 8
    bool Exact = false;        // step and accidental from the pitch, not from the boxes
    // The dastgah boxes; unset: painted from the signature in force at the cursor.
    std::optional<core::DastgahBoxes> boxes;
    bool TempoToSheet = false; // write the tempo as a "TEMPO" line first
    int OctIns = 2;            // octave shift of the notes, 2 being neutral
    // Subtracted from every start and end (the first note's start when the result is to
    // begin at the first note), 0 for none.
    double shift = 0;
};

struct InsertResult {
    int firstLine = 0;          // where the first new line went
    int linesInserted = 0;      // tempo line included
    bool memoryFull = false;    // the sheet filled up: the lines so far stay, no snapshot
    std::string message;        // "Memory full!" when it did
};

inline constexpr const char* MemoryFullMessage = "Memory full!";

// Inserts the notes from the sheet's CurrentLine (4 at least) on, moving CurrentLine past
// them, as the insert line command does for each line. The caller takes the snapshot and
// redraws when the result is not memoryFull. No bar lines are added.
InsertResult InsertNotes(core::Document& doc, const std::vector<TimedNote>& notes,
                         const InsertOptions& options);

} // namespace tahrir::transcribe
