// Checking one UTCTime or GeneralizedTime text (slot 234). Unlike the
// converters, which answer 12, the check raises and says which field is out
// of range. Under DER and CER it also demands the canonical form.
#include "diag/diag_slots.h"
#include "time/time_slots.h"
#include "values/time_fields.h"

namespace fenk {
namespace {

// "0013S: Time value must be in universal coordinated time format and must end with 'Z'"
constexpr int32_t kNotCanonical = 9;
// "0012S: Out-of-range value in time type"
constexpr int32_t kMalformed = 73;
// "0012S: Out-of-range value in time type. Month = " and, one by one after
// it, Day, Hour, Minute and Second.
constexpr int32_t kMonthOutOfRange = 74;
constexpr int32_t kDayOutOfRange = 75;
constexpr int32_t kHourOutOfRange = 76;
constexpr int32_t kMinuteOutOfRange = 77;
constexpr int32_t kSecondOutOfRange = 78;

// levelMask bit that lets a lowercase 'z' stand for 'Z' in canonical form.
constexpr uint32_t kLowercaseZone = 0x8000;

struct CheckState {
    KivGlobal* world;
    bool canonical;
    bool lowercaseZone;
};

[[noreturn]] void fault(const CheckState& s, int32_t index, uint32_t value = 0) {
    kivRaise(s.world, index, value);
}

void checkRange(const CheckState& s, uint32_t value, uint32_t low, uint32_t high, int32_t index) {
    if (value < low || value > high) fault(s, index, value);
}

// Required fields, the seconds (canonical form needs them) and the ranges,
// in that order. Answers the position after the seconds.
const char* checkDateAndTime(const CheckState& s, const char* text, int yearDigits) {
    ClassicTime t;
    if (!readDateAndMinute(text, yearDigits, t)) fault(s, kMalformed);
    if (!readDigits(text, 2, t.second)) {
        if (s.canonical) fault(s, kNotCanonical);
        t.second = 0;
    }
    checkRange(s, t.month, 1, 12, kMonthOutOfRange);
    checkRange(s, t.day, 1, 31, kDayOutOfRange);
    checkRange(s, t.hour, 0, 23, kHourOutOfRange);
    checkRange(s, t.minute, 0, 59, kMinuteOutOfRange);
    checkRange(s, t.second, 0, 59, kSecondOutOfRange);
    return text;
}

// The zone at at: answers whether it is UTC. Anything malformed is
// message 73; the end of the text is local time where that is allowed.
bool checkZone(const CheckState& s, const char* at, bool localAllowed, bool offsetRanges) {
    int32_t zone = 0;
    switch (*at) {
        case 'Z':
        case 'z':
            // The end check comes first: 'z' followed by more text is
            // malformed whatever the rules.
            if (at[1] != '\0') fault(s, kMalformed);
            if (*at == 'z' && s.canonical && !s.lowercaseZone) fault(s, kNotCanonical);
            return true;
        case '+':
        case '-':
            if (!readOffset(at, offsetRanges, zone)) fault(s, kMalformed);
            return false;
        case '\0':
            if (localAllowed) return false;
            [[fallthrough]];
        default:
            fault(s, kMalformed);
    }
}

void checkGeneralizedTime(const CheckState& s, const char* text) {
    const char* at = checkDateAndTime(s, text, 4);
    if (*at == ',' && s.canonical) fault(s, kNotCanonical);
    if (*at == '.' || *at == ',') {
        ++at;
        const FractionDigits f = readFractionDigits(at);
        // A lone sign passes outside canonical form.
        if (s.canonical && (f.significant == 0 || f.last == '0')) fault(s, kNotCanonical);
    }
    const bool utc = checkZone(s, at, true, true);
    if (s.canonical && !utc) fault(s, kNotCanonical);
}

void checkUtcTime(const CheckState& s, const char* text) {
    const char* at = checkDateAndTime(s, text, 2);
    if (s.canonical && *at != 'Z' && !s.lowercaseZone) fault(s, kNotCanonical);
    const bool utc = checkZone(s, at, false, false);
    if (s.canonical && !utc) fault(s, kNotCanonical);
}

}  // namespace
}  // namespace fenk

// With no world there is nowhere to raise; nothing is checked.
void kivCheckGeneralizedOrUTCTime(KivGlobal* world, const char* text, uint16_t kind) {
    if (!world) return;
    const KivPrivate* state = world->privateState;
    const fenk::CheckState s{world, fenk::canonicalRules(world->encodingRules),
                             state && (state->levelMask & fenk::kLowercaseZone) != 0};
    if (!text) fenk::fault(s, fenk::kMalformed);
    if (kind != 0)
        fenk::checkUtcTime(s, text);
    else
        fenk::checkGeneralizedTime(s, text);
}
