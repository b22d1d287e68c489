// Decimal REAL texts through the table: parsing in both exponent
// conventions, canonical texts in both layouts, round trips over generated
// numbers, and comparison against exact arithmetic on the same numbers.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "fenkapi.h"

namespace {

constexpr uint32_t kInt = KIV_DECIMAL_INTEGER_MANTISSA;
constexpr uint32_t kPos = KIV_DECIMAL_POSITIONAL;

struct Parsed {
    int32_t result;
    KivDecimalReal record;
    std::string run() const {
        if (!record.firstDigit) return "";
        return std::string(record.firstDigit, record.lastDigit + 1);
    }
};

Parsed parse(const char* text, uint32_t flags = 0) {
    Parsed p{0, {}};
    p.record.flags = flags;
    p.result = kivParseDecimalReal(text, &p.record);
    return p;
}

std::string write(const char* text, uint32_t flags) {
    Parsed p = parse(text, flags & kInt);
    EXPECT_EQ(p.result, 0) << text;
    p.record.flags |= flags;
    std::string buffer(256, '#');
    kivDecimalRealText(&p.record, buffer.data());
    return buffer.c_str();
}

TEST(DecimalRealParse, ReadsSignRunAndExponentInBothConventions) {
    struct Case { const char* text; const char* run; int32_t sign, exponent, exponentInt; };
    const Case cases[] = {
        {"123.45", "123.45", 0, 2, -2},
        {"  -  1,5 E 2 ", "1,5", 1, 2, 1},
        {"0.05", "5", 0, -2, -2},
        {"+007", "7", 0, 0, 0},
        {"1500", "15", 0, 3, 2},
        {"120.", "12", 0, 2, 1},
        {"10,0", "1", 0, 1, 1},
        {"1.00e-3", "1", 0, -3, -3},
        {"1E+", "1", 0, 0, 0},
        {"9.9e2147483646", "9.9", 0, 2147483646, 2147483645},
        {"-000.000120", "12", 1, -4, -5},
    };
    for (const Case& c : cases) {
        for (uint32_t flags : {0u, kInt}) {
            Parsed p = parse(c.text, flags);
            ASSERT_EQ(p.result, 0) << c.text;
            EXPECT_EQ(p.run(), c.run) << c.text;
            EXPECT_EQ(p.record.sign, c.sign) << c.text;
            EXPECT_EQ(p.record.exponent, flags ? c.exponentInt : c.exponent) << c.text << flags;
            const bool marker = std::string(c.text).find_first_of("Ee") != std::string::npos;
            EXPECT_EQ(p.record.flags & 0x7F, marker ? KIV_DECIMAL_HAS_EXPONENT : 0u) << c.text;
        }
    }
}

TEST(DecimalRealParse, ResultCodesForTextsThatAreNotNumbers) {
    struct Case { const char* text; int32_t result; };
    const Case cases[] = {
        {"", 1},      {"   ", 1},       {"E5", 2},           {" e-1", 2},         {".", 4},
        {"-", 4},     {"1.2.3", 4},     {"1E", 3},           {"1e  ", 3},         {"1Ex", 4},
        {"1E+x", 4},  {"1E5 6", 4},     {"12a", 4},          {"1 2", 4},          {"1\t", 4},
        {"1E2147483647", 0}, {"1E2147483648", 5}, {"1E-2147483648", 0},
        {"1E-2147483649", 5}, {"12E2147483647", 5}, {"0.1E-2147483648", 5},
        {"1E99999999999999999999", 5},
    };
    for (const Case& c : cases) EXPECT_EQ(parse(c.text).result, c.result) << '"' << c.text << '"';
}

TEST(DecimalRealParse, ZerosAreFlaggedBySign) {
    Parsed p = parse("-0.0");
    EXPECT_EQ(p.result, 0);
    EXPECT_EQ(p.record.firstDigit, nullptr);
    EXPECT_EQ(p.record.flags, KIV_DECIMAL_NEGATIVE_ZERO);
    p = parse(" 000 E7", kInt);
    EXPECT_EQ(p.result, 0);
    EXPECT_EQ(p.record.flags, kInt | KIV_DECIMAL_HAS_EXPONENT | KIV_DECIMAL_POSITIVE_ZERO);
    EXPECT_EQ(parse("0x").record.flags & 0x0C, 0u) << "a refused text is not flagged";
}

TEST(DecimalRealText, CanonicalLayouts) {
    struct Case { const char* text; uint32_t flags; const char* expected; };
    const Case cases[] = {
        {"123.45", kPos, "123.45"},      {"1.5E3", kPos, "1500"},
        {"0.05", kPos, "0.05"},          {"5", kPos, "5"},
        {"0,0512", kPos, "0.0512"},      {"-12,5e-1", kPos, "-1.25"},
        {"100", kPos, "100"},            {"123.45", 0, "1.2345E2"},
        {"5", 0, "5.0E0"},               {"-0.05", 0, "-5.0E-2"},
        {"123.45", kInt, "12345.E-2"},   {"5", kInt, "5.E+0"},
        {"1500", kInt, "15.E2"},         {"-0.0", 0, "-0"},
        {"0e9", kInt | kPos, "0"},       {"-0", kPos, "-0"},
        {"1E-2147483648", 0, "1.0E-2147483648"},
        {"123.45", kInt | kPos, "123.45"}, {"1500", kInt | kPos, "1500"},
        {"0.0512", kInt | kPos, "0.0512"},
    };
    for (const Case& c : cases) EXPECT_EQ(write(c.text, c.flags), c.expected) << c.text;
}

// An exact decimal number: sign, significant digits without leading or
// trailing zeros (empty for zero), and the power of ten of the first digit.
struct Number { bool negative; std::string digits; int exponent; };

int compareExact(const Number& a, const Number& b) {
    if (a.negative != b.negative) return a.negative ? -1 : 1;
    int magnitude;
    if (a.digits.empty() || b.digits.empty())
        magnitude = a.digits.empty() == b.digits.empty() ? 0 : (a.digits.empty() ? -1 : 1);
    else if (a.exponent != b.exponent)
        magnitude = a.exponent < b.exponent ? -1 : 1;
    else
        magnitude = a.digits.compare(b.digits) < 0 ? -1 : (a.digits == b.digits ? 0 : 1);
    return a.negative ? -magnitude : magnitude;
}

Number randomNumber(std::mt19937& rng) {
    Number n{rng() % 2 == 0, "", 0};
    if (rng() % 8 == 0) return n;
    const int length = 1 + static_cast<int>(rng() % 6);
    for (int i = 0; i < length; ++i) n.digits += static_cast<char>('0' + rng() % 10);
    n.digits[0] = static_cast<char>('1' + rng() % 9);
    while (n.digits.size() > 1 && n.digits.back() == '0') n.digits.pop_back();
    if (rng() % 2) n.digits.back() = static_cast<char>('1' + rng() % 9);
    n.exponent = static_cast<int>(rng() % 13) - 6;
    return n;
}

// Writes the number in one of many equivalent ways: padding zeros, either
// mark, an exponent that moves the mark, blanks.
std::string randomText(const Number& n, std::mt19937& rng) {
    std::string text;
    if (rng() % 3 == 0) text += "  ";
    if (n.negative) text += '-';
    else if (rng() % 3 == 0) text += '+';
    if (n.digits.empty()) {
        text += rng() % 2 ? "0" : "00.000";
        if (rng() % 2) text += "E" + std::to_string(static_cast<int>(rng() % 9) - 4);
        return text;
    }
    const int shift = rng() % 2 ? static_cast<int>(rng() % 9) - 4 : 0;
    const int pointAfter = n.exponent - shift + 1;  // digits before the mark
    std::string mantissa = n.digits + std::string(rng() % 3, '0');
    const char mark = rng() % 2 ? '.' : ',';
    if (pointAfter <= 0) {
        mantissa = "0" + std::string(1, mark) + std::string(-pointAfter, '0') + mantissa;
    } else {
        if (static_cast<int>(mantissa.size()) < pointAfter)
            mantissa += std::string(pointAfter - mantissa.size(), '0');
        if (static_cast<int>(mantissa.size()) > pointAfter || rng() % 2)
            mantissa.insert(pointAfter, 1, mark);
        mantissa.insert(0, std::string(rng() % 3, '0'));
    }
    text += mantissa;
    if (shift != 0 || rng() % 4 == 0) text += (rng() % 2 ? "E" : " e ") + std::to_string(shift);
    if (rng() % 3 == 0) text += " ";
    return text;
}

Number fromRecord(const KivDecimalReal& r) {
    Number n{r.sign != 0, "", 0};
    if (!r.firstDigit) return n;
    for (const char* p = r.firstDigit; p <= r.lastDigit; ++p)
        if (*p != '.' && *p != ',') n.digits += *p;
    n.exponent = (r.flags & kInt) ? r.exponent + static_cast<int>(n.digits.size()) - 1 : r.exponent;
    return n;
}

bool same(const Number& a, const Number& b) {
    return a.negative == b.negative && a.digits == b.digits && (a.digits.empty() || a.exponent == b.exponent);
}

TEST(DecimalRealText, GeneratedNumbersSurviveEveryLayout) {
    std::mt19937 rng(7);
    for (int i = 0; i < 3000; ++i) {
        const Number n = randomNumber(rng);
        const std::string text = randomText(n, rng);
        for (uint32_t convention : {0u, kInt}) {
            Parsed p = parse(text.c_str(), convention);
            ASSERT_EQ(p.result, 0) << text;
            ASSERT_TRUE(same(fromRecord(p.record), n)) << text << " convention " << convention;
            for (uint32_t layout : {0u, kPos}) {
                p.record.flags = (p.record.flags & ~kPos) | layout;
                char out[64];
                kivDecimalRealText(&p.record, out);
                Parsed back = parse(out, convention);
                ASSERT_EQ(back.result, 0) << out;
                EXPECT_TRUE(same(fromRecord(back.record), n)) << text << " -> " << out;
                const bool hasExponent = std::string(out).find('E') != std::string::npos;
                EXPECT_EQ(hasExponent, layout == 0 && !n.digits.empty()) << out;
            }
        }
    }
}

TEST(DecimalRealCompare, AgreesWithExactOrder) {
    std::mt19937 rng(11);
    std::vector<Number> numbers;
    for (int i = 0; i < 60; ++i) numbers.push_back(randomNumber(rng));
    numbers.push_back({false, "15", 0});
    numbers.push_back({true, "15", 0});
    for (int round = 0; round < 6000; ++round) {
        const Number& a = numbers[rng() % numbers.size()];
        const Number& b = rng() % 4 == 0 ? a : numbers[rng() % numbers.size()];
        const std::string ta = randomText(a, rng);
        const std::string tb = randomText(b, rng);
        const int order = compareExact(a, b);
        const int32_t expected = order == 0 ? 0 : (order < 0 ? 2 : 3);
        ASSERT_EQ(kivCompareDecimalReals(nullptr, ta.c_str(), tb.c_str()), expected)
            << '"' << ta << "\" vs \"" << tb << '"';
    }
}

TEST(DecimalRealCompare, NamedCasesAndSpecialWords) {
    struct Case { const char* a; const char* b; int32_t expected; };
    const Case cases[] = {
        {"1.50", "1.5", 0},           {"1E2", "100", 0},
        {"-2", "-10", 3},             {"10,", "10", 0},
        {"-0", "0", 2},               {"0.0", "0E5", 0},
        {"0", "-1", 3},               {"-0", "-1", 3},
        {"NOT_A_NUMBER", "1E99", 3},  {"1E99", "NOT_A_NUMBER", 2},
        {"PLUS_INFINITY", "5", 3},    {"5", "PLUS_INFINITY", 2},
        {"MINUS_INFINITY", "-1E99", 2}, {"-1E99", "MINUS_INFINITY", 3},
        {"NOT_A_NUMBER", "NOT_A_NUMBER", 0}, {"MINUS_INFINITY", "PLUS_INFINITY", 2},
        {"abc", "1", 4},              {"1", "abc", 4},
        {"", "1", 4},                 {"1", "E5", 4},
        {"1E2147483648", "1", 4},     {"not_a_number", "1", 4},
    };
    for (const Case& c : cases)
        EXPECT_EQ(kivCompareDecimalReals(nullptr, c.a, c.b), c.expected) << c.a << " vs " << c.b;
    const char* text = "garbage";
    EXPECT_EQ(kivCompareDecimalReals(nullptr, text, text), 0) << "the same pointer is equal";
    EXPECT_EQ(kivCompareDecimalReals(nullptr, nullptr, "1"), 4);
    EXPECT_EQ(kivCompareDecimalReals(nullptr, "1", nullptr), 4);
}

}  // namespace
