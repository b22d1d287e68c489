// Formatting field records as ISO 8601 text and the normal form of a text,
// outside and inside the canonical rules.
#include <gtest/gtest.h>

#include <tuple>
#include <utility>

#include "support/alloc_hooks.h"
#include "time_test_support.h"

// Records name only the fields that matter; the rest are zero.
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"

using namespace fenk::test;

namespace {

KivTimeFields hoursOnly(uint16_t hours) {
    KivTimeFields f{};
    f.flags = KIV_TF_HOUR;
    f.hours = hours;
    return f;
}

}  // namespace

TEST(TimeTextNormalForm, PointsAreRewrittenInTheOneNormalForm) {
    TestWorld w;
    const struct { const char* in; const char* out; } cases[] = {
        {"0900-01-01T10:00:00,5+01:00", "0900-01-01T10:00:00.5+01"}, {"12:00-00:30", "12:00-00:30"},
        {"2009-W05-3", "2009-W05-3"}, {"2009-035", "2009-035"}, {"-05C", "-05C"}, {"123C", "+123C"},
        {"20C", "20C"}, {"20090101", "+20090101"}, {"-20090101", "-20090101"}, {"-0005", "-0005"},
        {"10:00:00.000", "10:00:00.000"}, {"10,5Z", "10.5Z"}, {"2009-05", "2009-05"},
        {"2009-W05", "2009-W05"}, {"12:00+15:30", "12:00+15:30"},
    };
    for (const auto& c : cases) EXPECT_EQ(normalized(w.get(), c.in), c.out) << c.in;
    EXPECT_EQ(normalized(w.get(), "2009-1-1"), "#12") << "the parser's answer";
    EXPECT_EQ(normalized(w.get(), "T10:00"), "#12") << "not a time text";
}

TEST(TimeTextNormalForm, CanonicalRulesDropZeroDurationComponents) {
    TestWorld w;
    const std::pair<const char*, const char*> cases[] = {
        {"P1Y0M0DT0H0M5S", "P1YT5S"}, {"P0Y", "P0Y"}, {"P1Y0M", "P1Y0M"}, {"PT0H0M0S", "PT0S"},
        {"P1W", "P1W"}, {"P0Y0M0D", "P0D"}, {"P0Y2M0DT0,5H", "P2MT0.5H"}, {"R/P0Y1M", "R/P1M"},
        {"2009-01-01/P0Y1M", "2009-01-01/P1M"}, {"R2/P0DT1H/2009-01-01", "R2/PT1H/2009-01-01"},
    };
    for (int32_t rules : {kDer, kCer, kCxer})
        for (auto [in, out] : cases) EXPECT_EQ(normalized(w.get(), in, rules), out) << in << " rules " << rules;
    for (int32_t rules : {kBer, 1, 2, 4, 5, 8}) {
        EXPECT_EQ(normalized(w.get(), "P1Y0M0DT0H0M5S", rules), "P1Y0M0DT0H0M5S") << rules;
        EXPECT_EQ(normalized(w.get(), "PT0H0M0,50S", rules), "PT0H0M0.50S");
    }
}

TEST(TimeTextNormalForm, CanonicalRulesDropARepeatedEndTimeDifference) {
    TestWorld w;
    const char* text = "2009-01-01T10:00+01/2009-01-01T12:00+01:00";
    EXPECT_EQ(normalized(w.get(), text, kCer), "2009-01-01T10:00+01/2009-01-01T12:00");
    EXPECT_EQ(normalized(w.get(), text, kBer), "2009-01-01T10:00+01/2009-01-01T12:00+01");
    EXPECT_EQ(normalized(w.get(), "R/10:00-01:30/12:00-01:30", kDer), "R/10:00-01:30/12:00");
    EXPECT_EQ(normalized(w.get(), "10:00+01/12:00-01", kDer), "10:00+01/12:00-01");
    EXPECT_EQ(normalized(w.get(), "10:00+01/12:00+02", kDer), "10:00+01/12:00+02");
    EXPECT_EQ(normalized(w.get(), "10:00+00/12:00-00", kDer), "10:00+00/12:00-00") << "the signs differ";
}

TEST(TimeTextFormat, StartEndRestoresTheCallersEndRecord) {
    TestWorld w;
    KivTimeFields s, e;
    ASSERT_EQ(kivParseStartEnd(w.get(), "10:00+01/12:00+01", &s, &e), 0);
    w->encodingRules = kDer;
    auto text = [&] { return formatted(w.get(), [&](char** o) { return kivFormatStartEnd(w.get(), &s, &e, o); }); };
    EXPECT_EQ(text(), "10:00+01/12:00");
    EXPECT_EQ(e.flags, KIV_TF_HOUR | KIV_TF_MINUTE | KIV_TF_ZONE);
    e.hours = 25;  // an invalid end fails with its flag put back too
    EXPECT_EQ(text(), "#12");
    EXPECT_EQ(e.flags, KIV_TF_HOUR | KIV_TF_MINUTE | KIV_TF_ZONE);
    e.hours = 12;
    e.flags &= ~KIV_TF_MINUTE;
    EXPECT_EQ(text(), "#12") << "the flags must match";
}

TEST(TimeTextFormat, PointValidityAndLayout) {
    TestWorld w;
    constexpr uint16_t y = KIV_TF_YEAR, h = KIV_TF_HOUR, m = KIV_TF_MINUTE, s = KIV_TF_SECOND;
    constexpr uint16_t z = KIV_TF_ZONE, frac = KIV_TF_FRACTION, day = KIV_TF_DAY;
    constexpr uint8_t zm = KIV_TF_ZONE_MINUTES;
    const struct { KivTimeFields fields; const char* text; } cases[] = {
        {{.flags = KIV_TF_CENTURY | y}, "#12"},  // a century stands alone
        {{.flags = y | KIV_TF_MONTH | day, .year = 2009, .month = 2, .day = 31}, "2009-02-31"},
        {{.flags = y | KIV_TF_MONTH | day, .year = 2009, .month = 2, .day = 32}, "#12"},
        {{.flags = y | KIV_TF_MONTH, .year = 2009, .month = 13}, "#12"},
        {{.flags = y | KIV_TF_WEEK | day, .year = 2009, .week = 53, .day = 7}, "2009-W53-7"},
        {{.flags = y | KIV_TF_WEEK | day, .year = 2009, .week = 53, .day = 8}, "#12"},
        {{.flags = y | KIV_TF_WEEK, .year = 2009, .week = 54}, "#12"},
        {{.flags = y | day, .year = 2009, .day = 5}, "2009-005"},
        {{.flags = y | day, .year = 2009, .day = 367}, "#12"},
        {{.flags = y | day | h, .year = 99999, .day = 1, .hours = 1}, "+99999-001T01"},
        {{.flags = h, .hours = 24}, "24"}, {{.flags = h, .hours = 25}, "#12"},
        {{.flags = m}, "#12"},  // minutes need hours
        {{.flags = h | m | s, .hours = 10, .minutes = 59, .seconds = 60}, "10:59:60"},
        {{.flags = h | m | s, .hours = 10, .minutes = 59, .seconds = 61}, "#12"},
        {{.flags = h | m, .hours = 10, .minutes = 60}, "#12"},
        {{.flags = h | KIV_TF_UTC | z, .hours = 10}, "#12"},  // Z excludes a time difference
        {{.flags = z}, "#12"},                                // which needs hours
        {{.flags = h | frac, .hours = 10, .fractionDigits = 2, .fraction = 123}, "#12"},
        {{.flags = h | frac, .hours = 10, .fractionDigits = 5, .fraction = 123}, "10.00123"},
        {{.flags = h | frac, .hours = 10}, "#12"},  // a fraction has at least one digit
        // Zone minutes count only when written, and carry their whole hours.
        {{.flags = h | z, .hours = 10, .zoneHours = 14, .zoneMinutes = 90}, "10+14"},
        {{.flags = h | z, .hours = 10, .zoneFlags = zm, .zoneHours = 14, .zoneMinutes = 90},
         "10+15:30"},
        {{.flags = h | z, .hours = 10, .zoneFlags = zm, .zoneHours = 14, .zoneMinutes = 120},
         "#12"},
        {{.flags = h | z, .hours = 10, .zoneFlags = zm, .zoneHours = 13, .zoneMinutes = 120, .zoneNegative = 1},
         "10-15"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(formatted(w.get(), [&](char** o) { return kivFormatTimePoint(w.get(), &c.fields, o); }), c.text)
            << describe(c.fields);
}

TEST(TimeTextFormat, DurationValidityAndLayout) {
    TestWorld w;
    const struct { KivDurationFields fields; const char* text; } cases[] = {
        {{.flags = KIV_DF_FRACTION}, "#12"},  // no component
        {{.flags = KIV_DF_WEEKS | KIV_DF_DAYS}, "#12"},
        {{.flags = KIV_DF_SECONDS | KIV_DF_FRACTION, .fractionDigits = 2, .fraction = 123}, "#12"},
        {{.flags = KIV_DF_SECONDS | KIV_DF_FRACTION, .fractionDigits = 3, .fraction = 5},
         "PT0.005S"},
        {{.flags = KIV_DF_WEEKS | KIV_DF_FRACTION, .weeks = 2, .fractionDigits = 1, .fraction = 5},
         "P2.5W"},
        {{.flags = KIV_DF_YEARS | KIV_DF_DAYS | KIV_DF_MINUTES | KIV_DF_FRACTION,
          .years = 4294967295u, .days = 3, .minutes = 7, .fractionDigits = 2, .fraction = 25},
         "P4294967295Y3DT7.25M"},
        {{.flags = KIV_DF_MONTHS | KIV_DF_HOURS}, "P0MT0H"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(formatted(w.get(), [&](char** o) { return kivFormatDuration(w.get(), &c.fields, o); }), c.text)
            << describe(c.fields);
}

TEST(TimeTextFormat, RecurrenceCount) {
    TestWorld w;
    KivDurationFields d{};
    d.flags = KIV_DF_HOURS;
    d.hours = 1;
    auto text = [&](int32_t n) {
        return formatted(w.get(), [&](char** o) { return kivFormatRecurringDuration(w.get(), &d, n, o); });
    };
    EXPECT_EQ(text(-1), "R/PT1H");
    EXPECT_EQ(text(12), "R12/PT1H");
    EXPECT_EQ(text(0), "R/PT1H") << "0 writes no digit";
    EXPECT_EQ(text(INT32_MAX), "R2147483647/PT1H");

    KivTimeFields s = hoursOnly(10), e = hoursOnly(11);
    KivGlobal* g = w.get();
    auto form = [&](auto call) { return formatted(g, call); };
    EXPECT_EQ(form([&](char** o) { return kivFormatRecurringStartEnd(g, &s, &e, 3, o); }), "R3/10/11");
    EXPECT_EQ(form([&](char** o) { return kivFormatRecurringStartDuration(g, &s, &d, 3, o); }), "R3/10/PT1H");
    EXPECT_EQ(form([&](char** o) { return kivFormatRecurringDurationEnd(g, &d, &e, -1, o); }), "R/PT1H/11");
    EXPECT_EQ(form([&](char** o) { return kivFormatStartDuration(g, &s, &d, o); }), "10/PT1H");
    EXPECT_EQ(form([&](char** o) { return kivFormatDurationEnd(g, &d, &e, o); }), "PT1H/11");
}

TEST(TimeTextFormat, WritesIntoTheCallersBuffer) {
    TestWorld w;
    KivTimeFields f = hoursOnly(7);
    char buffer[8];
    std::memset(buffer, 'x', sizeof buffer);
    char* out = buffer;
    ASSERT_EQ(kivFormatTimePoint(w.get(), &f, &out), 0);
    EXPECT_EQ(out, buffer);
    EXPECT_EQ(std::string(buffer, 4), std::string("07\0x", 4));
}

TEST(TimeTextFormat, LongTextsAreWrittenWhole) {
    TestWorld w;
    for (uint32_t digits : {150u, 153u, 154u, 155u, 400u}) {
        KivTimeFields f = hoursOnly(10);
        f.flags |= KIV_TF_FRACTION | KIV_TF_ZONE;
        f.fractionDigits = digits;
        f.fraction = 4294967295u;
        f.zoneHours = 1;
        const std::string expected =
            "10." + std::string(digits - 10, '0') + "4294967295+01";  // 154 digits fill the draft
        EXPECT_EQ(formatted(w.get(), [&](char** o) { return kivFormatTimePoint(w.get(), &f, o); }), expected);
    }
    const std::string fraction(300, '7');
    auto text = [&](char** o) { return kivTimeToText(w.get(), 1, 2, 3, fraction.c_str(), 300, KIV_ZONE_UTC, o); };
    EXPECT_EQ(formatted(w.get(), text), "01:02:03." + fraction + "Z");
}

// A failed allocation of the normal form is swept in tests/faults; the
// formatters of records are failed here.
TEST(TimeTextFormat, NullArgumentsAndFailedAllocationLeaveNothing) {
    TestWorld w;
    AllocCounter counter;
    installCountingHooks(w.get(), &counter);
    KivGlobal* g = w.get();
    KivTimeFields f = hoursOnly(7);
    KivDurationFields d{};
    d.flags = KIV_DF_DAYS;
    char* out = nullptr;
    EXPECT_EQ(std::tuple(kivFormatTimePoint(nullptr, &f, &out), kivFormatTimePoint(g, nullptr, &out),
                         kivFormatTimePoint(g, &f, nullptr), kivFormatDuration(g, nullptr, &out),
                         kivFormatStartEnd(g, &f, nullptr, &out), kivFormatStartDuration(g, &f, nullptr, &out),
                         kivFormatDurationEnd(g, nullptr, &f, &out), kivNormalizeTimeText(g, "10:00", nullptr)),
              std::tuple(12, 12, 12, 12, 12, 12, 12, 12));
    f.hours = 99;
    EXPECT_EQ(std::tuple(kivFormatTimePoint(g, &f, &out), kivFormatStartDuration(g, &f, &d, &out),
                         kivFormatDurationEnd(g, &d, &f, &out)),
              std::tuple(12, 12, 12));
    EXPECT_EQ(counter.calls, 0) << "validation comes before allocation";
    f.hours = 7;

    counter.failAt = 1;
    EXPECT_EQ(kivFormatTimePoint(g, &f, &out), 12);
    counter.failAt = 2;
    EXPECT_EQ(kivFormatRecurringDuration(g, &d, 5, &out), 12);
    EXPECT_EQ(std::tuple(out, counter.calls, counter.live), std::tuple(nullptr, 2, 0));
}
