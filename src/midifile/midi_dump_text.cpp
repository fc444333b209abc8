#include "midifile/midi_dump_text.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <string_view>

namespace tahrir::midifile {
namespace {

void AppendInt(std::string& line, long long value) {
    char buffer[24];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    line.append(buffer, end);
}

// Most numbers of a dump line are below 1000: those take no division loop.
char* WriteInt(char* out, long long value) {
    if (value >= 0 && value < 1000) {
        const int v = static_cast<int>(value);
        if (v >= 100) *out++ = static_cast<char>('0' + v / 100);
        if (v >= 10) *out++ = static_cast<char>('0' + v / 10 % 10);
        *out++ = static_cast<char>('0' + v % 10);
        return out;
    }
    return std::to_chars(out, out + 24, value).ptr;
}

char* WriteText(char* out, std::string_view text) {
    std::memcpy(out, text.data(), text.size());
    return out + text.size();
}

void AppendHex(std::string& line, int value) {
    char buffer[8];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, 16).ptr;
    for (char* p = buffer; p != end; ++p)
        if (*p >= 'a' && *p <= 'f') *p = static_cast<char>(*p - 'a' + 'A');
    line.append(buffer, end);
}

// One row for each channel status: the text before the channel, and the labels of the two
// data bytes (none for the one-byte messages).
struct ChannelText {
    std::string_view name;
    std::string_view first;
    std::string_view second;
};

constexpr ChannelText ChannelTexts[7] = {
    {"NoteOff  ch=", " key=", " vel="},     // 0x80
    {"NoteOn   ch=", " key=", " vel="},     // 0x90
    {"PolyAT   ch=", " key=", " press="},   // 0xA0
    {"CC       ch=", " cc#=", " val="},     // 0xB0
    {"Program  ch=", " prog#=", {}},        // 0xC0
    {"ChPress  ch=", " press=", {}},        // 0xD0
    {"PitchBend ch=", " val=", {}},         // 0xE0, one 14-bit value
};

constexpr const char* MetaTextNames[8] = {
    nullptr, "Text", "Copyright", "TrackName", "Instrument", "Lyric", "Marker", "CuePoint",
};

} // namespace

char* WriteDumpPrefix(char* out, double ms, int track) {
    // Seconds with three decimals, halves rounded away from zero as the "0.000" format does.
    const long long whole = std::isfinite(ms) && ms >= 0 && ms < 1e15 ? std::llround(ms) : 0;
    out = WriteText(out, "t  ");
    out = WriteInt(out, whole / 1000);
    const int frac = static_cast<int>(whole % 1000);
    *out++ = '.';
    *out++ = static_cast<char>('0' + frac / 100);
    *out++ = static_cast<char>('0' + frac / 10 % 10);
    *out++ = static_cast<char>('0' + frac % 10);
    out = WriteText(out, "s  Tr");
    out = WriteInt(out, track);
    return WriteText(out, "  ");
}

char* WriteChannelText(char* out, int status, int d1, int d2) {
    const int kind = (status >> 4) - 8;
    if (kind < 0 || kind > 6) return WriteText(out, "Unknown ChannelMsg");
    // A note on with velocity 0 is a note off.
    const ChannelText& text = ChannelTexts[kind == 1 && d2 == 0 ? 0 : kind];
    out = WriteText(out, text.name);
    out = WriteInt(out, (status & 15) + 1);
    out = WriteText(out, text.first);
    if (kind == 6) return WriteInt(out, d1 + d2 * 128);
    out = WriteInt(out, d1);
    if (text.second.empty()) return out;
    return WriteInt(WriteText(out, text.second), d2);
}

void AppendMetaText(std::string& line, int type, std::span<const std::uint8_t> data) {
    line += "Meta ";
    if (type >= 1 && type <= 7) {
        line += MetaTextNames[type];
        line += ": ";
        line.append(data.begin(), data.end());
    } else if (type == 0x2F) {
        line += "EndOfTrack";
    } else if (type == 0x51) {
        const std::uint32_t micros = TempoMicros(data);
        line += "SetTempo: ";
        AppendInt(line, micros);
        line += " us/qn  (~";
        AppendInt(line, TempoBpm(micros));
        line += " BPM)";
    } else if (type == 0x58 && data.size() >= 4) {
        line += "TimeSig: ";
        AppendInt(line, data[0]);
        line += '/';
        AppendInt(line, data[1] < 32 ? (1LL << data[1]) : 0);
        line += "  (clks/beat=";
        AppendInt(line, data[2]);
        line += ", 32nds/24clks=";
        AppendInt(line, data[3]);
        line += ')';
    } else if (type == 0x59 && data.size() >= 2) {
        line += "KeySig: ";
        AppendInt(line, static_cast<std::int8_t>(data[0]));
        line += data[1] == 0 ? "  major" : "  minor";
    } else {
        line += "0x";
        AppendHex(line, type);
        line += " len=";
        AppendInt(line, static_cast<long long>(data.size()));
    }
}

void AppendSysExText(std::string& line, int status, std::size_t length) {
    line += status == 0xF0 ? "SysEx F0 len=" : "SysEx F7 len=";
    AppendInt(line, static_cast<long long>(length));
}

std::uint32_t TempoMicros(std::span<const std::uint8_t> data) {
    std::uint32_t micros = 0;
    for (std::size_t i = 0; i < data.size() && i < 3; ++i) micros = micros << 8 | data[i];
    return micros;
}

int TempoBpm(std::uint32_t micros) {
    if (micros == 0) return 0;
    const long long bpm = std::llround(60000000.0 / micros);
    return bpm > 32767 ? 32767 : static_cast<int>(bpm);
}

} // namespace tahrir::midifile
