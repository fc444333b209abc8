// The transcription window for the documentation: fmeter_screens OUTDIR RECORDING opens
// the recording, transcribes it with the modern tracker and writes the window's picture
// with the play line on a note.

#include <QApplication>
#include <cstdio>

#include "ui/fmeter/fmeter.h"
#include "ui_test_support.h"

using namespace tahrir::ui;
using namespace tahrir::ui::test;

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: fmeter_screens OUTDIR RECORDING\n");
        return 1;
    }
    App();
    WindowRig rig;
    rig.window->openPath(rig.demoCopy());
    FMeter* meter = rig.window->openFMeter();
    meter->resize(1400, 900);
    QApplication::processEvents();
    meter->openRecording(argv[2]);
    if (!meter->waitForAnalysis()) {
        std::fprintf(stderr, "could not analyse %s\n", argv[2]);
        return 1;
    }
    // The first ten seconds, with the first phrase marked.
    meter->zoom(10.0 * meter->view().rate() / meter->view().viewWidth / meter->view().perPixel);
    meter->goTo(0);
    meter->mark(0, 4.6 * meter->view().rate());
    meter->transcribe();
    // The play line on a note of the phrase: the keyboard and the error meter show it.
    meter->setPlayAt(2.9 * meter->view().rate());
    QApplication::processEvents();
    const std::string path = std::string(argv[1]) + "/fmeter-transcription.png";
    const bool ok = meter->grab().save(QString::fromStdString(path));
    std::printf("%s %s\n", ok ? "wrote" : "could not write", path.c_str());
    return ok ? 0 : 1;
}
