// The export of a play run to a MIDI file, from the command line.

#include <algorithm>
#include <filesystem>
#include <limits>
#include <optional>

#include "app/open_score.h"
#include "cli/cli_args.h"
#include "cli/commands.h"
#include "core/instrument_table.h"
#include "core/page_store.h"
#include "core/session.h"
#include "midifile/microtonal_writer.h"
#include "midifile/midi_writer.h"
#include "play/player.h"

namespace tahrir::cli {
namespace {

using namespace tahrir::midifile;

// A play run in virtual time that leaves "tmpmid.txt" in the data folder; the plan of
// its channels goes to `plan`. Returns an error text, empty on success.
std::string PlayToLog(const std::string& file, const std::optional<std::string>& appFolder,
                      std::optional<double> tempo, std::filesystem::path& folderOut,
                      MicrotonalPlan& plan) {
    const app::Workspace workspace = app::StartWorkspace(appFolder);
    if (!workspace.ok()) return workspace.error;
    const core::Session& session = workspace.session;
    core::PageStore store(core::PageStore::PathIn(session.AppFolder));
    core::Document doc;
    const app::OpenedScore opened = app::OpenScore(doc, session, &store, file);
    if (!opened.ok()) return opened.failure;
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
    plan.program = core::ProgramByte(player.midi().programIndex());
    plan.koronBendMsb = 64 + controls.KoronBend;
    plan.soriBendMsb = 64 + controls.SoriBend;
    folderOut = session.AppFolder;
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

} // namespace tahrir::cli
