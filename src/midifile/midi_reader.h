#pragma once
// The MIDI reader: parses a standard MIDI file, keeps its tempo map and the notes of each
// track, and writes a readable dump of every event, one line each.

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tahrir::midifile {

// A finished note: key, start and length in ticks.
struct MidiNote {
    int key = 0;
    std::int64_t start = 0;
    std::int64_t length = 0;
};

struct TempoEntry {
    std::int64_t tick = 0;
    std::uint32_t micros = 500000; // microseconds a quarter
};

struct TempoSegment {
    std::int64_t startTick = 0;
    double startMs = 0;
    std::uint32_t micros = 500000;
};

// How far the file was understood.
enum class ReadOutcome { Complete, Cancelled, Unreadable, NotMidi, MissingTrack };

// Where the dump goes: the list the user reads. `cancelled` is asked before every event,
// which is also where a window keeps itself responsive. A line is only lent to the sink:
// the reader reuses its text for the next one.
class DumpSink {
public:
    virtual ~DumpSink() = default;
    virtual void addLine(std::string_view line) = 0;
    // A line of printable ASCII only (the channel messages'), which needs no conversion.
    virtual void addAsciiLine(std::string_view line) { addLine(line); }
    virtual bool cancelled() { return false; }
};

// A sink that keeps the lines.
class DumpList : public DumpSink {
public:
    void addLine(std::string_view line) override { lines.emplace_back(line); }
    std::vector<std::string> lines;
};

struct MidiFileInfo {
    ReadOutcome outcome = ReadOutcome::Complete;
    int format = 0;
    int trackCount = 0;              // as the header declares it
    std::int16_t MidiDivision = 0;   // ticks a quarter, or the SMPTE word
    bool MidiUsesSmpte = false;
    double MidiMsPerTick = 0;        // SMPTE timing only
    std::vector<TempoEntry> MidiTempoMap;
    std::vector<TempoSegment> MidiTempoSegments;
    std::vector<std::vector<MidiNote>> MidiTracks; // one for each track read, track 1 first
    std::vector<std::string> trackNames;          // the first track name of each track
    int MidiTempoText = 0;        // beats a minute of the last tempo event seen
    std::string MidiRhythmText;   // "n/d" of the last time signature seen
    int unfinishedTracks = 0;     // tracks cut short or left without an end-of-track event

    bool complete() const { return outcome == ReadOutcome::Complete; }
    // Ticks a quarter for note-length decisions: 480 when the division is below 1.
    int quarterTicks() const { return MidiDivision < 1 ? 480 : MidiDivision; }
};

// Whether the notes of each track are kept in `MidiTracks`; a dump alone needs none.
enum class NoteCollection { Keep, Skip };

MidiFileInfo ReadMidiBytes(std::span<const std::uint8_t> bytes, DumpSink& sink,
                           NoteCollection notes = NoteCollection::Keep);
// Reads the whole file first; a failure writes "[ERROR] Cannot read file: " and the path.
MidiFileInfo ReadMidiFile(const std::filesystem::path& path, DumpSink& sink,
                          NoteCollection notes = NoteCollection::Keep);

// Milliseconds from the start of the file at `tick`, through the tempo segments.
double TickToMs(const MidiFileInfo& info, std::int64_t tick);

} // namespace tahrir::midifile
