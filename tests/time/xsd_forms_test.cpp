// The XML Schema calendar forms: writers with their range checks and zone
// sentinels, and parsers checked field by field.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "support/alloc_hooks.h"
#include "support/test_world.h"
#include "time_text_helpers.h"

using namespace fenk::test;

namespace {

constexpr int32_t kNone = KIV_ZONE_NONE;
constexpr int32_t kUtc = KIV_ZONE_UTC;

struct Duration {
    uint8_t negative = 9;
    uint32_t y = 9, mo = 9, d = 9, h = 9, mi = 9, s = 9;
    const char* fraction = "x";
    uint32_t count = 9;
};

int32_t parseDuration(KivGlobal* w, const char* text, Duration* d) {
    return kivTextToDuration(w, text, &d->negative, &d->y, &d->mo, &d->d, &d->h, &d->mi, &d->s,
                             &d->fraction, &d->count);
}

std::string fractionOf(const char* fraction, uint32_t count) {
    return fraction ? std::string(fraction, count) : "<null>";
}

}  // namespace

TEST(XsdWrite, Duration) {
    TestWorld w;
    auto text = [&](uint8_t neg, uint32_t y, uint32_t mo, uint32_t d, uint32_t h, uint32_t mi,
                    uint32_t s, const char* f, uint32_t n) {
        return formatted(w.get(), [&](char** o) {
            return kivDurationToText(w.get(), neg, y, mo, d, h, mi, s, f, n, o);
        });
    };
    EXPECT_EQ(text(0, 0, 0, 0, 0, 0, 0, nullptr, 0), "PT0S");
    EXPECT_EQ(text(1, 0, 0, 0, 0, 0, 0, nullptr, 0), "PT0S") << "zero has no sign";
    EXPECT_EQ(text(1, 0, 0, 1, 0, 0, 0, nullptr, 0), "-P1D");
    EXPECT_EQ(text(0, 0, 0, 0, 0, 5, 0, "25", 2), "PT5M0.25S");
    EXPECT_EQ(text(0, 0, 0, 0, 0, 0, 0, "5xyz", 1), "PT0.5S");
    EXPECT_EQ(text(0, 4294967295u, 2, 3, 4, 5, 6, nullptr, 0), "P4294967295Y2M3DT4H5M6S");
    EXPECT_EQ(text(0, 1, 0, 0, 2, 0, 0, nullptr, 0), "P1YT2H");
    EXPECT_EQ(text(0, 0, 0, 0, 0, 0, 0, nullptr, 3), "#12") << "a count needs its digits";
}

TEST(XsdWrite, DateFormsAndYears) {
    TestWorld w;
    auto date = [&](int32_t y, int32_t m, int32_t d, int32_t z) {
        return formatted(w.get(), [&](char** o) { return kivDateToText(w.get(), y, m, d, z, o); });
    };
    EXPECT_EQ(date(-5, 1, 1, kNone), "-0005-01-01");
    EXPECT_EQ(date(0, 1, 1, kNone), "#12");
    EXPECT_EQ(date(12345, 1, 1, kNone), "12345-01-01");
    EXPECT_EQ(date(2009, 2, 31, kUtc), "2009-02-31Z") << "any day to 31";
    EXPECT_EQ(date(INT32_MIN, 12, 31, kNone), "-2147483648-12-31");
    EXPECT_EQ(date(2009, 13, 1, kNone), "#12");
    EXPECT_EQ(date(2009, 0, 1, kNone), "#12");
    EXPECT_EQ(date(2009, 1, 32, kNone), "#12");
    EXPECT_EQ(date(2009, 1, 0, kNone), "#12");

    auto text = [&](auto call) { return formatted(w.get(), call); };
    EXPECT_EQ(text([&](char** o) { return kivYearMonthToText(w.get(), 99, 7, -60, o); }),
              "0099-07-01:00");
    EXPECT_EQ(text([&](char** o) { return kivYearMonthToText(w.get(), 99, 13, kNone, o); }), "#12");
    EXPECT_EQ(text([&](char** o) { return kivYearToText(w.get(), -12345, kNone, o); }), "-12345");
    EXPECT_EQ(text([&](char** o) { return kivYearToText(w.get(), 0, kNone, o); }), "#12");
    EXPECT_EQ(text([&](char** o) { return kivMonthDayToText(w.get(), 2, 29, kUtc, o); }), "--02-29Z");
    EXPECT_EQ(text([&](char** o) { return kivMonthDayToText(w.get(), 2, 32, kUtc, o); }), "#12");
    EXPECT_EQ(text([&](char** o) { return kivDayToText(w.get(), 5, 840, o); }), "---05+14:00");
    EXPECT_EQ(text([&](char** o) { return kivDayToText(w.get(), 0, 0, o); }), "#12");
    EXPECT_EQ(text([&](char** o) { return kivMonthToText(w.get(), 12, -840, o); }), "--12-14:00");
    EXPECT_EQ(text([&](char** o) { return kivMonthToText(w.get(), 0, 0, o); }), "#12");
}

TEST(XsdWrite, TimesAndZones) {
    TestWorld w;
    auto time = [&](uint32_t h, uint32_t m, uint32_t s, const char* f, uint32_t n, int32_t z) {
        return formatted(w.get(),
                         [&](char** o) { return kivTimeToText(w.get(), h, m, s, f, n, z, o); });
    };
    EXPECT_EQ(time(24, 0, 0, nullptr, 0, kNone), "24:00:00");
    EXPECT_EQ(time(24, 0, 0, "0", 1, kNone), "#12");
    EXPECT_EQ(time(24, 1, 0, nullptr, 0, kNone), "#12");
    EXPECT_EQ(time(24, 0, 1, nullptr, 0, kNone), "#12");
    EXPECT_EQ(time(25, 0, 0, nullptr, 0, kNone), "#12");
    EXPECT_EQ(time(23, 60, 0, nullptr, 0, kNone), "#12");
    EXPECT_EQ(time(23, 59, 61, nullptr, 0, kNone), "#12");
    EXPECT_EQ(time(23, 59, 60, "123", 3, kUtc), "23:59:60.123Z");
    EXPECT_EQ(time(10, 30, 0, nullptr, 0, 330), "10:30:00+05:30");
    EXPECT_EQ(time(10, 30, 0, nullptr, 0, -330), "10:30:00-05:30");
    EXPECT_EQ(time(10, 30, 0, nullptr, 0, 0), "10:30:00+00:00");
    EXPECT_EQ(time(10, 30, 0, nullptr, 0, 841), "#12");
    EXPECT_EQ(time(10, 30, 0, nullptr, 0, -841), "#12");
    EXPECT_EQ(time(10, 30, 0, nullptr, 0, kNone - 1), "#12");
    EXPECT_EQ(time(10, 30, 0, nullptr, 0, INT32_MIN), "#12");

    auto dateTime = [&](int32_t y, uint32_t h, int32_t z) {
        return formatted(w.get(), [&](char** o) {
            return kivDateTimeToText(w.get(), y, 1, 2, h, 4, 5, "06", 2, z, o);
        });
    };
    EXPECT_EQ(dateTime(-1, 3, kUtc), "-0001-01-02T03:04:05.06Z");
    EXPECT_EQ(dateTime(2009, 25, kUtc), "#12");
    EXPECT_EQ(dateTime(0, 3, kUtc), "#12");
    EXPECT_EQ(dateTime(2009, 3, -900), "#12");
}

TEST(XsdWrite, ZoneFailureAfterWritingGivesBackTheBuffer) {
    TestWorld w;
    AllocCounter counter;
    installCountingHooks(w.get(), &counter);
    char* out = nullptr;
    EXPECT_EQ(kivTimeToText(w.get(), 10, 30, 0, nullptr, 0, 841, &out), 12);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(counter.calls, 1) << "the zone is found wrong after the text was written";
    EXPECT_EQ(counter.live, 0);

    EXPECT_EQ(kivDateTimeToText(w.get(), 2009, 1, 1, 25, 0, 0, nullptr, 0, kNone, &out), 12);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(counter.calls, 1) << "fields are checked before anything is allocated";

    char buffer[32];
    std::memset(buffer, 'x', sizeof buffer);
    out = buffer;
    EXPECT_EQ(kivDateToText(w.get(), 2009, 1, 1, 900, &out), 12);
    EXPECT_EQ(out, buffer);
    EXPECT_STREQ(buffer, "2009-01-01") << "a caller's buffer is left as written";

    out = nullptr;
    counter.failAt = counter.calls + 1;
    EXPECT_EQ(kivMonthToText(w.get(), 1, kNone, &out), 12);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(kivDurationToText(w.get(), 0, 1, 0, 0, 0, 0, 0, nullptr, 0, nullptr), 12);
    EXPECT_EQ(kivYearToText(nullptr, 2009, kNone, &out), 12);
    EXPECT_EQ(counter.live, 0);
}

TEST(XsdParse, DatesAndZones) {
    TestWorld w;
    int32_t y = 0, m = 0, d = 0, z = 0;
    EXPECT_EQ(kivTextToDate(w.get(), "2009-02-31", &y, &m, &d, &z), 0);
    EXPECT_EQ(y, 2009);
    EXPECT_EQ(m, 2);
    EXPECT_EQ(d, 31);
    EXPECT_EQ(z, kNone);
    EXPECT_EQ(kivTextToDate(w.get(), "2009-01-01Z", &y, &m, &d, &z), 0);
    EXPECT_EQ(z, kUtc);
    EXPECT_EQ(kivTextToDate(w.get(), "-12345-01-01-14:00", &y, &m, &d, &z), 0);
    EXPECT_EQ(y, -12345);
    EXPECT_EQ(z, -840);
    EXPECT_EQ(kivTextToDate(w.get(), "2009-01-01+00:99", &y, &m, &d, &z), 0)
        << "zone minutes above 59 are taken";
    EXPECT_EQ(z, 99);
    EXPECT_EQ(kivTextToDate(w.get(), "2009-01-01Zjunk", &y, &m, &d, &z), 0);
    EXPECT_EQ(kivTextToDate(w.get(), "2009-01-01+01:00junk", &y, &m, &d, &z), 0);
    EXPECT_EQ(z, 60);
    for (const char* bad : {"0000-01-01", "+2009-01-01", "2009-01-01+14:01", "209-01-01",
                            "2009-1-01", "2009-001-01", "2009-13-01", "2009-00-01",
                            "2009-01-32", "2009-01-00", "2009-01-01T", "2009-01-01+1:00",
                            "2009-01-01+01", "2009-01-01 ", "2009/01/01", "2147483648-01-01"})
        EXPECT_EQ(kivTextToDate(w.get(), bad, &y, &m, &d, &z), 12) << bad;
    EXPECT_EQ(kivTextToDate(w.get(), "2009-01-01", &y, &m, nullptr, &z), 12);
}

TEST(XsdParse, OtherCalendarForms) {
    TestWorld w;
    int32_t y = 0, m = 0, d = 0, z = 0;
    EXPECT_EQ(kivTextToYearMonth(w.get(), "-0001-12+05:30", &y, &m, &z), 0);
    EXPECT_EQ(y, -1);
    EXPECT_EQ(m, 12);
    EXPECT_EQ(z, 330);
    EXPECT_EQ(kivTextToYearMonth(w.get(), "2009", &y, &m, &z), 12);
    EXPECT_EQ(kivTextToYear(w.get(), "20090Z", &y, &z), 0);
    EXPECT_EQ(y, 20090);
    EXPECT_EQ(kivTextToYear(w.get(), "-0000", &y, &z), 12);
    EXPECT_EQ(kivTextToMonthDay(w.get(), "--02-29", &m, &d, &z), 0);
    EXPECT_EQ(m, 2);
    EXPECT_EQ(d, 29);
    EXPECT_EQ(kivTextToMonthDay(w.get(), "-02-29", &m, &d, &z), 12);
    EXPECT_EQ(kivTextToDay(w.get(), "---32", &d, &z), 12);
    EXPECT_EQ(kivTextToDay(w.get(), "---07-01:00", &d, &z), 0);
    EXPECT_EQ(d, 7);
    EXPECT_EQ(z, -60);
    EXPECT_EQ(kivTextToMonth(w.get(), "--11Z", &m, &z), 0);
    EXPECT_EQ(m, 11);
    EXPECT_EQ(z, kUtc);
    EXPECT_EQ(kivTextToMonth(w.get(), "--11-", &m, &z), 12);
    EXPECT_EQ(kivTextToMonth(nullptr, "--11", &m, &z), 12);
}

TEST(XsdParse, TimesTakeAnyTwoDigitValues) {
    TestWorld w;
    uint32_t h = 0, m = 0, s = 0, n = 9;
    const char* f = "x";
    int32_t z = 0;
    const char* text = "25:61:99";
    EXPECT_EQ(kivTextToTime(w.get(), text, &h, &m, &s, &f, &n, &z), 0);
    EXPECT_EQ(h, 25u);
    EXPECT_EQ(m, 61u);
    EXPECT_EQ(s, 99u);
    EXPECT_EQ(f, nullptr);
    EXPECT_EQ(n, 0u);
    EXPECT_EQ(z, kNone);
    EXPECT_EQ(kivTextToTime(w.get(), "10:00:00.", &h, &m, &s, &f, &n, &z), 0);
    EXPECT_EQ(f, nullptr);
    EXPECT_EQ(z, kNone);
    text = "10:00:00.0123456789012+01:00";
    EXPECT_EQ(kivTextToTime(w.get(), text, &h, &m, &s, &f, &n, &z), 0);
    EXPECT_EQ(f, text + 9) << "the fraction points into the text";
    EXPECT_EQ(n, 13u);
    EXPECT_EQ(z, 60);
    for (const char* bad : {"1:00:00", "10:0:00", "10:00", "10-00-00", "10:00:000", "10:00:00 "})
        EXPECT_EQ(kivTextToTime(w.get(), bad, &h, &m, &s, &f, &n, &z), 12) << bad;

    int32_t y = 0, mo = 0, d = 0;
    text = "2009-05-06T07:08:09.5Z";
    EXPECT_EQ(kivTextToDateTime(w.get(), text, &y, &mo, &d, &h, &m, &s, &f, &n, &z), 0);
    EXPECT_EQ(y, 2009);
    EXPECT_EQ(mo, 5);
    EXPECT_EQ(d, 6);
    EXPECT_EQ(h, 7u);
    EXPECT_EQ(m, 8u);
    EXPECT_EQ(s, 9u);
    EXPECT_EQ(fractionOf(f, n), "5");
    EXPECT_EQ(z, kUtc);
    EXPECT_EQ(kivTextToDateTime(w.get(), "2009-05-06 07:08:09", &y, &mo, &d, &h, &m, &s, &f, &n, &z),
              12);
    EXPECT_EQ(kivTextToDateTime(w.get(), "2009-05-06", &y, &mo, &d, &h, &m, &s, &f, &n, &z), 12);
}

TEST(XsdParse, Durations) {
    TestWorld w;
    Duration d;
    EXPECT_EQ(parseDuration(w.get(), "P1M", &d), 0);
    EXPECT_EQ(d.negative, 0);
    EXPECT_EQ(d.mo, 1u);
    EXPECT_EQ(d.y + d.d + d.h + d.mi + d.s + d.count, 0u);
    EXPECT_EQ(d.fraction, nullptr);

    d = {};
    EXPECT_EQ(parseDuration(w.get(), "PT", &d), 0);
    EXPECT_EQ(d.y + d.mo + d.d + d.h + d.mi + d.s + d.count + d.negative, 0u);
    EXPECT_EQ(parseDuration(w.get(), "P", &d), 12);
    EXPECT_EQ(parseDuration(w.get(), "PX", &d), 12);
    EXPECT_EQ(parseDuration(w.get(), "+P1D", &d), 12);
    EXPECT_EQ(parseDuration(w.get(), "PT1.", &d), 12);
    EXPECT_EQ(parseDuration(w.get(), "P4294967296D", &d), 12);

    const char* text = "-PT1.5S";
    EXPECT_EQ(parseDuration(w.get(), text, &d), 0);
    EXPECT_EQ(d.negative, 1);
    EXPECT_EQ(d.s, 1u);
    EXPECT_EQ(d.fraction, text + 5);
    EXPECT_EQ(d.count, 1u);

    EXPECT_EQ(parseDuration(w.get(), "P1Y2M3DT4H5M6S", &d), 0);
    EXPECT_EQ(d.y, 1u);
    EXPECT_EQ(d.mo, 2u);
    EXPECT_EQ(d.d, 3u);
    EXPECT_EQ(d.h, 4u);
    EXPECT_EQ(d.mi, 5u);
    EXPECT_EQ(d.s, 6u);
    EXPECT_EQ(d.count, 0u);

    // A run without its designator is left for the next step.
    EXPECT_EQ(parseDuration(w.get(), "P3DT5S", &d), 0);
    EXPECT_EQ(d.y + d.mo + d.h + d.mi, 0u);
    EXPECT_EQ(d.d, 3u);
    EXPECT_EQ(d.s, 5u);
    EXPECT_EQ(parseDuration(w.get(), "P1Y5", &d), 0) << "what follows is not looked at";
    EXPECT_EQ(d.y, 1u);
    EXPECT_EQ(parseDuration(w.get(), "PT7H8", &d), 0);
    EXPECT_EQ(d.h, 7u);
    EXPECT_EQ(d.s, 0u);
    EXPECT_EQ(kivTextToDuration(w.get(), "P1D", &d.negative, &d.y, &d.mo, &d.d, &d.h, &d.mi,
                                nullptr, &d.fraction, &d.count),
              12);
}

TEST(XsdForms, WrittenTextsReadBack) {
    TestWorld w;
    for (int32_t year : {-2147483647, -10000, -1, 1, 999, 2009, 10000, 2147483647})
        for (int32_t zone : {kNone, kUtc, -840, -61, 0, 1, 839}) {
            char* text = nullptr;
            ASSERT_EQ(kivDateTimeToText(w.get(), year, 12, 31, 23, 59, 60, "999", 3, zone, &text),
                      0);
            int32_t y, mo, d, z;
            uint32_t h, mi, s, n;
            const char* f;
            EXPECT_EQ(kivTextToDateTime(w.get(), text, &y, &mo, &d, &h, &mi, &s, &f, &n, &z), 0)
                << text;
            EXPECT_EQ(y, year) << text;
            EXPECT_EQ(z, zone) << text;
            EXPECT_EQ(fractionOf(f, n), "999") << text;
            kivReleaseThroughTable(w.get(), text);
        }
}
