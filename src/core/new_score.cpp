#include "core/new_score.h"

#include <array>

#include "core/page_store.h"
#include "core/text_input.h"

namespace tahrir::core {

namespace {

constexpr const char* kBarLine = "03 -1                 ";
constexpr const char* kBlankElement = "        ";
// "            عنوان               " CR LF "               Title                 " CR LF
constexpr const char* kNewDescription =
    "            \xDA\xE4\xE6\xC7\xE4               \r\n               Title                 \r\n";
// Element 0 of every page of a new score's undo store.
constexpr const char* kNewStoreCount = "4         ";

struct BeatRest {
    int denominator;
    const char* line;
};
// One full beat of rest for each denominator.
constexpr std::array<BeatRest, 4> kBeatRests = {{
    {2, "03 16    "},
    {4, "03  8    "},
    {8, "03  4    "},
    {16, "03  2    "},
}};

const char* BeatRestFor(int denominator) {
    for (const BeatRest& r : kBeatRests)
        if (r.denominator == denominator) return r.line;
    return kBeatRests[1].line;
}

// Sets every element to blanks while keeping LastLine, as the command does first.
void BlankSheet(ScoreSheet& sheet) {
    const int last = sheet.LastLine;
    sheet.fill(kBlankElement);
    sheet.LastLine = last;
}

} // namespace

Measure ParseMeasureAnswer(const std::string& answer) {
    Measure m;
    const auto slash = answer.find('/');
    double numerator = 0;
    double denominator = 4;
    if (slash == std::string::npos) {
        numerator = Val(answer);
    } else {
        numerator = Val(std::string_view(answer).substr(0, slash));
        denominator = Val(std::string_view(answer).substr(slash + 1, 2));
    }
    if (numerator >= 2 && numerator <= 6 && numerator == static_cast<int>(numerator))
        m.numerator = static_cast<int>(numerator);
    if (denominator == 2 || denominator == 4 || denominator == 8 || denominator == 16)
        m.denominator = static_cast<int>(denominator);
    return m;
}

int ParseMeasureCount(const std::string& answer) {
    const double n = Val(answer);
    return n >= 1 && n <= 1000 ? static_cast<int>(n) : 1;
}

NewScoreResult NewImage(Document& doc, NewScorePrompts& prompts, PageStore* store) {
    NewScoreResult result;
    ScoreSheet& sheet = doc.Sheet;
    doc.DirtyFlag = false;
    BlankSheet(sheet);
    doc.Description = kNewDescription;
    sheet.setLine(1, "       G  ");

    const std::string tempo = prompts.ask(TempoPrompt, "60");
    if (tempo.empty()) return {NewScoreStatus::Cancelled, std::nullopt};
    sheet.setLine(2, "TEMPO" + tempo);
    // The old bound (below 32 and above 320 at once) can never hold: the answer stands.
    const double t = Val(tempo);
    doc.CurrentTempo = doc.PlayTempo = doc.InitialTempo = t;

    const std::string rhythm = prompts.ask(RhythmPrompt, "4/4");
    if (rhythm.empty()) return {NewScoreStatus::Cancelled, std::nullopt};
    const Measure measure = ParseMeasureAnswer(rhythm);
    sheet.setLine(3, "RHYTM" + std::to_string(measure.numerator) + "/" +
                         std::to_string(measure.denominator));

    const std::string count = prompts.ask(MeasuresPrompt, "1");
    if (count.empty()) return {NewScoreStatus::Cancelled, std::nullopt};
    int measures = ParseMeasureCount(count);
    doc.CurrentFileName = "Untitled";

    // Whole measures only, and never past line 2048.
    const int perMeasure = 2 + measure.numerator;
    const int fit = (MaxLines - 3) / perMeasure;
    if (measures > fit) {
        result.message = std::to_string(measures) + " measures do not fit in " +
                         std::to_string(MaxLines) + " lines; the score holds the first " +
                         std::to_string(fit);
        measures = fit;
    }
    int line = 3;
    const std::string rest = BeatRestFor(measure.denominator);
    for (int m = 1; m <= measures; ++m) {
        sheet.setLine(++line, kBarLine);
        sheet.setLine(++line, "L^Ms=" + std::to_string(m));
        for (int b = 0; b < measure.numerator; ++b) sheet.setLine(++line, rest);
    }
    sheet.LastLine = line;
    sheet.CurrentLine = line;
    sheet.setLine(0, kNewStoreCount);
    if (store && !store->fillAll(sheet, kNewStoreCount)) result.message = store->error();
    doc.UndoIndex = 1;
    doc.UndoTop = 1;
    return result;
}

} // namespace tahrir::core
