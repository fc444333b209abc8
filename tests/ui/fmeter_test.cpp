// The transcription window: a generated recording opened, transcribed by either tracker
// and put into the score as one undoable step; the view's zoom and marked stretch; the
// grid and the Dastgah boxes; recording without an input device.

#include <QCheckBox>
#include <QLabel>
#include <QAudioDevice>
#include <QMediaDevices>
#include <QRadioButton>
#include <QSlider>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "core/dastgah_scale.h"
#include "transcribe/recording_notes.h"
#include "ui/fmeter/fmeter.h"
#include "ui_test_support.h"
#include "wave_writer.h"

namespace tahrir::ui::test {
namespace {

using tahrir::test::ToneSpan;

double Hz(double note) { return 440 * std::pow(2.0, (note - 69) / 12); }

// D, E koron, F, G: a second of each with a breath between.
const std::vector<double> kMelody = {62, 63.5, 65, 67};

// A melody as its changes of note: a note repeated at once counts once.
void Extend(std::vector<double>& melody, double note) {
    if (melody.empty() || melody.back() != note) melody.push_back(note);
}

class FMeterTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(rig.window->openPath(rig.demoCopy()));
        rig.enterEditor();
        std::vector<ToneSpan> spans{{0, 0.2}};
        for (double n : kMelody) spans.insert(spans.end(), {{Hz(n), 0.8, 4}, {0, 0.2}});
        wave = rig.folder.path() / "melody.wav";
        tahrir::test::WriteWaveFile(wave, tahrir::test::WaveFileBytes(tahrir::test::Melody(spans)));
        meter = rig.window->openFMeter();
        meter->openRecording(wave);
        ASSERT_TRUE(meter->waitForAnalysis());
    }
    void choose(const char* name) {
        auto* b = meter->findChild<QRadioButton*>(name);
        ASSERT_NE(b, nullptr);
        b->click();
    }
    std::vector<std::string> lines() const {
        std::vector<std::string> out;
        const auto& sheet = rig.window->document().Sheet;
        for (int i = 1; i <= sheet.LastLine; ++i) out.push_back(sheet[i].text());
        return out;
    }

    WindowRig rig;
    std::filesystem::path wave;
    FMeter* meter = nullptr;
};

TEST_F(FMeterTest, EachTrackerFindsTheMelodyAndItsInsertionIsOneUndoStep) {
    for (const char* tracker : {"TrackerModern", "TrackerClassic"}) {
        SCOPED_TRACE(tracker);
        choose(tracker);
        meter->transcribe();
        std::vector<double> found;
        for (const auto& n : meter->found().notes) Extend(found, n.note);
        const bool modern = std::string(tracker) == "TrackerModern";
        if (modern) EXPECT_EQ(found, kMelody);
        else EXPECT_GE(found.size(), 3u);
        // The notes are heard from a file the synthesiser renders.
        const auto heard = rig.folder.path() / "app" / "tmpnotes.wav";
        std::filesystem::remove(heard);
        meter->findChild<QToolButton*>("PlayNotes")->click();
        std::string error;
        const auto again = transcribe::TranscribeRecording(heard, {}, error);
        ASSERT_TRUE(again) << error;
        std::vector<double> heardNotes;
        for (const auto& n : again->notes) Extend(heardNotes, n.note);
        if (modern) {
            EXPECT_EQ(heardNotes, kMelody);
        }

        core::Document& doc = rig.window->document();
        const std::vector<std::string> before = lines();
        const int undoIndex = doc.UndoIndex;
        doc.Sheet.CurrentLine = 6;
        const auto inserted = meter->insertToSheet();
        ASSERT_GT(inserted.linesInserted, 0);
        EXPECT_EQ(lines().size(), before.size() + inserted.linesInserted);
        EXPECT_EQ(doc.UndoIndex, undoIndex + 1);
        // The page undo brings back is the one stored before the insertion.
        rig.key(Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(doc.UndoIndex, undoIndex);
        EXPECT_EQ(lines().size(), before.size());
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

TEST_F(FMeterTest, GridAndDastgahBoxesChangeTheNoteNames) {
    const auto names = [&] {
        QStringList out;
        for (const GridLine& g : meter->gridLines())
            if (g.note >= 60 && g.note < 72) out.push_back(g.label);
        return out;
    };
    choose("Grid12");
    EXPECT_EQ(names().size(), 12);
    EXPECT_TRUE(names().filter("koron").isEmpty() && names().filter("sori").isEmpty());
    // La tuned a semitone up moves the grid a semitone up under the curve.
    meter->findChild<QSlider*>("HSBaseF")->setValue(466);
    const auto grid = meter->gridLines();
    const auto c4 = std::find_if(grid.begin(), grid.end(), [](const GridLine& g) { return g.label == "C4"; });
    ASSERT_NE(c4, grid.end());
    EXPECT_NEAR(c4->note, 61, 0.01);
    meter->findChild<QSlider*>("HSBaseF")->setValue(440);
    choose("Grid24");
    EXPECT_EQ(names().size(), 24);
    EXPECT_FALSE(names().filter("koron").isEmpty() && names().filter("sori").isEmpty());
    EXPECT_TRUE(names().contains("E koron4") && names().contains("F sori4"));

    // Shur on Mi marks Fa sori; ticking Si's koron box rewrites line 1 and the grid.
    choose("GridDastgah");
    EXPECT_EQ(names().size(), 7);
    EXPECT_TRUE(names().contains("F sori4") && !names().contains("F4"));
    meter->findChild<QCheckBox*>("Dastgah31")->click();
    EXPECT_EQ(core::SignatureAt(rig.window->document().Sheet, 1).substr(0, 7), "   S  K");
    EXPECT_EQ(names().back(), "B koron4");
    rig.key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(core::SignatureAt(rig.window->document().Sheet, 1).substr(0, 7), "   S   ");
}

TEST_F(FMeterTest, RecordingNeedsAnInputDevice) {
    auto* record = meter->findChild<QToolButton*>("RecordWave");
    ASSERT_NE(record, nullptr);
    const bool device = !QMediaDevices::audioInputs().isEmpty();
    EXPECT_EQ(record->isEnabled(), device);
    EXPECT_EQ(record->toolTip().contains("No microphone"), !device);
}

TEST(FMeterOpen, AFileThatIsNoRecordingSaysSo) {
    WindowRig rig;
    FMeter* meter = rig.window->openFMeter();
    meter->openRecording(rig.folder.path() / "missing.wav");
    EXPECT_FALSE(meter->waitForAnalysis());
    EXPECT_TRUE(meter->findChild<QLabel*>("FMeterStatus")->text().contains("missing.wav"));
}

} // namespace
} // namespace tahrir::ui::test
