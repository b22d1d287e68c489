// Generated records: formatting then parsing gives the record back, and the
// normal form is idempotent and denotes the same value under every rule;
// comparison tells apart exactly the changes that alter the value.
#include <gtest/gtest.h>

#include <random>
#include <type_traits>

#include "time_test_support.h"

using namespace fenk::test;

namespace {

using Rng = std::mt19937;

uint32_t pick(Rng& rng, uint32_t low, uint32_t high) {
    return std::uniform_int_distribution<uint32_t>(low, high)(rng);
}

int32_t pickSigned(Rng& rng) {
    switch (pick(rng, 0, 3)) {
        case 0: return static_cast<int32_t>(pick(rng, 0, 9999));
        case 1: return -static_cast<int32_t>(pick(rng, 1, 99999));
        case 2: return static_cast<int32_t>(pick(rng, 10000, 0x7FFFFFFF));
        default: return pick(rng, 0, 1) ? INT32_MIN : INT32_MAX;
    }
}

// The shape fixes the flags, so two points of one shape form an interval.
KivTimeFields makePoint(Rng& rng, uint32_t shape) {
    KivTimeFields f{};
    // Flags a field and gives it a value from low to high.
    auto set = [&](uint16_t flag, auto& field, uint32_t low, uint32_t high) {
        f.flags |= flag;
        field = static_cast<std::remove_reference_t<decltype(field)>>(pick(rng, low, high));
    };
    const uint32_t kind = shape % 8;
    if (kind == 0) {
        f.flags = KIV_TF_CENTURY;
        f.century = pickSigned(rng) / 100;
        if (f.century >= 0 && f.century < 10) f.century += 10;  // two digits at least
        return f;
    }
    if (kind < 7) {
        f.flags = KIV_TF_YEAR;
        f.year = pickSigned(rng);
    }
    if (kind == 2 || kind == 3) set(KIV_TF_MONTH, f.month, 1, 12);
    if (kind == 4 || kind == 5) set(KIV_TF_WEEK, f.week, 1, 53);
    if (kind == 3 || kind == 5 || kind == 6) set(KIV_TF_DAY, f.day, 1, kind == 3 ? 28 : kind == 5 ? 7 : 366);
    if (kind != 7 && !((f.flags & KIV_TF_DAY) && (shape & 8))) return f;
    set(KIV_TF_HOUR, f.hours, 0, 23);
    if (shape & 16) {
        set(KIV_TF_MINUTE, f.minutes, 0, 59);
        if (shape & 32) set(KIV_TF_SECOND, f.seconds, 0, 60);
    }
    if (shape & 64) {
        set(KIV_TF_FRACTION, f.fractionDigits, 1, 9);
        uint32_t limit = 1;
        for (uint32_t i = 0; i < f.fractionDigits; ++i) limit *= 10;
        f.fraction = pick(rng, 0, limit - 1);
    }
    const uint32_t zone = (shape >> 7) % 4;
    if (zone == 1) f.flags |= KIV_TF_UTC;
    if (zone >= 2) {
        set(KIV_TF_ZONE, f.zoneNegative, 0, 1);
        f.zoneHours = static_cast<uint16_t>(pick(rng, 0, 15));
        if (zone == 3) {  // minutes written only when not zero
            f.zoneFlags = KIV_TF_ZONE_MINUTES;
            f.zoneMinutes = static_cast<uint16_t>(pick(rng, 1, 59));
        }
    }
    return f;
}

KivDurationFields makeDuration(Rng& rng) {
    static constexpr uint32_t order[] = {KIV_DF_YEARS, KIV_DF_MONTHS, KIV_DF_DAYS, KIV_DF_HOURS, KIV_DF_MINUTES, KIV_DF_SECONDS};
    static constexpr uint32_t KivDurationFields::*fields[] = {
        &KivDurationFields::years, &KivDurationFields::months, &KivDurationFields::days,
        &KivDurationFields::hours, &KivDurationFields::minutes, &KivDurationFields::seconds};
    KivDurationFields d{};
    auto value = [&] { return pick(rng, 0, 2) == 0 ? 0 : pick(rng, 0, 3) ? pick(rng, 1, 99) : pick(rng, 0, 0xFFFFFFFF); };
    if (pick(rng, 0, 7) == 0) {
        d.flags = KIV_DF_WEEKS;
        d.weeks = value();
    } else {
        while (!d.flags)
            for (int i = 0; i < 6; ++i)
                if (pick(rng, 0, 2) == 0) {
                    d.flags |= order[i];
                    d.*fields[i] = value();
                }
    }
    if (pick(rng, 0, 3) == 0) {
        d.flags |= KIV_DF_FRACTION;
        d.fractionDigits = pick(rng, 1, 9);
        d.fraction = pick(rng, 0, 9);
    }
    return d;
}

struct Sample { int32_t form; KivTimeFields start, end; KivDurationFields duration; int32_t count; };

Sample makeSample(Rng& rng) {
    Sample s{};
    s.form = static_cast<int32_t>(pick(rng, 0, 8));
    const uint32_t shape = pick(rng, 0, 0xFFFF);
    s.start = makePoint(rng, shape);
    s.end = makePoint(rng, shape);
    if (pick(rng, 0, 2) == 0 && (s.start.flags & KIV_TF_ZONE)) {
        s.end.flags &= ~KIV_TF_ZONE;  // the end may leave its time difference out
        s.end.zoneFlags = s.end.zoneNegative = 0;
        s.end.zoneHours = s.end.zoneMinutes = 0;
    }
    s.duration = makeDuration(rng);
    s.count = pick(rng, 0, 1) ? -1 : static_cast<int32_t>(pick(rng, 1, 0x7FFFFFFF));
    return s;
}

std::string format(KivGlobal* w, Sample& s) {
    return formatted(w, [&](char** o) {
        switch (s.form) {
            case 0: return kivFormatTimePoint(w, &s.start, o);
            case 1: return kivFormatDuration(w, &s.duration, o);
            case 2: return kivFormatStartEnd(w, &s.start, &s.end, o);
            case 3: return kivFormatStartDuration(w, &s.start, &s.duration, o);
            case 4: return kivFormatDurationEnd(w, &s.duration, &s.end, o);
            case 5: return kivFormatRecurringDuration(w, &s.duration, s.count, o);
            case 6: return kivFormatRecurringStartEnd(w, &s.start, &s.end, s.count, o);
            case 7: return kivFormatRecurringStartDuration(w, &s.start, &s.duration, s.count, o);
            default: return kivFormatRecurringDurationEnd(w, &s.duration, &s.end, s.count, o);
        }
    });
}

int32_t parse(KivGlobal* w, const std::string& text, Sample& s) {
    s = {};
    s.form = kivClassifyTimeText(w, text.c_str());
    const char* t = text.c_str();
    switch (s.form) {
        case 0: return kivParseTimePoint(w, t, &s.start);
        case 1: return kivParseDuration(w, t, &s.duration);
        case 2: return kivParseStartEnd(w, t, &s.start, &s.end);
        case 3: return kivParseStartDuration(w, t, &s.start, &s.duration);
        case 4: return kivParseDurationEnd(w, t, &s.duration, &s.end);
        case 5: return kivParseRecurringDuration(w, t, &s.duration, &s.count);
        case 6: return kivParseRecurringStartEnd(w, t, &s.start, &s.end, &s.count);
        case 7: return kivParseRecurringStartDuration(w, t, &s.start, &s.duration, &s.count);
        case 8: return kivParseRecurringDurationEnd(w, t, &s.duration, &s.end, &s.count);
        default: return -1;
    }
}

// What each form 0 to 8 carries: a start, an end, a duration.
constexpr bool kStart[] = {1, 0, 1, 1, 0, 0, 1, 1, 0}, kEnd[] = {0, 0, 1, 0, 1, 0, 1, 0, 1},
               kDuration[] = {0, 1, 0, 1, 1, 1, 0, 1, 1};

// Clears what the form does not carry, as a parser leaves it.
Sample carried(const Sample& s) {
    Sample c{};
    c.form = s.form;
    if (kStart[s.form]) c.start = s.start;
    if (kEnd[s.form]) c.end = s.end;
    if (kDuration[s.form]) c.duration = s.duration;
    if (s.form >= 5) c.count = s.count;
    return c;
}

bool sameRecords(const Sample& a, const Sample& b) {
    return a.form == b.form && a.count == b.count &&
           std::memcmp(&a.start, &b.start, sizeof a.start) == 0 &&
           std::memcmp(&a.end, &b.end, sizeof a.end) == 0 &&
           std::memcmp(&a.duration, &b.duration, sizeof a.duration) == 0;
}

}  // namespace

TEST(TimeTextRoundTrip, FormatThenParseGivesTheRecordBack) {
    TestWorld w;
    Rng rng(20091);
    for (int i = 0; i < 3000; ++i) {
        Sample s = carried(makeSample(rng));
        w->encodingRules = kBer;
        std::string text = format(w.get(), s);
        Sample back;
        ASSERT_EQ(parse(w.get(), text, back), 0) << text;
        ASSERT_TRUE(sameRecords(back, s)) << text;
        ASSERT_EQ(normalized(w.get(), text.c_str()), text) << "already normal";
    }
}

TEST(TimeTextRoundTrip, NormalFormIsIdempotentAndKeepsTheValue) {
    TestWorld w;
    Rng rng(4711);
    for (int32_t rules : {kBer, kDer, kCer, kCxer}) {
        for (int i = 0; i < 1500; ++i) {
            Sample s = carried(makeSample(rng));
            w->encodingRules = kBer;
            std::string text = format(w.get(), s);
            std::string once = normalized(w.get(), text.c_str(), rules);
            ASSERT_EQ(once.find('#'), std::string::npos) << text;
            ASSERT_EQ(normalized(w.get(), once.c_str(), rules), once) << text;
            ASSERT_EQ(kivTimeTextsDiffer(w.get(), text.c_str(), once.c_str()), 0) << text << " vs " << once;
            if (rules != kBer) {
                // What canonical rules write passes the canonical-form check.
                w->messageOut = w->messageText;
                auto caught = catchRaise(w.get(), [&] { kivCheckTimeCanonicalForm(w.get(), once.c_str()); });
                ASSERT_FALSE(caught.raised) << once << ": " << w->messageText;
            }
        }
    }
}

TEST(TimeTextCompare, Examples) {
    TestWorld w;
    const struct { const char* a; const char* b; int32_t differ; } cases[] = {
        {"P0Y1M", "P1M", 0},                       {"PT60M", "PT1H", 1},
        {"2009-01-01T10:00+01:00", "2009-01-01T10:00+01", 0}, {"10:00Z", "10:00+00", 1},
        {"12:00+00:00", "12:00-00:00", 0},         {"12:00+01", "12:00-01", 1},
        {"12:00", "12:00:00", 1},                  {"10:00,5", "10:00.5", 0},
        {"10:00.5", "10:00.50", 1},                {"2009-01-01", "2009-001", 1},
        {"P1D", "P1D/2009-01-01", 1},              {"nonsense", "nonsense", 0},
        {"nonsense", "nonsense!", 1},              {"2009-13-01", "2009-13-01T", 1},
        {"10:00+01/12:00", "10:00+01/12:00+01", 0}, {"10:00+01/12:00", "10:00+01/12:00+02", 1},
        {"10:00+01/12:00", "10:00+01:00/12:00+01:00", 0},
        {"R2/P1D", "R3/P1D", 1},                   {"R/P1D", "R/P1DT0H", 0},
        {"R2/10:00/P1D", "R2/10:00/P1DT0,0S", 1},  {"P1D/10:00", "P1DT0S/10:00", 0},
        // The same rules in every form: a zero component, the sign of a zero
        // time difference, another hour, one more fraction digit, the count.
        {"R2/10:00/PT1H", "R2/10:00/P0DT1H", 0},   {"R2/P1.5D/10:00", "R2/P1.50D/10:00", 1},
        {"10:00+00/12:00+00", "10:00-00/12:00-00", 0}, {"R/10:00+00/P1D", "R/10:00-00/P1D", 0},
        {"R/10:00+01/P1D", "R/10:00-01/P1D", 1},  {"R2/10:00/12:00", "R2/11:00/12:00", 1},
        {"R/P1D", "R1/P1D", 1},                    {"R/PT1H/10:00", "R1/PT1H/10:00", 1},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(kivTimeTextsDiffer(w.get(), c.a, c.b), c.differ) << c.a << " vs " << c.b;
        EXPECT_EQ(kivTimeTextsDiffer(w.get(), c.b, c.a), c.differ) << c.b << " vs " << c.a;
    }
    EXPECT_EQ(kivTimeTextsDiffer(w.get(), nullptr, "P1D"), 1);
    EXPECT_EQ(kivTimeTextsDiffer(nullptr, "P1D", "P0Y1D"), 1);
}

TEST(TimeTextCompare, EveryFieldCounts) {
    TestWorld w;
    // Valid texts of one form that differ in one field or in one field's
    // presence.
    const char* pairs[][2] = {
        {"20", "21"}, {"2009-01-01", "2010-01-01"},       {"2009-01-01", "2009-02-01"},
        {"2009-01-01", "2009-01-02"},       {"2009-W01-1", "2009-W02-1"},
        {"2009-W01-1", "2009-W01-2"},       {"2009-01", "2009-01-01"},
        {"10:00:00", "11:00:00"},           {"10:00:00", "10:01:00"},
        {"10:00:00", "10:00:01"},           {"10:00", "10:00:00"},
        {"10:00", "10"},                    {"10:00", "10:00Z"},
        {"10:00+01:00", "10:00+01:30"},     {"10:00:00.5", "10:00:00.6"},
        {"10:00:00", "10:00:00.0"},         {"2009-01-01T10:00", "2009-01-02T10:00"},
        {"P1Y", "P2Y"},   {"P1M", "P2M"},   {"P1W", "P2W"},   {"P1D", "P2D"},
        {"PT1H", "PT2H"}, {"PT1M", "PT2M"}, {"PT1S", "PT2S"}, {"PT1S", "PT1.0S"}, {"PT1.5S", "PT1.6S"},
        {"10:00/11:00", "10:00/11:30"},     {"10:00/11:00", "09:00/11:00"},
        {"10:00/PT1H", "10:00/PT2H"},       {"10:00/PT1H", "11:00/PT1H"},
        {"PT1H/11:00", "PT1H/12:00"},       {"PT1H/11:00", "PT2H/11:00"},
    };
    for (const auto& p : pairs) {
        ASSERT_NE(normalized(w.get(), p[0])[0], '#') << p[0];
        ASSERT_NE(normalized(w.get(), p[1])[0], '#') << p[1];
        EXPECT_EQ(kivTimeTextsDiffer(w.get(), p[0], p[1]), 1) << p[0] << " vs " << p[1];
        EXPECT_EQ(kivTimeTextsDiffer(w.get(), p[1], p[0]), 1) << p[1] << " vs " << p[0];
    }
}
