// MIDI export and import and the scales frame, as the menus run them.

#include <QAction>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <gtest/gtest.h>

#include "edit/palette.h"
#include "midifile/event_log.h"
#include "midifile/midi_writer.h"
#include "play/tuning.h"
#include "smf_builder.h"
#include "temp_folder.h"
#include "ui/help_window.h"
#include "ui/midi_import_frame.h"
#include "ui/playback.h"
#include "ui/reference_strip.h"
#include "ui/scales_frame.h"
#include "ui_test_support.h"

namespace tahrir::ui::test {
namespace {

namespace mf = ::tahrir::midifile;

using WindowMidi = DemoWindow;

// The plain file is the run's log at the tempo bar's tempo (the tick rule is the writer's
// own test); the microtonal file keeps a channel of bends beside the notes.
TEST_F(WindowMidi, ExportsWriteTheRunAtItsTempoAndKeepQuarterTonesWhenAsked) {
    const auto app = rig.folder.path() / "app";
    const std::string plain = (rig.folder.path() / "plain.mid").string();
    rig.dialogs.savePaths = {plain, (rig.folder.path() / "micro").string()};
    rig.trigger("ExportMidi");
    ASSERT_TRUE(rig.dialogs.messages.empty()) << rig.dialogs.messages.front();
    const mf::Bytes bytes = ::tahrir::test::ReadByteVector(plain);
    EXPECT_EQ(bytes, ::tahrir::test::ReadByteVector(app / mf::TestMidName));
    // The run's log at the score's tempo of 66, which the tempo bar took on opening.
    const mf::EventLog log = mf::ReadEventLog(app / mf::EventLogName);
    ASSERT_GT(log.records.size(), 100u);
    EXPECT_EQ(bytes, mf::WriteMidiFile(log.records, 66).bytes);
    mf::MidiFileInfo info;

    rig.trigger("ExportMidiMicrotonal"); // ".mid" is added to a bare name
    mf::test::Dump(::tahrir::test::ReadByteVector(rig.folder.path() / "micro.mid"), &info);
    ASSERT_TRUE(info.complete());
    EXPECT_EQ(info.format, 1);
    ASSERT_EQ(info.MidiTracks.size(), 2u);
    EXPECT_EQ(info.MidiTracks[1].size(), log.records.size() / 2);
}

TEST_F(WindowMidi, ImportOfTrackTwoOpensItsScoreWithTheOctaveAnswered) {
    mf::test::TrackBuilder conductor, ney;
    conductor.meta(0, 0x03, "Conductor").meta(0, 0x51, "\x07\xA1\x20").end();
    ney.meta(0, 0x03, "Ney")
        .event(0, {0x90, 60, 90})
        .event(480, {0x80, 60, 0})
        .event(0, {0x90, 61, 90})
        .event(240, {0x80, 61, 0})
        .end();
    const auto midi = rig.folder.path() / "song.mid";
    ::tahrir::test::WriteBytes(midi, mf::test::BuildSmf(1, 480, {conductor, ney}));
    std::ofstream(rig.folder.path() / "song.srv") << "taken"; // an existing score stays
    rig.dialogs.openPaths = {midi.string()};
    rig.dialogs.tracks = {2};
    rig.dialogs.inputs = {std::string("1")};
    rig.trigger("ImportMidi");
    ASSERT_TRUE(rig.dialogs.messages.empty()) << rig.dialogs.messages.front();
    EXPECT_EQ(mf::test::Count(rig.dialogs.trackDump, "Note"), 4u);
    EXPECT_EQ(rig.dialogs.inputsAsked, (std::vector<std::string>{"Octave Transpose"}));
    const core::Document& doc = rig.window->document();
    EXPECT_EQ(doc.CurrentFileName, (rig.folder.path() / "song-2.srv").string());
    EXPECT_EQ(::tahrir::test::ReadBytes(rig.folder.path() / "song.srv"), "taken");
    std::vector<std::string> notes;
    for (int i = 4; i <= doc.Sheet.LastLine; ++i)
        if (doc.Sheet[i].text().rfind("L", 0) != 0)
            notes.push_back(doc.Sheet[i].text().substr(0, 6));
    EXPECT_EQ(notes, (std::vector<std::string>{"14  8 ", "14  4D"}));
    EXPECT_EQ(rig.window->playback().player().controls().UserTempo.load(), 120);

    rig.dialogs.openPaths = {midi.string()}; // Cancel in the track frame leaves the score
    rig.trigger("ImportMidi");
    EXPECT_EQ(rig.window->document().CurrentFileName, (rig.folder.path() / "song-2.srv").string());
}

using WindowScales = DemoWindow;

TEST_F(WindowScales, ChosenSignatureBecomesLineOneAlsoForANewScore) {
    const play::TuningFile tuning =
        play::LoadTuning(std::filesystem::path(TAHRIR_DATA_DIR) / "Kookha.tun");
    ASSERT_GT(tuning.entries.size(), 16u);
    rig.dialogs.scales = {16, std::nullopt};
    rig.trigger("InsertScale");
    ASSERT_EQ(rig.dialogs.scaleNames.size(), tuning.entries.size());
    EXPECT_EQ(rig.window->document().Sheet[1].text(), tuning.entries[16].line + "  ");
    EXPECT_TRUE(rig.window->document().DirtyFlag);
    rig.trigger("InsertScale"); // Cancel keeps it
    EXPECT_EQ(rig.window->document().Sheet[1].text(), tuning.entries[16].line + "  ");

    rig.dialogs.answers = {Answer::No};
    rig.dialogs.inputs = {std::string("72"), std::string("4/4"), std::string("2")};
    rig.dialogs.scales = {3};
    rig.window->NewImage();
    EXPECT_EQ(rig.window->document().Sheet[1].text(), tuning.entries[3].line + "  ");
}

TEST(WindowFrames, TrackAndScalesFramesChoose) {
    App();
    mf::test::TrackBuilder a, b;
    a.meta(0, 0x03, "Piano").event(0, {0x90, 60, 90}).event(10, {0x80, 60, 0}).end();
    b.meta(0, 0x03, "Tar")
        .event(0, {0x90, 62, 90})
        .event(10, {0x80, 62, 0})
        .event(0, {0x90, 64, 90})
        .event(10, {0x80, 64, 0})
        .end();
    mf::MidiFileInfo info;
    const auto dump = mf::test::Dump(mf::test::BuildSmf(1, 480, {a, b}), &info);
    MidiImportFrame frame(info, dump);
    frame.show();
    ASSERT_EQ(frame.trackList()->count(), 2);
    EXPECT_TRUE(frame.trackList()->item(1)->text().contains("Tar"));
    EXPECT_TRUE(frame.trackList()->item(1)->text().contains("(2 notes)"));
    EXPECT_EQ(frame.dumpList()->count(), static_cast<int>(dump.size()));
    frame.trackList()->setCurrentRow(1);
    QTest::mouseClick(frame.findChild<QPushButton*>("CmdOKMidi"), Qt::LeftButton);
    EXPECT_EQ(frame.chosenTrack(), 2);

    int tuned = 0;
    ScalesFrame scales({"Shur (Sol)", "Segah"}, [&tuned] { ++tuned; });
    scales.show();
    QTest::mouseClick(scales.findChild<QToolButton*>("DiapazonImg"), Qt::LeftButton);
    EXPECT_EQ(tuned, 1);
    QTest::mouseClick(scales.findChild<QPushButton*>("CmdOkScales"), Qt::LeftButton);
    EXPECT_EQ(scales.chosen(), std::nullopt); // nothing selected
    scales.list()->setCurrentRow(1);
    QTest::mouseClick(scales.findChild<QPushButton*>("CmdOkScales"), Qt::LeftButton);
    EXPECT_EQ(scales.chosen(), 1);
}

// Help is made and drawn off screen in the window's first idle moments and kept, so the
// menu only shows it; a language switch makes it again in the new language.
TEST(WindowFrames, HelpFromTheMenuIsPreparedOnceAndFollowsTheLanguage) {
    WindowRig rig;
    QTest::qWait(500);
    ASSERT_EQ(rig.window->findChildren<QDialog*>("HelpWindow").size(), 1);
    const auto open = [&] {
        QString title;
        QTimer::singleShot(0, [&] {
            QWidget* shown = QApplication::activeModalWidget();
            if (!shown) return;
            title = shown->windowTitle();
            shown->close();
        });
        rig.trigger("HelpKeys");
        return title;
    };
    const QString title = open();
    EXPECT_EQ(title, "Keys and palette");
    const auto help = rig.window->findChildren<HelpWindow*>("HelpWindow");
    ASSERT_EQ(help.size(), 1);
    // Every palette entry with its key and, nearly all, a hint; every key with its Persian.
    QTableWidget* palette = help[0]->paletteTable();
    ASSERT_EQ(palette->rowCount(), edit::PaletteEntries);
    int hinted = 0;
    for (int r = 0; r < palette->rowCount(); ++r) {
        EXPECT_FALSE(palette->item(r, 2)->text().isEmpty()) << r;
        hinted += !palette->item(r, 3)->text().trimmed().isEmpty();
    }
    EXPECT_GE(hinted, palette->rowCount() - 3);
    for (int r = 0; r < help[0]->keyTable()->rowCount(); ++r)
        EXPECT_FALSE(help[0]->keyTable()->item(r, 2)->text().isEmpty()) << "Persian for row " << r;
    EXPECT_TRUE(AboutText().contains("SIL Open Font License"));
    rig.window->setLanguage("fa");
    EXPECT_NE(open(), title);
    rig.window->setLanguage("en");
}

TEST(WindowReference, StripShowsHidesFollowsTheViewAndDrags) {
    WindowRig rig;
    ReferenceStrip* strip = rig.window->referenceStrip();
    QImage picture(800, 400, QImage::Format_RGB32);
    picture.fill(Qt::darkGray);
    const std::string jpg = (rig.folder.path() / "scan.jpg").string();
    ASSERT_TRUE(picture.save(QString::fromStdString(jpg)));
    rig.dialogs.openPaths = {jpg};
    rig.trigger("CmdJpg");
    ASSERT_TRUE(strip->isVisible());
    EXPECT_EQ(strip->path().toStdString(), jpg);
    EXPECT_NEAR(strip->image()->height(), strip->height(), 2); // fitted to the strip
    const QPoint before = strip->image()->pos();
    QTest::mousePress(strip, Qt::LeftButton, {}, {100, 100});
    QMouseEvent move(QEvent::MouseMove, QPointF(140, 110), strip->mapToGlobal(QPointF(140, 110)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(strip, &move);
    EXPECT_EQ(strip->image()->pos(), before + QPoint(40, 10));
    strip->setZoom(2 * strip->zoom());
    EXPECT_NEAR(strip->image()->height(), 2 * strip->height(), 4);

    rig.trigger("CmdJpg"); // closing keeps the path
    EXPECT_FALSE(strip->isVisible());
    EXPECT_EQ(strip->path().toStdString(), jpg);
    rig.window->setViewMode(render::View::Working);
    EXPECT_TRUE(strip->isVisible());
    rig.window->setViewMode(render::View::Page);
    EXPECT_FALSE(strip->isVisible());

    rig.trigger("CmdJpg"); // a cancelled dialog empties the path
    EXPECT_TRUE(strip->path().isEmpty());
    rig.window->setViewMode(render::View::Working);
    EXPECT_FALSE(strip->isVisible());
}

} // namespace
} // namespace tahrir::ui::test
