#pragma once
// The main form: the score view with its palette, measure strip, text tools, description
// panel and playback panel around it, and the commands of files and leaving.

#include <QMainWindow>
#include <memory>
#include <optional>
#include <string>

#include "core/document.h"
#include "core/page_store.h"
#include "edit/file_undo_pages.h"
#include "ui/key_translate.h"
#include "ui/view_layout.h"

class QCheckBox;
class QLabel;
class QAction;
class QLineEdit;
class QMenu;
class QListWidget;
class QPlainTextEdit;
class QScrollArea;
class QSlider;
class QTimer;

namespace tahrir::edit {
class Editor;
}

namespace tahrir::ui {

class Dialogs;
class FingeringDock;
class FMeter;
class HelpWindow;
class Language;
class MeasureStrip;
class PalettePanel;
class Playback;
class PlaybackPanel;
class PrintCommands;
class ReferenceStrip;
class ScoreView;
class TextFrames;
class WindowHost;
class SystemClipboard;

struct WindowOptions {
    std::filesystem::path appFolder;
    std::string output = "auto"; // the player's output: auto, midi, synth, none
    Dialogs* dialogs = nullptr;  // null: the Qt dialogs
    bool rememberLayout = true;  // window geometry and docks kept between runs
    std::string language;        // "en" or "fa"; empty: the saved choice, else the system's
};

class MainWindow : public QMainWindow {
public:
    explicit MainWindow(const WindowOptions& options, QWidget* parent = nullptr);
    ~MainWindow() override;

    // Files and leaving.
    void NewImage();
    void LoadFile(int index);
    bool openPath(const std::string& path);
    void reload();
    bool SaveImage();
    // Both exit questions; true when the program may end.
    bool ExitImage();
    // File > Export > MIDI, plain (0) or microtonal (1), and File > Import MIDI.
    void exportMidi(int microtonal);
    void importMidi();
    // The scales frame; true when line 1 took a signature.
    bool insertScale();
    // Insert > Text line and Insert > Lyric under the note, in the editor.
    void insertTextLine(bool lyric);
    // The pen holds a change that the line under the cursor has not taken.
    bool penPending() const;
    bool saveAs();
    // CmdJpg: shows a reference picture above the sheet, or hides the strip.
    void cmdJpg();
    ReferenceStrip* referenceStrip() const { return m_strip; }
    // At start: offers the last snapshot of a run that did not end normally (recovery.cpp);
    // true when it was restored.
    bool offerRecovery();

    // A key of the score view, as the palette and the keyboard send it.
    void editorKey(EditorKey key);
    void setViewMode(render::View mode);
    void setZoom(double zoomBase);
    // The window's language, "en" or "fa", switched in every open window at once.
    QString language() const;
    void setLanguage(const QString& code);
    // The transcription window, made on first use.
    FMeter* openFMeter();

    edit::Editor& editor() { return *m_editor; }
    core::Document& document() { return m_doc; }
    const core::Session& session() const { return m_session; }
    ScoreView* scoreView() const { return m_pic; }
    PalettePanel* palette() const { return m_palette; }
    MeasureStrip* measureStrip() const { return m_measures; }
    Playback& playback() { return *m_playback; }
    PrintCommands& printCommands() { return *m_print; }
    ViewLayout& layout() { return m_layout; }
    // The title the bar shows for the open score.
    QString scoreTitle() const;

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    friend class WindowHost;
    void buildWidgets();
    void buildMenus();
    void buildDocks();
    void wireEditor();
    void wireMeasures();
    void wireTools();
    void wirePlayback();
    bool settleUnsaved(const std::string& title);
    void documentLoaded();
    // Brings every control up to the editor's state after a command.
    void afterEdit(int oldLine, int oldGeneration);
    void syncFrames();
    void syncHint();
    void followCursor();
    bool viewerScroll(EditorKey key);
    void showRecentList();
    void descriptionToPanel();
    void pollPlayback();
    // Before a save or leaving: offers to store the pen. False when the user cancels.
    bool storePenFirst();
    void syncPenNotice();
    void noOutputNotice();
    // The docks narrow on a small window so that the score keeps most of it.
    void fitDocks();
    void buildFileExtras(QMenu* file, QAction* save);
    void buildEditMenu();
    void buildHelpMenu();
    // Help, made on first use (or soon after the start) and kept; a language switch drops it.
    HelpWindow& helpWindow();
    void fillRecentMenu();
    void assignMenuKeys();
    // Window geometry and the docks' places, kept in the user's settings.
    void restoreLayout();
    void saveLayout();
    void startLanguage(const WindowOptions& options);
    void buildLanguageMenu(QMenu* view);

    std::unique_ptr<Language> m_language; // first made, last gone: every text goes through it
    core::Session m_session;
    core::Document m_doc;
    std::unique_ptr<core::PageStore> m_store;
    std::unique_ptr<edit::FileUndoPages> m_undo;
    ViewLayout m_layout;
    std::unique_ptr<Dialogs> m_ownDialogs;
    Dialogs* m_dialogs = nullptr;
    std::unique_ptr<SystemClipboard> m_clipboard;
    std::unique_ptr<WindowHost> m_host;
    std::unique_ptr<Playback> m_playback;
    std::unique_ptr<edit::Editor> m_editor;

    ScoreView* m_pic = nullptr;
    QScrollArea* m_picScroll = nullptr;
    PalettePanel* m_palette = nullptr;
    QLabel* m_hint = nullptr;
    MeasureStrip* m_measures = nullptr;
    TextFrames* m_frames = nullptr;
    PlaybackPanel* m_playPanel = nullptr;
    PrintCommands* m_print = nullptr;
    FingeringDock* m_fingering = nullptr;
    QCheckBox* m_editorCh = nullptr;
    QLabel* m_descriptLabel = nullptr;
    QPlainTextEdit* m_descriptText = nullptr;
    QListWidget* m_recent = nullptr;
    QLineEdit* m_record = nullptr; // RCDTxt, the pen's raw text
    QSlider* m_zoom = nullptr;
    QMenu* m_recentMenu = nullptr;
    ReferenceStrip* m_strip = nullptr;
    HelpWindow* m_help = nullptr;
    QTimer* m_playTimer = nullptr;
    bool m_rangeChosen = false; // the user picked measures to play
    bool m_closing = false;
    bool m_rememberLayout = true;
};

// The text of the View menu's size entry `size`.
QString ViewSizeText(int size);

} // namespace tahrir::ui
