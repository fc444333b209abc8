// tahrir-cli: the editor's code without a window, one sub-command per task.

#include <cstring>
#include <iostream>
#include <string>
#include <vector>

#include "cli/cli_args.h"
#include "cli/commands.h"

using namespace tahrir::cli;

namespace {

const Command kCommands[] = {
    {"lines", "lines FILE.srv [--json]", RunLines},
    {"new", "new --tempo T --rhythm R --measures N -o OUT.srv [--description TEXT]", RunNew},
    {"save", "save FILE.srv -o OUT.srv", RunSave},
    {"type", "type FILE.srv [--keys \"TOKENS\"] [--answers \"A1|A2|...\"] -o OUT.srv [--json]",
     RunType},
    {"render",
     "render FILE.srv -o OUT.(png|pdf|svg|dxf) [--view page|working] [--zoom Z] "
     "[--width-units W] [--print] [--paged] [--paper a4|letter]",
     RunRender},
    {"layout", "layout FILE.srv --json [--view page|working]", RunLayout},
    {"play",
     "play FILE.srv [--wav OUT.wav] [--messages OUT.txt] [--log OUT.txt] [--tempo N] "
     "[--start-measure A] [--end-measure B] [--count-in] [--realtime] [--instrument I]",
     RunPlay},
    {"export-midi", "export-midi FILE.srv -o OUT.mid [--tempo N] [--microtonal]", RunExportMidi},
    {"dump-midi", "dump-midi FILE.mid", RunDumpMidi},
    {"export-musicxml", "export-musicxml FILE.srv -o OUT.musicxml|OUT.mxl", RunExportMusicXml},
    {"import-midi", "import-midi FILE.mid --track N [--octave-shift K] -o OUT.srv",
     RunImportMidi},
    {"pitch", "pitch FILE.wav", RunPitch},
    {"findnote",
     "findnote --period P [--rate 11000] [--grid 12|24|dastgah] [--base 440] "
     "[--signature LINE1]",
     RunFindNote},
    {"transcribe",
     "transcribe FILE.wav [--into SCORE.srv] -o OUT.srv [--at LINE] [--tempo T] "
     "[--min-duration 1|2|4|8] [--method simple|women|men] [--cutoff C] [--k K] [--exact] "
     "[--silent] [--raw] [--grid 12|24|dastgah] [--notes OUT.txt] [--tracker classic|modern]",
     RunTranscribe},
    {"notes",
     "notes FILE [--grid 12|24|dastgah] [--signature LINE1] [--base HZ] [--koron C] "
     "[--sori C] [-o OUT.txt] [--json] [--frames OUT.txt]",
     RunNotes},
    {"fingering", "fingering FILE.srv --instrument tar|ney|harmonica|hang", RunFingering},
};

void PrintHelp(std::ostream& out) {
    out << "usage: tahrir-cli COMMAND [options]   (every command takes --app-folder DIR)\n\n";
    for (const Command& c : kCommands) out << "  tahrir-cli " << c.usage << '\n';
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    // "--app-folder DIR" may also stand before the command name.
    std::vector<std::string> global;
    while (args.size() >= 2 && args[0] == "--app-folder") {
        global = {args[0], args[1]};
        args.erase(args.begin(), args.begin() + 2);
    }
    if (args.empty()) {
        PrintHelp(std::cerr);
        return ExitUsage;
    }
    const std::string name = args[0];
    if (name == "--help" || name == "-h" || name == "help") {
        PrintHelp(std::cout);
        return ExitOk;
    }
    for (const Command& c : kCommands) {
        if (name != c.name) continue;
        std::vector<std::string> rest(args.begin() + 1, args.end());
        rest.insert(rest.end(), global.begin(), global.end());
        for (const auto& a : rest) {
            if (a == "--help" || a == "-h") {
                std::cout << "usage: tahrir-cli " << c.usage << '\n';
                return ExitOk;
            }
        }
        try {
            return c.run(rest);
        } catch (const std::exception& e) {
            return Fail(ExitIo, e.what());
        }
    }
    std::cerr << "tahrir-cli: unknown command \"" << name << "\"\n";
    PrintHelp(std::cerr);
    return ExitUsage;
}
