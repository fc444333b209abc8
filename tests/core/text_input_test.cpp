#include <gtest/gtest.h>

#include "core/farsi_text.h"
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

TEST(TextInput, LeadingNumberReadsLikeTheOldNumericInput) {
    EXPECT_EQ(Val(" 72 "), 72);
    EXPECT_EQ(Val("-2"), -2);
    EXPECT_EQ(Val("1 2"), 12) << "blanks inside a number are skipped";
    EXPECT_EQ(Val("60abc"), 60);
    EXPECT_DOUBLE_EQ(Val("72.5"), 72.5);
    EXPECT_EQ(Val("abc"), 0);
    EXPECT_FALSE(LeadingNumber(""));
    EXPECT_FALSE(LeadingNumber("-"));
    EXPECT_EQ(UpperAscii("tempo\xE1"), "TEMPO\xE1");
}

TEST(FarsiText, Conversion) {
    EXPECT_EQ(FarsiToCp1256("\xF2"), "\xE1\xC7") << "lam-alef is two letters";
    EXPECT_EQ(FarsiToCp1256("Title (1)"), "Title (1)") << "Latin text keeps its parentheses";
    EXPECT_EQ(FarsiToCp1256("a<b"), "a\r\nb");
    // "(" beside a Persian letter (beh, 0x92) was stored mirrored.
    EXPECT_EQ(FarsiToCp1256("\x92(\x81)<(x)"), "\xC8)1(\r\n(x)");
    EXPECT_EQ(FarsiToCp1256(""), "");
}
