// The transcription window: a generated recording opened, transcribed by either tracker
// and put into the score as one undoable step; the view's zoom and marked stretch; the
// grid and the Dastgah boxes; recording without an input device.

#include <QAudioDevice>
#include <QBuffer>
#include <QCheckBox>
#include <QLabel>
#include <QMediaDevices>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "case_files.h"
#include "core/dastgah_scale.h"
#include "play/midi_message.h"
#include "play/midi_out.h"
#include "transcribe/pitch_finder.h"
#include "transcribe/recording_notes.h"
#include "transcribe/wave_file.h"
#include "ui/fmeter/fmeter.h"
#include "ui/fmeter/wave_recorder.h"
#include "ui_test_support.h"
#include "wave_writer.h"

namespace tahrir::ui::test {
namespace {

using tahrir::test::ToneSpan;

double Hz(double note) {
    return 440 * std::pow(2.0, (note - 69) / 12);
}

// D, E koron, F, G: a second of each with a breath between.
const std::vector<double> kMelody = {62, 63.5, 65, 67};

// A melody as its changes of note: a note repeated at once counts once.
template <typename Notes> std::vector<double> Changes(const Notes& notes) {
    std::vector<double> melody;
    for (const auto& n : notes)
        if (melody.empty() || melody.back() != n.note) melody.push_back(n.note);
    return melody;
}

class FMeterTest : public DemoWindow {
protected:
    void SetUp() override {
        DemoWindow::SetUp();
        rig.enterEditor();
        std::vector<ToneSpan> spans{{0, 0.2}};
        for (double n : kMelody)
            spans.insert(spans.end(), {{Hz(n), 0.8, 4}, {0, 0.2}});
        wave = rig.folder.path() / "melody.wav";
        tahrir::test::WriteWaveFile(wave, tahrir::test::WaveFileBytes(tahrir::test::Melody(spans)));
        meter = rig.window->openFMeter();
        meter->openRecording(wave);
        ASSERT_TRUE(meter->waitForAnalysis());
    }
    void choose(const char* name) { ChildOf<QRadioButton>(*meter, name)->click(); }

    std::filesystem::path wave;
    FMeter* meter = nullptr;
};

TEST_F(FMeterTest, EachTrackerFindsTheMelodyAndItsInsertionIsOneUndoStep) {
    for (const char* tracker : {"TrackerModern", "TrackerClassic"}) {
        SCOPED_TRACE(tracker);
        choose(tracker);
        meter->transcribe();
        // The notes are heard from a file the synthesiser renders.
        const auto heard = rig.folder.path() / "app" / "tmpnotes.wav";
        std::filesystem::remove(heard);
        meter->findChild<QToolButton*>("PlayNotes")->click();
        std::string error;
        const auto again = transcribe::TranscribeRecording(heard, {}, error);
        ASSERT_TRUE(again) << error;
        if (std::string(tracker) == "TrackerModern") {
            EXPECT_EQ(Changes(meter->found().notes), kMelody);
            EXPECT_EQ(Changes(again->notes), kMelody);
        } else {
            EXPECT_GE(Changes(meter->found().notes).size(), 3u);
        }

        core::Document& doc = rig.window->document();
        const int last = doc.Sheet.LastLine, undoIndex = doc.UndoIndex;
        doc.Sheet.CurrentLine = 6;
        const auto inserted = meter->insertToSheet();
        ASSERT_GT(inserted.linesInserted, 0);
        EXPECT_EQ(doc.Sheet.LastLine, last + inserted.linesInserted);
        EXPECT_EQ(doc.UndoIndex, undoIndex + 1);
        // The page undo brings back is the one stored before the insertion.
        rig.key(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(doc.UndoIndex, undoIndex);
        EXPECT_EQ(doc.Sheet.LastLine, last);
    }
}

TEST_F(FMeterTest, TheMarkedStretchLimitsTheWorkAndTheViewZooms) {
    const WaveWindow& view = meter->view();
    const double whole = view.perPixel;
    meter->zoom(0.25);
    EXPECT_DOUBLE_EQ(view.perPixel, whole / 4);
    meter->goTo(1e12); // past the end: the view stops at the last sample
    EXPECT_NEAR(view.first + view.perPixel * view.viewWidth, view.length(), view.perPixel + 64);
    meter->zoom(100); // never further out than the whole file
    EXPECT_DOUBLE_EQ(view.perPixel, whole);

    // The second and third notes only: 1.2 s to 3.0 s.
    meter->mark(1.2 * view.rate(), 3.0 * view.rate());
    meter->findChild<QCheckBox*>("ChSel")->setChecked(true);
    for (const char* tracker : {"TrackerModern", "TrackerClassic"}) {
        SCOPED_TRACE(tracker);
        choose(tracker);
        meter->transcribe();
        ASSERT_FALSE(meter->found().notes.empty());
        for (const auto& n : meter->found().notes) {
            EXPECT_GE(n.start / meter->found().rate, 1.1);
            EXPECT_LE(n.end / meter->found().rate, 3.1);
        }
    }
}

// Each grid names its lines and the note that the keyboard and the error meter show under
// the play position.
TEST_F(FMeterTest, GridAndDastgahBoxesChangeTheNoteNames) {
    const auto names = [&] {
        QStringList out;
        for (const GridLine& g : meter->gridLines())
            if (g.note >= 60 && g.note < 72) out.push_back(g.label);
        return out;
    };
    const NoteMeter& m = meter->noteMeter();
    EXPECT_EQ(m.keyboard().heardKey(), -1);
    meter->transcribe();
    for (const ::tahrir::test::CaseRow& g : ::tahrir::test::ReadCases("ui/fmeter_grids.txt")) {
        SCOPED_TRACE(g.where);
        choose(g[0].c_str());
        meter->setPlayAt(1.6 * meter->view().rate());
        EXPECT_EQ(names().size(), g.integer(1));
        // Only the 12 grid goes without koron and sori.
        EXPECT_EQ(names().filter("koron").isEmpty() && names().filter("sori").isEmpty(),
                  g.integer(1) == 12);
        EXPECT_EQ(m.keyboard().heardKey(), g.integer(2));
        ASSERT_TRUE(m.meter().error());
        const double cents = ErrorMeter::CentsOf(*m.meter().error());
        EXPECT_TRUE(g.integer(3) ? std::abs(cents) <= 10 : std::abs(cents) > 35) << cents;
        EXPECT_TRUE(m.text().startsWith(QString::fromStdString(g[4]))) << m.text().toStdString();
    }
    // Shur on Mi marks Fa sori, on the grid and on the keyboard: F sori (12) and not F (11).
    EXPECT_TRUE(names().contains("F sori4") && !names().contains("F4"));
    const KeyboardView& keys = m.keyboard();
    EXPECT_TRUE(keys.scaleKey(12) && !keys.scaleKey(11));
    // Ticking Si's koron box rewrites line 1 and the grid, and undoes as an edit.
    meter->findChild<QCheckBox*>("Dastgah31")->click();
    EXPECT_EQ(core::SignatureAt(rig.window->document().Sheet, 1).substr(0, 7), "   S  K");
    EXPECT_EQ(names().back(), "B koron4");
    EXPECT_TRUE(keys.scaleKey(22) && !keys.scaleKey(23));
    rig.key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(core::SignatureAt(rig.window->document().Sheet, 1).substr(0, 7), "   S   ");

    // On the 24 grid the modern tracker's found note is marked too.
    choose("Grid24");
    meter->setPlayAt(1.6 * meter->view().rate());
    EXPECT_TRUE(names().contains("E koron4") && names().contains("F sori4"));
    EXPECT_EQ(m.keyboard().foundKey(), 8);
    // La tuned a semitone up moves the grid a semitone up: D sounds as C#.
    meter->findChild<QSlider*>("HSBaseF")->setValue(466);
    const auto grid = meter->gridLines();
    const auto c4 =
        std::find_if(grid.begin(), grid.end(), [](const GridLine& g) { return g.label == "C4"; });
    ASSERT_NE(c4, grid.end());
    EXPECT_NEAR(c4->note, 61, 0.01);
    meter->setPlayAt(0.6 * meter->view().rate());
    EXPECT_EQ(m.keyboard().heardKey(), 3);
    EXPECT_TRUE(m.text().startsWith("C#4")) << m.text().toStdString();
    // Not playing: the start of the marked stretch is the position.
    meter->setPlayAt(-1);
    meter->mark(2.5 * meter->view().rate(), 2.9 * meter->view().rate());
    EXPECT_EQ(m.keyboard().heardKey(), 9); // F, read a semitone low against the raised La
}

TEST_F(FMeterTest, RecordingNeedsAnInputDevice) {
    auto* record = ChildOf<QToolButton>(*meter, "RecordWave");
    const bool device = !QMediaDevices::audioInputs().isEmpty();
    EXPECT_EQ(record->isEnabled(), device);
    EXPECT_EQ(record->toolTip().contains("No microphone"), !device);
}

TEST_F(FMeterTest, CancelStopsThePitchTrackAndAFileThatIsNoRecordingSaysSo) {
    // A tone long enough that tracking it takes many stretches.
    const auto longWave = rig.folder.path() / "long.wav";
    tahrir::test::WriteWaveFile(longWave,
                                tahrir::test::WaveFileBytes(tahrir::test::Melody({{220, 200}})));
    auto* cancel = meter->findChild<QPushButton*>("CancelAnalysis");
    auto* progress = meter->findChild<QProgressBar*>("AnalysisProgress");
    meter->openRecording(longWave);
    ASSERT_TRUE(meter->waitForView());
    ASSERT_FALSE(cancel->isHidden());
    cancel->click();
    EXPECT_FALSE(meter->waitForAnalysis());
    EXPECT_TRUE(meter->analysis()->frames.empty());
    EXPECT_TRUE(cancel->isHidden() && progress->isHidden());
    EXPECT_FALSE(meter->findChild<QPushButton*>("CmTranslate")->isEnabled());
    EXPECT_TRUE(meter->findChild<QLabel*>("FMeterStatus")->text().contains("stopped"));

    // Cancelled and replaced at once, before the window has heard of either: the short
    // melody's track is the one kept.
    meter->openRecording(longWave);
    ASSERT_TRUE(meter->waitForView());
    cancel->click();
    meter->openRecording(wave);
    ASSERT_TRUE(meter->waitForAnalysis());
    EXPECT_EQ(meter->analysis()->file, wave);
    ASSERT_FALSE(meter->analysis()->frames.empty());
    EXPECT_LT(meter->analysis()->frames.back().seconds, 5);

    // A file that is no recording says so.
    meter->openRecording(rig.folder.path() / "missing.wav");
    EXPECT_FALSE(meter->waitForAnalysis());
    EXPECT_TRUE(meter->findChild<QLabel*>("FMeterStatus")->text().contains("missing.wav"));
}

TEST(FMeterMidi, TheBaseFrequencyBendsAndTheKeyboardSoundThroughTheHost) {
    App();
    TempFolder folder;
    play::RecordingSink sink;
    play::MidiOut midi(&sink);
    midi.MidiOutputOn = true;
    FMeterHost host;
    host.appFolder = folder.path();
    host.midi = [&](const std::function<void(play::MidiOut&)>& use) { use(midi); };
    FMeter meter(std::move(host));
    auto* baseF = meter.findChild<QSlider*>("HSBaseF");
    // La moved: the quarter-tone channels 2, 3 and 4 are bent again (by the tuner's rule).
    baseF->setValue(450);
    std::vector<int> bent;
    for (std::uint32_t m : sink.messages())
        if ((play::Unpack(m).bytes[0] & 0xF0) == 0xE0)
            bent.push_back(play::Unpack(m).bytes[0] & 0x0F);
    EXPECT_EQ(bent, (std::vector<int>{2, 3, 4}));

    // Clicks on the keyboard, at fractions of its width and height (white keys are an
    // eighth of 8.5 widths wide): E koron in the top row sounds as E on the channel bent
    // down, F at the foot of its white key on the natural channel.
    meter.show();
    QApplication::processEvents();
    auto* klav = meter.findChild<QWidget*>("Klav");
    for (auto [x, y, key, channel] : {std::tuple{2.5, 0.15, 64, 4}, std::tuple{4.0, 0.9, 65, 3}}) {
        sink.clear();
        QTest::mouseClick(klav, Qt::LeftButton, {},
                          QPoint(int(x / 8.5 * klav->width()), int(y * klav->height())));
        const auto sent = sink.messages();
        EXPECT_NE(std::find(sent.begin(), sent.end(), play::PackNoteOn(key, 100, channel)),
                  sent.end());
    }
}

// 16-bit samples of a tone, as a sound input hands them over.
QByteArray Pcm16(double hz, double seconds, int rate, double amplitude) {
    QByteArray out;
    const auto n = static_cast<int>(seconds * rate);
    for (int i = 0; i < n; ++i) {
        const auto v = static_cast<qint16>(
            std::lround(32767 * amplitude * std::sin(6.283185307179586 * hz * i / rate)));
        out.append(static_cast<char>(v & 0xFF)).append(static_cast<char>((v >> 8) & 0xFF));
    }
    return out;
}

TEST(FMeterRecording, TheMicrophonesWaveOpensInBothTrackersLoaders) {
    TempFolder folder;
    for (int rate : {44100, 48000}) {
        SCOPED_TRACE(rate);
        const QString file = QString::fromStdString((folder.path() / "Tmp.Wav").string());
        const QByteArray pcm = Pcm16(440, 1.5, rate, 0.5);
        WaveRecorder recorder;
        ASSERT_TRUE(recorder.start(file, rate));
        // Blocks of an odd size split samples between them; the last comes from a device.
        double peak = 0;
        constexpr int kBlock = 1001;
        for (qsizetype at = 0; at + kBlock < pcm.size(); at += kBlock)
            peak = std::max(peak, recorder.append(pcm.mid(at, kBlock)));
        QBuffer device;
        device.setData(pcm.mid(pcm.size() / kBlock * kBlock));
        device.open(QIODevice::ReadOnly);
        recorder.append(device);
        EXPECT_NEAR(peak, 0.5, 0.01);
        ASSERT_TRUE(recorder.finish());

        std::string error;
        const auto rec =
            transcribe::LoadRecording(file.toStdString(), transcribe::TrackerRate, error);
        ASSERT_TRUE(rec) << error;
        EXPECT_EQ(rec->fileRate, rate);
        EXPECT_NEAR(rec->seconds, 1.5, 0.01);
        // The classic passes read the same samples in their 8-bit form.
        const auto classic = transcribe::WaveSamplesOf(app::EightBitWave(rec->samples, rec->rate));
        const std::span<const float> frame(classic.data() + rec->rate / 2,
                                           transcribe::PitchFrameSize);
        EXPECT_NEAR(transcribe::YinPitch(frame, rec->rate), 440, 3);
    }
    WaveRecorder idle;
    EXPECT_FALSE(idle.finish());
    EXPECT_FALSE(
        idle.start(QString::fromStdString((folder.path() / "no" / "Tmp.Wav").string()), 44100));
}

} // namespace
} // namespace tahrir::ui::test
