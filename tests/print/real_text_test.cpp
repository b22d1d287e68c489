// REAL values: the special classes by bit pattern, binary REALs in value
// notation, and decimal REAL texts in their print and to-text forms.
#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>

#include "print/print_fixture.h"

using fenk::test::PrintWorld;

namespace {

double fromBits(uint64_t bits) {
    double d;
    std::memcpy(&d, &bits, sizeof d);
    return d;
}

float fromBits32(uint32_t bits) {
    float f;
    std::memcpy(&f, &bits, sizeof f);
    return f;
}

int32_t classOf(double d) { return kivClassifyReal(&d, 8); }
int32_t classOf(float f) { return kivClassifyReal(&f, 4); }

// The patterns each class stores are classified in the round trip below.
TEST(RealClass, OtherPatterns) {
    EXPECT_EQ(classOf(0.0), 0);
    EXPECT_EQ(classOf(0.0f), 0);
    EXPECT_EQ(classOf(fromBits(0x7FF8000000000001ull)), 66);
    EXPECT_EQ(classOf(std::numeric_limits<double>::infinity()), 64);
    EXPECT_EQ(classOf(-std::numeric_limits<double>::infinity()), 65);
    for (double d : {fromBits(0x7FEFFFFFFFFFFFFEull), 1e300, static_cast<double>(FLT_MAX), 1.0})
        EXPECT_EQ(classOf(d), -1) << d;
    EXPECT_EQ(classOf(fromBits32(0x7F7FFFFEu)), -1);
    double big = DBL_MAX;
    EXPECT_EQ(kivClassifyReal(&big, 2), 64) << "sizes other than 4 read a double";
    float f = FLT_MAX;
    EXPECT_TRUE(kivRealHasClass(&f, 4, 64));
    EXPECT_FALSE(kivRealHasClass(&f, 4, 65));
}

TEST(RealClass, WordsInBothSpellings) {
    const struct {
        int32_t code;
        const char* hyphens;
        const char* underscores;
    } words[] = {{0, "0", "0"},
                 {64, "PLUS-INFINITY", "PLUS_INFINITY"},
                 {65, "MINUS-INFINITY", "MINUS_INFINITY"},
                 {66, "NOT-A-NUMBER", "NOT_A_NUMBER"},
                 {67, "-0", "-0"}};
    for (const auto& w : words) {
        EXPECT_STREQ(kivRealClassWord(w.code, 0), w.hyphens);
        EXPECT_STREQ(kivRealClassWord(w.code, 7), w.underscores);
    }
    EXPECT_EQ(kivRealClassWord(1, 0), nullptr);
    EXPECT_EQ(kivRealClassWord(-1, 1), nullptr);
}

TEST(RealClass, SetStoresTheRepresentationsAndRoundTrips) {
    const struct {
        int32_t code;
        uint64_t doubleBits;
        uint32_t floatBits;
    } cases[] = {{64, 0x7FEFFFFFFFFFFFFFull, 0x7F7FFFFFu},
                 {65, 0xFFEFFFFFFFFFFFFFull, 0xFF7FFFFFu},
                 {66, 0xFFF8000000000000ull, 0xFFC00000u},
                 {67, 0x8000000000000000ull, 0x80000000u}};
    for (const auto& c : cases) {
        uint64_t d = 0;
        EXPECT_TRUE(kivSetRealClass(&d, 8, c.code));
        EXPECT_EQ(d, c.doubleBits);
        EXPECT_EQ(kivClassifyReal(&d, 8), c.code);
        uint64_t f = 0x1111111111111111ull;  // a float store touches four bytes only
        EXPECT_TRUE(kivSetRealClass(&f, 4, c.code));
        EXPECT_EQ(static_cast<uint32_t>(f), c.floatBits);
        EXPECT_EQ(f >> 32, 0x11111111u);
        EXPECT_EQ(kivClassifyReal(&f, 4), c.code);
    }
    for (int32_t code : {0, -1, 63, 68}) {
        double d = 2.5;
        EXPECT_FALSE(kivSetRealClass(&d, 8, code));
        EXPECT_EQ(d, 2.5);
    }
}

std::string binaryReal(PrintWorld& w, double v) {
    std::string printed = w.printed([&] { kivPrintBinaryReal(w.get(), v); });
    w.sizes.clear();
    EXPECT_EQ(w.text(kivBinaryRealToText(w.get(), v)), printed);
    EXPECT_EQ(w.sizes, std::vector<uint64_t>{60});
    return printed;
}

TEST(BinaryReal, SpecialWordsWithSinglePrecisionInfinities) {
    PrintWorld w;
    EXPECT_EQ(binaryReal(w, fromBits(0xFFF8000000000000ull)), "NOT-A-NUMBER");
    EXPECT_EQ(binaryReal(w, std::nan("")), "NOT-A-NUMBER");
    EXPECT_EQ(binaryReal(w, -0.0), "-0");
    EXPECT_EQ(binaryReal(w, 0.0), "0");
    EXPECT_EQ(binaryReal(w, DBL_MAX), "PLUS-INFINITY");
    EXPECT_EQ(binaryReal(w, 1e300), "PLUS-INFINITY");
    EXPECT_EQ(binaryReal(w, 3.4028234663852886e38), "PLUS-INFINITY");
    EXPECT_EQ(binaryReal(w, -3.4028234663852886e38), "MINUS-INFINITY");
    EXPECT_EQ(binaryReal(w, 3.4e38), "{ mantissa 1072850831, base 2, exponent 98 }");
}

TEST(BinaryReal, OddMantissaOfAtMostThirtyOneBits) {
    PrintWorld w;
    EXPECT_EQ(binaryReal(w, 1.0), "{ mantissa 1, base 2, exponent 0 }");
    EXPECT_EQ(binaryReal(w, -2.5), "{ mantissa -5, base 2, exponent -1 }");
    EXPECT_EQ(binaryReal(w, 0.1), "{ mantissa 858993459, base 2, exponent -33 }");
    EXPECT_EQ(binaryReal(w, 2147483647.0), "{ mantissa 2147483647, base 2, exponent 0 }");
    // Bits below the 31 kept are dropped, not rounded: 2^32 + 1 loses its
    // low bit, 2147483647.75 its fraction after one halving.
    EXPECT_EQ(binaryReal(w, 4294967297.0), "{ mantissa 1, base 2, exponent 32 }");
    EXPECT_EQ(binaryReal(w, 2147483647.75), "{ mantissa 1073741823, base 2, exponent 1 }");
    for (int k = -1074; k <= 127; k += 7) {
        char expected[64];
        std::snprintf(expected, sizeof expected, "{ mantissa 1, base 2, exponent %d }", k);
        EXPECT_EQ(binaryReal(w, std::ldexp(1.0, k)), expected) << k;
        std::snprintf(expected, sizeof expected, "{ mantissa -3, base 2, exponent %d }", k);
        EXPECT_EQ(binaryReal(w, -3 * std::ldexp(1.0, k)), expected) << k;
    }
}

std::string decimalPrint(PrintWorld& w, const char* text) {
    return w.printed([&] { kivPrintDecimalReal(w.get(), text); });
}

TEST(DecimalRealPrint, RewritesDigitsIntoMantissaAndExponent) {
    PrintWorld w;
    const std::pair<const char*, const char*> cases[] = {
        {"1.5", "15E-1"},       {"123.4500E3", "12345E1"}, {"100", "100E0"},
        {"0.5", "05E-1"},       {".5", "5E-1"},            {"-0.05", "-005E-2"},
        {"1.0", "10E-1"},       {"7.", "7E0"},             {"", "0E0"},
        {"007", "7E0"},         {"+5", "+5E0"},            {"-.5", "-05E-1"},
        {"2.000e-4", "20E-5"},  {"1E+7", "1E7"},           {"1Ex", "1E0"},
        {"PLUS-INFINITY", "PLUS-INFINITYE0"},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(decimalPrint(w, text), expected) << text;
}

TEST(DecimalRealPrint, LongMantissasAndExponentsAreCut) {
    PrintWorld w;
    std::string digits;
    for (int i = 0; i < 100; ++i) digits += static_cast<char>('1' + i % 9);
    EXPECT_EQ(decimalPrint(w, digits.substr(0, 52).c_str()), digits.substr(0, 52) + "E0");
    EXPECT_EQ(decimalPrint(w, digits.substr(0, 53).c_str()), digits.substr(0, 49) + "...E0");
    EXPECT_EQ(decimalPrint(w, digits.substr(0, 60).c_str()), digits.substr(0, 49) + "...E0");
    EXPECT_EQ(decimalPrint(w, digits.substr(0, 79).c_str()), digits.substr(0, 49) + "...E0");
    EXPECT_EQ(decimalPrint(w, digits.c_str()), digits.substr(0, 49) + "...E0");
    // Fraction digits past the budget still count in the exponent.
    std::string longFraction = "1." + digits + "E5";
    EXPECT_EQ(decimalPrint(w, longFraction.c_str()), "1" + digits.substr(0, 48) + "...E-95");
    EXPECT_EQ(decimalPrint(w, "1E123456789"), "1E1234...");
    EXPECT_EQ(decimalPrint(w, "1E1234567"), "1E1234567");
    EXPECT_EQ(decimalPrint(w, "2.5E-123456"), "25E-123457");
    EXPECT_EQ(decimalPrint(w, "2.5E-1234567"), "25E-123...");
}

std::string decimalText(PrintWorld& w, const char* text) {
    w.sizes.clear();
    std::string result = w.text(kivDecimalRealToText(w.get(), text));
    EXPECT_EQ(w.sizes, std::vector<uint64_t>{112}) << (text ? text : "null");
    return result;
}

TEST(DecimalRealText, ParsesIntoMantissaAndExponent) {
    PrintWorld w;
    const std::pair<const char*, const char*> cases[] = {
        {"1.5", "15E-1"},   {"100", "1E2"},     {"100E2", "1E4"},  {"-2.50", "-25E-1"},
        {"1.5E3", "15E2"},  {"0.0", "0E0"},     {"12abc", "12E0"}, {"0.5", "5E-1"},
        {"1.5E", "15E-1"},  {"7.", "7E0"},      {"-100", "-1E2"},  {"+3e-2", "3E-2"},
        {"100.0", "100E0"}, {"1.2.3", "12E-1"}, {"  4", "4E0"},    {"-- note --\n 1.25", "125E-2"},
        {"--x\n6", "6E0"}, {"00", "0E1"},  // the first character stays, one zero moves
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(decimalText(w, text), expected) << text;
}

TEST(DecimalRealText, SpecialTextsAndWhatCannotBeParsed) {
    PrintWorld w;
    const std::pair<const char*, const char*> specials[] = {
        {nullptr, "NULL"},           {"PLUS_INFINITY", "PLUS-INFINITY"},
        {"0", "0"},                  {"MINUS_INFINITY", "MINUS-INFINITY"},
        {"-0", "-0"},                {"NOT_A_NUMBER", "NOT-A-NUMBER"},
    };
    for (const auto& [text, expected] : specials) {
        EXPECT_EQ(decimalPrint(w, text), expected);
        EXPECT_EQ(decimalText(w, text), expected);
    }
    for (const char* bad : {"abc", "", "-", "{1}", ".", "E", "-- only a comment"})
        EXPECT_EQ(decimalText(w, bad), "<IMPLEMENTATION LIMIT EXCEEDED>") << bad;
}

TEST(DecimalRealText, SeventyNineCharactersAtMost) {
    PrintWorld w;
    std::string digits;
    for (int i = 0; i < 80; ++i) digits += static_cast<char>('1' + i % 9);
    char expected[128];
    std::snprintf(expected, sizeof expected, "%.0fE0", std::strtod(digits.substr(0, 79).c_str(), nullptr));
    EXPECT_EQ(decimalText(w, digits.substr(0, 79).c_str()), expected);
    EXPECT_EQ(decimalText(w, digits.c_str()), "<IMPLEMENTATION LIMIT EXCEEDED>");
    // Leading zeros are skipped only without an exponent.
    EXPECT_EQ(decimalText(w, ("00" + digits.substr(0, 79)).c_str()), expected);
    EXPECT_EQ(decimalText(w, ("0" + digits.substr(0, 78) + "E1").c_str()),
              "<IMPLEMENTATION LIMIT EXCEEDED>");
    // The sign is collected too.
    EXPECT_EQ(decimalText(w, ("-" + digits.substr(0, 79)).c_str()),
              "<IMPLEMENTATION LIMIT EXCEEDED>");
    // Mantissa and exponent texts together: 70 + 9 fit, 71 + 9 do not.
    std::string fits = decimalText(w, (digits.substr(0, 70) + "E123456789").c_str());
    EXPECT_EQ(fits.substr(fits.size() - 10), "E123456789");
    EXPECT_EQ(decimalText(w, (digits.substr(0, 71) + "E123456789").c_str()),
              "<IMPLEMENTATION LIMIT EXCEEDED>");
    // The adjusted exponent must fit beside the mantissa as well.
    std::string fraction = "0." + digits.substr(0, 77);
    EXPECT_EQ(decimalText(w, fraction.c_str()), "<IMPLEMENTATION LIMIT EXCEEDED>");
    // An exponent text naming a far longer number does not fit either.
    EXPECT_EQ(decimalText(w, "1E1e300"), "<IMPLEMENTATION LIMIT EXCEEDED>");
    EXPECT_EQ(decimalText(w, "1E1e3"), "1E1000");
}

TEST(DecimalRealText, BracedBaseTenWithCompatibilityBit) {
    PrintWorld w;
    ASSERT_EQ(kivStoreLevelMask(w.get(), 0x100), 0);
    EXPECT_EQ(decimalText(w, "1.5"), "{mantissa 15, base 10, exponent -1}");
    EXPECT_EQ(decimalText(w, "PLUS_INFINITY"), "PLUS-INFINITY");
    std::string digits(78, '9');
    std::string longest = decimalText(w, ("0." + digits.substr(0, 76)).c_str());
    EXPECT_LT(longest.size(), 112u);
    EXPECT_EQ(longest.substr(0, 10), "{mantissa ");
}

}  // namespace
