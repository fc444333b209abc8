#include "cli/cli_args.h"
#include "cli/commands.h"

namespace tahrir::cli {

int RunRender(const Argv&) { return Fail(ExitUsage, "this command is not available yet"); }

int RunLayout(const Argv&) { return Fail(ExitUsage, "this command is not available yet"); }

} // namespace tahrir::cli
