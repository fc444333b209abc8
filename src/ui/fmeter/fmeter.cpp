#include "ui/fmeter/fmeter.h"

#include <QButtonGroup>
#include <QCoreApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QTimer>
#include <QVBoxLayout>
#include <QtConcurrent/QtConcurrentRun>
#include <algorithm>
#include <cmath>

#include "play/midi_out.h"
#include "transcribe/wave_file.h"
#include "ui/fmeter/fmeter_audio.h"

namespace tahrir::ui {

using namespace tahrir::transcribe;

FMeter::FMeter(FMeterHost host, QWidget* parent) : QWidget(parent, Qt::Window), m_host(std::move(host)) {
    setObjectName("FMeter");
    setWindowTitle("Transcription");
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

void FMeter::openRecording(const std::filesystem::path& file) {
    stopWork();
    m_window = WaveWindow{};
    m_analysis.reset();
    syncView();
    m_translate->setEnabled(false);
    m_status->setText("Reading " + QString::fromStdString(file.filename().string()) + "...");
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
    // A report of a load already taken over by a newer one.
    if (!m_future.isValid()) return;
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
    m_heard.reset();
    m_detail->setNotes({});
    m_insert->setEnabled(false);
    m_audio->setRecording(m_analysis->file);
    m_status->setText(QString("%1 s at %2 Hz: finding the pitch...")
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
    if (!m_track.isValid()) return;
    m_stop = false;
    m_progressTimer->stop();
    m_progress->hide();
    m_cancel->hide();
    auto frames = m_track.takeResult();
    m_track = {};
    if (!frames || !m_analysis) {
        m_status->setText("The pitch was not tracked: stopped");
        return;
    }
    m_analysis->frames = std::move(*frames);
    m_detail->fitPitchRange();
    m_translate->setEnabled(true);
    m_status->setText(QString("%1 s at %2 Hz").arg(m_analysis->recording.seconds, 0, 'f', 1)
                          .arg(m_analysis->recording.fileRate));
    m_detail->update();
    showNoteAt();
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
    showNoteAt();
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
    // The grid is that of the signature in force at the cursor.
    if (m_host.signature) showScaleKeys(m_host.signature());
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
        if (!n.rest) bars.push_back({n.start / m_found.rate, n.end / m_found.rate, n.note + tuningShift()});
    m_detail->setNotes(std::move(bars));
    showNoteAt();
    m_insert->setEnabled(!m_found.notes.empty());
    m_status->setText(m_found.error.empty()
                          ? QString("%1 notes found").arg(m_found.notes.size())
                          : QString::fromStdString(m_found.error));
}

InsertResult FMeter::insertToSheet() {
    if (m_found.notes.empty() || !m_host.insert) return {};
    // The boxes decide the steps: painted from the signature in force at the cursor.
    if (m_host.signature) showScaleKeys(m_host.signature());
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
                                   : QString("%1 lines inserted").arg(r.linesInserted));
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
    const double shift = tuningShift();
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
    showNoteAt();
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

// The curve is drawn against La 440: a retuned grid, and the notes placed on it, lie this
// many semitones off.
double FMeter::tuningShift() const { return 12 * std::log2(m_baseF->value() / 440.0); }

void FMeter::showStatus(const QString& text) { m_status->setText(text); }

void FMeter::refreshGrid() {
    m_detail->setGrid(gridLines());
    m_noteMeter->setScale(core::BuildScaleMask(boxLetters()));
    // The grid and the base frequency place the heard note anew.
    m_heard.reset();
    showNoteAt();
}

NoteFinderSettings FMeter::finderSettings() const {
    NoteFinderSettings o;
    o.grid = static_cast<NoteGrid>(m_grid->checkedId());
    o.mask = core::BuildScaleMask(boxLetters());
    o.BaseFrequency = m_baseF->value();
    return o;
}

void FMeter::showNoteAt() {
    const double at = m_window.playAt >= 0 ? m_window.playAt : m_window.markFrom;
    if (!m_analysis || at < 0) {
        m_noteMeter->showNote(std::nullopt, 0);
        return;
    }
    const double seconds = at / m_window.rate();
    // The frame whose window is centred nearest the position.
    const auto& frames = m_analysis->frames;
    auto it = std::lower_bound(frames.begin(), frames.end(), seconds,
                               [](const PitchFrame& f, double s) { return f.seconds < s; });
    if (it != frames.begin() && (it == frames.end() || seconds - (it - 1)->seconds < it->seconds - seconds)) --it;
    if (it != frames.end() && it->hz > 0) {
        NoteFinderSettings o = finderSettings();
        o.WaveRate = m_window.rate();
        // An unvoiced frame, or a pitch below the base Do, keeps the last note.
        if (auto found = FindNote(o.WaveRate / it->hz, o)) m_heard = found;
    }
    double found = 0;
    for (const TimedNote& n : m_found.notes)
        if (!n.rest && seconds * m_found.rate >= n.start && seconds * m_found.rate < n.end) found = n.note;
    m_noteMeter->showNote(m_heard, found);
}

void FMeter::baseFrequencyMoved(int hertz) {
    refreshGrid();
    if (m_host.midi) m_host.midi([this, hertz](play::MidiOut& midi) { m_tuner.apply(midi, hertz); });
}

void FMeter::soundKey(int position) {
    if (!m_host.midi) return;
    // Positions count quarter tones from Do koron; Do of the middle octave is MIDI 60. A
    // quarter tone is the semitone above it on the channel bent down.
    constexpr int kNatural = 3, kQuarterBelow = 4;
    const int key = 60 + position / 2;
    const int channel = position % 2 == 0 ? kQuarterBelow : kNatural;
    m_host.midi([&](play::MidiOut& midi) {
        // The bends of this window's plan first: channel 4 a quarter tone under channel 3.
        m_tuner.apply(midi, m_baseF->value());
        midi.MidiNoteOn(key, 100, channel);
    });
    QTimer::singleShot(600, this, [this, key, channel] {
        m_host.midi([&](play::MidiOut& midi) { midi.MidiNoteOff(key, channel); });
    });
}

} // namespace tahrir::ui
