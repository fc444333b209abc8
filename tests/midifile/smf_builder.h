#pragma once
// Builds small standard MIDI files byte by byte, and small helpers shared by the tests.

#include <cstdint>
#include <filesystem>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "midifile/midi_reader.h"
#include "midifile/midi_writer.h"

namespace tahrir::midifile::test {

using Bytes = std::vector<std::uint8_t>;
using Strings = std::vector<std::string>;

class TrackBuilder {
public:
    // A delta time as a variable-length number, then the given bytes.
    TrackBuilder& event(std::uint32_t delta, const Bytes& bytes) {
        AppendVlq(m_body, delta);
        m_body.insert(m_body.end(), bytes.begin(), bytes.end());
        return *this;
    }
    // Meta data here stays below 128 bytes, so its length is one byte.
    TrackBuilder& meta(std::uint32_t delta, std::uint8_t type, const std::string& data) {
        event(delta, {0xFF, type, static_cast<std::uint8_t>(data.size())});
        m_body.insert(m_body.end(), data.begin(), data.end());
        return *this;
    }
    TrackBuilder& end(std::uint32_t delta = 0) { return event(delta, {0xFF, 0x2F, 0x00}); }
    const Bytes& body() const { return m_body; }

private:
    Bytes m_body;
};

inline void AppendU32(Bytes& out, std::uint32_t v) {
    for (int shift = 24; shift >= 0; shift -= 8)
        out.push_back(static_cast<std::uint8_t>(v >> shift));
}

// A header with `declaredTracks` (the tracks given by default) and the track chunks.
inline Bytes BuildSmf(int format, int division, const std::vector<TrackBuilder>& tracks,
                      int declaredTracks = -1) {
    Bytes out = {'M', 'T', 'h', 'd'};
    AppendU32(out, 6);
    const int count = declaredTracks < 0 ? static_cast<int>(tracks.size()) : declaredTracks;
    out.insert(out.end(),
               {0, static_cast<std::uint8_t>(format), static_cast<std::uint8_t>(count >> 8),
                static_cast<std::uint8_t>(count), static_cast<std::uint8_t>(division >> 8),
                static_cast<std::uint8_t>(division)});
    for (const TrackBuilder& t : tracks) {
        out.insert(out.end(), {'M', 'T', 'r', 'k'});
        AppendU32(out, static_cast<std::uint32_t>(t.body().size()));
        out.insert(out.end(), t.body().begin(), t.body().end());
    }
    return out;
}

// A file of the corpus under tests/data/midifile, whose dump is pinned beside it.
inline std::filesystem::path CorpusFile(const std::string& name) {
    return std::filesystem::path(TAHRIR_TEST_DATA) / "midifile/corpus" / name;
}

// The dump lines of `bytes`, and optionally what the reader collected.
inline Strings Dump(const Bytes& bytes, MidiFileInfo* info = nullptr) {
    DumpList list;
    MidiFileInfo read = ReadMidiBytes(bytes, list);
    if (info) *info = std::move(read);
    return list.lines;
}

// What the reader collects from `bytes`.
inline MidiFileInfo Info(const Bytes& bytes) {
    MidiFileInfo info;
    Dump(bytes, &info);
    return info;
}

// Each note of a track as {key, start, length}.
using NoteList = std::vector<std::tuple<int, std::int64_t, std::int64_t>>;
inline NoteList Notes(const std::vector<MidiNote>& track) {
    NoteList notes;
    for (const MidiNote& n : track)
        notes.emplace_back(n.key, n.start, n.length);
    return notes;
}

// The lines of a text, each without a trailing carriage return.
inline Strings Lines(const std::string& text) {
    Strings lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

// How many of `lines` contain `part`.
inline std::size_t Count(const Strings& lines, const std::string& part) {
    std::size_t n = 0;
    for (const auto& l : lines)
        n += l.find(part) != std::string::npos;
    return n;
}

inline std::string Quote(const std::string& arg) {
    std::string out = "'";
    for (char c : arg)
        out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return out + "'";
}

} // namespace tahrir::midifile::test
