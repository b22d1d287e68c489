// Shared pieces of the ISO 8601 time-text services and the XML Schema
// calendar forms: digit recognition, digit runs, a text sink that counts or
// writes, and the parse/format of each text form.
#ifndef FENK_TIME_TIME_TEXT_H
#define FENK_TIME_TIME_TEXT_H

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "api/table_memory.h"
#include "kivapit.h"
#include "time/time_slots.h"

namespace fenk {

// Return code of every failure of these services ("Out of range value in
// time type").
constexpr int32_t kTimeTextFailure = 12;

inline bool isDigit(char c) {
    return (kivCompanionCharClass[static_cast<unsigned char>(c)] & KIV_CLASS_DIGIT) != 0;
}

// Reads the run of digits at p (possibly empty) into *value and its length
// into *length; null when the value does not fit in 32 bits.
const char* scanDigitRun(const char* p, uint32_t* value, uint32_t* length);

// Number of decimal digits of v; 0 has one.
inline uint32_t decimalDigits(uint32_t v) {
    uint32_t n = 1;
    while (v >= 10) {
        v /= 10;
        ++n;
    }
    return n;
}

// Exactly n digits at p into *value: a pointer after them, or null unless
// all are digits and the value fits in 32 bits.
inline const char* scanFixedDigits(const char* p, uint32_t n, uint32_t* value) {
    uint32_t v = 0;
    for (uint32_t i = 0; i < n; ++i, ++p) {
        if (!isDigit(*p)) return nullptr;
        const uint32_t d = static_cast<uint32_t>(*p - '0');
        if (v > (UINT32_MAX - d) / 10) return nullptr;
        v = v * 10 + d;
    }
    *value = v;
    return p;
}

// The lowest n digits of the value at p, zero-padded; p + n.
inline char* putDigits(char* p, uint32_t n, uint32_t value) {
    for (uint32_t i = n; i > 0; --i) {
        p[i - 1] = static_cast<char>('0' + value % 10);
        value /= 10;
    }
    return p + n;
}

// Digits that the value needs at the least width given; 0 needs none.
inline uint32_t paddedDigits(uint32_t width, uint32_t value) {
    const uint32_t n = value == 0 ? 0 : decimalDigits(value);
    return n > width ? n : width;
}

// Collects text into base up to capacity and counts all of it, so that a
// writer can measure a text while it writes what fits.
struct TextSink {
    char* base;
    size_t capacity;
    size_t length;

    void put(char c) {
        if (length < capacity) base[length] = c;
        ++length;
    }
    void put(const char* text, size_t n) {
        for (size_t i = 0; i < n; ++i) put(text[i]);
    }
    void put(const char* text) {
        while (*text) put(*text++);
    }
    // The value zero-padded to at least width digits; 0 with width 0 is empty.
    void digitsMin(uint32_t width, uint32_t value) { digitsFixed(paddedDigits(width, value), value); }
    // The lowest width digits of the value, zero-padded. A run that does not
    // fit whole is not written: the text is then written again elsewhere.
    void digitsFixed(uint32_t width, uint32_t value) {
        if (length < capacity && width <= capacity - length) putDigits(base + length, width, value);
        length += width;
    }
};

// Writes a text at *out, or into a buffer allocated through the table and
// stored at *out when *out is null. write(TextSink&) must write the same text
// each time it is called: a text too long for the local draft is written
// again into its buffer. 0, or 12 when the allocation yields null.
template <class Write>
int32_t emitText(KivGlobal* world, char** out, Write&& write) {
    if (*out) {
        TextSink sink{*out, SIZE_MAX, 0};
        write(sink);
        (*out)[sink.length] = '\0';
        return 0;
    }
    char draft[160];
    TextSink sink{draft, sizeof draft, 0};
    write(sink);
    char* text = static_cast<char*>(allocateThroughTable(world, sink.length + 1));
    if (!text) return kTimeTextFailure;
    if (sink.length <= sizeof draft) {
        std::memcpy(text, draft, sink.length);
    } else {
        TextSink again{text, SIZE_MAX, 0};
        write(again);
    }
    text[sink.length] = '\0';
    *out = text;
    return 0;
}

// Canonical rules (DER, CER, CXER) drop what the normal form may leave out.
inline bool canonicalRules(const KivGlobal* world) {
    return world->encodingRules == 3 || world->encodingRules == 7 ||
           world->encodingRules == 6;
}

// One time text of any form, as its parser leaves it: form 0 fills start,
// 1 duration, 2 start and end, 3 start and duration, 4 duration and end,
// 5 to 8 the same as 1 to 4 plus count.
struct TimeText {
    int32_t form;
    KivTimeFields start;
    KivTimeFields end;
    KivDurationFields duration;
    int32_t count;
};

// Classifies and parses text with the parser of its form. 0 or 12.
int32_t parseTimeText(KivGlobal* world, const char* text, TimeText* parsed);

// Formats parsed with the formatter of its form. 0 or 12.
int32_t formatTimeText(KivGlobal* world, TimeText* parsed, char** out);

// The duration's flags less every zero component above a present component
// of lower rank (the least significant one always stays): what canonical
// rules write.
uint32_t withoutZeroComponents(const KivDurationFields& duration);

// Zone of a point in minutes, counting zoneMinutes only when written.
inline uint32_t zoneTotalMinutes(const KivTimeFields& p) {
    return p.zoneHours * 60u + ((p.zoneFlags & KIV_TF_ZONE_MINUTES) ? p.zoneMinutes : 0u);
}

}  // namespace fenk

#endif
