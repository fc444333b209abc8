#pragma once
// The questions and boxes the window asks. The Qt form shows real dialogs; tests answer
// from a script so that nothing waits for a person.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "midifile/midi_reader.h"

class QWidget;

namespace tahrir::ui {
class OpenPreviewDialog;
}

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
    // The track frame of the MIDI import: a track from 1, nullopt for Cancel.
    virtual std::optional<int> midiTrack(const midifile::MidiFileInfo&, const std::vector<std::string>&) {
        return std::nullopt;
    }
    // The scales frame: an entry of `names` (0-based), nullopt for Cancel or none.
    virtual std::optional<int> scale(const std::vector<std::string>&, const std::function<void()>&) {
        return std::nullopt;
    }
};

// Modal Qt dialogs over `parent`.
class QtDialogs : public Dialogs {
public:
    explicit QtDialogs(QWidget* parent);
    ~QtDialogs() override;
    std::optional<std::string> input(const std::string& title, const std::string& prompt,
                                     const std::string& defaultText) override;
    void message(const std::string& title, const std::string& text) override;
    Answer question(const std::string& title, const std::string& text, bool cancel) override;
    std::string openFile(const std::string& title, const std::string& filter) override;
    std::string saveFile(const std::string& title, const std::string& filter,
                         const std::string& preset) override;
    std::optional<std::string> font() override;
    std::optional<int> midiTrack(const midifile::MidiFileInfo& info, const std::vector<std::string>& dump) override;
    std::optional<int> scale(const std::vector<std::string>& names,
                             const std::function<void()>& standardTuning) override;

private:
    OpenPreviewDialog& scoreDialog();

    QWidget* m_parent;
    std::unique_ptr<OpenPreviewDialog> m_scoreDialog;
};

} // namespace tahrir::ui
