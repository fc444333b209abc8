#pragma once
// Shared by the window tests: an offscreen application, a fresh folder, and dialogs that
// answer from a script and keep what they were asked.

#include <QAction>
#include <QApplication>
#include <deque>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "temp_folder.h"
#include "ui/dialogs.h"
#include "ui/main_window.h"

namespace tahrir::ui::test {

// The one QApplication of the test program, on the offscreen platform.
QApplication& App();

using ::tahrir::test::TempFolder;

class ScriptedDialogs : public Dialogs {
public:
    std::deque<std::optional<std::string>> inputs;
    std::deque<Answer> answers; // when empty: Cancel if offered, else No
    std::deque<std::string> openPaths, savePaths;
    std::vector<std::string> messages, questionsAsked, inputsAsked;
    int openDialogs = 0;

    std::optional<std::string> input(const std::string&, const std::string& prompt,
                                     const std::string&) override {
        inputsAsked.push_back(prompt);
        return next(inputs, std::optional<std::string>());
    }
    void message(const std::string&, const std::string& text) override { messages.push_back(text); }
    Answer question(const std::string&, const std::string& text, bool cancel) override {
        questionsAsked.push_back(text);
        return next(answers, cancel ? Answer::Cancel : Answer::No);
    }
    std::string openFile(const std::string&, const std::string&) override {
        ++openDialogs;
        return next(openPaths, std::string());
    }
    std::string saveFile(const std::string&, const std::string&, const std::string&) override {
        return next(savePaths, std::string());
    }
    std::optional<std::string> font() override { return std::string("DejaVu Sans"); }
    // The track frame and the scales frame answer from these; what they were shown is kept.
    std::deque<std::optional<int>> tracks, scales;
    std::vector<std::string> trackDump, scaleNames;
    std::optional<int> midiTrack(const midifile::MidiFileInfo&,
                                 const std::vector<std::string>& dump) override {
        trackDump = dump;
        return next(tracks, std::optional<int>());
    }
    std::optional<int> scale(const std::vector<std::string>& names,
                             const std::function<void()>&) override {
        scaleNames = names;
        return next(scales, std::optional<int>());
    }

private:
    // The next scripted reply, or `fallback` once the script has run out.
    template <typename T> static T next(std::deque<T>& script, T fallback) {
        if (script.empty()) return fallback;
        T a = std::move(script.front());
        script.pop_front();
        return a;
    }
};

// The child of that object name; a missing one fails the test by throwing.
template <typename W = QWidget> W* ChildOf(const QObject& parent, const char* name) {
    if (auto* w = parent.findChild<W*>(name)) return w;
    throw std::runtime_error(std::string("no child named ") + name);
}

// A window on a fresh data folder, without sound, answering from `dialogs`.
struct WindowRig {
    TempFolder folder;
    ScriptedDialogs dialogs;
    std::unique_ptr<MainWindow> window;

    // `language`: the window's texts, English unless told, whatever the machine's locale.
    explicit WindowRig(const std::string& language = "en");
    // A copy of a shipped demo score in the rig's folder.
    std::string demoCopy(const std::string& name = "shur-daramad.srv") const;
    // A key on the score view through Qt's own key events, `times` over.
    void key(int qtKey, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int times = 1);
    void enterEditor();
    // Runs the menu entry of that object name.
    void trigger(const char* action) const {
        auto* a = window->findChild<QAction*>(action);
        ASSERT_NE(a, nullptr) << action;
        a->trigger();
    }
    template <typename W = QWidget> W* child(const char* name) const {
        return ChildOf<W>(*window, name);
    }
    core::Document& doc() const { return window->document(); }
    std::string line(int i) const { return doc().Sheet[i].text(); }
};

// A copy of the demo open in a fresh window, the start of most window tests.
class DemoWindow : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(rig.window->openPath(file)); }
    WindowRig rig;
    const std::string file = rig.demoCopy();
};

} // namespace tahrir::ui::test
