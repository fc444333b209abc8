#pragma once
// A large standard MIDI file for the reader's benchmarks: `tracks` tracks of `notes` notes
// each, a track name, a tempo change every thousand notes, and running status on every
// other event.

#include <cstdint>
#include <string>
#include <vector>

namespace tahrir::bench {

inline void AppendVlq(std::vector<std::uint8_t>& out, std::uint32_t value) {
    if (value >= 128) out.push_back(static_cast<std::uint8_t>(0x80 | value >> 7));
    out.push_back(static_cast<std::uint8_t>(value & 0x7F));
}

inline std::vector<std::uint8_t> BigMidiFile(int tracks, int notes) {
    std::vector<std::uint8_t> out = {'M', 'T', 'h', 'd', 0, 0, 0, 6, 0, 1,
                                     static_cast<std::uint8_t>(tracks >> 8),
                                     static_cast<std::uint8_t>(tracks), 0x01, 0xE0};
    for (int track = 0; track < tracks; ++track) {
        const std::string name = "Track " + std::to_string(track + 1);
        std::vector<std::uint8_t> body(name.begin(), name.end());
        body.insert(body.begin(), {0x00, 0xFF, 0x03, static_cast<std::uint8_t>(name.size())});
        const auto channel = static_cast<std::uint8_t>(0x90 | (track & 15));
        for (int i = 0; i < notes; ++i) {
            if (i % 1000 == 0) body.insert(body.end(), {0x00, 0xFF, 0x51, 0x03, 0x07, 0xA1, 0x20});
            const auto key = static_cast<std::uint8_t>(36 + i % 60);
            AppendVlq(body, 60);
            body.insert(body.end(), {channel, key, 90});
            AppendVlq(body, 180);
            body.insert(body.end(), {key, 0});
        }
        body.insert(body.end(), {0x00, 0xFF, 0x2F, 0x00});
        out.insert(out.end(), {'M', 'T', 'r', 'k'});
        const auto n = static_cast<std::uint32_t>(body.size());
        out.insert(out.end(), {static_cast<std::uint8_t>(n >> 24), static_cast<std::uint8_t>(n >> 16),
                               static_cast<std::uint8_t>(n >> 8), static_cast<std::uint8_t>(n)});
        out.insert(out.end(), body.begin(), body.end());
    }
    return out;
}

} // namespace tahrir::bench
