// Services that hand back an allocated text: the to-text forms of the
// printer (their memory comes from the world's temporary chunks) and the
// time-text formatters (theirs from the allocation hook).
#include <cstring>

#include "sweep.h"

namespace fenk::test {
namespace {

constexpr uint8_t kOctets[] = {0xDE, 0xAD, 0xBE, 0xEF};
constexpr KivTimeStruct kUtcTime{24, 2, 29, 23, 59, 58, 0, 0, 1};
constexpr KivTimeStruct kTime{2024, 2, 29, 23, 59, 58, 7, 0, 1};

// Checks a to-text result and gives it back with slot 148.
Outcome printed(KivGlobal* w, char* text, const char* expected) {
    if (!text) return failed(0);
    const bool same = std::strcmp(text, expected) == 0;
    kivFreeText(w, text);
    return same ? done() : failed(kWrongResult);
}

// Checks a formatter's answer and text and gives the text back through the
// table, as its caller must.
Outcome formatted(KivGlobal* w, int32_t code, char* text, const char* expected) {
    if (code != 0) return failed(code);
    const bool same = text && std::strcmp(text, expected) == 0;
    kivReleaseThroughTable(w, text);
    return same ? done() : failed(kWrongResult);
}

Outcome seconds(KivGlobal* w, int32_t code, char* text, const char* expected) {
    if (code != 0) return failed(code);
    const bool same = text && std::strcmp(text, expected) == 0;
    kivRelease(w, text);
    return same ? done() : failed(kWrongResult);
}

constexpr WorldKind P = WorldKind::plain;

#define TO_TEXT(name, call, text) \
    {"to-text", name, P, Fails::raises, 8, [](KivGlobal* w) { return printed(w, call, text); }}

const ServiceGroup group({
    TO_TEXT("bits (134)", kivBitsToText(w, "<", kOctets, 9, ">"), "<11011110 1>"),
    TO_TEXT("bit string (135)", kivBitStringToText(w, kOctets, 4), "'1101'B"),
    TO_TEXT("quoted characters (136)", kivQuoteChars(w, "ab", 2), "\"ab\""),
    TO_TEXT("decimal REAL (137)", kivDecimalRealToText(w, "2.5"), "25E-1"),
    TO_TEXT("GeneralizedTime (138)", kivGeneralizedTimeToText(w, &kTime), "\"20240229235958.007Z\""),
    TO_TEXT("hex (139)", kivHexToText(w, "", kOctets, 4, ""), "DEADBEEF"),
    TO_TEXT("quoted text (140)", kivQuoteCString(w, "ab"), "\"ab\""),
    TO_TEXT("octet string (141)", kivOctetStringToText(w, kOctets, 2), "'DEAD'H"),
    TO_TEXT("bits in an integer (142)", kivBitsInIntegerToText(w, kOctets, 1, 3), "'110'B"),
    TO_TEXT("binary REAL (143)", kivBinaryRealToText(w, 0.5), "{ mantissa 1, base 2, exponent -1 }"),
    TO_TEXT("UTCTime (144)", kivUTCTimeToText(w, &kUtcTime), "\"240229235958Z\""),
    TO_TEXT("wide characters (145)", kivWideCharStringToText(w, "a\x01", 2, 1), "{\"a\", {0, 0, 0, 1}}"),
    TO_TEXT("int64 (146)", kivInt64ToText(w, -12), "-12"),
    TO_TEXT("uint64 (147)", kivUInt64ToText(w, 12), "12"),

    {"time texts", "XML Schema duration (195)", P, Fails::answers, 12,
     [](KivGlobal* w) {
         char* out = nullptr;
         int32_t code = kivDurationToText(w, 0, 1, 2, 3, 4, 5, 6, "25", 2, &out);
         return formatted(w, code, out, "P1Y2M3DT4H5M6.25S");
     }},
    {"time texts", "XML Schema dateTime (197)", P, Fails::answers, 12,
     [](KivGlobal* w) {
         char* out = nullptr;
         int32_t code = kivDateTimeToText(w, 2009, 1, 2, 3, 4, 5, "5", 1, -90, &out);
         return formatted(w, code, out, "2009-01-02T03:04:05.5-01:30");
     }},
    {"time texts", "XML Schema gMonth (211)", P, Fails::answers, 12,
     [](KivGlobal* w) {
         char* out = nullptr;
         int32_t code = kivMonthToText(w, 7, KIV_ZONE_UTC, &out);
         return formatted(w, code, out, "--07Z");
     }},
    {"time texts", "ISO 8601 normal form (322)", P, Fails::answers, 12,
     [](KivGlobal* w) {
         char* out = nullptr;
         int32_t code = kivNormalizeTimeText(w, "R5/2009-01-01/P1D", &out);
         return formatted(w, code, out, "R5/2009-01-01/P1D");
     }},
    {"time texts", "seconds to GeneralizedTime (283)", P, Fails::answers, 8,
     [](KivGlobal* w) {
         char* out = nullptr;
         int32_t code = kivSecondsToGeneralizedTimeText(w, 86407, 0, &out);
         return seconds(w, code, out, "19700102000007Z");
     }},
    {"time texts", "seconds to UTCTime (285)", P, Fails::answers, 8,
     [](KivGlobal* w) {
         char* out = nullptr;
         int32_t code = kivSecondsToUtcTimeText(w, 86407, 90, &out);
         return seconds(w, code, out, "700102013007+0130");
     }},
});

}  // namespace
}  // namespace fenk::test
