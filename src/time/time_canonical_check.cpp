// Whether a time text is in the canonical form that the formatters write
// under canonical rules. Passes silently or raises: message 277 naming the
// rule that the text breaks, or message 73 when it is no time text at all.
// Only plain records live on this frame: a raise jumps over it.
#include <cstring>

#include "diag/diag_slots.h"
#include "time/time_text.h"

namespace fenk {
namespace {

constexpr int32_t kNotCanonical = 277;  // "0330E: Invalid canonical form of time value: "
constexpr int32_t kOutOfRange = 73;     // "0012S: Out-of-range value in time type"

// A time difference of whole hours must not spell out its ":00".
void checkZoneMinutes(KivGlobal* world, const KivTimeFields& point) {
    if ((point.flags & KIV_TF_ZONE) && (point.zoneFlags & KIV_TF_ZONE_MINUTES) &&
        point.zoneMinutes == 0)
        kivRaiseText(world, kNotCanonical,
                     "the minutes digits for all time difference components that are an "
                     "integral number of hours shall be removed");
}

void checkZeroComponents(KivGlobal* world, const KivDurationFields& duration) {
    if (withoutZeroComponents(duration) != duration.flags)
        kivRaiseText(world, kNotCanonical,
                     "all zero time components except the least significant time component "
                     "of the duration value should have been removed");
}

}  // namespace
}  // namespace fenk

// Without a world there is nothing to raise in: 12.
int32_t kivCheckTimeCanonicalForm(KivGlobal* world, const char* text) {
    if (!world) return fenk::kTimeTextFailure;
    if (text && std::strchr(text, ','))
        kivRaiseText(world, fenk::kNotCanonical, "full stops should be used as decimal signs");
    fenk::TimeText t{};
    if (fenk::parseTimeText(world, text, &t) != 0) kivRaise(world, fenk::kOutOfRange, 0);
    switch (t.form) {
        case kivTimeFormPoint: fenk::checkZoneMinutes(world, t.start); break;
        case kivTimeFormStartEnd:
        case kivTimeFormRecurringStartEnd:
            fenk::checkZoneMinutes(world, t.start);
            fenk::checkZoneMinutes(world, t.end);
            if ((t.start.flags & KIV_TF_ZONE) && (t.end.flags & KIV_TF_ZONE) &&
                t.start.zoneNegative == t.end.zoneNegative &&
                fenk::zoneTotalMinutes(t.start) == fenk::zoneTotalMinutes(t.end))
                kivRaiseText(world, fenk::kNotCanonical,
                             "the time difference component of the end point should be removed "
                             "if it is the same as the time difference component of start point");
            break;
        case kivTimeFormStartDuration:
        case kivTimeFormRecurringStartDuration:
            fenk::checkZoneMinutes(world, t.start);
            fenk::checkZeroComponents(world, t.duration);
            break;
        case kivTimeFormDurationEnd:
        case kivTimeFormRecurringDurationEnd:
            fenk::checkZoneMinutes(world, t.end);
            fenk::checkZeroComponents(world, t.duration);
            break;
        default: fenk::checkZeroComponents(world, t.duration); break;
    }
    return 0;
}
