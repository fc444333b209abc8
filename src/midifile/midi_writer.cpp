#include "midifile/midi_writer.h"

#include <cmath>
#include <fstream>

namespace tahrir::midifile {
namespace {

constexpr std::uint8_t TempoFiller = 161; // stands after a two-byte tempo value
constexpr std::size_t TrackLengthEnd = 22;  // bytes up to and including the length field

void Append(Bytes& out, std::initializer_list<std::uint8_t> bytes) {
    out.insert(out.end(), bytes);
}

void AppendText(Bytes& out, std::string_view text) { out.insert(out.end(), text.begin(), text.end()); }

// FF 51 with the length forms the program writes; false for a tempo it cannot express.
bool AppendTempo(Bytes& out, double tempo) {
    if (!(tempo > 0) || !std::isfinite(tempo)) return false;
    const double micros = std::trunc(60000000.0 / tempo);
    if (micros >= 16777216.0) return false;
    const auto value = static_cast<std::uint32_t>(micros);
    Append(out, {0x00, 0xFF, 0x51});
    if (value < 256) {
        Append(out, {1, static_cast<std::uint8_t>(value)});
    } else if (value < 65536) {
        Append(out, {2, static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value),
                     TempoFiller});
    } else {
        Append(out, {3, static_cast<std::uint8_t>(value >> 16),
                     static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)});
    }
    return true;
}

} // namespace

std::string RecordError(std::size_t index, const std::string& what) {
    return "Event " + std::to_string(index + 1) + " of the play log " + what;
}

bool AppendVlq(Bytes& out, long long value) {
    if (value < 0 || value > 0x0FFFFFFF) return false;
    std::uint8_t groups[4];
    int n = 0;
    do {
        groups[n++] = static_cast<std::uint8_t>(value & 0x7F);
        value >>= 7;
    } while (value > 0);
    while (n > 1)
        out.push_back(static_cast<std::uint8_t>(groups[--n] | 0x80));
    out.push_back(groups[0]);
    return true;
}

bool AppendDelta(Bytes& out, long long value) {
    return value < 2097152 && AppendVlq(out, value);
}

long long SecondsToTicks(double seconds, double tempo) {
    const double ticks = std::nearbyint(seconds * 8 * tempo);
    if (!std::isfinite(ticks) || ticks > 1e15 || ticks < -1e15) return -1;
    return static_cast<long long>(ticks);
}

WriteResult WriteMidiFile(const std::vector<EventRecord>& records, double tempo) {
    WriteResult result;
    Bytes& out = result.bytes;
    AppendText(out, "MThd");
    Append(out, {0, 0, 0, 6, 0, 1, 0, 1, 0x01, 0xE0});
    AppendText(out, "MTrk");
    Append(out, {0, 0, 0, 0x40});
    Append(out, {0x00, 0xFF, 0x03, 0x07});
    AppendText(out, "Track 1");
    Append(out, {0x00, 0xC0, 0x35});
    if (!AppendTempo(out, tempo)) {
        result.error = "Cannot write a tempo of " + std::to_string(tempo) + " to a MIDI file";
        return result;
    }
    // 4/4 and 24 clocks a beat, with 32 in the last field whatever the score's measure.
    Append(out, {0x00, 0xFF, 0x58, 0x04, 0x04, 0x02, 0x18, 0x20});
    for (std::size_t i = 0; i < records.size(); ++i) {
        const EventRecord& r = records[i];
        const long long ticks = SecondsToTicks(r.seconds, tempo);
        if (ticks < 0) return {{}, RecordError(i, "has a negative or invalid time")};
        if (!AppendDelta(out, ticks))
            return {{}, RecordError(i, "waits " + std::to_string(ticks) +
                                           " ticks, more than a MIDI file can hold")};
        if (r.key < 0 || r.key > 127)
            return {{}, RecordError(i, "has key " + std::to_string(r.key) + ", outside 0..127")};
        const auto key = static_cast<std::uint8_t>(r.key);
        if (r.velocity > 0)
            Append(out, {144, key, 64});
        else
            Append(out, {128, key, 32});
    }
    Append(out, {0x00, 0xFF, 0x2F, 0x00});
    // The length is patched in its two low bytes, as always; a track beyond 65535 bytes
    // also gets the upper two so that the file stays readable.
    const std::size_t length = out.size() - TrackLengthEnd;
    out[21] = static_cast<std::uint8_t>(length);
    out[20] = static_cast<std::uint8_t>(length >> 8);
    out[19] = static_cast<std::uint8_t>(length >> 16);
    out[18] = static_cast<std::uint8_t>(length >> 24);
    return result;
}

bool SaveBytes(const std::filesystem::path& path, const Bytes& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out) return false;
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(out.flush());
}

std::string WriteTestMid(const std::filesystem::path& appFolder, double tempo) {
    const EventLog log = ReadEventLog(appFolder / EventLogName);
    const WriteResult result = WriteMidiFile(log.records, tempo);
    if (!result.ok()) return result.error;
    const auto target = appFolder / TestMidName;
    if (!SaveBytes(target, result.bytes)) return "Cannot write " + target.string();
    return {};
}

} // namespace tahrir::midifile
