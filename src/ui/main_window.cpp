#include "ui/main_window.h"
#include "ui/print_frame.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

#include "core/app_folder.h"
#include "core/cp1256.h"
#include "core/load_file.h"
#include "core/session.h"
#include "edit/editor.h"
#include "edit/key_codes.h"
#include "ui/dialogs.h"
#include "ui/fingering_dock.h"
#include "ui/language.h"
#include "ui/measure_strip.h"
#include "ui/musicxml_command.h"
#include "ui/palette_panel.h"
#include "ui/playback.h"
#include "ui/playback_panel.h"
#include "ui/reference_strip.h"
#include "ui/score_view.h"
#include "ui/text_frames.h"
#include "ui/ui_text.h"
#include "ui/window_services.h"

namespace tahrir::ui {

namespace {

QString Utf8(const std::string& cp1256) { return QString::fromStdString(core::Cp1256ToUtf8(cp1256)); }

// The music font's family, loaded from its file.
QString MusicFamily(const std::filesystem::path& fontFile) {
    const int id = QFontDatabase::addApplicationFont(QString::fromStdString(fontFile.string()));
    return id >= 0 ? QFontDatabase::applicationFontFamilies(id).value(0) : QString("Bravura");
}

} // namespace

MainWindow::MainWindow(const WindowOptions& options, QWidget* parent) : QMainWindow(parent) {
    setObjectName("Form1");
    startLanguage(options);
    core::StartSession(m_session, options.appFolder);
    m_store = std::make_unique<core::PageStore>(core::PageStore::PathIn(options.appFolder));
    m_undo = std::make_unique<edit::FileUndoPages>(core::PageStore::PathIn(options.appFolder));
    m_undo->noteSnapshotsFor([this] { return m_doc.CurrentFileName; });
    if (options.dialogs) {
        m_dialogs = options.dialogs;
    } else {
        m_ownDialogs = std::make_unique<QtDialogs>(this);
        m_dialogs = m_ownDialogs.get();
    }
    m_clipboard = std::make_unique<SystemClipboard>();
    m_host = std::make_unique<WindowHost>(*this);
    m_playback = std::make_unique<Playback>(m_doc, options.output, m_session.file("tmpmid.txt"));
    m_editor = std::make_unique<edit::Editor>(
        m_doc, edit::EditorServices{&m_layout, m_playback.get(), m_clipboard.get(), m_host.get(), m_undo.get()},
        options.appFolder);
    m_editor->setTextFont(m_session.TextFontName);
    buildWidgets();
    buildDocks();
    buildMenus();
    wireEditor();
    setWindowTitle("Tahrir");
    resize(1580, 960);
    m_rememberLayout = options.rememberLayout;
    if (m_rememberLayout) restoreLayout();
    if (options.output != "none" && !m_playback->hasOutput()) noOutputNotice();
    m_editor->documentReplaced();
    m_pic->pageChanged();
    m_pic->setFocus();
}

MainWindow::~MainWindow() = default;

void MainWindow::buildWidgets() {
    auto* central = new QWidget(this);
    auto* column = new QVBoxLayout(central);
    column->setContentsMargins(2, 2, 2, 2);
    auto* top = new QHBoxLayout;
    m_editorCh = new QCheckBox(Tr("Window", "Editor"), central);
    m_editorCh->setObjectName("EditorCh");
    m_editorCh->setFocusPolicy(Qt::NoFocus);
    m_zoom = new QSlider(Qt::Horizontal, central);
    m_zoom->setObjectName("HSFSize");
    m_zoom->setRange(3, 24);
    m_zoom->setValue(9);
    m_zoom->setMaximumWidth(160);
    m_zoom->setFocusPolicy(Qt::NoFocus);
    m_hint = new QLabel(central);
    m_hint->setObjectName("HpLb");
    m_hint->setLayoutDirection(Qt::RightToLeft);
    m_hint->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_hint->setWordWrap(true);
    m_hint->setStyleSheet("background:#fffbe0; border:1px solid #c0b060; padding:3px; font-size:15px;");
    m_hint->hide();
    top->addWidget(m_editorCh);
    top->addWidget(new QLabel(Tr("Window", "Zoom"), central));
    top->addWidget(m_zoom);
    top->addWidget(m_hint, 1);
    column->addLayout(top);

    m_recent = new QListWidget(central);
    m_recent->setObjectName("RecentList");
    m_recent->setMaximumHeight(160);
    m_recent->hide();
    column->addWidget(m_recent);

    m_strip = new ReferenceStrip(central);
    column->addWidget(m_strip);

    m_pic = new ScoreView(*m_editor, m_layout, core::MusicFontIn(m_session.AppFolder, m_session.MusicFontFile));
    m_picScroll = new QScrollArea(central);
    m_picScroll->setObjectName("PicScroll");
    m_picScroll->setWidget(m_pic);
    m_picScroll->setBackgroundRole(QPalette::Dark);
    m_picScroll->setAlignment(Qt::AlignHCenter | Qt::AlignTop); // a wide window centres the page
    column->addWidget(m_picScroll, 1);

    m_record = new QLineEdit(central);
    m_record->setObjectName("RCDTxt");
    m_record->setReadOnly(true);
    m_record->setFocusPolicy(Qt::NoFocus);
    m_record->hide();
    column->addWidget(m_record);
    m_frames = new TextFrames(central);
    m_frames->hide();
    column->addWidget(m_frames);
    m_measures = new MeasureStrip(central);
    column->addWidget(m_measures);
    setCentralWidget(central);
}

void MainWindow::buildDocks() {
    auto* paletteDock = new QDockWidget(Tr("Window", "Palette"), this);
    paletteDock->setObjectName("PaletteDock");
    m_palette = new PalettePanel(MusicFamily(core::MusicFontIn(m_session.AppFolder, m_session.MusicFontFile)));
    auto* paletteScroll = new QScrollArea(paletteDock);
    paletteScroll->setWidget(m_palette);
    paletteScroll->setWidgetResizable(true);
    paletteDock->setMaximumWidth(360);
    paletteDock->setWidget(paletteScroll);
    addDockWidget(Qt::LeftDockWidgetArea, paletteDock);

    auto* playDock = new QDockWidget(Tr("Window", "Playback"), this);
    playDock->setObjectName("PlaybackDock");
    m_playPanel = new PlaybackPanel(*m_playback, playDock);
    auto* playScroll = new QScrollArea(playDock); // on a small screen it scrolls, never cut off
    playScroll->setWidget(m_playPanel);
    playScroll->setWidgetResizable(true);
    playDock->setWidget(playScroll);
    playDock->setMaximumWidth(360);
    addDockWidget(Qt::RightDockWidgetArea, playDock);

    auto* descDock = new QDockWidget(Tr("Window", "Description"), this);
    descDock->setObjectName("DescriptionDock");
    auto* desc = new QWidget(descDock);
    auto* dl = new QVBoxLayout(desc);
    m_descriptLabel = new QLabel(desc);
    m_descriptLabel->setObjectName("DescriptLabel");
    m_descriptLabel->setAlignment(Qt::AlignCenter);
    m_descriptText = new QPlainTextEdit(desc);
    m_descriptText->setObjectName("DescriptText");
    m_descriptText->setLayoutDirection(Qt::RightToLeft);
    dl->addWidget(m_descriptLabel);
    dl->addWidget(m_descriptText);
    descDock->setWidget(desc);
    addDockWidget(Qt::RightDockWidgetArea, descDock);
    m_fingering = new FingeringDock(m_doc.Sheet, m_session.AppFolder, this);
    addDockWidget(Qt::RightDockWidgetArea, m_fingering);
    fitDocks();
}

void MainWindow::buildMenus() {
    QMenu* file = menuBar()->addMenu(Tr("Menu", "&File"));
    const auto add = [this](QMenu* menu, const char* name, const QString& text, auto slot) {
        QAction* a = menu->addAction(text);
        a->setObjectName(name);
        connect(a, &QAction::triggered, this, slot);
        return a;
    };
    add(file, "NewImage", Tr("Menu", "&New..."), [this] { NewImage(); });
    add(file, "LoadFile", Tr("Menu", "&Open..."), [this] { LoadFile(0); });
    QAction* save = add(file, "SaveImage", Tr("Menu", "&Save..."), [this] { SaveImage(); });
    buildFileExtras(file, save);
    file->addSeparator();
    add(file, "ImportMidi", Tr("Menu", "&Import MIDI..."), [this] { importMidi(); });
    QMenu* exportMenu = file->addMenu(Tr("Menu", "&Export"));
    exportMenu->setObjectName("ExportMenu");
    add(exportMenu, "ExportMidi", Tr("Menu", "&MIDI (plain)..."), [this] { exportMidi(0); });
    add(exportMenu, "ExportMidiMicrotonal", Tr("Menu", "MIDI (&microtonal, keeps quarter tones)..."), [this] { exportMidi(1); });
    add(exportMenu, "ExportMusicXml", Tr("Menu", "Music&XML..."), [this] {
        statusBar()->showMessage(QString::fromStdString(ExportMusicXmlCommand(
                                     *m_dialogs, m_doc, m_playback->player().controls())),
                                 6000);
    });
    add(file, "OpenFMeter", Tr("Menu", "&Transcribe a recording..."), [this] { openFMeter(); });
    file->addSeparator();
    m_print = new PrintCommands(this, *m_dialogs, [this] { return WindowPageSource(*this); });
    m_print->addTo(file, exportMenu);
    file->addSeparator();
    add(file, "ExitImage", Tr("Menu", "E&xit"), [this] { close(); });
    buildEditMenu();
    QMenu* insert = menuBar()->addMenu(Tr("Menu", "&Insert"));
    add(insert, "InsertScale", Tr("Menu", "&Key signature (dastgah)..."), [this] { insertScale(); });
    add(insert, "InsertTextLine", Tr("Menu", "&Text line\tShift+F5"), [this] { insertTextLine(false); });
    add(insert, "InsertLyric", Tr("Menu", "&Lyric under the note\tShift+F6"), [this] { insertTextLine(true); });
    QMenu* view = menuBar()->addMenu(Tr("Menu", "&View"));
    add(view, "PageView", Tr("Menu", "&Page view"), [this] { setViewMode(render::View::Page); });
    add(view, "WorkingView", Tr("Menu", "&Working view"),
        [this] { setViewMode(render::View::Working); });
    add(view, "CmdJpg", Tr("Menu", "&Reference image..."), [this] { cmdJpg(); });
    view->addAction(m_fingering->toggleViewAction());
    buildLanguageMenu(view);
    view->addSeparator();
    // ViewFont entries: the view's size is the entry's index less one.
    for (int i = 2; i <= 7; ++i)
        add(view, "ViewFont", ViewSizeText(i - 1), [this, i] {
            m_layout.options().ShowAllLines = true;
            setZoom(i - 1);
        });
    buildHelpMenu();
    assignMenuKeys();
}

void MainWindow::wireEditor() {
    m_pic->keyPressed = [this](EditorKey k) { editorKey(k); };
    m_pic->keyReleased = [this](EditorKey k) {
        if (k.key == 'O' && k.shift == 0) reload();
    };
    m_pic->mouseEdited = [this] { afterEdit(m_doc.Sheet.CurrentLine, -1); };
    m_palette->pressed = [this](int index, int shift) {
        const int line = m_doc.Sheet.CurrentLine, generation = m_layout.generation();
        m_editor->paletteClick(index, shift);
        afterEdit(line, generation);
        m_pic->setFocus();
    };
    m_palette->hovered = [this](int index) {
        m_editor->paletteHover(index);
        syncHint();
    };
    connect(m_editorCh, &QCheckBox::clicked, this, [this] {
        m_editor->editorClick();
        afterEdit(m_doc.Sheet.CurrentLine, -1);
        m_pic->setFocus();
    });
    connect(m_zoom, &QSlider::valueChanged, this, [this](int v) { setZoom(v / 3.0); });
    wireMeasures();
    wireTools();
    wirePlayback();
}

void MainWindow::wireMeasures() {
    m_measures->pressed = [this](int m, int button, int shift) {
        m_rangeChosen = true;
        m_editor->measureMouseDown(m, button, shift);
        afterEdit(m_doc.Sheet.CurrentLine, -1);
        m_pic->setFocus();
    };
    m_measures->doubleClicked = [this](int m) {
        m_rangeChosen = true;
        m_editor->measureDoubleClick(m);
        afterEdit(m_doc.Sheet.CurrentLine, -1);
    };
    m_measures->rangeMoved = [this](int start, int end) {
        m_rangeChosen = true;
        m_editor->chooseMeasureRange(start, end);
        m_measures->show(m_editor->state().measures);
    };
}

// The text and command tools, the description panel and the recent list.
void MainWindow::wireTools() {
    m_frames->textApplied = [this](const std::string& text, int option) {
        m_editor->textToolApply(core::Utf8ToCp1256(text), option);
        afterEdit(m_doc.Sheet.CurrentLine, -1);
        if (m_editor->state().focus == edit::Focus::Score) m_pic->setFocus();
    };
    m_frames->fontClicked = [this] {
        if (const auto f = m_dialogs->font()) m_editor->setTextFont(core::Utf8ToCp1256(*f));
        m_pic->update();
    };
    m_frames->commandApplied = [this](const std::string& text) {
        m_editor->commandToolApply(core::Utf8ToCp1256(text));
        afterEdit(m_doc.Sheet.CurrentLine, -1);
        m_pic->setFocus();
    };
    m_frames->commandEnter = [this] {
        m_editor->commandBoxEnter();
        afterEdit(m_doc.Sheet.CurrentLine, -1);
        m_pic->setFocus();
    };
    m_frames->listClicked = [this](int index) {
        m_editor->commandListClick(index);
        syncFrames();
    };
    connect(m_descriptText, &QPlainTextEdit::textChanged, this, [this] {
        std::string text = core::Utf8ToCp1256(m_descriptText->toPlainText().toStdString());
        // The file keeps CR LF inside the description.
        std::string out;
        for (const char c : text) out += c == '\n' ? std::string("\r\n") : std::string(1, c);
        if (out != m_doc.Description) m_doc.Description = out;
    });
    connect(m_recent, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
        const std::string path = item->text().toStdString();
        if (path == core::RecentListEnd) {
            m_recent->hide();
            return;
        }
        if (!settleUnsaved("File has been changed !")) return;
        openPath(path);
    });
}

void MainWindow::wirePlayback() {
    m_playback->selection = [this] {
        return std::pair<int, int>{m_editor->state().SelStart, m_editor->state().SelEnd};
    };
    m_playback->statusChanged = [this] { m_playPanel->statusChanged(); };
    m_playback->deviceLost = [this](const std::string& what) { m_dialogs->message("Tahrir", what); };
    m_playPanel->tempoMoved = [this](int v) { m_editor->setLiveTempo(v); };
    m_playback->syllableVoiceChanged = [this](bool on) { m_editor->setSyllableVoice(on); };
    m_playTimer = new QTimer(this);
    m_playTimer->setInterval(40);
    connect(m_playTimer, &QTimer::timeout, this, [this] { pollPlayback(); });
    m_playTimer->start();
}

void MainWindow::editorKey(EditorKey key) {
    const int line = m_doc.Sheet.CurrentLine, generation = m_layout.generation();
    const bool measureKey = key.key == edit::Key::NumPlus || key.key == edit::Key::NumMinus;
    if (measureKey) m_rangeChosen = true;
    if (viewerScroll(key)) return;
    m_editor->keyPress(key.key, key.shift);
    afterEdit(line, generation);
}

// Repaints what the command changed: the whole page after a new layout, else the rows of
// the old and the new cursor.
void MainWindow::afterEdit(int oldLine, int oldGeneration) {
    const int line = m_doc.Sheet.CurrentLine;
    const bool relaid = oldGeneration < 0 || m_layout.generation() != oldGeneration;
    const bool penWas = m_layout.penShown();
    if (m_editor->state().editing())
        m_layout.penResult(m_doc.Sheet, line);
    else
        m_layout.dropPen();
    if (relaid) {
        m_pic->pageChanged();
    } else {
        m_pic->updateLines(oldLine, line);
        if (penWas != m_layout.penShown()) m_pic->updateLines(line, line);
    }
    m_palette->setLit(m_editor->state().lit);
    m_palette->setHelpPointer(m_editor->state().HelpMode);
    m_editorCh->setChecked(m_editor->state().editing());
    m_measures->show(m_editor->state().measures);
    m_playPanel->setTempo(m_editor->state().LiveTempo);
    m_playback->player().controls().StartMeasure = m_rangeChosen ? m_editor->state().measures.StartMess : 0;
    m_playback->player().controls().EndMeasure = m_rangeChosen ? m_editor->state().measures.EndMess : 0;
    syncFrames();
    syncHint();
    followCursor();
    m_fingering->follow(line, m_layout.generation(), m_playback->player().controls().Transpose);
    setWindowTitle(scoreTitle());
    setWindowModified(m_doc.DirtyFlag);
    syncPenNotice();
}

void MainWindow::syncFrames() {
    const bool edit = m_editor->state().editing();
    edit::TextFrame text = m_editor->state().textFrame;
    edit::CommandFrame command = m_editor->state().commandFrame;
    text.visible = text.visible && edit;
    command.visible = command.visible && edit;
    m_frames->show(text, core::Cp1256ToUtf8(text.text), command, core::Cp1256ToUtf8(command.text));
    m_descriptLabel->parentWidget()->parentWidget()->setVisible(edit);
    m_record->setVisible(edit && m_editor->state().RCDTxtVisible);
    if (m_record->isVisible()) m_record->setText(Utf8(m_editor->state().RCDTxt));
    if (m_editor->state().focus == edit::Focus::TextBox) {
        m_frames->focusText();
        m_editor->focusTaken();
    } else if (m_editor->state().focus == edit::Focus::CommandBox) {
        m_frames->focusCommand();
        m_editor->focusTaken();
    }
}

// The hint of the palette entry in help mode, right to left.
void MainWindow::syncHint() {
    if (m_editor->state().HelpMode) {
        const std::string_view hint = m_editor->state().HintShown;
        m_hint->setText(QString::fromUtf8(hint.data(), static_cast<int>(hint.size())));
    }
    m_hint->setVisible(m_editor->state().HelpMode);
}

// Scrolls the page so that the red note shows.
void MainWindow::followCursor() {
    const double ppu = m_layout.pixelsPerUnit();
    if (m_editor->state().editing()) {
        const int line = m_doc.Sheet.CurrentLine;
        const auto& pos = m_layout.result().positions;
        if (line < 1 || line > core::MaxLines || pos.LinePosX[static_cast<std::size_t>(line)] < 0) return;
        const QPointF p = m_pic->toPixels(pos.LinePosX[static_cast<std::size_t>(line)],
                                          pos.LinePosY[static_cast<std::size_t>(line)] - 4);
        m_picScroll->ensureVisible(static_cast<int>(p.x()), static_cast<int>(p.y()),
                                   static_cast<int>(4 * ppu), static_cast<int>(10 * ppu));
    }
}

// The viewer's page keys act on the page's scroll bar: a small or a large change, or
// its ends, never past them.
bool MainWindow::viewerScroll(EditorKey key) {
    namespace K = edit::Key;
    if (m_editor->state().editing() || key.shift != 0) return false;
    QScrollBar* bar = m_picScroll->verticalScrollBar();
    const int v = bar->value();
    switch (key.key) {
    case K::Up: bar->setValue(v - bar->singleStep()); break;
    case K::Down: bar->setValue(v + bar->singleStep()); break;
    case K::PageUp: bar->setValue(v - bar->pageStep()); break;
    case K::PageDown: bar->setValue(v + bar->pageStep()); break;
    case K::Home: bar->setValue(bar->minimum()); break;
    case K::End: bar->setValue(bar->maximum()); break;
    default: return false;
    }
    return true;
}

void MainWindow::setViewMode(render::View mode) {
    m_layout.options().ViewMode = mode;
    m_strip->setVisible(mode == render::View::Working &&
                        !m_strip->path().isEmpty()); // the picture is a working aid
    core::PositionTable positions;
    m_layout.relayout(m_doc.Sheet, positions);
    m_editor->positionsChanged(m_layout.result().positions);
    afterEdit(m_doc.Sheet.CurrentLine, -1);
}

void MainWindow::setZoom(double zoomBase) {
    if (zoomBase <= 0) return;
    m_layout.options().ZoomBase = zoomBase;
    setViewMode(m_layout.options().ViewMode);
}

void MainWindow::pollPlayback() {
    const int line = m_playback->poll();
    m_fingering->setPlaying(line, m_playback->player().controls().Transpose);
    if (line == m_pic->playLine()) return;
    m_pic->setPlayLine(line);
    // The page scrolls with the sounding note.
    const auto& pos = m_layout.result().positions;
    if (line > 0 && line <= core::MaxLines && pos.LinePosX[static_cast<std::size_t>(line)] >= 0) {
        const QPointF p = m_pic->toPixels(pos.LinePosX[static_cast<std::size_t>(line)],
                                          pos.LinePosY[static_cast<std::size_t>(line)] - 4);
        const int margin = static_cast<int>(12 * m_layout.pixelsPerUnit());
        m_picScroll->ensureVisible(static_cast<int>(p.x()), static_cast<int>(p.y()), margin, margin);
    }
}

void MainWindow::descriptionToPanel() {
    std::string text;
    for (const char c : m_doc.Description)
        if (c != '\r') text += c;
    const QString shown = Utf8(text);
    m_descriptLabel->setText(shown.trimmed());
    const QSignalBlocker block(m_descriptText);
    m_descriptText->setPlainText(shown);
}

void MainWindow::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    fitDocks();
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (m_closing || ExitImage()) {
        if (!m_closing && m_rememberLayout) saveLayout();
        m_closing = true;
        event->accept();
    } else {
        event->ignore();
    }
}

} // namespace tahrir::ui
