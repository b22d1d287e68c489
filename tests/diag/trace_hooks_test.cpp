// The trace hooks: which debugFlags bits print what, the output ranges of
// the different rules, and the error messages.
#include <gtest/gtest.h>

#include <cstring>

#include "support/raise_catcher.h"
#include "support/test_world.h"

using fenk::test::TestWorld;

namespace {

int32_t printValue(KivGlobal* world, int32_t pdu, void* value) {
    kivCompanionPrint(world, "value %d of PDU %d\n", *static_cast<int*>(value), pdu);
    return 0;
}

struct Hooks : ::testing::Test {
    KivControlTable table{nullptr, 17, &printValue};
    TestWorld w{&table};
    int value = 7;
    void debug(uint32_t flags) { kivStoreDebugFlags(w.get(), flags); }
};

const char kHeading[] =
    "#   Offset    Stream of Octets Written in Hexadecimal    Character Format\n"
    "#   ======    =======================================    ================\n";
const char kRule[] = "#   ======    =======================================    ================\n";

}  // namespace

TEST_F(Hooks, EncoderInputShowsTheValueAndNotesTheBuffer) {
    uint8_t buffer[8];
    kivTraceEncoderInput(w.get(), 3, &value, buffer, 8);
    EXPECT_EQ(w.output(), "") << "bit 5 clear";
    EXPECT_EQ(w.priv()->encodeBufferStart, buffer);
    EXPECT_EQ(w.priv()->encodeBufferLength, 8);
    debug(KIV_DEBUG_ENCODER_INPUT);
    kivTraceEncoderInput(w.get(), 3, &value, buffer, 8);
    EXPECT_EQ(w.output(), "The input to the encoder:\n\nvalue 7 of PDU 3\n");
    w.clearOutput();
    w->encodingFlags = 0x40;  // a measuring run shows nothing and notes nothing
    kivTraceEncoderInput(w.get(), 3, &value, nullptr, 99);
    EXPECT_EQ(w.output(), "");
    EXPECT_EQ(w.priv()->encodeBufferLength, 8);
}

TEST_F(Hooks, EncoderResultFramedWithHeadings) {
    // The plain dump is shown by traced encodes in traced_coding_test.cpp.
    uint8_t octets[] = {0x30, 0x03};
    debug(KIV_DEBUG_ENCODER_OUTPUT | KIV_DEBUG_NEWLINE_ENCODER | KIV_DEBUG_FRAMED_DUMPS);
    kivTraceEncoderResult(w.get(), 0, octets, 2);
    EXPECT_EQ(w.output(), std::string("\nThe encoder output:\n\n") + kHeading + "#   000000:   3003" +
                              std::string(38, ' ') + " 0.\n" + kRule);
}

TEST_F(Hooks, ErrorMessagesNeedBit6AndAText) {
    std::strcpy(w->messageText, "E0008S: Out of memory; bytes requested: 5.\n");
    w->messageOut = w->messageText;
    kivTraceEncoderResult(w.get(), 7, nullptr, 0);
    EXPECT_EQ(w.output(), "");
    debug(KIV_DEBUG_ERRORS | 0x20);
    kivTraceEncoderResult(w.get(), 7, nullptr, 0);
    EXPECT_EQ(w.output(), "\nThe encoder error message:\n\nE0008S: Out of memory; bytes requested: 5.\n");
    w.clearOutput();
    debug(KIV_DEBUG_ERRORS | KIV_DEBUG_NEWLINE_DECODER);
    kivTraceDecoderResult(w.get(), 7, 1, nullptr);
    EXPECT_EQ(w.output(), "\nThe decoder error message:\n\nE0008S: Out of memory; bytes requested: 5.\n");
    w.clearOutput();
    w->messageOut = nullptr;
    kivTraceDecoderResult(w.get(), 7, 1, nullptr);
    EXPECT_EQ(w.output(), "");
}

TEST_F(Hooks, ForwardRulesInPoolModeMaskThePartialOctet) {
    uint8_t buffer[16];
    std::memset(buffer, 0xFF, sizeof buffer);
    w->encodingRules = kivRulesPerAligned;
    kivTraceEncoderInput(w.get(), 1, &value, buffer, 16);
    debug(KIV_DEBUG_ENCODER_OUTPUT);
    w->poolMode = 1;
    w->pendingBits = 3;
    // Two octets written whole, the third partly: 14 octets left from there.
    kivTraceEncoderResult(w.get(), 0, buffer + 2, 14);
    EXPECT_EQ(buffer[2], 0xE0);
    EXPECT_EQ(w.output(), "The encoder output:\n\nFFFFE0\n");
    w.clearOutput();
    w->pendingBits = 0;
    kivTraceEncoderResult(w.get(), 0, buffer, 16);
    EXPECT_EQ(w.output(), "The encoder output:\n\n00\n") << "nothing written shows one zero octet";
}

TEST_F(Hooks, ForwardRulesOutsidePoolModeJoinTheChunks) {
    fenk::test::TestWorld& world = w;
    world->encodingRules = kivRulesPerUnaligned;
    debug(KIV_DEBUG_ENCODER_OUTPUT);
    // No chunk yet: nothing written shows one zero octet, as in pool mode.
    kivTraceEncoderResult(world.get(), 0, nullptr, 0);
    EXPECT_EQ(w.output(), "The encoder output:\n\n00\n");
    w.clearOutput();
    auto caught = fenk::test::catchRaise(world.get(), [&] {
        auto* first = static_cast<uint8_t*>(kivNewOutputChunk(world.get()));
        std::memset(first, 0x11, 1024);
        auto* second = static_cast<uint8_t*>(kivNewOutputChunk(world.get()));
        std::memset(second, 0x22, 1024);
        // The hook is told what is still free in the last chunk.
        kivTraceEncoderResult(world.get(), 0, second + 3, 1021);
        kivFreeTrackedBlocks(world.get(), world->freeHook);
    });
    ASSERT_FALSE(caught.raised);
    std::string out = w.output();
    // 1024 + 3 octets: 32 full lines of the first chunk, then the three
    // written octets of the second.
    EXPECT_EQ(out.substr(out.size() - 7), "222222\n");
    EXPECT_EQ(out.find("22"), out.size() - 7);
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 2 + 32 + 1);
}

TEST_F(Hooks, XmlRulesShowText) {
    const char xml[] = "<a>\r\n</a>";
    w->encodingRules = kivRulesXer;
    debug(KIV_DEBUG_DECODER_INPUT);
    kivTraceDecoderInput(w.get(), reinterpret_cast<const uint8_t*>(xml), 9);
    EXPECT_EQ(w.output(), "The input to the decoder:\n\n<a>\n</a>\n");
    w.clearOutput();
    w->decodingFlags = 0x40000000;  // dump the octets instead
    kivTraceDecoderInput(w.get(), reinterpret_cast<const uint8_t*>(xml), 3);
    EXPECT_EQ(w.output(), "The input to the decoder:\n\n3C613E\n");
}

TEST_F(Hooks, DecoderResultWithoutAPrintRoutineShowsNothing) {
    // The value itself is shown by traced decodes in traced_coding_test.cpp.
    void* decoded = &value;
    debug(KIV_DEBUG_DECODED_VALUE | KIV_DEBUG_DECODER_INPUT);
    table.printPdu = nullptr;
    kivTraceDecoderResult(w.get(), 0, 4, &decoded);
    EXPECT_EQ(w.output(), "");
}

// The encoder side is shown by a failing encode in traced_coding_test.cpp.
TEST_F(Hooks, ARaiseOnTheDecoderSideReachesItsResultHook) {
    debug(KIV_DEBUG_ERRORS);
    w->messageOut = w->messageText;
    w->errorMode = 4;
    auto caught = fenk::test::catchRaise(w.get(), [&] { kivRaise(w.get(), 45, 0); });
    EXPECT_EQ(caught.value, 4);
    EXPECT_EQ(w.output(),
              "The decoder error message:\n\nD0081S: End of input reached before message was fully "
              "decoded.\n");
}
