#pragma once
// FMeter, the transcription window: a recording opened or taken from the microphone, its
// wave and pitch track, the trackers and their passes, and the notes put on the sheet.

#include <QFutureWatcher>
#include <QWidget>
#include <atomic>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "app/recording_work.h"
#include "core/dastgah_scale.h"
#include "play/tuning.h"
#include "ui/fmeter/note_meter.h"
#include "ui/fmeter/wave_view.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QScrollBar;
class QSlider;
class QSpinBox;
class QTimer;

namespace tahrir::ui {

class FMeterAudio;

// What the window needs of the main window.
struct FMeterHost {
    std::filesystem::path appFolder;
    // The signature letters in force at the cursor, and the tempo of the score.
    std::function<std::string()> signature;
    std::function<double()> tempo;
    // Inserts the notes at the cursor as one undoable step.
    std::function<transcribe::InsertResult(const app::TrackedNotes&, transcribe::InsertOptions)>
        insert;
    // Rewrites the letters of line 1 as one undoable step.
    std::function<void(const std::string&)> setSignature;
    // Hands the MIDI output the keyboard sounds on and the base frequency bends to the
    // function given; does nothing while the score is playing or when there is none.
    std::function<void(const std::function<void(play::MidiOut&)>&)> midi;
};

class FMeter : public QWidget {
public:
    explicit FMeter(FMeterHost host, QWidget* parent = nullptr);
    ~FMeter() override;

    // Opens a recording and starts its analysis off the GUI thread.
    void openRecording(const std::filesystem::path& file);
    // Waits for the recording to be drawn, or also for its pitch track (the tests, the
    // pictures and the benchmarks).
    bool waitForView();
    bool waitForAnalysis();
    const app::WaveAnalysis* analysis() const { return m_analysis.get(); }
    const WaveWindow& view() const { return m_window; }
    const app::TrackedNotes& found() const { return m_found; }

    // CmTranslate and InsertImage.
    void transcribe();
    transcribe::InsertResult insertToSheet();

    // The play line, in samples; -1 hides it.
    void setPlayAt(double sample);
    // The found notes through the built-in synthesiser, at their times.
    void playFound();

    // A line of news under the buttons (a recording that could not be written).
    void showStatus(const QString& text);

    // The view.
    void zoom(double factor);
    void goTo(double sample);
    void mark(double from, double to);
    // The grid's line labels as the detail view shows them.
    std::vector<GridLine> gridLines() const;
    // The seven letters the Dastgah boxes stand for.
    std::string boxLetters() const;
    // ShowScaleKeys: the boxes ticked from the letters, the keyboard's degrees marked.
    void showScaleKeys(const std::string& letters);
    // The keyboard and error meter, showing the note at the play position or, when not
    // playing, at the start of the marked stretch.
    const NoteMeter& noteMeter() const { return *m_noteMeter; }
    // A key of the keyboard sounded, by its grid position 0..26.
    void soundKey(int position);

protected:
    void resizeEvent(QResizeEvent* e) override;

private:
    QWidget* buildToolbar();
    QWidget* buildControls();
    QWidget* buildPasses();
    QWidget* buildDastgah();
    QWidget* buildInsert();
    void loadFinished();
    void trackFinished();
    void stopWork();
    void syncView();
    void refreshGrid();
    void showNoteAt();
    double tuningShift() const;
    void baseFrequencyMoved(int hertz);
    transcribe::NoteFinderSettings finderSettings() const;
    void boxClicked(int step, int k);
    transcribe::NotesOptions notesOptions() const;
    transcribe::PassOptions passOptions() const;

    FMeterHost m_host;
    WaveWindow m_window;
    std::unique_ptr<app::WaveAnalysis> m_analysis;
    app::TrackedNotes m_found;
    QFuture<std::optional<app::WaveAnalysis>> m_future;
    QFutureWatcher<std::optional<app::WaveAnalysis>> m_watcher;
    using Frames = std::vector<transcribe::PitchFrame>;
    QFuture<std::optional<Frames>> m_track;
    QFutureWatcher<std::optional<Frames>> m_trackWatcher;
    std::atomic<double> m_progressValue{0};
    std::atomic<bool> m_stop{false};
    std::string m_loadError;
    std::unique_ptr<FMeterAudio> m_audio;
    play::BaseFrequencyTuner m_tuner;
    std::optional<transcribe::FoundNote> m_heard; // kept over unvoiced frames

    WaveOverview* m_overview = nullptr;
    WaveDetail* m_detail = nullptr;
    QScrollBar* m_scroll = nullptr;
    QLabel* m_position = nullptr;
    QLabel* m_status = nullptr;
    QProgressBar* m_progress = nullptr;
    QPushButton* m_cancel = nullptr;
    QTimer* m_progressTimer = nullptr;
    QCheckBox* m_chSel = nullptr;
    QButtonGroup* m_tracker = nullptr;
    QButtonGroup* m_grid = nullptr; // OptScTr: 0 dastgah, 1 twelve, 2 twenty-four
    QComboBox* m_method = nullptr;
    QSpinBox* m_cutOff = nullptr;
    QComboBox* m_k = nullptr;
    QComboBox* m_minDur = nullptr;
    QCheckBox* m_exact = nullptr;
    QCheckBox* m_silent = nullptr;
    QCheckBox* m_raw = nullptr; // OptQuan: the raw notes of pass 2
    QCheckBox* m_tempoToSheet = nullptr;
    QSpinBox* m_octIns = nullptr;
    QSlider* m_baseF = nullptr; // HSBaseF: the La the grid is tuned to
    QPushButton* m_translate = nullptr;
    QPushButton* m_insert = nullptr;
    QCheckBox* m_boxes[core::DastgahBoxCount] = {};
    NoteMeter* m_noteMeter = nullptr;
};

} // namespace tahrir::ui
