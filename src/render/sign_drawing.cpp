// Row starts, time and tempo marks, repeats, voltas, octave lines, key changes, text
// lines, chord symbols and the marks of a note.

#include <algorithm>
#include <cmath>

#include "core/cp1256.h"
#include "core/line_kind.h"
#include "core/line_view.h"
#include "core/text_input.h"
#include "render/page_walk.h"

namespace tahrir::render {

namespace {

// Tuplet marks by their number of notes: where the digit and the bracket's right end stand.
struct TupletRow {
    int notes;
    double digitX, rightEnd;
};
constexpr TupletRow kTuplets[] = {{3, 2.2, 4.3}, {5, 5.1, 9.9}, {7, 8.2, 15.3}, {9, 10.2, 19.3}};

// Marks drawn as one glyph above the note: mark, glyph, size, y and x offsets.
struct MarkRow {
    core::Mark mark;
    const char* glyph;
    double size, dy, dx;
};
constexpr MarkRow kMarks[] = {
    {core::Mark::Trill, "`", 1, 0, 0},         {core::Mark::TrillFlat, "`i", 1, 0, 0},
    {core::Mark::PlectrumLeft, "v", 1, 0, 0},  {core::Mark::PlectrumRight, "^", 1, 0, 0},
    {core::Mark::Accent, ">", 1, 0, 0},        {core::Mark::Thumb, "+", 1, 0, 0},
    {core::Mark::Riz, "\xCD", 0.5, 2.9, 0},    {core::Mark::Mordent, "m", 1, 0.2, -0.8},
};

// Finger numbers: the digit glyphs from 241 for 0; "Z" and "B" put 249 or 250 before it.
// Finger 0 stands at the full size, the others at half of it.
constexpr unsigned char kFingerZero = 0xF1;
constexpr unsigned char kFingerZ = 0xF9;
constexpr unsigned char kFingerB = 0xFA;
constexpr double kFingerX = -0.4;

struct FingerGlyph {
    std::string glyph;
    double size, dy;
};

FingerGlyph FingerOf(const core::MarkWord& w) {
    std::string glyph;
    if (w.second == 'Z') glyph += static_cast<char>(kFingerZ);
    if (w.second == 'B') glyph += static_cast<char>(kFingerB);
    glyph += static_cast<char>(kFingerZero + w.number);
    if (w.number == 0) return {glyph, 1, 1};
    return {glyph, 0.5, w.second == 'Z' ? 2.6 : 2.9};
}

// Heights of the DXF texts of the signs.
constexpr double kDxfTimeHeight = 1.6;
constexpr double kDxfMarkHeight = 1.2;
constexpr double kDxfPlectrumHeight = 0.8;
constexpr double kDxfBracketHeight = 1.5;
constexpr DxfGroups kClefGroups{1.2, 355.0, std::nullopt};

// Engraving distances of the signs, staff units.
constexpr double kMarkDrop = 10.55;   // marks: from the staff base up to the glyph pen
constexpr double kDxfMarkRise = 5.5;  // the lowest mark over the DXF staff base
constexpr double kMarkNudge = 0.8;    // a mark moves right over a head with its stem away
constexpr double kTimeTop = 8.5;      // time signature digits over the staff base
constexpr double kTimeBottom = 6.5;
constexpr double kTimeAdvance = 5;
constexpr double kTempoDrop = 12;     // the tempo mark over the staff base
constexpr double kTempoAdvance = 1.5;
constexpr double kSignatureGap = 3;   // after the key signature, before the music
constexpr double kRowStartBack = 2;   // the row's music starts this far before the pen
constexpr double kVoltaDigitDrop = 9.8;
constexpr double kVoltaBracketDrop = 7;
constexpr double kVoltaHookDrop = 6;
constexpr double kVoltaRight = 3.3;
constexpr double kOctaveDigitBelow = 0.5; // the "8" of an octave line under the staff
constexpr double kOctaveDigitAbove = 9.5; // and over it
constexpr double kOctaveLineBelow = -2.5;
constexpr double kOctaveLineAbove = 6.9;
constexpr double kLargeRepeatDrop = 13;
constexpr double kTupletDrop = -4;        // the bracket below the staff base
constexpr double kTupletHook = 1;
constexpr double kTupletLeft = 2.8;
constexpr double kTupletDigitRise = 3.5;

// The clefs: where the glyph stands from the pen and the staff base, the room it takes,
// and its DXF letter's height over the DXF staff base.
struct ClefShape {
    double lead, y, advance, dxfY;
    const char* glyph;
    const char* dxfLetter;
};
constexpr ClefShape kTrebleClef{1, -5.6, 3, -1, "&", "n"};
constexpr ClefShape kBassClef{0.7, 2.13, 4, 1, "?", "o"};

// Text lines by their placement letter: x before the pen (times the row scale, or the
// text's length when `measured`), y from the staff base, and the pen's move after it
// (times the row scale, and the length too when `measured`).
struct TextPlace {
    char head;
    bool measured;
    double x, y, after;
};
constexpr TextPlace kTextPlaces[] = {
    {'-', true, 1, -7.5, 0.1},   {'^', false, 0.2, -7.5, 0.5}, {'_', true, 1, -0.2, 0.1},
    {'v', false, 0.6, -0.2, 0.2}, {'<', true, 1, 1.8, 0.1},    {'>', false, 0.2, 1.8, 0.5},
};
// The speed mark "LvT=" of the working view stands higher, over the staff.
constexpr TextPlace kSpeedPlace{'v', false, 2, -8, 0.2};

} // namespace

void PageWalk::StartStaffRow() {
    for (int i = 0; i <= 4; ++i) {
        if (!m_opt.ShowAllLines && i % 2 == 1) continue;
        dxfLine(DxfLayer, LeftMargin, DxfBaseY + i, PageWidthUnits, DxfBaseY + i);
        stroke(LeftMargin, StaffBaseY - i, PageWidthUnits, StaffBaseY - i);
    }
    PenX = LeftMargin;
    const ClefShape& clef = ClefLetter == 'F' ? kBassClef : kTrebleClef;
    PenX += clef.lead * RowScale;
    dxfText(DxfLayer, PenX, DxfBaseY + clef.dxfY, kDxfHeadHeight, clef.dxfLetter, kClefGroups);
    glyph(0, PenX, StaffBaseY + clef.y, clef.glyph);
    PenX += clef.advance * RowScale;
    for (int step = 1; step <= 7; ++step) {
        const char code = KeySignature[static_cast<std::size_t>(step)];
        if (code == '\0' || core::AccidentalOf(code) == core::Accidental::Natural) continue;
        DrawAccidental(step, step >= 6 ? 3 : 4, code);
    }
    RowStartX = PenX - kRowStartBack;
    PenX += kSignatureGap * RowScale;
}

void PageWalk::drawTimeSignature(int i, bool again) {
    const core::RhythmText f = core::RhythmTextOf(line(i));
    if (f.numerator.empty() || f.denominator.empty() || f.numerator == "0") return;
    if (m_opt.ViewMode == View::Page && core::Val(f.numerator) > 16) return;
    dxfText(DxfLayer, PenX, DxfBaseY + 2.19, kDxfTimeHeight, f.numerator);
    dxfText(DxfLayer, PenX, DxfBaseY + 0.16, kDxfTimeHeight, f.denominator);
    glyph(0, PenX, StaffBaseY - kTimeTop, f.numerator);
    glyph(0, PenX, StaffBaseY - kTimeBottom, f.denominator);
    if (i > 3 && !again) setPos(i, PenX, StaffBaseY);
    PenX += kTimeAdvance * RowScale;
}

// The tempo mark: the number as written in columns 6..9, shown in page view only when the
// tempo is positive (a negative one is a hidden mark).
void PageWalk::tempoMark(int i) {
    const double v = TempoOfFolded(line(i)).value_or(0);
    const double y = StaffBaseY - kTempoDrop;
    setPos(i, PenX, StaffBaseY);
    const std::string number(core::Trim(core::DirectivePayload(line(i), 4)));
    if (m_opt.ViewMode == View::Working) {
        glyph(i, PenX - 2.7, y, "q", 1 / 2.2);
        text(i, PenX - 1, y + 1.2, number, 0.5);
    } else if (v > 0) {
        glyph(i, PenX - 2.7, y, "q", 1 / 2.2);
        text(i, PenX - 1.7, y + 1.2, "= " + number, 0.4);
    }
    PenX += kTempoAdvance * RowScale;
}

void PageWalk::directiveLine(int i) {
    const core::ScoreLine& l = line(i);
    // "ALL" lines: the octave lines carry the digit 8, the key changes a step.
    if (l.startsWith("ALL")) {
        if (const auto change = core::AllChangeOf(l)) {
            if (change->digit == 8) {
                drawOctaveLine(i, change->letter);
            } else {
                drawKeyChange(i, *change);
            }
        }
        return;
    }
    const std::string_view token = core::DirectiveTokenOf(l.text());
    if (token == "VOL{1" || token == "VOL{2") drawVolta(i, token == "VOL{2");
    if (token == "REPS{" || token == "REPS}") drawLargeRepeat(i, token == "REPS}");
    if (token == "REPB1" || token == "REPB2") drawRepeatBars(i, token == "REPB2");
}

void PageWalk::drawVolta(int i, bool second) {
    glyph(i, PenX + (second ? 4.9 : 5.2) * RowScale - 2, StaffBaseY - kVoltaDigitDrop,
          second ? "2" : "1", 1 / 1.8);
    const double left = PenX - (second ? 2.3 : 2.2);
    const double y = StaffBaseY - kVoltaBracketDrop;
    stroke(left, y, PenX + kVoltaRight, y);
    stroke(left, y, left, StaffBaseY - kVoltaHookDrop);
    setPos(i, PenX, StaffBaseY);
}

void PageWalk::drawLargeRepeat(int i, bool closing) {
    glyph(i, PenX - 0.6 * RowScale - 2, StaffBaseY - kLargeRepeatDrop, "@");
    setPos(i, PenX, StaffBaseY);
    if (closing && line(i + 1).startsWith("L  ")) breakRow(false);
}

void PageWalk::drawOctaveLine(int i, char which) {
    if (which != 'D' && which != 'U' && which != 'N') return;
    const bool down = which == 'D' || which == 'N';
    const bool up = which == 'U' || which == 'N';
    const double digitX = PenX + (which == 'N' ? 1.3 : (down ? 1.2 : 0.7)) * RowScale - 2;
    const double x0 = which == 'N' ? PenX - 5.5 : PenX + (down ? -0.5 : 0.5);
    const double x1 = which == 'N' ? PenX - 1.5 : PenX + 3.5;
    const auto octaveLine = [&](double digitDrop, double lineDrop) {
        glyph(i, digitX, StaffBaseY - digitDrop, "8", 0.5);
        const double y = StaffBaseY - lineDrop;
        stroke(x0, y, x1, y, WidthClass::Normal, kBlack, true);
    };
    if (down) octaveLine(kOctaveDigitBelow, kOctaveLineBelow);
    if (up) octaveLine(kOctaveDigitAbove, kOctaveLineAbove);
    setPos(i, PenX, StaffBaseY);
}

// A key change in mid-score: the accidental goes into the signature from here on.
void PageWalk::drawKeyChange(int i, core::AllChange change) {
    if (change.digit < 1 || change.digit > 7) return;
    const int step = change.digit;
    PenX -= 1.3 * RowScale;
    setPos(i, PenX, StaffBaseY);
    DrawAccidental(step, step > 5 ? 3 : 4, change.letter);
    KeySignature[static_cast<std::size_t>(step)] = change.letter;
    PenX += 1.1 * RowScale;
}

// The one- and two-measure repeat signs take a measure of their own.
void PageWalk::drawRepeatBars(int i, bool two) {
    PenX += 0.5 * RowScale;
    DxfLayer = "3";
    glyph(i, PenX, StaffBaseY - 7.5, "\x91");
    setPos(i, PenX, StaffBaseY);
    if (two) {
        stroke(PenX + 1.2, StaffBaseY - 9, PenX + 1.2, StaffBaseY - 6);
        stroke(PenX + 1.3, StaffBaseY - 9, PenX + 1.3, StaffBaseY - 6);
    }
    dxfPolyline(DxfLayer, PenX, DxfBaseY + 1, PenX + 2, DxfBaseY + 3);
    PenX += (two ? 3.5 : 2.5) * RowScale;
    DrawBarline(i, 0, kBlack);
    ElapsedSeconds += MeasureTicks / 8.0 * 60 / ActiveTempo;
    PenX += 1.8 * RowScale;
}

void PageWalk::textLine(int i) {
    const core::ScoreLine& l = line(i);
    const std::string payload = core::LineText(l);
    const double len = static_cast<double>(payload.size());
    const char head = core::LinePlacement(l);
    const bool hidden = m_opt.ViewMode == View::Page &&
                        (payload.starts_with("MicOff") || payload.starts_with("MicOn") ||
                         payload.starts_with("Ms="));
    const bool speed = head == 'v' && payload.starts_with("T=");
    const TextPlace* place = speed ? &kSpeedPlace : nullptr;
    for (const TextPlace& p : kTextPlaces)
        if (place == nullptr && p.head == head) place = &p;
    if (place == nullptr) return;
    const double scale = place->measured ? len : 1;
    if (!hidden && !(speed && m_opt.ViewMode == View::Page)) {
        setPos(i, PenX, StaffBaseY);
        text(i, PenX - place->x * scale * RowScale, StaffBaseY + place->y,
             core::Cp1256ToUtf8(core::Trim(payload)), 0.5 * TextFontScale);
    }
    PenX += place->after * scale * RowScale;
}

// The chord symbol of a line. Only roots after the first code and other than "M" are
// named, as the drawing always did; any other pair draws a blank.
void PageWalk::chordSymbol(int i) {
    const core::ScoreLine& l = line(i);
    const core::NoteView note = core::ReadNote(l);
    if (l.startsWith("L") || note.chordRoot == ' ' || note.chordKind == ' ') return;
    const auto root = static_cast<unsigned char>(note.chordRoot);
    std::string name = " ";
    if (root > 'A' && root != 'M') {
        const auto rootName = core::ChordRootName(note.chordRoot);
        const auto kindName = core::ChordKindName(note.chordKind);
        if (rootName && kindName) name = std::string(*rootName) + " " + std::string(*kindName);
    }
    // The place remembered at the start of the line: the pen, and 6.5 below the last head
    // (3 for a line that is not a note).
    const bool isNote = note.step >= 1 && note.step <= 7;
    text(i, ChordX, ChordY - (isNote ? 0 : 3.5), name, 0.5);
}

void PageWalk::DrawMark(const core::NoteView& note, int step, int octave) {
    const core::MarkWord& w = note.mark;
    if (w.mark == core::Mark::None) return;
    if (w.mark == core::Mark::Tuplet) {
        tupletBracket(w.number);
        return;
    }
    if (w.mark == core::Mark::Staccato) {
        DrawDot(step, octave, false);
        return;
    }
    const double h = StaffPosition(step, octave) * 0.5;
    const double keep = PenX;
    DxfLayer = "finger";
    // Marks stand above the staff and follow a high note upward.
    GlyphY = StaffBaseY - kMarkDrop;
    double dxfY = DxfBaseY + kDxfMarkRise;
    const bool up = StemDir == StemDirection::Up, down = StemDir == StemDirection::Down;
    if ((h < 2.5 && !down) || (h >= 2.5 && !up)) PenX += kMarkNudge;
    if (h < 2.5 || up) {
        dxfY += h - 0.5;
        if (h >= 0.5) GlyphY -= h;
    }
    dxfY = std::max(dxfY, DxfBaseY + kDxfMarkRise);
    if (w.mark == core::Mark::Tie) {
        // The tie gives back less than it took: the pen ends 0.2 before the note's place.
        PenX = keep;
        drawTie(step, octave);
        DxfLayer = "2";
        return;
    }
    markGlyph(note, step, octave, keep);
    // The plectrum strokes are written smaller than the other marks.
    const bool plectrum = w.mark == core::Mark::PlectrumLeft || w.mark == core::Mark::PlectrumRight;
    dxfText(DxfLayer, PenX, dxfY, plectrum ? kDxfPlectrumHeight : kDxfMarkHeight,
            std::string(1, w.first));
    if (w.second == 'B' || w.second == 'Z')
        dxfText(DxfLayer, PenX, dxfY + (w.second == 'B' ? 2.1 : 0), kDxfBracketHeight,
                w.second == 'B' ? "(" : ")", {0, std::nullopt, 270.0});
    PenX = keep;
    DxfLayer = "2";
}

// The bracket and digit of a tuplet mark, below the staff.
void PageWalk::tupletBracket(int notes) {
    for (const TupletRow& t : kTuplets) {
        if (notes != t.notes) continue;
        GlyphY = StaffBaseY - kTupletDrop;
        glyph(0, PenX + t.digitX * RowScale - 2, GlyphY - kTupletDigitRise,
              std::to_string(t.notes), 1 / 2.2);
        const double left = PenX - kTupletLeft, right = PenX + t.rightEnd;
        stroke(left, GlyphY, left, GlyphY - kTupletHook);
        stroke(left, GlyphY, right, GlyphY);
        stroke(right, GlyphY, right, GlyphY - kTupletHook);
        return;
    }
}

// The screen form of a mark other than a tie: a companion head, strokes or a glyph.
void PageWalk::markGlyph(const core::NoteView& note, int step, int octave, double noteX) {
    const core::MarkWord& w = note.mark;
    const double h = StaffPosition(step, octave) * 0.5;
    const bool down = StemDir == StemDirection::Down;
    switch (w.mark) {
    case core::Mark::IntervalMordent:
    case core::Mark::IntervalTogether: drawInterval(note, step, octave); break;
    case core::Mark::Dorrab:
        for (double d : {0.0, 0.1}) {
            stroke(PenX + d, GlyphY + 4, PenX + 1 + d, GlyphY + 5.8);
            stroke(PenX + d, GlyphY + 5.8, PenX + 1 + d, GlyphY + 4);
        }
        break;
    case core::Mark::Tekyeh:
        glyph(0, noteX + (down ? 0.5 : -0.3), StaffBaseY - h - (down ? 8.2 : 5.8), "o", 1 / 0.8);
        break;
    case core::Mark::OctaveDown: glyph(0, PenX - 0.4, StaffBaseY - 1.5, "8", 0.5); break;
    case core::Mark::OctaveUp: glyph(0, PenX - 0.2, StaffBaseY - 7.6, "8", 0.5); break;
    case core::Mark::Finger: {
        const FingerGlyph f = FingerOf(w);
        glyph(0, PenX + kFingerX, GlyphY + f.dy, f.glyph, f.size);
        break;
    }
    default:
        for (const MarkRow& m : kMarks)
            if (w.mark == m.mark) glyph(0, PenX + m.dx, GlyphY + m.dy, m.glyph, m.size);
        break;
    }
}

void PageWalk::drawTie(int step, int octave) {
    const double s = step + 7 * octave;
    double cy, a0, a1, after;
    if (StemDir != StemDirection::Down) {
        PenX -= 1.2;
        cy = s * 0.5 < 12 ? StaffBaseY - 3 + (kBottomLine - s) * 0.5 : GlyphY + 8;
        a0 = 4.2, a1 = 5.3, after = 1;
    } else {
        PenX -= 1.5;
        const bool high = s * 0.5 > 16;
        cy = high ? StaffBaseY + 3 + (kBottomLine - s) * 0.5 : GlyphY + 10;
        a0 = high ? 1.0 : 1.06, a1 = high ? 2.0 : 2.16, after = 1.3;
    }
    arc(PenX + 3.6, cy, 4.7, a0, a1);
    PenX += after;
}

// A companion head the interval's steps below the note (a second note played with it, or
// the mordent's), with a mordent sign for the mordent form.
void PageWalk::drawInterval(const core::NoteView& note, int step, int octave) {
    const int pos = StaffPosition(step, octave);
    const int companion = pos - note.mark.number;
    const double h = pos * 0.5, ch = companion * 0.5;
    double x = PenX - 0.8;
    if (std::abs(h - ch) <= 0.5) {
        x = PenX + 0.2;
    } else if (StemDir == StemDirection::Down) {
        x = PenX;
    }
    const double keep = PenX;
    PenX = x;
    if (ch < -0.5 || ch > 4.5) DrawLedgerLines(ch);
    PenX = keep;
    // An open head for a half note and longer.
    glyph(0, x, StaffBaseY - ch - 5.55, note.duration() >= 16 ? "\x02" : "\x01");
    if (note.mark.mark == core::Mark::IntervalMordent) glyph(0, PenX - 0.8, GlyphY + 0.2, "m");
}

} // namespace tahrir::render
