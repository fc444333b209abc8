// Thousands of random and mutated files through the reader: no crash, no hang, and the
// sheet always within its bounds.

#include <gtest/gtest.h>

#include <random>

#include "core/score_reader.h"
#include "score_files.h"

using namespace tahrir::core;
using namespace tahrir::test;

namespace {

const std::string kSeeds[] = {
    Sv5File("d\r\nx", {"       G", "TEMPO 60", "RHYTM4/4", "03 -1", "L^Ms=1", "13  8 CTR", "",
                       "ALL5D", "REP{", "LCTRP=2"}),
    MarkerFile("old", {"DD     G", "TEMPO-2", "RHITHM6/8", "03  8", "13 -1"}),
    OldestFile("\x92\x90<(\xF2)", {ScrambleLine("       G"), ScrambleLine("TEMPO 60"), "\"\" \""}),
    "\"Sv5", ""};

std::string Mutate(std::string bytes, std::mt19937& rng) {
    static const char kSpecial[] = {'"', '\r', '\n', ',', ' ', '\0', '0', 'L', 'G', '\xFF'};
    for (int e = 0, edits = 1 + static_cast<int>(rng() % 8); e < edits; ++e) {
        const std::size_t at = bytes.empty() ? 0 : rng() % (bytes.size() + 1);
        switch (rng() % 4) {
        case 0:
            bytes.insert(at, 1, kSpecial[rng() % sizeof kSpecial]);
            break;
        case 1:
            if (at < bytes.size()) bytes[at] = static_cast<char>(rng());
            break;
        case 2:
            if (at < bytes.size()) bytes.erase(at, 1 + rng() % 16);
            break;
        default:
            bytes.insert(at, std::string(rng() % 64, static_cast<char>(rng())));
            break;
        }
    }
    return bytes;
}

std::string RandomBytes(std::mt19937& rng) {
    std::string bytes(rng() % 512, '\0');
    for (char& c : bytes)
        c = static_cast<char>(rng());
    return bytes;
}

void CheckInvariants(const std::string& input) {
    Document doc;
    try {
        const LoadResult result = ParseScore(input, false, doc);
        ASSERT_GE(doc.Sheet.LastLine, 0);
        ASSERT_LE(doc.Sheet.LastLine, MaxLines);
        ASSERT_GE(result.fileLines, result.droppedLines);
        for (int i = 1; i <= doc.Sheet.LastLine; ++i)
            ASSERT_GE(doc.Sheet[i].size(), std::size_t(MinLoadedLength));
    } catch (const SheetIndexError&) {
        // Too many lines: the caller reports it; anything else would fail the test.
    }
}

} // namespace

TEST(ReaderFuzz, RandomAndMutatedFiles) {
    std::mt19937 rng(20260521);
    for (int round = 0; round < 4000; ++round) {
        CheckInvariants(round % 4 == 0 ? RandomBytes(rng)
                                       : Mutate(kSeeds[rng() % std::size(kSeeds)], rng));
        if (HasFatalFailure()) {
            ADD_FAILURE() << "round " << round;
            return;
        }
    }
}
