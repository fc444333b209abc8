#include <gtest/gtest.h>

#include <grp.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "core/score_reader.h"
#include "core/score_writer.h"
#include "core/session.h"
#include "score_files.h"
#include "temp_folder.h"

using namespace tahrir::core;
using namespace tahrir::test;

namespace {
Document SmallScore() {
    Document doc;
    doc.Description = "\xDA\xE4\xE6\xC7\xE4\r\nTitle";
    doc.Sheet.LastLine = 4;
    doc.Sheet.setLine(1, "       G  ");
    doc.Sheet.setLine(2, "TEMPO 60");
    doc.Sheet.setLine(3, "RHYTM4/4");
    doc.Sheet.setLine(4, "13  8  " + std::string(40, 'x'));
    doc.Sheet.setLine(5, "beyond the last line");
    doc.DirtyFlag = true;
    return doc;
}
} // namespace

TEST(ScoreWriter, ExactBytes) {
    EXPECT_EQ(ScoreFileImage(SmallScore()),
              "\"Sv5 Tahrir score\"\r\n\"\xDA\xE4\xE6\xC7\xE4\r\nTitle\"\r\n" +
                  Scratch("       G") + "\r\n" + Scratch("TEMPO 60") + "\r\n" +
                  Scratch("RHYTM4/4") + "\r\n" + "13  8  " + std::string(25, 'x') + "\r\n");
    EXPECT_EQ(std::string(SavedMagicField).find('"'), std::string::npos);
    Document quoted = SmallScore();
    quoted.Description = "say \"hi\"";
    EXPECT_NE(ScoreFileImage(quoted).find("\"say \"hi\"\"\r\n"), std::string::npos)
        << "a quote in the description is written as it is";
}

TEST(ScoreWriter, SaveClearsDirtyAndRoundTrips) {
    TempFolder folder;
    Session session;
    StartSession(session, folder.path());
    Document doc = SmallScore();
    const auto path = folder / "out.srv";
    const SaveResult saved = SaveImage(doc, path);
    ASSERT_TRUE(saved.ok) << saved.message;
    EXPECT_FALSE(doc.DirtyFlag);
    EXPECT_EQ(doc.CurrentFileName, path.string());
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1)
        << "no temporary file is left behind";
    Document back;
    back.CurrentFileName = path.string();
    ASSERT_TRUE(Openp(back, session, nullptr).loaded());
    EXPECT_EQ(back.Description, doc.Description);
    EXPECT_EQ(back.FileGeneration, Generation::Sv5);
    EXPECT_EQ(back.Sheet.LastLine, 4);
    EXPECT_EQ(back.Sheet[4].size(), 32u) << "a loaded line keeps the length it has in the file";
    EXPECT_EQ(ScoreFileImage(back), ReadBytes(path)) << "a second save changes nothing";
}

namespace {

// What a save run in a child process returned. The child first makes its world hostile
// (`prepare`), so the test's own rights and limits stay untouched.
struct ChildSave {
    bool ok = true;
    bool dirty = false;
    std::string message;
};

ChildSave SaveInChild(Document doc, const std::filesystem::path& path, void (*prepare)()) {
    int pipeFds[2];
    if (::pipe(pipeFds) != 0) return {};
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::close(pipeFds[0]);
        prepare();
        const SaveResult saved = SaveImage(doc, path);
        const std::string report = std::string(saved.ok ? "1" : "0") + (doc.DirtyFlag ? "1" : "0") + saved.message;
        const ssize_t written = ::write(pipeFds[1], report.data(), report.size());
        ::_exit(written == static_cast<ssize_t>(report.size()) ? 0 : 1);
    }
    ::close(pipeFds[1]);
    std::string report;
    char buffer[256];
    for (ssize_t n; (n = ::read(pipeFds[0], buffer, sizeof buffer)) > 0;) report.append(buffer, static_cast<std::size_t>(n));
    ::close(pipeFds[0]);
    int status = 0;
    ::waitpid(pid, &status, 0);
    if (report.size() < 2) return {};
    return {report[0] == '1', report[1] == '1', report.substr(2)};
}

void NoChange() {}
// Root writes into any folder; the save then runs as nobody, for whom 0555 means no.
void AsNobody() {
    if (::geteuid() != 0) return;
    if (::setgroups(0, nullptr) != 0 || ::setgid(65534) != 0 || ::setuid(65534) != 0) ::_exit(2);
}
// A disk that is full after a few bytes: the file size limit fails the write (EFBIG).
void FullDisk() {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{16, 16};
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

} // namespace

TEST(ScoreWriter, FailedSaveKeepsTheOldFileAndTheScoreUnsaved) {
    struct Case {
        const char* what;
        void (*prepare)();
        bool folderInTheWay; // the file was replaced by a folder of its name
        mode_t folderMode;
    };
    const Case cases[] = {
        {"read-only folder", AsNobody, false, 0555},
        {"full disk", FullDisk, false, 0755},
        {"file replaced by a folder", NoChange, true, 0755},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TempFolder folder;
        const auto path = folder / "keep.srv";
        if (c.folderInTheWay) std::filesystem::create_directories(path / "inside");
        else WriteBytes(path, "old contents");
        ::chmod(folder.path().c_str(), c.folderMode);
        const ChildSave saved = SaveInChild(SmallScore(), path, c.prepare);
        ::chmod(folder.path().c_str(), 0755);
        EXPECT_FALSE(saved.ok);
        EXPECT_TRUE(saved.dirty) << "a failed save leaves the score unsaved";
        EXPECT_NE(saved.message.find("Can't write " + path.string() + ": "), std::string::npos) << saved.message;
        if (c.folderInTheWay) EXPECT_TRUE(std::filesystem::is_directory(path / "inside"));
        else EXPECT_EQ(ReadBytes(path), "old contents");
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1)
            << "no temporary file is left behind";
    }
    Document doc = SmallScore();
    EXPECT_FALSE(SaveImage(doc, "/nonexistent-folder/no/such/x.srv").ok);
    EXPECT_FALSE(SaveImage(doc, "").ok);
    EXPECT_TRUE(doc.DirtyFlag);
}
