#include <gtest/gtest.h>

#include "core/text_input.h"

using namespace tahrir::core;

TEST(TextInput, QuotedAndUnquotedFields) {
    // Quoted fields keep line breaks and drop their quotes; text after the quote is skipped.
    TextInput quoted("\"Sv5 x\"\r\n\"two\r\nlines\" junk\r\n13  8\r\n");
    EXPECT_EQ(quoted.readField(), "Sv5 x");
    EXPECT_EQ(quoted.readField(), "two\r\nlines");
    EXPECT_EQ(quoted.readLine(), "13  8");
    EXPECT_TRUE(quoted.eof());
    // Unquoted fields end at a comma or a line end.
    TextInput plain("  plain text  ,next\nrest of line\rlast");
    EXPECT_EQ(plain.readField(), "plain text");
    EXPECT_EQ(plain.readField(), "next");
    EXPECT_EQ(plain.readLine(), "rest of line");
    EXPECT_EQ(plain.readLine(), "last");
    EXPECT_TRUE(plain.eof());
    // An unclosed quote runs to the end.
    TextInput open("\"never closed\r\n13  8");
    EXPECT_EQ(open.readField(), "never closed\r\n13  8");
    EXPECT_TRUE(open.eof());
    EXPECT_EQ(open.readField(), "");
    EXPECT_EQ(open.readLine(), "");
}
