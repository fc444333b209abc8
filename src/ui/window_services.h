#pragma once
// The editor's services as the window provides them: the system clipboard and the
// dialogs and window actions that keys reach.

#include "edit/services.h"

namespace tahrir::ui {

class MainWindow;

class SystemClipboard : public edit::Clipboard {
public:
    void clear() override;
    void setText(const std::string& text) override;
    std::string text() const override;
};

class WindowHost : public edit::EditorHost {
public:
    explicit WindowHost(MainWindow& window) : m_window(window) {}
    // Texts cross here between the score's code page and the dialogs' UTF-8.
    std::optional<std::string> inputBox(const std::string& title, const std::string& defaultText) override;
    void messageBox(const std::string& text) override;
    std::optional<std::string> fontDialog() override;
    void exitRequested() override;
    void loadFileRequested() override;
    void instrumentClick(int index) override;

private:
    MainWindow& m_window;
};

} // namespace tahrir::ui
