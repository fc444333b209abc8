#include "midifile/midi_dump_text.h"

#include <charconv>
#include <cmath>

namespace tahrir::midifile {
namespace {

void AppendInt(std::string& line, long long value) {
    char buffer[24];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    line.append(buffer, end);
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
    const char* name;
    const char* first;
    const char* second;
};

constexpr ChannelText ChannelTexts[7] = {
    {"NoteOff  ch=", " key=", " vel="},     // 0x80
    {"NoteOn   ch=", " key=", " vel="},     // 0x90
    {"PolyAT   ch=", " key=", " press="},   // 0xA0
    {"CC       ch=", " cc#=", " val="},     // 0xB0
    {"Program  ch=", " prog#=", nullptr},   // 0xC0
    {"ChPress  ch=", " press=", nullptr},   // 0xD0
    {"PitchBend ch=", " val=", nullptr},    // 0xE0, one 14-bit value
};

constexpr const char* MetaTextNames[8] = {
    nullptr, "Text", "Copyright", "TrackName", "Instrument", "Lyric", "Marker", "CuePoint",
};

} // namespace

void AppendDumpPrefix(std::string& line, double ms, int track) {
    // Seconds with three decimals, halves rounded away from zero as the "0.000" format does.
    const long long whole = std::isfinite(ms) && ms >= 0 && ms < 1e15 ? std::llround(ms) : 0;
    line += "t  ";
    AppendInt(line, whole / 1000);
    const int frac = static_cast<int>(whole % 1000);
    line += '.';
    line += static_cast<char>('0' + frac / 100);
    line += static_cast<char>('0' + frac / 10 % 10);
    line += static_cast<char>('0' + frac % 10);
    line += "s  Tr";
    AppendInt(line, track);
    line += "  ";
}

void AppendChannelText(std::string& line, int status, int d1, int d2) {
    const int kind = (status >> 4) - 8;
    if (kind < 0 || kind > 6) {
        line += "Unknown ChannelMsg";
        return;
    }
    // A note on with velocity 0 is a note off.
    const ChannelText& text = ChannelTexts[kind == 1 && d2 == 0 ? 0 : kind];
    line += text.name;
    AppendInt(line, (status & 15) + 1);
    line += text.first;
    if (kind == 6) {
        AppendInt(line, d1 + d2 * 128);
        return;
    }
    AppendInt(line, d1);
    if (text.second == nullptr) return;
    line += text.second;
    AppendInt(line, d2);
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
