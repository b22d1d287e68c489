// Formatting field records as ISO 8601 text and the normal form of a text,
// outside and inside the canonical rules.
#include <gtest/gtest.h>

#include <cstring>

#include "support/alloc_hooks.h"
#include "support/test_world.h"
#include "time_text_helpers.h"

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
    const struct {
        const char* in;
        const char* out;
    } cases[] = {
        {"0900-01-01T10:00:00,5+01:00", "0900-01-01T10:00:00.5+01"},
        {"12:00-00:30", "12:00-00:30"},
        {"2009-W05-3", "2009-W05-3"},
        {"2009-035", "2009-035"},
        {"-05C", "-05C"},
        {"123C", "+123C"},
        {"20C", "20C"},
        {"20090101", "+20090101"},
        {"-20090101", "-20090101"},
        {"-0005", "-0005"},
        {"10:00:00.000", "10:00:00.000"},
        {"10,5Z", "10.5Z"},
        {"2009-05", "2009-05"},
        {"2009-W05", "2009-W05"},
        {"12:00+15:30", "12:00+15:30"},
    };
    for (const auto& c : cases) EXPECT_EQ(normalized(w.get(), c.in), c.out) << c.in;
    EXPECT_EQ(normalized(w.get(), "2009-1-1"), "#12") << "the parser's answer";
    EXPECT_EQ(normalized(w.get(), "T10:00"), "#12") << "not a time text";
}

TEST(TimeTextNormalForm, CanonicalRulesDropZeroDurationComponents) {
    TestWorld w;
    for (int32_t rules : {kDer, kCer, kCxer}) {
        EXPECT_EQ(normalized(w.get(), "P1Y0M0DT0H0M5S", rules), "P1YT5S") << rules;
        EXPECT_EQ(normalized(w.get(), "P0Y", rules), "P0Y");
        EXPECT_EQ(normalized(w.get(), "P1Y0M", rules), "P1Y0M");
        EXPECT_EQ(normalized(w.get(), "PT0H0M0S", rules), "PT0S");
        EXPECT_EQ(normalized(w.get(), "P1W", rules), "P1W");
        EXPECT_EQ(normalized(w.get(), "P0Y0M0D", rules), "P0D");
        EXPECT_EQ(normalized(w.get(), "P0Y2M0DT0,5H", rules), "P2MT0.5H");
        EXPECT_EQ(normalized(w.get(), "R/P0Y1M", rules), "R/P1M");
        EXPECT_EQ(normalized(w.get(), "2009-01-01/P0Y1M", rules), "2009-01-01/P1M");
        EXPECT_EQ(normalized(w.get(), "R2/P0DT1H/2009-01-01", rules), "R2/PT1H/2009-01-01");
    }
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
    EXPECT_EQ(normalized(w.get(), "10:00+00/12:00-00", kDer), "10:00+00/12:00-00")
        << "the signs differ";
}

TEST(TimeTextFormat, StartEndRestoresTheCallersEndRecord) {
    TestWorld w;
    KivTimeFields s, e;
    ASSERT_EQ(kivParseStartEnd(w.get(), "10:00+01/12:00+01", &s, &e), 0);
    w->encodingRules = kDer;
    EXPECT_EQ(formatted(w.get(), [&](char** o) { return kivFormatStartEnd(w.get(), &s, &e, o); }),
              "10:00+01/12:00");
    EXPECT_EQ(e.flags, KIV_TF_HOUR | KIV_TF_MINUTE | KIV_TF_ZONE);
    e.hours = 25;  // an invalid end fails with its flag put back too
    EXPECT_EQ(formatted(w.get(), [&](char** o) { return kivFormatStartEnd(w.get(), &s, &e, o); }),
              "#12");
    EXPECT_EQ(e.flags, KIV_TF_HOUR | KIV_TF_MINUTE | KIV_TF_ZONE);
    e.hours = 12;
    e.flags &= ~KIV_TF_MINUTE;
    EXPECT_EQ(formatted(w.get(), [&](char** o) { return kivFormatStartEnd(w.get(), &s, &e, o); }),
              "#12")
        << "the flags must match";
}

TEST(TimeTextFormat, PointValidity) {
    TestWorld w;
    auto text = [&](const KivTimeFields& f) {
        return formatted(w.get(), [&](char** o) { return kivFormatTimePoint(w.get(), &f, o); });
    };
    KivTimeFields f{};
    f.flags = KIV_TF_CENTURY | KIV_TF_YEAR;
    EXPECT_EQ(text(f), "#12") << "a century stands alone";
    f = {};
    f.flags = KIV_TF_YEAR | KIV_TF_MONTH | KIV_TF_DAY;
    f.year = 2009;
    f.month = 2;
    f.day = 31;
    EXPECT_EQ(text(f), "2009-02-31") << "any day to 31 with a month";
    f.day = 32;
    EXPECT_EQ(text(f), "#12");
    f.month = 13;
    f.day = 1;
    EXPECT_EQ(text(f), "#12");
    f.flags = KIV_TF_YEAR | KIV_TF_WEEK | KIV_TF_DAY;
    f.week = 53;
    f.day = 8;
    EXPECT_EQ(text(f), "#12");
    f.day = 7;
    EXPECT_EQ(text(f), "2009-W53-7");
    f.week = 54;
    EXPECT_EQ(text(f), "#12");
    f.flags = KIV_TF_YEAR | KIV_TF_DAY;
    f.day = 367;
    EXPECT_EQ(text(f), "#12");
    f.day = 5;
    EXPECT_EQ(text(f), "2009-005");

    f = hoursOnly(25);
    EXPECT_EQ(text(f), "#12");
    f = hoursOnly(24);
    EXPECT_EQ(text(f), "24");
    f = {};
    f.flags = KIV_TF_MINUTE;
    EXPECT_EQ(text(f), "#12") << "minutes need hours";
    f = hoursOnly(10);
    f.flags |= KIV_TF_MINUTE | KIV_TF_SECOND;
    f.minutes = 59;
    f.seconds = 61;
    EXPECT_EQ(text(f), "#12");
    f.seconds = 60;
    EXPECT_EQ(text(f), "10:59:60");
    f.minutes = 60;
    EXPECT_EQ(text(f), "#12");

    f = hoursOnly(10);
    f.flags |= KIV_TF_UTC | KIV_TF_ZONE;
    EXPECT_EQ(text(f), "#12") << "Z and a time difference exclude each other";
    f.flags = KIV_TF_ZONE;
    EXPECT_EQ(text(f), "#12") << "a time difference needs hours";

    f = hoursOnly(10);
    f.flags |= KIV_TF_FRACTION;
    f.fraction = 123;
    f.fractionDigits = 2;
    EXPECT_EQ(text(f), "#12");
    f.fractionDigits = 5;
    EXPECT_EQ(text(f), "10.00123");
    f.fraction = 0;
    f.fractionDigits = 0;
    EXPECT_EQ(text(f), "#12") << "a fraction has at least one digit";
}

TEST(TimeTextFormat, TimeDifferenceCarriesWholeHoursOfItsMinutes) {
    TestWorld w;
    auto text = [&](const KivTimeFields& f) {
        return formatted(w.get(), [&](char** o) { return kivFormatTimePoint(w.get(), &f, o); });
    };
    KivTimeFields f = hoursOnly(10);
    f.flags |= KIV_TF_ZONE;
    f.zoneHours = 14;
    f.zoneMinutes = 90;
    EXPECT_EQ(text(f), "10+14") << "minutes not written are not counted";
    f.zoneFlags = KIV_TF_ZONE_MINUTES;
    EXPECT_EQ(text(f), "10+15:30");
    f.zoneMinutes = 120;
    EXPECT_EQ(text(f), "#12") << "14 + 2 hours reaches 16";
    f.zoneHours = 13;
    f.zoneNegative = 1;
    EXPECT_EQ(text(f), "10-15");
}

TEST(TimeTextFormat, DurationValidityAndLayout) {
    TestWorld w;
    auto text = [&](const KivDurationFields& d) {
        return formatted(w.get(), [&](char** o) { return kivFormatDuration(w.get(), &d, o); });
    };
    KivDurationFields d{};
    d.flags = KIV_DF_FRACTION;
    EXPECT_EQ(text(d), "#12") << "no component";
    d.flags = KIV_DF_WEEKS | KIV_DF_DAYS;
    EXPECT_EQ(text(d), "#12");
    d.flags = KIV_DF_SECONDS | KIV_DF_FRACTION;
    d.fraction = 123;
    d.fractionDigits = 2;
    EXPECT_EQ(text(d), "#12");
    d.fraction = 5;
    d.fractionDigits = 3;
    EXPECT_EQ(text(d), "PT0.005S");
    d.flags = KIV_DF_WEEKS | KIV_DF_FRACTION;
    d.weeks = 2;
    EXPECT_EQ(text(d), "P2.005W");
    d = {};
    d.flags = KIV_DF_YEARS | KIV_DF_DAYS | KIV_DF_MINUTES | KIV_DF_FRACTION;
    d.years = 4294967295u;
    d.days = 3;
    d.minutes = 7;
    d.fraction = 25;
    d.fractionDigits = 2;
    EXPECT_EQ(text(d), "P4294967295Y3DT7.25M");
    d.flags = KIV_DF_MONTHS | KIV_DF_HOURS;
    d.months = 0;
    d.hours = 0;
    EXPECT_EQ(text(d), "P0MT0H");
}

TEST(TimeTextFormat, RecurrenceCount) {
    TestWorld w;
    KivDurationFields d{};
    d.flags = KIV_DF_HOURS;
    d.hours = 1;
    auto text = [&](int32_t n) {
        return formatted(w.get(),
                         [&](char** o) { return kivFormatRecurringDuration(w.get(), &d, n, o); });
    };
    EXPECT_EQ(text(-1), "R/PT1H");
    EXPECT_EQ(text(12), "R12/PT1H");
    EXPECT_EQ(text(0), "R/PT1H") << "0 writes no digit";
    EXPECT_EQ(text(INT32_MAX), "R2147483647/PT1H");

    KivTimeFields s = hoursOnly(10);
    KivTimeFields e = hoursOnly(11);
    EXPECT_EQ(formatted(w.get(), [&](char** o) {
                  return kivFormatRecurringStartEnd(w.get(), &s, &e, 3, o);
              }),
              "R3/10/11");
    EXPECT_EQ(formatted(w.get(), [&](char** o) {
                  return kivFormatRecurringStartDuration(w.get(), &s, &d, 3, o);
              }),
              "R3/10/PT1H");
    EXPECT_EQ(formatted(w.get(), [&](char** o) {
                  return kivFormatRecurringDurationEnd(w.get(), &d, &e, -1, o);
              }),
              "R/PT1H/11");
    EXPECT_EQ(formatted(w.get(),
                        [&](char** o) { return kivFormatStartDuration(w.get(), &s, &d, o); }),
              "10/PT1H");
    EXPECT_EQ(formatted(w.get(),
                        [&](char** o) { return kivFormatDurationEnd(w.get(), &d, &e, o); }),
              "PT1H/11");
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

TEST(TimeTextFormat, NullArgumentsAndFailedAllocationLeaveNothing) {
    TestWorld w;
    AllocCounter counter;
    installCountingHooks(w.get(), &counter);
    KivTimeFields f = hoursOnly(7);
    KivDurationFields d{};
    d.flags = KIV_DF_DAYS;
    char* out = nullptr;
    EXPECT_EQ(kivFormatTimePoint(nullptr, &f, &out), 12);
    EXPECT_EQ(kivFormatTimePoint(w.get(), nullptr, &out), 12);
    EXPECT_EQ(kivFormatTimePoint(w.get(), &f, nullptr), 12);
    EXPECT_EQ(kivFormatDuration(w.get(), nullptr, &out), 12);
    EXPECT_EQ(kivFormatStartEnd(w.get(), &f, nullptr, &out), 12);
    EXPECT_EQ(kivNormalizeTimeText(w.get(), "10:00", nullptr), 12);

    f.hours = 99;
    EXPECT_EQ(kivFormatTimePoint(w.get(), &f, &out), 12);
    EXPECT_EQ(counter.calls, 0) << "validation comes before allocation";
    f.hours = 7;

    counter.failAt = 1;
    EXPECT_EQ(kivFormatTimePoint(w.get(), &f, &out), 12);
    counter.failAt = 2;
    EXPECT_EQ(kivFormatRecurringDuration(w.get(), &d, 5, &out), 12);
    counter.failAt = 3;
    EXPECT_EQ(kivNormalizeTimeText(w.get(), "R5/2009-01-01/P1D", &out), 12);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(counter.calls, 3);
    EXPECT_EQ(counter.live, 0);

    EXPECT_EQ(kivNormalizeTimeText(w.get(), "R5/2009-01-01/P1D", &out), 0);
    EXPECT_STREQ(out, "R5/2009-01-01/P1D");
    EXPECT_EQ(counter.live, 1) << "the text belongs to the caller";
    kivReleaseThroughTable(w.get(), out);
    EXPECT_EQ(counter.live, 0);
}
