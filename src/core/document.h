#pragma once
// One open score and the session it lives in. State lives here, not in globals.

#include <array>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/score_sheet.h"
#include "core/session_tables.h"

namespace tahrir::core {

// Which generation of the file format a score was read from.
enum class Generation { Sv5, Marker, Oldest };

// The program's settings and data folder for one run.
struct Session {
    std::filesystem::path AppFolder; // root of every data file
    std::string TextFontName = "Arabic Transparent";
    long long CalibrationValue = 80000000;
    double InitialTempo = 60;
    double LeftMargin = 3;
    double RightMargin = 4;
    double StaffSpacing = 45;
    double TopMargin = 26;
    std::string InstrumentMode = "Flute";
    std::string MusicFontFile = "fonts/bravura.otf"; // relative to AppFolder

    // Filled by StartSession (session.h).
    std::vector<Instrument> InsList;
    std::array<std::string_view, PaletteHintCount> PaletteHints{};

    // AppFolder plus a file name such as "tmp.ctz".
    std::filesystem::path file(const std::string& name) const { return AppFolder / name; }
};

// The score being edited.
struct Document {
    ScoreSheet Sheet;
    std::string Description; // code page 1256, may hold CR LF
    std::string CurrentFileName;
    Generation FileGeneration = Generation::Sv5;
    bool LineScrambled = false;
    bool DirtyFlag = false;
    double CurrentTempo = 72; // shown on the tempo bar
    double PlayTempo = 60;    // used by playback
    double InitialTempo = 60;
    int UndoIndex = 0;
    int UndoTop = 0;
    // The tempo slider after a load: set only for a tempo above 20, 0 when untouched.
    int TempoSlider = 0;
    double TempoMarkerTop = 0;
};

} // namespace tahrir::core
