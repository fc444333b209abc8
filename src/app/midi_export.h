#pragma once
// File > Export > MIDI: a play run of the sheet in virtual time with the window's live
// controls, whose event log becomes the plain file ("TestMid.Mid" and its copy) or the
// multi-channel file that keeps quarter tones.

#include <filesystem>
#include <string>

#include "core/score_sheet.h"
#include "play/player.h"

namespace tahrir::app {

enum class MidiKind { Plain, Microtonal };

struct MidiExport {
    std::filesystem::path appFolder; // where the play log and "TestMid.Mid" go
    std::filesystem::path output;    // the file the user chose
    MidiKind kind = MidiKind::Plain;
};

// Plays `sheet` with the tempo, volume, bends, transposition, count-in and instrument of
// `live`, then writes the file. Returns the error text, empty on success.
std::string ExportMidi(const core::ScoreSheet& sheet, play::Player& live, const MidiExport& what);

} // namespace tahrir::app
