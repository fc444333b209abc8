#include "midifile/event_log.h"

#include <gtest/gtest.h>

namespace tahrir::midifile {
namespace {

TEST(EventLog, ReadsTheNumberFormsAndPassesOverLinesThatAreNotFourNumbers) {
    const EventLog log = ParseEventLog("0,60,3,100\r\n.5,60,3,0\r\n1E-07,0,2,0\n0,60,3\n0,60,3,100,7\n"
                                       "x,60,3,100\n\n0,,3,1\nnan,1,1,1\n 2.25 , 61 , 4 , 90 ");
    ASSERT_EQ(log.records.size(), 4u);
    EXPECT_EQ(log.skippedLines, 5);
    EXPECT_DOUBLE_EQ(log.records[1].seconds, 0.5);
    EXPECT_EQ(log.records[1].velocity, 0);
    EXPECT_DOUBLE_EQ(log.records[2].seconds, 1e-7);
    EXPECT_EQ(log.records[3].key, 61);
    EXPECT_EQ(log.records[3].channel, 4);
    EXPECT_EQ(log.records[3].velocity, 90);
}

} // namespace
} // namespace tahrir::midifile
