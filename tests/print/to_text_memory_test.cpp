// The to-text services on the world's temporary memory. Texts from the heap
// chunks (their values, one block each, given back by slot 148) and a failed
// allocation are swept with the rest of the library in tests/faults.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/alloc_hooks.h"
#include "support/raise_catcher.h"
#include "print/print_fixture.h"

using fenk::test::AllocCounter;
using fenk::test::Caught;
using fenk::test::PrintWorld;
using fenk::test::TestWorld;

namespace {

// Every to-text service (plain function pointers: a raise jumps across them).
const uint8_t kOctets[] = {0xDE, 0xAD, 0xBE, 0xEF};
const KivTimeStruct kTime = {2024, 2, 29, 23, 59, 58, 7, 0, 1};
const uint16_t kBits = 0xC000;
const struct { const char* name; char* (*call)(KivGlobal*); } kServices[] = {
    {"bits", [](KivGlobal* w) { return kivBitsToText(w, "<", kOctets, 9, ">"); }},
    {"bit string", [](KivGlobal* w) { return kivBitStringToText(w, kOctets, 4); }},
    {"bits in integer", [](KivGlobal* w) { return kivBitsInIntegerToText(w, &kBits, 2, 2); }},
    {"hex", [](KivGlobal* w) { return kivHexToText(w, "", kOctets, 4, ""); }},
    {"octet string", [](KivGlobal* w) { return kivOctetStringToText(w, kOctets, 2); }},
    {"UTCTime", [](KivGlobal* w) { return kivUTCTimeToText(w, &kTime); }},
    {"GeneralizedTime", [](KivGlobal* w) { return kivGeneralizedTimeToText(w, &kTime); }},
    {"int64", [](KivGlobal* w) { return kivInt64ToText(w, -12); }},
    {"uint64", [](KivGlobal* w) { return kivUInt64ToText(w, 12); }},
    {"wide", [](KivGlobal* w) { return kivWideCharStringToText(w, "a\x01", 2, 1); }},
    {"quote chars", [](KivGlobal* w) { return kivQuoteChars(w, "ab", 2); }},
    {"quote text", [](KivGlobal* w) { return kivQuoteCString(w, "ab"); }},
    {"binary REAL", [](KivGlobal* w) { return kivBinaryRealToText(w, 0.5); }},
    {"decimal REAL", [](KivGlobal* w) { return kivDecimalRealToText(w, "2.5"); }},
};

TEST(ToTextMemory, TextsFromTheTemporaryBufferReleaseBackToTheirMark) {
    TestWorld w;
    AllocCounter counter;
    fenk::test::installCountingHooks(w.get(), &counter);
    std::vector<uint8_t> buffer(512);
    KivWorkBuffer descriptor{512, buffer.data()};
    ASSERT_EQ(kivStoreWorkBuffer(w.get(), &descriptor), 0);
    w->userBufferStart = w.priv()->userBufferAddress;
    w->userBufferEnd = w->userBufferStart + w.priv()->userBufferLength;
    uint8_t* low = w->userBufferStart;
    char* first = kivInt64ToText(w.get(), 1);
    char* second = kivQuoteCString(w.get(), "x");
    EXPECT_EQ(reinterpret_cast<uint8_t*>(first), low);
    EXPECT_STREQ(second, "\"x\"");
    kivFreeText(w.get(), first);  // and everything taken after it
    EXPECT_EQ(w->userBufferStart, low);
    EXPECT_EQ(counter.calls, 0);

    // A buffer too small for the text raises its own message.
    w->userBufferEnd = w->userBufferStart + 16;
    w->messageOut = w->messageText;
    Caught c = fenk::test::catchRaise(w.get(), [&] { kivInt64ToText(w.get(), 1); });
    EXPECT_TRUE(c.raised);
    EXPECT_EQ(w->errorCode, c.value);
    EXPECT_NE(std::string(w->messageText).find("0132S: Buffer provided for temporary memory"),
              std::string::npos)
        << w->messageText;
}

// Slot 132 of the world's own table answering null: every service gives null.
TEST(ToTextMemory, NullFromTheTablesTemporaryMemoryGivesNull) {
    PrintWorld w;
    w.giveNull = true;
    for (const auto& s : kServices) EXPECT_EQ(s.call(w.get()), nullptr) << s.name;
    EXPECT_EQ(w.sizes.size(), std::size(kServices)) << "each asked once";
}

}  // namespace
