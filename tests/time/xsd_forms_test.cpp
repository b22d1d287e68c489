// The XML Schema calendar forms: writers with their range checks and zone
// sentinels, and parsers checked field by field.
#include <gtest/gtest.h>

#include <tuple>
#include <utility>

#include "support/alloc_hooks.h"
#include "time_test_support.h"

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
    return kivTextToDuration(w, text, &d->negative, &d->y, &d->mo, &d->d, &d->h, &d->mi, &d->s, &d->fraction, &d->count);
}

std::string fractionOf(const char* fraction, uint32_t count) { return fraction ? std::string(fraction, count) : "<null>"; }

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
    for (auto [m, d] : {std::pair(13, 1), {0, 1}, {1, 32}, {1, 0}})
        EXPECT_EQ(date(2009, m, d, kNone), "#12") << m << "-" << d;

    auto text = [&](auto call) { return formatted(w.get(), call); };
    EXPECT_EQ(text([&](char** o) { return kivYearMonthToText(w.get(), 99, 7, -60, o); }), "0099-07-01:00");
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
        return formatted(w.get(), [&](char** o) { return kivTimeToText(w.get(), h, m, s, f, n, z, o); });
    };
    EXPECT_EQ(time(24, 0, 0, nullptr, 0, kNone), "24:00:00");
    EXPECT_EQ(time(24, 0, 0, "0", 1, kNone), "#12");
    for (auto [h, m, s] : {std::tuple(24u, 1u, 0u), {24u, 0u, 1u}, {25u, 0u, 0u}, {23u, 60u, 0u}, {23u, 59u, 61u}})
        EXPECT_EQ(time(h, m, s, nullptr, 0, kNone), "#12") << h << ":" << m << ":" << s;
    EXPECT_EQ(time(23, 59, 60, "123", 3, kUtc), "23:59:60.123Z");
    EXPECT_EQ(time(10, 30, 0, nullptr, 0, 330), "10:30:00+05:30");
    EXPECT_EQ(time(10, 30, 0, nullptr, 0, -330), "10:30:00-05:30");
    EXPECT_EQ(time(10, 30, 0, nullptr, 0, 0), "10:30:00+00:00");
    for (int32_t zone : {841, -841, kNone - 1, INT32_MIN})
        EXPECT_EQ(time(10, 30, 0, nullptr, 0, zone), "#12") << zone;

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
    // The zone is found wrong after the text was written.
    EXPECT_EQ(std::tuple(out, counter.calls, counter.live), std::tuple(nullptr, 1, 0));
    EXPECT_EQ(kivDateTimeToText(w.get(), 2009, 1, 1, 25, 0, 0, nullptr, 0, kNone, &out), 12);
    EXPECT_EQ(std::tuple(out, counter.calls), std::tuple(nullptr, 1)) << "fields are checked before allocating";

    char buffer[32];
    std::memset(buffer, 'x', sizeof buffer);
    out = buffer;
    EXPECT_EQ(kivDateToText(w.get(), 2009, 1, 1, 900, &out), 12);
    EXPECT_EQ(out, buffer);
    EXPECT_STREQ(buffer, "2009-01-01") << "a caller's buffer is left as written";

    EXPECT_EQ(kivDurationToText(w.get(), 0, 1, 0, 0, 0, 0, 0, nullptr, 0, nullptr), 12);
    EXPECT_EQ(kivYearToText(nullptr, 2009, kNone, &out), 12);
    EXPECT_EQ(counter.live, 0);
}

namespace {

std::string zoneName(int32_t z) { return z == kNone ? "none" : z == kUtc ? "Z" : std::to_string(z); }

// "rc: fields" of each parser, with the fraction as the text it points at.
std::string readDate(KivGlobal* w, const char* t) {
    int32_t y = 0, m = 0, d = 0, z = 0;
    const int32_t rc = kivTextToDate(w, t, &y, &m, &d, &z);
    return rc ? std::to_string(rc) : std::to_string(y) + " " + std::to_string(m) + " " + std::to_string(d) + " " + zoneName(z);
}

std::string readTime(KivGlobal* w, const char* t) {
    uint32_t h = 0, m = 0, s = 0, n = 9;
    const char* f = "x";
    int32_t z = 0;
    const int32_t rc = kivTextToTime(w, t, &h, &m, &s, &f, &n, &z);
    if (rc) return std::to_string(rc);
    return std::to_string(h) + ":" + std::to_string(m) + ":" + std::to_string(s) + " " + fractionOf(f, n) + " " + zoneName(z);
}

std::string readDuration(KivGlobal* w, const char* t) {
    Duration d;
    int32_t rc = parseDuration(w, t, &d);
    if (rc) return std::to_string(rc);
    return std::string(d.negative ? "-" : "+") + std::to_string(d.y) + "Y" + std::to_string(d.mo) + "M" +
           std::to_string(d.d) + "D" + std::to_string(d.h) + "H" + std::to_string(d.mi) + "M" + std::to_string(d.s) +
           "S " + fractionOf(d.fraction, d.count);
}

}  // namespace

TEST(XsdParse, DatesAndZones) {
    TestWorld w;
    const struct { const char* text; const char* fields; } cases[] = {
        {"2009-02-31", "2009 2 31 none"}, {"2009-01-01Z", "2009 1 1 Z"},
        {"-12345-01-01-14:00", "-12345 1 1 -840"},
        {"2009-01-01+00:99", "2009 1 1 99"},  // zone minutes above 59 are taken
        {"2009-01-01Zjunk", "2009 1 1 Z"},    // nothing after the zone is looked at
        {"2009-01-01+01:00junk", "2009 1 1 60"},
        {"0000-01-01", "12"}, {"+2009-01-01", "12"}, {"2009-01-01+14:01", "12"},
        {"209-01-01", "12"}, {"2009-1-01", "12"}, {"2009-001-01", "12"}, {"2009-13-01", "12"},
        {"2009-00-01", "12"}, {"2009-01-32", "12"}, {"2009-01-00", "12"}, {"2009-01-01T", "12"},
        {"2009-01-01+1:00", "12"}, {"2009-01-01+01", "12"}, {"2009-01-01 ", "12"},
        {"2009/01/01", "12"}, {"2147483648-01-01", "12"},
    };
    for (const auto& c : cases) EXPECT_EQ(readDate(w.get(), c.text), c.fields) << c.text;
    int32_t y, m, z;
    EXPECT_EQ(kivTextToDate(w.get(), "2009-01-01", &y, &m, nullptr, &z), 12);
}

TEST(XsdParse, OtherCalendarForms) {
    TestWorld w;
    KivGlobal* g = w.get();
    int32_t y = 0, m = 0, d = 0, z = 0;
    EXPECT_EQ((std::tuple{kivTextToYearMonth(g, "-0001-12+05:30", &y, &m, &z), y, m, z}), std::tuple(0, -1, 12, 330));
    EXPECT_EQ(kivTextToYearMonth(g, "2009", &y, &m, &z), 12);
    EXPECT_EQ((std::tuple{kivTextToYear(g, "20090Z", &y, &z), y, z}), std::tuple(0, 20090, kUtc));
    EXPECT_EQ(kivTextToYear(g, "-0000", &y, &z), 12);
    EXPECT_EQ((std::tuple{kivTextToMonthDay(g, "--02-29", &m, &d, &z), m, d, z}), std::tuple(0, 2, 29, kNone));
    EXPECT_EQ(kivTextToMonthDay(g, "-02-29", &m, &d, &z), 12);
    EXPECT_EQ(kivTextToDay(g, "---32", &d, &z), 12);
    EXPECT_EQ((std::tuple{kivTextToDay(g, "---07-01:00", &d, &z), d, z}), std::tuple(0, 7, -60));
    EXPECT_EQ((std::tuple{kivTextToMonth(g, "--11Z", &m, &z), m, z}), std::tuple(0, 11, kUtc));
    EXPECT_EQ(kivTextToMonth(g, "--11-", &m, &z), 12);
    EXPECT_EQ(kivTextToMonth(nullptr, "--11", &m, &z), 12);
}

TEST(XsdParse, TimesTakeAnyTwoDigitValues) {
    TestWorld w;
    const struct { const char* text; const char* fields; } cases[] = {
        {"25:61:99", "25:61:99 <null> none"}, {"10:00:00.", "10:0:0 <null> none"},
        {"10:00:00.0123456789012+01:00", "10:0:0 0123456789012 60"},
        {"1:00:00", "12"}, {"10:0:00", "12"}, {"10:00", "12"}, {"10-00-00", "12"},
        {"10:00:000", "12"}, {"10:00:00 ", "12"},
    };
    for (const auto& c : cases) EXPECT_EQ(readTime(w.get(), c.text), c.fields) << c.text;

    const char* text = "2009-05-06T07:08:09.5Z";
    int32_t y = 0, mo = 0, d = 0, z = 0;
    uint32_t h = 0, m = 0, s = 0, n = 0;
    const char* f = nullptr;
    EXPECT_EQ(kivTextToDateTime(w.get(), text, &y, &mo, &d, &h, &m, &s, &f, &n, &z), 0);
    EXPECT_EQ(std::tuple(y, mo, d, h, m, s, z), std::tuple(2009, 5, 6, 7u, 8u, 9u, kUtc));
    EXPECT_EQ(kivTextToDateTime(w.get(), text, &y, &mo, &d, &h, &m, &s, &f, &n, nullptr), 12);
    EXPECT_EQ(kivTextToTime(w.get(), "07:08:09", &h, &m, &s, &f, nullptr, &z), 12);
    EXPECT_EQ(f, text + 20) << "the fraction points into the text";
    EXPECT_EQ(n, 1u);
    EXPECT_EQ(kivTextToDateTime(w.get(), "2009-05-06 07:08:09", &y, &mo, &d, &h, &m, &s, &f, &n, &z), 12);
    EXPECT_EQ(kivTextToDateTime(w.get(), "2009-05-06", &y, &mo, &d, &h, &m, &s, &f, &n, &z), 12);
}

TEST(XsdParse, Durations) {
    TestWorld w;
    const struct { const char* text; const char* fields; } cases[] = {
        {"P1M", "+0Y1M0D0H0M0S <null>"}, {"PT", "+0Y0M0D0H0M0S <null>"}, {"-PT1.5S", "-0Y0M0D0H0M1S 5"},
        {"P1Y2M3DT4H5M6S", "+1Y2M3D4H5M6S <null>"},
        // A run without its designator is left for the next step.
        {"P3DT5S", "+0Y0M3D0H0M5S <null>"},
        {"P1Y5", "+1Y0M0D0H0M0S <null>"},  // what follows is not looked at
        {"PT7H8", "+0Y0M0D7H0M0S <null>"},
        {"P", "12"}, {"PX", "12"}, {"+P1D", "12"}, {"PT1.", "12"}, {"P4294967296D", "12"},
    };
    for (const auto& c : cases) EXPECT_EQ(readDuration(w.get(), c.text), c.fields) << c.text;
    const char* text = "PT1.25S";
    Duration d;
    EXPECT_EQ(parseDuration(w.get(), text, &d), 0);
    EXPECT_EQ(d.fraction, text + 4) << "the fraction points into the text";
    EXPECT_EQ(kivTextToDuration(w.get(), "P1D", &d.negative, &d.y, &d.mo, &d.d, &d.h, &d.mi,
                                nullptr, &d.fraction, &d.count),
              12);
}

TEST(XsdForms, WrittenTextsReadBack) {
    TestWorld w;
    for (int32_t year : {-2147483647, -10000, -1, 1, 999, 2009, 10000, 2147483647})
        for (int32_t zone : {kNone, kUtc, -840, -61, 0, 1, 839}) {
            char* text = nullptr;
            ASSERT_EQ(kivDateTimeToText(w.get(), year, 12, 31, 23, 59, 60, "999", 3, zone, &text), 0);
            int32_t y, mo, d, z;
            uint32_t h, mi, s, n;
            const char* f;
            EXPECT_EQ(kivTextToDateTime(w.get(), text, &y, &mo, &d, &h, &mi, &s, &f, &n, &z), 0) << text;
            EXPECT_EQ(y, year) << text;
            EXPECT_EQ(z, zone) << text;
            EXPECT_EQ(fractionOf(f, n), "999") << text;
            kivReleaseThroughTable(w.get(), text);
        }
}
