// Character strings in value notation: runs of printable characters in
// double quotes, every other character as a {column, row} tuple (8-bit) or a
// {group, plane, row, cell} quadruple (multi-octet), and braces around the
// whole when there is more than one element: {"ab", {0, 10}}.
#include <bit>
#include <cstring>

#include "print/print_sink.h"
#include "print/print_slots.h"

namespace {

// Printable as the C locale tests it: blank to tilde. A multi-octet
// character must also have group, plane and row 0.
constexpr bool printable(uint32_t c) { return c >= 0x20 && c <= 0x7E; }

// 8-bit characters: one octet each.
struct OctetChars {
    const uint8_t* at;
    const uint8_t* end;

    // The opening quote of a run adds nothing to the column count here.
    static constexpr int kQuoteColumns = 0;

    bool next(uint32_t& c) {
        if (at == end) return false;
        c = *at++;
        return true;
    }

    static int64_t elementWidth(uint32_t c) { return 6 + (c >> 4 >= 10) + ((c & 15) >= 10); }

    template <class Sink>
    static void writeElement(Sink& out, uint32_t c) {
        out.put("{%d, %d}", static_cast<int>(c >> 4), static_cast<int>(c & 15));
    }
};

// Multi-octet characters: UTF-8 (width 1), 16-bit units (width 2) or 32-bit
// units (any other width) in the machine's byte order.
struct WideChars {
    const uint8_t* at;
    const uint8_t* end;
    uint16_t width;

    static constexpr int kQuoteColumns = 1;

    bool next(uint32_t& c) {
        if (at >= end) return false;
        if (width == 1) {
            c = nextUtf8();
        } else if (width == 2) {
            uint16_t unit;
            std::memcpy(&unit, at, 2);
            c = unit;
            at += 2;
        } else {
            // A unit narrower than four octets (width 3) may end the data
            // early: octets past the end read as zero.
            size_t left = static_cast<size_t>(end - at);
            c = 0;
            std::memcpy(&c, at, left < 4 ? left : 4);
            at = left < width ? end : at + width;
        }
        return true;
    }

    // The lead octet's leading ones give the length; continuation octets are
    // not checked, and a continuation octet or 0xFF where a character should
    // start is the character 0.
    uint32_t nextUtf8() {
        uint8_t b = *at++;
        int k = std::countl_one(b);
        if (k == 0) return b;
        if (k == 1 || k == 8) return 0;
        uint32_t c = b & (0xFFu >> k);
        for (int i = 1; i < k && at < end; ++i) c = (c << 6) | (*at++ & 0x3Fu);
        return c;
    }

    static int64_t elementWidth(uint32_t c) {
        int64_t width = 12;
        for (int shift = 24; shift >= 0; shift -= 8) {
            uint32_t octet = (c >> shift) & 0xFF;
            width += (octet > 9) + (octet > 99);
        }
        return width;
    }

    template <class Sink>
    static void writeElement(Sink& out, uint32_t c) {
        out.put("{%d, %d, %d, %d}", static_cast<int>(c >> 24), static_cast<int>((c >> 16) & 0xFF),
                static_cast<int>((c >> 8) & 0xFF), static_cast<int>(c & 0xFF));
    }
};

// Braces are needed once a printable and a non-printable character, or two
// non-printable ones, have been seen.
template <class Chars>
bool needsBraces(Chars chars) {
    uint32_t c;
    bool seenPrintable = false;
    int nonPrintable = 0;
    while (chars.next(c)) {
        if (printable(c))
            seenPrintable = true;
        else
            ++nonPrintable;
        if ((seenPrintable && nonPrintable != 0) || nonPrintable >= 2) return true;
    }
    return false;
}

// limit 0 means none. The column counts what was written, to stop before the
// limit would be passed.
template <class Chars, class Sink>
void writeCharString(Sink& out, Chars chars, int32_t limit) {
    if (chars.at >= chars.end) {
        out.put("\"\"");
        return;
    }
    bool braces = needsBraces(chars);
    if (braces) out.put("{");

    bool runOpen = false;
    bool anyElement = false;
    bool stopped = false;
    int64_t column = 0;
    auto passes = [&](int64_t width) { return limit != 0 && column + width > limit; };
    uint32_t c;
    while (chars.next(c)) {
        if (printable(c)) {
            if (!runOpen) {
                if (anyElement) {
                    out.put(", ");
                    column += 2;
                }
                // Room for the quote and one character.
                if (passes(2)) {
                    stopped = true;
                    break;
                }
                out.put("\"");
                column += Chars::kQuoteColumns;
                runOpen = true;
                anyElement = true;
            }
            if (passes(1)) {
                stopped = true;
                break;
            }
            out.put("%c", static_cast<int>(c));
            column += 1;
        } else {
            if (runOpen) {
                out.put("\"");
                column += 1;
                runOpen = false;
            }
            if (anyElement) {
                out.put(", ");
                column += 2;
            }
            int64_t width = Chars::elementWidth(c);
            if (passes(width)) {
                stopped = true;
                break;
            }
            Chars::writeElement(out, c);
            column += width;
            anyElement = true;
        }
    }
    if (stopped) {
        if (runOpen) out.put(" ");
        out.put("...");
    }
    if (runOpen) out.put("\"");
    if (braces) out.put("}");
}

WideChars wideChars(const void* data, int32_t length, uint16_t width) {
    const auto* at = static_cast<const uint8_t*>(data);
    int64_t bytes = int64_t{length} * width;
    return WideChars{at, bytes > 0 ? at + bytes : at, width};
}

}  // namespace

void kivPrintCharString(KivGlobal* world, const char* chars, uint32_t count) {
    const auto* at = reinterpret_cast<const uint8_t*>(chars);
    fenk::PrintSink out{world};
    writeCharString(out, OctetChars{at, at + count}, fenk::printLimit32(world));
}

// A null text prints as an empty one.
void kivPrintCString(KivGlobal* world, const char* text) {
    kivPrintCharString(world, text, text ? static_cast<uint32_t>(std::strlen(text)) : 0);
}

void kivPrintWideCharString(KivGlobal* world, const void* data, int32_t length, uint16_t width) {
    fenk::PrintSink out{world};
    writeCharString(out, wideChars(data, length, width), fenk::printLimit32(world));
}

// Sized by a first pass, so that the text holds any value whole.
char* kivWideCharStringToText(KivGlobal* world, const void* data, int32_t length,
                              uint16_t width) {
    WideChars chars = wideChars(data, length, width);
    fenk::CountSink count{0};
    writeCharString(count, chars, 0);
    fenk::TextSink out = fenk::newText(world, count.length + 1);
    char* text = out.at;
    if (text) writeCharString(out, chars, 0);
    return text;
}
