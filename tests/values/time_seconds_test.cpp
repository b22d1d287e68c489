// GeneralizedTime and UTCTime values and seconds since 1970, checked against
// the C library's timegm and gmtime, with the 32-bit limits and the memory
// the text and structure variants obtain.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <string>
#include <tuple>

#include "support/alloc_hooks.h"
#include "support/test_world.h"

namespace {

using fenk::test::AllocCounter;
using fenk::test::TestWorld;

constexpr int64_t kMax = INT32_MAX;

std::string zoneText(int offset) {
    if (offset == 0) return "Z";
    char text[16];
    int magnitude = offset < 0 ? -offset : offset;
    std::snprintf(text, sizeof text, "%c%02d%02d", offset < 0 ? '-' : '+', magnitude / 60, magnitude % 60);
    return text;
}

// Every day from 1970 to 2038 at several times and offsets: the seconds of
// the text agree with timegm, and the seconds give the text back (in BER's
// shortest form) and the same fields as a structure.
TEST(TimeSeconds, EveryDayFrom1970To2038AgreesWithTimegmBothWays) {
    TestWorld w;
    KivGlobal* g = w.get();
    const int times[][3] = {{0, 0, 0}, {3, 14, 7}, {12, 34, 56}, {23, 59, 59}};
    int checked = 0;
    for (int64_t day = 0; day * 86400 <= kMax; ++day) {
        const time_t midnight = static_cast<time_t>(day * 86400);
        struct tm date;
        gmtime_r(&midnight, &date);
        for (const auto& t : times) {
            for (int offset : {-1439, -330, 0, 60, 765, 1439}) {
                struct tm local = date;
                local.tm_hour = t[0];
                local.tm_min = t[1];
                local.tm_sec = t[2];
                const int64_t expected = int64_t{timegm(&local)} - offset * 60;
                char fields[64], shortFields[64];
                std::snprintf(fields, sizeof fields, "%04d%02d%02d%02d%02d%02d", local.tm_year + 1900,
                              local.tm_mon + 1, local.tm_mday, t[0], t[1], t[2]);
                std::snprintf(shortFields, sizeof shortFields, "%.*s", t[2] ? 14 : 12, fields);
                const std::string gt = fields + zoneText(offset), utc = gt.substr(2);
                uint64_t seconds = 0, utcSeconds = 0;
                const int32_t code = kivGeneralizedTimeTextToSeconds(g, gt.c_str(), &seconds);
                const int32_t utcCode = kivUtcTimeTextToSeconds(g, utc.c_str(), &utcSeconds);
                if (expected < 0 || expected > kMax) {
                    ASSERT_EQ(std::tuple(code, utcCode), std::tuple(12, 12)) << gt;
                    continue;
                }
                ASSERT_EQ(std::tuple(code, seconds, utcCode, utcSeconds),
                          std::tuple(0, static_cast<uint64_t>(expected), 0, static_cast<uint64_t>(expected))) << gt;

                const auto s = static_cast<int32_t>(expected);
                char buffer[32];
                char* text = buffer;
                ASSERT_EQ(kivSecondsToGeneralizedTimeText(g, s, offset, &text), 0);
                ASSERT_EQ(std::string(text), shortFields + zoneText(offset)) << s;
                ASSERT_EQ(kivSecondsToUtcTimeText(g, s, offset, &text), 0);
                ASSERT_EQ(std::string(text), std::string(shortFields + 2) + zoneText(offset));

                KivTimeStruct value, utcValue;
                KivTimeStruct *out = &value, *utcOut = &utcValue;
                ASSERT_EQ(std::tuple(kivSecondsToGeneralizedTimeStruct(g, s, offset, &out),
                                     kivSecondsToUtcTimeStruct(g, s, offset, &utcOut)), std::tuple(0, 0));
                ASSERT_EQ(std::tuple(value.year, value.month, value.day, value.second, utcValue.year),
                          std::tuple(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, t[2],
                                     (local.tm_year + 1900) % 100)) << gt;
                seconds = utcSeconds = 0;  // written again by the structure routines
                ASSERT_EQ((std::tuple{kivGeneralizedTimeStructToSeconds(g, &value, &seconds), seconds,
                                      kivUtcTimeStructToSeconds(g, &utcValue, &utcSeconds), utcSeconds}),
                          std::tuple(0, static_cast<uint64_t>(expected), 0, static_cast<uint64_t>(expected))) << gt;
                ++checked;
            }
        }
    }
    EXPECT_GT(checked, 24000 * 4 * 6);
}

TEST(TimeSeconds, TextLimitsCalendarAndOffsets) {
    TestWorld w;
    // utc: the UTCTime slot; otherwise GeneralizedTime, read as BER under DER too.
    struct Case { bool utc; const char* text; int32_t code; uint64_t seconds; };
    const Case cases[] = {
        {0, "20240229120000Z", 0, 1709208000}, {0, "20230229120000Z", 12, 0}, {0, "20240431120000Z", 12, 0},
        {0, "19700101000000Z", 0, 0}, {0, "19691231235959Z", 12, 0},
        {0, "19691231233000-0100", 12, 0},  // the year is refused before the offset
        {0, "19700101003000+0100", 12, 0}, {0, "19700101010000+0100", 0, 0},
        {0, "19700101000000+0001", 0, 0},  // +1 minute reads as 'Z'
        {0, "20380119031407Z", 0, 2147483647}, {0, "20380119031408Z", 12, 0},
        {0, "20380119041407+0100", 0, 2147483647}, {0, "203801190314.999Z", 0, 2147483640},
        {0, "20240229120000.5+0530", 0, 1709208000 - 330 * 60}, {0, "202402291200", 0, 1709208000},
        {0, "2024022912", 12, 0},
        {1, "380119031407Z", 0, 2147483647}, {1, "700101000000Z", 0, 0}, {1, "491231235959Z", 12, 0},
        {1, "500101000000Z", 12, 0}, {1, "700101000000+2359", 12, 0}, {1, "700102000000+2400", 12, 0},
        {1, "700101235900-0001", 0, 86400}, {1, "7001010000z", 0, 0}};
    for (const Case& c : cases) {
        for (int32_t rules : {0, 3}) {
            w->encodingRules = rules;
            uint64_t seconds = 0;
            const int32_t code = c.utc ? kivUtcTimeTextToSeconds(w.get(), c.text, &seconds)
                                       : kivGeneralizedTimeTextToSeconds(w.get(), c.text, &seconds);
            EXPECT_EQ(std::tuple(code, seconds), std::tuple(c.code, c.seconds)) << c.text << " rules " << rules;
        }
    }
    uint64_t seconds;
    EXPECT_EQ(kivGeneralizedTimeTextToSeconds(w.get(), nullptr, &seconds), 6);
    EXPECT_EQ(kivUtcTimeTextToSeconds(w.get(), "700101000000Z", nullptr), 6);
    EXPECT_EQ(kivGeneralizedTimeTextToSeconds(nullptr, "20240229120000Z", &seconds), 6);
}

TEST(TimeSeconds, StructuresTheirYearsAndZones) {
    TestWorld w;
    uint64_t seconds = 0;
    KivTimeStruct t{2024, 2, 29, 12, 0, 0, 999, 60, 1};
    EXPECT_EQ(kivGeneralizedTimeStructToSeconds(w.get(), &t, &seconds), 0);
    EXPECT_EQ(seconds, 1709208000u);  // UTC: the offset and milliseconds are ignored
    t.isUtc = 0;
    EXPECT_EQ(kivGeneralizedTimeStructToSeconds(w.get(), &t, &seconds), 0);
    EXPECT_EQ(seconds, 1709208000u - 3600);
    t.zoneOffset = -1440;
    EXPECT_EQ(kivGeneralizedTimeStructToSeconds(w.get(), &t, &seconds), 12);
    t.year = 0x8000;
    EXPECT_EQ(kivGeneralizedTimeStructToSeconds(w.get(), &t, &seconds), 12);

    KivTimeStruct u{24, 2, 29, 12, 0, 0, 0, 0, 1};
    EXPECT_EQ(kivUtcTimeStructToSeconds(w.get(), &u, &seconds), 0);
    EXPECT_EQ(seconds, 1709208000u);
    for (uint16_t year : {100, 49, 50}) {
        u.year = year;
        EXPECT_EQ(kivUtcTimeStructToSeconds(w.get(), &u, &seconds), 12) << year;
    }
    EXPECT_EQ(kivUtcTimeStructToSeconds(w.get(), nullptr, &seconds), 6);
}

TEST(TimeSeconds, SecondsToTextAndStructureAtTheEdges) {
    TestWorld w;
    char buffer[32];
    char* text = buffer;
    for (auto [s, offset] : {std::pair(-1, 0), {0, 1440}, {0, -1440}}) {
        EXPECT_EQ(kivSecondsToGeneralizedTimeText(w.get(), s, offset, &text), 12);
        EXPECT_EQ(kivSecondsToUtcTimeText(w.get(), s, offset, &text), 12);
    }
    struct Case { int32_t seconds, offset; const char* gt; const char* utc; };
    // Offsets that reach back before 1970 or forward past 2038 in local time.
    const Case cases[] = {{0, 1, "197001010001Z", "7001010001+0001"},
                          {0, -1439, "196912310001-2359", "6912310001-2359"},
                          {2147483647, 1439, "20380120031307+2359", "380120031307+2359"}};
    for (const Case& c : cases) {
        ASSERT_EQ(kivSecondsToGeneralizedTimeText(w.get(), c.seconds, c.offset, &text), 0);
        EXPECT_STREQ(text, c.gt);
        ASSERT_EQ(kivSecondsToUtcTimeText(w.get(), c.seconds, c.offset, &text), 0);
        EXPECT_STREQ(text, c.utc);
    }
    KivTimeStruct value;
    KivTimeStruct* out = &value;
    ASSERT_EQ(kivSecondsToUtcTimeStruct(w.get(), 0, -60, &out), 0);
    EXPECT_EQ(std::tuple(value.year, value.hour, value.zoneOffset, value.isUtc, value.milliseconds),
              std::tuple(69, 23, -60, 0, 0));
    ASSERT_EQ(kivSecondsToGeneralizedTimeStruct(w.get(), 86399, 0, &out), 0);
    EXPECT_EQ(std::tuple(value.isUtc, value.second), std::tuple(1, 59));
    EXPECT_EQ(kivSecondsToGeneralizedTimeStruct(w.get(), 0, 0, nullptr), 6);
    EXPECT_EQ(kivSecondsToUtcTimeText(nullptr, 0, 0, &text), 6);
}

// A failed allocation of the text variants is swept in tests/faults; the
// structure variants are failed here.
TEST(TimeSeconds, TextsAndStructuresAllocatedWhenTheHolderIsEmptyAndNothingLeaks) {
    TestWorld w;
    AllocCounter counter;
    fenk::test::installCountingHooks(w.get(), &counter);
    char* text = nullptr;
    ASSERT_EQ(kivSecondsToGeneralizedTimeText(w.get(), 2147483647, -1439, &text), 0);
    EXPECT_STREQ(text, "20380118031507-2359");
    kivRelease(w.get(), text);
    KivTimeStruct* value = nullptr;
    ASSERT_EQ(kivSecondsToUtcTimeStruct(w.get(), 60, 0, &value), 0);
    EXPECT_EQ(value->minute, 1);
    kivRelease(w.get(), value);
    EXPECT_EQ(counter.live, 0);

    const long before = counter.calls;
    text = nullptr;
    value = nullptr;
    EXPECT_EQ(kivSecondsToUtcTimeText(w.get(), -5, 0, &text), 12);
    EXPECT_EQ(kivSecondsToGeneralizedTimeStruct(w.get(), 0, 2000, &value), 12);
    EXPECT_EQ(counter.calls, before);  // refused before anything is obtained

    for (bool utc : {false, true}) {
        counter.failAt = counter.calls + 1;
        value = nullptr;
        EXPECT_EQ(utc ? kivSecondsToUtcTimeStruct(w.get(), 0, 0, &value)
                      : kivSecondsToGeneralizedTimeStruct(w.get(), 0, 0, &value), 8) << utc;
        EXPECT_EQ(value, nullptr);
    }
    EXPECT_EQ(counter.live, 0);
}

// The text and structure variants allocate through the world's table, so a
// replaced slot 55 decides where the memory comes from.
KivAllocHook reportedHook;
void reportOtherHooks(KivGlobal*, KivAllocHook* alloc, KivFreeHook*, KivReallocHook*) {
    if (alloc) *alloc = reportedHook;
}
int otherAllocations = 0;
void* otherAlloc(KivGlobal*, size_t size) {
    ++otherAllocations;
    static char block[64];
    return size <= sizeof block ? block : nullptr;
}

TEST(TimeSeconds, MemoryIsObtainedThroughTheWorldsTable) {
    TestWorld w;
    KivRoutine table[KIV_SLOT_COUNT];
    std::copy(apiTbl, apiTbl + KIV_SLOT_COUNT, table);
    table[kivSlotFetchMemoryHooks] = reinterpret_cast<KivRoutine>(&reportOtherHooks);
    reportedHook = &otherAlloc;
    w->apiTable = table;
    char* text = nullptr;
    ASSERT_EQ(kivSecondsToUtcTimeText(w.get(), 0, 0, &text), 0);
    KivTimeStruct* value = nullptr;
    ASSERT_EQ(kivSecondsToGeneralizedTimeStruct(w.get(), 0, 0, &value), 0);
    EXPECT_EQ(otherAllocations, 2);
}

}  // namespace
