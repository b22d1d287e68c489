// Character string printers: quoted runs, tuples and quadruples, braces,
// the column counting against printLimit, UTF-8 reading, and the quoting
// services.
#include <cstring>
#include <string>
#include <vector>

#include "print/print_fixture.h"

using fenk::test::PrintWorld;

namespace {

std::string print8(PrintWorld& w, const std::string& chars) {
    return w.printed([&] {
        kivPrintCharString(w.get(), chars.data(), static_cast<uint32_t>(chars.size()));
    });
}

template <class Unit>
std::string printWide(PrintWorld& w, const std::vector<Unit>& units) {
    return w.printed([&] {
        kivPrintWideCharString(w.get(), units.data(), static_cast<int32_t>(units.size()),
                               sizeof(Unit));
    });
}

std::string printUtf8(PrintWorld& w, const std::string& octets) {
    return w.printed([&] {
        kivPrintWideCharString(w.get(), octets.data(), static_cast<int32_t>(octets.size()), 1);
    });
}

TEST(CharString, RunsTuplesAndBraces) {
    PrintWorld w;
    w->printLimit = 0;
    EXPECT_EQ(print8(w, "abc"), "\"abc\"");
    EXPECT_EQ(print8(w, ""), "\"\"");
    EXPECT_EQ(print8(w, std::string("a\n")), "{\"a\", {0, 10}}");
    EXPECT_EQ(print8(w, "\r"), "{0, 13}");
    EXPECT_EQ(print8(w, std::string("\0\1", 2)), "{{0, 0}, {0, 1}}");
    EXPECT_EQ(print8(w, "\xFF"), "{15, 15}");
    EXPECT_EQ(print8(w, "\x01" "ab\x02" "c"), "{{0, 1}, \"ab\", {0, 2}, \"c\"}");
    // A quotation mark is written once, like any printable character.
    EXPECT_EQ(print8(w, "say \"hi\""), "\"say \"hi\"\"");
    EXPECT_EQ(w.printed([&] { kivPrintCString(w.get(), "ab\x7F"); }), "{\"ab\", {7, 15}}");
}

TEST(CharString, LimitStopsInsideARunWithABlank) {
    PrintWorld w;
    w->printLimit = 5;
    // The 8-bit printer does not count the opening quote; the multi-octet
    // one does.
    EXPECT_EQ(print8(w, "abcdefgh"), "\"abcde ...\"");
    EXPECT_EQ(printUtf8(w, "abcdefgh"), "\"abcd ...\"");
    EXPECT_EQ(print8(w, "abcde"), "\"abcde\"");
    EXPECT_EQ(printUtf8(w, "abcd"), "\"abcd\"");
    w->printLimit = 15;
    EXPECT_EQ(print8(w, "a\nbcd"), "{\"a\", {0, 10}, \"bc ...\"}");
    // The check before a run reserves room for the quote and one character.
    w->printLimit = 1;
    EXPECT_EQ(print8(w, "ab"), "...");
}

TEST(CharString, LimitStopsOutsideARunWithoutABlank) {
    PrintWorld w;
    w->printLimit = 14;
    EXPECT_EQ(print8(w, std::string("\0\1\2", 3)), "{{0, 0}, {0, 1}, ...}");
    // Tuple widths grow with two-digit halves: {10, 11} takes 8 columns.
    w->printLimit = 8;
    EXPECT_EQ(print8(w, "\xAB\xAB"), "{{10, 11}, ...}");
    w->printLimit = 7;
    EXPECT_EQ(print8(w, "\xAB\xAB"), "{...}");
    // Quadruple widths: {0, 0, 0, 233} takes 14 columns.
    w->printLimit = 14;
    EXPECT_EQ(printWide<uint16_t>(w, {0xE9, 0xE9}), "{{0, 0, 0, 233}, ...}");
    w->printLimit = 13;
    EXPECT_EQ(printWide<uint16_t>(w, {0xE9, 0xE9}), "{...}");
    EXPECT_EQ(printWide<uint16_t>(w, {0x164, 0x164}), "{...}") << "100 takes three columns";
    // A run that would start past the limit closes the previous element.
    w->printLimit = 9;
    EXPECT_EQ(print8(w, "\x01xyz"), "{{0, 1}, ...}");
}

TEST(CharString, DefaultLimitCutsLongValues) {
    PrintWorld w;
    std::string letters(40, 'x');
    EXPECT_EQ(print8(w, letters), "\"" + std::string(35, 'x') + " ...\"");
    EXPECT_EQ(print8(w, std::string(35, 'x')), "\"" + std::string(35, 'x') + "\"");
}

TEST(WideCharString, Utf8IsReadWithoutValidation) {
    PrintWorld w;
    EXPECT_EQ(printUtf8(w, "\xC3\xA9"), "{0, 0, 0, 233}");
    EXPECT_EQ(printUtf8(w, "\xF0\x9F\x98\x80"), "{0, 1, 246, 0}");
    EXPECT_EQ(printUtf8(w, "a\x80" "b"), "{\"a\", {0, 0, 0, 0}, \"b\"}");
    EXPECT_EQ(printUtf8(w, "\xFF"), "{0, 0, 0, 0}");
    // A character cut short by the end of the data keeps what it has;
    // continuation octets are not checked.
    EXPECT_EQ(printUtf8(w, "\xE2\x82"), "{0, 0, 0, 130}");
    EXPECT_EQ(printUtf8(w, "\xC1\x81"), "\"A\"");
    EXPECT_EQ(printUtf8(w, "h\xC3\xA9llo"), "{\"h\", {0, 0, 0, 233}, \"llo\"}");
}

TEST(WideCharString, SixteenAndThirtyTwoBitUnits) {
    PrintWorld w;
    EXPECT_EQ(printWide<uint16_t>(w, {0x00E9}), "{0, 0, 0, 233}");
    EXPECT_EQ(printWide<uint16_t>(w, {'O', 'K'}), "\"OK\"");
    EXPECT_EQ(printWide<uint16_t>(w, {0x4E2D, 'a'}), "{{0, 0, 78, 45}, \"a\"}");
    EXPECT_EQ(printWide<uint32_t>(w, {0x0010FFFF}), "{0, 16, 255, 255}");
    EXPECT_EQ(printWide<uint32_t>(w, {'h', 'i'}), "\"hi\"");
    // Printable only when group, plane and row are all 0.
    EXPECT_EQ(printWide<uint32_t>(w, {0x01000041}), "{1, 0, 0, 65}");
    EXPECT_EQ(printWide<uint32_t>(w, {}), "\"\"");
}

TEST(WideCharString, TextEqualsTheUncutPrintAndIsSizedExactly) {
    PrintWorld w;
    const std::vector<std::pair<std::string, uint16_t>> values = {
        {"", 1},
        {"plain", 1},
        {std::string("\x01\x02\x03\x04\xC3\xA9z", 7), 1},
        {std::string("\xE9\x00\x41\x00", 4), 2},
        {std::string("\xFF\xFF\x10\x00\x41\x00\x00\x00", 8), 4},
        {std::string(200, '\x7F'), 1},
    };
    for (const auto& [data, width] : values) {
        int32_t length = static_cast<int32_t>(data.size() / width);
        w->printLimit = 0;
        std::string whole = w.printed(
            [&] { kivPrintWideCharString(w.get(), data.data(), length, width); });
        w->printLimit = 35;
        w.sizes.clear();
        EXPECT_EQ(w.text(kivWideCharStringToText(w.get(), data.data(), length, width)), whole);
        EXPECT_EQ(w.sizes, std::vector<uint64_t>{whole.size() + 1});
    }
}

TEST(Quote, CharactersAsTheyAre) {
    PrintWorld w;
    w.sizes.clear();
    EXPECT_EQ(w.text(kivQuoteChars(w.get(), "a\x01" "b", 3)), "\"a\x01" "b\"");
    EXPECT_EQ(w.text(kivQuoteChars(w.get(), "abc", 0)), "\"\"");
    EXPECT_EQ(w.text(kivQuoteChars(w.get(), "abcdef", 2)), "\"ab\"");
    EXPECT_EQ(w.sizes, (std::vector<uint64_t>{6, 3, 5}));
    std::string longer(100, 'q');
    w->printLimit = 5;
    EXPECT_EQ(w.text(kivQuoteCString(w.get(), longer.c_str())), "\"" + longer + "\"");
    w.sizes.clear();
    EXPECT_EQ(w.text(kivQuoteCString(w.get(), "x\"y")), "\"x\"y\"");
    EXPECT_EQ(w.sizes, std::vector<uint64_t>{6});
}

}  // namespace
