#pragma once
// One open score and the session it lives in. State lives here, not in globals.

#include <filesystem>
#include <string>
#include <string_view>

#include "core/score_sheet.h"

namespace tahrir::core {

// Which generation of the file format a score was read from.
enum class Generation { Sv5, Marker, Oldest };

// The font of text lines until a score or the user names another.
inline constexpr std::string_view DefaultTextFontName = "Arabic Transparent";

// The program's settings and data folder for one run.
struct Session {
    std::filesystem::path AppFolder; // root of every data file
    std::string TextFontName{DefaultTextFontName};
    long long CalibrationValue = 80000000;
    std::string MusicFontFile = "fonts/bravura.otf"; // relative to AppFolder

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
};

} // namespace tahrir::core
