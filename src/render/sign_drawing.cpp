// Row starts, time and tempo marks, repeats, voltas, octave lines, key changes, text
// lines, chord symbols and the marks of a note.

#include <algorithm>
#include <cmath>

#include "core/cp1256.h"
#include "core/line_kind.h"
#include "render/page_walk.h"
#include "render/text_util.h"

namespace tahrir::render {

namespace {

const char* const kSharpRoots[12] = {"C",  "C#", "D",  "D#", "E",  "F",
                                     "F#", "G",  "G#", "A",  "A#", "B"};
const char* const kFlatRoots[12] = {"C",  "Db", "D",  "Eb", "E",  "F",
                                    "Gb", "G",  "Ab", "A",  "Bb", "B"};
const char* const kChordKinds[13] = {"M",  "m",  "aug",  "dim",     "sus2", "sus4", "6",
                                     "m6", "7",  "m7",   "maj7",    "m(maj7)", "dim7"};

// Tuplet marks: where the digit and the bracket's right end stand.
struct TupletRow {
    const char* mark;
    char digit;
    double digitX, rightEnd;
};
constexpr TupletRow kTuplets[] = {{"L3", '3', 2.2, 4.3},
                                  {"L5", '5', 5.1, 9.9},
                                  {"L7", '7', 8.2, 15.3},
                                  {"L9", '9', 10.2, 19.3}};

// Marks drawn as one glyph above the note: word, glyph, size, y and x offsets.
struct MarkRow {
    const char* word;
    const char* glyph;
    double size, dy, dx;
};
constexpr MarkRow kMarks[] = {
    {"TR", "`", 1, 0, 0},         {"TB", "`i", 1, 0, 0},        {"7 ", "v", 1, 0, 0},
    {"8 ", "^", 1, 0, 0},         {"AC", ">", 1, 0, 0},         {"+ ", "+", 1, 0, 0},
    {"0 ", "\xF1", 1, 1, -0.4},   {"1 ", "\xF2", 0.5, 2.9, -0.4}, {"2 ", "\xF3", 0.5, 2.9, -0.4},
    {"3 ", "\xF4", 0.5, 2.9, -0.4}, {"4 ", "\xF5", 0.5, 2.9, -0.4}, {"5 ", "\xF6", 0.5, 2.9, -0.4},
    {"1Z", "\xF9\xF2", 0.5, 2.6, -0.4}, {"2Z", "\xF9\xF3", 0.5, 2.6, -0.4},
    {"3Z", "\xF9\xF4", 0.5, 2.6, -0.4}, {"4Z", "\xF9\xF5", 0.5, 2.6, -0.4},
    {"1B", "\xFA\xF2", 0.5, 2.9, -0.4}, {"2B", "\xFA\xF3", 0.5, 2.9, -0.4},
    {"3B", "\xFA\xF4", 0.5, 2.9, -0.4}, {"4B", "\xFA\xF5", 0.5, 2.9, -0.4},
    {"T ", "\xCD", 0.5, 2.9, 0},  {"M ", "m", 1, 0.2, -0.8},
};

int IntervalSteps(char c) {
    if (c >= '1' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'K') return 10 + (c - 'A');
    return 0;
}

} // namespace

void PageWalk::StartStaffRow() {
    for (int i = 0; i <= 4; ++i) {
        if (!m_opt.ShowAllLines && i % 2 == 1) continue;
        m_dxf.line(DxfLayer, LeftMargin, DxfBaseY + i, PageWidthUnits, DxfBaseY + i);
        stroke(LeftMargin, StaffBaseY - i, PageWidthUnits, StaffBaseY - i);
    }
    PenX = LeftMargin;
    if (ClefLetter == 'F') {
        PenX += 0.7 * RowScale;
        m_dxf.text(DxfLayer, PenX, DxfBaseY + 1, "2.0", "o", kClefExtra);
        glyph(0, PenX, StaffBaseY + 2.13, "?");
        PenX += 4 * RowScale;
    } else {
        PenX += 1 * RowScale;
        m_dxf.text(DxfLayer, PenX, DxfBaseY - 1, "2.0", "n", kClefExtra);
        glyph(0, PenX, StaffBaseY - 5.6, "&");
        PenX += 3 * RowScale;
    }
    for (int step = 1; step <= 7; ++step) {
        const char code = KeySignature[step];
        if (code == ' ' || code == '\0' || code == 'N') continue;
        DrawAccidental(step, step >= 6 ? 3 : 4, code);
    }
    RowStartX = PenX - 2;
    PenX += 3 * RowScale;
}

void PageWalk::drawTimeSignature(int i, bool again) {
    const RhythmFields f = SplitRhythm(line(i));
    if (f.numerator.empty() || f.denominator.empty() || f.numerator == "0") return;
    if (m_opt.ViewMode == 0 && Val(f.numerator) > 16) return;
    const std::string num(f.numerator), den(f.denominator);
    m_dxf.text(DxfLayer, PenX, DxfBaseY + 2.19, "1.6", num);
    m_dxf.text(DxfLayer, PenX, DxfBaseY + 0.16, "1.6", den);
    glyph(0, PenX, StaffBaseY - 8.5, num);
    glyph(0, PenX, StaffBaseY - 6.5, den);
    if (i > 3 && !again) setPos(i, PenX, StaffBaseY);
    PenX += 5 * RowScale;
}

void PageWalk::tempoMark(int i) {
    const std::string_view s = line(i);
    const double v = Val(s.substr(5, 4));
    const double y = StaffBaseY - 12;
    setPos(i, PenX, StaffBaseY);
    const std::string number(Trim(s.substr(5, 4)));
    if (m_opt.ViewMode == 1) {
        glyph(i, PenX - 2.7, y, "q", 1 / 2.2);
        text(i, PenX - 1, y + 1.2, number, 0.5);
    } else if (v > 0) {
        glyph(i, PenX - 2.7, y, "q", 1 / 2.2);
        text(i, PenX - 1.7, y + 1.2, "= " + number, 0.4);
    }
    PenX += 1.5 * RowScale;
}

void PageWalk::directiveLine(int i) {
    // Directive tokens and their drawing; "ALL8" must come before the key change "ALL".
    using Draw = void (PageWalk::*)(int, const std::string&);
    static const std::pair<const char*, Draw> kDirectives[] = {
        {"VOL{1", &PageWalk::drawVolta},      {"VOL{2", &PageWalk::drawVolta},
        {"REPS{", &PageWalk::drawLargeRepeat}, {"REPS}", &PageWalk::drawLargeRepeat},
        {"ALL8", &PageWalk::drawOctaveLine},  {"ALL", &PageWalk::drawKeyChange},
        {"REPB1", &PageWalk::drawRepeatBars}, {"REPB2", &PageWalk::drawRepeatBars},
    };
    const std::string s(line(i));
    for (const auto& [token, draw] : kDirectives) {
        if (!s.starts_with(token)) continue;
        (this->*draw)(i, s);
        return;
    }
}

void PageWalk::drawVolta(int i, const std::string& s) {
    const bool first = s[4] == '1';
    glyph(i, PenX + (first ? 5.2 : 4.9) * RowScale - 2, StaffBaseY - 9.8, s.substr(4, 1),
          1 / 1.8);
    const double left = PenX - (first ? 2.2 : 2.3);
    stroke(left, StaffBaseY - 7, PenX + 3.3, StaffBaseY - 7);
    stroke(left, StaffBaseY - 7, left, StaffBaseY - 6);
    setPos(i, PenX, StaffBaseY);
}

void PageWalk::drawLargeRepeat(int i, const std::string& s) {
    glyph(i, PenX - 0.6 * RowScale - 2, StaffBaseY - 13, "@");
    setPos(i, PenX, StaffBaseY);
    if (s[4] == '}' && line(i + 1).starts_with("L  ")) breakRow(false);
}

void PageWalk::drawOctaveLine(int i, const std::string& s) {
    const char which = s[4];
    if (which != 'D' && which != 'U' && which != 'N') return;
    const bool down = which == 'D' || which == 'N';
    const bool up = which == 'U' || which == 'N';
    const double digitX = PenX + (which == 'N' ? 1.3 : (down ? 1.2 : 0.7)) * RowScale - 2;
    const double x0 = which == 'N' ? PenX - 5.5 : PenX + (down ? -0.5 : 0.5);
    const double x1 = which == 'N' ? PenX - 1.5 : PenX + 3.5;
    if (down) {
        glyph(i, digitX, StaffBaseY - 0.5, "8", 0.5);
        stroke(x0, StaffBaseY + 2.5, x1, StaffBaseY + 2.5, WidthClass::Normal, kBlack, true);
    }
    if (up) {
        glyph(i, digitX, StaffBaseY - 9.5, "8", 0.5);
        stroke(x0, StaffBaseY - 6.9, x1, StaffBaseY - 6.9, WidthClass::Normal, kBlack, true);
    }
    setPos(i, PenX, StaffBaseY);
}

// A key change in mid-score: the accidental goes into the signature from here on.
void PageWalk::drawKeyChange(int i, const std::string& s) {
    if (s[3] < '1' || s[3] > '7') return;
    const int step = s[3] - '0';
    PenX -= 1.3 * RowScale;
    setPos(i, PenX, StaffBaseY);
    DrawAccidental(step, step > 5 ? 3 : 4, s[4]);
    KeySignature[step] = s[4];
    PenX += 1.1 * RowScale;
}

// The one- and two-measure repeat signs take a measure of their own.
void PageWalk::drawRepeatBars(int i, const std::string& s) {
    const bool two = s[4] == '2';
    PenX += 0.5 * RowScale;
    DxfLayer = "3";
    glyph(i, PenX, StaffBaseY - 7.5, "\x91");
    setPos(i, PenX, StaffBaseY);
    if (two) {
        stroke(PenX + 1.2, StaffBaseY - 9, PenX + 1.2, StaffBaseY - 6);
        stroke(PenX + 1.3, StaffBaseY - 9, PenX + 1.3, StaffBaseY - 6);
    }
    m_dxf.polyline(DxfLayer, PenX, DxfBaseY + 1, PenX + 2, DxfBaseY + 3);
    PenX += (two ? 3.5 : 2.5) * RowScale;
    DrawBarline(i, 0, kBlack);
    ElapsedSeconds += MeasureTicks / 8.0 * 60 / ActiveTempo;
    PenX += 1.8 * RowScale;
}

void PageWalk::textLine(int i) {
    const std::string s(line(i));
    const std::string_view payload = std::string_view(s).substr(2);
    const std::string trimmed(Trim(m_sheet[i].text()));
    const double len = std::max<double>(0, static_cast<double>(trimmed.size()) - 2);
    const char head = s[1];
    const bool hidden = m_opt.ViewMode == 0 && (payload.starts_with("MicOff") ||
                                                payload.starts_with("MicOn") ||
                                                payload.starts_with("Ms="));
    const bool speed = head == 'v' && payload.starts_with("T=");
    double x = PenX, y = StaffBaseY, after = 0;
    switch (head) {
    case '-': x -= len * RowScale, y -= 7.5, after = len * 0.1; break;
    case '^': x -= 0.2 * RowScale, y -= 7.5, after = 0.5; break;
    case '_': x -= len * RowScale, y -= 0.2, after = len * 0.1; break;
    case 'v':
        x -= (speed ? 2 : 0.6) * RowScale, y -= speed ? 8 : 0.2, after = 0.2;
        break;
    case '<': x -= len * RowScale, y += 1.8, after = len * 0.1; break;
    case '>': x -= 0.2 * RowScale, y += 1.8, after = 0.5; break;
    default: return;
    }
    if (!hidden && !(speed && m_opt.ViewMode == 0)) {
        setPos(i, PenX, StaffBaseY);
        text(i, x, y, core::Cp1256ToUtf8(Trim(payload)), 0.5 * TextFontScale);
    }
    PenX += after * RowScale;
}

void PageWalk::chordSymbol(int i) {
    const std::string_view s = line(i);
    if (s[0] == 'L' || s[9] == ' ' || s[10] == ' ') return;
    const int root = static_cast<unsigned char>(s[9]);
    const int kind = static_cast<unsigned char>(s[10]);
    std::string name = " ";
    if (root > 65 && root != 77 && kind > 64 && kind - 65 < 13) {
        const char* r = root < 77 ? kSharpRoots[root - 65]
                                  : (root - 78 < 12 ? kFlatRoots[root - 78] : nullptr);
        if (r != nullptr) name = std::string(r) + " " + kChordKinds[kind - 65];
    }
    // The place remembered at the start of the line: the pen, and 6.5 below the last head
    // (3 for a line that is not a note).
    const bool note = s[0] >= '1' && s[0] <= '7';
    text(i, ChordX, ChordY - (note ? 0 : 3.5), name, 0.5);
}

void PageWalk::DrawMark(int i, int step, int octave) {
    const std::string mark(line(i).substr(7, 2));
    if (mark == "  " || tupletBracket(mark)) return;
    if (mark == ". " || mark == "ST") {
        DrawDot(step, octave, false);
        return;
    }
    const double h = (step + 7 * octave - 24) * 0.5;
    const double keep = PenX;
    DxfLayer = "finger";
    // Marks stand above the staff and follow a high note upward.
    GlyphY = StaffBaseY - 10.55;
    double dxfY = DxfBaseY + 5.5;
    const bool up = StemDir == StemDirection::Up, down = StemDir == StemDirection::Down;
    if ((h < 2.5 && !down) || (h >= 2.5 && !up)) PenX += 0.8;
    if (h < 2.5 || up) {
        dxfY += h - 0.5;
        if (h >= 0.5) GlyphY -= h;
    }
    dxfY = std::max(dxfY, DxfBaseY + 5.5);
    if (mark == "TI") {
        // The tie gives back less than it took: the pen ends 0.2 before the note's place.
        PenX = keep;
        drawTie(step, octave);
        DxfLayer = "2";
        return;
    }
    markGlyph(i, mark, step, octave, keep);
    // The plectrum strokes are written smaller than the other marks.
    const bool plectrum = mark == "7 " || mark == "8 ";
    m_dxf.text(DxfLayer, PenX, dxfY, plectrum ? "0.8" : "1.2", mark.substr(0, 1));
    if (mark[1] == 'B' || mark[1] == 'Z')
        m_dxf.text(DxfLayer, PenX, dxfY + (mark[1] == 'B' ? 2.1 : 0), "1.5",
                   mark[1] == 'B' ? "(" : ")", " 50\r\n270.\r\n");
    PenX = keep;
    DxfLayer = "2";
}

// The bracket and digit of a tuplet mark, below the staff; false for other marks.
bool PageWalk::tupletBracket(const std::string& mark) {
    for (const TupletRow& t : kTuplets) {
        if (mark != t.mark) continue;
        GlyphY = StaffBaseY + 4;
        glyph(0, PenX + t.digitX * RowScale - 2, GlyphY - 3.5, std::string(1, t.digit), 1 / 2.2);
        const double right = PenX + t.rightEnd;
        stroke(PenX - 2.8, GlyphY, PenX - 2.8, GlyphY - 1);
        stroke(PenX - 2.8, GlyphY, right, GlyphY);
        stroke(right, GlyphY, right, GlyphY - 1);
        return true;
    }
    return false;
}

// The screen form of a mark other than a tie: a companion head, strokes or a glyph.
void PageWalk::markGlyph(int i, const std::string& mark, int step, int octave, double noteX) {
    const double h = (step + 7 * octave - 24) * 0.5;
    const bool down = StemDir == StemDirection::Down;
    if (IntervalSteps(mark[0]) > 0 && (mark[1] == 'T' || mark[1] == 'M')) {
        drawInterval(i, step, octave, mark[0], mark[1]);
    } else if (mark == "D ") {
        for (double d : {0.0, 0.1}) {
            stroke(PenX + d, GlyphY + 4, PenX + 1 + d, GlyphY + 5.8);
            stroke(PenX + d, GlyphY + 5.8, PenX + 1 + d, GlyphY + 4);
        }
    } else if (mark == "O ") {
        const double y = StaffBaseY - h - (down ? 8.2 : 5.8);
        glyph(0, noteX + (down ? 0.5 : -0.3), y, "o", 1 / 0.8);
    } else if (mark == "8D" || mark == "8U") {
        const bool below = mark[1] == 'D';
        glyph(0, PenX - (below ? 0.4 : 0.2), StaffBaseY - (below ? 1.5 : 7.6), "8", 0.5);
    } else {
        for (const MarkRow& m : kMarks)
            if (mark == m.word) glyph(0, PenX + m.dx, GlyphY + m.dy, m.glyph, m.size);
    }
}

void PageWalk::drawTie(int step, int octave) {
    const double s = step + 7 * octave;
    double cy, a0, a1, after;
    if (StemDir != StemDirection::Down) {
        PenX -= 1.2;
        cy = s * 0.5 < 12 ? StaffBaseY - 3 + (24 - s) * 0.5 : GlyphY + 8;
        a0 = 4.2, a1 = 5.3, after = 1;
    } else {
        PenX -= 1.5;
        const bool high = s * 0.5 > 16;
        cy = high ? StaffBaseY + 3 + (24 - s) * 0.5 : GlyphY + 10;
        a0 = high ? 1.0 : 1.06, a1 = high ? 2.0 : 2.16, after = 1.3;
    }
    arc(PenX + 3.6, cy, 4.7, a0, a1);
    PenX += after;
}

void PageWalk::drawInterval(int i, int step, int octave, char count, char form) {
    (void)i;
    const int pos = step + 7 * octave - 24;
    const int companion = pos - IntervalSteps(count);
    const double h = pos * 0.5, ch = companion * 0.5;
    double x = PenX - 0.8;
    if (std::abs(h - ch) <= 0.5) {
        x = PenX + 0.2;
    } else if (StemDir == StemDirection::Down) {
        x = PenX;
    }
    const int ticks = core::DurationTicks(line(i).substr(2, 3)).value_or(0);
    const double keep = PenX;
    PenX = x;
    if (ch < -0.5 || ch > 4.5) DrawLedgerLines(ch);
    PenX = keep;
    glyph(0, x, StaffBaseY - ch - 5.55, ticks >= 16 ? "\x02" : "\x01");
    if (form == 'M') glyph(0, PenX - 0.8, GlyphY + 0.2, "m");
}

} // namespace tahrir::render
