#pragma once
// Shared by the window tests: an offscreen application, a fresh folder, and dialogs that
// answer from a script and keep what they were asked.

#include <QApplication>
#include <deque>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ui/dialogs.h"
#include "temp_folder.h"
#include "ui/main_window.h"

namespace tahrir::ui::test {

// The one QApplication of the test program, on the offscreen platform.
QApplication& App();

using ::tahrir::test::TempFolder;

class ScriptedDialogs : public Dialogs {
public:
    std::deque<std::optional<std::string>> inputs;
    std::deque<Answer> answers;
    std::deque<std::string> openPaths;
    std::deque<std::string> savePaths;
    std::vector<std::string> messages;
    std::vector<std::string> questionsAsked;
    std::vector<std::string> inputsAsked;
    int openDialogs = 0;

    std::optional<std::string> input(const std::string&, const std::string& prompt,
                                     const std::string&) override;
    void message(const std::string&, const std::string& text) override { messages.push_back(text); }
    Answer question(const std::string&, const std::string& text, bool cancel) override;
    std::string openFile(const std::string&, const std::string&) override;
    std::string saveFile(const std::string&, const std::string&, const std::string&) override;
    std::optional<std::string> font() override { return std::string("DejaVu Sans"); }
};

// A window on a fresh data folder, without sound, answering from `dialogs`.
struct WindowRig {
    TempFolder folder;
    ScriptedDialogs dialogs;
    std::unique_ptr<MainWindow> window;

    WindowRig();
    // A copy of a shipped demo score in the rig's folder.
    std::string demoCopy(const std::string& name = "shur-daramad.srv") const;
    // A key on the score view through Qt's own key events.
    void key(int qtKey, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void enterEditor();
};

} // namespace tahrir::ui::test
