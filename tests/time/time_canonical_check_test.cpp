// The canonical-form check of time texts: which rule a text breaks, in
// which order the rules are tried, and what passes.
#include <gtest/gtest.h>

#include "time_test_support.h"

using namespace fenk::test;

namespace {

const std::string kPrefix = "D0330E: Invalid canonical form of time value: '";
const std::string kFullStops = kPrefix + "full stops should be used as decimal signs'.\n";
const std::string kZoneMinutes =
    kPrefix +
    "the minutes digits for all time difference components that are an integral number of "
    "hours shall be removed'.\n";
const std::string kRepeatedZone =
    kPrefix +
    "the time difference component of the end point should be removed if it is the same as "
    "the time difference component of start point'.\n";
const std::string kZeroComponents =
    kPrefix +
    "all zero time components except the least significant time component of the duration "
    "value should have been removed'.\n";
const std::string kOutOfRange = "D0012S: Out-of-range value in time type.\n";

// The message the check raised, or "passed".
std::string verdict(TestWorld& w, const char* text) {
    w->messageOut = w->messageText;
    w->errorMode = 3;
    w->messageText[0] = '\0';
    int32_t rc = -1;
    auto caught = catchRaise(w.get(), [&] { rc = kivCheckTimeCanonicalForm(w.get(), text); });
    if (!caught.raised) return rc == 0 ? "passed" : "returned " + std::to_string(rc);
    const bool code = caught.value == (std::string(w->messageText).starts_with("D0330E") ? 5 : 12);
    return std::string(w->messageText) + (code ? "" : " (wrong code)");
}

}  // namespace

TEST(TimeCanonicalCheck, CanonicalTextsPass) {
    TestWorld w;
    for (const char* text :
         {"2009-01-01T10:00:00.5Z", "10:00+01", "10:00+01:30", "2009-01-01T10:00+01/2009-01-01T12:00",
          "2009-01-01T10:00+01/2009-01-01T12:00+02", "2009-01-01T10:00+01/2009-01-01T12:00-01",
          "P1Y0M", "PT0S", "P1Y2M", "P0Y", "P1W", "R/PT1H", "R5/10:00+01/P1D",
          "R5/P1DT0S/12:00", "-05C", "+20090101"})
        EXPECT_EQ(verdict(w, text), "passed") << text;
}

TEST(TimeCanonicalCheck, CommasFailBeforeAnythingIsParsed) {
    TestWorld w;
    EXPECT_EQ(verdict(w, "2009-01-01T10:00:00,5Z"), kFullStops);
    EXPECT_EQ(verdict(w, "not, a time"), kFullStops);
}

TEST(TimeCanonicalCheck, WholeHourTimeDifferencesWithMinutes) {
    TestWorld w;
    EXPECT_EQ(verdict(w, "10:00+01:00"), kZoneMinutes);
    EXPECT_EQ(verdict(w, "10:00+01:00/12:00+02"), kZoneMinutes) << "the start is examined";
    EXPECT_EQ(verdict(w, "10:00+01/12:00+02:00"), kZoneMinutes) << "and the end";
    EXPECT_EQ(verdict(w, "10:00+01:00/P0Y1M"), kZoneMinutes) << "before the duration";
    EXPECT_EQ(verdict(w, "R/P0Y1M/10:00-03:00"), kZoneMinutes);
    EXPECT_EQ(verdict(w, "10:00+01:00/12:00"), kZoneMinutes) << "minutes come before the repeated time difference";
}

TEST(TimeCanonicalCheck, RepeatedEndTimeDifference) {
    TestWorld w;
    EXPECT_EQ(verdict(w, "2009-01-01T10:00+01/2009-01-01T12:00+01"), kRepeatedZone);
    EXPECT_EQ(verdict(w, "R2/10:00-01:30/12:00-01:30"), kRepeatedZone);
}

TEST(TimeCanonicalCheck, ZeroDurationComponents) {
    TestWorld w;
    for (const char* text : {"P0Y1M", "PT1H0M5S", "P0DT1H", "R/PT0H1S", "2009-01-01/P0M1D", "R3/P0Y0.5M/10:00"})
        EXPECT_EQ(verdict(w, text), kZeroComponents) << text;
    EXPECT_EQ(verdict(w, "PT0.5S"), "passed") << "the fraction is no component";
}

TEST(TimeCanonicalCheck, TextsThatAreNoTimeRaiseOutOfRange) {
    TestWorld w;
    for (const char* text : {"T10:00", "2009-13-01", "", "P", "R0/PT1H", "10:00/12:00Z"})
        EXPECT_EQ(verdict(w, text), kOutOfRange) << text;
    EXPECT_EQ(verdict(w, nullptr), kOutOfRange);
    EXPECT_EQ(kivCheckTimeCanonicalForm(nullptr, "10:00"), 12);
}
