// The main window's side of the transcription window: its notes go in at the cursor and
// its Dastgah boxes rewrite line 1, each as one undoable step.

#include "core/dastgah_scale.h"
#include "edit/editor.h"
#include "ui/fmeter/fmeter.h"
#include "ui/main_window.h"
#include "ui/playback.h"

namespace tahrir::ui {

FMeter* MainWindow::openFMeter() {
    // The window is a plain widget without a meta-object of its own: found by its name.
    FMeter* meter = dynamic_cast<FMeter*>(findChild<QWidget*>("FMeter", Qt::FindDirectChildrenOnly));
    if (!meter) {
        FMeterHost host;
        host.appFolder = m_session.AppFolder;
        host.signature = [this] { return core::SignatureAt(m_doc.Sheet, m_doc.Sheet.CurrentLine); };
        host.tempo = [this] { return m_doc.CurrentTempo > 0 ? m_doc.CurrentTempo : 60.0; };
        host.insert = [this](const app::TrackedNotes& notes, transcribe::InsertOptions o) {
            const int line = m_doc.Sheet.CurrentLine;
            const transcribe::InsertResult r = transcribe::InsertNotes(m_doc, notes.notes, o);
            if (!r.memoryFull && r.linesInserted > 0) m_editor->linesInserted();
            afterEdit(line, -1);
            return r;
        };
        host.setSignature = [this](const std::string& letters) {
            m_doc.Sheet[1].setField(1, letters);
            m_editor->linesInserted();
            afterEdit(m_doc.Sheet.CurrentLine, -1);
        };
        host.midi = [this](const std::function<void(play::MidiOut&)>& use) {
            if (m_playback->hasOutput() && !m_playback->busy()) m_playback->player().withIdleMidi(use);
        };
        meter = new FMeter(std::move(host), this);
    }
    meter->showScaleKeys(core::SignatureAt(m_doc.Sheet, m_doc.Sheet.CurrentLine));
    meter->show();
    meter->raise();
    meter->activateWindow();
    return meter;
}

} // namespace tahrir::ui
