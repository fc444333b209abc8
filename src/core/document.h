#pragma once
// One open score and the session it lives in. State lives here, not in globals.

#include <filesystem>
#include <string>

#include "core/score_sheet.h"

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
};

} // namespace tahrir::core
