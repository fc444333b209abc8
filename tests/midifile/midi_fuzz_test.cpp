// Thousands of damaged MIDI files thrown at the reader: it must end every one with a
// final line and never read outside its buffer (the sanitizer build checks the latter).

#include <gtest/gtest.h>

#include <random>

#include "midifile/microtonal_writer.h"
#include "midifile/midi_writer.h"
#include "smf_builder.h"

namespace tahrir::midifile {
namespace {

std::vector<Bytes> Seeds() {
    test::TrackBuilder a, b;
    a.meta(0, 0x03, "Tar").meta(0, 0x51, std::string("\x07\xA1\x20", 3))
        .meta(0, 0x58, std::string("\x03\x02\x18\x08", 4)).meta(0, 0x59, std::string("\x01\x00", 2)).end();
    b.event(0, {0x90, 60, 90}).event(100, {62, 80}).event(100, {0x80, 60, 0}).event(0, {0xB0, 7, 100})
        .event(0, {0xC0, 5}).event(0, {0xE0, 0, 64}).event(0, {0xF0, 2, 1, 0xF7}).end();
    std::vector<EventRecord> log;
    for (int i = 0; i < 20; ++i) log.push_back({0.1 * i, 50 + i, 2 + i % 3, i % 2 ? 0 : 90});
    return {test::BuildSmf(1, 480, {a, b}), test::BuildSmf(0, 0xE728, {b}),
            WriteMidiFile(log, 1000).bytes, WriteMicrotonalFile(log, {}).bytes};
}

bool EndsProperly(const test::Strings& lines) {
    return !lines.empty() && (lines.back() == "===== Done =====" || lines.back().rfind("[ERROR] ", 0) == 0);
}

void Mutate(Bytes& bytes, std::mt19937& rng) {
    const int edits = 1 + static_cast<int>(rng() % 8);
    for (int e = 0; e < edits && !bytes.empty(); ++e) {
        const std::size_t at = rng() % bytes.size();
        const auto pos = bytes.begin() + static_cast<std::ptrdiff_t>(at);
        switch (rng() % 6) {
        case 0: bytes[at] = static_cast<std::uint8_t>(rng()); break;
        case 1: bytes[at] ^= static_cast<std::uint8_t>(1u << (rng() % 8)); break;
        case 2: bytes.erase(pos); break;
        case 3: bytes.insert(pos, static_cast<std::uint8_t>(rng())); break;
        case 4: bytes.resize(at); break;
        default: bytes[at] = 0xFF; break; // big lengths and meta statuses
        }
    }
}

TEST(MidiFuzz, MutatedFilesAlwaysEndTheirDump) {
    std::mt19937 rng(20260521);
    const std::vector<Bytes> seeds = Seeds();
    int complete = 0;
    for (int i = 0; i < 6000; ++i) {
        Bytes bytes = seeds[i % seeds.size()];
        Mutate(bytes, rng);
        MidiFileInfo info;
        ASSERT_TRUE(EndsProperly(test::Dump(bytes, &info))) << "case " << i;
        for (const auto& track : info.MidiTracks)
            for (const MidiNote& note : track) ASSERT_GE(note.length, 0) << "case " << i;
        complete += info.complete();
    }
    EXPECT_GT(complete, 1000); // the mutations must not all be caught by the header check
}

TEST(MidiFuzz, EveryTruncationOfAValidFile) {
    for (const Bytes& seed : Seeds())
        for (std::size_t n = 0; n <= seed.size(); ++n)
            ASSERT_TRUE(EndsProperly(test::Dump(Bytes(seed.begin(), seed.begin() + n)))) << n;
}

} // namespace
} // namespace tahrir::midifile
