#include "core/app_folder.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <system_error>

namespace tahrir::core {

namespace fs = std::filesystem;

namespace {

std::optional<std::string> Environment(const char* name) {
    const char* value = std::getenv(name);
    if (value == nullptr || *value == '\0') return std::nullopt;
    return std::string(value);
}

// A shipped data folder holds the music font.
bool LooksShipped(const fs::path& folder) {
    std::error_code ec;
    return fs::is_regular_file(folder / "fonts" / "bravura.otf", ec);
}

} // namespace

fs::path ChooseAppFolder(const std::optional<std::string>& option) {
    if (option && !option->empty()) return fs::path(*option);
    if (auto env = Environment(AppFolderVariable)) return fs::path(*env);
    if (auto xdg = Environment("XDG_DATA_HOME")) return fs::path(*xdg) / "tahrir";
    const auto home = Environment("HOME");
    return fs::path(home.value_or(".")) / ".local" / "share" / "tahrir";
}

fs::path ShippedDataFolderFor(const fs::path& executable) {
    // Build tree: <build>/src/<module>/<exe> with the data in <build>/data;
    // installed tree: <prefix>/bin/<exe> with the data in <prefix>/share/tahrir.
    fs::path dir = executable.parent_path();
    for (int up = 0; up < 4 && !dir.empty(); ++up) {
        if (LooksShipped(dir / "data")) return dir / "data";
        if (LooksShipped(dir / "share" / "tahrir")) return dir / "share" / "tahrir";
        if (dir == dir.parent_path()) break;
        dir = dir.parent_path();
    }
    return {};
}

fs::path ShippedDataFolder() {
    std::error_code ec;
    const fs::path self = fs::read_symlink("/proc/self/exe", ec);
    if (ec) return {};
    return ShippedDataFolderFor(self);
}

std::string SeedAppFolder(const fs::path& appFolder, const fs::path& shipped) {
    std::error_code ec;
    fs::create_directories(appFolder, ec);
    if (ec) return "Can't create the data folder " + appFolder.string() + ": " + ec.message();
    if (shipped.empty()) return {};
    for (auto it = fs::recursive_directory_iterator(shipped, ec);
         !ec && it != fs::recursive_directory_iterator(); it.increment(ec)) {
        const fs::path relative = fs::relative(it->path(), shipped, ec);
        if (ec) break;
        const fs::path target = appFolder / relative;
        if (it->is_directory(ec)) {
            fs::create_directories(target, ec);
        } else if (!fs::exists(target, ec)) {
            fs::copy_file(it->path(), target, ec);
        }
        if (ec) return "Can't copy " + it->path().string() + " to " + target.string() + ": " + ec.message();
    }
    if (ec) return "Can't read the shipped data in " + shipped.string() + ": " + ec.message();
    return {};
}

AppFolderResult PrepareAppFolder(const std::optional<std::string>& option) {
    AppFolderResult result;
    result.folder = ChooseAppFolder(option);
    const bool chosen = (option && !option->empty()) || Environment(AppFolderVariable);
    // A folder given by the user is used as it is; the per-user default is seeded.
    result.error = SeedAppFolder(result.folder, chosen ? fs::path() : ShippedDataFolder());
    return result;
}

std::optional<std::string> CheckMusicFont(const fs::path& fontFile) {
    std::ifstream in(fontFile, std::ios::binary);
    std::array<char, 4> tag{};
    if (!in.read(tag.data(), tag.size())) return std::string(MissingFontMessage);
    // OpenType with outlines ("OTTO"), TrueType (0x00010000 or "true"), a collection ("ttcf").
    static constexpr std::array<std::array<char, 4>, 4> kTags = {{
        {'O', 'T', 'T', 'O'}, {'\0', '\1', '\0', '\0'}, {'t', 'r', 'u', 'e'}, {'t', 't', 'c', 'f'}}};
    for (const auto& known : kTags)
        if (known == tag) return std::nullopt;
    return std::string(MissingFontMessage);
}

fs::path MusicFontIn(const fs::path& appFolder, const fs::path& relative,
                     const fs::path& shipped) {
    const fs::path own = appFolder / relative;
    if (!CheckMusicFont(own) || shipped.empty()) return own;
    std::error_code ec;
    return fs::is_regular_file(shipped / relative, ec) ? shipped / relative : own;
}

fs::path MusicFontIn(const fs::path& appFolder, const fs::path& relative) {
    return MusicFontIn(appFolder, relative, ShippedDataFolder());
}

} // namespace tahrir::core
