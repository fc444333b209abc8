#pragma once
// The new-score command: three questions, then the lines of an empty score.

#include <optional>
#include <string>

#include "core/document.h"

namespace tahrir::core {

class PageStore;

// Who answers the three questions: the window's input boxes or the command line.
class NewScorePrompts {
public:
    virtual ~NewScorePrompts() = default;
    // The text typed at `prompt` (shown with `defaultAnswer`); empty means cancelled.
    virtual std::string ask(const std::string& prompt, const std::string& defaultAnswer) = 0;
};

inline constexpr const char* TempoPrompt = " Tempo = ";
inline constexpr const char* RhythmPrompt = " Rhytm = ";
inline constexpr const char* MeasuresPrompt = " No of Meas = ";

// The measure answer as the command corrects it: numerator 2 to 6, denominator 2, 4, 8
// or 16, each 4 otherwise; without "/" the denominator is 4.
struct Measure {
    int numerator = 4;
    int denominator = 4;
};
Measure ParseMeasureAnswer(const std::string& answer);
// 1 to 1000, otherwise 1.
int ParseMeasureCount(const std::string& answer);

enum class NewScoreStatus { Made, Cancelled };

struct NewScoreResult {
    NewScoreStatus status = NewScoreStatus::Made;
    std::optional<std::string> message; // measures cut to fit, or the undo store failed
};

// Builds a new score in `doc` from the answers. The caller has already settled an
// unsaved score. A cancelled question leaves the sheet blank as far as it got.
NewScoreResult NewImage(Document& doc, NewScorePrompts& prompts, PageStore* store);

} // namespace tahrir::core
