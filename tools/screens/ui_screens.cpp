// Pictures of the window for the documentation: ui_screens OUTDIR writes the page view,
// the working view, help mode, the Persian window and a new score typed from the keyboard.

#include <QAction>
#include <QLineEdit>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QTest>
#include <QToolButton>
#include <cstdio>
#include <fstream>

#include "core/score_writer.h"
#include "edit/editor.h"
#include "melody_builder.h"
#include "ui/print_frame.h"
#include "midifile/midi_writer.h"
#include "play/tuning.h"
#include "ui/midi_import_frame.h"
#include "ui/palette_panel.h"
#include "ui/scales_frame.h"
#include <QListWidget>
#include <QImage>
#include "ui/score_view.h"
#include "ui_test_support.h"

using namespace tahrir::ui;
using namespace tahrir::ui::test;

namespace {

bool SaveWidget(QWidget& w, const std::string& dir, const char* name) {
    for (int k = 0; k < 5; ++k) QApplication::processEvents();
    const std::string path = dir + "/" + name;
    const bool ok = w.grab().save(QString::fromStdString(path));
    std::printf("%s %s\n", ok ? "wrote" : "could not write", path.c_str());
    return ok;
}

bool Save(MainWindow& w, const std::string& dir, const char* name) {
    return SaveWidget(w, dir, name);
}

void Keys(WindowRig& rig, std::initializer_list<std::pair<int, Qt::KeyboardModifiers>> keys) {
    for (const auto& [k, m] : keys) rig.key(k, m);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: ui_screens OUTDIR\n");
        return 1;
    }
    const std::string dir = argv[1];
    App();
    bool ok = true;
    {
        WindowRig rig;
        rig.window->resize(1600, 1000);
        rig.window->openPath(rig.demoCopy());
        rig.enterEditor();
        while (rig.window->document().Sheet.CurrentLine < 13) rig.key(Qt::Key_Right);
        rig.key(Qt::Key_Up);
        ok &= Save(*rig.window, dir, "ui-page-view.png");
        rig.key(Qt::Key_H);
        QTest::mouseClick(rig.window->palette()->entry(15), Qt::LeftButton);
        ok &= Save(*rig.window, dir, "ui-help-mode.png");
        rig.key(Qt::Key_H);
        rig.window->setViewMode(tahrir::render::View::Working);
        ok &= Save(*rig.window, dir, "ui-working-view.png");
    }
    {
        // The window in Persian, right to left, the score still drawn left to right.
        WindowRig rig("fa");
        rig.window->resize(1600, 1000);
        rig.window->openPath(rig.demoCopy());
        rig.enterEditor();
        rig.key(Qt::Key_Right, Qt::NoModifier, 6);
        ok &= Save(*rig.window, dir, "ui-persian.png");
    }
    {
        // A short melody in Shur on Sol: La koron, a repeat and a text line.
        WindowRig rig;
        rig.window->resize(1600, 1000);
        rig.dialogs.inputs = {std::string("72"), std::string("4/4"), std::string("2")};
        rig.window->NewImage();
        const Qt::KeyboardModifiers none = Qt::NoModifier, shift = Qt::ShiftModifier;
        Keys(rig, {{Qt::Key_Right, none}, {Qt::Key_Right, none}, {Qt::Key_Right, none}});
        QTest::mouseClick(rig.window->palette()->entry(19), Qt::LeftButton); // repeat start
        Keys(rig, {{Qt::Key_Right, none},
                   {Qt::Key_5, none}, {Qt::Key_AsciiCircum, shift}, {Qt::Key_Return, none},
                   {Qt::Key_6, none}, {Qt::Key_K, none}, {Qt::Key_AsciiCircum, shift}, {Qt::Key_Return, none},
                   {Qt::Key_7, none}, {Qt::Key_B, none}, {Qt::Key_5, shift}, {Qt::Key_Return, none},
                   {Qt::Key_6, none}, {Qt::Key_K, none}, {Qt::Key_4, shift}, {Qt::Key_Return, none},
                   {Qt::Key_5, none}, {Qt::Key_AsciiCircum, shift}, {Qt::Key_Return, none}});
        rig.key(Qt::Key_F5, Qt::ShiftModifier); // a text line
        if (auto* text = rig.window->findChild<QLineEdit*>("TextF6")) {
            text->setText(QString::fromUtf8("شور"));
            QTest::keyClick(text, Qt::Key_Return);
        }
        ok &= Save(*rig.window, dir, "ui-new-score.png");
    }
    {
        // The print frame on a long melody, at its second page, and the print preview.
        WindowRig rig;
        tahrir::core::Document doc;
        doc.Sheet = tahrir::test::MakeMelody(80, 5);
        doc.Description = "Generated melody";
        const auto path = rig.folder.path() / "melody.srv";
        std::ofstream(path, std::ios::binary) << tahrir::core::ScoreFileImage(doc);
        rig.window->openPath(path.string());
        rig.window->findChild<QAction*>("FrPrint")->trigger();
        PrintFrame& frame = rig.window->printCommands().frame();
        frame.nextPage();
        ok &= SaveWidget(frame, dir, "ui-print-frame.png");
        QPrinter printer(QPrinter::HighResolution);
        auto preview = rig.window->printCommands().previewDialog(printer);
        preview->resize(1200, 900);
        preview->show();
        ok &= SaveWidget(*preview, dir, "ui-print-preview.png");
    }
    {
        // The window's frames: the scales frame, the MIDI track frame, the reference strip
        // and the window at 800 x 600.
        WindowRig rig;
        rig.window->openPath(rig.demoCopy());
        const auto tuning = tahrir::play::LoadTuning(std::filesystem::path(TAHRIR_DATA_DIR) / "Kookha.tun");
        std::vector<std::string> names;
        for (const auto& e : tuning.entries) names.push_back(e.name);
        ScalesFrame scales(names, [] {});
        scales.list()->setCurrentRow(14);
        scales.show();
        ok &= SaveWidget(scales, dir, "ui-scales-frame.png");

        tahrir::midifile::MidiFileInfo info;
        const auto bytes = tahrir::midifile::WriteMidiFile(
            {{0, 60, 3, 100}, {0.5, 60, 3, 0}, {0, 63, 2, 90}, {0.25, 63, 2, 0}, {0, 65, 3, 90}, {1, 65, 3, 0}}, 90);
        tahrir::midifile::DumpList dump;
        info = tahrir::midifile::ReadMidiBytes(bytes.bytes, dump);
        MidiImportFrame import(info, dump.lines);
        import.show();
        ok &= SaveWidget(import, dir, "ui-midi-import.png");

        rig.window->resize(1600, 1000);
        QImage picture(std::filesystem::exists(dir + "/ui-page-view.png") ? QString::fromStdString(dir + "/ui-page-view.png")
                                                                       : QString());
        if (picture.isNull()) {
            picture = QImage(900, 300, QImage::Format_RGB32);
            picture.fill(Qt::lightGray);
        }
        const std::string scan = rig.folder.path().string() + "/scan.png";
        picture.copy(380, 120, 900, 420).save(QString::fromStdString(scan));
        rig.dialogs.openPaths = {scan};
        rig.window->setViewMode(tahrir::render::View::Working);
        rig.window->cmdJpg();
        ok &= Save(*rig.window, dir, "ui-reference-strip.png");
        rig.window->cmdJpg();
        rig.window->setViewMode(tahrir::render::View::Page);
        rig.window->resize(800, 600);
        ok &= Save(*rig.window, dir, "ui-small-window.png");
    }
    return ok ? 0 : 1;
}
