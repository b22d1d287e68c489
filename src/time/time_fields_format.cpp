// Writing KivTimeFields and KivDurationFields back as ISO 8601 text, in the
// one normal form: full stops as decimal signs, whole-hour time differences
// without minutes and, under canonical rules, no zero duration components
// above the least significant one and no end-point time difference that
// repeats the start's. Records are validated before anything is allocated
// or written.
#include "time/time_text.h"

namespace fenk {
namespace {

bool pointValid(const KivTimeFields& f) {
    const uint16_t flags = f.flags;
    if ((flags & KIV_TF_CENTURY) && flags != KIV_TF_CENTURY) return false;
    if ((flags & KIV_TF_WEEK) && (f.week < 1 || f.week > 53)) return false;
    if ((flags & KIV_TF_MONTH) && (f.month < 1 || f.month > 12)) return false;
    if (flags & KIV_TF_DAY) {
        const uint16_t last = (flags & KIV_TF_MONTH) ? 31 : (flags & KIV_TF_WEEK) ? 7 : 366;
        if (f.day < 1 || f.day > last) return false;
    }
    const bool hours = flags & KIV_TF_HOUR;
    if (hours && f.hours > 24) return false;
    if ((flags & KIV_TF_MINUTE) && (!hours || f.minutes > 59)) return false;
    if ((flags & KIV_TF_SECOND) && (!hours || f.seconds > 60)) return false;
    if ((flags & KIV_TF_UTC) && (!hours || (flags & KIV_TF_ZONE))) return false;
    // A fraction is written with at least one digit, so 0 digits never fit.
    if ((flags & KIV_TF_FRACTION) && (!hours || f.fractionDigits < decimalDigits(f.fraction)))
        return false;
    if (flags & KIV_TF_ZONE) {
        const uint32_t written = (f.zoneFlags & KIV_TF_ZONE_MINUTES) ? f.zoneMinutes : 0;
        if (!hours || f.zoneHours + written / 60 >= 16) return false;
    }
    return true;
}

// Sign, then the magnitude with at least minDigits digits; "+" only when a
// positive value needs more digits than the least.
void putSigned(TextSink& s, int32_t value, uint32_t minDigits) {
    const uint32_t magnitude = value < 0 ? 0u - static_cast<uint32_t>(value)
                                         : static_cast<uint32_t>(value);
    if (value < 0)
        s.put('-');
    else if (decimalDigits(magnitude) > minDigits)
        s.put('+');
    s.digitsMin(minDigits, magnitude);
}

void putPoint(TextSink& s, const KivTimeFields& f) {
    const uint16_t flags = f.flags;
    if (flags & KIV_TF_CENTURY) {
        putSigned(s, f.century, 2);
        s.put('C');
        return;
    }
    if (flags & KIV_TF_YEAR) putSigned(s, f.year, 4);
    if (flags & KIV_TF_WEEK) {
        s.put("-W");
        s.digitsFixed(2, f.week);
    } else if (flags & KIV_TF_MONTH) {
        s.put('-');
        s.digitsFixed(2, f.month);
    }
    if (flags & KIV_TF_DAY) {
        s.put('-');
        s.digitsFixed((flags & KIV_TF_MONTH) ? 2 : (flags & KIV_TF_WEEK) ? 1 : 3, f.day);
    }
    if ((flags & KIV_TF_YEAR) && (flags & KIV_TF_HOUR)) s.put('T');
    if (flags & KIV_TF_HOUR) s.digitsFixed(2, f.hours);
    if (flags & KIV_TF_MINUTE) {
        s.put(':');
        s.digitsFixed(2, f.minutes);
    }
    if (flags & KIV_TF_SECOND) {
        s.put(':');
        s.digitsFixed(2, f.seconds);
    }
    if (flags & KIV_TF_FRACTION) {
        s.put('.');
        s.digitsMin(f.fractionDigits, f.fraction);
    }
    if (flags & KIV_TF_UTC) s.put('Z');
    if (flags & KIV_TF_ZONE) {
        const uint32_t m = (f.zoneFlags & KIV_TF_ZONE_MINUTES) ? f.zoneMinutes : 0;
        s.put(f.zoneNegative ? '-' : '+');
        s.digitsFixed(2, f.zoneHours + m / 60);
        if (m % 60) {
            s.put(':');
            s.digitsFixed(2, m % 60);
        }
    }
}

constexpr uint32_t kComponentFlags = KIV_DF_YEARS | KIV_DF_MONTHS | KIV_DF_WEEKS | KIV_DF_DAYS |
                                     KIV_DF_HOURS | KIV_DF_MINUTES | KIV_DF_SECONDS;

bool durationValid(const KivDurationFields& d) {
    const uint32_t components = d.flags & kComponentFlags;
    if (!components) return false;
    if ((components & KIV_DF_WEEKS) && components != KIV_DF_WEEKS) return false;
    return !(d.flags & KIV_DF_FRACTION) || d.fractionDigits >= decimalDigits(d.fraction);
}

void putDuration(TextSink& s, const KivDurationFields& d, uint32_t flags) {
    // Each designator waits until the next number, "T" or the end, so that
    // a fraction lands between the last number and its designator.
    char held = 0;
    auto component = [&](uint32_t flag, uint32_t value, char designator) {
        if (!(flags & flag)) return;
        if (held) s.put(held);
        s.digitsMin(1, value);
        held = designator;
    };
    s.put('P');
    component(KIV_DF_YEARS, d.years, 'Y');
    component(KIV_DF_MONTHS, d.months, 'M');
    component(KIV_DF_DAYS, d.days, 'D');
    if (flags & (KIV_DF_HOURS | KIV_DF_MINUTES | KIV_DF_SECONDS)) {
        if (held) s.put(held);
        held = 0;
        s.put('T');
    }
    component(KIV_DF_HOURS, d.hours, 'H');
    component(KIV_DF_MINUTES, d.minutes, 'M');
    component(KIV_DF_SECONDS, d.seconds, 'S');
    component(KIV_DF_WEEKS, d.weeks, 'W');
    if (flags & KIV_DF_FRACTION) {
        s.put('.');
        s.digitsMin(d.fractionDigits, d.fraction);
    }
    if (held) s.put(held);
}

// "R", the count without leading zeros when not negative, "/".
void putRecurrence(TextSink& s, int32_t count) {
    s.put('R');
    if (count >= 0) s.digitsMin(0, static_cast<uint32_t>(count));
    s.put('/');
}

// The start/end pair after its flags were checked; under canonical rules an
// end whose time difference repeats the start's is validated and written
// without it, the caller's flag being cleared only for the call.
int32_t formatStartEnd(KivGlobal* world, const KivTimeFields* start, KivTimeFields* end,
                       int32_t count, bool recurring, char** out) {
    if (!world || !start || !end || !out) return kTimeTextFailure;
    const uint16_t startFlags =
        (end->flags & KIV_TF_ZONE) ? start->flags : start->flags & ~KIV_TF_ZONE;
    if (startFlags != end->flags) return kTimeTextFailure;
    const bool dropEndZone = canonicalRules(world) && (startFlags & KIV_TF_ZONE) &&
                             start->zoneNegative == end->zoneNegative &&
                             zoneTotalMinutes(*start) == zoneTotalMinutes(*end);
    if (dropEndZone) end->flags &= ~KIV_TF_ZONE;
    int32_t result = kTimeTextFailure;
    if (pointValid(*start) && pointValid(*end)) {
        result = emitText(world, out, [&](TextSink& s) {
            if (recurring) putRecurrence(s, count);
            putPoint(s, *start);
            s.put('/');
            putPoint(s, *end);
        });
    }
    if (dropEndZone) end->flags |= KIV_TF_ZONE;
    return result;
}

int32_t formatStartDuration(KivGlobal* world, const KivTimeFields* start,
                            const KivDurationFields* d, int32_t count, bool recurring,
                            char** out) {
    if (!world || !start || !d || !out || !pointValid(*start) || !durationValid(*d))
        return kTimeTextFailure;
    const uint32_t flags = canonicalRules(world) ? withoutZeroComponents(*d) : d->flags;
    return emitText(world, out, [&](TextSink& s) {
        if (recurring) putRecurrence(s, count);
        putPoint(s, *start);
        s.put('/');
        putDuration(s, *d, flags);
    });
}

int32_t formatDurationEnd(KivGlobal* world, const KivDurationFields* d, const KivTimeFields* end,
                          int32_t count, bool recurring, char** out) {
    if (!world || !d || !end || !out || !durationValid(*d) || !pointValid(*end))
        return kTimeTextFailure;
    const uint32_t flags = canonicalRules(world) ? withoutZeroComponents(*d) : d->flags;
    return emitText(world, out, [&](TextSink& s) {
        if (recurring) putRecurrence(s, count);
        putDuration(s, *d, flags);
        s.put('/');
        putPoint(s, *end);
    });
}

int32_t formatDuration(KivGlobal* world, const KivDurationFields* d, int32_t count,
                       bool recurring, char** out) {
    if (!world || !d || !out || !durationValid(*d)) return kTimeTextFailure;
    const uint32_t flags = canonicalRules(world) ? withoutZeroComponents(*d) : d->flags;
    return emitText(world, out, [&](TextSink& s) {
        if (recurring) putRecurrence(s, count);
        putDuration(s, *d, flags);
    });
}

}  // namespace

uint32_t withoutZeroComponents(const KivDurationFields& d) {
    uint32_t flags = d.flags;
    struct Rule {
        uint32_t flag;
        uint32_t KivDurationFields::*field;
        uint32_t lower;
    };
    static constexpr Rule rules[] = {
        {KIV_DF_YEARS, &KivDurationFields::years, kComponentFlags & ~KIV_DF_YEARS},
        {KIV_DF_MONTHS, &KivDurationFields::months,
         KIV_DF_WEEKS | KIV_DF_DAYS | KIV_DF_HOURS | KIV_DF_MINUTES | KIV_DF_SECONDS},
        {KIV_DF_DAYS, &KivDurationFields::days,
         KIV_DF_WEEKS | KIV_DF_HOURS | KIV_DF_MINUTES | KIV_DF_SECONDS},
        {KIV_DF_HOURS, &KivDurationFields::hours, KIV_DF_WEEKS | KIV_DF_MINUTES | KIV_DF_SECONDS},
        {KIV_DF_MINUTES, &KivDurationFields::minutes, KIV_DF_WEEKS | KIV_DF_SECONDS},
    };
    for (const Rule& r : rules)
        if ((flags & r.flag) && d.*r.field == 0 && (flags & r.lower)) flags &= ~r.flag;
    return flags;
}

int32_t formatTimeText(KivGlobal* world, TimeText* t, char** out) {
    switch (t->form) {
        case kivTimeFormPoint: return kivFormatTimePoint(world, &t->start, out);
        case kivTimeFormDuration: return kivFormatDuration(world, &t->duration, out);
        case kivTimeFormStartEnd: return kivFormatStartEnd(world, &t->start, &t->end, out);
        case kivTimeFormStartDuration:
            return kivFormatStartDuration(world, &t->start, &t->duration, out);
        case kivTimeFormDurationEnd:
            return kivFormatDurationEnd(world, &t->duration, &t->end, out);
        case kivTimeFormRecurringDuration:
            return kivFormatRecurringDuration(world, &t->duration, t->count, out);
        case kivTimeFormRecurringStartEnd:
            return kivFormatRecurringStartEnd(world, &t->start, &t->end, t->count, out);
        case kivTimeFormRecurringStartDuration:
            return kivFormatRecurringStartDuration(world, &t->start, &t->duration, t->count, out);
        case kivTimeFormRecurringDurationEnd:
            return kivFormatRecurringDurationEnd(world, &t->duration, &t->end, t->count, out);
        default: return kTimeTextFailure;
    }
}

}  // namespace fenk

int32_t kivFormatTimePoint(KivGlobal* world, const KivTimeFields* point, char** out) {
    if (!world || !point || !out || !fenk::pointValid(*point)) return fenk::kTimeTextFailure;
    return fenk::emitText(world, out, [&](fenk::TextSink& s) { fenk::putPoint(s, *point); });
}

int32_t kivFormatDuration(KivGlobal* world, const KivDurationFields* duration, char** out) {
    return fenk::formatDuration(world, duration, 0, false, out);
}

int32_t kivFormatStartEnd(KivGlobal* world, const KivTimeFields* start, KivTimeFields* end,
                          char** out) {
    return fenk::formatStartEnd(world, start, end, 0, false, out);
}

int32_t kivFormatStartDuration(KivGlobal* world, const KivTimeFields* start,
                               const KivDurationFields* duration, char** out) {
    return fenk::formatStartDuration(world, start, duration, 0, false, out);
}

int32_t kivFormatDurationEnd(KivGlobal* world, const KivDurationFields* duration,
                             const KivTimeFields* end, char** out) {
    return fenk::formatDurationEnd(world, duration, end, 0, false, out);
}

int32_t kivFormatRecurringDuration(KivGlobal* world, const KivDurationFields* duration,
                                   int32_t count, char** out) {
    return fenk::formatDuration(world, duration, count, true, out);
}

int32_t kivFormatRecurringStartEnd(KivGlobal* world, const KivTimeFields* start,
                                   KivTimeFields* end, int32_t count, char** out) {
    return fenk::formatStartEnd(world, start, end, count, true, out);
}

int32_t kivFormatRecurringStartDuration(KivGlobal* world, const KivTimeFields* start,
                                        const KivDurationFields* duration, int32_t count,
                                        char** out) {
    return fenk::formatStartDuration(world, start, duration, count, true, out);
}

int32_t kivFormatRecurringDurationEnd(KivGlobal* world, const KivDurationFields* duration,
                                      const KivTimeFields* end, int32_t count, char** out) {
    return fenk::formatDurationEnd(world, duration, end, count, true, out);
}
