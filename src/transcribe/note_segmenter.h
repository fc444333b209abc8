#pragma once
// From a decoded pitch track to notes: each voiced stretch is cut where its pitch level
// changes (an optimal partition with a penalty per note, so vibrato stays one note) and
// where the spectrum rises sharply (a repeated note), and every note gets the median
// pitch of its stable middle. Notes shorter than `minNoteSeconds` are dropped.

#include <vector>

#include "transcribe/pyin_tracker.h"

namespace tahrir::transcribe {

struct NoteEvent {
    double onset = 0;  // seconds
    double offset = 0; // seconds
    double hz = 0;
};

struct SegmenterSettings {
    double minNoteSeconds = 0.09;
    double changePenalty = 6000;  // cents squared: the cost of one more note
    double onsetRiseDb = 4.0;     // a level rise that starts a new note of the same pitch
    double mergeCents = 30;       // neighbours closer than this with no onset are one note
};

std::vector<NoteEvent> SegmentNotes(const std::vector<PitchFrame>& frames, double hopSeconds,
                                    const SegmenterSettings& settings = {});

} // namespace tahrir::transcribe
