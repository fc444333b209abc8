// tahrir-cli's side of the media module: each command of module_commands.def is a small
// forwarder that loads the module on first use and runs the command there.

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

#include "cli/cli_args.h"
#include "cli/commands.h"
#include "cli/media_module.h"

namespace tahrir::cli {
namespace {

namespace fs = std::filesystem;
using ModuleRun = int (*)(const char*, const std::vector<std::string>*);

// The module beside the executable (the build tree), else in the library folder of the
// installed tree, given relative to the program folder.
std::vector<fs::path> ModuleCandidates() {
    std::error_code ec;
    const fs::path self = fs::read_symlink("/proc/self/exe", ec);
    const fs::path dir = ec ? fs::path(".") : self.parent_path();
    return {dir / MediaModuleName, dir / TAHRIR_MODULE_RELDIR / MediaModuleName};
}

ModuleRun LoadModule(std::string& error) {
    static ModuleRun run = nullptr;
    if (run) return run;
    for (const fs::path& candidate : ModuleCandidates()) {
        std::error_code ec;
        if (!fs::exists(candidate, ec)) continue;
        void* handle = dlopen(candidate.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (!handle) {
            error = dlerror();
            return nullptr;
        }
        run = reinterpret_cast<ModuleRun>(dlsym(handle, "tahrir_cli_module_run"));
        if (!run) error = candidate.string() + ": not a tahrir-cli module";
        return run;
    }
    error = std::string("cannot find ") + MediaModuleName + " beside tahrir-cli";
    return nullptr;
}

int RunInModule(const char* function, const Argv& argv) {
    std::string error;
    const ModuleRun run = LoadModule(error);
    if (!run) return Fail(ExitIo, "this command needs the media module: " + error);
    const int code = run(function, &argv);
    if (code < 0) return Fail(ExitIo, std::string("the media module lacks ") + function);
    return code;
}

} // namespace

#define TAHRIR_MODULE_COMMAND(fn) \
    int fn(const Argv& argv) { return RunInModule(#fn, argv); }
#include "cli/module_commands.def"
#undef TAHRIR_MODULE_COMMAND

} // namespace tahrir::cli
