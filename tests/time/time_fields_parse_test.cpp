// Classification and parsing of ISO 8601 time texts into field records.
#include <gtest/gtest.h>

#include <tuple>
#include <utility>

#include "time_test_support.h"

// Expected records name only the fields that matter; the rest are zero.
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"

using namespace fenk::test;

namespace {

KivTimeFields point(KivGlobal* w, const char* text, int32_t* rc) {
    KivTimeFields f;
    std::memset(&f, 0xAB, sizeof f);
    *rc = kivParseTimePoint(w, text, &f);
    return f;
}

KivDurationFields scan(const char* text, uint8_t skipZero, const char** end) {
    KivDurationFields d;
    std::memset(&d, 0xAB, sizeof d);
    *end = kivScanDuration(text, &d, skipZero);
    return d;
}

}  // namespace

TEST(TimeTextClassify, TellsTheTenForms) {
    TestWorld w;
    const struct { const char* text; int32_t form; } cases[] = {
        {"10:00", 0}, {"-0005", 0}, {"+2009", 0}, {"2009-01-01", 0}, {"T10:00", 9},
        {"P1D", 1}, {"2009-01-01/2009-02-01", 2}, {"2009-01-01/P1D", 3}, {"P1D/2009-01-01", 4},
        {"R/P1D", 5}, {"R5/2009-01-01/2009-01-02", 6}, {"R5/2009-01-01/P1D", 7},
        {"R5/P1D/2009-01-01", 8}, {"R5-P1D", 9}, {"R5", 9}, {"", 9}, {"x/y", 2}, {"10:00/xP", 3},
    };
    for (const auto& c : cases) EXPECT_EQ(kivClassifyTimeText(w.get(), c.text), c.form) << c.text;
    EXPECT_EQ(kivClassifyTimeText(nullptr, "10:00"), 9);
}

TEST(TimeTextParse, PointFields) {
    TestWorld w;
    constexpr uint16_t ymd = KIV_TF_YEAR | KIV_TF_MONTH | KIV_TF_DAY;
    constexpr uint16_t hm = KIV_TF_HOUR | KIV_TF_MINUTE;
    const struct { const char* text; KivTimeFields fields; } cases[] = {
        {"2009-02-28T23:59:60,250-01:30",
         {.flags = ymd | hm | KIV_TF_SECOND | KIV_TF_FRACTION | KIV_TF_ZONE, .year = 2009,
          .month = 2, .day = 28, .hours = 23, .minutes = 59, .seconds = 60,
          .fractionDigits = 3, .fraction = 250, .zoneFlags = KIV_TF_ZONE_MINUTES,
          .zoneHours = 1, .zoneMinutes = 30, .zoneNegative = 1}},
        {"2009-W05-3", {.flags = KIV_TF_YEAR | KIV_TF_WEEK | KIV_TF_DAY, .year = 2009, .week = 5, .day = 3}},
        // Ordinal days run to 366 in every year.
        {"2009-366", {.flags = KIV_TF_YEAR | KIV_TF_DAY, .year = 2009, .day = 366}},
        {"20C", {.flags = KIV_TF_CENTURY, .century = 20}}, {"-05C", {.flags = KIV_TF_CENTURY, .century = -5}},
        {"-0005", {.flags = KIV_TF_YEAR, .year = -5}}, {"20090101", {.flags = KIV_TF_YEAR, .year = 20090101}},
        {"-2147483648", {.flags = KIV_TF_YEAR, .year = INT32_MIN}},
        {"12:00+15:30", {.flags = hm | KIV_TF_ZONE, .hours = 12, .zoneFlags = KIV_TF_ZONE_MINUTES,
                         .zoneHours = 15, .zoneMinutes = 30}},
        {"10Z", {.flags = KIV_TF_HOUR | KIV_TF_UTC, .hours = 10}},
        {"24:00:00.000", {.flags = hm | KIV_TF_SECOND | KIV_TF_FRACTION, .hours = 24, .fractionDigits = 3}},
    };
    for (const auto& c : cases) {
        int32_t rc;
        KivTimeFields f = point(w.get(), c.text, &rc);  // starts out filled with 0xAB
        EXPECT_EQ(rc, 0) << c.text;
        EXPECT_EQ(describe(f), describe(c.fields)) << c.text;
    }
}

TEST(TimeTextParse, PointRejectionsAndLeapDays) {
    TestWorld w;
    const char* bad[] = {
        "20CT10:00",  "1C",          "-05",          "+10:00",       "2009-01T10:00",
        "2009T10:00", "T10:00",      "2009-W54",     "2009-W00",     "2009-W05-8",
        "2009-W5",    "2009-035-01", "2009-1-1",     "2009-13",      "2009-0101",
        "24:01",      "24:00:01",    "24:00,5",      "25:00",        "10:60",
        "10:00:61",   "10:00+16",    "10:00+01:60",  "10:00+1",      "10:00Z+01",
        "10.",        "10:00:00.",   "10:00:",       "4294967296",   "2147483648",
        "",           "2009-01-01T", "2009-01-01 ",  "10:00/",       "-2147483649",
        // Leap days by the Gregorian rule on the signed year.
        "2009-02-29", "1900-02-29",  "-0001-02-29",  "2009-04-31",
    };
    int32_t rc;
    for (const char* text : bad) {
        point(w.get(), text, &rc);
        EXPECT_EQ(rc, 12) << text;
    }
    for (const char* ok : {"2008-02-29", "2000-02-29", "-0004-02-29", "2009-04-30"}) {
        point(w.get(), ok, &rc);
        EXPECT_EQ(rc, 0) << ok;
    }
}

TEST(TimeTextParse, NullArgumentsGiveTwelve) {
    TestWorld w;
    KivTimeFields a, b;
    KivDurationFields d;
    EXPECT_EQ(kivParseTimePoint(nullptr, "10:00", &a), 12);
    EXPECT_EQ(kivParseTimePoint(w.get(), nullptr, &a), 12);
    EXPECT_EQ(kivParseTimePoint(w.get(), "10:00", nullptr), 12);
    EXPECT_EQ(kivParseDuration(w.get(), "P1D", nullptr), 12);
    EXPECT_EQ(kivParseStartEnd(w.get(), "10:00/11:00", &a, nullptr), 12);
    EXPECT_EQ(kivParseStartDuration(w.get(), "10:00/P1D", nullptr, &d), 12);
    EXPECT_EQ(kivParseDurationEnd(w.get(), "P1D/10:00", &d, nullptr), 12);
    EXPECT_EQ(kivParseRecurringDuration(w.get(), "R/P1D", &d, nullptr), 12);
    EXPECT_EQ(kivParseRecurringStartEnd(w.get(), "R/10:00/11:00", &a, &b, nullptr), 12);
    EXPECT_EQ(kivParseRecurringStartDuration(w.get(), "R/10:00/P1D", &a, &d, nullptr), 12);
    EXPECT_EQ(kivParseRecurringDurationEnd(w.get(), "R/P1D/10:00", &d, &b, nullptr), 12);
    EXPECT_EQ(kivScanDuration(nullptr, &d, 0), nullptr);
}

TEST(TimeTextParse, DurationFields) {
    constexpr uint32_t hms = KIV_DF_HOURS | KIV_DF_MINUTES | KIV_DF_SECONDS;
    const struct { const char* text; uint8_t skipZero; KivDurationFields fields; } cases[] = {
        {"P0Y1M", 0, {.flags = KIV_DF_YEARS | KIV_DF_MONTHS, .months = 1}},
        {"P0Y1M", 1, {.flags = KIV_DF_MONTHS, .months = 1}},
        {"P1Y0M", 1, {.flags = KIV_DF_YEARS | KIV_DF_MONTHS, .years = 1}},
        {"PT0H0M0S", 1, {.flags = KIV_DF_SECONDS}},
        {"P1DT2H3M4,5S", 0,
         {.flags = KIV_DF_DAYS | hms | KIV_DF_FRACTION, .days = 1, .hours = 2, .minutes = 3,
          .seconds = 4, .fractionDigits = 1, .fraction = 5}},
        {"P2W", 0, {.flags = KIV_DF_WEEKS, .weeks = 2}},
        {"P4294967295Y", 0, {.flags = KIV_DF_YEARS, .years = 4294967295u}},
    };
    for (const auto& c : cases) {
        const char* end;
        KivDurationFields d = scan(c.text, c.skipZero, &end);
        ASSERT_NE(end, nullptr) << c.text;
        EXPECT_EQ(*end, '\0') << c.text;
        EXPECT_EQ(describe(d), describe(c.fields)) << c.text << " skip " << int{c.skipZero};
    }
}

TEST(TimeTextParse, DurationStopsWhereItEnds) {
    // The scan hands back the character after the duration and no more.
    const struct { const char* text; size_t taken; } cases[] = {
        {"P1D/", 3}, {"P1WT1H", 3}, {"P1.5Y2M", 5}, {"PT1S2", 4}, {"P1Dx", 3}, {"P1M", 3},
    };
    for (const auto& c : cases) {
        const char* end;
        scan(c.text, 0, &end);
        ASSERT_NE(end, nullptr) << c.text;
        EXPECT_EQ(static_cast<size_t>(end - c.text), c.taken) << c.text;
    }
    TestWorld w;
    KivDurationFields d;
    EXPECT_EQ(kivParseDuration(w.get(), "P1D/", &d), 12);
    EXPECT_EQ(kivParseDuration(w.get(), "P1D", &d), 0);
}

TEST(TimeTextParse, DurationRejections) {
    for (const char* bad : {"PTH", "PT", "P", "P1", "P1D2H", "P1M1Y", "P1YT", "P1DTT1H",
                            "PT1HT1M", "P01D", "PT1H1H", "P1Y1W", "PT1W", "PT1D", "P1.D",
                            "P4294967296Y", "1D", "P1.5", "PT1H2H"}) {
        const char* end;
        scan(bad, 0, &end);
        EXPECT_EQ(end, nullptr) << bad;
    }
    const char* end;
    scan("P0D", 0, &end);
    EXPECT_NE(end, nullptr) << "a lone zero is no leading zero";
}

TEST(TimeTextParse, IntervalsNeedMatchingPointFlags) {
    TestWorld w;
    KivTimeFields s, e;
    EXPECT_EQ((std::tuple{kivParseStartEnd(w.get(), "2009-01-01T10:00+01:00/2009-01-01T12:00", &s, &e),
                          s.zoneMinutes, e.hours}), std::tuple(0, 0, 12));
    EXPECT_EQ(kivParseStartEnd(w.get(), "2009-01-01T10:00/2009-01-01T12:00Z", &s, &e), 12);
    EXPECT_EQ(kivParseStartEnd(w.get(), "2009-01-01/2009-01-01T12:00", &s, &e), 12);
    EXPECT_EQ(kivParseStartEnd(w.get(), "2009-01-01T10:00/2009-01-01T12:00+01", &s, &e), 12)
        << "only the end may lack the time difference";
    EXPECT_EQ(kivParseStartEnd(w.get(), "2009-02-01/2009-01-01", &s, &e), 0) << "no order is required";

    KivDurationFields d;
    EXPECT_EQ((std::tuple{kivParseStartDuration(w.get(), "2009-01-01/P1Y0M", &s, &d), d.flags}),
              std::tuple(0, KIV_DF_YEARS | KIV_DF_MONTHS)) << "every written component flagged";
    EXPECT_EQ(kivParseStartDuration(w.get(), "2009-01-01/P1Y/", &s, &d), 12);
    EXPECT_EQ((std::tuple{kivParseDurationEnd(w.get(), "PT1H/10:00Z", &d, &e), e.flags}),
              std::tuple(0, KIV_TF_HOUR | KIV_TF_MINUTE | KIV_TF_UTC));
    EXPECT_EQ(kivParseDurationEnd(w.get(), "PT1H10:00Z", &d, &e), 12);
}

TEST(TimeTextParse, RecurrenceCounts) {
    TestWorld w;
    KivDurationFields d;
    KivTimeFields s, e;
    int32_t n = 99;
    // The answer and the count.
    auto counted = [&](const char* text) {
        int32_t rc = kivParseRecurringDuration(w.get(), text, &d, &n);
        return std::pair(rc, n);
    };
    EXPECT_EQ(counted("R/PT1H"), std::pair(0, -1));
    EXPECT_EQ((std::tuple{counted("R12/PT1H"), d.hours}), std::tuple(std::pair(0, 12), 1u));
    EXPECT_EQ(counted("R2147483647/PT1H"), std::pair(0, INT32_MAX));
    for (const char* bad : {"R0/PT1H", "R012/PT1H", "R2147483648/PT1H", "RPT1H", "R1PT1H"})
        EXPECT_EQ(counted(bad).first, 12) << bad;

    EXPECT_EQ((std::tuple{kivParseRecurringStartEnd(w.get(), "R3/10:00+01/12:00", &s, &e, &n), n}), std::tuple(0, 3));
    EXPECT_EQ(kivParseRecurringStartEnd(w.get(), "R3/10:00/12:00+01", &s, &e, &n), 12);
    EXPECT_EQ((std::tuple{kivParseRecurringStartDuration(w.get(), "R/2009-035/P2W", &s, &d, &n), s.day, d.weeks}),
              std::tuple(0, 35, 2u));
    EXPECT_EQ((std::tuple{kivParseRecurringDurationEnd(w.get(), "R7/P1M/2009-W01", &d, &e, &n), n, e.week}),
              std::tuple(0, 7, 1));
    EXPECT_EQ(kivParseRecurringDurationEnd(w.get(), "R7/P1M/2009-W01/", &d, &e, &n), 12);
}

TEST(TimeTextDigits, ScanRunsAndFixedCounts) {
    uint32_t v = 99;
    const char* t = "0123abc";
    EXPECT_EQ(kivScanDigits(t, &v), t + 4);
    EXPECT_EQ(v, 123u);
    t = "abc";
    EXPECT_EQ(kivScanDigits(t, &v), t);
    EXPECT_EQ(v, 0u);
    t = "4294967295";
    EXPECT_EQ(kivScanDigits(t, &v), t + 10);
    EXPECT_EQ(v, 4294967295u);
    EXPECT_EQ(kivScanDigits("4294967296", &v), nullptr);

    t = "12345";
    EXPECT_EQ(kivScanFixedDigits(t, 3, &v), t + 3);
    EXPECT_EQ(v, 123u);
    EXPECT_EQ(kivScanFixedDigits("1a", 2, &v), nullptr);
    EXPECT_EQ(kivScanFixedDigits("1", 2, &v), nullptr) << "the terminator is no digit";
    EXPECT_EQ(kivScanFixedDigits(t, 0, &v), t);
}

TEST(TimeTextDigits, WritersPadAndAppendNothing) {
    char b[16];
    std::memset(b, 'x', sizeof b);
    EXPECT_EQ(kivPutDigitsMin(b, 0, 0), b) << "0 with width 0 writes nothing";
    EXPECT_EQ(b[0], 'x');
    EXPECT_EQ(kivPutDigitsMin(b, 3, 7), b + 3);
    EXPECT_EQ(std::string(b, 4), "007x");
    EXPECT_EQ(kivPutDigitsMin(b, 1, 4294967295u), b + 10);
    EXPECT_EQ(std::string(b, 11), "4294967295x");
    std::memset(b, 'x', sizeof b);
    EXPECT_EQ(kivPutDigitsFixed(b, 2, 12345), b + 2);
    EXPECT_EQ(std::string(b, 3), "45x");
    EXPECT_EQ(kivPutDigitsFixed(b, 4, 7), b + 4);
    EXPECT_EQ(std::string(b, 5), "0007x");
    EXPECT_EQ(kivPutDigitsFixed(b, 0, 7), b);
}
