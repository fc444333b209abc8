#include "cli/cli_args.h"
#include "cli/commands.h"

namespace tahrir::cli {

int RunLines(const Argv&) { return Fail(ExitUsage, "this command is not available yet"); }

int RunNew(const Argv&) { return Fail(ExitUsage, "this command is not available yet"); }

int RunSave(const Argv&) { return Fail(ExitUsage, "this command is not available yet"); }

} // namespace tahrir::cli
