#pragma once
// One record of a play run's event log ("tmpmid.txt"), as the player writes it and the
// MIDI writers read it back.

namespace tahrir::core {

inline constexpr const char* EventLogName = "tmpmid.txt";

// A note on or a note off: seconds since the previous record, the MIDI key, the voice
// channel (the note's pitch-bend step: 3 plain, 2 koron, 4 sori; 6 the count-in) and the
// velocity (0 for the note off).
struct EventRecord {
    double seconds = 0;
    int key = 0;
    int channel = 3;
    int velocity = 0;
};

} // namespace tahrir::core
