// The table as a binary interface: empty slots, shared routines, fixed
// answers and the companion forwarders.
#include <gtest/gtest.h>

#include "fenkapi.h"
#include "kivapit.h"

namespace {

constexpr int kEmptySlots[] = {8,  9,  30, 63, 64, 71, 72, 74,  75,  76,  77,  78,  79,
                               80, 81, 82, 83, 84, 85, 93, 186, 293, 294, 295, 296, 297};

TEST(Table, EmptySlotsStayNull) {
    static_assert(sizeof kEmptySlots / sizeof kEmptySlots[0] == 26);
    for (int slot : kEmptySlots) EXPECT_EQ(apiTbl[slot], nullptr) << "slot " << slot;
}

TEST(Table, SharedRoutinesFillTheirSlotsAlike) {
    const int groups[][4] = {{5, 52, 53, 86}, {36, 40, 46, 46}, {37, 38, 39, 39},
                             {41, 42, 87, 87}, {167, 191, 191, 191}};
    for (const auto& group : groups) {
        ASSERT_NE(apiTbl[group[0]], nullptr) << "slot " << group[0];
        for (int slot : group) EXPECT_EQ(apiTbl[slot], apiTbl[group[0]]) << "slot " << slot;
    }
    // Every other routine has a slot of its own.
    EXPECT_NE(apiTbl[43], apiTbl[45]);
    EXPECT_NE(apiTbl[5], apiTbl[36]);
}

TEST(Table, FixedAnswersIgnoreTheirArguments) {
    using ZeroWithArgs = int32_t(KivGlobal*, int32_t, void*);
    for (int slot : {5, 52, 53, 86})
        EXPECT_EQ(KIV_SLOT(ZeroWithArgs, slot)(nullptr, 77, &apiTbl), 0) << slot;
    for (int slot : {36, 40, 46}) EXPECT_EQ(KIV_SLOT(KivAnswerMinusOneFn, slot)(), -1) << slot;
    for (int slot : {37, 38, 39})
        EXPECT_EQ(static_cast<uint64_t>(KIV_SLOT(KivAnswerMinusOneWideFn, slot)()),
                  0xFFFFFFFFFFFFFFFFull);
    for (int slot : {41, 42, 87}) KIV_SLOT(KivDoNothingFn, slot)();

    const std::pair<int, int32_t> codes[] = {{43, 48}, {45, 25}, {47, 47}, {48, 57},
                                             {49, 56}, {50, 60}, {51, 59}};
    for (auto [slot, code] : codes) EXPECT_EQ(KIV_SLOT(KivFixedCodeFn, slot)(), code) << slot;
}

TEST(Table, CompanionSlotsReachTheirEntriesWithTheCallersArguments) {
    const std::pair<int, int32_t> routes[] = {{222, 143}, {223, 144}, {224, 145},
                                              {225, 146}, {226, 148}, {227, 149}};
    int marker = 0;
    for (auto [slot, ordinal] : routes) {
        int64_t result = KIV_SLOT(KivCompanionEntryFn, slot)(&marker, slot, -2, 3, -4, 1LL << 40);
        EXPECT_EQ(result, ordinal);
        KivCompanionCall call = kivCompanionLastCall();
        EXPECT_EQ(call.ordinal, ordinal);
        EXPECT_EQ(call.a1, &marker);
        EXPECT_EQ(call.args[0], slot);
        EXPECT_EQ(call.args[1], -2);
        EXPECT_EQ(call.args[2], 3);
        EXPECT_EQ(call.args[3], -4);
        EXPECT_EQ(call.args[4], 1LL << 40);
    }
}

}  // namespace
