// Digit runs and digit writers of the time-text services.
#include "time/time_text.h"

namespace fenk {

const char* scanDigitRun(const char* p, uint32_t* value, uint32_t* length) {
    uint32_t v = 0;
    uint32_t n = 0;
    for (; isDigit(*p); ++p, ++n) {
        uint32_t d = static_cast<uint32_t>(*p - '0');
        if (v > (UINT32_MAX - d) / 10) return nullptr;
        v = v * 10 + d;
    }
    *value = v;
    *length = n;
    return p;
}

void TextSink::digitsMin(uint32_t width, uint32_t value) {
    uint32_t n = value == 0 ? 0 : decimalDigits(value);
    if (base) kivPutDigitsMin(base + length, width, value);
    length += n > width ? n : width;
}

void TextSink::digitsFixed(uint32_t width, uint32_t value) {
    if (base) kivPutDigitsFixed(base + length, static_cast<int32_t>(width), value);
    length += width;
}

}  // namespace fenk

const char* kivScanDigits(const char* text, uint32_t* value) {
    if (!text || !value) return nullptr;
    uint32_t length;
    return fenk::scanDigitRun(text, value, &length);
}

const char* kivScanFixedDigits(const char* text, uint32_t count, uint32_t* value) {
    if (!text || !value) return nullptr;
    uint32_t v = 0;
    for (uint32_t i = 0; i < count; ++i, ++text) {
        if (!fenk::isDigit(*text)) return nullptr;
        uint32_t d = static_cast<uint32_t>(*text - '0');
        if (v > (UINT32_MAX - d) / 10) return nullptr;
        v = v * 10 + d;
    }
    *value = v;
    return text;
}

char* kivPutDigitsMin(char* destination, uint32_t minimumWidth, uint32_t value) {
    uint32_t n = value == 0 ? 0 : fenk::decimalDigits(value);
    if (n < minimumWidth) n = minimumWidth;
    for (uint32_t i = n; i > 0; --i) {
        destination[i - 1] = static_cast<char>('0' + value % 10);
        value /= 10;
    }
    return destination + n;
}

// A width of zero or less writes nothing and hands back the destination.
char* kivPutDigitsFixed(char* destination, int32_t width, uint32_t value) {
    if (width <= 0) return destination;
    for (int32_t i = width; i > 0; --i) {
        destination[i - 1] = static_cast<char>('0' + value % 10);
        value /= 10;
    }
    return destination + width;
}
