// Raising through the table: the jump value, the outermost world, silent
// mode, the result trace hooks, slot 231 and the texts built by slot 172.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "support/raise_catcher.h"
#include "support/test_world.h"

using fenk::test::catchRaise;
using fenk::test::TestWorld;

namespace {

constexpr int32_t kNotLinked = 53;  // "0103S: The requested encoding rules were not linked: "

void useMessageText(TestWorld& w, int32_t mode) {
    w->messageOut = w->messageText;
    w->errorMode = mode;
}

TEST(Raise, ComposesIntoMessageTextAndJumpsWithTheCode) {
    TestWorld w;
    useMessageText(w, 0);
    w->errorPduNumber = 4;  // message 53 never carries PDU context
    auto caught = catchRaise(w.get(), [&] { kivRaiseText(w.get(), kNotLinked, "DER"); });
    EXPECT_TRUE(caught.raised);
    EXPECT_EQ(caught.value, 23);
    EXPECT_EQ(w->errorCode, 23);
    EXPECT_STREQ(w->messageText, "E0103S: The requested encoding rules were not linked: 'DER'.\n");
    EXPECT_EQ(w.output(), "") << "raising itself writes no trace output";
}

TEST(Raise, EachSlotCarriesItsArgumentForm) {
    TestWorld w;
    useMessageText(w, 3);
    // Form 1: the low 32 bits, signed for a signed kind.
    catchRaise(w.get(), [&] { kivRaise(w.get(), 8, 0xFFFFFFFFu); });
    EXPECT_STREQ(w->messageText, "D0009S: Out-of-range CHOICE selector: -1.\n");
    // Form 2: all 64 bits.
    catchRaise(w.get(), [&] { kivRaiseWide(w.get(), 8, 0x100000000ull); });
    EXPECT_STREQ(w->messageText, "D0009S: Out-of-range CHOICE selector: 4294967296.\n");
    catchRaise(w.get(), [&] { kivRaiseWide(w.get(), 7, ~0ull); });
    EXPECT_STREQ(w->messageText, "D0008S: Out of memory; bytes requested: 18446744073709551615.\n");
    catchRaise(w.get(), [&] { kivRaise(w.get(), 7, 0xFFFFFFFFu); });
    EXPECT_STREQ(w->messageText, "D0008S: Out of memory; bytes requested: 4294967295.\n");
    // A number given to a text message shows nothing; a null text neither.
    catchRaise(w.get(), [&] { kivRaise(w.get(), kNotLinked, 7); });
    EXPECT_STREQ(w->messageText, "D0103S: The requested encoding rules were not linked: .\n");
    catchRaise(w.get(), [&] { kivRaiseText(w.get(), kNotLinked, nullptr); });
    EXPECT_STREQ(w->messageText, "D0103S: The requested encoding rules were not linked: .\n");
}

TEST(Raise, GrandchildWorldUnwindsTheTopLevelWorld) {
    TestWorld top;
    useMessageText(top, 1);
    KivGlobal child{};
    KivGlobal grandchild{};
    child.parentWorld = top.get();
    grandchild.parentWorld = &child;
    grandchild.errorMode = 6;  // only the outermost world's settings count
    auto caught = catchRaise(top.get(), [&] { kivRaise(&grandchild, 27, 9); });
    EXPECT_TRUE(caught.raised);
    EXPECT_EQ(caught.value, 17);
    EXPECT_EQ(top->errorCode, 17);
    EXPECT_STREQ(top->messageText, "E0063S: Size constraint violated, length of value = 9.\n");
    EXPECT_EQ(grandchild.errorCode, 0);
    EXPECT_EQ(child.errorCode, 0);
}

TEST(Raise, SilentModeJumpsWithTheIndexAndComposesNothing) {
    TestWorld w;
    useMessageText(w, 6);
    std::strcpy(w->messageText, "untouched");
    w->errorCode = -5;
    auto caught = catchRaise(w.get(), [&] { kivRaiseText(w.get(), kNotLinked, "DER"); });
    EXPECT_EQ(caught.value, kNotLinked);
    EXPECT_STREQ(w->messageText, "untouched");
    EXPECT_EQ(w->errorCode, -5);
    // Slot 231 always returns, and in silent mode it records nothing.
    kivRecordMessage(w.get(), 27, 1);
    EXPECT_STREQ(w->messageText, "untouched");
    EXPECT_EQ(w->errorCode, -5);
}

TEST(Raise, WithoutMessageOutOnlyTheCodeTravelsAndRecordingReturns) {
    TestWorld w;
    w->messageOut = nullptr;
    std::strcpy(w->messageText, "untouched");
    auto caught = catchRaise(w.get(), [&] { kivRaise(w.get(), 10, 11); });
    EXPECT_EQ(caught.value, 14);
    EXPECT_EQ(w->errorCode, 14);
    EXPECT_STREQ(w->messageText, "untouched");

    // Slot 231 composes and returns.
    useMessageText(w, 4);
    kivRecordMessage(w.get(), 5, 17);
    EXPECT_EQ(w->errorCode, 7);
    EXPECT_STREQ(w->messageText,
                 "D0007S: Version number of generated encoder/decoder differs from that of "
                 "run-time library, 17.\n");
}

// The result trace hooks, reached through the world's own table.
struct HookCall {
    int slot = 0;
    KivGlobal* world = nullptr;
    int32_t indicator = 0;
    int64_t third = -1;
    const void* fourth = &fourth;
    std::string text;
};
HookCall lastHook;

void encoderResult(KivGlobal* world, int32_t indicator, const uint8_t* output, int32_t length) {
    lastHook = {238, world, indicator, reinterpret_cast<intptr_t>(output),
                reinterpret_cast<const void*>(static_cast<intptr_t>(length)), world->messageOut};
}
void decoderResult(KivGlobal* world, int32_t indicator, int32_t pduNum, void** value) {
    lastHook = {240, world, indicator, pduNum, value, world->messageOut};
}

TEST(Raise, TellsTheResultHookOfTheTextsSide) {
    TestWorld w;
    KivRoutine table[KIV_SLOT_COUNT];
    std::memcpy(table, apiTbl, sizeof table);
    table[238] = reinterpret_cast<KivRoutine>(&encoderResult);
    table[240] = reinterpret_cast<KivRoutine>(&decoderResult);
    w->apiTable = table;
    useMessageText(w, 2);

    // Without bit 6 of debugFlags no hook is told.
    lastHook = {};
    catchRaise(w.get(), [&] { kivRaise(w.get(), 27, 1); });
    EXPECT_EQ(lastHook.slot, 0);

    kivStoreDebugFlags(w.get(), 0x40);
    catchRaise(w.get(), [&] { kivRaise(w.get(), 27, 1); });
    EXPECT_EQ(lastHook.slot, 238);
    EXPECT_EQ(lastHook.world, w.get());
    EXPECT_EQ(lastHook.indicator, 27) << "the index, not the code, is the indicator";
    EXPECT_EQ(lastHook.third, 0);
    EXPECT_EQ(lastHook.fourth, nullptr);
    EXPECT_EQ(lastHook.text, "E0063S: Size constraint violated, length of value = 1.\n")
        << "the hook sees the composed text";

    // Any first character other than 'E' is the decoder side, mode 7 included.
    w->errorMode = 7;
    w->messageText[0] = 'X';
    kivRecordMessage(w.get(), 27, 2);
    EXPECT_EQ(lastHook.slot, 240);
    EXPECT_EQ(lastHook.text, "X0063S: Size constraint violated, length of value = 2.\n");

    // Without messageOut no hook is told; an empty slot is skipped.
    lastHook = {};
    w->messageOut = nullptr;
    catchRaise(w.get(), [&] { kivRaise(w.get(), 27, 1); });
    EXPECT_EQ(lastHook.slot, 0);
    w->messageOut = w->messageText;
    table[238] = nullptr;
    w->errorMode = 0;
    auto caught = catchRaise(w.get(), [&] { kivRaise(w.get(), 27, 1); });
    EXPECT_EQ(caught.value, 17);
    EXPECT_EQ(lastHook.slot, 0);
}

// The texts of slot 172 come from the world's temporary memory (slot 132
// of its own table); the tests give them back with slot 106.
uint64_t lastTempSize;
void* recordingTempAlloc(KivGlobal* world, uint64_t size) {
    lastTempSize = size;
    return KIV_SLOT(KivTempAllocFn, kivSlotTempAlloc)(world, size);
}

class RaiseData : public ::testing::Test {
protected:
    void SetUp() override {
        std::memcpy(table, apiTbl, sizeof table);
        table[kivSlotTempAlloc] = reinterpret_cast<KivRoutine>(&recordingTempAlloc);
        w->apiTable = table;
        useMessageText(w, 0);
    }
    void TearDown() override { kivFreeTempChains(w.get()); }
    KivRoutine table[KIV_SLOT_COUNT];
    TestWorld w;
};

TEST_F(RaiseData, HexadecimalForTheValueRangeMessages) {
    const uint8_t value[] = {0x80, 0x0A, 0xFF};
    const std::string range = "E0062S: Value range constraint violated, value = ";
    catchRaise(w.get(), [&] { kivRaiseData(w.get(), 22, value, 3); });
    EXPECT_EQ(w->messageText, range + "'0x800AFF'.\n");
    EXPECT_EQ(lastTempSize, 10u);
    // Unsigned with the top bit set: a 0 keeps it from reading as negative.
    catchRaise(w.get(), [&] { kivRaiseData(w.get(), 23, value, 3); });
    EXPECT_EQ(w->messageText, range + "'0x0800AFF'.\n");
    EXPECT_EQ(lastTempSize, 10u);
    catchRaise(w.get(), [&] { kivRaiseData(w.get(), 23, value + 1, 1); });
    EXPECT_EQ(w->messageText, range + "'0x0A'.\n");
    auto caught = catchRaise(w.get(), [&] { kivRaiseData(w.get(), 23, value, 0); });
    EXPECT_EQ(caught.value, 17);
    EXPECT_EQ(w->messageText, range + "''.\n") << "empty data: empty text, no 0x";
    EXPECT_EQ(lastTempSize, 4u);
}

TEST_F(RaiseData, OtherMessagesShowTheOctetsAsText) {
    const char data[] = {'a', 'b', 'c', 'd'};
    // The data text is shown whatever the message's argument kind.
    catchRaise(w.get(), [&] { kivRaiseData(w.get(), 27, data, 3); });
    EXPECT_STREQ(w->messageText, "E0063S: Size constraint violated, length of value = 'abc'.\n");
    EXPECT_EQ(lastTempSize, 4u);
    catchRaise(w.get(), [&] { kivRaiseData(w.get(), 21, data, 4); });
    EXPECT_STREQ(w->messageText, "E0061S: Single value constraint violated'abcd'.\n");
    // Silent mode still jumps with the index.
    w->errorMode = 6;
    EXPECT_EQ(catchRaise(w.get(), [&] { kivRaiseData(w.get(), 21, data, 4); }).value, 21);
}

}  // namespace
