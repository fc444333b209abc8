// `notes`: the transcriber for real recordings, one note a line or as JSON.

#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>

#include "cli/cli_args.h"
#include "cli/commands.h"
#include "cli/notes_options.h"
#include "transcribe/recording_notes.h"

namespace tahrir::cli {
namespace {

using transcribe::RecordingTranscript;

std::string Fixed(double v, int digits) {
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.*f", digits, v);
    return buf;
}

std::string NoteText(double note) {
    return std::abs(note - std::round(note)) < 1e-9 ? Fixed(note, 0) : Fixed(note, 1);
}

std::string NoteLines(const RecordingTranscript& t) {
    std::string out;
    for (const auto& n : t.notes)
        out += Fixed(n.onset, 3) + '\t' + Fixed(n.offset, 3) + '\t' + Fixed(n.hz, 2) + '\t' +
               NoteText(n.note) + '\n';
    return out;
}

std::string NotesJson(const RecordingTranscript& t) {
    std::string out = "{\"rate\": " + std::to_string(t.fileRate) + ", \"notes\": [";
    for (std::size_t i = 0; i < t.notes.size(); ++i) {
        const auto& n = t.notes[i];
        out += (i ? ", " : "") + std::string("{\"onset\": ") + Fixed(n.onset, 3) +
               ", \"offset\": " + Fixed(n.offset, 3) + ", \"hz\": " + Fixed(n.hz, 2) +
               ", \"note\": " + NoteText(n.note) + "}";
    }
    return out + "]}\n";
}

std::string FrameLines(const RecordingTranscript& t) {
    std::string out;
    for (const auto& f : t.frames)
        out += Fixed(f.seconds, 4) + '\t' + Fixed(f.hz, 2) + '\t' + Fixed(f.voicedProbability, 3) +
               '\n';
    return out;
}

bool WriteText(const std::string& path, const std::string& text) {
    std::ofstream out(path, std::ios::binary);
    out << text;
    return static_cast<bool>(out.flush());
}

} // namespace

int ModernNotes(const std::string& file, const transcribe::NotesOptions& options,
                const std::optional<std::string>& noteList,
                std::vector<transcribe::TimedNote>& notes, double& rate) {
    std::string error;
    const auto transcript = transcribe::TranscribeRecording(file, options, error);
    if (!transcript) return Fail(ExitIo, error);
    if (noteList && !WriteText(*noteList, NoteLines(*transcript)))
        return Fail(ExitIo, "cannot write " + *noteList);
    rate = transcript->fileRate;
    for (const auto& n : transcript->notes)
        notes.push_back({n.onset * rate, n.offset * rate, n.note, false});
    return ExitOk;
}

int RunNotes(const Argv& argv) {
    Args args(argv, {{"--grid", "--signature", "--base", "--koron", "--sori", "-o", "--frames"},
                     {"--json"}});
    const auto options = args.ok() ? ParseNotesOptions(args) : std::nullopt;
    if (!args.ok() || !options || args.positional().size() != 1)
        return Fail(ExitUsage, args.ok() && args.positional().size() == 1
                                   ? "--grid takes 12, 24 or dastgah; --base, --koron and "
                                     "--sori take numbers in range"
                                   : "usage: notes FILE [--grid 12|24|dastgah] [--signature "
                                     "LINE1] [--base HZ] [--koron C] [--sori C] [-o OUT.txt] "
                                     "[--json] [--frames OUT.txt]");
    const std::string file = args.positional()[0];
    std::string error;
    const auto transcript = transcribe::TranscribeRecording(file, *options, error);
    if (!transcript) return Fail(ExitIo, error);
    if (const auto frames = args.value("--frames"); frames && !WriteText(*frames, FrameLines(*transcript)))
        return Fail(ExitIo, "cannot write " + *frames);
    const std::string text = args.flag("--json") ? NotesJson(*transcript) : NoteLines(*transcript);
    if (const auto out = args.value("-o")) {
        if (!WriteText(*out, text)) return Fail(ExitIo, "cannot write " + *out);
    } else {
        std::cout << text;
    }
    return ExitOk;
}

} // namespace tahrir::cli
