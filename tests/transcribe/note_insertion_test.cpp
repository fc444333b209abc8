// The insertion, line by line against cases worked by hand. At tempo 60 and 11000 samples
// a second one 32nd is 11000 × 60 / (8 × 60) = 1375 samples.

#include <gtest/gtest.h>

#include "case_files.h"
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

TEST(Insertion, TimesBecomeRestsAndTiedNotes) {
    for (const test::CaseRow& c : test::ReadCases("transcribe/insertion_times.txt")) {
        std::vector<TimedNote> notes;
        const std::vector<double> n = c.numbers(1);
        for (std::size_t i = 0; i + 2 < n.size(); i += 3)
            notes.push_back(Note(n[i], n[i + 1], n[i + 2]));
        const std::vector<std::string> lines(c.fields.begin() + 4, c.fields.end());
        core::Document doc = Score();
        InsertOptions o;
        o.MinDuration = c.integer(2);
        o.Exact = c.integer(3) != 0;
        const InsertResult r = InsertNotes(doc, notes, o);
        EXPECT_EQ(r.linesInserted, static_cast<int>(lines.size())) << c.where;
        EXPECT_EQ(Lines(doc, 4, doc.Sheet.LastLine), lines) << c.where;
        EXPECT_EQ(doc.Sheet.CurrentLine, doc.Sheet.LastLine + 1) << c.where;
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
