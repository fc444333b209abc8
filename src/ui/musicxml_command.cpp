#include "ui/musicxml_command.h"

#include <filesystem>

#include "musicxml/score_export.h"
#include "ui/ui_text.h"

namespace tahrir::ui {

std::string ExportMusicXmlCommand(Dialogs& dialogs, const core::Document& doc,
                                  const play::PlayControls& controls) {
    std::string path = dialogs.saveFile(
        TrStd("Files", "Export MusicXML"), "MusicXML (*.musicxml *.mxl);;Compressed MusicXML (*.mxl)", "");
    if (path.empty()) return {};
    if (std::filesystem::path(path).extension().empty()) path += ".musicxml";
    musicxml::ExportOptions options;
    options.koronBend = controls.KoronBend.load();
    options.soriBend = controls.SoriBend.load();
    const std::string error =
        musicxml::WriteMusicXmlFile(path, musicxml::ExportMusicXml(doc, options));
    if (!error.empty()) {
        dialogs.message("Tahrir", error);
        return {};
    }
    return Tr("Files", "Wrote %1").arg(QString::fromStdString(path)).toStdString();
}

} // namespace tahrir::ui
