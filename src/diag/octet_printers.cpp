// Octet strings given as hexadecimal value notation ('0A0B'H): printed as
// dotted decimals (slot 69) or as a quoted character string (slot 70).
#include <cstring>

#include "diag/diag_slots.h"
#include "kivapit.h"

namespace {

// Upper-case digits only: anything above '9' is taken as a letter.
int digit(char c) { return c <= '9' ? c - '0' : c - '7'; }

int octetAt(const char* digits, int32_t i) { return digit(digits[2 * i]) * 16 + digit(digits[2 * i + 1]); }

// The text after its opening character, less the closing two.
int32_t bodyLength(const char* text) { return static_cast<int32_t>(std::strlen(text)) - 1; }

}  // namespace

int32_t kivPrintDottedOctets(KivGlobal* world, const char* text) {
    if (!world || !text) return 0;
    int32_t l = bodyLength(text);
    int32_t count = l > 2 ? (l - 1) / 2 : 0;  // (l - 2) / 2 rounded up
    int32_t result = 0;
    for (int32_t i = 0; i < count; ++i)
        result = kivCompanionPrint(world, "%s%d", i == 0 ? "" : ".", octetAt(text + 1, i));
    return result;
}

int32_t kivPrintQuotedOctets(KivGlobal* world, const char* text) {
    if (!world || !text) return 0;
    int32_t l = bodyLength(text);
    kivCompanionPrint(world, "\"");
    int32_t count = l > 2 ? (l - 3) / 2 + 1 : 0;
    for (int32_t i = 0; i < count; ++i) {
        int octet = octetAt(text + 1, i) & 0xFF;
        if (kivCompanionCharClass[octet] & KIV_CLASS_PRINTABLE)
            kivCompanionPrint(world, "%c", octet);
        else
            kivCompanionPrint(world, "?");
    }
    return kivCompanionPrint(world, "\"");
}
