// Recordings: pitch, findnote, transcribe.

#include <charconv>
#include <cmath>
#include <fstream>
#include <iostream>
#include <string_view>

#include "app/open_score.h"
#include "app/recording_work.h"
#include "cli/cli_args.h"
#include "cli/commands.h"
#include "cli/notes_options.h"
#include "core/app_folder.h"
#include "core/dastgah_scale.h"
#include "core/load_file.h"
#include "core/new_score.h"
#include "core/page_store.h"
#include "core/score_writer.h"
#include "core/session.h"
#include "transcribe/note_insertion.h"
#include "transcribe/note_passes.h"
#include "transcribe/pitch_finder.h"
#include "transcribe/wave_file.h"

namespace tahrir::cli {

namespace {

using namespace tahrir::transcribe;

// The shortest text that reads back as the same number.
std::string NumberText(double v) {
    char buffer[64];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, v);
    return error == std::errc() ? std::string(buffer, end) : "0";
}

std::optional<NoteGrid> GridOption(const Args& args, std::string& error) {
    const std::string name = args.value("--grid").value_or("24");
    const auto grid = GridNamed(name);
    if (!grid) error = "option --grid takes 12, 24 or dastgah, not \"" + name + "\"";
    return grid;
}

// Pass 1's detectors by the names of their option buttons.
std::optional<Detector> DetectorNamed(const std::string& name) {
    static const std::pair<const char*, Detector> kNames[] = {
        {"simple", Detector::Simple}, {"women", Detector::Women}, {"men", Detector::Men}};
    for (const auto& [text, detector] : kNames)
        if (name == text) return detector;
    return std::nullopt;
}

// The new-score command answered with the tempo, 4/4 and one measure.
class FixedAnswers : public core::NewScorePrompts {
public:
    explicit FixedAnswers(std::string tempo) : m_tempo(std::move(tempo)) {}
    std::string ask(const std::string& prompt, const std::string&) override {
        if (prompt == core::TempoPrompt) return m_tempo;
        return prompt == core::RhythmPrompt ? "4/4" : "1";
    }

private:
    std::string m_tempo;
};

// What the transcribe command was asked, checked before any file is touched.
struct TranscribeRequest {
    std::string wave, out;
    std::optional<std::string> into, notes;
    int at = 4;
    std::optional<double> tempo;
    PassOptions passes;
    bool exact = false, raw = false;
    bool modern = false; // the tracker for real recordings instead of the three passes
};

std::optional<TranscribeRequest> ParseTranscribe(Args& args, std::string& error) {
    TranscribeRequest r;
    const auto out = args.value("-o");
    if (args.positional().size() != 1 || !out) {
        error = "usage: transcribe FILE.wav [--into SCORE.srv] -o OUT.srv [options]";
        return std::nullopt;
    }
    r.wave = args.positional()[0];
    r.out = *out;
    r.into = args.value("--into");
    r.notes = args.value("--notes");
    const auto at = args.number("--at");
    const auto tempo = args.number("--tempo");
    const auto minDuration = args.number("--min-duration");
    const auto cutOff = args.number("--cutoff");
    const auto k = args.number("--k");
    if (!args.ok()) {
        error = args.error();
        return std::nullopt;
    }
    const std::string method = args.value("--method").value_or("simple");
    const std::string tracker = args.value("--tracker").value_or("classic");
    const double md = minDuration.value_or(1);
    if (md != 1 && md != 2 && md != 4 && md != 8) error = "option --min-duration takes 1, 2, 4 or 8";
    else if (k && !(*k >= 1 && *k <= 9 && *k == std::floor(*k))) error = "option --k takes 1 to 9";
    else if (tempo && !(*tempo > 0 && *tempo <= 1000)) error = "option --tempo takes a tempo above 0";
    else if (at && !(*at >= 1 && *at <= core::MaxLines + 1)) error = "option --at takes a line number";
    else if (cutOff && !(*cutOff >= 0 && *cutOff <= 255)) error = "option --cutoff takes 0 to 255";
    else if (!DetectorNamed(method)) error = "option --method takes simple, women or men";
    else if (tracker != "classic" && tracker != "modern")
        error = "option --tracker takes classic or modern";
    const auto grid = GridOption(args, error);
    if (!error.empty()) return std::nullopt;
    r.at = static_cast<int>(at.value_or(4));
    r.tempo = tempo;
    r.passes.Method = *DetectorNamed(method);
    r.passes.CutOff = static_cast<int>(cutOff.value_or(10));
    r.passes.k = static_cast<int>(k.value_or(4));
    r.passes.MinDuration = static_cast<int>(md);
    r.passes.Silent = args.flag("--silent");
    r.passes.finder.grid = *grid;
    r.exact = args.flag("--exact");
    r.raw = args.flag("--raw");
    r.modern = tracker == "modern";
    return r;
}

bool WriteNoteList(const std::string& file, const std::vector<NoteRecord>& notes) {
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    for (const NoteRecord& n : notes)
        out << NumberText(n.start) << '\t' << NumberText(n.end) << '\t' << NumberText(n.frequency)
            << '\t' << NumberText(n.note) << '\n';
    return static_cast<bool>(out.flush());
}

// The score to insert into: the --into file as the open command reads it, or a new one.
int OpenTarget(const TranscribeRequest& r, const core::Session& session, core::PageStore& store,
               core::Document& doc) {
    if (r.into) {
        const app::OpenedScore opened = app::OpenScore(doc, session, &store, *r.into);
        return opened.ok() ? ExitOk : Fail(ExitIo, opened.failure);
    }
    FixedAnswers answers(core::NumberText(r.tempo.value_or(60)));
    core::NewImage(doc, answers, &store);
    return ExitOk;
}

// The three passes; the note list gets the cleaned notes, or the raw ones without pass 3.
int ClassicNotes(TranscribeRequest& r, std::string_view wave, const std::filesystem::path& folder,
                 app::TrackedNotes& tracked) {
    PassResult passes;
    tracked = app::ClassicTrack(wave, r.passes, folder, r.raw, &passes);
    if (!tracked.error.empty()) return Fail(ExitIo, tracked.error);
    if (r.notes && !WriteNoteList(*r.notes, passes.cleaned.value_or(passes.raw)))
        return Fail(ExitIo, "Can't write " + *r.notes);
    return ExitOk;
}

} // namespace

int RunPitch(const Argv& argv) {
    Args args(argv, {{}, {}});
    if (!args.ok()) return Fail(ExitUsage, args.error());
    if (args.positional().size() != 1) return Fail(ExitUsage, "usage: pitch FILE.wav");
    const std::string file = args.positional()[0];
    const auto hz = WaveFilePitch(std::filesystem::path(file));
    if (!hz) return Fail(ExitIo, "Can't read " + file);
    std::cout << NumberText(*hz) << '\n';
    return std::cout.flush() ? ExitOk : ExitIo;
}

int RunFindNote(const Argv& argv) {
    Args args(argv, {{"--period", "--rate", "--grid", "--base", "--signature"}, {}});
    const auto period = args.number("--period");
    const auto rate = args.number("--rate");
    const auto base = args.number("--base");
    if (!args.ok()) return Fail(ExitUsage, args.error());
    if (!period || !args.positional().empty())
        return Fail(ExitUsage, "usage: findnote --period P [--rate 11000] [--grid 12|24|dastgah] "
                               "[--base 440] [--signature LINE1]");
    std::string error;
    const auto grid = GridOption(args, error);
    if (!grid) return Fail(ExitUsage, error);
    NoteFinderSettings settings;
    settings.grid = *grid;
    settings.WaveRate = rate.value_or(WaveRate);
    settings.BaseFrequency = base.value_or(440);
    if (!(settings.BaseFrequency > 0) || !std::isfinite(settings.BaseFrequency))
        return Fail(ExitUsage, "option --base takes a frequency above 0");
    settings.mask = core::BuildScaleMask(args.value("--signature").value_or(""));
    const FoundNote found = FindNote(*period, settings).value_or(FoundNote{});
    std::cout << "{\"note\": " << NumberText(found.note) << ", \"errorNote\": " << found.errorNote
              << ", \"reference\": " << NumberText(found.reference) << "}\n";
    return std::cout.flush() ? ExitOk : ExitIo;
}

int RunTranscribe(const Argv& argv) {
    Args args(argv, {{"--into", "--at", "--tempo", "--min-duration", "--method", "--cutoff", "--k",
                      "--grid", "--notes", "--tracker"},
                     {"--exact", "--silent", "--raw"}});
    if (!args.ok()) return Fail(ExitUsage, args.error());
    std::string error;
    auto request = ParseTranscribe(args, error);
    if (!request) return Fail(ExitUsage, error);
    TranscribeRequest& r = *request;

    const auto bytes = ReadWaveBytes(r.wave);
    if (!bytes) return Fail(ExitIo, "Can't read " + r.wave);
    const app::Workspace workspace = app::StartWorkspace(args.value("--app-folder"));
    if (!workspace.ok()) return Fail(ExitIo, workspace.error);
    const std::filesystem::path& folder = workspace.session.AppFolder;
    core::PageStore store(core::PageStore::PathIn(folder));
    core::Document doc;
    if (const int code = OpenTarget(r, workspace.session, store, doc); code != ExitOk) return code;

    core::ScoreSheet& sheet = doc.Sheet;
    sheet.CurrentLine = std::max(r.at, 4);
    const double tempo = r.tempo.value_or(doc.CurrentTempo > 0 ? doc.CurrentTempo : 60);
    r.passes.tempo = tempo;
    r.passes.finder.mask = core::BuildScaleMask(core::SignatureAt(sheet, sheet.CurrentLine));
    app::TrackedNotes tracked;
    const std::string_view wave(reinterpret_cast<const char*>(bytes->data()), bytes->size());
    if (r.modern) {
        transcribe::NotesOptions modern;
        modern.grid = r.passes.finder.grid;
        modern.mask = r.passes.finder.mask;
        if (const int code = ModernNotes(r.wave, modern, r.notes, tracked.notes, tracked.rate);
            code != ExitOk)
            return code;
        if (r.passes.Silent && !tracked.notes.empty()) tracked.shift = tracked.notes.front().start;
    } else if (const int code = ClassicNotes(r, wave, folder, tracked); code != ExitOk) {
        return code;
    }

    if (!tracked.notes.empty()) {
        InsertOptions o;
        o.sampleRate = tracked.rate;
        o.tempo = tempo;
        o.MinDuration = r.passes.MinDuration;
        o.Exact = r.exact;
        o.TempoToSheet = r.tempo.has_value();
        o.shift = tracked.shift;
        const InsertResult inserted = InsertNotes(doc, tracked.notes, o);
        if (inserted.memoryFull) {
            Fail(ExitOk, inserted.message);
        } else if (inserted.linesInserted > 0) {
            doc.UndoTop = doc.UndoIndex += 1;
            if (!store.writePage(doc.UndoIndex, sheet)) Fail(ExitOk, "warning: " + store.error());
        }
        doc.DirtyFlag = true;
    }
    const core::SaveResult saved = core::SaveImage(doc, r.out);
    if (!saved.ok) return Fail(ExitIo, saved.message);
    return ExitOk;
}

} // namespace tahrir::cli
