#include "midifile/midi_reader.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <memory>

#include "midifile/midi_dump_text.h"

namespace tahrir::midifile {
namespace {

using ByteSpan = std::span<const std::uint8_t>;

// Reads forward inside [pos, end) and never beyond; every read says whether it succeeded.
struct Cursor {
    ByteSpan bytes;
    std::size_t pos = 0;

    bool atEnd() const { return pos >= bytes.size(); }
    bool byte(std::uint8_t& out) {
        if (atEnd()) return false;
        out = bytes[pos++];
        return true;
    }
    // A variable-length number of at most four bytes.
    bool vlq(std::uint32_t& out) {
        out = 0;
        for (int i = 0; i < 4; ++i) {
            std::uint8_t b = 0;
            if (!byte(b)) return false;
            out = out << 7 | (b & 0x7F);
            if ((b & 0x80) == 0) return true;
        }
        return true;
    }
    // `length` bytes, or what is left of them when the input is shorter.
    ByteSpan take(std::uint32_t length) {
        const std::size_t n = std::min<std::size_t>(length, bytes.size() - std::min(pos, bytes.size()));
        const ByteSpan out = bytes.subspan(pos, n);
        pos += n;
        return out;
    }
};

std::uint32_t BigEndian(ByteSpan bytes, std::size_t at, int count) {
    std::uint32_t value = 0;
    for (int i = 0; i < count; ++i) value = value << 8 | bytes[at + i];
    return value;
}

bool HasTag(ByteSpan bytes, std::size_t at, const char* tag) {
    if (at > bytes.size() || bytes.size() - at < 4) return false;
    return std::equal(tag, tag + 4, bytes.begin() + static_cast<std::ptrdiff_t>(at));
}

// One decoded event of a track.
struct Event {
    std::int64_t tick = 0;
    int status = 0;     // 0 when a data byte came with no running status
    int d1 = 0, d2 = 0; // channel message data
    int metaType = -1;  // for FF
    ByteSpan data;      // meta or system exclusive data
};

// Walks the events of one track body, calling `visit(event)` for each; `visit` returns
// false to stop. The walk ends at the end of the body, at FF 2F, at a truncated event or
// at a status byte that cannot be decoded; true only when it ended at FF 2F.
template <typename Visit>
bool WalkTrack(ByteSpan body, Visit&& visit) {
    Cursor in{body};
    Event e;
    int running = 0;
    while (!in.atEnd()) {
        std::uint32_t delta = 0;
        std::uint8_t first = 0;
        if (!in.vlq(delta) || !in.byte(first)) return false;
        e.tick += delta;
        e.metaType = -1;
        e.data = {};
        if (first & 0x80) {
            e.status = first;
            if (first < 0xF0) running = first;
        } else {
            e.status = running;
            --in.pos; // the byte was data
        }
        bool decodable = true;
        if (e.status == 0xFF) {
            std::uint8_t type = 0;
            std::uint32_t length = 0;
            if (!in.byte(type) || !in.vlq(length)) return false;
            e.metaType = type;
            e.data = in.take(length);
            if (e.data.size() < length) return false;
        } else if (e.status == 0xF0 || e.status == 0xF7) {
            std::uint32_t length = 0;
            if (!in.vlq(length)) return false;
            e.data = in.take(length);
            if (e.data.size() < length) return false;
        } else if (e.status >= 0x80 && e.status < 0xF0) {
            std::uint8_t d1 = 0, d2 = 0;
            const bool oneByte = e.status >= 0xC0 && e.status < 0xE0;
            if (!in.byte(d1) || (!oneByte && !in.byte(d2))) return false;
            e.d1 = d1;
            e.d2 = oneByte ? 0 : d2;
        } else {
            decodable = false;
        }
        if (!visit(e) || !decodable) return false;
        if (e.metaType == 0x2F) return true;
    }
    return false;
}

struct TrackRange {
    std::size_t begin = 0, end = 0;
    std::size_t noteOns = 0; // counted by the first pass, so the notes are allocated once
};

// Finds the track chunks the header announces; false at the first one missing.
bool FindTracks(ByteSpan bytes, std::size_t at, int count, std::vector<TrackRange>& tracks,
                DumpSink& sink) {
    for (int t = 1; t <= count; ++t) {
        if (!HasTag(bytes, at, "MTrk") || bytes.size() - at < 8) {
            sink.addLine("[ERROR] Missing MTrk at track " + std::to_string(t));
            return false;
        }
        const std::size_t begin = at + 8;
        const std::size_t length = BigEndian(bytes, at + 4, 4);
        const std::size_t end = std::min(bytes.size(), begin + length);
        tracks.push_back({begin, end});
        at = end;
    }
    return true;
}

void CollectTempos(ByteSpan bytes, std::vector<TrackRange>& tracks, MidiFileInfo& info) {
    info.MidiTempoMap.assign(1, TempoEntry{});
    for (TrackRange& range : tracks) {
        WalkTrack(bytes.subspan(range.begin, range.end - range.begin), [&](const Event& e) {
            if (e.metaType == 0x51) info.MidiTempoMap.push_back({e.tick, TempoMicros(e.data)});
            range.noteOns += (e.status & 0xF0) == 0x90 && e.d2 > 0;
            return true;
        });
    }
    std::stable_sort(info.MidiTempoMap.begin(), info.MidiTempoMap.end(),
                     [](const TempoEntry& a, const TempoEntry& b) { return a.tick < b.tick; });
    const double division = info.quarterTicks();
    double ms = 0;
    for (std::size_t i = 0; i < info.MidiTempoMap.size(); ++i) {
        const TempoEntry& entry = info.MidiTempoMap[i];
        if (i > 0) {
            const TempoEntry& before = info.MidiTempoMap[i - 1];
            ms += static_cast<double>(entry.tick - before.tick) / division * before.micros / 1000;
        }
        info.MidiTempoSegments.push_back({entry.tick, ms, entry.micros});
    }
}

// Note pairing: one stack of open starts for each key of the track.
class OpenNoteStacks {
public:
    void noteOn(int key, std::int64_t tick) { m_stacks[key & 255].push_back(tick); }
    void noteOff(int key, std::int64_t tick, std::vector<MidiNote>& notes) {
        auto& stack = m_stacks[key & 255];
        if (stack.empty()) return;
        notes.push_back({key, stack.back(), tick - stack.back()});
        stack.pop_back();
    }

private:
    std::array<std::vector<std::int64_t>, 256> m_stacks;
};

// What a meta event tells the import: the track's first name, the last tempo and the
// last measure seen.
void NoteMeta(const Event& e, MidiFileInfo& info, bool& named) {
    if (e.metaType == 0x03 && !named) {
        info.trackNames.back().assign(e.data.begin(), e.data.end());
        named = true;
    } else if (e.metaType == 0x51 && TempoMicros(e.data) > 0) {
        info.MidiTempoText = TempoBpm(TempoMicros(e.data));
    } else if (e.metaType == 0x58 && e.data.size() >= 2) {
        info.MidiRhythmText = std::to_string(e.data[0]) + "/" +
                              std::to_string(e.data[1] < 32 ? (1LL << e.data[1]) : 0);
    }
}

// Milliseconds of ticks that come in order, as in one track: the tempo segment is found by
// stepping on from the last one, with the same result as TickToMs.
class TrackClock {
public:
    explicit TrackClock(const MidiFileInfo& info) : m_info(info) {}
    double ms(std::int64_t tick) {
        const auto& segments = m_info.MidiTempoSegments;
        if (m_info.MidiUsesSmpte || segments.empty() || tick < segments[m_at].startTick)
            return TickToMs(m_info, tick);
        while (m_at + 1 < segments.size() && segments[m_at + 1].startTick <= tick) ++m_at;
        const TempoSegment& s = segments[m_at];
        return s.startMs + static_cast<double>(tick - s.startTick) / m_info.quarterTicks() * s.micros / 1000;
    }

private:
    const MidiFileInfo& m_info;
    std::size_t m_at = 0;
};

// One track of the second pass.
struct TrackJob {
    ByteSpan body;
    int number = 0;      // from 1, as the dump prints it
    bool keepNotes = true;
    std::size_t noteOns = 0;
};

// Second pass over one track: the dump lines, the notes and the names; `line` is the
// buffer each line is built in. False when the user cancelled.
bool DumpTrack(const TrackJob& job, MidiFileInfo& info, DumpSink& sink, std::string& line) {
    OpenNoteStacks stacks;
    TrackClock clock(info);
    std::vector<MidiNote>& notes = info.MidiTracks.emplace_back();
    if (job.keepNotes) notes.reserve(job.noteOns);
    info.trackNames.emplace_back();
    bool named = false;
    bool cancelled = false;
    const bool ended = WalkTrack(job.body, [&](const Event& e) {
        if (sink.cancelled()) {
            cancelled = true;
            return false;
        }
        // Channel lines, nearly all of a file, are written whole into `head`.
        char head[2 * DumpFieldMax];
        char* end = WriteDumpPrefix(head, clock.ms(e.tick), job.number);
        const int kind = e.status & 0xF0;
        if (e.metaType >= 0 || e.status == 0xF0 || e.status == 0xF7) {
            line.assign(head, end);
            if (e.metaType >= 0)
                AppendMetaText(line, e.metaType, e.data);
            else
                AppendSysExText(line, e.status, e.data.size());
            if (e.metaType >= 0) NoteMeta(e, info, named);
            sink.addLine(line);
            return true;
        }
        end = WriteChannelText(end, e.status, e.d1, e.d2);
        const bool noteOn = kind == 0x90 && e.d2 > 0;
        if (job.keepNotes && noteOn)
            stacks.noteOn(e.d1, e.tick);
        else if (job.keepNotes && (kind == 0x80 || kind == 0x90))
            stacks.noteOff(e.d1, e.tick, notes);
        sink.addAsciiLine({head, static_cast<std::size_t>(end - head)});
        return true;
    });
    if (cancelled) {
        sink.addLine("Terminated");
        return false;
    }
    if (!ended) ++info.unfinishedTracks;
    return true;
}

// The header lines; false when the bytes are not a MIDI file.
bool ReadHeader(ByteSpan bytes, MidiFileInfo& info, std::size_t& firstTrack, DumpSink& sink) {
    if (!HasTag(bytes, 0, "MThd") || bytes.size() < 14) {
        sink.addLine("[ERROR] Not a standard MIDI file (missing MThd)");
        return false;
    }
    const std::uint64_t headerLength = BigEndian(bytes, 4, 4);
    info.format = static_cast<int>(BigEndian(bytes, 8, 2));
    info.trackCount = static_cast<int>(BigEndian(bytes, 10, 2));
    info.MidiDivision = static_cast<std::int16_t>(BigEndian(bytes, 12, 2));
    firstTrack = static_cast<std::size_t>(
        std::min<std::uint64_t>(bytes.size(), 14 + (headerLength > 6 ? headerLength - 6 : 0)));
    sink.addLine("===== MIDI Header =====");
    sink.addLine("Format: " + std::to_string(info.format) + ", Tracks: " +
                 std::to_string(info.trackCount) + ", Division: " +
                 std::to_string(info.MidiDivision));
    if (info.MidiDivision < 0) {
        info.MidiUsesSmpte = true;
        const int fps = -static_cast<std::int8_t>(info.MidiDivision >> 8);
        const int ticksPerFrame = info.MidiDivision & 0xFF;
        if (fps == 0 || ticksPerFrame == 0) {
            sink.addLine("[WARN] Invalid SMPTE division; timing may be incorrect.");
        } else {
            info.MidiMsPerTick = 1000.0 / (fps * ticksPerFrame);
            sink.addLine("Timing: SMPTE " + std::to_string(fps) + " fps, " +
                         std::to_string(ticksPerFrame) + " ticks/frame");
        }
    } else {
        sink.addLine("Timing: PPQN = " + std::to_string(info.MidiDivision));
    }
    return true;
}

// The bytes of a regular file in one block left uninitialised before the read; null when
// the file cannot be read. A file that changes meanwhile is read as far as it goes.
std::unique_ptr<std::uint8_t[]> ReadWholeFile(const std::filesystem::path& path, std::size_t& size) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) return nullptr;
    std::ifstream in(path, std::ios::binary);
    const std::uintmax_t expected = std::filesystem::file_size(path, error);
    if (!in.is_open() || error) return nullptr;
    auto bytes = std::make_unique_for_overwrite<std::uint8_t[]>(static_cast<std::size_t>(expected));
    in.read(reinterpret_cast<char*>(bytes.get()), static_cast<std::streamsize>(expected));
    size = static_cast<std::size_t>(in.gcount());
    if (in.bad()) return nullptr;
    return bytes;
}

} // namespace

MidiFileInfo ReadMidiBytes(std::span<const std::uint8_t> bytes, DumpSink& sink, NoteCollection notes) {
    MidiFileInfo info;
    std::size_t at = 0;
    if (!ReadHeader(bytes, info, at, sink)) {
        info.outcome = ReadOutcome::NotMidi;
        return info;
    }
    std::vector<TrackRange> tracks;
    if (!FindTracks(bytes, at, info.trackCount, tracks, sink)) {
        info.outcome = ReadOutcome::MissingTrack;
        return info;
    }
    CollectTempos(bytes, tracks, info);
    sink.addLine("===== Tracks =====");
    std::string line; // one buffer for every event line
    line.reserve(128);
    for (std::size_t t = 0; t < tracks.size(); ++t) {
        const TrackJob job{bytes.subspan(tracks[t].begin, tracks[t].end - tracks[t].begin),
                           static_cast<int>(t) + 1, notes == NoteCollection::Keep, tracks[t].noteOns};
        if (!DumpTrack(job, info, sink, line)) {
            info.outcome = ReadOutcome::Cancelled;
            return info;
        }
    }
    sink.addLine("===== Done =====");
    return info;
}

MidiFileInfo ReadMidiFile(const std::filesystem::path& path, DumpSink& sink, NoteCollection notes) {
    std::size_t size = 0;
    const auto bytes = ReadWholeFile(path, size);
    if (!bytes) {
        sink.addLine("[ERROR] Cannot read file: " + path.string());
        MidiFileInfo info;
        info.outcome = ReadOutcome::Unreadable;
        return info;
    }
    return ReadMidiBytes(ByteSpan(bytes.get(), size), sink, notes);
}

double TickToMs(const MidiFileInfo& info, std::int64_t tick) {
    if (info.MidiUsesSmpte) return static_cast<double>(tick) * info.MidiMsPerTick;
    const double division = info.quarterTicks();
    const auto& segments = info.MidiTempoSegments;
    if (segments.empty()) return static_cast<double>(tick) / division * 500000 / 1000;
    auto after = std::upper_bound(segments.begin(), segments.end(), tick,
                                  [](std::int64_t t, const TempoSegment& s) { return t < s.startTick; });
    if (after == segments.begin()) after = std::next(after); // a tick before the first segment
    const TempoSegment& s = *std::prev(after);
    return s.startMs + static_cast<double>(tick - s.startTick) / division * s.micros / 1000;
}

} // namespace tahrir::midifile
