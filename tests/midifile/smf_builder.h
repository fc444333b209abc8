#pragma once
// Builds small standard MIDI files byte by byte for the tests.

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

namespace tahrir::midifile::test {

using Bytes = std::vector<std::uint8_t>;

class TrackBuilder {
public:
    // A delta time as a variable-length number, then the given bytes.
    TrackBuilder& event(std::uint32_t delta, std::initializer_list<std::uint8_t> bytes) {
        vlq(delta);
        m_body.insert(m_body.end(), bytes);
        return *this;
    }
    TrackBuilder& meta(std::uint32_t delta, std::uint8_t type, const std::string& data) {
        event(delta, {0xFF, type});
        vlq(static_cast<std::uint32_t>(data.size()));
        m_body.insert(m_body.end(), data.begin(), data.end());
        return *this;
    }
    TrackBuilder& end(std::uint32_t delta = 0) { return event(delta, {0xFF, 0x2F, 0x00}); }
    const Bytes& body() const { return m_body; }

private:
    void vlq(std::uint32_t value) {
        Bytes groups;
        do {
            groups.insert(groups.begin(), static_cast<std::uint8_t>(value & 0x7F));
            value >>= 7;
        } while (value > 0);
        for (std::size_t i = 0; i + 1 < groups.size(); ++i) groups[i] |= 0x80;
        m_body.insert(m_body.end(), groups.begin(), groups.end());
    }
    Bytes m_body;
};

inline void AppendU32(Bytes& out, std::uint32_t v) {
    out.insert(out.end(), {static_cast<std::uint8_t>(v >> 24), static_cast<std::uint8_t>(v >> 16),
                           static_cast<std::uint8_t>(v >> 8), static_cast<std::uint8_t>(v)});
}

// A header with `declaredTracks` (the tracks given by default) and the track chunks.
inline Bytes BuildSmf(int format, int division, const std::vector<TrackBuilder>& tracks,
                      int declaredTracks = -1) {
    Bytes out = {'M', 'T', 'h', 'd'};
    AppendU32(out, 6);
    const int count = declaredTracks < 0 ? static_cast<int>(tracks.size()) : declaredTracks;
    out.insert(out.end(), {0, static_cast<std::uint8_t>(format), static_cast<std::uint8_t>(count >> 8),
                           static_cast<std::uint8_t>(count), static_cast<std::uint8_t>(division >> 8),
                           static_cast<std::uint8_t>(division)});
    for (const TrackBuilder& t : tracks) {
        out.insert(out.end(), {'M', 'T', 'r', 'k'});
        AppendU32(out, static_cast<std::uint32_t>(t.body().size()));
        out.insert(out.end(), t.body().begin(), t.body().end());
    }
    return out;
}

} // namespace tahrir::midifile::test
