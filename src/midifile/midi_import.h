#pragma once
// The MIDI import: one track of a parsed file becomes a score of note lines, written to a
// score file and left in the sheet.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "core/document.h"
#include "midifile/midi_reader.h"

namespace tahrir::midifile {

inline constexpr int MaxImportTrack = 18;
inline constexpr const char* ImportMagicField = "Sv5 Tahrir score";
inline constexpr const char* OctavePrompt = "Octave Transpose";
inline constexpr const char* MidiFileFilter = "Midi files |*.mid"; // the open dialog's filter

// The two questions of an import; the window answers them with its track frame and an
// input box, the command line with its options.
class ImportChooser {
public:
    virtual ~ImportChooser() = default;
    // The track to import, numbered from 1 as the dump prints it; nullopt for Cancel.
    virtual std::optional<int> chooseTrack(const MidiFileInfo& info,
                                           const std::vector<std::string>& dump) = 0;
    // The answer typed into the box `prompt`, which shows the track's name.
    virtual std::string askOctave(const std::string& prompt, const std::string& trackName) = 0;
};

// 32nds of a whole note for a length of `ticks` with `quarter` ticks a quarter.
int DurationFor(std::int64_t ticks, int quarter);

// The note line of a key: step, octave, the duration in three columns, the accidental
// (black keys as sharps) and five blanks.
std::string ImportLine(int key, std::int64_t ticks, int quarter, int octaveShift);

// The number an input box answer stands for: leading blanks, a sign and digits, as far as
// they go; 0 when there is none.
int AnswerNumber(const std::string& answer);

enum class ImportStatus { Imported, Cancelled, Failed };

struct ImportResult {
    ImportStatus status = ImportStatus::Failed;
    std::string message; // why it failed, for the user
    int notes = 0;       // note lines stored
};

// Writes the score file of track `track` (from 1) and fills the document's sheet.
ImportResult ImportTrack(const MidiFileInfo& info, int track, int octaveShift,
                         core::Document& doc, const std::filesystem::path& scoreFile);

// The whole command: read and dump the file into `dump`, let `chooser` take a track and
// the octave, then import it.
ImportResult ImportMidiFile(const std::filesystem::path& midiFile,
                            const std::filesystem::path& scoreFile, ImportChooser& chooser,
                            DumpSink& dump, core::Document& doc);

} // namespace tahrir::midifile
