// The insertion, line by line against cases worked by hand. At tempo 60 and 11000 samples
// a second one 32nd is 11000 × 60 / (8 × 60) = 1375 samples.

#include <gtest/gtest.h>

#include "transcribe/note_insertion.h"

namespace tahrir::transcribe {
namespace {

constexpr double kTick = 1375;

core::Document Score(std::vector<std::string> extra = {}) {
    core::Document doc;
    core::ScoreSheet& s = doc.Sheet;
    const std::vector<std::string> head = {"       G  ", "TEMPO60", "RHYTM4/4"};
    int i = 0;
    for (const auto& line : head) s.setLine(++i, core::Scratch(line));
    for (const auto& line : extra) s.setLine(++i, core::Scratch(line));
    s.LastLine = i;
    s.CurrentLine = i + 1;
    return doc;
}

std::vector<std::string> Lines(const core::Document& doc, int from, int to) {
    std::vector<std::string> out;
    for (int i = from; i <= to; ++i) out.emplace_back(doc.Sheet[i].trimmedRight());
    return out;
}

TimedNote Note(double fromTick, double ticks, double note) {
    return {fromTick * kTick, (fromTick + ticks) * kTick, note, false};
}

struct Case {
    const char* what;
    std::vector<TimedNote> notes;
    int minDuration;
    bool exact;
    std::vector<std::string> lines;
};

TEST(Insertion, TimesBecomeRestsAndTiedNotes) {
    const Case cases[] = {
        {"40 32nds at MinDuration 1 are 32 tied to 8", {Note(0, 40, 60)}, 1, false,
         {"13 32  TI", "13  8"}},
        {"a gap before the note is a rest", {Note(3, 2, 60)}, 1, false, {"00  3", "13  2"}},
        {"13 at MinDuration 1: 12 tied to 1", {Note(0, 13, 62)}, 1, false, {"23 12  TI", "23  1"}},
        {"7 at MinDuration 4: 4 tied to the 4 that 3 becomes", {Note(0, 7, 62)}, 4, false,
         {"23  4  TI", "23  4"}},
        // The rest of 1 is below half of 4: dropped, and its 1375 samples make the next
        // 11 a 12 instead of 8 tied to 4.
        {"a short gap lives on in the carry", {Note(0, 4, 60), Note(5, 11, 62)}, 4, false,
         {"13  4", "23 12"}},
        // La sori: q = Int(139) mod 24 = 19, Int((69 - 24) / 12) = 3.
        {"exact quarter tone", {Note(0, 16, 69.5)}, 1, true, {"63 16S"}},
        {"exact natural", {Note(0, 8, 60)}, 1, true, {"13  8N"}},
        // Not exact, no signature: La sori is outside the dastgah and stays a rest.
        {"a pitch outside the dastgah is silence", {Note(0, 8, 69.5)}, 1, false, {"00  8"}},
    };
    for (const Case& c : cases) {
        core::Document doc = Score();
        InsertOptions o;
        o.MinDuration = c.minDuration;
        o.Exact = c.exact;
        const InsertResult r = InsertNotes(doc, c.notes, o);
        EXPECT_EQ(r.linesInserted, static_cast<int>(c.lines.size())) << c.what;
        EXPECT_EQ(Lines(doc, 4, doc.Sheet.LastLine), c.lines) << c.what;
        EXPECT_EQ(doc.Sheet.CurrentLine, doc.Sheet.LastLine + 1) << c.what;
    }
}

TEST(Insertion, DastgahBoxesChooseTheStep) {
    // Do (q 0): box 2 is Do natural, box 34 Si sharp; with only box 34 marked step 7 is
    // written, with neither a rest.
    core::DastgahBoxes onlySharpSi{};
    onlySharpSi[34] = true;
    const std::pair<core::DastgahBoxes, std::string> boxes[] = {{onlySharpSi, "73  8"},
                                                               {core::DastgahBoxes{}, "00  8"}};
    for (const auto& [marked, line] : boxes) {
        core::Document doc = Score();
        InsertOptions o;
        o.boxes = marked;
        InsertNotes(doc, {Note(0, 8, 60)}, o);
        EXPECT_EQ(Lines(doc, 4, 4), std::vector<std::string>{line});
    }
    // The boxes follow the signature in force: "ALL6K" makes La koron (68.5) a degree.
    core::Document doc = Score({"ALL6K"});
    InsertNotes(doc, {Note(0, 8, 68.5)}, InsertOptions{});
    EXPECT_EQ(Lines(doc, 5, 5), std::vector<std::string>{"63  8"});
}

TEST(Insertion, TempoLineAndAFullSheet) {
    InsertOptions o;
    o.tempo = 120; // one 32nd is 687.5 samples
    o.TempoToSheet = true;
    core::Document atFour = Score();
    InsertNotes(atFour, {{0, 8 * 687.5, 60, false}}, o);
    EXPECT_EQ(Lines(atFour, 2, 4), (std::vector<std::string>{"TEMPO120", "RHYTM4/4", "13  8"}));
    EXPECT_EQ(atFour.PlayTempo, 120);
    core::Document later = Score({"00  8"});
    InsertNotes(later, {{0, 8 * 687.5, 60, false}}, o);
    EXPECT_EQ(Lines(later, 2, 6), (std::vector<std::string>{"TEMPO60", "RHYTM4/4", "00  8",
                                                             "TEMPO120", "13  8"}));

    // Two lines short of the end: 72 32nds need three parts, two are made.
    core::Document full = Score(std::vector<std::string>(core::MaxLines - 5, "00  8"));
    full.Sheet.CurrentLine = 4;
    const InsertResult r = InsertNotes(full, {Note(0, 72, 60)}, InsertOptions{});
    EXPECT_TRUE(r.memoryFull);
    EXPECT_EQ(r.message, "Memory full!");
    EXPECT_EQ(r.linesInserted, 2);
    EXPECT_EQ(full.Sheet.LastLine, core::MaxLines);
}

} // namespace
} // namespace tahrir::transcribe
