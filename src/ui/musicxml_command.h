#pragma once
// File > Export > MusicXML.

#include <string>

#include "core/document.h"
#include "play/play_state.h"
#include "ui/dialogs.h"

namespace tahrir::ui {

// Asks for a file name and writes the open score as MusicXML: ".mxl" compressed, any
// other name plain, ".musicxml" added to a name without one. The alters of koron and
// sori follow the bends set now. Returns the status text; empty when cancelled. A
// failure is told in a message box.
std::string ExportMusicXmlCommand(Dialogs& dialogs, const core::Document& doc,
                                  const play::PlayControls& controls);

} // namespace tahrir::ui
