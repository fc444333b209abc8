#pragma once
// The walk that turns the lines of a score into MusicXML measures.

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "core/document.h"
#include "core/line_view.h"
#include "musicxml/score_export.h"

namespace tahrir::musicxml {

struct Barline {
    std::string style, ending, repeat;
    bool empty() const { return style.empty() && ending.empty() && repeat.empty(); }
    std::string xml(const char* location) const;
};

struct MeasureOut {
    std::string number;
    bool implicit = false;
    std::string divisions, key, time, clef, style; // the opening <attributes>
    Barline left, right;
    std::string body;
    bool hasNotes = false;
};

// An octave-shift direction (note_writer.cpp).
std::string OctaveShift(const char* type, int number);

class Exporter {
public:
    Exporter(const core::Document& doc, const ExportOptions& options);
    std::string run();

private:
    // The walk (exporter.cpp).
    std::string header() const;
    void walkLine(int i);
    void directive(int i);
    // Directive handlers: the line and the number its token stands for.
    void rhythm(const core::ScoreLine& line, int);
    void tempo(const core::ScoreLine& line, int);
    void clefChange(const core::ScoreLine&, int letter);
    void repeatStart(const core::ScoreLine&, int);
    void repeatEnd(const core::ScoreLine&, int);
    void volta(const core::ScoreLine&, int number);
    void largeRepeat(const core::ScoreLine&, int end);
    void repeatSign(const core::ScoreLine&, int count);
    void octaveLine(int shift);
    void textLine(int i);
    void barRecord();
    void countTime(const core::NoteView& n);
    void closeMeasure(bool implicit = false);
    void flushAttributes();
    Barline& closingBar();
    void appendMeasure(std::string& out, const MeasureOut& m) const;
    // Notes (note_writer.cpp).
    void noteLine(int i);
    void timing(const core::NoteView& n, std::string& duration, std::string& look) const;
    std::string tupletXml(std::string& notations);
    std::string noteXml(const core::NoteView& n, int i, int shift, const std::string& duration,
                        const std::string& look);
    std::string pitchXml(int step, int octave, core::Accidental accidental) const;
    double alterOf(core::Accidental accidental) const;
    std::string beamXml(const core::NoteView& n, int i) const;
    std::string tieAndSlur(const core::NoteView& n, int i, std::string& notations);
    void markXml(const core::NoteView& n, std::string& notations) const;
    std::string companionXml(const core::NoteView& n, int shift, const std::string& timing) const;
    std::string harmonyXml(const core::NoteView& n) const;
    std::string lyricsXml();
    core::Accidental soundingAccidental(const core::NoteView& n);
    int nextNote(int i) const;

    const core::Document& m_doc;
    const core::ScoreSheet& m_sheet;
    ExportOptions m_options;
    int m_unit = 1; // divisions of a 32nd: every tuplet's notes come out whole

    // The key's accidental of each step 1..7, and the measure's memory of them.
    std::array<core::Accidental, 8> m_key{};
    std::array<core::Accidental, 8> m_memory{};
    bool m_keyPending = false;
    std::string m_timePending, m_clefPending;
    int m_measureTicks = 0; // 0: free rhythm, measures end at barline records
    int m_fill = 0;
    static constexpr int kOctaveBase = 32;
    int m_octaveState = kOctaveBase;
    int m_octaveShift = 0; // -1, 0 or 1
    int m_tupletCount = 0, m_tupletLeft = 0;
    bool m_tieStop = false, m_slurStop = false;
    std::string m_lyricHyphen[2];
    std::vector<std::pair<int, std::string>> m_lyrics;
    int m_number = 1;
    bool m_ending1Open = false, m_ending2Open = false;
    std::vector<MeasureOut> m_measures;
    MeasureOut m_cur;
};

} // namespace tahrir::musicxml
