#include "play/midi_message.h"

namespace tahrir::play {

namespace {

// The 16-bit arguments summed as plain integers; the word keeps the low 32 bits.
std::uint32_t Pack(int status, int data1, int data2, int channel) {
    const auto word = static_cast<std::int64_t>(static_cast<std::int16_t>(data1)) * 256 + status +
                      static_cast<std::int64_t>(static_cast<std::int16_t>(data2)) * 65536 +
                      static_cast<std::int16_t>(channel);
    return static_cast<std::uint32_t>(word);
}

// Data bytes that follow each status nibble 0x8 to 0xE.
constexpr int kDataBytes[7] = {2, 2, 2, 2, 1, 1, 2};

int SystemDataBytes(std::uint8_t status) {
    switch (status) {
    case 0xF1:
    case 0xF3:
        return 1;
    case 0xF2:
        return 2;
    default:
        return status >= 0xF8 ? 0 : -1; // real-time bytes stand alone; others are unsendable
    }
}

} // namespace

std::uint32_t PackNoteOn(int note, int velocity, int channel) {
    return Pack(144, note, velocity, channel);
}
std::uint32_t PackNoteOff(int note, int channel) {
    return Pack(128, note, 0, channel);
}
std::uint32_t PackControlChange(int controller, int value, int channel) {
    return Pack(176, controller, value, channel);
}
std::uint32_t PackProgramChange(int program, int channel) {
    return Pack(192, program, 0, channel);
}
std::uint32_t PackPitchBend(int lsb, int msb, int channel) {
    return Pack(224, lsb, msb, channel);
}

WireMessage Unpack(std::uint32_t message) {
    WireMessage wire{{static_cast<std::uint8_t>(message & 0xFF),
                      static_cast<std::uint8_t>((message >> 8) & 0x7F),
                      static_cast<std::uint8_t>((message >> 16) & 0x7F)},
                     0};
    const std::uint8_t status = wire.bytes[0];
    int data = -1;
    if (status >= 0x80 && status < 0xF0)
        data = kDataBytes[(status >> 4) - 8];
    else if (status >= 0xF0)
        data = SystemDataBytes(status);
    wire.length = data < 0 ? 0 : data + 1;
    return wire;
}

std::vector<std::uint32_t> RecordingSink::messages() const {
    std::vector<std::uint32_t> out;
    out.reserve(m_entries.size());
    for (const Entry& e : m_entries)
        out.push_back(e.message);
    return out;
}

} // namespace tahrir::play
