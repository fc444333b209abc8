// The window's commands beyond files and leaving: MIDI export and import, and the key
// signatures of the scales frame.

#include <QDockWidget>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QTimer>
#include <QStatusBar>
#include <filesystem>

#include "app/midi_export.h"
#include "core/app_folder.h"
#include "core/session.h"
#include "edit/editor.h"
#include "edit/key_codes.h"
#include "midifile/midi_import.h"
#include "play/pitch_table.h"
#include "play/tuning.h"
#include "ui/dialogs.h"
#include "ui/main_window.h"
#include "ui/playback.h"
#include "ui/palette_panel.h"
#include "ui/playback_panel.h"
#include "ui/reference_strip.h"
#include "ui/ui_text.h"

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
    std::string path = m_dialogs->saveFile(microtonal ? TrStd("Files", "Export MIDI (microtonal)") : TrStd("Files", "Export MIDI"),
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
    statusBar()->showMessage(Tr("Files", "Wrote %1").arg(QString::fromStdString(path)), 6000);
}

void MainWindow::importMidi() {
    if (!settleUnsaved("File has been changed !")) return;
    const std::string midi = m_dialogs->openFile(TrStd("Files", "Import MIDI"), kMidiFilter);
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
        statusBar()->showMessage(
            Tr("Files", "Imported %1 notes into %2").arg(r.notes).arg(QString::fromStdString(score.string())), 8000);
}

// InsertScale: the named signatures of "Kookha.tun"; OK writes the chosen one to line 1.
bool MainWindow::insertScale() {
    const auto file = TuningFile(m_session);
    const play::TuningFile tuning = play::LoadTuning(file);
    if (!tuning.opened) {
        m_dialogs->message("Tahrir", TrStd("Files", "Can't read ") + file.string());
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

void MainWindow::insertTextLine(bool lyric) {
    if (!m_editor->state().editing()) editorKey({edit::Key::Letter('E'), edit::Shift::Ctrl});
    editorKey({edit::Key::F(lyric ? 6 : 5), edit::Shift::Shift});
}

namespace {

const char* const kPenNotice = QT_TRANSLATE_NOOP("Window", "Enter stores the note");

} // namespace

bool MainWindow::penPending() const {
    const core::ScoreSheet& sheet = m_doc.Sheet;
    if (!m_editor->state().editing() || sheet.CurrentLine < 4 || sheet.CurrentLine > sheet.LastLine) return false;
    return sheet[0].trimmedRight() != sheet[sheet.CurrentLine].trimmedRight();
}

void MainWindow::syncPenNotice() {
    if (penPending())
        statusBar()->showMessage(Tr("Window", kPenNotice));
    else if (statusBar()->currentMessage() == Tr("Window", kPenNotice))
        statusBar()->clearMessage();
}

bool MainWindow::storePenFirst() {
    if (!penPending()) return true;
    switch (m_dialogs->question("Tahrir", TrStd("Window", "The note in the pen is not stored yet. Store it first ?"), true)) {
    case Answer::Cancel: return false;
    case Answer::Yes: editorKey({edit::Key::Enter, edit::Shift::None}); break;
    case Answer::No: break;
    }
    return true;
}

// Said once, in the status bar and on the playback panel, with the way to get sound.
void MainWindow::noOutputNotice() {
    const QString text =
        Tr("Window", "No sound output: %1. Install a General MIDI sound font (Debian package "
                     "fluid-soundfont-gm) or start a MIDI synthesiser, then start Tahrir again.")
            .arg(QString::fromStdString(m_playback->outputDescription()));
    statusBar()->showMessage(text, 20000);
    m_playPanel->showNoOutput(text);
}

// Below 1280 pixels the docks share one narrow column as tabs, the palette four entries a
// row, so that the score keeps the rest of the window; wider, the playback and
// description docks go back to the right.
void MainWindow::fitDocks() {
    auto* palette = findChild<QDockWidget*>("PaletteDock");
    auto* play = findChild<QDockWidget*>("PlaybackDock");
    auto* desc = findChild<QDockWidget*>("DescriptionDock");
    auto* fingering = findChild<QDockWidget*>("FingeringDock");
    if (!palette || !play || !desc || !fingering) return;
    const bool small = width() < 1280;
    if (property("smallLayout").toBool() == small) return;
    setProperty("smallLayout", small);
    m_palette->setColumns(small ? 4 : 6);
    // Wide, the palette's column is as wide as its entries, in either direction of the window.
    if (auto* scroll = qobject_cast<QScrollArea*>(palette->widget()))
        scroll->setMinimumWidth(
            small ? 0 : m_palette->sizeHint().width() + scroll->verticalScrollBar()->sizeHint().width() + 4);
    for (QDockWidget* d : {palette, play, desc, fingering}) d->setMaximumWidth(small ? 250 : 360);
    if (small) {
        tabifyDockWidget(palette, play);
        tabifyDockWidget(palette, desc);
        tabifyDockWidget(palette, fingering);
        palette->raise();
        resizeDocks({palette}, {240}, Qt::Horizontal);
    } else {
        addDockWidget(Qt::RightDockWidgetArea, play);
        addDockWidget(Qt::RightDockWidgetArea, desc);
        // The fingering views share the description's place, one tab each.
        tabifyDockWidget(desc, fingering);
        desc->raise();
    }
}

void MainWindow::restoreLayout() {
    const QSettings settings;
    restoreGeometry(settings.value("window/geometry").toByteArray());
    restoreState(settings.value("window/docks").toByteArray());
}

void MainWindow::saveLayout() {
    QSettings settings;
    settings.setValue("window/geometry", saveGeometry());
    settings.setValue("window/docks", saveState());
}

void MainWindow::cmdJpg() {
    if (m_strip->isVisible()) { // closing keeps the path
        m_strip->hide();
        return;
    }
    const std::string path = m_dialogs->openFile(TrStd("Window", "Reference image"), "JPG Files (*.jpg *.jpeg *.png)");
    if (path.empty() || !m_strip->load(QString::fromStdString(path))) {
        if (!path.empty()) m_dialogs->message("Tahrir", TrStd("Window", "Can't read the picture ") + path);
        m_strip->clear();
        m_strip->hide();
        return;
    }
    m_strip->show();
}

} // namespace tahrir::ui
