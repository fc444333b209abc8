// MIDI files from the command line: the reader's dump, the import of one track, and the
// export of a play run.

#include <iostream>

#include "cli/cli_args.h"
#include "cli/commands.h"
#include "core/cp1256.h"
#include "midifile/midi_import.h"
#include "midifile/midi_reader.h"

namespace tahrir::cli {
namespace {

using namespace tahrir::midifile;

// Prints each dump line as it comes; text events may hold line breaks, which would split
// one dump line into two.
class PrintedDump : public DumpSink {
public:
    void addLine(std::string line) override {
        for (char& c : line)
            if (c == '\r' || c == '\n') c = ' ';
        std::cout << core::Cp1256ToUtf8(line) << '\n';
    }
};

// The answers of the track frame and the octave box, given as options.
class OptionChooser : public ImportChooser {
public:
    OptionChooser(int track, std::string octave) : m_track(track), m_octave(std::move(octave)) {}
    std::optional<int> chooseTrack(const MidiFileInfo&, const std::vector<std::string>&) override {
        return m_track;
    }
    std::string askOctave(const std::string&, const std::string&) override { return m_octave; }

private:
    int m_track;
    std::string m_octave;
};

class SilentDump : public DumpSink {
public:
    void addLine(std::string) override {}
};

} // namespace

int RunExportMidi(const Argv&) { return Fail(ExitUsage, "this command is not available yet"); }

int RunDumpMidi(const Argv& argv) {
    Args args(argv, {});
    if (!args.ok()) return Fail(ExitUsage, args.error());
    if (args.positional().size() != 1) return Fail(ExitUsage, "usage: dump-midi FILE.mid");
    const std::string& file = args.positional()[0];
    PrintedDump dump;
    const MidiFileInfo info = ReadMidiFile(file, dump);
    std::cout.flush();
    if (info.outcome == ReadOutcome::Unreadable) return Fail(ExitIo, "cannot read " + file);
    return ExitOk;
}

int RunImportMidi(const Argv& argv) {
    Args args(argv, {{"--track", "--octave-shift"}, {}});
    if (!args.ok()) return Fail(ExitUsage, args.error());
    const auto track = args.number("--track");
    const auto output = args.value("-o");
    if (!args.ok()) return Fail(ExitUsage, args.error());
    if (args.positional().size() != 1 || !track || !output)
        return Fail(ExitUsage, "usage: import-midi FILE.mid --track N [--octave-shift K] -o OUT.srv");
    if (*track < 1 || *track != static_cast<int>(*track))
        return Fail(ExitUsage, "--track needs a track number from 1, as the dump prints it");
    const std::string octave = args.value("--octave-shift").value_or("0");
    OptionChooser chooser(static_cast<int>(*track), octave);
    SilentDump dump;
    core::Document doc;
    const ImportResult result = ImportMidiFile(args.positional()[0], *output, chooser, dump, doc);
    if (result.status != ImportStatus::Imported)
        return Fail(ExitIo, args.positional()[0] + ": " + result.message);
    return ExitOk;
}

} // namespace tahrir::cli
