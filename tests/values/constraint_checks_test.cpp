// ENUMERATED and permitted-alphabet checks through the table: what passes,
// what raises, with which code and message, and the value set reached
// through the world's own table.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/raise_catcher.h"
#include "support/test_world.h"

namespace {

const std::string kBadCharacter = "17 E0064S: Permitted alphabet constraint violated, bad character: ";

class ConstraintChecks : public ::testing::Test {
protected:
    ConstraintChecks() {
        w->messageOut = w->messageText;
        w->errorMode = 0;
    }
    // "passed", or the code the raise delivered and the message composed.
    template <class Call>
    std::string check(Call&& call) {
        std::memset(w->messageText, 0, sizeof w->messageText);
        fenk::test::Caught caught = fenk::test::catchRaise(w.get(), call);
        return caught.raised ? std::to_string(caught.value) + " " + w->messageText : "passed";
    }
    fenk::test::TestWorld w;
};

TEST_F(ConstraintChecks, EnumeratedFindsTheElementOrRaises) {
    const uint32_t values[] = {3, 7, 0xFFFFFFFF, 7};
    const KivEnumeratedList list{4, values};
    for (auto* find : {KIV_SLOT(KivFindEnumeratedFn, kivSlotFindEnumerated),
                       KIV_SLOT(KivFindEnumeratedFn, kivSlotFindEnumeratedToo)}) {
        EXPECT_EQ(find(w.get(), 7, &list), &values[1]) << "the first equal element";
        EXPECT_EQ(find(w.get(), 0xFFFFFFFF, &list), &values[2]);
        EXPECT_EQ(check([&] { find(w.get(), 5, &list); }), "17 E0071S: Value not among the ENUMERATED: 5.\n");
    }
    const KivEnumeratedList empty{0, values};
    EXPECT_EQ(check([&] { kivFindEnumerated(w.get(), 3, &empty); }), "17 E0071S: Value not among the ENUMERATED: 3.\n");
}

// The index table of an alphabet of the given characters, from lowest on.
std::vector<uint8_t> indexTable(const std::vector<uint32_t>& chars, uint32_t lowest) {
    std::vector<uint8_t> table(256, 255);
    for (size_t i = 0; i < chars.size(); ++i) table[chars[i] - lowest] = static_cast<uint8_t>(i);
    return table;
}

TEST_F(ConstraintChecks, EightBitStringsUseTheCodeItself) {
    // 0xC0 has an index here, yet a code above 127 is refused before the
    // table is read.
    const auto table = indexTable({'A', 'B', 'C', ' ', 0xC0}, 0);
    const KivPermittedAlphabet alphabet{5, nullptr, table.data(), 'A'};
    const uint8_t good[] = "CAB A";
    EXPECT_EQ(check([&] { kivCheckAlphabet8(w.get(), good, 5, &alphabet); }), "passed");
    const uint8_t bad[] = {'A', 0xC0, 'Z'};
    EXPECT_EQ(check([&] { kivCheckAlphabet8(w.get(), bad, 3, &alphabet); }), kBadCharacter + "{0,0,0,192}.\n");
    EXPECT_EQ(check([&] { kivCheckAlphabet8(w.get(), bad + 2, 1, &alphabet); }), kBadCharacter + "'Z'.\n");
    EXPECT_EQ(check([&] { kivCheckAlphabet8(w.get(), bad, 0, &alphabet); }), "passed");
}

TEST_F(ConstraintChecks, WideStringsThroughIndexTables) {
    const uint32_t lowest = 0x400;
    const auto table = indexTable({0x410, 0x411, 0x4FF}, lowest);
    const KivPermittedAlphabet small{3, nullptr, table.data(), lowest};
    const uint16_t good16[] = {0x410, 0x4FF, 0x411};
    const uint32_t good32[] = {0x410, 0x4FF, 0x411};
    EXPECT_EQ(check([&] { kivCheckAlphabet16(w.get(), good16, 3, &small); }), "passed");
    EXPECT_EQ(check([&] { kivCheckAlphabet32(w.get(), good32, 3, &small); }), "passed");

    struct Bad { uint32_t code; const char* shown; };
    for (const Bad& bad : {Bad{0x412, "{0,0,4,18}"}, {0x3FF, "{0,0,3,255}"}, {0x500, "{0,0,5,0}"}}) {
        const uint16_t s16[] = {0x410, static_cast<uint16_t>(bad.code)};
        const uint32_t s32[] = {0x410, bad.code};
        EXPECT_EQ(check([&] { kivCheckAlphabet16(w.get(), s16, 2, &small); }), kBadCharacter + bad.shown + ".\n");
        EXPECT_EQ(check([&] { kivCheckAlphabet32(w.get(), s32, 2, &small); }), kBadCharacter + bad.shown + ".\n");
    }

    // With 256 characters or more the table is not consulted: only the
    // range from the lowest code counts.
    const KivPermittedAlphabet large{256, nullptr, table.data(), lowest};
    const uint32_t inRange[] = {0x400, 0x412, 0x4FF};
    EXPECT_EQ(check([&] { kivCheckAlphabet32(w.get(), inRange, 3, &large); }), "passed");
    const uint32_t high[] = {0x80000400};
    EXPECT_EQ(check([&] { kivCheckAlphabet32(w.get(), high, 1, &large); }).substr(0, 3), "17 ");
}

int32_t valueSetCalls = 0;
int32_t countingValueInSet(const uint32_t* tree, uint32_t value) {
    ++valueSetCalls;
    return KIV_SLOT(KivValueInSetFn, kivSlotValueInSet)(tree, value);
}

TEST_F(ConstraintChecks, WideStringsThroughTheWorldsValueSet) {
    // Characters 0x20..0x7E and 0x10000..0x10FFFF.
    const uint32_t set[] = {0,          (KIV_VALUE_SET_RANGE << 30) | 4, 0x20, 0x7E,
                            0,          KIV_VALUE_SET_RANGE << 30,       0x10000, 0x10FFFF};
    const KivPermittedAlphabet alphabet{KIV_ALPHABET_VALUE_SET, set, nullptr, 0};
    KivRoutine table[KIV_SLOT_COUNT];
    std::memcpy(table, apiTbl, sizeof table);
    table[kivSlotValueInSet] = reinterpret_cast<KivRoutine>(&countingValueInSet);
    w->apiTable = table;

    valueSetCalls = 0;
    const uint32_t good[] = {'a', 0x10000, 0x10FFFF, '~'};
    EXPECT_EQ(check([&] { kivCheckAlphabet32(w.get(), good, 4, &alphabet); }), "passed");
    EXPECT_EQ(valueSetCalls, 4) << "the set is asked through the world's table";

    const uint16_t bad16[] = {'a', 0x7F, 0x1F};
    EXPECT_EQ(check([&] { kivCheckAlphabet16(w.get(), bad16, 3, &alphabet); }), kBadCharacter + "{0,0,0,127}.\n");
    const uint32_t bad32[] = {0x110000};
    EXPECT_EQ(check([&] { kivCheckAlphabet32(w.get(), bad32, 1, &alphabet); }), kBadCharacter + "{0,17,0,0}.\n");
    valueSetCalls = 0;
    EXPECT_EQ(check([&] { kivCheckAlphabet16(w.get(), bad16, 0, &alphabet); }), "passed");
    EXPECT_EQ(valueSetCalls, 0);
}

}  // namespace
