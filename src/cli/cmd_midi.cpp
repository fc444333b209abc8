// MIDI files from the command line: the reader's dump, the import of one track, and the
// export of a play run.

#include <algorithm>
#include <cmath>
#include <iostream>
#include <limits>
#include <optional>

#include "cli/cli_args.h"
#include "cli/commands.h"
#include "core/app_folder.h"
#include "core/cp1256.h"
#include "core/load_file.h"
#include "core/page_store.h"
#include "core/session.h"
#include "midifile/microtonal_writer.h"
#include "midifile/midi_import.h"
#include "midifile/midi_reader.h"
#include "midifile/midi_writer.h"
#include "play/player.h"

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

// A whole number within [low, high]; NaN and the infinities are not.
bool IsWholeIn(double value, double low, double high) {
    return value >= low && value <= high && value == std::floor(value);
}

class SilentDump : public DumpSink {
public:
    void addLine(std::string) override {}
};

// A play run in virtual time that leaves "tmpmid.txt" in the data folder; the plan of
// its channels goes to `plan`. Returns an error text, empty on success.
std::string PlayToLog(const std::string& file, const std::optional<std::string>& appFolder,
                      std::optional<double> tempo, std::filesystem::path& folderOut,
                      MicrotonalPlan& plan) {
    const core::AppFolderResult folder = core::PrepareAppFolder(appFolder);
    if (!folder.error.empty()) return folder.error;
    core::Session session;
    core::StartSession(session, folder.folder);
    core::PageStore store(core::PageStore::PathIn(folder.folder));
    core::Document doc;
    const core::OpenResult opened = core::OpenScoreFile(doc, session, &store, file);
    if (!opened.load.loaded()) {
        const std::string why = opened.message ? *opened.message : "Can't read " + file;
        return why + (why.find(file) == std::string::npos ? " (" + file + ")" : "");
    }
    play::Player player(nullptr);
    player.startUp();
    play::PlayControls& controls = player.controls();
    // The tempo bar runs from 20 to 320; it is clamped before it becomes an integer.
    const double start = tempo ? *tempo : doc.TempoSlider > 0 ? doc.TempoSlider : 20;
    controls.UserTempo = static_cast<int>(std::clamp(start, 20.0, 320.0));
    play::RunOptions options;
    options.EventLogFile = session.file(EventLogName);
    player.playVirtual(doc.Sheet, options);
    plan.tempo = controls.UserTempo;
    plan.program = play::ProgramTable()[static_cast<std::size_t>(player.midi().programIndex())];
    plan.koronBendMsb = 64 + controls.KoronBend;
    plan.soriBendMsb = 64 + controls.SoriBend;
    folderOut = folder.folder;
    return {};
}

} // namespace

int RunExportMidi(const Argv& argv) {
    Args args(argv, {{"--tempo"}, {"--microtonal"}});
    if (!args.ok()) return Fail(ExitUsage, args.error());
    const auto tempo = args.number("--tempo");
    const auto output = args.value("-o");
    if (!args.ok()) return Fail(ExitUsage, args.error());
    if (args.positional().size() != 1 || !output)
        return Fail(ExitUsage, "usage: export-midi FILE.srv -o OUT.mid [--tempo N] [--microtonal]");
    if (tempo && !IsWholeIn(*tempo, 1, std::numeric_limits<double>::max()))
        return Fail(ExitUsage, "--tempo takes a whole number of beats a minute");
    std::filesystem::path folder;
    MicrotonalPlan plan;
    const std::string error =
        PlayToLog(args.positional()[0], args.value("--app-folder"), tempo, folder, plan);
    if (!error.empty()) return Fail(ExitIo, error);
    if (args.flag("--microtonal")) {
        const WriteResult result =
            WriteMicrotonalFile(ReadEventLog(folder / EventLogName).records, plan);
        if (!result.ok()) return Fail(ExitIo, result.error);
        if (!SaveBytes(*output, result.bytes)) return Fail(ExitIo, "cannot write " + *output);
        return ExitOk;
    }
    // The export command proper writes "TestMid.Mid" in the data folder; OUT is its copy.
    if (const std::string why = WriteTestMid(folder, plan.tempo); !why.empty())
        return Fail(ExitIo, why);
    std::error_code ec;
    std::filesystem::copy_file(folder / TestMidName, *output,
                               std::filesystem::copy_options::overwrite_existing, ec);
    if (ec) return Fail(ExitIo, "cannot write " + *output);
    return ExitOk;
}

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
    if (!IsWholeIn(*track, 1, 65535))
        return Fail(ExitUsage, "--track needs a track number from 1, as the dump prints it");
    // The octave answer is taken as typed into the box, but here it must be a number.
    const auto shift = args.number("--octave-shift");
    if (!args.ok()) return Fail(ExitUsage, args.error());
    if (shift && !IsWholeIn(*shift, -1000, 1000))
        return Fail(ExitUsage, "--octave-shift takes a whole number of octaves");
    const std::string octave = std::to_string(shift ? static_cast<int>(*shift) : 0);
    OptionChooser chooser(static_cast<int>(*track), octave);
    SilentDump dump;
    core::Document doc;
    const ImportResult result = ImportMidiFile(args.positional()[0], *output, chooser, dump, doc);
    if (result.status != ImportStatus::Imported)
        return Fail(ExitIo, args.positional()[0] + ": " + result.message);
    return ExitOk;
}

} // namespace tahrir::cli
