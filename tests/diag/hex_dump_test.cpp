// Hexadecimal dumps in both layouts, and the octet-string printers.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/test_world.h"

using fenk::test::TestWorld;

namespace {

std::string dump(int n, bool framed, uint8_t first = 1) {
    TestWorld w;
    if (framed) kivStoreDebugFlags(w.get(), KIV_DEBUG_FRAMED_DUMPS);
    std::vector<uint8_t> octets(n > 0 ? n : 1);
    for (int i = 0; i < n; ++i) octets[i] = static_cast<uint8_t>(first + i);
    kivHexDump(w.get(), octets.data(), n);
    return w.output();
}

}  // namespace

TEST(PlainDump, GroupsOfFourThirtyTwoToALine) {
    const std::string line32 =
        "01020304 05060708 090A0B0C 0D0E0F10 11121314 15161718 191A1B1C 1D1E1F20\n";
    const std::pair<int, std::string> cases[] = {
        {0, ""}, {-3, ""}, {1, "01\n"}, {4, "01020304 \n"}, {5, "01020304 05\n"},
        {16, "01020304 05060708 090A0B0C 0D0E0F10 \n"},
        {17, "01020304 05060708 090A0B0C 0D0E0F10 11\n"}, {32, line32}, {33, line32 + "21\n"},
    };
    for (const auto& [n, expected] : cases) EXPECT_EQ(dump(n, false), expected) << n;
    EXPECT_EQ(dump(2, false, 0xFE), "FEFF\n");
    // No world or no octets: nothing printed.
    TestWorld w;
    kivHexDump(w.get(), nullptr, 4);
    uint8_t x = 1;
    kivHexDump(nullptr, &x, 1);
    EXPECT_EQ(w.output(), "");
}

TEST(FramedDump, OffsetsCharactersAndPadding) {
    EXPECT_EQ(dump(0, true), "");
    EXPECT_EQ(dump(-1, true), "#   000000:   \n");
    EXPECT_EQ(dump(1, true, 'A'), "#   000000:   41" + std::string(40, ' ') + " A\n");
    EXPECT_EQ(dump(4, true, 'a'), "#   000000:   6162 6364" + std::string(33, ' ') + " abcd\n");
    EXPECT_EQ(dump(5, true, 'a'),
              "#   000000:   6162 6364 65" + std::string(30, ' ') + " abcde\n");
    std::string full = "#   000000:   0102 0304 0506 0708 090A 0B0C 0D0E 0F10    ................";
    EXPECT_EQ(dump(16, true), full + "\n");
    // The 17th octet's character stands under the first line's characters.
    std::string two = dump(17, true);
    EXPECT_EQ(two, full + "\n#   000010:   11" + std::string(40, ' ') + " .\n");
    std::string d32 = dump(32, true, 0x20);
    EXPECT_EQ(d32.substr(d32.find('\n') + 1, 14), "#   000010:   ");
    EXPECT_EQ(d32.back(), '\n');
    EXPECT_EQ(std::count(d32.begin(), d32.end(), '\n'), 2);
    std::string d33 = dump(33, true);
    EXPECT_NE(d33.find("#   000020:   21"), std::string::npos);
}

TEST(OctetPrinters, DottedAndQuoted) {
    const struct {
        bool dotted;
        const char *in, *out;
    } cases[] = {{true, "'0A0B'H", "10.11"}, {true, "''H", ""},        {true, "'FF'H", "255"},
                 {false, "'4101'H", "\"A?\""}, {false, "''H", "\"\""},
                 // Lower-case digits are not hexadecimal here: 'a' counts as 42.
                 {true, "'0a'H", "42"}};
    for (const auto& c : cases) {
        TestWorld w;
        int32_t r = c.dotted ? kivPrintDottedOctets(w.get(), c.in) : kivPrintQuotedOctets(w.get(), c.in);
        EXPECT_EQ(w.output(), c.out) << c.in;
        if (c.dotted) {
            EXPECT_TRUE(*c.out ? r > 0 : r == 0) << c.in << " answered " << r;
        }
    }
}
