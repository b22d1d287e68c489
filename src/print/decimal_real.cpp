// Decimal REAL texts: breaking a text into sign, significant-digit run and
// power of ten; writing a record back in a canonical layout; comparing two
// texts by value.
//
// The run [firstDigit, lastDigit] points into the caller's text and may hold
// one decimal mark ('.' or ','), which every reader of the run skips.
#include <cstring>
#include <string_view>

#include "print/print_slots.h"

namespace {

constexpr int32_t kParsed = 0;
constexpr int32_t kBlank = 1;
constexpr int32_t kMarkerOnly = 2;
constexpr int32_t kMarkerEmpty = 3;
constexpr int32_t kNotANumber = 4;
constexpr int32_t kExponentTooBig = 5;

constexpr int64_t kInt32Max = 2147483647;
constexpr int64_t kInt32Min = -kInt32Max - 1;

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isMark(char c) { return c == '.' || c == ','; }

const char* skipBlanks(const char* p) {
    while (*p == ' ') ++p;
    return p;
}

int32_t offset(const char* from, const char* to) { return static_cast<int32_t>(to - from); }

// Reads the exponent after the marker: blanks, a sign, blanks, digits. A sign
// without digits reads as 0. Answers kParsed with *cursor moved past it.
int32_t readExponent(const char** cursor, int64_t* value) {
    const char* p = skipBlanks(*cursor);
    if (*p == '\0') return kMarkerEmpty;
    bool negative = false;
    if (*p == '+' || *p == '-') {
        negative = *p == '-';
        p = skipBlanks(p + 1);
    } else if (!isDigit(*p)) {
        return kNotANumber;
    }
    int64_t magnitude = 0;
    for (; isDigit(*p); ++p) {
        magnitude = magnitude * 10 + (*p - '0');
        if (magnitude > kInt32Max + 1) return kExponentTooBig;
    }
    if (!negative && magnitude > kInt32Max) return kExponentTooBig;
    *value = negative ? -magnitude : magnitude;
    *cursor = p;
    return kParsed;
}

// Writes the run's digits from *at on (marks skipped), at most limit of
// them; answers the next free output position.
char* copyDigits(const char** at, const char* last, char* out, int64_t limit) {
    const char* p = *at;
    for (; p <= last && limit > 0; ++p) {
        if (isMark(*p)) continue;
        *out++ = *p;
        --limit;
    }
    *at = p;
    return out;
}

int32_t runLength(const KivDecimalReal* r) {
    int32_t digits = 0;
    for (const char* p = r->firstDigit; p <= r->lastDigit; ++p) digits += isMark(*p) ? 0 : 1;
    return digits;
}

// The number written out without exponent. exponent is the power of ten of
// the first digit.
char* writePositional(const KivDecimalReal* r, int64_t exponent, char* out) {
    if (exponent < 0) {
        *out++ = '0';
        *out++ = '.';
        for (int64_t zeros = -exponent - 1; zeros > 0; --zeros) *out++ = '0';
    }
    const char* at = r->firstDigit;
    out = copyDigits(&at, r->lastDigit, out, 1);
    for (int64_t left = exponent; left > 0; --left) {
        char* next = copyDigits(&at, r->lastDigit, out, 1);
        if (next == out) *next++ = '0';
        out = next;
    }
    if (exponent >= 0) *out++ = '.';
    // Design decision: the digits left in the run follow in either case, so
    // that a value below one keeps all its digits (0.0512, not 0.05).
    out = copyDigits(&at, r->lastDigit, out, INT64_MAX);
    if (isMark(out[-1])) --out;
    return out;
}

char* writeExponential(const KivDecimalReal* r, char* out) {
    const bool integerMantissa = (r->flags & KIV_DECIMAL_INTEGER_MANTISSA) != 0;
    const char* at = r->firstDigit;
    out = copyDigits(&at, r->lastDigit, out, 1);
    if (!integerMantissa) *out++ = '.';
    char* rest = copyDigits(&at, r->lastDigit, out, INT64_MAX);
    if (rest == out && !integerMantissa) *rest++ = '0';
    out = rest;
    if (integerMantissa) *out++ = '.';
    *out++ = 'E';
    const int64_t exponent = r->exponent;
    if (exponent == 0 && integerMantissa) {
        *out++ = '+';
        *out++ = '0';
        return out;
    }
    uint64_t magnitude = static_cast<uint64_t>(exponent < 0 ? -exponent : exponent);
    if (exponent < 0) *out++ = '-';
    char digits[12];
    int n = 0;
    do {
        digits[n++] = static_cast<char>('0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude != 0);
    while (n > 0) *out++ = digits[--n];
    return out;
}

// Answers for a text that is not a number: the special values order above
// (not-a-number, plus infinity) or below (minus infinity) every number.
int32_t compareSpecial(const char* text, bool isA) {
    const std::string_view word(text);
    if (word == "NOT_A_NUMBER" || word == "PLUS_INFINITY") return isA ? 3 : 2;
    if (word == "MINUS_INFINITY") return isA ? 2 : 3;
    return 4;
}

// 3 when the magnitude of a is larger, 2 when smaller, 0 when equal: both
// nonzero, same convention (first digit carries the exponent).
int32_t compareMagnitudes(const KivDecimalReal& a, const KivDecimalReal& b) {
    if (a.exponent != b.exponent) return a.exponent > b.exponent ? 3 : 2;
    const char* p = a.firstDigit;
    const char* q = b.firstDigit;
    for (;;) {
        while (p <= a.lastDigit && isMark(*p)) ++p;
        while (q <= b.lastDigit && isMark(*q)) ++q;
        const bool aEnded = p > a.lastDigit;
        const bool bEnded = q > b.lastDigit;
        if (aEnded || bEnded) return aEnded == bEnded ? 0 : (aEnded ? 2 : 3);
        if (*p != *q) return *p > *q ? 3 : 2;
        ++p;
        ++q;
    }
}

}  // namespace

int32_t kivParseDecimalReal(const char* text, KivDecimalReal* record) {
    const bool integerMantissa = (record->flags & KIV_DECIMAL_INTEGER_MANTISSA) != 0;
    const char* p = skipBlanks(text);
    if (*p == '\0') return kBlank;
    if (*p == '+' || *p == '-') {
        if (*p == '-') record->sign = 1;
        p = skipBlanks(p + 1);
    }

    bool anyDigit = false;
    const char* mark = nullptr;
    for (;; ++p) {
        const char c = *p;
        if (isDigit(c)) {
            anyDigit = true;
            if (record->firstDigit) {
                ++record->lastDigit;
            } else if (c != '0') {
                record->firstDigit = record->lastDigit = p;
            } else if (mark) {
                --record->exponent;
            }
        } else if (isMark(c) && !mark) {
            mark = p;
            if (!integerMantissa)
                record->exponent =
                    record->firstDigit ? offset(record->firstDigit, record->lastDigit) : -1;
            if (record->firstDigit) ++record->lastDigit;
        } else {
            break;  // a second mark, anything else, or the end
        }
    }
    if (!mark)
        record->exponent = (!integerMantissa && record->firstDigit)
                               ? offset(record->firstDigit, record->lastDigit)
                               : 0;
    else if (integerMantissa)
        record->exponent = record->firstDigit ? offset(record->lastDigit, mark) : 0;

    // Trailing zeros and marks leave the run; the integer mantissa's
    // exponent takes over the zeros. Design decision: ',' is stepped over
    // like '.', so that 10,0 and 10.0 (and 10, and 10) give the same run.
    if (record->firstDigit) {
        while (record->lastDigit > record->firstDigit &&
               (*record->lastDigit == '0' || isMark(*record->lastDigit))) {
            if (integerMantissa && *record->lastDigit == '0') ++record->exponent;
            --record->lastDigit;
        }
    }

    p = skipBlanks(p);
    if (*p == 'E' || *p == 'e') {
        record->flags |= KIV_DECIMAL_HAS_EXPONENT;
        ++p;
        int64_t exponent = 0;
        const int32_t read = readExponent(&p, &exponent);
        if (read != kParsed) return read;
        // Design decision: a sum that leaves the 32-bit range is refused like
        // an exponent that does not fit.
        const int64_t sum = record->exponent + exponent;
        if (sum > kInt32Max || sum < kInt32Min) return kExponentTooBig;
        record->exponent = static_cast<int32_t>(sum);
    }
    p = skipBlanks(p);
    if (*p != '\0') return kNotANumber;

    if (!record->firstDigit) {
        record->flags |= record->sign ? KIV_DECIMAL_NEGATIVE_ZERO : KIV_DECIMAL_POSITIVE_ZERO;
        if (!anyDigit) return (record->flags & KIV_DECIMAL_HAS_EXPONENT) ? kMarkerOnly : kNotANumber;
    }
    return kParsed;
}

void kivDecimalRealText(const KivDecimalReal* record, char* buffer) {
    char* out = buffer;
    if (record->sign) *out++ = '-';
    if (!record->firstDigit) {
        *out++ = '0';
    } else if (record->flags & KIV_DECIMAL_POSITIONAL) {
        // Design decision: with the integer-mantissa convention the
        // positional text is the same number written out: the exponent is
        // first moved onto the first digit.
        int64_t exponent = record->exponent;
        if (record->flags & KIV_DECIMAL_INTEGER_MANTISSA) exponent += runLength(record) - 1;
        out = writePositional(record, exponent, out);
    } else {
        out = writeExponential(record, out);
    }
    *out = '\0';
}

int32_t kivCompareDecimalReals(KivGlobal*, const char* a, const char* b) {
    if (a == b) return 0;
    if (!a || !b) return 4;
    if (std::strcmp(a, b) == 0) return 0;

    KivDecimalReal ra{};
    KivDecimalReal rb{};
    int32_t parsed = kivParseDecimalReal(a, &ra);
    if (parsed == kNotANumber) return compareSpecial(a, true);
    if (parsed != kParsed) return 4;
    parsed = kivParseDecimalReal(b, &rb);
    if (parsed == kNotANumber) return compareSpecial(b, false);
    if (parsed != kParsed) return 4;

    if (ra.sign != rb.sign) return ra.sign ? 2 : 3;
    const bool negative = ra.sign != 0;
    const bool aZero = !ra.firstDigit;
    const bool bZero = !rb.firstDigit;
    if (aZero && bZero) return 0;
    if (aZero) return negative ? 3 : 2;
    if (bZero) return negative ? 2 : 3;
    const int32_t order = compareMagnitudes(ra, rb);
    if (order == 0 || !negative) return order;
    return order == 3 ? 2 : 3;
}
