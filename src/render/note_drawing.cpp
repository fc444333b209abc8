// Notes, rests, accidentals, dots, ledger lines and beams of the layout walk.

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>

#include "core/line_kind.h"
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

constexpr double kBeamX[3] = {1.06, 1.08, 1.1};

const char* AccidentalGlyph(char letter) {
    switch (letter) {
    case 'D': return "#";
    case 'B': return "b";
    case 'N': return "n";
    case 'S': return "<";
    case 'K': return "!";
    default: return nullptr;
    }
}

bool IsTuplet(std::string_view mark) {
    return mark == "L3" || mark == "L5" || mark == "L7" || mark == "L9";
}

} // namespace

void PageWalk::noteLine(int i) {
    const std::string s(line(i));
    if (s[0] < '0' || s[0] > '9') return;
    const int step = s[0] - '0';
    const int octave = s[1] >= '0' && s[1] <= '9' ? s[1] - '0' : 0;
    const std::string_view word = std::string_view(s).substr(2, 3);
    const int ticks = word == " -1" ? -1 : core::DurationTicks(word).value_or(0);
    const std::string_view mark = std::string_view(s).substr(7, 2);
    if (step == 0) {
        if (ticks == -1) {
            if (m_opt.ViewMode == 1) drawGrace(i, -6, octave, ")(");
        } else if (const DurationRow* row = FindDuration(ticks)) {
            drawRest(i, row->shape->ticks, row->dotted);
        }
    } else if (ticks == -1) {
        drawGrace(i, step, octave, nullptr);
    } else if (const DurationRow* row = FindDuration(ticks)) {
        drawNote(i, *row->shape, step, octave, row->dotted);
    }
    // A tuplet's marked note takes no measure time: the group counts one note short.
    if (ticks > 0 && !IsTuplet(mark)) MeasureFill += ticks;
}

void PageWalk::drawNote(int i, const NoteShape& shape, int step, int octave, bool dotted) {
    const std::string s(line(i));
    const char acc = s[5];
    const char beam = s[6];
    const int pos = step + 7 * octave - 24;
    const double h = pos * 0.5;
    GlyphY = -h - 5.55 + StaffBaseY;
    if (acc != ' ') DrawAccidental(step, octave, acc);
    if (h < -0.5 || h > 4.5) DrawLedgerLines(h);
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
    if (dotted && m_opt.ViewMode == 1) caption += shape.flags > 0 ? "." : " .";
    glyph(i, PenX, GlyphY, caption);
    if (beamed && Paint && !m_out.list.items.empty()) m_out.list.items.back().stemDown = down;
    setPos(i, PenX, StaffBaseY);
    if (beamed) {
        const auto head = static_cast<std::ptrdiff_t>(m_out.list.items.size()) - 1;
        CurrentNote = {&shape, Paint ? head : -1, PenX, h - 0.85 + DxfBaseY, pos > 4, DxfLayer};
        beamMember(shape, beam);
    }
    if (dotted && m_opt.ViewMode == 0) {
        PenX += shape.dotOffset;
        DrawDot(step, octave, false);
        PenX -= shape.dotOffset;
    }
    DrawMark(i, step, octave);
    if (std::strchr("NKDBS", acc) && acc != '\0') PenX += 2.5 * RowScale;
    PenX += shape.advance * RowScale;
}

void PageWalk::drawGrace(int i, int step, int octave, const char* caption) {
    const int pos = step + 7 * octave - 24;
    const double h = pos * 0.5;
    GlyphY = -h - 5.55 + StaffBaseY;
    const char acc = line(i)[5];
    if (caption == nullptr && acc != ' ') DrawAccidental(step, octave, acc);
    // The barline mark of the working view is a sign, not a head: no ledger lines.
    if (caption == nullptr && (h < -0.5 || h > 4.5)) DrawLedgerLines(h);
    if (caption == nullptr) {
        dxfNote(kGrace, step, octave);
        StemDir = pos > 4 ? StemDirection::Down : StemDirection::Up;
        caption = StemDir == StemDirection::Down ? kGrace.down : kGrace.up;
    }
    glyph(i, PenX, GlyphY, caption);
    setPos(i, PenX, StaffBaseY);
    DrawMark(i, step, octave);
    if (acc != ' ' && std::strchr("NKDBS", acc)) PenX += 2.5 * RowScale;
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
    for (int k = 0; k < rest->dxfCount; ++k) {
        const double y = k == 0 ? DxfBaseY + rest->dxfY : DxfBaseY + (k == 1 ? 1.44 : 1.96);
        m_dxf.text(DxfLayer, PenX + (k == 0 ? 0 : 0.16), y, "2.0", rest->dxfLetter);
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
    if (!m_dxf.enabled()) return;
    const int pos = step + 7 * octave - 24;
    const double h = pos * 0.5;
    const bool open = shape.flags == 0 && shape.ticks != 8;
    const double y = h - (open ? 0.87 : 0.85) + DxfBaseY;
    m_dxf.text(DxfLayer, PenX, y, "2.0", shape.dxfHead);
    if (shape.stemLength == 0) return;
    const bool down = pos > 4;
    const double x = PenX + (down ? shape.stemDownX : shape.stemUpX);
    const double y0 = down && shape.flags == 3 ? y - 0.87 : y + 0.87;
    m_dxf.line(DxfLayer, x, y0, x, down ? y0 - shape.stemLength : y0 + shape.stemLength);
    if (!beamed) dxfFlags(shape, PenX, y, down, DxfLayer);
}

// The flags of a note at x whose head stands at headY in the DXF drawing.
void PageWalk::dxfFlags(const NoteShape& shape, double x, double headY, bool down,
                        std::string_view layer) {
    if (!m_dxf.enabled() || shape.flags == 0) return;
    static constexpr double kUp[3][3] = {{2.2}, {2.6, 1.9}, {2.6, 2, 1.4}};
    static constexpr double kDown[3][3] = {{-0.45}, {-0.85, -0.25}, {-0.85, -0.25, 0.35}};
    static constexpr const char* kHeight[3] = {"3.2", "3.1", "3.0"};
    static constexpr const char* kExtra[3] = {" 41\r\n0.6\r\n 50\r\n.\r\n",
                                              " 41\r\n0.6\r\n 50\r\n.\r\n",
                                              " 41\r\n0.65\r\n 50\r\n.\r\n"};
    const int f = shape.flags - 1;
    for (int k = 0; k < shape.flags; ++k) {
        const double fy = headY + (down ? kDown[f][k] : kUp[f][k]);
        m_dxf.text(layer, x + kBeamX[f], fy, kHeight[f], "b", kExtra[f]);
    }
}

void PageWalk::DrawLedgerLines(double h) {
    const auto ledger = [&](int i) {
        m_dxf.line(DxfLayer, PenX - 0.4, i + DxfBaseY, PenX + 2, i + DxfBaseY);
        stroke(PenX - 0.4, StaffBaseY - i, PenX + 2, StaffBaseY - i);
    };
    for (int i = 5; i <= h; ++i) ledger(i);
    for (int i = -1; i >= h; --i) ledger(i);
}

void PageWalk::DrawAccidental(int step, int octave, char letter) {
    const char* g = AccidentalGlyph(letter);
    if (g == nullptr) return;
    const double h = (step + 7 * octave - 24) * 0.5;
    m_dxf.text(DxfLayer, PenX, DxfBaseY + h - (letter == 'S' ? 0.1 : 1.1), "2.0", g);
    glyph(0, PenX, StaffBaseY - h - 5.5, g);
    PenX += 1.5 * RowScale;
}

void PageWalk::DrawDot(int step, int octave, bool fingerLayer) {
    const int pos = step + 7 * octave - 24;
    const double h = pos * 0.5;
    if (fingerLayer) {
        m_dxf.text("finger", PenX, DxfBaseY + h - (pos % 2 == 0 ? 0.67 : 1.07), "2.0", "a");
        glyph(0, PenX, StaffBaseY - h - 7.3 - (pos % 2 == 0 ? 0.5 : 0), "\xD8");
        return;
    }
    const double x = StemDir == StemDirection::Down ? PenX + 0.5 : PenX;
    m_dxf.text(DxfLayer, x, DxfBaseY + h - 0.85, "2.0", "a");
    // A dot of a note on a line sits in the space above it.
    glyph(0, x, StaffBaseY - h - 7.3 - (pos % 2 == 0 ? 0.5 : 0), ".");
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
    const double y = down ? GlyphY + 9 : GlyphY + 2;
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
        const double stemX = m.x - (m.up ? 0.22 : 0.24);
        const double head = m.up ? m.y + 3.5 : m.y - 3.2;
        stroke(stemX, beamY(m.x), stemX, head, WidthClass::Stem);
    }
    const auto beam = [&](double xa, double xb, int level) {
        const double offset = kBeamLevelOffset[level - 1] * (up ? 1 : -1);
        stroke(xa - 0.2, beamY(xa) + offset, xb - 0.2, beamY(xb) + offset, WidthClass::Beam);
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
    if (!m_dxf.enabled() || Beam.size() < 2) return;
    const BeamMember& first = Beam.front();
    const BeamMember& last = Beam.back();
    double y0 = first.dxfY, y1 = last.dxfY;
    // Move the far end until no inner stem passes the beam by more than 0.2.
    for (int round = 0; round < 20; ++round) {
        bool moved = false;
        for (double f : {0.33, 0.66}) {
            const double x = first.x + (last.x - first.x) * f;
            const BeamMember* near = &Beam[1];
            for (const auto& m : Beam)
                if (std::abs(m.x - x) < std::abs(near->x - x)) near = &m;
            const double t = last.x == first.x ? 0 : (near->x - first.x) / (last.x - first.x);
            const double yLine = y0 + (y1 - y0) * t;
            const double over = first.up ? near->dxfY - yLine : yLine - near->dxfY;
            if (over > 0.2) {
                y1 += first.up ? over : -over;
                moved = true;
            }
        }
        if (!moved) break;
    }
    m_dxf.polyline("3", first.x, y0, last.x, y1);
    for (std::size_t k = 0; k < Beam.size(); ++k) {
        if (Beam[k].level < 2) continue;
        const double off = first.up ? -0.75 : 0.75;
        const double t = last.x == first.x ? 0 : (Beam[k].x - first.x) / (last.x - first.x);
        m_dxf.polyline("3", Beam[k].x, y0 + (y1 - y0) * t + off, last.x, y1 + off);
        break;
    }
}

} // namespace tahrir::render
