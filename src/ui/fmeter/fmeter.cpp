#include "ui/fmeter/fmeter.h"

#include <QButtonGroup>
#include <QCoreApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtConcurrent/QtConcurrentRun>
#include <algorithm>
#include <cmath>

#include "transcribe/wave_file.h"
#include "ui/fmeter/fmeter_audio.h"
#include "ui/ui_text.h"

namespace tahrir::ui {

using namespace tahrir::transcribe;

namespace {

// A grid position's name for the eye: "E koron", "F sori", "C#".
QString ReadableName(std::string_view name) {
    const QString out{QChar(name[0])};
    switch (name[1]) {
    case 'k': return out + " koron";
    case 's': return out + " sori";
    case 'd': return out + "#";
    default: return out;
    }
}

QRadioButton* AddRadio(QButtonGroup* group, QLayout* layout, const QString& text, int id,
                       const char* name) {
    auto* b = new QRadioButton(text);
    b->setObjectName(name);
    group->addButton(b, id);
    layout->addWidget(b);
    return b;
}

} // namespace

FMeter::FMeter(FMeterHost host, QWidget* parent) : QWidget(parent, Qt::Window), m_host(std::move(host)) {
    setObjectName("FMeter");
    setWindowTitle(Tr("Transcription", "Transcription"));
    auto* layout = new QVBoxLayout(this);
    m_audio = std::make_unique<FMeterAudio>(*this, m_host.appFolder);
    layout->addWidget(buildToolbar());
    m_overview = new WaveOverview(m_window, this);
    m_detail = new WaveDetail(m_window, this);
    m_scroll = new QScrollBar(Qt::Horizontal, this);
    m_scroll->setObjectName("HSLR");
    layout->addWidget(m_overview);
    layout->addWidget(m_detail, 1);
    layout->addWidget(m_scroll);
    layout->addWidget(buildControls());
    m_overview->centreOn = [this](double s) { goTo(s - m_window.perPixel * m_window.viewWidth / 2); };
    m_detail->marked = [this](double a, double b) { mark(a, b); };
    connect(m_scroll, &QScrollBar::valueChanged, this, [this](int v) {
        m_window.first = static_cast<double>(v) * app::PeakBlock;
        syncView();
    });
    connect(&m_watcher, &QFutureWatcherBase::finished, this, [this] { loadFinished(); });
    connect(&m_trackWatcher, &QFutureWatcherBase::finished, this, [this] { trackFinished(); });
    m_progressTimer = new QTimer(this);
    connect(m_progressTimer, &QTimer::timeout, this,
            [this] { m_progress->setValue(static_cast<int>(100 * m_progressValue.load())); });
    showScaleKeys(m_host.signature ? m_host.signature() : std::string());
    resize(1100, 760);
}

FMeter::~FMeter() { stopWork(); }

void FMeter::stopWork() {
    m_stop = true;
    m_future.waitForFinished();
    m_track.waitForFinished();
    m_stop = false;
}

QWidget* FMeter::buildToolbar() {
    auto* bar = new QWidget(this);
    auto* l = new QHBoxLayout(bar);
    l->setContentsMargins(0, 0, 0, 0);
    const auto button = [&](const char* name, const QString& text, auto slot) {
        auto* b = new QToolButton(bar);
        b->setObjectName(name);
        b->setText(text);
        connect(b, &QToolButton::clicked, this, slot);
        l->addWidget(b);
        return b;
    };
    button("OpenWave", Tr("Transcription", "Open..."), [this] {
        const QString f = QFileDialog::getOpenFileName(this, Tr("Transcription", "Open a recording"), QString(),
                                                       Tr("Transcription", "Recordings (*.wav *.flac *.ogg *.mp3);;All files (*)"));
        if (!f.isEmpty()) openRecording(f.toStdString());
    });
    m_audio->addButtons(l);
    l->addSpacing(12);
    button("ZoomIn", Tr("Transcription", "Zoom in"), [this] { zoom(0.5); });
    button("ZoomOut", Tr("Transcription", "Zoom out"), [this] { zoom(2); });
    button("GotoLeft", "|<", [this] { goTo(0); });
    button("GotoRight", ">|", [this] { goTo(static_cast<double>(m_window.length())); });
    m_chSel = new QCheckBox(Tr("Transcription", "Marked stretch only"), bar);
    m_chSel->setObjectName("ChSel");
    l->addWidget(m_chSel);
    m_position = new QLabel(bar);
    m_position->setObjectName("PositionLabel");
    l->addStretch(1);
    l->addWidget(m_position);
    m_progress = new QProgressBar(bar);
    m_progress->setObjectName("AnalysisProgress");
    m_progress->setMaximumWidth(160);
    m_progress->hide();
    m_cancel = new QPushButton(Tr("Transcription", "Cancel"), bar);
    m_cancel->setObjectName("CancelAnalysis");
    m_cancel->hide();
    connect(m_cancel, &QPushButton::clicked, this, [this] { m_stop = true; });
    l->addWidget(m_progress);
    l->addWidget(m_cancel);
    return bar;
}

QWidget* FMeter::buildControls() {
    auto* box = new QWidget(this);
    auto* l = new QHBoxLayout(box);
    l->setContentsMargins(0, 0, 0, 0);
    auto* left = new QVBoxLayout;
    auto* tracker = new QGroupBox(Tr("Transcription", "Tracker"), box);
    auto* tl = new QVBoxLayout(tracker);
    m_tracker = new QButtonGroup(tracker);
    AddRadio(m_tracker, tl, Tr("Transcription", "Classic (three passes)"), 0, "TrackerClassic");
    AddRadio(m_tracker, tl, Tr("Transcription", "Modern (pitch track)"), 1, "TrackerModern")->setChecked(true);
    auto* grid = new QGroupBox(Tr("Transcription", "Grid"), box);
    grid->setObjectName("OptScTr");
    auto* gl = new QVBoxLayout(grid);
    m_grid = new QButtonGroup(grid);
    AddRadio(m_grid, gl, "7 # < b ! (dastgah)", 0, "GridDastgah");
    AddRadio(m_grid, gl, "12 # b", 1, "Grid12");
    AddRadio(m_grid, gl, "24 < !", 2, "Grid24")->setChecked(true);
    connect(m_grid, &QButtonGroup::idClicked, this, [this] { refreshGrid(); });
    m_baseF = new QSlider(Qt::Horizontal, grid);
    m_baseF->setObjectName("HSBaseF");
    m_baseF->setRange(330, 660);
    m_baseF->setValue(440);
    auto* baseLabel = new QLabel(Tr("Transcription", "La %1 Hz").arg(440), grid);
    baseLabel->setObjectName("LabelBaseF");
    connect(m_baseF, &QSlider::valueChanged, this, [this, baseLabel](int v) {
        baseLabel->setText(Tr("Transcription", "La %1 Hz").arg(v));
        refreshGrid();
    });
    gl->addWidget(baseLabel);
    gl->addWidget(m_baseF);
    left->addWidget(tracker);
    left->addWidget(grid);
    l->addLayout(left);
    l->addWidget(buildPasses());
    l->addWidget(buildDastgah());
    l->addWidget(buildInsert());
    return box;
}

QWidget* FMeter::buildPasses() {
    auto* box = new QGroupBox(Tr("Transcription", "Passes"), this);
    auto* l = new QGridLayout(box);
    m_method = new QComboBox(box);
    m_method->setObjectName("Method");
    m_method->addItems({"Simple", "Women", "Men"});
    m_cutOff = new QSpinBox(box);
    m_cutOff->setObjectName("CutOff");
    m_cutOff->setRange(0, 255);
    m_cutOff->setValue(10);
    m_k = new QComboBox(box);
    m_k->setObjectName("Combo1to9");
    for (int i = 1; i <= 9; ++i) m_k->addItem(QString::number(i));
    m_k->setCurrentIndex(3);
    m_minDur = new QComboBox(box);
    m_minDur->setObjectName("VSMinDur");
    m_minDur->addItems({"1/32", "1/16", "1/8", "1/4"});
    m_exact = new QCheckBox(Tr("Transcription", "Exact notes"), box);
    m_exact->setObjectName("ChExactNote");
    m_silent = new QCheckBox(Tr("Transcription", "Start at the first note"), box);
    m_silent->setObjectName("ChSilent");
    m_raw = new QCheckBox(Tr("Transcription", "Raw notes (no cleaning)"), box);
    m_raw->setObjectName("OptQuan");
    l->addWidget(new QLabel(Tr("Transcription", "Method")), 0, 0);
    l->addWidget(m_method, 0, 1);
    l->addWidget(new QLabel(Tr("Transcription", "Cut-off")), 1, 0);
    l->addWidget(m_cutOff, 1, 1);
    l->addWidget(new QLabel(Tr("Transcription", "Period over")), 2, 0);
    l->addWidget(m_k, 2, 1);
    l->addWidget(new QLabel(Tr("Transcription", "Smallest note")), 3, 0);
    l->addWidget(m_minDur, 3, 1);
    l->addWidget(m_exact, 4, 0, 1, 2);
    l->addWidget(m_silent, 5, 0, 1, 2);
    l->addWidget(m_raw, 6, 0, 1, 2);
    return box;
}

QWidget* FMeter::buildDastgah() {
    auto* box = new QGroupBox(Tr("Transcription", "Dastgah"), this);
    auto* l = new QGridLayout(box);
    l->setSpacing(1);
    // Rows from the top: sharp, sori, natural, koron, flat; k counts from flat.
    static const char* kRows[5] = {"#", "<", "", "--!", "b"};
    for (int row = 0; row < 5; ++row) l->addWidget(new QLabel(kRows[row]), row + 1, 0);
    for (int s = 0; s < 7; ++s) {
        auto* label = new QLabel(QString::number(s + 1), box);
        label->setAlignment(Qt::AlignCenter);
        l->addWidget(label, 0, s + 1);
        for (int k = 0; k < 5; ++k) {
            auto* b = new QCheckBox(box);
            b->setObjectName(QString("Dastgah%1").arg(5 * s + k));
            m_boxes[5 * s + k] = b;
            l->addWidget(b, 5 - k, s + 1);
            connect(b, &QCheckBox::clicked, this, [this, s, k] { boxClicked(s, k); });
        }
    }
    return box;
}

QWidget* FMeter::buildInsert() {
    auto* box = new QGroupBox(Tr("Transcription", "Notes"), this);
    auto* l = new QGridLayout(box);
    m_translate = new QPushButton(Tr("Transcription", "Transcribe"), box);
    m_translate->setObjectName("CmTranslate");
    m_translate->setEnabled(false);
    connect(m_translate, &QPushButton::clicked, this, [this] { transcribe(); });
    m_insert = new QPushButton("Insert to Note Sheet", box);
    m_insert->setObjectName("InsertImage");
    m_insert->setEnabled(false);
    connect(m_insert, &QPushButton::clicked, this, [this] { insertToSheet(); });
    m_octIns = new QSpinBox(box);
    m_octIns->setObjectName("OctIns");
    m_octIns->setRange(0, 4);
    m_octIns->setValue(2);
    m_tempoToSheet = new QCheckBox(Tr("Transcription", "Tempo to sheet"), box);
    m_tempoToSheet->setObjectName("ChTempoToSheet");
    m_status = new QLabel(box);
    m_status->setObjectName("FMeterStatus");
    m_status->setWordWrap(true);
    l->addWidget(m_translate, 0, 0, 1, 2);
    l->addWidget(new QLabel(Tr("Transcription", "Octave")), 1, 0);
    l->addWidget(m_octIns, 1, 1);
    l->addWidget(m_tempoToSheet, 2, 0, 1, 2);
    l->addWidget(m_insert, 3, 0, 1, 2);
    l->addWidget(m_status, 4, 0, 1, 2);
    m_audio->addMeter(l, 5);
    return box;
}

void FMeter::openRecording(const std::filesystem::path& file) {
    stopWork();
    m_window = WaveWindow{};
    m_analysis.reset();
    syncView();
    m_translate->setEnabled(false);
    m_status->setText(Tr("Transcription", "Reading %1...").arg(QString::fromStdString(file.filename().string())));
    m_future = QtConcurrent::run([this, file]() -> std::optional<app::WaveAnalysis> {
        return app::LoadForView(file, m_loadError);
    });
    m_watcher.setFuture(m_future);
}

bool FMeter::waitForView() {
    m_future.waitForFinished();
    QCoreApplication::processEvents();
    return m_analysis != nullptr;
}

bool FMeter::waitForAnalysis() {
    m_future.waitForFinished();
    QCoreApplication::processEvents();
    m_track.waitForFinished();
    QCoreApplication::processEvents();
    return m_analysis != nullptr && m_translate->isEnabled();
}

// The wave is drawn at once; the pitch track follows off the GUI thread.
void FMeter::loadFinished() {
    // Taken, not copied; the spent future is replaced by a finished empty one.
    auto result = m_future.takeResult();
    m_future = {};
    if (!result) {
        m_status->setText(QString::fromStdString(m_loadError));
        return;
    }
    m_analysis = std::make_unique<app::WaveAnalysis>(std::move(*result));
    m_window = WaveWindow{};
    m_window.analysis = m_analysis.get();
    m_window.viewWidth = std::max(1, m_detail->width());
    m_window.perPixel = std::max(1.0, static_cast<double>(m_window.length()) / m_window.viewWidth);
    m_found = {};
    m_detail->setNotes({});
    m_insert->setEnabled(false);
    m_audio->setRecording(m_analysis->file);
    m_status->setText(Tr("Transcription", "%1 s at %2 Hz: finding the pitch...")
                          .arg(m_analysis->recording.seconds, 0, 'f', 1)
                          .arg(m_analysis->recording.fileRate));
    syncView();
    m_progressValue = 0;
    m_progress->setValue(0);
    m_progress->show();
    m_cancel->show();
    m_progressTimer->start(100);
    const app::WaveAnalysis* analysis = m_analysis.get();
    m_track = QtConcurrent::run([this, analysis]() {
        return app::TrackPitch(*analysis, [this](double done) {
            m_progressValue = done;
            return !m_stop.load();
        });
    });
    m_trackWatcher.setFuture(m_track);
}

void FMeter::trackFinished() {
    m_progressTimer->stop();
    m_progress->hide();
    m_cancel->hide();
    auto frames = m_track.takeResult();
    m_track = {};
    if (!frames || !m_analysis) {
        m_status->setText(Tr("Transcription", "The pitch was not tracked: stopped"));
        return;
    }
    m_analysis->frames = std::move(*frames);
    m_detail->fitPitchRange();
    m_translate->setEnabled(true);
    m_status->setText(Tr("Transcription", "%1 s at %2 Hz").arg(m_analysis->recording.seconds, 0, 'f', 1)
                          .arg(m_analysis->recording.fileRate));
    m_detail->update();
}

void FMeter::syncView() {
    const double n = static_cast<double>(m_window.length());
    m_window.viewWidth = std::max(1, m_detail->width());
    const double visible = m_window.perPixel * m_window.viewWidth;
    m_window.first = std::clamp(m_window.first, 0.0, std::max(0.0, n - visible));
    const QSignalBlocker block(m_scroll);
    m_scroll->setRange(0, static_cast<int>(std::max(0.0, n - visible) / app::PeakBlock));
    m_scroll->setPageStep(static_cast<int>(visible / app::PeakBlock));
    m_scroll->setValue(static_cast<int>(m_window.first / app::PeakBlock));
    const double rate = m_window.rate();
    m_position->setText(QString("%1 s - %2 s").arg(m_window.first / rate, 0, 'f', 2)
                            .arg((m_window.first + visible) / rate, 0, 'f', 2));
    m_overview->update();
    m_detail->update();
}

void FMeter::resizeEvent(QResizeEvent* e) {
    QWidget::resizeEvent(e);
    syncView();
}

void FMeter::zoom(double factor) {
    const double n = static_cast<double>(m_window.length());
    const double centre = m_window.first + m_window.perPixel * m_window.viewWidth / 2;
    // From a few samples a pixel to the whole file in the view.
    const double most = std::max(1.0, n / m_window.viewWidth);
    m_window.perPixel = std::clamp(m_window.perPixel * factor, 0.25, most);
    m_window.first = centre - m_window.perPixel * m_window.viewWidth / 2;
    syncView();
}

void FMeter::goTo(double sample) {
    m_window.first = sample;
    syncView();
}

void FMeter::mark(double from, double to) {
    const double n = static_cast<double>(m_window.length());
    m_window.markFrom = std::clamp(from, 0.0, n);
    m_window.markTo = std::clamp(to, 0.0, n);
    m_overview->update();
    m_detail->update();
}

NotesOptions FMeter::notesOptions() const {
    NotesOptions o;
    o.grid = static_cast<NoteGrid>(m_grid->checkedId());
    o.mask = core::BuildScaleMask(boxLetters());
    o.tuning.baseHz = m_baseF->value();
    return o;
}

PassOptions FMeter::passOptions() const {
    PassOptions o;
    o.Method = static_cast<Detector>(m_method->currentIndex());
    o.CutOff = m_cutOff->value();
    o.k = m_k->currentIndex() + 1;
    o.MinDuration = 1 << m_minDur->currentIndex();
    o.tempo = m_host.tempo ? m_host.tempo() : 60;
    o.Silent = m_silent->isChecked();
    o.finder.grid = static_cast<NoteGrid>(m_grid->checkedId());
    o.finder.mask = core::BuildScaleMask(boxLetters());
    o.finder.BaseFrequency = m_baseF->value();
    return o;
}

void FMeter::transcribe() {
    if (!m_analysis) return;
    const auto& rec = m_analysis->recording;
    const bool stretch = m_chSel->isChecked() && m_window.marked();
    if (m_tracker->checkedId() == 1) {
        std::vector<PitchFrame> frames;
        for (const PitchFrame& f : m_analysis->frames)
            if (!stretch || (f.seconds * rec.rate >= m_window.markFrom && f.seconds * rec.rate < m_window.markTo))
                frames.push_back(f);
        m_found = app::ModernTrack(NotesOfFrames(frames, m_analysis->hopSeconds, notesOptions()),
                                   rec.rate, m_silent->isChecked());
    } else {
        PassOptions o = passOptions();
        // File positions count from 1 and the samples start after the header.
        if (stretch)
            o.stretch = std::array<std::int64_t, 2>{
                static_cast<std::int64_t>(m_window.markFrom) + WaveHeaderBytes + 1,
                static_cast<std::int64_t>(m_window.markTo) + WaveHeaderBytes + 1};
        m_found = app::ClassicTrack(app::EightBitWave(rec.samples, rec.rate), o, m_host.appFolder,
                                    m_raw->isChecked());
    }
    std::vector<NoteBar> bars;
    for (const TimedNote& n : m_found.notes)
        if (!n.rest) bars.push_back({n.start / m_found.rate, n.end / m_found.rate, n.note});
    m_detail->setNotes(std::move(bars));
    m_insert->setEnabled(!m_found.notes.empty());
    m_status->setText(m_found.error.empty()
                          ? Tr("Transcription", "%1 notes found").arg(m_found.notes.size())
                          : QString::fromStdString(m_found.error));
}

InsertResult FMeter::insertToSheet() {
    if (m_found.notes.empty() || !m_host.insert) return {};
    InsertOptions o;
    o.sampleRate = m_found.rate;
    o.tempo = m_host.tempo ? m_host.tempo() : 60;
    o.MinDuration = 1 << m_minDur->currentIndex();
    o.Exact = m_exact->isChecked();
    o.TempoToSheet = m_tempoToSheet->isChecked();
    o.OctIns = m_octIns->value();
    o.shift = m_found.shift;
    core::DastgahBoxes boxes{};
    for (int i = 0; i < core::DastgahBoxCount; ++i) boxes[static_cast<std::size_t>(i)] = m_boxes[i]->isChecked();
    o.boxes = boxes;
    const InsertResult r = m_host.insert(m_found, o);
    m_status->setText(r.memoryFull ? QString::fromStdString(r.message)
                                   : Tr("Transcription", "%1 lines inserted").arg(r.linesInserted));
    return r;
}

std::string FMeter::boxLetters() const {
    static const char kLetter[5] = {'B', 'K', ' ', 'S', 'D'};
    std::string letters(7, ' ');
    for (int s = 0; s < 7; ++s)
        for (int k = 0; k < 5; ++k)
            if (m_boxes[5 * s + k]->isChecked()) letters[static_cast<std::size_t>(s)] = kLetter[k];
    return letters;
}

void FMeter::showScaleKeys(const std::string& letters) {
    const core::DastgahBoxes boxes = core::BoxesOf(letters);
    for (int i = 0; i < core::DastgahBoxCount; ++i) m_boxes[i]->setChecked(boxes[static_cast<std::size_t>(i)]);
    refreshGrid();
}

void FMeter::boxClicked(int step, int k) {
    for (int j = 0; j < 5; ++j) m_boxes[5 * step + j]->setChecked(j == k);
    if (m_host.setSignature) m_host.setSignature(boxLetters());
    refreshGrid();
}

std::vector<GridLine> FMeter::gridLines() const {
    const NotesOptions o = notesOptions();
    const auto points = GridPoints(o.grid, o.tuning, o.mask);
    const auto& names = core::QuarterToneNames();
    std::vector<GridLine> lines;
    // The curve is drawn against La 440: a retuned grid moves under it.
    const double shift = 12 * std::log2(o.tuning.baseHz / 440);
    for (int octave = 1; octave <= 8; ++octave)
        for (const GridPoint& p : points) {
            const auto index = static_cast<std::size_t>(std::clamp<long>(1 + std::lround(2 * p.note), 0, 26));
            const bool natural = names[index][1] == ' ';
            lines.push_back({12.0 * (octave + 1) + p.cents / 100 + shift,
                             ReadableName(names[index]) + QString::number(octave), natural});
        }
    // The dastgah grid repeats Do (and Do koron) at both ends of its octave.
    std::sort(lines.begin(), lines.end(), [](const GridLine& a, const GridLine& b) { return a.note < b.note; });
    lines.erase(std::unique(lines.begin(), lines.end(),
                            [](const GridLine& a, const GridLine& b) { return std::abs(a.note - b.note) < 1e-6; }),
                lines.end());
    return lines;
}

void FMeter::setPlayAt(double sample) {
    m_window.playAt = sample;
    // Keep the line in sight while playing.
    const double visible = m_window.perPixel * m_window.viewWidth;
    if (sample >= 0 && (sample < m_window.first || sample > m_window.first + visible))
        m_window.first = sample - visible / 10;
    syncView();
}

void FMeter::playFound() {
    if (m_found.notes.empty()) return;
    const std::filesystem::path wav = m_host.appFolder / "tmpnotes.wav";
    std::string error;
    if (!app::RenderNotes(m_found, wav, error)) {
        m_status->setText(QString::fromStdString(error));
        return;
    }
    const double rate = m_window.rate();
    const bool marked = m_chSel->isChecked() && m_window.marked();
    m_audio->playFile(wav, marked ? m_window.markFrom / rate : 0, marked ? m_window.markTo / rate : -1);
}

void FMeter::refreshGrid() { m_detail->setGrid(gridLines()); }

} // namespace tahrir::ui
