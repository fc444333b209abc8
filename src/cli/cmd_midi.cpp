// MIDI files from the command line: the reader's dump and the import of one track.

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <optional>

#include "cli/cli_args.h"
#include "cli/commands.h"
#include "core/cp1256.h"
#include "midifile/midi_import.h"
#include "midifile/midi_reader.h"

namespace tahrir::cli {
namespace {

using namespace tahrir::midifile;

// Prints the dump through one buffer written out in large blocks; text events may hold
// line breaks, which would split one dump line into two.
class PrintedDump : public DumpSink {
public:
    PrintedDump() { m_buffer.reserve(kBlock + 4096); }
    ~PrintedDump() override { flush(); }
    void addLine(std::string_view line) override {
        const bool plain = std::none_of(line.begin(), line.end(), [](char c) {
            return static_cast<unsigned char>(c) >= 128 || c == '\r' || c == '\n';
        });
        const std::size_t from = m_buffer.size();
        if (plain) {
            m_buffer += line;
        } else {
            core::AppendCp1256AsUtf8(m_buffer, line);
            std::replace_if(m_buffer.begin() + static_cast<std::ptrdiff_t>(from), m_buffer.end(),
                            [](char c) { return c == '\r' || c == '\n'; }, ' ');
        }
        m_buffer += '\n';
        if (m_buffer.size() >= kBlock) flush();
    }
    void addAsciiLine(std::string_view line) override {
        m_buffer += line;
        m_buffer += '\n';
        if (m_buffer.size() >= kBlock) flush();
    }
    void flush() {
        std::fwrite(m_buffer.data(), 1, m_buffer.size(), stdout);
        m_buffer.clear();
    }

private:
    static constexpr std::size_t kBlock = 1 << 16;
    std::string m_buffer;
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
    void addLine(std::string_view) override {}
};

} // namespace

int RunDumpMidi(const Argv& argv) {
    Args args(argv, {});
    if (!args.ok()) return Fail(ExitUsage, args.error());
    if (args.positional().size() != 1) return Fail(ExitUsage, "usage: dump-midi FILE.mid");
    const std::string& file = args.positional()[0];
    PrintedDump dump;
    const MidiFileInfo info = ReadMidiFile(file, dump, NoteCollection::Skip);
    dump.flush();
    std::fflush(stdout);
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
