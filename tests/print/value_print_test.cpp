// Value printing services: octet and bit strings with printLimit, bits held
// in integers, open types, ENUMERATED, line breaks, times, 64-bit integers,
// and the to-text twins with their exact sizes.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "print/print_fixture.h"

using fenk::test::PrintWorld;

namespace {

std::vector<uint8_t> counting(size_t n) {
    std::vector<uint8_t> octets(n);
    for (size_t i = 0; i < n; ++i) octets[i] = static_cast<uint8_t>(0x11 * (i % 16));
    return octets;
}

std::string hexDigits(const std::vector<uint8_t>& octets, size_t n) {
    static const char* digits = "0123456789ABCDEF";
    std::string s;
    for (size_t i = 0; i < n; ++i) {
        s += digits[octets[i] >> 4];
        s += digits[octets[i] & 15];
    }
    return s;
}

TEST(OctetString, DefaultLimitShowsSeventeenOctets) {
    PrintWorld w;
    ASSERT_EQ(w->printLimit, 35);
    for (size_t n : {0u, 1u, 17u, 18u, 40u}) {
        auto octets = counting(n);
        int32_t len = static_cast<int32_t>(n);
        std::string whole = "'" + hexDigits(octets, n) + "'H";
        std::string cut = n > 17 ? "'" + hexDigits(octets, 17) + " ...'H" : whole;
        EXPECT_EQ(w.printed([&] { kivPrintOctetString(w.get(), octets.data(), len); }), cut) << n;
        // The twin never cuts and takes exactly 1 + 2 + 2n + 1 bytes.
        w.sizes.clear();
        EXPECT_EQ(w.text(kivOctetStringToText(w.get(), octets.data(), len)), whole) << n;
        EXPECT_EQ(w.sizes, std::vector<uint64_t>{2 * n + 4}) << n;
    }
}

TEST(OctetString, LimitBoundariesAndNoLimit) {
    PrintWorld w;
    auto octets = counting(4);
    const std::pair<int64_t, const char*> cases[] = {
        {8, "'00112233'H"},  // exactly fits
        {7, "'001122 ...'H"},  // one digit short: three octets
        {1, "' ...'H"},
        // Only the low 32 bits count once the whole field is nonzero.
        {(int64_t{1} << 32) + 4, "'0011 ...'H"},
        {int64_t{1} << 32, "' ...'H"},  // a limit of 0, not none
    };
    for (const auto& [limit, expected] : cases) {
        w->printLimit = limit;
        EXPECT_EQ(w.printed([&] { kivPrintOctetString(w.get(), octets.data(), 4); }), expected) << limit;
    }
    EXPECT_EQ(w.printed([&] { kivPrintBitString(w.get(), octets.data(), 4); }), "' ...'B");
    w->printLimit = 0;
    auto many = counting(300);
    EXPECT_EQ(w.printed([&] { kivPrintOctetString(w.get(), many.data(), 300); }),
              "'" + hexDigits(many, 300) + "'H");
}

TEST(Hex, PrefixAndSuffixMayBeAbsentWhenPrinting) {
    PrintWorld w;
    const uint8_t octets[] = {0xAB, 0x0C};
    EXPECT_EQ(w.printed([&] { kivPrintHex(w.get(), nullptr, octets, 2, nullptr); }), "AB0C");
    EXPECT_EQ(w.printed([&] { kivPrintHex(w.get(), "<", octets, 2, nullptr); }), "<AB0C");
    w->printLimit = 2;
    EXPECT_EQ(w.printed([&] { kivPrintHex(w.get(), nullptr, octets, 2, ">"); }), "AB ...>");
    w.sizes.clear();
    EXPECT_EQ(w.text(kivHexToText(w.get(), "0x", octets, 2, "")), "0xAB0C");
    EXPECT_EQ(w.sizes, std::vector<uint64_t>{7});
}

TEST(BitString, GroupsOfEightAndTheLimit) {
    PrintWorld w;
    const uint8_t tenBits[] = {0xB2, 0x40};
    EXPECT_EQ(w.printed([&] { kivPrintBitString(w.get(), tenBits, 10); }), "'10110010 01'B");
    EXPECT_EQ(w.printed([&] { kivPrintBitString(w.get(), tenBits, 0); }), "''B");

    const uint8_t ones[] = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
    const std::string eights = "11111111 11111111 11111111 11111111 111";
    EXPECT_EQ(w.printed([&] { kivPrintBitString(w.get(), ones, 35); }), "'" + eights + "'B");
    EXPECT_EQ(w.printed([&] { kivPrintBitString(w.get(), ones, 36); }), "'" + eights + " ...'B");
    w->printLimit = 8;
    EXPECT_EQ(w.printed([&] { kivPrintBitString(w.get(), ones, 8); }), "'11111111'B");
    EXPECT_EQ(w.printed([&] { kivPrintBitString(w.get(), ones, 9); }), "'11111111 ...'B");
    w->printLimit = 0;
    EXPECT_EQ(w.printed([&] { kivPrintBitString(w.get(), ones, 40); }),
              "'11111111 11111111 11111111 11111111 11111111'B");
    EXPECT_EQ(w.printed([&] { kivPrintBits(w.get(), nullptr, tenBits, 3, nullptr); }), "101");
}

TEST(BitString, TextIsWholeAndSizedByTheCount) {
    PrintWorld w;
    const uint8_t ones[] = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
    for (int32_t n : {0, 1, 8, 9, 36, 40}) {
        std::string expected = "'";
        for (int32_t i = 0; i < n; ++i) expected += (i && i % 8 == 0) ? " 1" : "1";
        expected += "'B";
        w.sizes.clear();
        EXPECT_EQ(w.text(kivBitStringToText(w.get(), ones, n)), expected) << n;
        EXPECT_EQ(w.sizes, std::vector<uint64_t>{static_cast<uint64_t>(3 + n + n / 8 + 1)}) << n;
    }
    EXPECT_EQ(w.text(kivBitsToText(w.get(), "", ones, 4, "")), "1111");
}

TEST(BitsInInteger, TopByteFirstAtEveryWidth) {
    PrintWorld w;
    w->printLimit = 0;
    // The integer's low bytes hold its value (the machine is little-endian).
    const struct { uint64_t value; int32_t size, count; const char* expected; } cases[] = {
        {0xA0000000, 4, 3, "'101'B"},
        {0x81, 1, 8, "'10000001'B"},
        {0x8001, 2, 16, "'10000000 00000001'B"},
        // Size 3 reads 32 bits and lays out the low three bytes.
        {0xFF123456, 3, 24, "'00010010 00110100 01010110'B"},
        {0x8000000000000001ull, 8, 64,
         "'10000000 00000000 00000000 00000000 00000000 00000000 00000000 00000001'B"},
        {0x81, 1, 40, "'10000001'B"},  // a count past the integer's bits stops at them
    };
    for (const auto& c : cases) {
        EXPECT_EQ(w.printed([&] { kivPrintBitsInInteger(w.get(), &c.value, c.size, c.count); }),
                  c.expected) << c.expected;
        EXPECT_EQ(w.text(kivBitsInIntegerToText(w.get(), &c.value, c.size, c.count)), c.expected);
    }
}

struct NestedCall { int32_t pduNum; void* value; uint32_t nesting; };
NestedCall lastNested;
int32_t nestedAnswer = 0;

int32_t printNested(KivGlobal* world, int32_t pduNum, void* value) {
    lastNested = {pduNum, value, world->printNesting};
    kivCompanionPrint(world, "nested");
    return nestedAnswer;
}

TEST(OpenType, EncodedFormOrUnknown) {
    PrintWorld w;
    uint8_t encoded[] = {0x0A, 0x0B};
    KivOpenType neither{5, 2, nullptr, nullptr};
    EXPECT_EQ(w.printed([&] { kivPrintOpenType(w.get(), &neither); }), "<unknown>");
    // Without a PDU number the decoded value is not printed.
    int decoded = 0;
    KivOpenType noPdu{0, 2, encoded, &decoded};
    EXPECT_EQ(w.printed([&] { kivPrintOpenType(w.get(), &noPdu); }), "'0A0B'H");
    w->printLimit = 2;
    EXPECT_EQ(w.printed([&] { kivPrintOpenType(w.get(), &noPdu); }), "'0A ...'H");
}

TEST(OpenType, DecodedFormPrintsNestedThroughTheGuardedPrint) {
    KivControlTable table{nullptr, KIV_CONTROL_TABLE_VERSION, printNested};
    PrintWorld w;
    w->controlTable = &table;
    int decoded = 0;
    KivOpenType value{7, 0, nullptr, &decoded};
    w->printNesting = 0x10;
    nestedAnswer = 0;
    EXPECT_EQ(w.printed([&] { kivPrintOpenType(w.get(), &value); }), "nested");
    EXPECT_EQ(lastNested.pduNum, -7) << "negated: a nested print, not a new top-level one";
    EXPECT_EQ(lastNested.value, &decoded);
    EXPECT_EQ(lastNested.nesting, 0x11u);
    EXPECT_EQ(w->printNesting, 0x10u);
    nestedAnswer = 4;
    EXPECT_EQ(w.printed([&] { kivPrintOpenType(w.get(), &value); }), "nested<error>");
    EXPECT_EQ(w->printNesting, 0x10u);
}

TEST(Enumerated, FirstMatchingEntryOrUnknown) {
    PrintWorld w;
    const KivEnumerator table[] = {{"red", 0, 0, 0}, {"green", 0, 0, 7}, {"again", 0, 0, 7}};
    const char* unknown = "kiv_unknown_enumerator";
    const struct { uint64_t value; int32_t count; const char* expected; } cases[] = {
        {7, 3, "green"}, {0, 3, "red"}, {3, 3, unknown}, {7, 0, unknown}, {7, -1, unknown},
        // Entry values are zero-extended, not truncating the value looked for.
        {(uint64_t{1} << 32) | 7, 3, unknown},
    };
    for (const auto& c : cases)
        EXPECT_EQ(w.printed([&] { kivPrintEnumerated(w.get(), c.value, table, c.count); }), c.expected)
            << c.value << " in " << c.count;
}

TEST(NewLine, ClosingLevelsApplyAtOnceOpeningOnesLater) {
    PrintWorld w;
    EXPECT_EQ(w.printed([&] { kivPrintNewLine(w.get(), 1); }), "\n");
    EXPECT_EQ(w->printIndent, 1);
    EXPECT_EQ(w.printed([&] { kivPrintNewLine(w.get(), 0); }), "\n  ");
    EXPECT_EQ(w.printed([&] { kivPrintNewLine(w.get(), -1); }), "\n");
    EXPECT_EQ(w->printIndent, 0);
    w->printIndent = 3;
    EXPECT_EQ(w.printed([&] { kivPrintNewLine(w.get(), 0); }), "\n      ");
    EXPECT_EQ(w.printed([&] { kivPrintNewLine(w.get(), 2); }), "\n      ");
    EXPECT_EQ(w->printIndent, 5);
}

TEST(Times, UtcAndGeneralizedTimeTextAndTwin) {
    PrintWorld w;
    struct Case { bool utc; KivTimeStruct t; const char* expected; };
    const Case cases[] = {
        {true, {9, 5, 20, 13, 5, 0, 999, -90, 1}, "\"090520130500-0130\""},
        {true, {99, 12, 31, 23, 59, 59, 0, 0, 0}, "\"991231235959Z\""},
        {true, {0, 1, 1, 0, 0, 0, 0, 330, 0}, "\"000101000000+0530\""},
        {true, {0, 1, 1, 0, 0, 0, 0, 1, 1}, "\"000101000000+0001\""},
        {false, {2009, 5, 20, 13, 5, 7, 250, 0, 1}, "\"20090520130507.250Z\""},
        {false, {2009, 5, 20, 13, 5, 7, 0, 0, 0}, "\"20090520130507.000\""},
        {false, {1999, 1, 2, 3, 4, 5, 6, -600, 0}, "\"19990102030405.006-1000\""},
        {false, {1999, 1, 2, 3, 4, 5, 6, -600, 1}, "\"19990102030405.006Z\""},
        // Every field reads as signed 16-bit: 0xFFFF is -1; the text is whole.
        {false, {0x8000, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, -32768, 0},
         "\"-32768-1-1-1-1-1.-01-54608\""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(w.printed([&] {
            c.utc ? kivPrintUTCTime(w.get(), &c.t) : kivPrintGeneralizedTime(w.get(), &c.t);
        }), c.expected);
        w.sizes.clear();
        EXPECT_EQ(w.text(c.utc ? kivUTCTimeToText(w.get(), &c.t)
                               : kivGeneralizedTimeToText(w.get(), &c.t)),
                  c.expected);
        // 26 bytes, or the whole length of a longer text.
        EXPECT_EQ(w.sizes, std::vector<uint64_t>{std::max<uint64_t>(26, std::strlen(c.expected) + 1)});
    }
}

TEST(Integers, ExtremesInThirtyTwoBytes) {
    PrintWorld w;
    w.sizes.clear();
    EXPECT_EQ(w.text(kivInt64ToText(w.get(), INT64_MIN)), "-9223372036854775808");
    EXPECT_EQ(w.text(kivInt64ToText(w.get(), 42)), "42");
    EXPECT_EQ(w.text(kivUInt64ToText(w.get(), UINT64_MAX)), "18446744073709551615");
    EXPECT_EQ(w.sizes, (std::vector<uint64_t>{32, 32, 32}));
}

}  // namespace
