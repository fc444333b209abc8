#pragma once
// State and routines of one layout walk. Private to the render module: callers use
// RefreshView in page_layout.h.

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/line_view.h"
#include "render/page_layout.h"

namespace tahrir::render {

// A line that ends the piece: "LCFIN" or a text line reading "FIN".
bool IsFinLine(const core::ScoreLine& line);
// The tempo of a "TEMPO" line by the one number rule; the keyword is folded to upper case
// first, so "tempo 90" is a tempo line as well. nullopt for any other line.
std::optional<double> TempoOfFolded(const core::ScoreLine& line);
// True for an "LC" line (folded to upper case) whose keyword is `keyword`.
bool IsControl(const core::ScoreLine& line, std::string_view keyword);

// Extra group codes of a DXF text: width factor, oblique angle, rotation.
struct DxfGroups {
    double widthFactor = 0;
    std::optional<double> oblique, angle;
};
// The description cut at each line feed, carriage returns dropped.
std::vector<std::string> DescriptionPieces(std::string_view text);

enum class StemDirection { Blank, Up, Down };

// Staff positions count from the bottom line (Mi of octave 3) in steps of half a unit.
inline constexpr int kBottomLine = 24;
inline int StaffPosition(int step, int octave) { return step + 7 * octave - kBottomLine; }
// Heads, rests, dots and accidentals are written at this height in the DXF drawing.
inline constexpr double kDxfHeadHeight = 2.0;

// Shape numbers of one note value: screen glyphs, stems, advance, beam column.
struct NoteShape {
    int ticks;
    const char* up;
    const char* down;
    double stemUpX, stemDownX, stemLength;
    double advance;
    double dotOffset;
    int flags;      // eighth 1, 16th 2, 32nd 3; 0 for no flag
    const char* dxfHead;
};

// The note behind a beam member: enough to draw it with its own flag when its group is
// left with it alone.
struct BeamNote {
    const NoteShape* shape = nullptr;
    std::ptrdiff_t head = -1; // its head glyph in the display list; -1 when not painting
    double dxfX = 0, dxfHeadY = 0;
    bool dxfDown = false;
    std::string_view dxfLayer;
};

class PageWalk {
public:
    PageWalk(const core::ScoreSheet& sheet, const LayoutOptions& options, LayoutResult& out);
    void run();

private:
    // page_layout.cpp and measure_rows.cpp: passes, lines, measures and rows
    void runPass();
    void descriptionLines();
    void startOfPass();
    void headerTempo();
    void walkLine(int i);
    void controlLine(int i);
    void measureTest(int i);
    void breakRow(bool showTime);
    void DrawBarline(int i, int number, std::uint32_t colour);
    void barlineStrokes(int i, int n1, int n2, std::uint32_t colour);
    void placeMeasureLabel(int number, double x, double y, bool visible);
    void emitMeasureLabels();
    void takeRowScale();
    // The drawing pass again, each overrunning row squeezed until nothing passes the end.
    void fitRowsToStaffEnd();
    void noteRight(const DisplayItem& item);
    void markRowStart();
    void liftTexts();
    void storeRowRatio();
    // Line i cut and padded to 32 columns; a blank line outside 0..LastLine.
    const core::ScoreLine& line(int i) const;
    // The next line after i that is not a barline record; LastLine + 1 when none is left.
    int nextIndex(int i) const;

    // note_drawing.cpp: notes, rests, accidentals, dots, ledger lines, beams
    void noteLine(int i);
    void drawNote(int i, const core::NoteView& note, const NoteShape& shape, bool dotted);
    void drawRest(int i, int ticks, bool dotted);
    // A grace note; a barline of the working view passes its mark as `caption`.
    void drawGrace(int i, const core::NoteView& note, int step, const char* caption);
    void beamMember(const NoteShape& shape, char code);
    void addBeamMember(double x, int level);
    void DrawBeamGroup();
    void subBeams(int level, const std::function<void(double, double, int)>& beam);
    // A row ends: the open group is drawn on it, and the notes after the break open a new one.
    void closeBeamAtRowEnd();
    void flagAlone(const BeamNote& n, bool up);
    void dxfBeam();
    void DrawLedgerLines(double h);
    void DrawAccidental(int step, int octave, char letter);
    void DrawDot(int step, int octave, bool fingerLayer);
    void dxfNote(const NoteShape& shape, int step, int octave, bool beamed = false);
    void dxfFlags(const NoteShape& shape, double x, double headY, bool down,
                  std::string_view layer);

    // sign_drawing.cpp: row start, barline signs, repeats, text, chords, marks
    void StartStaffRow();
    // `again` at a row start: the sign is repeated, the rhythm line keeps its place.
    void drawTimeSignature(int i, bool again = false);
    void tempoMark(int i);
    void directiveLine(int i);
    void drawVolta(int i, bool second);
    void drawLargeRepeat(int i, bool closing);
    void drawOctaveLine(int i, char which);
    void drawKeyChange(int i, core::AllChange change);
    void drawRepeatBars(int i, bool two);
    void textLine(int i);
    void chordSymbol(int i);
    void DrawMark(const core::NoteView& note, int step, int octave);
    void drawTie(int step, int octave);
    void drawInterval(const core::NoteView& note, int step, int octave);
    void tupletBracket(int notes);
    void markGlyph(const core::NoteView& note, int step, int octave, double noteX);

    // drawing primitives: record into the display list on the painting pass
    void glyph(int line, double x, double y, std::string text, double size = 1,
               std::uint32_t colour = kBlack);
    void stroke(double x1, double y1, double x2, double y2, WidthClass w = WidthClass::Normal,
                std::uint32_t colour = kBlack, bool dashed = false);
    void arc(double cx, double cy, double r, double a0, double a1);
    void text(int line, double x, double y, std::string utf8, double size,
              std::uint8_t target = 0);
    void setPos(int i, double x, double y);
    // The DXF drawing: recorded on the painting pass when it is enabled.
    bool dxfOn() const { return Paint && m_out.list.dxf.enabled; }
    void dxfText(std::string_view layer, double x, double y, double height, std::string letter,
                 const DxfGroups& groups = {});
    void dxfLine(std::string_view layer, double x1, double y1, double x2, double y2);
    void dxfPolyline(std::string_view layer, double x1, double y1, double x2, double y2);

    const core::ScoreSheet& m_sheet;
    const LayoutOptions& m_opt;
    LayoutResult& m_out;
    // The measuring pass's row decisions in order; the drawing pass takes them over, since
    // the fixed row head does not scale and would shift its own.
    std::vector<bool> m_rowDecisions;
    std::size_t m_decision = 0;
    bool rowEnds(bool measured);
    // By row: where the row's music begins, how far its drawing reaches, and the squeeze
    // that keeps it inside the staff end.
    std::vector<double> m_rowStart, m_rowRight, m_rowFit;
    int m_currentLine = 0; // the line the walk is on, owner of what is drawn now
    std::vector<core::ScoreLine> m_lines; // lines 0..LastLine, cut and padded to 32 columns
    core::ScoreLine m_blank;

public:
    // Walk state, named as the renderer's documentation names it.
    double PenX = 0, StaffBaseY = 0, DxfBaseY = 0, GlyphY = 0;
    double RowScale = 1, RowStartX = 0, BarStartX = 0, LastBarWidth = 0;
    double PageWidthUnits = 100, PicWidthUnits = 104, FillLimit = 1, ZoomFactor = 0.6;
    double LeftMargin = 3, TopMargin = 26, StaffGap = 14;
    double TextFontScale = 1, MeasureNumberScale = 1;
    double ElapsedSeconds = 0, ActiveTempo = 60;
    int RowIndex = 1, MeasureFill = 0, MeasureTicks = 0, MeasureNumber = 0;
    int RenderPass = 1, Passes = 2, Outer = 1, LastLine = 0;
    bool Paint = false, PrintActive = false;
    char ClefLetter = 'G';
    StemDirection StemDir = StemDirection::Blank;
    std::array<char, 8> KeySignature{}; // by step 1..7
    std::string_view DxfLayer = "1";
    std::string TextFontName;
    double ChordX = 0, ChordY = 0;
    int RhythmLine = 3;

    struct BeamMember {
        double x, y;
        bool up;
        int level;   // beams of the note's value: eighth 1, 16th 2, 32nd 3
        double dxfY; // the stem end in the DXF drawing
        BeamNote note;
    };
    std::vector<BeamMember> Beam; // the open group, drawn when it closes
    bool GroupOpen = false;
    BeamNote CurrentNote;     // the note being drawn, for addBeamMember
    bool GroupBroken = false; // a row end closed the group: its next note picks the stems
};

} // namespace tahrir::render
