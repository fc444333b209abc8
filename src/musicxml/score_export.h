#pragma once
// A score as MusicXML 4.0 (partwise, one part), and the files it is written to.

#include <filesystem>
#include <string>

#include "core/document.h"
#include "play/midi_out.h"

namespace tahrir::musicxml {

struct ExportOptions {
    // The standing bends of the koron and sori voices, in MIDI bend MSB steps from the
    // centre (a device range of two semitones: 32 steps are a semitone). The <alter> of
    // a koron or sori note is the bend that playback gives it.
    int koronBend = play::DefaultKoronBend;
    int soriBend = play::DefaultSoriBend;
};

// The whole score as a MusicXML document (UTF-8).
std::string ExportMusicXml(const core::Document& doc, const ExportOptions& options = {});

// Writes a document: ".mxl" (any case) as the compressed container with its
// "META-INF/container.xml", any other name as plain text. Returns an error text, empty
// on success.
std::string WriteMusicXmlFile(const std::filesystem::path& path, const std::string& xml);

} // namespace tahrir::musicxml
