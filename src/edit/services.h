#pragma once
// What the editor asks of the rest of the program. The window and the command line wire
// these to the renderer, the player, the system clipboard and the page store.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/position_table.h"
#include "core/score_sheet.h"

namespace tahrir::edit {

// What a fresh layout tells the editor besides the position table.
struct LayoutFacts {
    int measureCount = 0;         // measures found by the walk
    std::string rhythmWord;       // the last rhythm word the walk read, empty for none
    std::vector<int> lineMeasure; // measure number of each sheet index (may be empty)
    double leftMargin = 3;
};

// Draws the whole page again and fills LinePosX and LinePosY.
class LayoutService {
public:
    virtual ~LayoutService() = default;
    virtual LayoutFacts relayout(const core::ScoreSheet& sheet, core::PositionTable& positions) = 0;
};

// One note to audition: the pitch digits, 1 when column 1 is a digit, the accidental text
// (a blank, column 7 and column 6) and the mark.
struct NoteSound {
    int step = 0;
    int octave = 0;
    int pitched = 1;
    std::string accidental;
    std::string mark;
};

// Sounds typed notes and runs the play commands.
class Auditioner {
public:
    virtual ~Auditioner() = default;
    virtual void soundNote(const NoteSound& note) = 0;
    virtual bool busy() const { return false; } // playing or paused
    virtual void playPause() {}
    virtual void playFrom(int /*line*/) {}
    virtual void playFromStart() {}
    virtual void stopAllNotes() {}
    virtual void speakStep(int /*step*/) {} // the sung syllable of a scale step
};

// The system's text clipboard.
class Clipboard {
public:
    virtual ~Clipboard() = default;
    virtual void clear() = 0;
    virtual void setText(const std::string& text) = 0;
    virtual std::string text() const = 0;
};

class MemoryClipboard : public Clipboard {
public:
    void clear() override { m_text.clear(); }
    void setText(const std::string& text) override { m_text = text; }
    std::string text() const override { return m_text; }

private:
    std::string m_text;
};

// Dialogs and window actions the keys reach. Answers of nullopt are a cancelled box.
class EditorHost {
public:
    virtual ~EditorHost() = default;
    virtual std::optional<std::string> inputBox(const std::string& title,
                                                const std::string& defaultText) = 0;
    virtual void messageBox(const std::string& text) = 0;
    virtual std::optional<std::string> fontDialog() { return std::nullopt; }
    virtual void exitRequested() {}
    virtual void loadFileRequested() {}
    virtual void instrumentClick(int /*index*/) {}
    virtual void toggleMidiIn() {}
    virtual void toggleMicIn() {}
};

// The undo pages: record `index` (0..2048) of page `page`, 32 bytes each.
class UndoPages {
public:
    virtual ~UndoPages() = default;
    // Writes records 0..records.size()-1 of a page.
    virtual void writePage(int page, const std::vector<std::string>& records) = 0;
    // A record as stored, or blanks where nothing was ever written.
    virtual std::string readRecord(int page, int index) const = 0;
};

class MemoryUndoPages : public UndoPages {
public:
    void writePage(int page, const std::vector<std::string>& records) override;
    std::string readRecord(int page, int index) const override;
    int pageCount() const { return static_cast<int>(m_pages.size()); }

private:
    std::vector<std::vector<std::string>> m_pages;
};

} // namespace tahrir::edit
