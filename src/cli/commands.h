#pragma once
// The sub-commands, one function each, grouped by the module they drive.

#include <string>
#include <vector>

#include "cli/cli_args.h"
#include "core/document.h"

namespace tahrir::cli {

using Argv = std::vector<std::string>;

// Score documents (cmd_score.cpp)
int RunLines(const Argv& argv);
int RunNew(const Argv& argv);
int RunSave(const Argv& argv);
// Editing (cmd_type.cpp)
int RunType(const Argv& argv);
// Drawing (cmd_render.cpp)
int RunRender(const Argv& argv);
int RunLayout(const Argv& argv);
// Loads FILE as the open command does, without an undo store. 0 or the exit code.
int LoadForDrawing(const Args& args, const std::string& file, core::Document& doc,
                   core::Session& session);
// Sound (cmd_play.cpp)
int RunPlay(const Argv& argv);
// MIDI files (cmd_midi.cpp)
int RunExportMidi(const Argv& argv);
int RunDumpMidi(const Argv& argv);
int RunImportMidi(const Argv& argv);
// MusicXML (cmd_musicxml.cpp)
int RunExportMusicXml(const Argv& argv);
// Recordings (cmd_transcribe.cpp)
int RunPitch(const Argv& argv);
int RunFindNote(const Argv& argv);
int RunTranscribe(const Argv& argv);
// Real recordings (cmd_notes.cpp)
int RunNotes(const Argv& argv);
// Fingering (cmd_fingering.cpp)
int RunFingering(const Argv& argv);

} // namespace tahrir::cli
