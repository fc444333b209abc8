// The media module's entry point: the commands of module_commands.def by name.

#include "cli/media_module.h"

#include <cstring>
#include <exception>

#include "cli/cli_args.h"
#include "cli/commands.h"

extern "C" __attribute__((visibility("default"))) int
tahrir_cli_module_run(const char* function, const std::vector<std::string>* argv) {
    using namespace tahrir::cli;
    struct Entry {
        const char* name;
        int (*run)(const Argv&);
    };
    static const Entry kEntries[] = {
#define TAHRIR_MODULE_COMMAND(fn) {#fn, fn},
#include "cli/module_commands.def"
#undef TAHRIR_MODULE_COMMAND
    };
    for (const Entry& e : kEntries) {
        if (std::strcmp(e.name, function) != 0) continue;
        try {
            return e.run(*argv);
        } catch (const std::exception& error) {
            return Fail(ExitIo, error.what());
        }
    }
    return -1;
}
