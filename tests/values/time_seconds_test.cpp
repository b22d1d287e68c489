// GeneralizedTime and UTCTime values and seconds since 1970, checked against
// the C library's timegm and gmtime, with the 32-bit limits and the memory
// the text and structure variants obtain.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <ctime>
#include <algorithm>
#include <string>

#include "support/alloc_hooks.h"
#include "support/test_world.h"

namespace {

using fenk::test::AllocCounter;
using fenk::test::installCountingHooks;
using fenk::test::TestWorld;

constexpr int64_t kMax = INT32_MAX;

std::string zoneText(int offset) {
    if (offset == 0) return "Z";
    char text[16];
    int magnitude = offset < 0 ? -offset : offset;
    std::snprintf(text, sizeof text, "%c%02d%02d", offset < 0 ? '-' : '+', magnitude / 60,
                  magnitude % 60);
    return text;
}

// Every day from 1970 to 2038 at several times and offsets: the seconds of
// the text agree with timegm, and the seconds give the text back (in BER's
// shortest form) and the same fields as a structure.
TEST(TimeSeconds, EveryDayFrom1970To2038AgreesWithTimegmBothWays) {
    TestWorld w;
    KivGlobal* g = w.get();
    const int times[][3] = {{0, 0, 0}, {3, 14, 7}, {12, 34, 56}, {23, 59, 59}};
    const int offsets[] = {-1439, -330, 0, 60, 765, 1439};
    int checked = 0;
    for (int64_t day = 0; day * 86400 <= kMax; ++day) {
        const time_t midnight = static_cast<time_t>(day * 86400);
        struct tm date;
        gmtime_r(&midnight, &date);
        for (const auto& t : times) {
            for (int offset : offsets) {
                struct tm local = date;
                local.tm_hour = t[0];
                local.tm_min = t[1];
                local.tm_sec = t[2];
                const int64_t expected = int64_t{timegm(&local)} - offset * 60;
                char fields[64], shortFields[64];
                std::snprintf(fields, sizeof fields, "%04d%02d%02d%02d%02d%02d",
                              local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, t[0], t[1],
                              t[2]);
                std::snprintf(shortFields, sizeof shortFields, "%.*s", t[2] ? 14 : 12, fields);
                const std::string gt = fields + zoneText(offset);
                const std::string utc = gt.substr(2);
                uint64_t seconds = 0, utcSeconds = 0;
                const int32_t code = kivGeneralizedTimeTextToSeconds(g, gt.c_str(), &seconds);
                const int32_t utcCode = kivUtcTimeTextToSeconds(g, utc.c_str(), &utcSeconds);
                if (expected < 0 || expected > kMax) {
                    ASSERT_EQ(code, 12) << gt;
                    ASSERT_EQ(utcCode, 12) << utc;
                    continue;
                }
                ASSERT_EQ(code, 0) << gt;
                ASSERT_EQ(seconds, static_cast<uint64_t>(expected)) << gt;
                ASSERT_EQ(utcCode, 0) << utc;
                ASSERT_EQ(utcSeconds, seconds) << utc;

                const auto s = static_cast<int32_t>(expected);
                char buffer[32];
                char* text = buffer;
                ASSERT_EQ(kivSecondsToGeneralizedTimeText(g, s, offset, &text), 0);
                ASSERT_EQ(std::string(text), shortFields + zoneText(offset)) << s;
                ASSERT_EQ(kivSecondsToUtcTimeText(g, s, offset, &text), 0);
                ASSERT_EQ(std::string(text), std::string(shortFields + 2) + zoneText(offset));

                KivTimeStruct value, utcValue;
                KivTimeStruct* out = &value;
                KivTimeStruct* utcOut = &utcValue;
                ASSERT_EQ(kivSecondsToGeneralizedTimeStruct(g, s, offset, &out), 0);
                ASSERT_EQ(kivSecondsToUtcTimeStruct(g, s, offset, &utcOut), 0);
                ASSERT_EQ(value.year, local.tm_year + 1900);
                ASSERT_EQ(value.month, local.tm_mon + 1);
                ASSERT_EQ(value.day, local.tm_mday);
                ASSERT_EQ(value.second, t[2]);
                ASSERT_EQ(utcValue.year, (local.tm_year + 1900) % 100);
                ASSERT_EQ(kivGeneralizedTimeStructToSeconds(g, &value, &seconds), 0);
                ASSERT_EQ(seconds, static_cast<uint64_t>(expected));
                ASSERT_EQ(kivUtcTimeStructToSeconds(g, &utcValue, &seconds), 0);
                ASSERT_EQ(seconds, static_cast<uint64_t>(expected));
                ++checked;
            }
        }
    }
    EXPECT_GT(checked, 24000 * 4 * 6);
}

TEST(TimeSeconds, TextLimitsCalendarAndOffsets) {
    TestWorld w;
    struct Case { const char* text; int32_t code; uint64_t seconds; };
    const Case gt[] = {{"20240229120000Z", 0, 1709208000},
                       {"20230229120000Z", 12, 0},
                       {"20240431120000Z", 12, 0},
                       {"19700101000000Z", 0, 0},
                       {"19691231235959Z", 12, 0},
                       {"19691231233000-0100", 12, 0},  // the year is refused before the offset
                       {"19700101003000+0100", 12, 0},
                       {"19700101010000+0100", 0, 0},
                       {"19700101000000+0001", 0, 0},   // +1 minute reads as 'Z'
                       {"20380119031407Z", 0, 2147483647},
                       {"20380119031408Z", 12, 0},
                       {"20380119041407+0100", 0, 2147483647},
                       {"203801190314.999Z", 0, 2147483640},
                       {"20240229120000.5+0530", 0, 1709208000 - 330 * 60},
                       {"202402291200", 0, 1709208000},
                       {"2024022912", 12, 0}};
    for (const Case& c : gt) {
        for (int32_t rules : {0, 3}) {  // always read as BER
            w->encodingRules = rules;
            uint64_t seconds = 0;
            EXPECT_EQ(kivGeneralizedTimeTextToSeconds(w.get(), c.text, &seconds), c.code) << c.text;
            EXPECT_EQ(seconds, c.seconds) << c.text;
        }
    }
    const Case utc[] = {{"380119031407Z", 0, 2147483647}, {"700101000000Z", 0, 0},
                        {"491231235959Z", 12, 0},         {"500101000000Z", 12, 0},
                        {"700101000000+2359", 12, 0},     {"700102000000+2400", 12, 0},
                        {"700101235900-0001", 0, 86400},  {"7001010000z", 0, 0}};
    for (const Case& c : utc) {
        uint64_t seconds = 0;
        EXPECT_EQ(kivUtcTimeTextToSeconds(w.get(), c.text, &seconds), c.code) << c.text;
        EXPECT_EQ(seconds, c.seconds) << c.text;
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
    const std::pair<int32_t, int32_t> refused[] = {{-1, 0}, {0, 1440}, {0, -1440}};
    for (auto [s, offset] : refused) {
        EXPECT_EQ(kivSecondsToGeneralizedTimeText(w.get(), s, offset, &text), 12);
        EXPECT_EQ(kivSecondsToUtcTimeText(w.get(), s, offset, &text), 12);
    }
    struct Case { int32_t seconds, offset; const char* gt; const char* utc; };
    const Case cases[] = {{0, 0, "197001010000Z", "7001010000Z"},
                          {0, 1, "197001010001Z", "7001010001+0001"},
                          {0, -1439, "196912310001-2359", "6912310001-2359"},
                          {2147483647, 0, "20380119031407Z", "380119031407Z"},
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
    EXPECT_EQ(value.year, 69);
    EXPECT_EQ(value.hour, 23);
    EXPECT_EQ(value.zoneOffset, -60);
    EXPECT_EQ(value.isUtc, 0);
    EXPECT_EQ(value.milliseconds, 0);
    ASSERT_EQ(kivSecondsToGeneralizedTimeStruct(w.get(), 86399, 0, &out), 0);
    EXPECT_EQ(value.isUtc, 1);
    EXPECT_EQ(value.second, 59);
    EXPECT_EQ(kivSecondsToGeneralizedTimeStruct(w.get(), 0, 0, nullptr), 6);
    EXPECT_EQ(kivSecondsToUtcTimeText(nullptr, 0, 0, &text), 6);
}

TEST(TimeSeconds, TextsAndStructuresAllocatedWhenTheHolderIsEmptyAndNothingLeaks) {
    TestWorld w;
    AllocCounter counter;
    installCountingHooks(w.get(), &counter);
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

    for (int slot = 0; slot < 4; ++slot) {
        counter.failAt = counter.calls + 1;
        text = nullptr;
        value = nullptr;
        const int32_t code =
            slot == 0   ? kivSecondsToGeneralizedTimeText(w.get(), 0, 0, &text)
            : slot == 1 ? kivSecondsToUtcTimeText(w.get(), 0, 0, &text)
            : slot == 2 ? kivSecondsToGeneralizedTimeStruct(w.get(), 0, 0, &value)
                        : kivSecondsToUtcTimeStruct(w.get(), 0, 0, &value);
        EXPECT_EQ(code, 8) << slot;
        EXPECT_EQ(text, nullptr);
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
