#include "cli/cli_args.h"
#include "cli/commands.h"

namespace tahrir::cli {

int RunPitch(const Argv&) { return Fail(ExitUsage, "this command is not available yet"); }

int RunFindNote(const Argv&) { return Fail(ExitUsage, "this command is not available yet"); }

int RunTranscribe(const Argv&) { return Fail(ExitUsage, "this command is not available yet"); }

} // namespace tahrir::cli
