#include <gtest/gtest.h>

#include <cstdlib>

#include "core/app_folder.h"
#include "temp_folder.h"

using namespace tahrir::core;
using namespace tahrir::test;

namespace {
// Sets an environment variable for one scope.
class ScopedEnv {
public:
    ScopedEnv(const char* name, const char* value) : m_name(name) {
        if (const char* old = std::getenv(name)) m_old = old;
        value ? ::setenv(name, value, 1) : ::unsetenv(name);
    }
    ~ScopedEnv() { m_old ? ::setenv(m_name, m_old->c_str(), 1) : ::unsetenv(m_name); }

private:
    const char* m_name;
    std::optional<std::string> m_old;
};

const std::string kGoodFont = std::string("OTTO") + std::string(60, '\0');

void MakeShipped(const std::filesystem::path& data) {
    std::filesystem::create_directories(data / "fonts");
    std::filesystem::create_directories(data / "demo");
    WriteBytes(data / "fonts" / "bravura.otf", kGoodFont);
    WriteBytes(data / "Kookha.tun", "shipped");
    WriteBytes(data / "demo" / "a.srv", "\"Sv5\"\r\n\"\"\r\n");
}
} // namespace

TEST(AppFolder, ChoiceOrder) {
    ScopedEnv app(AppFolderVariable, "/from/env");
    ScopedEnv xdg("XDG_DATA_HOME", "/xdg");
    ScopedEnv home("HOME", "/home/u");
    EXPECT_EQ(ChooseAppFolder(std::string("/from/option")), "/from/option");
    EXPECT_EQ(ChooseAppFolder(std::nullopt), "/from/env");
    ScopedEnv noApp(AppFolderVariable, nullptr);
    EXPECT_EQ(ChooseAppFolder(std::nullopt), "/xdg/tahrir");
    ScopedEnv noXdg("XDG_DATA_HOME", "");
    EXPECT_EQ(ChooseAppFolder(std::string()), "/home/u/.local/share/tahrir");
}

TEST(AppFolder, ShippedDataIsFoundFromTheExecutableAndSeeded) {
    TempFolder folder;
    // Build tree: <build>/src/cli/tahrir-cli with <build>/data.
    MakeShipped(folder / "build/data");
    std::filesystem::create_directories(folder / "build/src/cli");
    EXPECT_EQ(ShippedDataFolderFor(folder / "build/src/cli/tahrir-cli"), folder / "build/data");
    // Installed tree: <prefix>/bin/tahrir with <prefix>/share/tahrir.
    MakeShipped(folder / "usr/share/tahrir");
    EXPECT_EQ(ShippedDataFolderFor(folder / "usr/bin/tahrir"), folder / "usr/share/tahrir");
    EXPECT_EQ(ShippedDataFolderFor(folder / "elsewhere/bin/tahrir"), std::filesystem::path());
    // The test binary itself runs in the build tree, beside the linked data.
    EXPECT_TRUE(std::filesystem::exists(ShippedDataFolder() / "fonts" / "bravura.otf"));
    // Seeding a data folder copies only what is missing.
    MakeShipped(folder / "shipped");
    const auto app = folder / "user" / "tahrir";
    ASSERT_EQ(SeedAppFolder(app, folder / "shipped"), "");
    EXPECT_EQ(ReadBytes(app / "Kookha.tun"), "shipped");
    EXPECT_TRUE(std::filesystem::exists(app / "demo" / "a.srv"));
    WriteBytes(app / "Kookha.tun", "edited by the user");
    ASSERT_EQ(SeedAppFolder(app, folder / "shipped"), "");
    EXPECT_EQ(ReadBytes(app / "Kookha.tun"), "edited by the user");
    WriteBytes(folder / "file", "x");
    EXPECT_NE(SeedAppFolder(folder / "file" / "sub", folder / "shipped"), "");
}

TEST(AppFolder, MusicFontCheckAndFallbackToTheShippedOne) {
    TempFolder folder;
    EXPECT_EQ(CheckMusicFont(folder / "none.otf"), "Can't find Font file Srv31");
    WriteBytes(folder / "bad.otf", "<html>");
    EXPECT_EQ(CheckMusicFont(folder / "bad.otf"), "Can't find Font file Srv31");
    WriteBytes(folder / "ok.ttf", std::string("\0\1\0\0", 4) + "rest");
    EXPECT_FALSE(CheckMusicFont(folder / "ok.ttf"));
    EXPECT_FALSE(CheckMusicFont(std::filesystem::path(TAHRIR_DATA_DIR) / "fonts" / "bravura.otf"));

    const auto app = folder / "app";
    const auto shipped = folder / "shipped";
    const std::filesystem::path font = "fonts/bravura.otf";
    // Neither has one: the folder's own path, so the start-up check reports it missing.
    EXPECT_EQ(MusicFontIn(app, font, shipped), app / font);
    EXPECT_EQ(MusicFontIn(app, font, {}), app / font);
    MakeShipped(shipped);
    EXPECT_EQ(MusicFontIn(app, font, shipped), shipped / font);
    // A broken copy in the data folder is passed over; a good one is preferred.
    std::filesystem::create_directories(app / "fonts");
    WriteBytes(app / font, "<html>");
    EXPECT_EQ(MusicFontIn(app, font, shipped), shipped / font);
    WriteBytes(app / font, kGoodFont);
    EXPECT_EQ(MusicFontIn(app, font, shipped), app / font);
    EXPECT_FALSE(CheckMusicFont(MusicFontIn(folder / "empty"))) << "the build tree's own data";
}

TEST(AppFolder, GivenFolderIsCreatedButOnlyTheDefaultIsSeeded) {
    TempFolder folder;
    const AppFolderResult given = PrepareAppFolder((folder / "given").string());
    EXPECT_EQ(given.error, "");
    EXPECT_EQ(given.folder, folder / "given");
    EXPECT_TRUE(std::filesystem::is_directory(folder / "given"));
    EXPECT_FALSE(std::filesystem::exists(folder / "given" / "fonts"));
    ScopedEnv app(AppFolderVariable, nullptr);
    ScopedEnv xdg("XDG_DATA_HOME", folder.path().c_str());
    const AppFolderResult seeded = PrepareAppFolder(std::nullopt);
    EXPECT_EQ(seeded.error, "");
    EXPECT_EQ(seeded.folder, folder / "tahrir");
    EXPECT_FALSE(CheckMusicFont(seeded.folder / "fonts" / "bravura.otf"));
}
