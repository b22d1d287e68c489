// Encode and decode entries, with and without flags; release and measure.
#include <gtest/gtest.h>

#include <cstring>

#include "support/scripted_coders.h"
#include "support/test_world.h"

using fenk::test::CoderScript;
using fenk::test::TestWorld;

namespace {

int releases = 0;
int32_t releaseAnswer = 0;
int32_t releasePdu(KivGlobal* world, int32_t, void*, KivGlobal* owner) {
    ++releases;
    return world == owner ? releaseAnswer : -1;
}

struct CodecWorld : ::testing::Test {
    KivControlTable table{&releasePdu, 17, nullptr};
    TestWorld w{&table};
    CoderScript script;
    int value = 42;
    void SetUp() override {
        fenk::test::installScriptedCoders(w.get(), &script);
        w->coderFlags = 0x2;
        releases = 0;
        releaseAnswer = 0;
    }
};

}  // namespace

TEST_F(CodecWorld, EncodeChecksInOrderAndComposesEachRefusal) {
    KivBuffer out{0, nullptr};
    EXPECT_EQ(kivEncodePdu(nullptr, 1, &value, &out), 6);
    EXPECT_EQ(kivEncodePdu(w.get(), 1, nullptr, &out), 6);
    EXPECT_STREQ(w->messageText, "E0006S: Unexpected NULL pointer as argument to encoder/decoder.\n");
    EXPECT_EQ(kivEncodePdu(w.get(), 1, &value, nullptr), 6);

    w->encodingRules = 4;
    EXPECT_EQ(kivEncodePdu(w.get(), 1, &value, &out), 22);
    EXPECT_STREQ(w->messageText,
                 "E0100S: Unknown encoding rules were requested, use BER/DER/CER/PER/XER only.\n");

    w->encodingRules = 3;
    w->coderFlags = 0;
    EXPECT_EQ(kivEncodePdu(w.get(), 1, &value, &out), 23);
    EXPECT_STREQ(w->messageText,
                 "E0118S: The encoder/decoder was generated without support for selected "
                 "encoding rules:'DER'.\n");

    w->coderFlags = 0x2;
    w->berCoders = nullptr;
    EXPECT_EQ(kivEncodePdu(w.get(), 1, &value, &out), 23);
    EXPECT_STREQ(w->messageText, "E0103S: The requested encoding rules were not linked: 'DER'.\n");

    KivCoderPair decoderOnly{nullptr, fenk::test::scriptedPair.decoder};
    w->encodingRules = 8;
    w.priv()->exerCoders = &decoderOnly;
    EXPECT_EQ(kivEncodePdu(w.get(), 1, &value, &out), 23);
    EXPECT_STREQ(w->messageText, "E0103S: The requested encoding rules were not linked: 'EXER'.\n");

    w->encodingRules = 0;
    w->berCoders = &fenk::test::scriptedPair;
    w->controlTable = nullptr;
    EXPECT_EQ(kivEncodePdu(w.get(), 1, &value, &out), 20);
    EXPECT_STREQ(w->messageText, "E0073S: Attempt made to pass a NULL control table pointer.\n");
    EXPECT_EQ(script.encodeCalls, 0);
}

TEST_F(CodecWorld, EncodeCallsTheCoderWithTheFlagsAndRestoresThem) {
    script.octets = {0x30, 0x00};
    script.scribbleFlags = 0xDEAD;
    w->encodingFlags = 0x1234;
    std::strcpy(w->messageText, "stale");
    KivBuffer out{0, nullptr};
    EXPECT_EQ(kivEncodePdu(w.get(), 7, &value, &out), 0);
    EXPECT_EQ(script.lastFlags, 0x1234u);
    EXPECT_EQ(script.lastPdu, 7);
    EXPECT_EQ(script.lastValue, &value);
    EXPECT_EQ(w->encodingFlags, 0x1234u);
    EXPECT_STREQ(w->messageText, "");
    EXPECT_EQ(w->messageOut, w->messageText);
    EXPECT_EQ(out.length, 2u);
}

TEST_F(CodecWorld, CanonicalXerFillsTheCallersBufferWithBlanks) {
    uint8_t buffer[16];
    std::memset(buffer, 0xAA, sizeof buffer);
    script.answer = 99;  // fail after looking, so nothing is written
    KivBuffer out{sizeof buffer, buffer};
    w->encodingRules = 6;
    EXPECT_EQ(kivEncodePdu(w.get(), 1, &value, &out), 99);
    EXPECT_EQ(script.firstOutputOctet, 0x20);
    for (uint8_t b : buffer) EXPECT_EQ(b, 0x20);
    w->encodingRules = 5;
    std::memset(buffer, 0xAA, sizeof buffer);
    kivEncodePdu(w.get(), 1, &value, &out);
    EXPECT_EQ(buffer[0], 0xAA) << "plain XER leaves the buffer alone";
}

TEST_F(CodecWorld, DecodeChecksClearsDerBitAndRestoresFlags) {
    uint8_t octets[] = {0x05, 0x00};
    KivBuffer in{2, octets};
    void* out = nullptr;
    int32_t pdu = 3;
    EXPECT_EQ(kivDecodePdu(w.get(), &pdu, nullptr, &out), 6);
    EXPECT_STREQ(w->messageText, "D0006S: Unexpected NULL pointer as argument to encoder/decoder.\n");
    KivBuffer noAddress{2, nullptr};
    EXPECT_EQ(kivDecodePdu(w.get(), &pdu, &noAddress, &out), 6);
    EXPECT_EQ(kivDecodePdu(w.get(), &pdu, &in, nullptr), 6);
    void* callerBuffer = octets;
    EXPECT_EQ(kivDecodePdu(w.get(), &pdu, &in, &callerBuffer), 6) << "caller buffer of no length";

    script.decoded = &value;
    script.scribbleFlags = 0x1;
    w->decodingFlags = 0x4400;
    w->encodingRules = 3;
    EXPECT_EQ(kivDecodePdu(w.get(), &pdu, &in, &out), 0);
    EXPECT_EQ(script.lastFlags, 0x4000u);
    EXPECT_EQ(w->decodingFlags, 0x4400u);
    EXPECT_EQ(out, &value);
    w->encodingRules = 0;
    out = nullptr;
    EXPECT_EQ(kivDecodePdu(w.get(), &pdu, &in, &out), 0);
    EXPECT_EQ(script.lastFlags, 0x4400u) << "only DER clears bit 10";

    w->encodingRules = 6;  // CXER decodes through the XER pair too
    out = nullptr;
    EXPECT_EQ(kivDecodePdu(w.get(), &pdu, &in, &out), 0);
    w->encodingRules = 2;
    out = nullptr;
    w->perCoders = nullptr;
    EXPECT_EQ(kivDecodePdu(w.get(), &pdu, &in, &out), 23);
    EXPECT_STREQ(w->messageText, "D0103S: The requested encoding rules were not linked: 'PER'.\n");
}

TEST_F(CodecWorld, EncodeWithFlagsUsesTheCallersBufferOnlyWithBit2) {
    script.octets = {1, 2, 3};
    uint8_t buffer[8] = {};
    uint8_t* address = buffer;
    uint32_t length = sizeof buffer;
    w->encodingFlags = 0x77;
    char message[520] = "untouched";
    EXPECT_EQ(kivEncodeWithFlags(w.get(), 1, &value, &address, &length, 0x4, message), 0);
    EXPECT_EQ(address, buffer);
    EXPECT_EQ(length, 3u);
    EXPECT_EQ(buffer[2], 3);
    EXPECT_EQ(script.lastFlags, 0x4u);
    EXPECT_EQ(w->encodingFlags, 0x77u);
    EXPECT_STREQ(message, "");

    address = buffer;
    length = sizeof buffer;
    EXPECT_EQ(kivEncodeWithFlags(w.get(), 1, &value, &address, &length, 0, nullptr), 0);
    EXPECT_EQ(script.lastBuffer.value, nullptr) << "without bit 2 the coder gets no buffer";
    EXPECT_EQ(address, script.octets.data());

    EXPECT_EQ(kivEncodeWithFlags(w.get(), 1, &value, nullptr, &length, 0, message), 6);
    EXPECT_STREQ(message, "E0006S: Unexpected NULL pointer as argument to encoder/decoder.\n");
    w->controlTable = nullptr;
    EXPECT_EQ(kivEncodeWithFlags(w.get(), 1, &value, &address, &length, 0, message), 20);
    EXPECT_STREQ(message, "E0073S: Attempt made to pass a NULL control table pointer.\n");
}

TEST_F(CodecWorld, DecodeWithFlagsSetsTheBufferLengthRules) {
    uint8_t octets[] = {9, 9};
    uint8_t* address = octets;
    uint32_t length = 2;
    void* out = &value;  // stale: cleared unless a caller buffer is announced
    uint32_t bufferLength = 64;
    int32_t pdu = 5;
    script.decoded = &releases;
    char message[520];
    EXPECT_EQ(kivDecodeWithFlags(w.get(), &pdu, &address, &length, &out, &bufferLength, 0, message),
              0);
    EXPECT_EQ(bufferLength, 0u);
    EXPECT_EQ(out, &releases);
    EXPECT_EQ(script.lastBuffer.length, 2u);

    int callerBuffer[16];
    out = callerBuffer;
    bufferLength = sizeof callerBuffer;
    script.decoded = callerBuffer;
    EXPECT_EQ(kivDecodeWithFlags(w.get(), &pdu, &address, &length, &out, &bufferLength, 0x4,
                                 message),
              0);
    EXPECT_EQ(w->decodeBufferLength, sizeof callerBuffer);
    EXPECT_EQ(bufferLength, sizeof callerBuffer);
    EXPECT_EQ(script.lastFlags, 0x4u);

    EXPECT_EQ(kivDecodeWithFlags(w.get(), &pdu, &address, &length, nullptr, nullptr, 0, message),
              6);
    EXPECT_STREQ(message, "D0006S: Unexpected NULL pointer as argument to encoder/decoder.\n");
}

TEST_F(CodecWorld, ReleaseResetsTablesAndCallsTheRoutine) {
    KivBlockTable other{};
    w->currentBlockTable = &other;
    w.priv()->currentPointerTable = &other;
    releaseAnswer = 5;
    EXPECT_EQ(kivReleasePdu(w.get(), 1, &value), 5);
    EXPECT_EQ(releases, 1);
    EXPECT_EQ(w->currentBlockTable, &w->blockTable);
    EXPECT_EQ(w.priv()->currentPointerTable, &w.priv()->pointerTables);
    table.releasePdu = nullptr;
    EXPECT_EQ(kivReleasePdu(w.get(), 1, &value), 21);
    w->controlTable = nullptr;
    EXPECT_EQ(kivReleasePdu(w.get(), 1, &value), 20);
    EXPECT_EQ(kivReleasePdu(nullptr, 1, &value), 6);
}

TEST_F(CodecWorld, MeasureCountsWithoutKeepingOrEchoing) {
    script.octets = {1, 2, 3, 4, 5};
    w->encodingFlags = 0x2;
    EXPECT_EQ(kivMeasureEncoding(w.get(), 1, &value), 5u);
    EXPECT_EQ(script.lastFlags, 0x40u);
    EXPECT_EQ(w->encodingFlags, 0x2u);
    script.answer = 17;
    EXPECT_EQ(kivMeasureEncoding(w.get(), 1, &value), 0u);
    EXPECT_EQ(kivMeasureEncoding(nullptr, 1, &value), 0u);
}
