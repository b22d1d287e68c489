// The to-text services on the world's own temporary memory: texts come from
// the heap chunks or the temporary buffer, slot 148 gives them back, and a
// failed allocation raises out of memory without leaving anything behind.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/alloc_hooks.h"
#include "support/raise_catcher.h"
#include "support/test_world.h"

using fenk::test::AllocCounter;
using fenk::test::Caught;
using fenk::test::TestWorld;

namespace {

const uint8_t kOctets[] = {0xDE, 0xAD, 0xBE, 0xEF};
const KivTimeStruct kTime = {2024, 2, 29, 23, 59, 58, 7, 0, 1};
const KivTimeStruct kUtcTime = {24, 2, 29, 23, 59, 58, 0, 0, 0};

// Every to-text service, with a value and its text. Plain function pointers:
// a raise jumps across the call.
struct Service {
    const char* name;
    char* (*call)(KivGlobal*);
    const char* text;
};

std::vector<Service> services() {
    return {
        {"bits", [](KivGlobal* w) { return kivBitsToText(w, "<", kOctets, 9, ">"); },
         "<11011110 1>"},
        {"bit string", [](KivGlobal* w) { return kivBitStringToText(w, kOctets, 4); }, "'1101'B"},
        {"bits in integer",
         [](KivGlobal* w) {
             static const uint16_t v = 0xC000;
             return kivBitsInIntegerToText(w, &v, 2, 2);
         },
         "'11'B"},
        {"hex", [](KivGlobal* w) { return kivHexToText(w, "", kOctets, 4, ""); }, "DEADBEEF"},
        {"octet string", [](KivGlobal* w) { return kivOctetStringToText(w, kOctets, 2); },
         "'DEAD'H"},
        {"UTCTime", [](KivGlobal* w) { return kivUTCTimeToText(w, &kUtcTime); },
         "\"240229235958Z\""},
        {"GeneralizedTime", [](KivGlobal* w) { return kivGeneralizedTimeToText(w, &kTime); },
         "\"20240229235958.007Z\""},
        {"int64", [](KivGlobal* w) { return kivInt64ToText(w, -12); }, "-12"},
        {"uint64", [](KivGlobal* w) { return kivUInt64ToText(w, 12); }, "12"},
        {"wide", [](KivGlobal* w) { return kivWideCharStringToText(w, "a\x01", 2, 1); },
         "{\"a\", {0, 0, 0, 1}}"},
        {"quote chars", [](KivGlobal* w) { return kivQuoteChars(w, "ab", 2); }, "\"ab\""},
        {"quote text", [](KivGlobal* w) { return kivQuoteCString(w, "ab"); }, "\"ab\""},
        {"binary REAL", [](KivGlobal* w) { return kivBinaryRealToText(w, 0.5); },
         "{ mantissa 1, base 2, exponent -1 }"},
        {"decimal REAL", [](KivGlobal* w) { return kivDecimalRealToText(w, "2.5"); }, "25E-1"},
    };
}

TEST(ToTextMemory, TextsFromHeapChunksAreGivenBackBySlot148) {
    TestWorld w;
    AllocCounter counter;
    fenk::test::installCountingHooks(w.get(), &counter);
    for (const Service& s : services()) {
        char* text = s.call(w.get());
        ASSERT_NE(text, nullptr) << s.name;
        EXPECT_STREQ(text, s.text) << s.name;
        EXPECT_EQ(counter.live, 1) << s.name;
        kivFreeText(w.get(), text);
        EXPECT_EQ(counter.live, 0) << s.name;
    }
}

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

TEST(ToTextMemory, OutOfMemoryRaisesCodeEightAndLeaksNothing) {
    for (const Service& s : services()) {
        TestWorld w;
        AllocCounter counter;
        fenk::test::installCountingHooks(w.get(), &counter);
        counter.failAt = 1;
        w->messageOut = w->messageText;
        Caught c = fenk::test::catchRaise(w.get(), [&] { s.call(w.get()); });
        EXPECT_TRUE(c.raised) << s.name;
        EXPECT_EQ(c.value, 8) << s.name;
        EXPECT_NE(std::string(w->messageText).find("0008S: Out of memory; bytes requested: "),
                  std::string::npos)
            << s.name << ": " << w->messageText;
        EXPECT_EQ(counter.live, 0) << s.name;
    }
}

}  // namespace
