// Decimal REAL texts printed in value notation as an integer mantissa and a
// decimal exponent: 1.5 prints 15E-1, 123.4500E3 prints 12345E1. The text is
// rewritten character by character, not parsed: whatever stands in the
// digit positions is written as it is.
#include <cstdio>
#include <cstring>
#include <string_view>

#include "print/print_sink.h"
#include "print/print_slots.h"
#include "print/real_class.h"

namespace {

// The mantissa is built in a work area with a budget of 79 characters; a
// longer one ends in "..." at the 79th. Printing then keeps at most 52
// characters, cutting a longer mantissa to 49 and "...".
constexpr size_t kBudget = 79;
constexpr size_t kPrintedMost = 52;
constexpr size_t kPrintedCut = 49;
// An exponent text of 8 or more characters is read from its first 4 only.
constexpr size_t kLongExponent = 8;
constexpr size_t kExponentRead = 4;

struct MantissaArea {
    char text[kBudget + 1];
    size_t length;
    bool spent;

    void append(std::string_view piece) {
        if (spent) return;
        if (length + piece.size() > kBudget) {
            // As many characters as leave room for "..." at the end.
            size_t room = kBudget - 3;
            if (length < room) std::memcpy(text + length, piece.data(), room - length);
            std::memcpy(text + room, "...", 3);
            length = kBudget;
            spent = true;
        } else {
            std::memcpy(text + length, piece.data(), piece.size());
            length += piece.size();
        }
        text[length] = '\0';
    }
};

}  // namespace

void kivPrintDecimalReal(KivGlobal* world, const char* text) {
    if (!text) {
        kivCompanionPrint(world, "NULL");
        return;
    }
    if (const char* word = fenk::specialRealWord(text)) {
        kivCompanionPrint(world, "%s", word);
        return;
    }

    std::string_view whole(text);
    const char* marker = std::strchr(text, 'E');
    if (!marker) marker = std::strchr(text, 'e');
    std::string_view mantissa = marker ? whole.substr(0, static_cast<size_t>(marker - text)) : whole;
    size_t point = mantissa.find('.');

    MantissaArea area{};
    // Integer digits; none at all when the point comes first (.5 prints
    // 5E-1), a single 0 for a run of zeros or nothing (0.5 prints 05E-1).
    if (point != 0) {
        std::string_view digits = mantissa.substr(0, point);
        if (!digits.empty() && digits.front() == '-') {
            area.append("-");
            digits.remove_prefix(1);
        }
        size_t first = digits.find_first_not_of('0');
        area.append(first == std::string_view::npos ? std::string_view("0") : digits.substr(first));
    }
    // Fraction digits without their trailing zeros, at least one kept; they
    // count in F whether the budget let them be written or not.
    size_t fractionDigits = 0;
    if (point != std::string_view::npos && point + 1 < mantissa.size()) {
        std::string_view fraction = mantissa.substr(point + 1);
        size_t last = fraction.find_last_not_of('0');
        fraction = fraction.substr(0, last == std::string_view::npos ? 1 : last + 1);
        fractionDigits = fraction.size();
        area.append(fraction);
    }

    int exponent = 0;
    bool exponentCut = false;
    if (marker) {
        const char* exponentText = marker + 1;
        char head[kExponentRead + 1] = {};
        if (std::strlen(exponentText) >= kLongExponent) {
            std::memcpy(head, exponentText, kExponentRead);
            exponentText = head;
            exponentCut = true;
        }
        if (std::sscanf(exponentText, "%d", &exponent) != 1) exponent = 0;
    }
    int64_t printed = exponentCut ? exponent : exponent - static_cast<int64_t>(fractionDigits);

    if (area.length > kPrintedMost) {
        std::memcpy(area.text + kPrintedCut, "...", 4);
        area.length = kPrintedCut + 3;
    }
    kivCompanionPrint(world, "%s", area.text);
    kivCompanionPrint(world, "E%lld", static_cast<long long>(printed));
    if (exponentCut) kivCompanionPrint(world, "...");
}
