#pragma once
// Sheets built in code and readable views of recorded MIDI messages.

#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <vector>

#include "core/score_sheet.h"
#include "play/midi_message.h"

namespace tahrir::play::testing {

// A note line: step, octave, 32nds, accidental letter and mark code in their columns.
inline std::string Note(int step, int octave, int duration, char accidental = ' ',
                        const char* mark = "  ") {
    char text[32];
    std::snprintf(text, sizeof text, "%d%d%3d%c %-2.2s", step, octave, duration, accidental, mark);
    std::string line = text;
    line.resize(22, ' ');
    return line;
}
inline std::string Rest(int duration) {
    return Note(0, 3, duration);
}
inline std::string Bar() {
    return Note(0, 3, -1);
}
inline std::string Directive(std::string line) {
    if (line.size() < 22) line.resize(22, ' ');
    return line;
}

// Line 1 signature, line 2 tempo, line 3 measure, then the music from line 4.
inline core::ScoreSheet Sheet(std::string signature, int tempo, const char* rhythm,
                              std::initializer_list<std::string> music) {
    core::ScoreSheet sheet;
    signature.resize(7, ' ');
    sheet.setLine(1, Directive(signature + "G"));
    sheet.setLine(2, Directive("TEMPO" + std::to_string(tempo)));
    sheet.setLine(3, Directive(std::string("RHYTM") + rhythm));
    int index = 4;
    for (const std::string& line : music)
        sheet.setLine(index++, line);
    sheet.LastLine = index - 1;
    return sheet;
}

// A note on or off as seen on the wire: kind 'N' on, 'F' off.
struct NoteEvent {
    double seconds;
    char kind;
    int note;
    int channel;
    int velocity;
    bool operator==(const NoteEvent&) const = default;
};

inline std::vector<NoteEvent> NoteEvents(const RecordingSink& sink) {
    std::vector<NoteEvent> out;
    for (const auto& e : sink.entries()) {
        const int status = static_cast<int>(e.message & 0xF0);
        if (status != 0x90 && status != 0x80) continue;
        out.push_back(
            {e.seconds, status == 0x90 ? 'N' : 'F', static_cast<int>((e.message >> 8) & 0xFF),
             static_cast<int>(e.message & 0x0F), static_cast<int>((e.message >> 16) & 0xFF)});
    }
    return out;
}

} // namespace tahrir::play::testing
