// Sound from the command line: a play run in virtual time (or real time), with its
// messages, its event log and a WAV rendering through the built-in synthesiser.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <thread>

#include "app/open_score.h"
#include "cli/cli_args.h"
#include "cli/commands.h"
#include "core/app_folder.h"
#include "core/page_store.h"
#include "play/player.h"
#include "play/rtmidi_sink.h"
#include "play/synth_sink.h"
#include "play/wave_voices.h"

namespace tahrir::cli {

namespace {

using namespace tahrir::core;
using namespace tahrir::play;

struct PlaySettings {
    std::optional<int> tempo;
    int startMeasure = 0;
    int endMeasure = 0;
    std::optional<int> instrument;
};

// A whole number option within [low, high]; false with a usage message otherwise.
bool IntOption(Args& args, const std::string& name, int low, int high, std::optional<int>& out) {
    const auto v = args.number(name);
    if (!args.ok()) return false;
    if (!v) return true;
    if (*v != std::floor(*v) || *v < low || *v > high) return false;
    out = static_cast<int>(*v);
    return true;
}

std::optional<PlaySettings> ReadSettings(Args& args, std::string& error) {
    PlaySettings s;
    std::optional<int> start, end;
    if (!IntOption(args, "--tempo", -1000000, 1000000, s.tempo) ||
        !IntOption(args, "--start-measure", 0, 100000, start) ||
        !IntOption(args, "--end-measure", 0, 100000, end) ||
        !IntOption(args, "--instrument", 0, 9, s.instrument)) {
        error = args.ok() ? "--tempo and the measures take whole numbers, --instrument 0 to 9"
                          : args.error();
        return std::nullopt;
    }
    s.startMeasure = start.value_or(0);
    s.endMeasure = end.value_or(0);
    return s;
}

bool WriteMessages(const RecordingSink& sink, const std::string& file) {
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    if (!out) return false;
    char line[48];
    for (const auto& e : sink.entries()) {
        std::snprintf(line, sizeof line, "%lld\t0x%08X\n", std::llround(e.seconds * 1000),
                      static_cast<unsigned>(e.message));
        out << line;
    }
    return static_cast<bool>(out.flush());
}

// The live output for --realtime: a setting in TAHRIR_MIDI_OUT ("auto", "midi", "synth",
// "none") chooses it; without one the first MIDI port, else the built-in synthesiser.
OpenedOutput OpenLive(WaveVoices* voices) {
    const char* setting = std::getenv("TAHRIR_MIDI_OUT");
    const OutputChoice choice = OutputChoiceFromText(setting ? setting : "auto");
    if (choice == OutputChoice::None) return {};
    OpenedOutput opened = OpenOutput(choice, voices);
    if (!opened.sink)
        Fail(ExitOk, std::string(OpenMidiOutFailed) + " (" + opened.description + ")");
    return opened;
}

} // namespace

int RunPlay(const Argv& argv) {
    Args args(argv, {{"--wav", "--messages", "--log", "--tempo", "--start-measure", "--end-measure",
                      "--instrument"},
                     {"--count-in", "--realtime"}});
    if (!args.ok()) return Fail(ExitUsage, args.error());
    if (args.positional().size() != 1) return Fail(ExitUsage, "usage: play FILE.srv [options]");
    std::string error;
    const auto settings = ReadSettings(args, error);
    if (!settings) return Fail(ExitUsage, error);

    const app::Workspace workspace = app::StartWorkspace(args.value("--app-folder"));
    if (!workspace.ok()) return Fail(ExitIo, workspace.error);
    const Session& session = workspace.session;
    PageStore store(PageStore::PathIn(session.AppFolder));
    Document doc;
    const app::OpenedScore opened = app::OpenScore(doc, session, &store, args.positional()[0]);
    if (!opened.ok()) return Fail(ExitIo, opened.failure);

    // Buttons 8 and 9 are the wave voices: their samples sound instead of the MIDI sound.
    const int button = settings->instrument.value_or(StartInstrumentButton);
    const bool waveVoice = button >= 8;
    WaveVoices voices;
    if (waveVoice && voices.loadSamples(session.AppFolder, ShippedDataFolder()) == 0)
        return Fail(ExitIo, "Can't find the samples of the wave voices in " + session.AppFolder.string());
    TeeSink tee;
    RecordingSink recording;
    tee.add(&recording);
    std::unique_ptr<SynthSink> wav;
    if (const auto out = args.value("--wav")) {
        wav = SynthSink::openOffline(DefaultSoundFont(), *out, error);
        if (!wav) return Fail(ExitIo, error);
        wav->attachVoices(&voices);
        tee.add(wav.get());
    }
    const bool realtime = args.flag("--realtime");
    OpenedOutput live;
    if (realtime) live = OpenLive(&voices);
    tee.add(live.sink.get());

    const std::filesystem::path logFile = session.file("tmpmid.txt");
    {
        Player player(&tee);
        player.startUp(waveVoice ? -1 : button);
        if (button == 8) player.clickTar();
        if (button == 9) player.clickDaf();
        PlayControls& c = player.controls();
        c.UserTempo = std::clamp(
            settings->tempo.value_or(doc.TempoSlider > 0 ? doc.TempoSlider : 20), 20, 320);
        c.StartMeasure = settings->startMeasure;
        c.EndMeasure = settings->endMeasure;
        c.CountIn = args.flag("--count-in");
        RunOptions options;
        options.EventLogFile = logFile;
        options.EndAtFin = true; // nobody is there to press Stop
        if (realtime) {
            player.play(doc.Sheet, options);
            player.wait();
            std::this_thread::sleep_for(std::chrono::milliseconds(live.sink ? 1000 : 0));
        } else {
            player.playVirtual(doc.Sheet, options);
        }
    }
    if (wav && !wav->finish()) return Fail(ExitIo, "cannot write " + *args.value("--wav"));
    if (const auto out = args.value("--messages"); out && !WriteMessages(recording, *out))
        return Fail(ExitIo, "cannot write " + *out);
    if (const auto out = args.value("--log")) {
        std::error_code ec;
        std::filesystem::copy_file(logFile, *out, std::filesystem::copy_options::overwrite_existing,
                                   ec);
        if (ec) return Fail(ExitIo, "cannot write " + *out);
    }
    return ExitOk;
}

} // namespace tahrir::cli
