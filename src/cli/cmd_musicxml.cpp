// The score as MusicXML: plain text or the compressed container, by the output's name.

#include "cli/cli_args.h"
#include "cli/commands.h"
#include "core/session.h"
#include "musicxml/score_export.h"

namespace tahrir::cli {

int RunExportMusicXml(const Argv& argv) {
    Args args(argv, {{"-o"}, {}});
    if (!args.ok()) return Fail(ExitUsage, args.error());
    const auto out = args.value("-o");
    if (args.positional().size() != 1 || !out)
        return Fail(ExitUsage, "usage: export-musicxml FILE.srv -o OUT.musicxml|OUT.mxl");
    core::Document doc;
    core::Session session;
    if (const int rc = LoadForDrawing(args, args.positional()[0], doc, session); rc != ExitOk)
        return rc;
    const std::string error = musicxml::WriteMusicXmlFile(*out, musicxml::ExportMusicXml(doc));
    return error.empty() ? ExitOk : Fail(ExitIo, error);
}

} // namespace tahrir::cli
