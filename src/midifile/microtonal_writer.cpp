#include "midifile/microtonal_writer.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace tahrir::midifile {
namespace {

constexpr int Division = 480;

std::uint8_t Byte(int value) { return static_cast<std::uint8_t>(std::clamp(value, 0, 127)); }

void AppendChunk(Bytes& out, const char* tag, const Bytes& body) {
    out.insert(out.end(), tag, tag + 4);
    const auto n = static_cast<std::uint32_t>(body.size());
    out.insert(out.end(), {static_cast<std::uint8_t>(n >> 24), static_cast<std::uint8_t>(n >> 16),
                           static_cast<std::uint8_t>(n >> 8), static_cast<std::uint8_t>(n)});
    out.insert(out.end(), body.begin(), body.end());
}

void AppendName(Bytes& track, const std::string& name) {
    track.insert(track.end(), {0x00, 0xFF, 0x03, static_cast<std::uint8_t>(name.size())});
    track.insert(track.end(), name.begin(), name.end());
}

void AppendControl(Bytes& track, int channel, int controller, int value) {
    track.insert(track.end(), {0x00, static_cast<std::uint8_t>(0xB0 + channel), Byte(controller),
                               Byte(value)});
}

// The bend range through the registered parameter 0, then the parameter closed again, the
// program, and the standing bend where the plan has one.
void AppendChannelSetup(Bytes& track, int channel, int program, int range, int bendMsb) {
    AppendControl(track, channel, 101, 0);
    AppendControl(track, channel, 100, 0);
    AppendControl(track, channel, 6, range);
    AppendControl(track, channel, 38, 0);
    AppendControl(track, channel, 101, 127);
    AppendControl(track, channel, 100, 127);
    track.insert(track.end(), {0x00, static_cast<std::uint8_t>(0xC0 + channel), Byte(program)});
    if (bendMsb >= 0)
        track.insert(track.end(), {0x00, static_cast<std::uint8_t>(0xE0 + channel), 0x00, Byte(bendMsb)});
}

Bytes ConductorTrack(double tempo) {
    Bytes track;
    AppendName(track, "Tahrir");
    const auto micros = static_cast<std::uint32_t>(std::lround(60000000.0 / tempo));
    track.insert(track.end(), {0x00, 0xFF, 0x51, 0x03, static_cast<std::uint8_t>(micros >> 16),
                               static_cast<std::uint8_t>(micros >> 8),
                               static_cast<std::uint8_t>(micros)});
    track.insert(track.end(), {0x00, 0xFF, 0x58, 0x04, 0x04, 0x02, 0x18, 0x08});
    track.insert(track.end(), {0x00, 0xFF, 0x2F, 0x00});
    return track;
}

// The records as note ons and offs on their own channels; an error text when one of them
// cannot be written.
std::string AppendNotes(Bytes& music, const std::vector<EventRecord>& records, double tempo) {
    const double ticksPerSecond = Division * tempo / 60;
    double seconds = 0;
    long long previous = 0;
    for (std::size_t i = 0; i < records.size(); ++i) {
        const EventRecord& r = records[i];
        // Time is summed in seconds and rounded once, so that rounding never drifts.
        seconds += r.seconds;
        const double at = std::nearbyint(seconds * ticksPerSecond);
        if (!(r.seconds >= 0) || !(at < 0x0FFFFFFF))
            return RecordError(i, "has a time a MIDI file cannot hold");
        if (r.channel < 0 || r.channel > 15)
            return RecordError(i, "has channel " + std::to_string(r.channel) + ", outside 0..15");
        if (r.key < 0 || r.key > 127)
            return RecordError(i, "has key " + std::to_string(r.key) + ", outside 0..127");
        const auto tick = static_cast<long long>(at);
        AppendVlq(music, tick - previous);
        previous = tick;
        const auto key = static_cast<std::uint8_t>(r.key);
        if (r.velocity > 0)
            music.insert(music.end(), {static_cast<std::uint8_t>(0x90 + r.channel), key,
                                       static_cast<std::uint8_t>(std::clamp(r.velocity, 1, 127))});
        else
            music.insert(music.end(), {static_cast<std::uint8_t>(0x80 + r.channel), key, 0});
    }
    return {};
}

} // namespace

WriteResult WriteMicrotonalFile(const std::vector<EventRecord>& records,
                                const MicrotonalPlan& plan) {
    // Slower than 3.6 beats a minute the tempo no longer fits its three bytes.
    if (!(plan.tempo >= 3.6) || !std::isfinite(plan.tempo))
        return {{}, "Cannot write a tempo of " + std::to_string(plan.tempo) + " to a MIDI file"};
    Bytes music;
    AppendName(music, "Tahrir voices");
    const bool countIn = std::any_of(records.begin(), records.end(), [](const EventRecord& r) {
        return r.channel == CountInChannel;
    });
    for (int channel = 1; channel <= 5; ++channel) {
        const int bend = channel == 2 ? plan.koronBendMsb
                         : channel == 3 ? 64
                         : channel == 4 ? plan.soriBendMsb
                                        : -1;
        AppendChannelSetup(music, channel, plan.program, plan.bendRange, bend);
    }
    if (countIn) music.insert(music.end(), {0x00, 0xC0 + CountInChannel, Byte(plan.countInProgram)});
    if (std::string error = AppendNotes(music, records, plan.tempo); !error.empty())
        return {{}, error};
    music.insert(music.end(), {0x00, 0xFF, 0x2F, 0x00});
    WriteResult result;
    const Bytes header = {0, 1, 0, 2, Division >> 8, Division & 0xFF};
    AppendChunk(result.bytes, "MThd", header);
    AppendChunk(result.bytes, "MTrk", ConductorTrack(plan.tempo));
    AppendChunk(result.bytes, "MTrk", music);
    return result;
}

} // namespace tahrir::midifile
