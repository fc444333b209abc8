#include <gtest/gtest.h>

#include "core/farsi_text.h"
#include "core/text_input.h"

using namespace tahrir::core;

TEST(TextInput, QuotedFieldsKeepLineBreaksAndDropTheirQuotes) {
    TextInput in("\"Sv5 x\"\r\n\"two\r\nlines\"\r\n13  8\r\n");
    EXPECT_EQ(in.readField(), "Sv5 x");
    EXPECT_EQ(in.readField(), "two\r\nlines");
    EXPECT_EQ(in.readLine(), "13  8");
    EXPECT_TRUE(in.eof());
}

TEST(TextInput, UnquotedFieldsEndAtCommaOrLineEnd) {
    TextInput in("  plain text  ,next\nrest of line\rlast");
    EXPECT_EQ(in.readField(), "plain text");
    EXPECT_EQ(in.readField(), "next");
    EXPECT_EQ(in.readLine(), "rest of line");
    EXPECT_EQ(in.readLine(), "last");
    EXPECT_TRUE(in.eof());
}

TEST(TextInput, UnclosedQuoteRunsToTheEnd) {
    TextInput in("\"never closed\r\n13  8");
    EXPECT_EQ(in.readField(), "never closed\r\n13  8");
    EXPECT_TRUE(in.eof());
    EXPECT_EQ(in.readField(), "");
    EXPECT_EQ(in.readLine(), "");
}

TEST(TextInput, TextAfterAClosingQuoteIsSkipped) {
    TextInput in("\"a\" junk\r\n\"b\"");
    EXPECT_EQ(in.readField(), "a");
    EXPECT_EQ(in.readField(), "b");
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

TEST(FarsiText, TableMapsTheOldCodePage) {
    const auto& table = FarsiTextTable();
    EXPECT_EQ(table['A'], "A");
    EXPECT_EQ(table[0], std::string_view("\0", 1));
    EXPECT_EQ(table[128], "0");
    EXPECT_EQ(table[137], "9");
    EXPECT_EQ(table[144], "\xC7") << "alef";
    EXPECT_EQ(table[145], "\xC7") << "final alef folds to alef";
    EXPECT_EQ(table[242], "\xE1\xC7") << "lam-alef is two letters";
    EXPECT_EQ(table[214], "\x9D") << "-42 is the zero-width non-joiner";
    EXPECT_EQ(table[215], "\xDC") << "-41 is the tatweel";
    EXPECT_EQ(table[255], "\xA0");
    for (int b = 0; b < 256; ++b) EXPECT_FALSE(table[std::size_t(b)].empty()) << b;
}

TEST(FarsiText, ConversionBreaksLinesAndMirrorsParentheses) {
    EXPECT_EQ(FarsiToCp1256("Title (1)"), "Title (1)") << "Latin text keeps its parentheses";
    EXPECT_EQ(FarsiToCp1256("a<b"), "a\r\nb");
    // "(" beside a Persian letter (beh, 0x92) was stored mirrored.
    EXPECT_EQ(FarsiToCp1256("\x92(\x81)<(x)"), "\xC8)1(\r\n(x)");
    EXPECT_EQ(FarsiToCp1256(""), "");
    EXPECT_EQ(FarsiToCp1256("<"), "\r\n");
}
