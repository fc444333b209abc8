#pragma once
// The microtonal export: the event log as a format-1 file that keeps quarter tones by the
// playback channel plan (channel 3 natural, 2 koron, 4 sori, each with a standing pitch
// bend over a two-semitone bend range), so that it sounds right in any player.

#include <vector>

#include "midifile/event_log.h"
#include "midifile/midi_writer.h"

namespace tahrir::midifile {

struct MicrotonalPlan {
    double tempo = 60;       // beats a minute of the play run
    int program = 0;         // General MIDI program of the chosen instrument, 0-based
    int koronBendMsb = 48;   // 64 plus the koron slider
    int soriBendMsb = 80;    // 64 plus the sori slider
    int bendRange = 2;       // semitones each way
    int countInProgram = 115;
};

// Channels 1 to 5 carry the instrument; 6 is the count-in click.
inline constexpr int CountInChannel = 6;

// A conductor track (name, tempo, 4/4) and one track with the channel set-up and the notes;
// ticks follow the tempo, so the file keeps the time of the play run.
WriteResult WriteMicrotonalFile(const std::vector<EventRecord>& records,
                                const MicrotonalPlan& plan);

} // namespace tahrir::midifile
