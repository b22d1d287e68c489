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

}  // namespace fenk

const char* kivScanDigits(const char* text, uint32_t* value) {
    if (!text || !value) return nullptr;
    uint32_t length;
    return fenk::scanDigitRun(text, value, &length);
}

const char* kivScanFixedDigits(const char* text, uint32_t count, uint32_t* value) {
    if (!text || !value) return nullptr;
    return fenk::scanFixedDigits(text, count, value);
}

char* kivPutDigitsMin(char* destination, uint32_t minimumWidth, uint32_t value) {
    return fenk::putDigits(destination, fenk::paddedDigits(minimumWidth, value), value);
}

// A width of zero or less writes nothing and hands back the destination.
char* kivPutDigitsFixed(char* destination, int32_t width, uint32_t value) {
    if (width <= 0) return destination;
    return fenk::putDigits(destination, static_cast<uint32_t>(width), value);
}
