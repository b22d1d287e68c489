// GeneralizedTime and UTCTime texts into KivTimeStruct (slots 265 to 268),
// with the current rules.
#include "api/api_slots.h"
#include "values/time_fields.h"
#include "values/values_slots.h"

namespace fenk {
namespace {

// The fraction scaled to three digits, truncating.
uint16_t millisecondsOf(uint32_t value, uint32_t digits) {
    for (; digits < 3; ++digits) value *= 10;
    for (; digits > 3 && value != 0; --digits) value /= 10;
    return static_cast<uint16_t>(value);
}

void storeStruct(KivTimeStruct* out, const ClassicTime& time, uint16_t milliseconds) {
    out->year = static_cast<uint16_t>(time.year);
    out->month = static_cast<uint16_t>(time.month);
    out->day = static_cast<uint16_t>(time.day);
    out->hour = static_cast<uint16_t>(time.hour);
    out->minute = static_cast<uint16_t>(time.minute);
    out->second = static_cast<uint16_t>(time.second);
    out->milliseconds = milliseconds;
    out->isUtc = time.zone == kZoneUtc;
    out->zoneOffset = static_cast<int16_t>(out->isUtc ? 0 : time.zone);
}

using TextToStruct = int32_t(KivGlobal*, KivTimeStruct*, const char*);

// The structure comes from the allocation hook and goes back to it when
// the text is refused.
KivTimeStruct* newStruct(KivGlobal* world, const char* text, TextToStruct* fill) {
    if (!world) return nullptr;
    auto* value = static_cast<KivTimeStruct*>(kivAllocate(world, sizeof(KivTimeStruct)));
    if (value && fill(world, value, text) != kTimeOk) {
        kivRelease(world, value);
        return nullptr;
    }
    return value;
}

}  // namespace
}  // namespace fenk

int32_t kivGeneralizedTimeToStruct(KivGlobal* world, KivTimeStruct* out, const char* text) {
    if (!world || !out) return fenk::kTimeNullArgument;
    fenk::ClassicTime t;
    const int32_t code =
        fenk::parseGeneralizedTime(text, fenk::canonicalRules(world->encodingRules), t);
    if (code != fenk::kTimeOk) return code;
    fenk::storeStruct(out, t, fenk::millisecondsOf(t.fractionValue, t.fractionDigits));
    return fenk::kTimeOk;
}

int32_t kivUtcTimeToStruct(KivGlobal* world, KivTimeStruct* out, const char* text) {
    if (!world || !out) return fenk::kTimeNullArgument;
    fenk::ClassicTime t;
    const int32_t code = fenk::parseUtcTime(text, fenk::canonicalRules(world->encodingRules), t);
    if (code != fenk::kTimeOk) return code;
    fenk::storeStruct(out, t, 0);
    return fenk::kTimeOk;
}

KivTimeStruct* kivNewGeneralizedTimeStruct(KivGlobal* world, const char* text) {
    return fenk::newStruct(world, text, &kivGeneralizedTimeToStruct);
}

KivTimeStruct* kivNewUtcTimeStruct(KivGlobal* world, const char* text) {
    return fenk::newStruct(world, text, &kivUtcTimeToStruct);
}
