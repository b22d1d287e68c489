// The TIME value parser: the record it fills, and every failure raised with
// its message and number.
#include <gtest/gtest.h>

#include <tuple>
#include <utility>

#include "time_test_support.h"

namespace {

using fenk::test::TimeValueParser;

std::string outOfRange(const char* what, const std::string& number) {
    return "D0012S: Out-of-range value in time type. " + std::string(what) + " = " + number + ".\n";
}

const std::string kBadValue = "D0012S: Out-of-range value in time type.\n";

std::string tooLong(int digits) {
    return "D0144E: Integer or enumerated value too long: length = " + std::to_string(digits) + ".\n";
}

struct Failure { const char* text; std::string message; };

void expectFailures(std::initializer_list<Failure> failures) {
    TimeValueParser parser;
    for (const Failure& f : failures) {
        KivTimeValue v;
        auto outcome = parser.parse(f.text, &v);
        const int code = f.message.find("0144E") != std::string::npos ? 10 : 12;
        EXPECT_EQ(std::tuple(outcome.raised, outcome.code, outcome.message), std::tuple(true, code, f.message)) << f.text;
    }
}

TEST(TimeValueParse, RecurrencesAndTheShapeOfTheValue) {
    TimeValueParser p;
    KivTimeValue v = p.value("R/P1D");
    EXPECT_EQ(std::tuple(v.kind, v.recurrences, v.recurrenceDigits), std::tuple(0x90, 0xFFFFFFFFu, 0));
    v = p.value("R12/2009-01-01/P1D");
    EXPECT_EQ(std::tuple(v.kind, v.recurrences, v.recurrenceDigits), std::tuple(0xC8, 12u, 2));
    EXPECT_EQ(v.second.duration.days, 1u);
    v = p.value("R4294967295/P1D/2009-01-01");
    EXPECT_EQ(std::tuple(v.kind, v.recurrences), std::tuple(0xB0, 0xFFFFFFFFu));
    const std::pair<const char*, int> kinds[] = {{"P1D/2009-01-01", 0x30}, {"2009-01-01/2009-01-02", 0x60},
                                                 {"2009-01-01/P1D", 0x48}, {"PT1H", 0x10}, {"12", 0x40}};
    for (auto [text, kind] : kinds) EXPECT_EQ(p.value(text).kind, kind) << text;
}

TEST(TimeValueParse, WritesOnlyWhatTheValueHas) {
    TimeValueParser p;
    KivTimeValue v;
    std::memset(&v, 0xAB, sizeof v);
    ASSERT_FALSE(p.parse("2009-05-01", &v).raised);
    // Not recurring, no second component: left as they were.
    EXPECT_EQ(std::tuple(v.kind, v.recurrenceDigits, v.recurrences, v.second.duration.years),
              std::tuple(0x40, 0xABAB, 0xABABABABu, 0xABABABABu));
    // The component is cleared before it is filled: no time of day.
    KivTimeOfDayPart zero{};
    EXPECT_EQ(std::memcmp(&v.first.point.timeOfDay, &zero, sizeof zero), 0);
    const KivDatePart& d = v.first.point.date;
    EXPECT_EQ(std::tuple(d.flags, d.yearDigits, d.year, d.month, d.day, d.week),
              std::tuple(0x40 | 0x10 | 0x08 | 0x04, 4, 2009, 5, 1, 0));
}

TEST(TimeValueParse, YearsAndCenturiesWithTheirClasses) {
    struct Case { const char* text; uint8_t flags; int32_t year; uint16_t digits; };
    const Case cases[] = {
        {"20C", 0x84, 20, 2},           {"14C", 0x82, 14, 2},          {"00C", 0x82, 0, 2},
        {"-05C", 0x81, -5, 2},          {"-99C", 0x81, -99, 2},        {"-100C", 0x80, -100, 3},
        {"123C", 0x80, 123, 3},         {"+15C", 0x84, 15, 2},         {"1581", 0x42, 1581, 4},
        {"1582", 0x44, 1582, 4},        {"9999", 0x44, 9999, 4},       {"0000", 0x42, 0, 4},
        {"-0005", 0x41, -5, 4},         {"-9999", 0x41, -9999, 4},     {"-10000", 0x40, -10000, 5},
        {"12345", 0x40, 12345, 5},      {"+2009", 0x44, 2009, 4},      {"2147483647", 0x40, 2147483647, 10},
        {"-2147483647C", 0x80, -2147483647, 10},
    };
    TimeValueParser p;
    for (const Case& c : cases) {
        KivDatePart d = p.value(c.text).first.point.date;
        EXPECT_EQ(std::tuple(d.flags, d.year, d.yearDigits), std::tuple(c.flags, c.year, c.digits)) << c.text;
    }
}

TEST(TimeValueParse, WeeksOrdinalDaysAndLeapYears) {
    TimeValueParser p;
    KivDatePart d = p.value("2009-W53-7").first.point.date;
    EXPECT_EQ(std::tuple(d.flags, d.week, d.day), std::tuple(0x40 | 0x20 | 0x08 | 0x04, 53, 7));
    d = p.value("2000-060").first.point.date;
    EXPECT_EQ(std::tuple(d.flags, d.day), std::tuple(0x40 | 0x08 | 0x04, 60));
    EXPECT_EQ(p.value("2009-W01").first.point.date.flags, 0x40 | 0x20 | 0x04);
    // Leap days by the Gregorian rule, negative years included.
    for (const char* text : {"2008-02-29", "2000-02-29", "-0004-02-29", "-0400-02-29", "0000-02-29",
                             "2008-366", "-0004-366", "2009-365", "2009-12-31", "2009-04-30"})
        EXPECT_NE(p.value(text).first.point.date.day, 0) << text;
    expectFailures({{"2009-02-29", outOfRange("Day", "29")}, {"1900-02-29", outOfRange("Day", "29")},
                    {"-0100-02-29", outOfRange("Day", "29")}, {"-0001-366", outOfRange("Day", "366")},
                    {"2009-366", outOfRange("Day", "366")}, {"2009-000", outOfRange("Day", "0")},
                    {"2009-04-31", outOfRange("Day", "31")}, {"2009-04-1", outOfRange("Day", "1")},
                    {"2009-W01-8", outOfRange("Day", "8")}, {"2009-W01-01", outOfRange("Day", "1")},
                    {"2009-W54", outOfRange("Week", "54")}, {"2009-W1", outOfRange("Week", "1")},
                    {"2009-13", outOfRange("Month", "13")}, {"2009-1", outOfRange("Month", "1")},
                    {"2009-0001", outOfRange("Month", "1")}, {"2009-060-01", kBadValue},
                    {"2009-", kBadValue}, {"2009-W", kBadValue}, {"2009-05-", kBadValue}});
}

TEST(TimeValueParse, YearAndCenturyFailures) {
    expectFailures({{"012345", outOfRange("Year", "12345")}, {"+123", outOfRange("Year", "123")},
                    {"-1", outOfRange("Year", "1")}, {"-", kBadValue}, {"+", kBadValue},
                    {"2147483648", outOfRange("Year", "-2147483648")},  // shown signed
                    {"1C", outOfRange("Century", "1")}, {"012C", outOfRange("Century", "12")},
                    {"2147483648C", outOfRange("Century", "-2147483648")}, {"20CT10", kBadValue},
                    {"2009T10", kBadValue}, {"2009-05T10", kBadValue},
                    {"2009-W05T10", kBadValue}});
}

TEST(TimeValueParse, TimesOfDayAndTimeDifferences) {
    TimeValueParser p;
    KivTimeOfDayPart t = p.value("2009-05-01T10:15:30,250-05:30").first.point.timeOfDay;
    EXPECT_EQ(std::tuple(t.flags, t.hours, t.minutes, t.seconds, t.fractionDigits, t.fraction,
                         t.zoneFlags, t.zoneHours, t.zoneMinutes),
              std::tuple(0xF4, 10, 15, 30, 3, 250u, 0xC0, 5, 30));
    t = p.value("10.05Z").first.point.timeOfDay;
    EXPECT_EQ(std::tuple(t.flags, t.fractionDigits, t.fraction, t.zoneFlags), std::tuple(0x98, 2, 5u, 0));
    EXPECT_EQ(p.value("10:00+01").first.point.timeOfDay.zoneFlags, 0);
    EXPECT_EQ(p.value("12:00:00.0000000001").first.point.timeOfDay.fractionDigits, 10);
    EXPECT_EQ(p.value("00").first.point.date.flags, 0);  // two digits are hours, not a year
    // Boundaries that are accepted.
    for (const char* text : {"24:00:00", "24:00", "24", "24:00:00,000", "23:59:60", "12:00+15:00",
                             "12:00-15", "12:00+00:59", "12:00-00:00"})
        EXPECT_NE(p.value(text).first.point.timeOfDay.flags, 0) << text;

    expectFailures({{"24:00:01", outOfRange("Second", "1")}, {"24:01", outOfRange("Minute", "1")},
                    {"24:00,5", kBadValue}, {"25", outOfRange("Hour", "25")},
                    {"1", outOfRange("Hour", "1")}, {"123:00", outOfRange("Hour", "123")},
                    {"12:60", outOfRange("Minute", "60")}, {"12:00:61", outOfRange("Second", "61")},
                    {"12:00:5", outOfRange("Second", "5")}, {"12:00+15:30", outOfRange("Minute", "30")},
                    {"12:00-16", outOfRange("Hour", "-16")}, {"12:00+16", outOfRange("Hour", "16")},
                    {"12:00-1", outOfRange("Hour", "-1")}, {"12:00+0100", outOfRange("Hour", "100")},
                    {"12:00+05:60", outOfRange("Minute", "60")}, {"12:00+", kBadValue},
                    {"12:00.", kBadValue}, {"T10:00", kBadValue}, {"", kBadValue},
                    {"12:00Z+01", kBadValue}, {"2009-05-01T", kBadValue}});
}

TEST(TimeValueParse, Durations) {
    struct Case {
        const char* text;
        uint8_t flags, last;
        uint32_t years, months, weeks, days, hours, minutes, seconds;
        uint16_t fractionDigits;
        uint32_t fraction;
    };
    const Case cases[] = {
        {"P1Y0M", 0xC0, 0x40, 1, 0, 0, 0, 0, 0, 0, 0, 0},      {"P0Y1M", 0x40, 0x40, 0, 1, 0, 0, 0, 0, 0, 0, 0},
        {"PT0S", 0x02, 0x02, 0, 0, 0, 0, 0, 0, 0, 0, 0},       {"P0W", 0x20, 0x20, 0, 0, 0, 0, 0, 0, 0, 0, 0},
        {"P2W", 0x20, 0x20, 0, 0, 2, 0, 0, 0, 0, 0, 0},        {"PT1,5H", 0x09, 0x08, 0, 0, 0, 0, 1, 0, 0, 1, 5},
        {"P1Y2M3DT4H5M6.75S", 0xDF, 0x02, 1, 2, 0, 3, 4, 5, 6, 2, 75},
        {"P0Y0M0DT0H0M", 0x04, 0x04, 0, 0, 0, 0, 0, 0, 0, 0, 0}, {"P1DT0.0M", 0x15, 0x04, 0, 0, 0, 1, 0, 0, 0, 1, 0},
        {"P4294967295D", 0x10, 0x10, 0, 0, 0, 4294967295u, 0, 0, 0, 0, 0},
        {"P1M", 0x40, 0x40, 0, 1, 0, 0, 0, 0, 0, 0, 0},        {"PT1M", 0x04, 0x04, 0, 0, 0, 0, 0, 1, 0, 0, 0},
    };
    TimeValueParser p;
    for (const Case& c : cases) {
        KivDurationPart d = p.value(c.text).first.duration;
        EXPECT_EQ(std::tuple(d.flags, d.last, d.years, d.months, d.weeks, d.days, d.hours, d.minutes, d.seconds,
                             d.fractionDigits, d.fraction),
                  std::tuple(c.flags, c.last, c.years, c.months, c.weeks, c.days, c.hours, c.minutes, c.seconds,
                             c.fractionDigits, c.fraction)) << c.text;
    }
    expectFailures({{"P1W2D", kBadValue},  {"P01D", kBadValue},    {"PT1.5H30M", kBadValue},
                    {"P", kBadValue},      {"PT", kBadValue},      {"P1", kBadValue},
                    {"PT1HT1M", kBadValue}, {"P1M1Y", kBadValue},  {"P1Y1W", kBadValue},
                    {"P1H", kBadValue},    {"PT1D", kBadValue},    {"P1D/P1D", kBadValue}});
}

TEST(TimeValueParse, EveryKindOfDigitRunOverflowsAt32Bits) {
    // 4294967295 still fits; the tenth digit of 9999999999 does not.
    TimeValueParser p;
    EXPECT_EQ(p.value("P4294967295DT4294967295H").first.duration.hours, 4294967295u);
    EXPECT_EQ(p.value("12:00:00.4294967295").first.point.timeOfDay.fraction, 4294967295u);
    expectFailures({{"R99999999999/P1D", tooLong(9)},      {"99999999999", tooLong(9)},
                    {"-4294967296", tooLong(9)},           {"99999999999C", tooLong(9)},
                    {"2009-W99999999999", tooLong(9)},     {"2009-99999999999", tooLong(9)},
                    {"2009-05-99999999999", tooLong(9)},   {"2009-05-01T99999999999", tooLong(9)},
                    {"12:99999999999", tooLong(9)},        {"12:00:99999999999", tooLong(9)},
                    {"12:00:00.4294967296", tooLong(9)},   {"12:00+99999999999", tooLong(9)},
                    {"12:00-01:99999999999", tooLong(9)},  {"P4294967296D", tooLong(9)},
                    {"PT1.99999999999S", tooLong(9)}});
}

TEST(TimeValueParse, WholeValueFailures) {
    expectFailures({{"R0/P1D", kBadValue}, {"R05/P1D", kBadValue}, {"R5/2009-01-01", kBadValue},
                    {"R5P1D", kBadValue}, {"R", kBadValue}, {"2009-01-01x", kBadValue},
                    {"2009-01-01/", kBadValue}, {"2009-01-01/2009-01-02/P1D", kBadValue},
                    // Start later than end, or points of different components.
                    {"2009-01-02/2009-01-01", kBadValue}, {"2009-01-01/2009-01-02T10:00", kBadValue},
                    {"2009-01-01T10:00Z/2009-01-01T11:00", kBadValue},
                    {"2009-01-01T10:00,5/2009-01-01T11:00,50", kBadValue},
                    // Time differences are set aside, not applied.
                    {"2009-01-01T10:00+01:00/2009-01-01T09:30-01:00", kBadValue}});
}

TEST(TimeValueParse, StartAndEndSetTheirTimeDifferencesAsideOnlyForTheCheck) {
    TimeValueParser p;
    KivTimeValue v = p.value("2009-01-01T10:00+01:00/2009-01-01T10:00");
    EXPECT_EQ(std::tuple(v.first.point.timeOfDay.flags, v.second.point.timeOfDay.flags), std::tuple(0xC4, 0xC0));
    v = p.value("2009-01-01T10:00-01:00/2009-01-01T11:00+02:00");
    EXPECT_EQ(std::tuple(v.first.point.timeOfDay.flags, v.second.point.timeOfDay.flags,
                         v.second.point.timeOfDay.zoneHours),
              std::tuple(0xC4, 0xC4, 2));
    // Years of different classes are the same components.
    EXPECT_EQ(p.value("1581-12-31/1582-01-01").kind, 0x60);
    EXPECT_EQ(p.value("20C/20C").kind, 0x60);
}

}  // namespace
