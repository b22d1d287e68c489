// Decimal REAL texts as value-notation text in temporary memory. Unlike the
// print form, the text is parsed into a mantissa and an exponent and written
// as "%.0fE%.0f" (1.5 gives 15E-1, 100 gives 1E2), or braced with base 10
// when the world's compatibility bit 0x100 asks for it. What cannot be
// parsed, or would not fit, gives "<IMPLEMENTATION LIMIT EXCEEDED>".
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "print/print_sink.h"
#include "print/print_slots.h"
#include "print/real_class.h"

namespace {

constexpr uint64_t kDecimalRealTextSize = 112;
// The collected mantissa characters, and those together with the exponent,
// stay below this.
constexpr size_t kPartsLimit = 80;
constexpr uint32_t kBracedBase10 = 0x100;
constexpr const char* kLimitExceeded = "<IMPLEMENTATION LIMIT EXCEEDED>";

bool isDigit(char c) {
    return (kivCompanionCharClass[static_cast<uint8_t>(c)] & KIV_CLASS_DIGIT) != 0;
}

bool isSpace(char c) {
    return (kivCompanionCharClass[static_cast<uint8_t>(c)] & KIV_CLASS_SPACE) != 0;
}

// White space and "--" comments (to the next "--" or the end of the line)
// before the number.
const char* skipSpaceAndComments(const char* p) {
    for (;;) {
        while (*p && isSpace(*p)) ++p;
        if (p[0] != '-' || p[1] != '-') return p;
        p += 2;
        while (*p && *p != '\n' && !(p[0] == '-' && p[1] == '-')) ++p;
        if (*p == '-') p += 2;
    }
}

// The number: an optional sign, then digits and at most one each of E, e,
// +, - and the point; it ends before any other character or before the
// second of one of those five. Trailing non-digits are given back.
std::string_view scanNumber(const char* p) {
    const char* start = p;
    if (*p == '+' || *p == '-') ++p;
    bool seen[5] = {};
    constexpr char kOnce[] = {'E', 'e', '+', '-', '.'};
    for (;; ++p) {
        if (isDigit(*p)) continue;
        const char* once = *p ? static_cast<const char*>(std::memchr(kOnce, *p, 5)) : nullptr;
        if (!once || seen[once - kOnce]) break;
        seen[once - kOnce] = true;
    }
    while (p > start && !isDigit(p[-1])) --p;
    return std::string_view(start, static_cast<size_t>(p - start));
}

struct DecimalParts {
    double mantissa;
    double exponent;
};

// False when the text cannot be parsed or its parts are too long.
bool parseDecimalReal(const char* text, DecimalParts& parts) {
    std::string_view number = scanNumber(skipSpaceAndComments(text));
    if (number.empty()) return false;

    size_t marker = number.find_first_of("Ee");
    bool hasExponent = marker != std::string_view::npos;
    std::string_view mantissa = number.substr(0, hasExponent ? marker : number.size());
    bool hasPoint = mantissa.find('.') != std::string_view::npos;

    // Trailing zeros go, though never the first character. Without a point
    // they move into the exponent (Z); after a point they simply go.
    size_t end = mantissa.size();
    while (end > 1 && mantissa[end - 1] == '0') --end;
    size_t movedZeros = hasPoint ? 0 : mantissa.size() - end;
    mantissa = mantissa.substr(0, end);

    char collected[kPartsLimit + 1];
    size_t length = 0;
    size_t i = 0;
    if (!mantissa.empty() && (mantissa[0] == '+' || mantissa[0] == '-')) collected[length++] = mantissa[i++];
    if (!hasExponent)
        while (i < mantissa.size() && mantissa[i] == '0') ++i;
    size_t fractionDigits = 0;
    bool afterPoint = false;
    for (; i < mantissa.size(); ++i) {
        if (mantissa[i] == '.') {
            afterPoint = true;
            continue;
        }
        if (length + 1 >= kPartsLimit) return false;
        collected[length++] = mantissa[i];
        if (afterPoint) ++fractionDigits;
    }
    collected[length] = '\0';
    parts.mantissa = std::strtod(collected, nullptr);

    parts.exponent = 0;
    if (hasExponent) {
        std::string_view exponentText = number.substr(marker + 1);
        if (length + exponentText.size() >= kPartsLimit) return false;
        char exponent[kPartsLimit];
        std::memcpy(exponent, exponentText.data(), exponentText.size());
        exponent[exponentText.size()] = '\0';
        parts.exponent = std::strtod(exponent, nullptr);
    }
    if (fractionDigits == movedZeros) return true;
    parts.exponent -= static_cast<double>(fractionDigits) - static_cast<double>(movedZeros);
    int exponentLength = std::snprintf(nullptr, 0, "%.0f", parts.exponent);
    return static_cast<size_t>(exponentLength) + length < kPartsLimit;
}

}  // namespace

char* kivDecimalRealToText(KivGlobal* world, const char* text) {
    fenk::TextSink out = fenk::newText(world, kDecimalRealTextSize);
    char* result = out.at;
    if (!text) {
        out.put("NULL");
        return result;
    }
    if (const char* word = fenk::specialRealWord(text)) {
        out.put("%s", word);
        return result;
    }
    // The parser's own checks keep ordinary texts within the 112 bytes; an
    // exponent text with a second marker in it (1E1e300) can still stand for
    // a number far longer than itself, and is refused like any text too long.
    DecimalParts parts;
    bool braced = (world->privateState->levelMask & kBracedBase10) != 0;
    const char* format = braced ? "{mantissa %.0f, base 10, exponent %.0f}" : "%.0fE%.0f";
    if (parseDecimalReal(text, parts) &&
        static_cast<uint64_t>(std::snprintf(nullptr, 0, format, parts.mantissa, parts.exponent)) <
            kDecimalRealTextSize)
        out.put(format, parts.mantissa, parts.exponent);
    else
        out.put("%s", kLimitExceeded);
    return result;
}
