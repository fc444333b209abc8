#include <gtest/gtest.h>

#include <deque>

#include "core/cp1256.h"
#include "core/new_score.h"
#include "core/page_store.h"
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
    EXPECT_EQ(prompts.asked, (std::vector<std::string>{" Tempo = |60", " Rhytm = |4/4", " No of Meas = |1"}));
    const ScoreSheet& s = doc.Sheet;
    EXPECT_EQ(s[1].text(), "       G  ");
    EXPECT_EQ(s[2].text(), "TEMPO60");
    EXPECT_EQ(s[3].text(), "RHYTM4/4");
    EXPECT_EQ(s[4].text(), "03 -1                 ");
    EXPECT_EQ(s[5].text(), "L^Ms=1");
    for (int i = 6; i <= 9; ++i) EXPECT_EQ(s[i].text(), "03  8    ");
    EXPECT_EQ(s[10].text(), "        ") << "the rest of the sheet is blank";
    EXPECT_EQ(s.LastLine, 9);
    EXPECT_EQ(s.CurrentLine, 9);
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

TEST(NewScore, AnswersAreCorrectedByTheTable) {
    // The tempo bound never fires.
    EXPECT_EQ(Made({"500", "4/4", "1"}).Sheet[2].text(), "TEMPO500");
    EXPECT_EQ(Made({"500", "4/4", "1"}).PlayTempo, 500);
    EXPECT_EQ(Made({"60", "7/8", "1"}).Sheet[3].text(), "RHYTM4/8");
    EXPECT_EQ(Made({"60", "6", "1"}).Sheet[3].text(), "RHYTM6/4");
    EXPECT_EQ(Made({"60", "3/5", "1"}).Sheet[3].text(), "RHYTM3/4");
    EXPECT_EQ(Made({"60", " 2 / 16", "1"}).Sheet[3].text(), "RHYTM2/4") << "two characters after /";
    EXPECT_EQ(Made({"60", "1/16", "1"}).Sheet[3].text(), "RHYTM4/16");
    EXPECT_EQ(ParseMeasureCount("0"), 1);
    EXPECT_EQ(ParseMeasureCount("1001"), 1);
    EXPECT_EQ(ParseMeasureCount("1000"), 1000);
    EXPECT_EQ(ParseMeasureCount("many"), 1);
}

TEST(NewScore, RestPerBeatFollowsTheDenominator) {
    const Document eighths = Made({"60", "3/8", "2"});
    // Two measures of 3/8: bar, label, three eighth rests each.
    EXPECT_EQ(eighths.Sheet.LastLine, 3 + 2 * 5);
    EXPECT_EQ(eighths.Sheet[9].text(), "03 -1                 ");
    EXPECT_EQ(eighths.Sheet[10].text(), "L^Ms=2");
    for (int i : {6, 7, 8, 11, 12, 13}) EXPECT_EQ(eighths.Sheet[i].text(), "03  4    ") << i;
    EXPECT_EQ(Made({"60", "2/2", "1"}).Sheet[6].text(), "03 16    ");
    EXPECT_EQ(Made({"60", "5/16", "1"}).Sheet[8].text(), "03  2    ");
}

TEST(NewScore, CancelLeavesABlankSheet) {
    Document doc;
    doc.Sheet.LastLine = 7;
    doc.Sheet.setLine(5, "13  8");
    doc.DirtyFlag = true;
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
    const Document fits = Made({"60", "4/4", "340"}, &result);
    EXPECT_FALSE(result.message);
    EXPECT_EQ(fits.Sheet.LastLine, 3 + 340 * 6);
    const Document cut = Made({"60", "4/4", "1000"}, &result);
    ASSERT_TRUE(result.message);
    EXPECT_NE(result.message->find("2048"), std::string::npos);
    EXPECT_EQ(cut.Sheet.LastLine, 3 + 340 * 6);
    EXPECT_EQ(cut.Sheet[cut.Sheet.LastLine - 4].text(), "L^Ms=340");
}
