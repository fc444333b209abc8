#include <gtest/gtest.h>

#include <deque>

#include "case_files.h"
#include "core/cp1256.h"
#include "core/new_score.h"
#include "core/page_store.h"
#include "score_files.h"
#include "temp_folder.h"

using namespace tahrir::core;
using namespace tahrir::test;

namespace {

// Answers the questions from a list; a missing answer is a cancelled box.
class ScriptedPrompts : public NewScorePrompts {
public:
    explicit ScriptedPrompts(std::deque<std::string> answers) : m_answers(std::move(answers)) {}
    std::string ask(const std::string& prompt, const std::string& defaultAnswer) override {
        asked.push_back(prompt + "|" + defaultAnswer);
        if (m_answers.empty()) return {};
        std::string answer = m_answers.front();
        m_answers.pop_front();
        return answer;
    }
    std::vector<std::string> asked;

private:
    std::deque<std::string> m_answers;
};

Document Made(std::deque<std::string> answers, NewScoreResult* result = nullptr) {
    Document doc;
    ScriptedPrompts prompts(std::move(answers));
    const NewScoreResult r = NewImage(doc, prompts, nullptr);
    if (result) *result = r;
    return doc;
}

} // namespace

TEST(NewScore, DefaultsMakeOneMeasureOfFourBeats) {
    Document doc;
    ScriptedPrompts prompts({"60", "4/4", "1"});
    TempFolder folder;
    PageStore store(PageStore::PathIn(folder.path()));
    const NewScoreResult result = NewImage(doc, prompts, &store);
    EXPECT_EQ(result.status, NewScoreStatus::Made);
    EXPECT_FALSE(result.message);
    EXPECT_EQ(prompts.asked,
              (std::vector<std::string>{" Tempo = |60", " Rhytm = |4/4", " No of Meas = |1"}));
    // Line 10 shows that the rest of the sheet is blank.
    EXPECT_EQ(SheetText(doc.Sheet, 1, 10),
              (std::vector<std::string>{"       G  ", "TEMPO60", "RHYTM4/4",
                                        "03 -1                 ", "L^Ms=1", "03  8    ",
                                        "03  8    ", "03  8    ", "03  8    ", "        "}));
    EXPECT_EQ(doc.Sheet.LastLine, 9);
    EXPECT_EQ(doc.Sheet.CurrentLine, 9);
    EXPECT_EQ(doc.CurrentFileName, "Untitled");
    EXPECT_FALSE(doc.DirtyFlag);
    EXPECT_EQ(doc.UndoIndex, 1);
    EXPECT_EQ(doc.UndoTop, 1);
    EXPECT_EQ(doc.CurrentTempo, 60);
    EXPECT_EQ(Cp1256ToUtf8(doc.Description),
              "            عنوان               \r\n               Title                 \r\n");
    ScoreSheet page;
    ASSERT_TRUE(store.readPage(100, page));
    EXPECT_EQ(page[0].text(), Scratch("4")) << "element 0 of a new store is \"4\"";
    EXPECT_EQ(page[9].text(), Scratch("03  8"));
}

TEST(NewScore, AnswersAreCorrectedByTheTableAndRestsFollowTheDenominator) {
    EXPECT_EQ(Made({"500", "4/4", "1"}).PlayTempo, 500);
    using Args = std::vector<std::string>;
    RunCaseFile(std::string(TAHRIR_TEST_DATA) + "/core/new_scores.txt",
                {{"line",
                  [](const Args& a) {
                      return Made({a[0], a[1], a[2]}).Sheet[std::stoi(a[3])].text();
                  }},
                 {"lastline", [](const Args& a) {
                      return std::to_string(Made({a[0], a[1], a[2]}).Sheet.LastLine);
                  }}});
}

TEST(NewScore, CancelLeavesABlankSheet) {
    Document doc;
    doc.Sheet.LastLine = 7;
    doc.Sheet.setLine(5, "13  8");
    doc.CurrentFileName = "old.srv";
    ScriptedPrompts prompts({"90", "3/4"});
    EXPECT_EQ(NewImage(doc, prompts, nullptr).status, NewScoreStatus::Cancelled);
    EXPECT_EQ(doc.Sheet[2].text(), "TEMPO90");
    EXPECT_EQ(doc.Sheet[3].text(), "RHYTM3/4");
    EXPECT_EQ(doc.Sheet[5].text(), "        ");
    EXPECT_EQ(doc.Sheet.LastLine, 7) << "LastLine is unchanged";
    EXPECT_EQ(doc.CurrentFileName, "old.srv");
    Document first;
    ScriptedPrompts none({});
    EXPECT_EQ(NewImage(first, none, nullptr).status, NewScoreStatus::Cancelled);
    EXPECT_EQ(first.Sheet[2].text(), "        ");
}

TEST(NewScore, TooManyMeasuresAreCutToFitWithAMessage) {
    NewScoreResult result;
    // 4/4 takes 6 lines a measure: 340 measures fit, 1000 do not.
    EXPECT_EQ(Made({"60", "4/4", "340"}, &result).Sheet.LastLine, 3 + 340 * 6);
    EXPECT_FALSE(result.message);
    const Document cut = Made({"60", "4/4", "1000"}, &result);
    ASSERT_TRUE(result.message);
    EXPECT_NE(result.message->find("2048"), std::string::npos);
    EXPECT_EQ(cut.Sheet.LastLine, 3 + 340 * 6);
    EXPECT_EQ(cut.Sheet[cut.Sheet.LastLine - 4].text(), "L^Ms=340");
}
