// The open dialog's preview of every file generation.

#include <QPlainTextEdit>
#include <fstream>
#include <gtest/gtest.h>

#include "ui/open_preview.h"
#include "ui_test_support.h"

namespace tahrir::ui::test {
namespace {

TEST(OpenPreview, EveryGenerationShowsItsDescriptionAndABadNameSaysSo) {
    App();
    const TempFolder folder;
    struct Case {
        const char* file;
        std::string bytes;
        QString preview;
    };
    const Case cases[] = {
        {"now.srv", "\"Sv5 Tahrir score\"\r\n\"Shur daramad\r\nby ear\"\r\n       G  \r\n",
         "Shur daramad\nby ear\n { darama } "},
        {"marker.srv", "\"Sorvan4 SRV File\"\r\n\"Segah\"\r\n       G  \r\n", "Segah\n {  } "},
        // The oldest: the description itself, in the old code page: "<" breaks the line,
        // byte 129 is the digit 1; the six characters come from the field as stored.
        {"old.srv", "\"Avaz <Dashti\x81\"\r\n       G  \r\n", "Avaz \nDashti1\n { <Dasht } "},
    };
    for (const Case& c : cases) {
        std::ofstream(folder.path() / c.file, std::ios::binary) << c.bytes;
        const auto shown = PreviewFor(QString::fromStdString((folder.path() / c.file).string()));
        ASSERT_TRUE(shown) << c.file;
        EXPECT_EQ(shown->toStdString(), c.preview.toStdString()) << c.file;
    }
    EXPECT_EQ(PreviewFor("/tmp/what?.srv"), QString("Can't read File Name"));
    EXPECT_EQ(PreviewFor(QString::fromStdString(folder.path().string())), std::nullopt); // a folder

    OpenPreviewDialog dialog(nullptr, "Open", QString::fromStdString(folder.path().string()),
                             "srv Files (*.srv)");
    dialog.show();
    dialog.showPreview(QString::fromStdString((folder.path() / "old.srv").string()));
    EXPECT_TRUE(dialog.preview()->toPlainText().startsWith("Avaz"));
    EXPECT_TRUE(dialog.preview()->isVisible());
    dialog.showPreview(QString::fromStdString(folder.path().string())); // stays as it was
    EXPECT_TRUE(dialog.preview()->toPlainText().startsWith("Avaz"));
}

} // namespace
} // namespace tahrir::ui::test
