// Slots 325 and 326: ordering and equality of TIME values. Neither takes a
// world, allocates or raises.
#include "time/time_slots.h"
#include "time/time_value_order.h"

namespace fenk {
namespace {

// The year class in the low bits of the date flags is for callers only: two
// dates of the same components compare whatever class their years fall in.
constexpr uint8_t kDateComponentBits = 0xF8;
constexpr uint8_t kCentury = 0x80;
constexpr uint8_t kHours = 0x80;
constexpr uint8_t kZone = 0x04;
constexpr uint8_t kZoneNegative = 0x80;
constexpr uint8_t kWeeks = 0x20;

template <class T>
int32_t order(T a, T b) {
    return a < b ? -1 : (a > b ? 1 : 0);
}

bool sameDateComponents(const KivDatePart& a, const KivDatePart& b) {
    return (a.flags & kDateComponentBits) == (b.flags & kDateComponentBits);
}

// Dates of the same components.
int32_t compareDates(const KivDatePart& a, const KivDatePart& b) {
    if ((a.flags & kDateComponentBits) == 0) return 0;
    if (a.flags & kCentury) return order(a.year, b.year);
    if (int32_t r = order(a.year, b.year)) return r;
    if (int32_t r = order(a.week, b.week)) return r;
    if (int32_t r = order(a.month, b.month)) return r;
    return order(a.day, b.day);
}

// Equal flags and fraction digits, and with a time difference the same
// difference, whether or not its minutes were written; "+00:00" and
// "-00:00" are the same difference.
bool timesComparable(const KivTimeOfDayPart& a, const KivTimeOfDayPart& b) {
    if (a.flags != b.flags || a.fractionDigits != b.fractionDigits) return false;
    if (!(a.flags & kZone)) return true;
    if (a.zoneHours != b.zoneHours || a.zoneMinutes != b.zoneMinutes) return false;
    bool zeroZone = a.zoneHours == 0 && a.zoneMinutes == 0;
    return zeroZone || (a.zoneFlags & kZoneNegative) == (b.zoneFlags & kZoneNegative);
}

// Times of day that are comparable.
int32_t compareTimes(const KivTimeOfDayPart& a, const KivTimeOfDayPart& b) {
    if (!(a.flags & kHours)) return 0;
    if (int32_t r = order(a.hours, b.hours)) return r;
    if (int32_t r = order(a.minutes, b.minutes)) return r;
    if (int32_t r = order(a.seconds, b.seconds)) return r;
    return order(a.fraction, b.fraction);
}

int32_t compareDurations(const KivDurationPart& a, const KivDurationPart& b) {
    if (a.last != b.last || a.fractionDigits != b.fractionDigits) return -2;
    // Weeks stand alone in a duration; either value having them decides.
    if ((a.flags | b.flags) & kWeeks) {
        if (int32_t r = order(a.weeks, b.weeks)) return r;
    } else {
        // Component by component, no carrying: P1Y2M is longer than P14M.
        const uint32_t KivDurationPart::*const fields[] = {
            &KivDurationPart::years, &KivDurationPart::months,  &KivDurationPart::days,
            &KivDurationPart::hours, &KivDurationPart::minutes, &KivDurationPart::seconds};
        for (auto field : fields)
            if (int32_t r = order(a.*field, b.*field)) return r;
    }
    return order(a.fraction, b.fraction);
}

bool sameDuration(const KivDurationPart& a, const KivDurationPart& b) {
    return a.last == b.last && a.fractionDigits == b.fractionDigits && a.years == b.years &&
           a.weeks == b.weeks && a.months == b.months && a.days == b.days &&
           a.hours == b.hours && a.minutes == b.minutes && a.seconds == b.seconds &&
           a.fraction == b.fraction;
}

bool sameTimeOfDay(const KivTimeOfDayPart& a, const KivTimeOfDayPart& b) {
    return timesComparable(a, b) && compareTimes(a, b) == 0;
}

bool sameDate(const KivDatePart& a, const KivDatePart& b) {
    return sameDateComponents(a, b) && compareDates(a, b) == 0;
}

bool samePoint(const KivTimePoint& a, const KivTimePoint& b) {
    return sameDate(a.date, b.date) && sameTimeOfDay(a.timeOfDay, b.timeOfDay);
}

// An end point written without a time difference takes that of its own
// value's start point, so that "10:00+01:00/12:00" and
// "10:00+01:00/12:00+01:00" are the same interval.
KivTimeOfDayPart withStartZone(const KivTimeOfDayPart& end, const KivTimeOfDayPart& start) {
    KivTimeOfDayPart t = end;
    t.flags |= kZone;
    t.zoneFlags = start.zoneFlags;
    t.zoneHours = start.zoneHours;
    t.zoneMinutes = start.zoneMinutes;
    return t;
}

bool sameEndPoint(const KivTimeValue& a, const KivTimeValue& b) {
    const KivTimePoint& endA = a.second.point;
    const KivTimePoint& endB = b.second.point;
    bool zoneA = endA.timeOfDay.flags & kZone;
    bool zoneB = endB.timeOfDay.flags & kZone;
    if (!(a.kind & 0x40) || !(a.first.point.timeOfDay.flags & kZone) || zoneA == zoneB)
        return samePoint(endA, endB);
    if (!sameDate(endA.date, endB.date)) return false;
    if (zoneA) return sameTimeOfDay(endA.timeOfDay, withStartZone(endB.timeOfDay, b.first.point.timeOfDay));
    return sameTimeOfDay(withStartZone(endA.timeOfDay, a.first.point.timeOfDay), endB.timeOfDay);
}

}  // namespace

int32_t compareTimePoints(const KivTimePoint& a, const KivTimePoint& b) {
    if (!sameDateComponents(a.date, b.date) || !timesComparable(a.timeOfDay, b.timeOfDay))
        return -2;
    if (int32_t r = compareDates(a.date, b.date)) return r;
    return compareTimes(a.timeOfDay, b.timeOfDay);
}

}  // namespace fenk

extern "C" int32_t kivCompareTimeValues(const KivTimeValue* a, const KivTimeValue* b) {
    if (a->kind != b->kind) return -2;
    if (a->kind == 0x40) return fenk::compareTimePoints(a->first.point, b->first.point);
    if (a->kind == 0x10) return fenk::compareDurations(a->first.duration, b->first.duration);
    return -2;
}

extern "C" int32_t kivTimeValuesDiffer(const KivTimeValue* a, const KivTimeValue* b) {
    using namespace fenk;
    if (a->kind != b->kind) return 1;
    // Only the number of recurrences counts, not how many digits wrote it.
    if ((a->kind & 0x80) && a->recurrences != b->recurrences) return 1;
    if (a->kind & 0x40) {
        if (!samePoint(a->first.point, b->first.point)) return 1;
    } else if (a->kind & 0x10) {
        if (!sameDuration(a->first.duration, b->first.duration)) return 1;
    }
    if (a->kind & 0x20) {
        if (!sameEndPoint(*a, *b)) return 1;
    } else if (a->kind & 0x08) {
        if (!sameDuration(a->second.duration, b->second.duration)) return 1;
    }
    return 0;
}
