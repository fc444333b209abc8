// Mouse editing of the score view and the text and command tools.

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>

#include "core/line_kind.h"
#include "core/line_view.h"
#include "core/text_input.h"
#include "edit/editor.h"
#include "edit/key_codes.h"
#include "edit/pen_caption.h"

namespace tahrir::edit {

const std::array<const char*, 11> kCommandList = {
    "TFS=", "MFS=", "FON=", "INS=", "TRP=", "LFT=", "TOP=", "DBL=", "OCT=0", "PED=OFF", "FIN"};

namespace {

// The heads of the six text places, by option button.
constexpr std::string_view kTextHeads[] = {"L-", "L^", "L_", "Lv", "L<", "L>"};

int TextOption(const core::ScoreLine& line) {
    for (int i = 0; i < 6; ++i)
        if (line.startsWith(kTextHeads[i])) return i;
    return -1;
}

// Line breaks become blanks: a text line stays one line.
std::string OneLine(std::string text) {
    std::replace(text.begin(), text.end(), '\r', ' ');
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

} // namespace

void Editor::showTextFrames() {
    const core::ScoreLine& line = sheet()[CurrentLine()];
    const int option = TextOption(line);
    textFrame.visible = false;
    commandFrame.visible = false;
    RCDTxtVisible = false;
    if (option >= 0) {
        RCDTxtVisible = RecordVisible;
        textFrame.visible = true;
        textFrame.text = core::LineText(line);
        textFrame.option = option;
        labels[0].caption = LineCaption(line.text());
        return;
    }
    if (!line.startsWith("LC")) return;
    commandFrame.visible = true;
    commandFrame.text = core::LineText(line);
    commandFrame.listIndex = -1;
    // The first four characters of the text name the entry, "=" included.
    const std::string key = core::UpperAscii(core::Trim(std::string_view(commandFrame.text).substr(0, 4)));
    if (!key.empty()) {
        for (int i = 0; i < static_cast<int>(kCommandList.size()); ++i) {
            if (core::UpperAscii(std::string_view(kCommandList[static_cast<std::size_t>(i)]).substr(0, 4)) == key) {
                commandFrame.listIndex = i;
                break;
            }
        }
    }
    labels[0].caption = line.text();
}

// Shift+F2, F4, F5, F6, F7, F8: text, control and bar lines.
void Editor::keyInsertText(int key) {
    switch (key - Key::F1 + 1) {
    case 2:
        RCDTxt = "L^Ms=" + std::to_string(measures.StartMess);
        break;
    case 4:
        RCDTxt = "LC         ";
        break;
    case 5:
        RCDTxt = "L>         ";
        break;
    case 6:
        RCDTxt = "Lvt__     ";
        break;
    case 7:
        RCDTxt = "03 -1      ";
        break;
    case 8: {
        // The beat unit counts quarters: 1 for a beat of a quarter note.
        const auto slash = m_facts.rhythmWord.find('/');
        int denominator = 4;
        if (slash != std::string::npos)
            denominator = std::atoi(m_facts.rhythmWord.c_str() + slash + 1);
        if (denominator <= 0) denominator = 4;
        const double beat = 4.0 / denominator;
        RCDTxt = "LvT=" + std::to_string(static_cast<int>(6000 / (LiveTempo * beat * 8)));
        break;
    }
    default:
        return;
    }
    InsertLineCommand();
}

// E moves the focus into the tool of the line under the cursor.
void Editor::keyOpenTool(int) {
    const core::ScoreLine& line = sheet()[CurrentLine()];
    if (TextOption(line) >= 0)
        focus = Focus::TextBox;
    else if (line.startsWith("LC"))
        focus = Focus::CommandBox;
}

void Editor::textToolApply(const std::string& text, int option) {
    std::string head = "L ";
    if (option >= 0 && option < 6) head = std::string(kTextHeads[option]);
    RCDTxt = head + OneLine(text);
    CommitLineCommand();
}

void Editor::commandToolApply(const std::string& input) {
    std::string text = OneLine(input);
    if (core::UpperAscii(std::string_view(text).substr(0, 4)) == "FON=") {
        const auto font = m_services.host ? m_services.host->fontDialog() : std::nullopt;
        if (font) {
            text = "Fon=" + *font;
            TextFontName = *font;
        }
    }
    RCDTxt = "LC" + text;
    CommitLineCommand();
}

void Editor::commandBoxEnter() {
    CommitLineCommand();
}

void Editor::commandListClick(int index) {
    if (index < 0 || index >= static_cast<int>(kCommandList.size())) return;
    commandFrame.text = kCommandList[static_cast<std::size_t>(index)];
    commandFrame.listIndex = index;
}

// ---- mouse ----

// Only a label on show takes the mouse: line 1 and the lines that drew nothing have none.
bool Editor::labelShown(int line) const {
    return line >= 1 && line <= m_doc.Sheet.LastLine &&
           labels[static_cast<std::size_t>(line)].visible;
}

void Editor::labelMouseDown(int line, int /*button*/, int shift) {
    if (!labelShown(line)) return;
    if (shift == Shift::Shift && SelStart > 3) {
        // With Shift the click is the other end of a selection that began elsewhere.
        SelEnd = std::min(line, LastLine());
        recolourLines();
        refreshLineState();
        focus = Focus::Score;
        return;
    }
    if (shift != 0) return;
    moveCursorTo(line);
}

void Editor::labelClick(int line) {
    if (labelShown(line) && editing()) moveCursorTo(line);
}

void Editor::picMouseDown(double x, double y) {
    band = Band{true, x, y, x, y, 0, 0};
}

void Editor::picMouseMove(double x, double y, bool buttonDown) {
    if (!band.visible || !buttonDown) return;
    band.left = std::min(x, band.startX);
    band.width = std::abs(x - band.startX);
    band.top = std::min(y, band.startY);
    band.height = std::abs(y - band.startY);
}

// The band selects from the first line whose label lies in it to the last such line.
void Editor::picMouseUp() {
    const Band drawn = band;
    band.visible = false;
    SelStart = SelEnd = 0;
    auto inside = [&](int i) {
        const auto k = static_cast<std::size_t>(i);
        return labels[k].visible && LineX[k] >= drawn.left && LineX[k] <= drawn.left + drawn.width &&
               LineY[k] >= drawn.top && LineY[k] <= drawn.top + drawn.height;
    };
    for (int i = 1; i <= LastLine() && SelStart == 0; ++i)
        if (inside(i)) SelStart = i;
    for (int i = LastLine(); i >= 1 && SelEnd == 0; --i)
        if (inside(i)) SelEnd = i;
    recolourLines();
    if (SelEnd <= 0) return;
    if (SelStart < 5) SelStart = 5;
    lit.set(Entry::Cut);
    lit.set(Entry::Copy);
    lit.reset(Entry::Paste);
    const auto& measureOf = m_facts.lineMeasure;
    const auto first = static_cast<std::size_t>(SelStart), last = static_cast<std::size_t>(SelEnd);
    if (last < measureOf.size() && first <= last && measureOf[first] > 0)
        colourMeasures(measureOf[first], measureOf[last]);
}

} // namespace tahrir::edit
