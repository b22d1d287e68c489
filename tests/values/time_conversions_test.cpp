// GeneralizedTime and UTCTime conversions among text, fields and KivTimeStruct,
// under BER, DER and CER where they differ.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>

#include "support/alloc_hooks.h"
#include "support/test_world.h"

namespace {

using fenk::test::AllocCounter;
using fenk::test::TestWorld;

constexpr int32_t kBer = 0, kDer = 3, kCer = 7;

struct Parsed {
    int32_t code;
    uint32_t year, month, day, hour, minute, second, fraction;
    uint16_t digits;
    int32_t zone;
};

Parsed parseGt(KivGlobal* w, const char* text) {
    Parsed p{};
    p.code = kivParseGeneralizedTime(w, text, &p.year, &p.month, &p.day, &p.hour, &p.minute,
                                     &p.second, &p.fraction, &p.digits, &p.zone);
    return p;
}

Parsed parseUtc(KivGlobal* w, const char* text) {
    Parsed p{};
    p.code = kivParseUtcTime(w, text, &p.year, &p.month, &p.day, &p.hour, &p.minute, &p.second, &p.zone);
    return p;
}

TEST(GeneralizedTimeParse, FractionsKeepLeadingAndEmbeddedZerosAndCapAtNineDigits) {
    TestWorld w;
    struct Case { const char* fraction; uint32_t value; uint16_t digits; bool canonical; };
    const Case cases[] = {{".001", 1, 3, true}, {".050", 50, 3, false}, {".5", 5, 1, true},
                          {".500", 500, 3, false}, {".105", 105, 3, true}, {",5", 5, 1, false},
                          {".000", 0, 3, false}, {".1234567891234", 123456789, 9, true},
                          {".0001234567891", 123456789, 12, true}, {".1234567890", 123456789, 9, false}};
    for (const Case& c : cases) {
        const std::string text = std::string("20240101120000") + c.fraction + "Z";
        w->encodingRules = kBer;
        Parsed p = parseGt(w.get(), text.c_str());
        EXPECT_EQ(std::tuple(p.code, p.fraction, p.digits), std::tuple(0, c.value, c.digits)) << text;
        for (int32_t rules : {kDer, kCer}) {
            w->encodingRules = rules;
            EXPECT_EQ(parseGt(w.get(), text.c_str()).code, c.canonical ? 0 : 12) << text << rules;
        }
    }
    w->encodingRules = kBer;
    EXPECT_EQ(parseGt(w.get(), "20240101120000.Z").code, 12);
    EXPECT_EQ(parseGt(w.get(), "20240101120000.").code, 12);
}

TEST(GeneralizedTimeParse, ZonesSecondsAndRanges) {
    TestWorld w;
    // Under DER only a UTC time with seconds passes; +0001 reads as zone 1, 'Z'.
    struct Case { const char* text; int32_t code; int32_t zone; int32_t derCode; };
    const Case cases[] = {{"20240101120000", 0, 0, 12},       {"20240101120000Z", 0, 1, 0},
                          {"20240101120000z", 0, 1, 0},       {"20240101120000+0530", 0, 330, 12},
                          {"20240101120000,5-0130", 0, -90, 12}, {"20240101120000+05", 0, 300, 12},
                          {"20240101120000+0001", 0, 1, 0},   {"20240101120000-2359", 0, -1439, 12},
                          {"202401011200Z", 0, 1, 12},        {"2024010112", 12, 0, 12},
                          {"20240101120000Zx", 12, 0, 12},    {"20240101120000+2400", 12, 0, 12},
                          {"20240101120000+0560", 12, 0, 12}, {"20240101120000+051", 12, 0, 12},
                          {"20240101120000+", 12, 0, 12},     {"20240101120000 ", 12, 0, 12},
                          {"2024010112000Z", 12, 0, 12},      {"20241301120000Z", 12, 0, 12},
                          {"20240001120000Z", 12, 0, 12},     {"20240132120000Z", 12, 0, 12},
                          {"20240100120000Z", 12, 0, 12},     {"20240101240000Z", 12, 0, 12},
                          {"20240101126000Z", 12, 0, 12},     {"20240101120060Z", 12, 0, 12}};
    for (const Case& c : cases) {
        w->encodingRules = kBer;
        Parsed p = parseGt(w.get(), c.text);
        EXPECT_EQ(std::tuple(p.code, p.zone), std::tuple(c.code, c.zone)) << c.text;
        w->encodingRules = kDer;
        EXPECT_EQ(parseGt(w.get(), c.text).code, c.derCode) << c.text << " under DER";
    }
    w->encodingRules = kBer;
    Parsed p = parseGt(w.get(), "202402311200Z");  // the day is not checked against the month
    EXPECT_EQ(std::tuple(p.code, p.day, p.second), std::tuple(0, 31u, 0u));

    EXPECT_EQ(parseGt(w.get(), nullptr).code, 12);
    EXPECT_EQ(parseGt(nullptr, "20240101120000Z").code, 6);
    uint32_t f[6], value;
    int32_t zone;
    EXPECT_EQ(kivParseGeneralizedTime(w.get(), "20240101120000Z", f, f + 1, f + 2, f + 3, f + 4,
                                      f + 5, &value, nullptr, &zone),
              6);
}

TEST(UtcTimeParse, ZoneRequiredOffsetsUncheckedAndSecondsOptionalOutsideCanonicalForm) {
    TestWorld w;
    Parsed p = parseUtc(w.get(), "240101120000+05");
    EXPECT_EQ(std::tuple(p.code, p.year, p.zone), std::tuple(0, 24u, 300));
    EXPECT_EQ(parseUtc(w.get(), "090520130507+9999").zone, 99 * 60 + 99);
    EXPECT_EQ(parseUtc(w.get(), "090520130507-0000").zone, 0);
    EXPECT_EQ(parseUtc(w.get(), "0905201305z").zone, 1);
    EXPECT_EQ(parseUtc(w.get(), "0905201305Z").second, 0u);
    for (const char* bad : {(const char*)"090520130507", "090520130507Zx", "090520130507+9", "090520130507+99x",
                            "090520130507.5Z", "091320130507Z", "090520130560Z", (const char*)nullptr})
        EXPECT_EQ(parseUtc(w.get(), bad).code, 12) << (bad ? bad : "null");
    w->encodingRules = kDer;
    EXPECT_EQ(parseUtc(w.get(), "0905201305Z").code, 12);
    EXPECT_EQ(parseUtc(w.get(), "090520130507+0100").code, 0);
    uint32_t f[6];
    EXPECT_EQ(kivParseUtcTime(w.get(), "0905201305Z", f, f + 1, f + 2, f + 3, f + 4, f + 5, nullptr), 6);
    EXPECT_EQ(parseUtc(nullptr, "0905201305Z").code, 6);
}

TEST(TimeFields, SixteenBitFieldsChangeOnlyOnSuccess) {
    TestWorld w;
    uint16_t f[6] = {7, 7, 7, 7, 7, 7}, digits = 0;
    uint32_t value = 0;
    int32_t zone = 0;
    auto gt = [&](const char* text) {
        return kivGeneralizedTimeFields(w.get(), text, f, f + 1, f + 2, f + 3, f + 4, f + 5, &value, &digits, &zone);
    };
    auto utc = [&](const char* text) { return kivUtcTimeFields(w.get(), text, f, f + 1, f + 2, f + 3, f + 4, f + 5, &zone); };
    auto fields = [&] { return std::array<uint16_t, 6>{f[0], f[1], f[2], f[3], f[4], f[5]}; };
    EXPECT_EQ(gt("20240101126000Z"), 12);
    EXPECT_EQ(utc("2401011200"), 12);
    EXPECT_EQ(fields(), (std::array<uint16_t, 6>{7, 7, 7, 7, 7, 7}));
    EXPECT_EQ(gt("20241231235958.25-0800"), 0);
    EXPECT_EQ(fields(), (std::array<uint16_t, 6>{2024, 12, 31, 23, 59, 58}));
    EXPECT_EQ(std::tuple(value, digits, zone), std::tuple(25u, 2, -480));
    EXPECT_EQ(utc("991231235958Z"), 0);
    EXPECT_EQ(std::tuple(f[0], zone), std::tuple(99, 1));
}

std::string formatGt(KivGlobal* w, uint32_t y, int32_t mo, int32_t d, uint32_t h, uint32_t s,
                     uint32_t fv, uint16_t fd, int32_t zone) {
    char out[64] = "untouched";
    int32_t code = kivFormatGeneralizedTime(w, y, mo, d, h, 0, s, fv, fd, zone, out);
    return code == 0 ? std::string(out) : "code " + std::to_string(code);
}

std::string formatUtc(KivGlobal* w, uint32_t y, uint32_t s, int32_t zone) {
    char out[32];
    int32_t code = kivFormatUtcTime(w, y, 1, 1, 12, 0, s, zone, out);
    return code == 0 ? std::string(out) : "code " + std::to_string(code);
}

TEST(TimeFormat, GeneralizedTimeShortestFormUnderEachRules) {
    TestWorld w;
    KivGlobal* g = w.get();
    struct Case { uint32_t y; int32_t mo, d; uint32_t h, s, fv; uint16_t fd; int32_t zone; const char* text; };
    const Case cases[] = {
        {2024, 1, 1, 12, 0, 0, 0, 1, "202401011200Z"},         {2024, 1, 1, 12, 0, 5000, 4, 1, "20240101120000.5Z"},
        {2024, 1, 1, 12, 0, 0, 3, 0, "202401011200"},          {2024, 1, 1, 12, 10, 50, 3, -90, "20240101120010.05-0130"},
        {2024, 1, 1, 12, 10, 0, 0, 1440, "20240101120010+2400"}, {999, 1, 1, 12, 10, 0, 0, 2, "09990101120010+0002"},
        {2024, 1, 1, 12, 0, 123, 2, 1, "code 12"},             {2024, 1, 1, 12, 0, 5, 0, 1, "code 12"},
        {2024, 1, 1, 12, 0, 0, 0, -1441, "code 12"},           {10000, 1, 1, 12, 0, 0, 0, 1, "code 12"},
        {2024, -1, 1, 12, 0, 0, 0, 1, "code 12"},              {2024, 1, 32, 12, 0, 0, 0, 1, "code 12"},
        {2024, 1, 1, 24, 0, 0, 0, 1, "code 12"}};
    for (const Case& c : cases)
        EXPECT_EQ(formatGt(g, c.y, c.mo, c.d, c.h, c.s, c.fv, c.fd, c.zone), c.text) << c.y << " " << c.fv << " " << c.zone;
    EXPECT_EQ(kivFormatGeneralizedTime(g, 2024, 1, 1, 12, 0, 0, 0, 0, 1, nullptr), 12);
    EXPECT_EQ(formatGt(nullptr, 2024, 1, 1, 12, 0, 0, 0, 1), "code 6");
    for (int32_t rules : {kDer, kCer}) {
        w->encodingRules = rules;
        EXPECT_EQ(formatGt(g, 2024, 1, 1, 12, 0, 0, 0, 1), "20240101120000Z");
        EXPECT_EQ(formatGt(g, 2024, 1, 1, 12, 0, 500, 3, 1), "20240101120000.5Z");
        EXPECT_EQ(formatGt(g, 2024, 1, 1, 12, 0, 0, 0, 0), "code 12");
        EXPECT_EQ(formatGt(g, 2024, 1, 1, 12, 0, 0, 0, 60), "code 12");
    }
}

TEST(TimeFormat, UtcTimeWritesZoneZeroAsZAndEveryOtherValueAsAnOffset) {
    TestWorld w;
    EXPECT_EQ(formatUtc(w.get(), 2024, 0, 0), "2401011200Z");
    EXPECT_EQ(formatUtc(w.get(), 1999, 7, 1), "990101120007+0001");
    EXPECT_EQ(formatUtc(w.get(), 5, 0, -1440), "0501011200-2400");
    EXPECT_EQ(formatUtc(w.get(), 5, 0, 1441), "code 12");
    EXPECT_EQ(formatUtc(w.get(), 5, 60, 0), "code 12");
    w->encodingRules = kDer;
    EXPECT_EQ(formatUtc(w.get(), 2024, 0, 0), "240101120000Z");
    EXPECT_EQ(formatUtc(w.get(), 2024, 0, 60), "code 12");
}

TEST(TimeStruct, MillisecondsAndZoneFromTheText) {
    TestWorld w;
    struct Case { const char* text; uint16_t ms; int16_t offset; uint8_t utc; };
    const Case cases[] = {{"20240101120000.5000Z", 500, 0, 1}, {"20240101120000.05Z", 50, 0, 1},
                          {"20240101120000.0004+0100", 0, 60, 0}, {"20240101120000.123999999-2359", 123, -1439, 0},
                          {"20240101120000", 0, 0, 0}};
    for (const Case& c : cases) {
        KivTimeStruct t{};
        ASSERT_EQ(kivGeneralizedTimeToStruct(w.get(), &t, c.text), 0) << c.text;
        EXPECT_EQ(std::tuple(t.year, t.hour, t.milliseconds, t.zoneOffset, t.isUtc),
                  std::tuple(2024, 12, c.ms, c.offset, c.utc)) << c.text;
    }
    KivTimeStruct t{};
    EXPECT_EQ(kivUtcTimeToStruct(w.get(), &t, "990520130507+9999"), 0);
    EXPECT_EQ(std::tuple(t.year, t.zoneOffset), std::tuple(99, 6039));
    EXPECT_EQ(kivUtcTimeToStruct(w.get(), nullptr, "990520130507Z"), 6);
    w->encodingRules = kDer;
    EXPECT_EQ(kivGeneralizedTimeToStruct(w.get(), &t, "20240101120000.5000Z"), 12);
}

// A failed GeneralizedTime record allocation is swept in tests/faults; the
// UTCTime one is not.
TEST(TimeStruct, NewStructuresComeFromTheHookAndNothingLeaks) {
    TestWorld w;
    AllocCounter counter;
    fenk::test::installCountingHooks(w.get(), &counter);
    KivTimeStruct* t = kivNewGeneralizedTimeStruct(w.get(), "20240229120000.5Z");
    ASSERT_NE(t, nullptr);
    EXPECT_EQ(std::tuple(t->day, t->milliseconds, counter.live), std::tuple(29, 500, 1));
    kivRelease(w.get(), t);
    t = kivNewUtcTimeStruct(w.get(), "240229120000-0130");
    ASSERT_NE(t, nullptr);
    EXPECT_EQ(t->zoneOffset, -90);
    kivRelease(w.get(), t);
    EXPECT_EQ(kivNewGeneralizedTimeStruct(w.get(), "2024022912Z"), nullptr);
    EXPECT_EQ(kivNewUtcTimeStruct(w.get(), "2402291200"), nullptr);
    counter.failAt = counter.calls + 1;
    EXPECT_EQ(kivNewUtcTimeStruct(w.get(), "240229120000Z"), nullptr);
    EXPECT_EQ(counter.live, 0);
}

}  // namespace
