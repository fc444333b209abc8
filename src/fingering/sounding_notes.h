#pragma once
// The note each note line of a sheet sounds, as playback resolves it: the key signature,
// "ALL" changes, the measure's accidentals, octave marks and the transposition in force;
// koron and sori a quarter tone below and above their key.

#include <optional>
#include <vector>

#include "core/score_sheet.h"
#include "play/pitch_table.h"

namespace tahrir::fingering {

class SoundingNotes {
public:
    // Walks the sheet as a play run in virtual time with nothing sounding and keeps the
    // first note each line resolves to. Lines the walk never reaches (past an end mark,
    // a skipped ending) are walked again from there. `transpose` is the slider's value.
    void compute(const core::ScoreSheet& sheet, int transpose = play::TransposeCentre);

    // The sounding MIDI number of a line (.5 for a quarter tone); nullopt for a line that
    // is not a note or lies off the pitch table.
    std::optional<double> at(int line) const;
    // The lines holding a note (a pitch step 1..7), in order.
    const std::vector<int>& noteLines() const { return m_noteLines; }

private:
    std::vector<double> m_notes; // by line; 0 for none
    std::vector<int> m_noteLines;
};

// The sounding MIDI number of a key on a voice channel: koron a quarter tone down, sori up.
double SoundingPitch(int key, int channel);

} // namespace tahrir::fingering
