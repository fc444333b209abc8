#pragma once
// The questions and boxes the window asks. The Qt form shows real dialogs; tests answer
// from a script so that nothing waits for a person.

#include <optional>
#include <string>

class QWidget;

namespace tahrir::ui {

enum class Answer { Yes, No, Cancel };

class Dialogs {
public:
    virtual ~Dialogs() = default;
    // Text in UTF-8; nullopt when the box was cancelled.
    virtual std::optional<std::string> input(const std::string& title, const std::string& prompt,
                                             const std::string& defaultText) = 0;
    virtual void message(const std::string& title, const std::string& text) = 0;
    virtual Answer question(const std::string& title, const std::string& text, bool cancel) = 0;
    // A path from the file dialogs; empty when cancelled.
    virtual std::string openFile(const std::string& title, const std::string& filter) = 0;
    virtual std::string saveFile(const std::string& title, const std::string& filter,
                                 const std::string& preset) = 0;
    virtual std::optional<std::string> font() = 0;
};

// Modal Qt dialogs over `parent`.
class QtDialogs : public Dialogs {
public:
    explicit QtDialogs(QWidget* parent) : m_parent(parent) {}
    std::optional<std::string> input(const std::string& title, const std::string& prompt,
                                     const std::string& defaultText) override;
    void message(const std::string& title, const std::string& text) override;
    Answer question(const std::string& title, const std::string& text, bool cancel) override;
    std::string openFile(const std::string& title, const std::string& filter) override;
    std::string saveFile(const std::string& title, const std::string& filter,
                         const std::string& preset) override;
    std::optional<std::string> font() override;

private:
    QWidget* m_parent;
};

} // namespace tahrir::ui
