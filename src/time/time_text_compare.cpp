// Whether two time texts denote the same value: compared field by field
// after parsing, with a zero and an absent duration component alike and an
// end point taking the start's time difference when it has none.
#include <cstring>

#include "time/time_text.h"

namespace fenk {
namespace {

bool sameFlag(uint16_t a, uint16_t b, uint16_t flag) { return (a & flag) == (b & flag); }

bool samePoint(const KivTimeFields& a, const KivTimeFields& b) {
    const uint16_t fa = a.flags;
    const uint16_t fb = b.flags;
    // The sign of a time difference of zero does not matter.
    const bool zoneZero = a.zoneHours == 0 && a.zoneMinutes == 0 && b.zoneHours == 0 &&
                          b.zoneMinutes == 0;
    if (!sameFlag(fa, fb, KIV_TF_ZONE)) return false;
    if (a.zoneNegative != b.zoneNegative && !zoneZero) return false;
    if (a.zoneHours != b.zoneHours || a.zoneMinutes != b.zoneMinutes) return false;
    if (!sameFlag(fa, fb, KIV_TF_CENTURY) || a.century != b.century) return false;
    if (!sameFlag(fa, fb, KIV_TF_YEAR)) return false;
    if ((fa & KIV_TF_YEAR) &&
        (a.year != b.year || !sameFlag(fa, fb, KIV_TF_MONTH) || a.month != b.month ||
         !sameFlag(fa, fb, KIV_TF_WEEK) || a.week != b.week || !sameFlag(fa, fb, KIV_TF_DAY) ||
         a.day != b.day))
        return false;
    if (!sameFlag(fa, fb, KIV_TF_HOUR)) return false;
    if ((fa & KIV_TF_HOUR) &&
        (a.hours != b.hours || !sameFlag(fa, fb, KIV_TF_MINUTE) || a.minutes != b.minutes ||
         !sameFlag(fa, fb, KIV_TF_SECOND) || a.seconds != b.seconds))
        return false;
    if (!sameFlag(fa, fb, KIV_TF_UTC) || !sameFlag(fa, fb, KIV_TF_FRACTION)) return false;
    return !(fa & KIV_TF_FRACTION) ||
           (a.fractionDigits == b.fractionDigits && a.fraction == b.fraction);
}

bool sameDuration(const KivDurationFields& a, const KivDurationFields& b) {
    if (a.years != b.years || a.weeks != b.weeks || a.months != b.months || a.days != b.days ||
        a.hours != b.hours || a.minutes != b.minutes || a.seconds != b.seconds)
        return false;
    if ((a.flags & KIV_DF_FRACTION) != (b.flags & KIV_DF_FRACTION)) return false;
    return !(a.flags & KIV_DF_FRACTION) ||
           (a.fractionDigits == b.fractionDigits && a.fraction == b.fraction);
}

// An end without a time difference takes its start's.
void inheritZone(const KivTimeFields& start, KivTimeFields* end) {
    if (!(start.flags & KIV_TF_ZONE) || (end->flags & KIV_TF_ZONE)) return;
    end->flags |= KIV_TF_ZONE;
    end->zoneFlags = start.zoneFlags;
    end->zoneHours = start.zoneHours;
    end->zoneMinutes = start.zoneMinutes;
    end->zoneNegative = start.zoneNegative;
}

bool sameValue(TimeText* a, TimeText* b) {
    switch (a->form) {
        case kivTimeFormPoint: return samePoint(a->start, b->start);
        case kivTimeFormRecurringDuration:
        case kivTimeFormDuration: return sameDuration(a->duration, b->duration);
        case kivTimeFormRecurringStartEnd:
        case kivTimeFormStartEnd:
            if (!samePoint(a->start, b->start)) return false;
            inheritZone(a->start, &a->end);
            inheritZone(b->start, &b->end);
            return samePoint(a->end, b->end);
        case kivTimeFormRecurringStartDuration:
        case kivTimeFormStartDuration:
            return samePoint(a->start, b->start) && sameDuration(a->duration, b->duration);
        default: return sameDuration(a->duration, b->duration) && samePoint(a->end, b->end);
    }
}

}  // namespace
}  // namespace fenk

int32_t kivTimeTextsDiffer(KivGlobal* world, const char* a, const char* b) {
    if (!a || !b) return 1;
    if (std::strcmp(a, b) == 0) return 0;
    fenk::TimeText ta{};
    fenk::TimeText tb{};
    if (fenk::parseTimeText(world, a, &ta) != 0 || fenk::parseTimeText(world, b, &tb) != 0 ||
        ta.form != tb.form)
        return 1;
    if (ta.form >= kivTimeFormRecurringDuration && ta.count != tb.count) return 1;
    return fenk::sameValue(&ta, &tb) ? 0 : 1;
}
