#include "musicxml/score_export.h"

#include "musicxml/exporter.h"

namespace tahrir::musicxml {

std::string ExportMusicXml(const core::Document& doc, const ExportOptions& options) {
    return Exporter(doc, options).run();
}

} // namespace tahrir::musicxml
