// Notes, rests, accidentals, dots, ledger lines and beams of the layout walk.

#include <algorithm>
#include <cmath>
#include <functional>

#include "core/line_view.h"
#include "render/page_walk.h"

namespace tahrir::render {

namespace {

// Screen glyphs, stem places and lengths, advances, dot offsets and the DXF head letter.
constexpr NoteShape kWhole{32, "w", "w", 0, 0, 0, 8, 2, 0, "d"};
constexpr NoteShape kHalf{16, "h", "H", 1.64, 0.27, 3.2, 4, 2, 0, "e"};
constexpr NoteShape kQuarter{8, "q", "Q", 1.34, 0.27, 3.2, 4, 1.2, 0, "r"};
constexpr NoteShape kEighth{4, "e", "E", 1.34, 0.27, 3.2, 3, 1.2, 1, "r"};
constexpr NoteShape kSixteenth{2, "x", "X", 1.34, 0.27, 3.2, 3, 1.2, 2, "r"};
constexpr NoteShape kThirtySecond{1, "r", "R", 1.34, 0.27, 3.5, 3, 1.2, 3, "r"};
constexpr NoteShape kGrace{-1, "g", "G", 1.64, 0.27, 3.2, 2, 0, 0, "e"};

struct DurationRow {
    int ticks;
    const NoteShape* shape;
    bool dotted;
};
constexpr DurationRow kDurations[] = {
    {1, &kThirtySecond, false}, {2, &kSixteenth, false}, {3, &kSixteenth, true},
    {4, &kEighth, false},       {6, &kEighth, true},     {8, &kQuarter, false},
    {12, &kQuarter, true},      {16, &kHalf, false},     {20, &kHalf, true},
    {24, &kHalf, true},         {28, &kHalf, true},      {32, &kWhole, false},
    {48, &kWhole, true},
};

const DurationRow* FindDuration(int ticks) {
    for (const auto& row : kDurations)
        if (row.ticks == ticks) return &row;
    return nullptr;
}

// Rests: screen y below the staff base, DXF y, advance, dot offset, glyph, DXF letters.
struct RestShape {
    const NoteShape* family;
    double y, dxfY, advance, dotOffset;
    const char* glyph;
    int dxfCount;
    const char* dxfLetter;
};
constexpr RestShape kRests[] = {
    {&kWhole, -8.3, 0.6, 8, 1.4, "-", 1, "j"},
    {&kHalf, -7.6, 1.26, 6, 1.4, "-", 1, "j"},
    {&kQuarter, -7.5, 1.2, 4, 1.2, "D", 1, "l"},
    {&kEighth, -8, 0.9, 3, 1.2, "a", 1, "m"},
    {&kSixteenth, -7.5, 0.9, 3, 1.2, "d", 2, "m"},
    {&kThirtySecond, -7, 0.9, 3, 1.2, "\xAE", 3, "m"},
};

// Beams: the slope is limited to a staff unit over the group and to a fifth of a unit per
// unit of width; second and third beams stand 0.75 and 1.46 from the main one; a beam
// stub is 0.4 of the way to the next stem.
constexpr double kMaxBeamRise = 1.0;
constexpr double kMaxBeamSlope = 0.2;
constexpr double kBeamLevelOffset[3] = {0, 0.75, 2 * 0.73};
constexpr double kStubShare = 0.4;

// Engraving distances in staff units.
constexpr double kHeadDrop = 5.55;        // from a head's place down to its glyph's pen
constexpr double kLedgerBelow = -0.5;     // heads below this height take ledger lines
constexpr double kLedgerAbove = 4.5;      // and above this one
constexpr double kLedgerLead = 0.4;       // a ledger line starts this far left of the pen
constexpr double kLedgerReach = 2;        // and ends this far right of it
constexpr double kAccidentalAdvance = 1.5;
constexpr double kAccidentalRoom = 2.5;   // more room behind a note that has an accidental
constexpr double kAccidentalDrop = 5.5;   // from the place to the accidental glyph's pen
constexpr double kDotDrop = 7.3;          // from the place to the dot glyph's pen
constexpr double kDotOnLineLift = 0.5;    // a dot of a note on a line sits in the space above
constexpr double kDotStemDownX = 0.5;
constexpr double kBeamStemUpEnd = 2;      // the stem end above the glyph pen, stem up
constexpr double kBeamStemDownEnd = 9;    // and below it, stem down
constexpr double kBeamStemUpX = 0.22;     // stems of a beam group, left of the beam x
constexpr double kBeamStemDownX = 0.24;
constexpr double kBeamStemUp = 3.5;       // from the stem end back to the head
constexpr double kBeamStemDown = 3.2;
constexpr double kBeamInset = 0.2;        // beams end this far left of the beam x
// The DXF drawing's own offsets: heads, stems, flags and beams.
constexpr double kDxfOpenHeadDrop = 0.87; // whole, half and grace heads
constexpr double kDxfBlackHeadDrop = 0.85;
constexpr double kDxfStemFromHead = 0.87;
constexpr double kDxfAccidentalDrop = 1.1;
constexpr double kDxfSoriDrop = 0.1;
constexpr double kDxfFingerDotDrop[2] = {0.67, 1.07}; // on a line, in a space
constexpr double kDxfBeamTolerance = 0.2; // a stem may pass the beam by this much
constexpr double kDxfBeamTests[2] = {0.33, 0.66};
constexpr double kDxfSecondBeam = 0.75;

constexpr double kBeamX[3] = {1.06, 1.08, 1.1};

bool HasAccidental(char letter) {
    return core::AccidentalRowOf(letter) != nullptr;
}

} // namespace

void PageWalk::noteLine(int i) {
    const core::NoteView note = core::ReadNote(line(i));
    if (!note.pitched) return;
    const int ticks = note.duration();
    if (note.bar()) {
        if (m_opt.ViewMode == View::Working) drawGrace(i, note, -6, ")(");
    } else if (note.grace()) {
        drawGrace(i, note, note.step, nullptr);
    } else if (const DurationRow* row = FindDuration(ticks)) {
        if (note.step == 0) {
            drawRest(i, row->shape->ticks, row->dotted);
        } else {
            drawNote(i, note, *row->shape, row->dotted);
        }
    }
    // A tuplet's marked note takes no measure time: the group counts one note short.
    if (ticks > 0 && note.mark.mark != core::Mark::Tuplet) MeasureFill += ticks;
}

void PageWalk::drawNote(int i, const core::NoteView& note, const NoteShape& shape, bool dotted) {
    const int step = note.step, octave = note.octave;
    const char beam = note.beam;
    const int pos = StaffPosition(step, octave);
    const double h = pos * 0.5;
    GlyphY = -h - kHeadDrop + StaffBaseY;
    if (note.accidentalLetter != ' ') DrawAccidental(step, octave, note.accidentalLetter);
    if (h < kLedgerBelow || h > kLedgerAbove) DrawLedgerLines(h);
    const bool beamed = shape.flags > 0 && beam != ' ';
    dxfNote(shape, step, octave, beamed);
    // A beam group keeps the direction its first note chose; after a row end the group goes
    // on as a new one, which chooses again.
    if (beam == ' ' || (beam == 'C' && !GroupOpen) || (beamed && GroupBroken)) {
        StemDir = pos > 4 ? StemDirection::Down : StemDirection::Up;
        GroupBroken = false;
    }
    const bool down = StemDir == StemDirection::Down;
    std::string caption = beamed ? "N" : (down ? shape.down : shape.up);
    // The eighth family's glyphs end in their flag, so their dot needs no blank.
    if (dotted && m_opt.ViewMode == View::Working) caption += shape.flags > 0 ? "." : " .";
    glyph(i, PenX, GlyphY, caption);
    if (beamed && Paint && !m_out.list.items.empty()) m_out.list.items.back().stemDown = down;
    setPos(i, PenX, StaffBaseY);
    if (beamed) {
        const auto head = static_cast<std::ptrdiff_t>(m_out.list.items.size()) - 1;
        CurrentNote = {&shape, Paint ? head : -1, PenX, h - kDxfBlackHeadDrop + DxfBaseY,
                       pos > 4, DxfLayer};
        beamMember(shape, beam);
    }
    if (dotted && m_opt.ViewMode == View::Page) {
        PenX += shape.dotOffset;
        DrawDot(step, octave, false);
        PenX -= shape.dotOffset;
    }
    DrawMark(note, step, octave);
    if (HasAccidental(note.accidentalLetter)) PenX += kAccidentalRoom * RowScale;
    PenX += shape.advance * RowScale;
}

void PageWalk::drawGrace(int i, const core::NoteView& note, int step, const char* caption) {
    const int octave = note.octave;
    const int pos = StaffPosition(step, octave);
    const double h = pos * 0.5;
    GlyphY = -h - kHeadDrop + StaffBaseY;
    const char acc = note.accidentalLetter;
    if (caption == nullptr && acc != ' ') DrawAccidental(step, octave, acc);
    // The barline mark of the working view is a sign, not a head: no ledger lines.
    if (caption == nullptr && (h < kLedgerBelow || h > kLedgerAbove)) DrawLedgerLines(h);
    if (caption == nullptr) {
        dxfNote(kGrace, step, octave);
        StemDir = pos > 4 ? StemDirection::Down : StemDirection::Up;
        caption = StemDir == StemDirection::Down ? kGrace.down : kGrace.up;
    }
    glyph(i, PenX, GlyphY, caption);
    setPos(i, PenX, StaffBaseY);
    DrawMark(note, step, octave);
    if (HasAccidental(acc)) PenX += kAccidentalRoom * RowScale;
    PenX += kGrace.advance * RowScale;
}

void PageWalk::drawRest(int i, int ticks, bool dotted) {
    const RestShape* rest = nullptr;
    for (const auto& r : kRests)
        if (r.family->ticks == ticks) rest = &r;
    if (rest == nullptr) return;
    GlyphY = StaffBaseY + rest->y;
    if (rest->glyph[0] == '-') {
        for (double d : {0.0, 0.1, 0.2}) glyph(i, PenX, GlyphY - d, "-");
    } else {
        glyph(i, PenX, GlyphY, rest->glyph);
    }
    // The second and third letters of the short rests stand right of the first, higher.
    static constexpr double kExtraY[2] = {1.44, 1.96};
    constexpr double kExtraX = 0.16;
    for (int k = 0; k < rest->dxfCount; ++k) {
        const double y = DxfBaseY + (k == 0 ? rest->dxfY : kExtraY[k - 1]);
        dxfText(DxfLayer, PenX + (k == 0 ? 0 : kExtraX), y, kDxfHeadHeight, rest->dxfLetter);
    }
    setPos(i, PenX, StaffBaseY);
    if (dotted) {
        PenX += rest->dotOffset;
        DrawDot(1, 4, false); // in the space above the middle line
        PenX -= rest->dotOffset;
    }
    PenX += rest->advance * RowScale;
}

// The head and stem in the DXF drawing; a note under a beam has no flag of its own.
void PageWalk::dxfNote(const NoteShape& shape, int step, int octave, bool beamed) {
    if (!dxfOn()) return;
    const int pos = StaffPosition(step, octave);
    const double h = pos * 0.5;
    const bool open = shape.flags == 0 && shape.ticks != 8;
    const double y = h - (open ? kDxfOpenHeadDrop : kDxfBlackHeadDrop) + DxfBaseY;
    dxfText(DxfLayer, PenX, y, kDxfHeadHeight, shape.dxfHead);
    if (shape.stemLength == 0) return;
    const bool down = pos > 4;
    const double x = PenX + (down ? shape.stemDownX : shape.stemUpX);
    const double y0 = down && shape.flags == 3 ? y - kDxfStemFromHead : y + kDxfStemFromHead;
    dxfLine(DxfLayer, x, y0, x, down ? y0 - shape.stemLength : y0 + shape.stemLength);
    if (!beamed) dxfFlags(shape, PenX, y, down, DxfLayer);
}

// The flags of a note at x whose head stands at headY in the DXF drawing.
void PageWalk::dxfFlags(const NoteShape& shape, double x, double headY, bool down,
                        std::string_view layer) {
    if (!dxfOn() || shape.flags == 0) return;
    static constexpr double kUp[3][3] = {{2.2}, {2.6, 1.9}, {2.6, 2, 1.4}};
    static constexpr double kDown[3][3] = {{-0.45}, {-0.85, -0.25}, {-0.85, -0.25, 0.35}};
    static constexpr double kHeight[3] = {3.2, 3.1, 3.0};
    static constexpr double kWidthFactor[3] = {0.6, 0.6, 0.65};
    const int f = shape.flags - 1;
    for (int k = 0; k < shape.flags; ++k) {
        const double fy = headY + (down ? kDown[f][k] : kUp[f][k]);
        dxfText(layer, x + kBeamX[f], fy, kHeight[f], "b", {kWidthFactor[f], std::nullopt, 0.0});
    }
}

void PageWalk::DrawLedgerLines(double h) {
    const auto ledger = [&](int i) {
        dxfLine(DxfLayer, PenX - kLedgerLead, i + DxfBaseY, PenX + kLedgerReach, i + DxfBaseY);
        stroke(PenX - kLedgerLead, StaffBaseY - i, PenX + kLedgerReach, StaffBaseY - i);
    };
    for (int i = 5; i <= h; ++i) ledger(i);
    for (int i = -1; i >= h; --i) ledger(i);
}

void PageWalk::DrawAccidental(int step, int octave, char letter) {
    const core::AccidentalRow* row = core::AccidentalRowOf(letter);
    if (row == nullptr) return;
    const double h = StaffPosition(step, octave) * 0.5;
    const bool sori = row->accidental == core::Accidental::Sori;
    dxfText(DxfLayer, PenX, DxfBaseY + h - (sori ? kDxfSoriDrop : kDxfAccidentalDrop),
            kDxfHeadHeight, row->glyph);
    glyph(0, PenX, StaffBaseY - h - kAccidentalDrop, row->glyph);
    PenX += kAccidentalAdvance * RowScale;
}

void PageWalk::DrawDot(int step, int octave, bool fingerLayer) {
    const int pos = StaffPosition(step, octave);
    const double h = pos * 0.5;
    const bool onLine = pos % 2 == 0;
    const double y = StaffBaseY - h - kDotDrop - (onLine ? kDotOnLineLift : 0);
    if (fingerLayer) {
        dxfText("finger", PenX, DxfBaseY + h - kDxfFingerDotDrop[onLine ? 0 : 1],
                kDxfHeadHeight, "a");
        glyph(0, PenX, y, "\xD8");
        return;
    }
    const double x = StemDir == StemDirection::Down ? PenX + kDotStemDownX : PenX;
    dxfText(DxfLayer, x, DxfBaseY + h - kDxfBlackHeadDrop, kDxfHeadHeight, "a");
    glyph(0, x, y, ".");
}

// A "C" continues the group (opening one when none is open); any other code closes it
// with this note, whatever mark the note carries.
void PageWalk::beamMember(const NoteShape& shape, char code) {
    const double x = PenX + kBeamX[shape.flags - 1];
    if (code == 'C' && !GroupOpen) {
        DrawBeamGroup();
        GroupOpen = true;
    }
    addBeamMember(x, shape.flags);
    if (code != 'C') {
        GroupOpen = false;
        DrawBeamGroup();
    }
}

void PageWalk::addBeamMember(double x, int level) {
    const bool down = StemDir == StemDirection::Down;
    const double y = down ? GlyphY + kBeamStemDownEnd : GlyphY + kBeamStemUpEnd;
    Beam.push_back({x, y, !down, level, DxfBaseY + (StaffBaseY - y), CurrentNote});
}

void PageWalk::closeBeamAtRowEnd() {
    if (Beam.empty()) return;
    DrawBeamGroup();
    GroupBroken = true;
}

// A note left alone in its group is drawn as one that stands alone: its head glyph turns
// into the flagged note of its stem direction, and the DXF drawing gets its flags.
void PageWalk::flagAlone(const BeamNote& n, bool up) {
    if (n.shape == nullptr) return;
    if (n.head >= 0 && n.head < static_cast<std::ptrdiff_t>(m_out.list.items.size())) {
        DisplayItem& it = m_out.list.items[static_cast<std::size_t>(n.head)];
        if (!it.text.empty() && it.text[0] == 'N') {
            it.text.replace(0, 1, up ? n.shape->up : n.shape->down);
            it.stemDown = false;
        }
    }
    dxfFlags(*n.shape, n.dxfX, n.dxfHeadY, n.dxfDown, n.dxfLayer);
}

// A straight beam from the first stem to the last, its slope limited, moved away from the
// heads until every stem keeps at least its own length; the stems between are lengthened
// to meet it. Second and third beams join the members that have that level: a run of two
// or more gets a full beam, a member alone gets a stub toward its neighbour.
void PageWalk::DrawBeamGroup() {
    if (Beam.empty()) return;
    if (Beam.size() == 1) {
        flagAlone(Beam.front().note, Beam.front().up);
        Beam.clear();
        return;
    }
    const BeamMember& first = Beam.front();
    const bool up = first.up;
    const double width = Beam.back().x - first.x;
    double slope = width > 0 ? (Beam.back().y - first.y) / width : 0;
    const double limit = width > 0 ? std::min(kMaxBeamSlope, kMaxBeamRise / width) : 0;
    slope = std::clamp(slope, -limit, limit);
    double shift = 0;
    for (const BeamMember& m : Beam) {
        const double gap = m.y - (first.y + slope * (m.x - first.x));
        shift = up ? std::min(shift, gap) : std::max(shift, gap);
    }
    const auto beamY = [&](double x) { return first.y + shift + slope * (x - first.x); };
    for (const BeamMember& m : Beam) {
        const double stemX = m.x - (m.up ? kBeamStemUpX : kBeamStemDownX);
        const double head = m.up ? m.y + kBeamStemUp : m.y - kBeamStemDown;
        stroke(stemX, beamY(m.x), stemX, head, WidthClass::Stem);
    }
    const auto beam = [&](double xa, double xb, int level) {
        const double offset = kBeamLevelOffset[level - 1] * (up ? 1 : -1);
        stroke(xa - kBeamInset, beamY(xa) + offset, xb - kBeamInset, beamY(xb) + offset,
               WidthClass::Beam);
    };
    beam(first.x, Beam.back().x, 1);
    for (int level = 2; level <= 3; ++level) subBeams(level, beam);
    dxfBeam();
    Beam.clear();
}

// The beams of one level: a full beam over each run of two or more members that have it;
// a member alone gets a stub pointing back, or forward for the first of the group.
void PageWalk::subBeams(int level, const std::function<void(double, double, int)>& beam) {
    const std::size_t n = Beam.size();
    for (std::size_t i = 0; i < n;) {
        std::size_t end = i;
        while (end < n && Beam[end].level >= level) ++end;
        if (end - i >= 2) {
            beam(Beam[i].x, Beam[end - 1].x, level);
        } else if (end - i == 1) {
            const std::size_t other = i == 0 ? 1 : i - 1;
            beam(Beam[i].x, Beam[i].x + (Beam[other].x - Beam[i].x) * kStubShare, level);
        }
        i = std::max(end, i + 1);
    }
}

void PageWalk::dxfBeam() {
    if (!dxfOn() || Beam.size() < 2) return;
    const BeamMember& first = Beam.front();
    const BeamMember& last = Beam.back();
    double y0 = first.dxfY, y1 = last.dxfY;
    // Move the far end until no inner stem passes the beam by more than the tolerance.
    for (int round = 0; round < 20; ++round) {
        bool moved = false;
        for (double f : kDxfBeamTests) {
            const double x = first.x + (last.x - first.x) * f;
            const BeamMember* near = &Beam[1];
            for (const auto& m : Beam)
                if (std::abs(m.x - x) < std::abs(near->x - x)) near = &m;
            const double t = last.x == first.x ? 0 : (near->x - first.x) / (last.x - first.x);
            const double yLine = y0 + (y1 - y0) * t;
            const double over = first.up ? near->dxfY - yLine : yLine - near->dxfY;
            if (over > kDxfBeamTolerance) {
                y1 += first.up ? over : -over;
                moved = true;
            }
        }
        if (!moved) break;
    }
    dxfPolyline("3", first.x, y0, last.x, y1);
    for (std::size_t k = 0; k < Beam.size(); ++k) {
        if (Beam[k].level < 2) continue;
        const double off = first.up ? -kDxfSecondBeam : kDxfSecondBeam;
        const double t = last.x == first.x ? 0 : (Beam[k].x - first.x) / (last.x - first.x);
        dxfPolyline("3", Beam[k].x, y0 + (y1 - y0) * t + off, last.x, y1 + off);
        break;
    }
}

} // namespace tahrir::render
