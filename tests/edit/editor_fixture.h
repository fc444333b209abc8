#pragma once
// An editor on a small score, with recording services and a fresh temporary folder.

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "edit/basic_layout.h"
#include "edit/editor.h"
#include "edit/key_codes.h"
#include "edit/key_tokens.h"
#include "temp_folder.h"

namespace tahrir::edit::test {

using Lines = std::vector<std::string>;
using Pair = std::pair<int, int>;

struct RecordingAuditioner : Auditioner {
    std::vector<NoteSound> notes;
    void soundNote(const NoteSound& n) override { notes.push_back(n); }
};

struct ScriptedHost : EditorHost {
    std::deque<std::optional<std::string>> answers;
    Lines titles, messages;
    std::optional<std::string> font;
    std::optional<std::string> inputBox(const std::string& title, const std::string&) override {
        titles.push_back(title);
        if (answers.empty()) return std::nullopt;
        auto a = answers.front();
        answers.pop_front();
        return a;
    }
    void messageBox(const std::string& text) override { messages.push_back(text); }
    std::optional<std::string> fontDialog() override { return font; }
};

inline constexpr int kShift = Shift::Shift, kCtrl = Shift::Ctrl;
constexpr int K(char c) {
    return Key::Letter(c);
}

class EditorTest : public ::testing::Test {
protected:
    // Head lines, then the given body from line 4; the editor is switched on.
    void load(const Lines& body, UndoPages* pages = nullptr) {
        core::ScoreSheet& s = doc.Sheet;
        s.fill("        ");
        s.setLine(1, "       G  ");
        s.setLine(2, "TEMPO60");
        s.setLine(3, "RHYTM4/4");
        int i = 4;
        for (const auto& line : body)
            s.setLine(i++, line);
        s.LastLine = i - 1;
        s.CurrentLine = 2;
        editor = std::make_unique<Editor>(
            doc, EditorServices{&layout, &audio, &clipboard, &host, pages ? pages : &undo}, folder);
        editor->documentReplaced();
        editor->editorClick();
    }

    void key(int code, int shift = 0) { editor->keyPress(code, shift); }
    void ctrl(char c) { key(K(c), kCtrl); }
    // A band drawn from line a's symbol to line b's.
    void bandSelect(int a, int b) { RunKeyToken(*editor, {KeyToken::BandDrag, a, b, 0}); }
    // The first character of every body line.
    std::string body() const {
        std::string out;
        for (int i = 4; i <= last(); ++i)
            out += trimmed(i).substr(0, 1);
        return out;
    }
    std::string line(int i) const { return doc.Sheet[i].text(); }
    // Line text up to its last non-blank.
    std::string trimmed(int i) const { return std::string(doc.Sheet[i].trimmedRight()); }
    Lines trimmed(int from, int to) const {
        Lines out;
        for (int i = from; i <= to; ++i)
            out.push_back(trimmed(i));
        return out;
    }
    std::string penTrimmed() const { return std::string(doc.Sheet.PenLine().trimmedRight()); }
    // The step of every sounded note, 0 where nothing pitched was sounded.
    std::vector<int> sounded() const {
        std::vector<int> steps;
        for (const NoteSound& n : audio.notes)
            steps.push_back(n.pitched ? n.step : 0);
        return steps;
    }
    std::string caption() const { return editor->state().labels[0].caption; }
    std::string keySignature() const { return line(1).substr(0, 8); }
    int current() const { return doc.Sheet.CurrentLine; }
    int last() const { return doc.Sheet.LastLine; }
    Pair sel() const { return {editor->state().SelStart, editor->state().SelEnd}; }

    ::tahrir::test::TempFolder temp;
    std::filesystem::path folder = temp.path();
    core::Document doc;
    BasicLayout layout;
    RecordingAuditioner audio;
    MemoryClipboard clipboard;
    ScriptedHost host;
    MemoryUndoPages undo;
    std::unique_ptr<Editor> editor;
};

} // namespace tahrir::edit::test
