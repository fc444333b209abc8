#pragma once
// An editor on a small score, with recording services and a fresh temporary folder.

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "edit/basic_layout.h"
#include "edit/editor.h"
#include "edit/key_codes.h"
#include "temp_folder.h"

namespace tahrir::edit::test {

struct RecordingAuditioner : Auditioner {
    std::vector<NoteSound> notes;
    void soundNote(const NoteSound& n) override { notes.push_back(n); }
};

struct ScriptedHost : EditorHost {
    std::deque<std::optional<std::string>> answers;
    std::vector<std::string> titles;
    std::vector<std::string> messages;
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

class EditorTest : public ::testing::Test {
protected:
    // Head lines, then the given body from line 4; the editor is switched on.
    void load(const std::vector<std::string>& body) {
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
        editor = std::make_unique<Editor>(doc, services(), folder);
        editor->documentReplaced();
        editor->editorClick();
    }
    EditorServices services() { return {&layout, &audio, &clipboard, &host, &undo}; }

    void key(int code, int shift = 0) { editor->keyPress(code, shift); }
    void keys(std::initializer_list<int> codes, int shift = 0) {
        for (int c : codes)
            key(c, shift);
    }
    std::string line(int i) const { return doc.Sheet[i].text(); }
    std::string pen() const { return doc.Sheet.PenLine().text(); }
    // Line text up to its last non-blank.
    std::string trimmed(int i) const { return std::string(doc.Sheet[i].trimmedRight()); }
    std::string penTrimmed() const { return std::string(doc.Sheet.PenLine().trimmedRight()); }
    int current() const { return doc.Sheet.CurrentLine; }
    int last() const { return doc.Sheet.LastLine; }

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

inline constexpr int kShift = Shift::Shift, kCtrl = Shift::Ctrl;
constexpr int K(char c) {
    return Key::Letter(c);
}

} // namespace tahrir::edit::test
