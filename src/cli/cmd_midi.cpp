#include "cli/cli_args.h"
#include "cli/commands.h"

namespace tahrir::cli {

int RunExportMidi(const Argv&) { return Fail(ExitUsage, "this command is not available yet"); }

int RunDumpMidi(const Argv&) { return Fail(ExitUsage, "this command is not available yet"); }

int RunImportMidi(const Argv&) { return Fail(ExitUsage, "this command is not available yet"); }

} // namespace tahrir::cli
