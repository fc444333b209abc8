#include <gtest/gtest.h>

#include "core/session.h"
#include "temp_folder.h"

using namespace tahrir::core;
using tahrir::test::TempFolder;
using tahrir::test::WriteBytes;

TEST(Session, StartReadsCalibration) {
    TempFolder folder;
    Session session;
    StartSession(session, folder.path());
    EXPECT_EQ(session.AppFolder, folder.path());
    EXPECT_EQ(session.CalibrationValue, DefaultCalibration) << "no initialize.vel: not an error";
    WriteBytes(folder / "initialize.vel", " 123456789 \r\n");
    StartSession(session, folder.path());
    EXPECT_EQ(session.CalibrationValue, 123456789);
    // "-5" is refused, and so is a number beyond any loop count.
    const std::vector<std::string> refused = {"fast please", "-5", std::string(5000, '9')};
    for (const std::string& bad : refused) {
        WriteBytes(folder / "initialize.vel", bad);
        EXPECT_FALSE(ReadCalibration(folder / "initialize.vel")) << bad.substr(0, 12);
    }
    StartSession(session, folder.path());
    EXPECT_EQ(session.CalibrationValue, DefaultCalibration);
}
