// The window's commands beyond files and leaving: MIDI export and import, and the key
// signatures of the scales frame.

#include <QScrollBar>
#include <QStatusBar>
#include <filesystem>

#include "app/midi_export.h"
#include "core/app_folder.h"
#include "core/session.h"
#include "edit/editor.h"
#include "midifile/midi_import.h"
#include "play/pitch_table.h"
#include "play/tuning.h"
#include "ui/dialogs.h"
#include "ui/main_window.h"
#include "ui/playback.h"
#include "ui/playback_panel.h"

namespace tahrir::ui {

namespace {

constexpr const char* kMidiFilter = "Midi files (*.mid *.midi)";

// The window's answers to the import's two questions: the track frame and the octave box.
class WindowImportChooser : public midifile::ImportChooser {
public:
    explicit WindowImportChooser(Dialogs& dialogs) : m_dialogs(dialogs) {}
    std::optional<int> chooseTrack(const midifile::MidiFileInfo& info,
                                   const std::vector<std::string>& dump) override {
        return m_dialogs.midiTrack(info, dump);
    }
    std::string askOctave(const std::string& prompt, const std::string& trackName) override {
        return m_dialogs.input(trackName, prompt, "0").value_or("0");
    }

private:
    Dialogs& m_dialogs;
};

// A score file beside the MIDI file that does not exist yet: NAME.srv, NAME-2.srv, ...
std::filesystem::path FreeScoreName(const std::filesystem::path& midi) {
    std::filesystem::path out = midi;
    out.replace_extension(".srv");
    for (int n = 2; std::filesystem::exists(out); ++n)
        out = midi.parent_path() / (midi.stem().string() + "-" + std::to_string(n) + ".srv");
    return out;
}

// The user's own "Kookha.tun" in the data folder, else the one shipped with the program.
std::filesystem::path TuningFile(const core::Session& session) {
    const auto own = session.file("Kookha.tun");
    if (std::filesystem::exists(own)) return own;
    const auto shipped = core::ShippedDataFolder();
    return shipped.empty() ? own : shipped / "Kookha.tun";
}

} // namespace

void MainWindow::exportMidi(int microtonal) {
    std::string path = m_dialogs->saveFile(microtonal ? "Export MIDI (microtonal)" : "Export MIDI",
                                           kMidiFilter, "");
    if (path.empty()) return;
    if (std::filesystem::path(path).extension().empty()) path += ".mid";
    m_playback->stopClick();
    app::MidiExport what;
    what.appFolder = m_session.AppFolder;
    what.output = path;
    what.kind = microtonal ? app::MidiKind::Microtonal : app::MidiKind::Plain;
    const std::string error = app::ExportMidi(m_doc.Sheet, m_playback->player(), what);
    if (!error.empty()) {
        m_dialogs->message("Tahrir", error);
        return;
    }
    statusBar()->showMessage(QString::fromStdString("Wrote " + path), 6000);
}

void MainWindow::importMidi() {
    if (!settleUnsaved("File has been changed !")) return;
    const std::string midi = m_dialogs->openFile("Import MIDI", kMidiFilter);
    if (midi.empty()) return;
    m_playback->stopClick();
    const std::filesystem::path score = FreeScoreName(midi);
    WindowImportChooser chooser(*m_dialogs);
    midifile::DumpList dump;
    core::Document imported;
    const midifile::ImportResult r = midifile::ImportMidiFile(midi, score, chooser, dump, imported);
    if (r.status == midifile::ImportStatus::Cancelled) return;
    if (r.status == midifile::ImportStatus::Failed) {
        m_dialogs->message("Tahrir", midi + ": " + r.message);
        return;
    }
    // The file on disk is opened like any score, so the reader's full result shows.
    if (openPath(score.string()))
        statusBar()->showMessage(QString::fromStdString("Imported " + std::to_string(r.notes) + " notes into " +
                                                        score.string()), 8000);
}

// InsertScale: the named signatures of "Kookha.tun"; OK writes the chosen one to line 1.
bool MainWindow::insertScale() {
    const auto file = TuningFile(m_session);
    const play::TuningFile tuning = play::LoadTuning(file);
    if (!tuning.opened) {
        m_dialogs->message("Tahrir", "Can't read " + file.string());
        return false;
    }
    std::vector<std::string> names;
    for (const play::ScaleEntry& e : tuning.entries) names.push_back(e.name);
    const auto standardTuning = [this] {
        if (auto* bar = m_playPanel->findChild<QScrollBar*>("HScroll1")) bar->setValue(play::TransposeCentre);
    };
    const std::optional<int> chosen = m_dialogs->scale(names, standardTuning);
    if (!chosen || !play::ApplyScale(m_doc.Sheet, tuning, *chosen)) return false;
    m_doc.DirtyFlag = true;
    m_editor->TakeSnapshot();
    setViewMode(m_layout.options().ViewMode);
    return true;
}

} // namespace tahrir::ui
