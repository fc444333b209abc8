// File > Export > MusicXML in the window: the name asked for, the bends of the moment in
// the alters, and a cancelled or failed export.

#include <QAction>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "ui/playback.h"
#include "ui_test_support.h"

namespace tahrir::ui::test {
namespace {

std::string ReadAll(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

TEST(ExportMenu, WritesTheOpenScoreWithTheBendsSetNow) {
    WindowRig rig;
    ASSERT_TRUE(rig.window->openPath(rig.demoCopy()));
    auto* action = rig.window->findChild<QAction*>("ExportMusicXml");
    ASSERT_NE(action, nullptr);
    rig.window->playback().player().setSoriBend(8);

    const std::filesystem::path out = rig.folder / "shur";
    rig.dialogs.savePaths = {out.string(), "", (rig.folder / "no" / "x.mxl").string()};
    action->trigger();
    const std::string xml = ReadAll(out.string() + ".musicxml");
    EXPECT_NE(xml.find("<key-step>F</key-step><key-alter>0.25</key-alter>"), std::string::npos);

    action->trigger(); // cancelled: nothing more is written, nothing is said
    action->trigger(); // a folder that does not exist
    ASSERT_EQ(rig.dialogs.messages.size(), 1u);
    EXPECT_NE(rig.dialogs.messages[0].find("x.mxl"), std::string::npos);
}

} // namespace
} // namespace tahrir::ui::test
