// The property-settings checks (slots 327 to 335) on parsed values: which
// rule fails first, with which text, and that a pass leaves the text alone.
#include <gtest/gtest.h>

#include "time_test_support.h"

namespace {

using fenk::test::TimeValueParser;

const char* const kUntouched = "(untouched)";

// "" for a pass (and the out-pointer must be untouched), else the text.
template <class Check>
std::string outcome(Check check) {
    const char* text = kUntouched;
    int32_t r = check(&text);
    if (r == 0) return text == kUntouched ? "" : "(pass, but the text was written)";
    if (r != 1) return "(answered " + std::to_string(r) + ")";
    return text ? text : "(null)";
}

struct Checks {
    TimeValueParser parser;
    KivTimeValue v{};

    Checks& on(const char* text) {
        v = parser.value(text);
        return *this;
    }
    // The check on the value with its settings, then the text out-pointer.
    template <class Check, class... Settings>
    std::string run(Check check, Settings... settings) {
        return outcome([&](const char** t) { return check(&v, settings..., t); });
    }
    std::string interval(uint32_t s, uint16_t r) { return run(kivCheckIntervalSettings, s, r); }
    std::string pointDate(uint32_t s, uint16_t d) { return run(kivCheckPointDateSettings, s, d); }
    std::string pointTime(uint32_t s, uint16_t f) { return run(kivCheckPointTimeSettings, s, f); }
    std::string recurring(uint32_t s, uint16_t r) { return run(kivCheckRecurringInterval, s, r); }
    std::string timeInterval(uint32_t s) { return run(kivCheckTimeInterval, s); }
    std::string dateOnly(uint32_t s, uint16_t d) { return run(kivCheckDateOnly, s, d); }
    std::string timeOnly(uint32_t s, uint16_t f) { return run(kivCheckTimeOfDayOnly, s, f); }
    std::string dateAndTime() { return run(kivCheckDateAndTime); }
    std::string recurrenceDigits(uint16_t lo, uint16_t hi) { return run(kivCheckRecurrenceDigits, lo, hi); }
};

TEST(TimeSettingsChecks, DateRulesInTheirOrder) {
    Checks c;
    EXPECT_EQ(c.on("2009-05-01T10:00").dateOnly(0, 0), "the value shall be a date only");
    EXPECT_EQ(c.on("2009-05-01/2009-05-02").dateOnly(0, 0), "the value shall be a date only");
    EXPECT_EQ(c.on("2009-05-01").dateOnly(0x0080 | 0x0100 | 0x0200 | 0x1000, 0), "");
    EXPECT_EQ(c.on("2009-05-01").dateOnly(0x0080 | 0x0400, 0), "the date shall not have a month component");
    EXPECT_EQ(c.on("2009-W05").dateOnly(0x0080 | 0x0400, 0), "");
    EXPECT_EQ(c.on("2009-W05").dateOnly(0x0080 | 0x0400 | 0x0200, 0), "the date shall have a day component");
    EXPECT_EQ(c.on("2009-W05").dateOnly(0x0080 | 0x0100, 0), "the date shall have a month component");
    EXPECT_EQ(c.on("2009-W05").dateOnly(0x0080, 0), "the date shall not have a week component");
    EXPECT_EQ(c.on("2009-123").dateOnly(0x0080, 0), "the date shall not have a day component");
    EXPECT_EQ(c.on("20C").dateOnly(0x0080, 0), "the date shall have a year component");
    EXPECT_EQ(c.on("2009").dateOnly(0x0800, 0), "the date shall represent only a century");
    // Without 0x0080 the components are not looked at.
    EXPECT_EQ(c.on("2009-123").dateOnly(0, 0), "");

    EXPECT_EQ(c.on("19C").dateOnly(0x0800 | 0x1000, 0), "");
    EXPECT_EQ(c.on("19C").dateOnly(0x0800 | 0x2000, 0),
              "the century identification shall be a century in the proleptic Gregorian Calendar in the range 0 to 14");
    EXPECT_EQ(c.on("14C").dateOnly(0x1000, 0),
              "the century identification shall be a non-proleptic century in the range 15 to 99");
    EXPECT_EQ(c.on("-100C").dateOnly(0x4000, 0),
              "the century identification shall be a negative century in the range -99 to -1");
    EXPECT_EQ(c.on("1581").dateOnly(0x1000, 0),
              "the year identification shall be a non-proleptic year in the range 1582 to 9999");
    EXPECT_EQ(c.on("1582").dateOnly(0x2000, 0),
              "the year identification shall be a year in the proleptic Gregorian Calendar in the range 0 to 1581");
    for (const char* year : {"-0000", "-10000"})
        EXPECT_EQ(c.on(year).dateOnly(0x4000, 0), "the year identification shall be a negative year in the range -9999 to -1");
    // Only the first range bit counts.
    EXPECT_EQ(c.on("2009").dateOnly(0x1000 | 0x2000, 0), "");
    EXPECT_EQ(c.on("12345-01-01").dateOnly(0x8000, 5), "");
    EXPECT_EQ(c.on("12345-01-01").dateOnly(0x8000, 6), "the large year identification has an incorrect number of digits");
    EXPECT_EQ(c.on("123C").dateOnly(0x8000, 5), "");
    EXPECT_EQ(c.on("123C").dateOnly(0x8000, 3), "the large century identification has incorrect number of digits");
}

TEST(TimeSettingsChecks, TimeRulesInTheirOrder) {
    Checks c;
    const uint32_t hm = 0x0080 | 0x0100;
    EXPECT_EQ(c.on("2009-05-01T10:00").timeOnly(0, 0), "the value shall be a time-of-day only");
    EXPECT_EQ(c.on("24:00").timeOnly(hm | 0x4000, 0), "the time-of-day shall represent midnight at the start of a day");
    EXPECT_EQ(c.on("00:00").timeOnly(hm | 0x8000, 0), "the time-of-day shall represent midnight at the end of a day");
    EXPECT_EQ(c.on("00:00.001").timeOnly(0x8000, 0), "");
    EXPECT_EQ(c.on("00:00").timeOnly(0x4000 | 0x8000, 0), "");  // 0x4000 decides
    EXPECT_EQ(c.on("10:00:00.50").timeOnly(hm | 0x0200 | 0x0040, 3),
              "the decimal fraction component has incorrect number of digits");
    EXPECT_EQ(c.on("10:00:00").timeOnly(hm | 0x0200 | 0x0040, 0), "the time-of-day shall have a decimal fraction component");
    EXPECT_EQ(c.on("10:00.5").timeOnly(hm, 0), "the time-of-day shall not have a decimal fraction component");
    EXPECT_EQ(c.on("10").timeOnly(hm, 0), "the time-of-day shall have a minutes component");
    EXPECT_EQ(c.on("10:00").timeOnly(hm | 0x0200, 0), "the time-of-day shall have a seconds component");
    EXPECT_EQ(c.on("10:00:00").timeOnly(hm, 0), "the time-of-day shall not have a seconds component");
    // Minutes forbidden: the seconds are not looked at, the fraction is.
    EXPECT_EQ(c.on("10:00:00").timeOnly(0x0080, 0), "the time-of-day shall not have a minutes component");
    EXPECT_EQ(c.on("10.5").timeOnly(0x0080 | 0x0200, 0), "the time-of-day shall not have a decimal fraction component");
    EXPECT_EQ(c.on("10:00Z").timeOnly(0x0400, 0), "the time-of-day shall specify a local time only");
    EXPECT_EQ(c.on("10:00+01").timeOnly(0x0800, 0), "the time-of-day shall specify a UTC time only");
    EXPECT_EQ(c.on("10:00Z").timeOnly(0x1000, 0),
              "the time-of-day shall specify a local time and a time difference component");
    EXPECT_EQ(c.on("10:00Z").timeOnly(0x0800 | 0x1000, 0), "");
    // Components come before the zone, the zone before midnight.
    EXPECT_EQ(c.on("24Z").timeOnly(hm | 0x0400 | 0x4000, 0), "the time-of-day shall have a minutes component");
    EXPECT_EQ(c.on("24:00Z").timeOnly(hm | 0x0400 | 0x4000, 0), "the time-of-day shall specify a local time only");
}

TEST(TimeSettingsChecks, PointChecksReadTheStartOrElseTheEnd) {
    Checks c;
    EXPECT_EQ(c.on("P1D").pointDate(0x0800, 0), "");
    EXPECT_EQ(c.on("10:00").pointDate(0x0800, 0), "");
    EXPECT_EQ(c.on("2009-05-01/P1D").pointDate(0x0800, 0), "the date shall represent only a century");
    EXPECT_EQ(c.on("P1D/2009-05-01").pointDate(0x0800, 0), "the date shall represent only a century");
    EXPECT_EQ(c.on("2009-05-01T10:00").pointTime(0x0400, 0), "");
    EXPECT_EQ(c.on("2009-05-01T10:00Z").pointTime(0x0400, 0), "the time-of-day shall specify a local time only");
    EXPECT_EQ(c.on("P1D/2009-05-01T10:00Z").pointTime(0x0400, 0), "the time-of-day shall specify a local time only");
    EXPECT_EQ(c.on("2009-05-01").pointTime(0x0080, 0), "");
    // The end point of a start/end value meets the midnight rule alone.
    EXPECT_EQ(c.on("2009-05-01T10:00Z/2009-05-02T00:00Z").pointTime(0x0800 | 0x8000, 0),
              "the time-of-day shall represent midnight at the end of a day");
    EXPECT_EQ(c.on("2009-05-01T10:00/2009-05-02T24:00").pointTime(0x4000, 0),
              "the time-of-day shall represent midnight at the start of a day");
    EXPECT_EQ(c.on("2009-05-01T24:00/2009-05-02T10:00").pointTime(0x8000, 0), "");
    EXPECT_EQ(c.on("2009-05-01T10:00/2009-05-02T11:00").pointTime(0x0080 | 0x0100 | 0x0200, 0),
              "the time-of-day shall have a seconds component");

    EXPECT_EQ(c.on("2009-05-01T10:00").dateAndTime(), "");
    EXPECT_EQ(c.on("2009-05-01").dateAndTime(), "the value shall be a date and a time-of-day");
    EXPECT_EQ(c.on("2009-05-01T10:00/P1D").dateAndTime(), "the value shall be a date and a time-of-day");
}

TEST(TimeSettingsChecks, IntervalForms) {
    Checks c;
    EXPECT_EQ(c.on("2009-05-01").interval(0x0040 | 0x0080, 0), "");  // no interval
    EXPECT_EQ(c.on("P1D").interval(0x0040 | 0x0080 | 0x0100, 0),
              "the interval should be specified using a start point and an end point");
    EXPECT_EQ(c.on("2009-05-01/2009-05-02").interval(0x0040 | 0x0080, 0), "");
    EXPECT_EQ(c.on("2009-05-01/2009-05-02").interval(0x0040 | 0x0100, 0),
              "the interval should be specified using a start point and a duration");
    EXPECT_EQ(c.on("2009-05-01/P1D").interval(0x0040 | 0x0100, 0), "");
    EXPECT_EQ(c.on("2009-05-01/P1D").interval(0x0080 | 0x0100, 0),
              "the interval should be specified using a duration and an end point");
    EXPECT_EQ(c.on("P1D/2009-05-01").interval(0x0080, 0), "");
    EXPECT_EQ(c.on("P1D/2009-05-01").interval(0x0100, 0), "the interval should be specified using only a duration");
    EXPECT_EQ(c.on("2009-05-01/P1D").interval(0x0100, 0), "the interval should be specified using only a duration");
    EXPECT_EQ(c.on("P1D/2009-05-01").interval(0x0040, 0), "");  // no rule
}

TEST(TimeSettingsChecks, IntervalPointsAndRecurrenceDigits) {
    Checks c;
    const std::string both = "both start and end points of the interval shall be specified using ";
    EXPECT_EQ(c.on("2009-05-01/P1D").interval(0x0800, 0), both + "a date and a time-of-day");
    EXPECT_EQ(c.on("P1D/2009-05-01T10:00").interval(0x0800 | 0x0200, 0), "");
    EXPECT_EQ(c.on("P1D/2009-05-01T10:00").interval(0x0200, 0), both + "a date only");
    EXPECT_EQ(c.on("10:00/11:00").interval(0x0200 | 0x0400, 0), both + "a date only");
    EXPECT_EQ(c.on("10:00/11:00").interval(0x0400, 0), "");
    EXPECT_EQ(c.on("2009-05-01/P1D").interval(0x0400, 0), both + "a time-of-day only");
    EXPECT_EQ(c.on("P1D").interval(0x0E00, 0), "");  // no point to test

    // R bounds the number of digits: "R12" has two, "R2" one.
    EXPECT_EQ(c.on("R12/P1D").recurring(0x0100 | 0x1000, 2), "");
    EXPECT_EQ(c.on("R2/P1D").recurring(0x0100 | 0x1000, 1), "");
    EXPECT_EQ(c.on("R2/P1D").recurring(0x0100 | 0x1000, 2), "");
    const char* const wrongDigits = "the recurring interval has an incorrect number of recurrence digits";
    EXPECT_EQ(c.on("R123/P1D").recurring(0x0100 | 0x1000, 2), wrongDigits);
    EXPECT_EQ(c.on("R2/P1D").recurring(0x0100 | 0x1000, 0),
              "the recurring interval shall not contain recurrence digits because the \"Recurrence\" property "
              "setting is \"Unlimited\"");
    EXPECT_EQ(c.on("R/P1D").recurring(0x0100 | 0x1000, 0), "");
    EXPECT_EQ(c.on("R/P1D").recurring(0x0100 | 0x1000, 2), wrongDigits);
    EXPECT_EQ(c.on("R2/P1D").recurring(0x0100, 3), "");  // digits only under 0x1000
    EXPECT_EQ(c.on("2009-01-01/P1D").recurring(0x0100 | 0x1000, 0), "the value shall be a recurring time interval");
    EXPECT_EQ(c.on("R2/P1D/2009-01-01").recurring(0x0100, 0), "the interval should be specified using only a duration");

    EXPECT_EQ(c.on("R2/P1D").timeInterval(0), "the value shall be a time interval");
    EXPECT_EQ(c.on("2009-01-01").timeInterval(0), "the value shall be a time interval");
    EXPECT_EQ(c.on("2009-01-01/P1D").timeInterval(0x0040 | 0x0100), "");
    EXPECT_EQ(c.on("P1D/2009-01-01").timeInterval(0x0040 | 0x0100),
              "the interval should be specified using a start point and a duration");
}

TEST(TimeSettingsChecks, RecurrenceDigitRange) {
    Checks c;
    EXPECT_EQ(c.on("R12/P1D").recurrenceDigits(1, 2), "");
    EXPECT_EQ(c.on("R12/P1D").recurrenceDigits(3, 5), "(null)");
    EXPECT_EQ(c.on("R12/P1D").recurrenceDigits(1, 1), "(null)");
    EXPECT_EQ(c.on("R/P1D").recurrenceDigits(0, 0xFFFF), "");
    EXPECT_EQ(c.on("R/P1D").recurrenceDigits(0, 0xFFFE), "(null)");
    EXPECT_EQ(c.on("P1D").recurrenceDigits(0, 0xFFFF), ": expected a recurring time interval");
}

}  // namespace
