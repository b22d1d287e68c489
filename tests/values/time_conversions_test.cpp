// GeneralizedTime and UTCTime conversions among text, fields and KivTimeStruct,
// under BER, DER and CER where they differ.
#include <gtest/gtest.h>

#include <array>
#include <string>

#include "support/alloc_hooks.h"
#include "support/test_world.h"

namespace {

using fenk::test::AllocCounter;
using fenk::test::installCountingHooks;
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
    p.code = kivParseUtcTime(w, text, &p.year, &p.month, &p.day, &p.hour, &p.minute, &p.second,
                             &p.zone);
    return p;
}

TEST(GeneralizedTimeParse, FractionsKeepLeadingAndEmbeddedZerosAndCapAtNineDigits) {
    TestWorld w;
    struct Case { const char* fraction; uint32_t value; uint16_t digits; bool canonical; };
    const Case cases[] = {{".001", 1, 3, true},          {".050", 50, 3, false},
                          {".5", 5, 1, true},            {".500", 500, 3, false},
                          {".105", 105, 3, true},        {",5", 5, 1, false},
                          {".000", 0, 3, false},         {".1234567891234", 123456789, 9, true},
                          {".0001234567891", 123456789, 12, true},
                          {".1234567890", 123456789, 9, false}};
    for (const Case& c : cases) {
        const std::string text = std::string("20240101120000") + c.fraction + "Z";
        w->encodingRules = kBer;
        Parsed p = parseGt(w.get(), text.c_str());
        EXPECT_EQ(p.code, 0) << text;
        EXPECT_EQ(p.fraction, c.value) << text;
        EXPECT_EQ(p.digits, c.digits) << text;
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
        EXPECT_EQ(p.code, c.code) << c.text;
        if (c.code == 0) {
            EXPECT_EQ(p.zone, c.zone) << c.text;
        }
        w->encodingRules = kDer;
        EXPECT_EQ(parseGt(w.get(), c.text).code, c.derCode) << c.text << " under DER";
    }
    w->encodingRules = kBer;
    Parsed p = parseGt(w.get(), "202402311200Z");  // the day is not checked against the month
    EXPECT_EQ(p.code, 0);
    EXPECT_EQ(p.day, 31u);
    EXPECT_EQ(p.second, 0u);

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
    EXPECT_EQ(p.code, 0);
    EXPECT_EQ(p.year, 24u);
    EXPECT_EQ(p.zone, 300);
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
    EXPECT_EQ(kivParseUtcTime(w.get(), "0905201305Z", f, f + 1, f + 2, f + 3, f + 4, f + 5, nullptr),
              6);
    EXPECT_EQ(parseUtc(nullptr, "0905201305Z").code, 6);
}

TEST(TimeFields, SixteenBitFieldsChangeOnlyOnSuccess) {
    TestWorld w;
    uint16_t f[6] = {7, 7, 7, 7, 7, 7}, digits = 0;
    uint32_t value = 0;
    int32_t zone = 0;
    EXPECT_EQ(kivGeneralizedTimeFields(w.get(), "20240101126000Z", f, f + 1, f + 2, f + 3, f + 4,
                                       f + 5, &value, &digits, &zone),
              12);
    EXPECT_EQ(kivUtcTimeFields(w.get(), "2401011200", f, f + 1, f + 2, f + 3, f + 4, f + 5, &zone),
              12);
    for (uint16_t v : f) EXPECT_EQ(v, 7);
    EXPECT_EQ(kivGeneralizedTimeFields(w.get(), "20241231235958.25-0800", f, f + 1, f + 2, f + 3,
                                       f + 4, f + 5, &value, &digits, &zone),
              0);
    EXPECT_EQ((std::array<uint16_t, 6>{f[0], f[1], f[2], f[3], f[4], f[5]}),
              (std::array<uint16_t, 6>{2024, 12, 31, 23, 59, 58}));
    EXPECT_EQ(value, 25u);
    EXPECT_EQ(digits, 2);
    EXPECT_EQ(zone, -480);
    EXPECT_EQ(kivUtcTimeFields(w.get(), "991231235958Z", f, f + 1, f + 2, f + 3, f + 4, f + 5,
                               &zone),
              0);
    EXPECT_EQ(f[0], 99);
    EXPECT_EQ(zone, 1);
}

std::string formatGt(KivGlobal* w, uint32_t y, int32_t mo, int32_t d, uint32_t h, uint32_t mi,
                     uint32_t s, uint32_t fv, uint16_t fd, int32_t zone) {
    char out[64] = "untouched";
    int32_t code = kivFormatGeneralizedTime(w, y, mo, d, h, mi, s, fv, fd, zone, out);
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
    EXPECT_EQ(formatGt(g, 2024, 1, 1, 12, 0, 0, 0, 0, 1), "202401011200Z");
    EXPECT_EQ(formatGt(g, 2024, 1, 1, 12, 0, 0, 5000, 4, 1), "20240101120000.5Z");
    EXPECT_EQ(formatGt(g, 2024, 1, 1, 12, 0, 0, 0, 3, 0), "202401011200");
    EXPECT_EQ(formatGt(g, 2024, 1, 1, 12, 0, 10, 50, 3, -90), "20240101120010.05-0130");
    EXPECT_EQ(formatGt(g, 2024, 1, 1, 12, 0, 10, 0, 0, 1440), "20240101120010+2400");
    EXPECT_EQ(formatGt(g, 999, 1, 1, 12, 0, 10, 0, 0, 2), "09990101120010+0002");
    for (auto [fv, fd] : {std::pair<uint32_t, uint16_t>{123, 2}, {5, 0}})
        EXPECT_EQ(formatGt(g, 2024, 1, 1, 12, 0, 0, fv, fd, 1), "code 12") << fv;
    EXPECT_EQ(formatGt(g, 2024, 1, 1, 12, 0, 0, 0, 0, -1441), "code 12");
    EXPECT_EQ(formatGt(g, 10000, 1, 1, 12, 0, 0, 0, 0, 1), "code 12");
    EXPECT_EQ(formatGt(g, 2024, -1, 1, 12, 0, 0, 0, 0, 1), "code 12");
    EXPECT_EQ(formatGt(g, 2024, 1, 32, 12, 0, 0, 0, 0, 1), "code 12");
    EXPECT_EQ(formatGt(g, 2024, 1, 1, 24, 0, 0, 0, 0, 1), "code 12");
    EXPECT_EQ(kivFormatGeneralizedTime(g, 2024, 1, 1, 12, 0, 0, 0, 0, 1, nullptr), 12);
    EXPECT_EQ(formatGt(nullptr, 2024, 1, 1, 12, 0, 0, 0, 0, 1), "code 6");
    for (int32_t rules : {kDer, kCer}) {
        w->encodingRules = rules;
        EXPECT_EQ(formatGt(g, 2024, 1, 1, 12, 0, 0, 0, 0, 1), "20240101120000Z");
        EXPECT_EQ(formatGt(g, 2024, 1, 1, 12, 0, 0, 500, 3, 1), "20240101120000.5Z");
        EXPECT_EQ(formatGt(g, 2024, 1, 1, 12, 0, 0, 0, 0, 0), "code 12");
        EXPECT_EQ(formatGt(g, 2024, 1, 1, 12, 0, 0, 0, 0, 60), "code 12");
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
                          {"20240101120000.0004+0100", 0, 60, 0},
                          {"20240101120000.123999999-2359", 123, -1439, 0},
                          {"20240101120000", 0, 0, 0}};
    for (const Case& c : cases) {
        KivTimeStruct t{};
        ASSERT_EQ(kivGeneralizedTimeToStruct(w.get(), &t, c.text), 0) << c.text;
        EXPECT_EQ(t.year, 2024);
        EXPECT_EQ(t.hour, 12);
        EXPECT_EQ(t.milliseconds, c.ms) << c.text;
        EXPECT_EQ(t.zoneOffset, c.offset) << c.text;
        EXPECT_EQ(t.isUtc, c.utc) << c.text;
    }
    KivTimeStruct t{};
    EXPECT_EQ(kivUtcTimeToStruct(w.get(), &t, "990520130507+9999"), 0);
    EXPECT_EQ(t.year, 99);
    EXPECT_EQ(t.zoneOffset, 6039);
    EXPECT_EQ(kivUtcTimeToStruct(w.get(), nullptr, "990520130507Z"), 6);
    w->encodingRules = kDer;
    EXPECT_EQ(kivGeneralizedTimeToStruct(w.get(), &t, "20240101120000.5000Z"), 12);
}

TEST(TimeStruct, NewStructuresComeFromTheHookAndNothingLeaks) {
    TestWorld w;
    AllocCounter counter;
    installCountingHooks(w.get(), &counter);
    KivTimeStruct* t = kivNewGeneralizedTimeStruct(w.get(), "20240229120000.5Z");
    ASSERT_NE(t, nullptr);
    EXPECT_EQ(t->day, 29);
    EXPECT_EQ(t->milliseconds, 500);
    EXPECT_EQ(counter.live, 1);
    kivRelease(w.get(), t);
    t = kivNewUtcTimeStruct(w.get(), "240229120000-0130");
    ASSERT_NE(t, nullptr);
    EXPECT_EQ(t->zoneOffset, -90);
    kivRelease(w.get(), t);
    EXPECT_EQ(kivNewGeneralizedTimeStruct(w.get(), "2024022912Z"), nullptr);
    EXPECT_EQ(kivNewUtcTimeStruct(w.get(), "2402291200"), nullptr);
    EXPECT_EQ(counter.live, 0);
    counter.failAt = counter.calls + 1;
    EXPECT_EQ(kivNewGeneralizedTimeStruct(w.get(), "20240229120000Z"), nullptr);
    counter.failAt = counter.calls + 1;
    EXPECT_EQ(kivNewUtcTimeStruct(w.get(), "240229120000Z"), nullptr);
    EXPECT_EQ(counter.live, 0);
}

}  // namespace
