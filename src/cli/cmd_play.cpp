#include "cli/cli_args.h"
#include "cli/commands.h"

namespace tahrir::cli {

int RunPlay(const Argv&) { return Fail(ExitUsage, "this command is not available yet"); }

} // namespace tahrir::cli
