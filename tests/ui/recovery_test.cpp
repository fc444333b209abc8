// A window killed in the middle of editing: the next start offers its last edit back.

#include <QProcess>
#include <gtest/gtest.h>

#include "core/recovery.h"
#include "ui_test_support.h"

namespace tahrir::ui::test {
namespace {

using ::tahrir::test::ReadBytes;

// Runs the editing child on the rig's folders and kills it once it has edited; returns
// what it reported: "LastLine|line 8".
std::string EditAndKill(const WindowRig& rig, const std::string& score) {
    QProcess child;
    child.start(RECOVERY_CHILD, {QString::fromStdString((rig.folder.path() / "app").string()),
                                 QString::fromStdString(score)});
    if (!child.waitForStarted(10000)) return {};
    while (!child.canReadLine() && child.waitForReadyRead(30000)) {}
    const std::string report = child.readLine().trimmed().toStdString();
    child.kill();
    child.waitForFinished(10000);
    return report;
}

TEST(Recovery, AKilledRunOffersItsLastEditAtTheNextStart) {
    for (const bool restore : {true, false}) {
        SCOPED_TRACE(restore ? "Yes" : "No");
        WindowRig rig;
        const std::string score = rig.demoCopy();
        const std::string onDisk = ReadBytes(score);
        const std::string report = EditAndKill(rig, score);
        ASSERT_NE(report.find('|'), std::string::npos) << "the child did not edit: " << report;
        rig.dialogs.answers = {restore ? Answer::Yes : Answer::No};
        EXPECT_EQ(rig.window->offerRecovery(), restore);
        ASSERT_EQ(rig.dialogs.questionsAsked.size(), 1u);
        EXPECT_NE(rig.dialogs.questionsAsked[0].find(score), std::string::npos);
        const core::Document& doc = rig.window->document();
        if (restore) {
            const std::string line8 = doc.Sheet[8].text();
            EXPECT_EQ(std::to_string(doc.Sheet.LastLine) + "|" + line8.substr(0, line8.find_last_not_of(' ') + 1), report);
            EXPECT_TRUE(rig.window->isWindowModified());
            EXPECT_EQ(doc.CurrentFileName, score);
            EXPECT_TRUE(doc.DirtyFlag) << "the restored score is not saved yet";
            EXPECT_TRUE(rig.window->windowTitle().contains("shur-daramad.srv"));
        } else {
            EXPECT_FALSE(doc.DirtyFlag);
            EXPECT_TRUE(doc.CurrentFileName.empty()) << "No starts as usual";
        }
        EXPECT_EQ(ReadBytes(score), onDisk) << "the score's own file is never touched";
        // A run that ends normally leaves nothing to offer.
        rig.dialogs.answers = {Answer::No, Answer::Yes};
        if (!restore) rig.dialogs.answers.pop_front(); // nothing to save
        ASSERT_TRUE(rig.window->ExitImage());
        rig.dialogs.questionsAsked.clear();
        EXPECT_FALSE(rig.window->offerRecovery());
        EXPECT_TRUE(rig.dialogs.questionsAsked.empty());
    }
}

} // namespace
} // namespace tahrir::ui::test
