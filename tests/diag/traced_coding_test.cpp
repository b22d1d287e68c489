// Tracing through real encode and decode calls: coders that call the hooks
// the way generated code does, under each debugFlags bit.
#include <gtest/gtest.h>

#include "support/raise_catcher.h"
#include "support/scripted_coders.h"
#include "support/test_world.h"

using fenk::test::CoderScript;
using fenk::test::TestWorld;

namespace {

int32_t printValue(KivGlobal* world, int32_t pdu, void* value) {
    kivCompanionPrint(world, "{ n %d } (PDU %d)\n", *static_cast<int*>(value), pdu);
    return 0;
}

struct TracedCoding : ::testing::Test {
    KivControlTable table{nullptr, 17, &printValue};
    TestWorld w{&table};
    CoderScript script;
    int value = 5;
    void SetUp() override {
        fenk::test::installScriptedCoders(w.get(), &script);
        script.traceHooks = true;
        script.octets = {0x30, 0x03, 0x02, 0x01, 0x05};
        w->coderFlags = 0x2;
        w->encodingRules = kivRulesDer;
    }
    std::string encode(uint32_t debug) {
        w.clearOutput();
        kivStoreDebugFlags(w.get(), debug);
        KivBuffer out{0, nullptr};
        EXPECT_EQ(kivEncodePdu(w.get(), 1, &value, &out), 0);
        return w.output();
    }
    std::string decode(uint32_t debug) {
        w.clearOutput();
        kivStoreDebugFlags(w.get(), debug);
        KivBuffer in{static_cast<uint32_t>(script.octets.size()), script.octets.data()};
        void* decoded = nullptr;
        int32_t pdu = 1;
        script.decoded = &value;
        EXPECT_EQ(kivDecodePdu(w.get(), &pdu, &in, &decoded), 0);
        return w.output();
    }
};

const std::string kInput = "The input to the encoder:\n\n{ n 5 } (PDU 1)\n";
const std::string kOutput = "The encoder output:\n\n30030201 05\n";

}  // namespace

TEST_F(TracedCoding, EachEncoderBitAloneAndTogether) {
    EXPECT_EQ(encode(0), "");
    EXPECT_EQ(encode(KIV_DEBUG_ENCODER_INPUT), kInput);
    EXPECT_EQ(encode(KIV_DEBUG_ENCODER_OUTPUT), kOutput);
    EXPECT_EQ(encode(KIV_DEBUG_ENCODER_INPUT | KIV_DEBUG_ENCODER_OUTPUT), kInput + "\n" + kOutput)
        << "bit 5 also puts a newline before the result heading";
    EXPECT_EQ(encode(KIV_DEBUG_ENCODER_OUTPUT | KIV_DEBUG_NEWLINE_ENCODER), "\n" + kOutput);
    EXPECT_EQ(encode(KIV_DEBUG_DECODER_INPUT | KIV_DEBUG_DECODED_VALUE), "") << "decoder bits only";
}

TEST_F(TracedCoding, EachDecoderBitAloneAndTogether) {
    const std::string input = "The input to the decoder:\n\n30030201 05\n";
    const std::string output = "The decoder output:\n\n{ n 5 } (PDU 1)\n";
    EXPECT_EQ(decode(0), "");
    EXPECT_EQ(decode(KIV_DEBUG_DECODER_INPUT), input);
    EXPECT_EQ(decode(KIV_DEBUG_DECODED_VALUE), output);
    EXPECT_EQ(decode(KIV_DEBUG_DECODER_INPUT | KIV_DEBUG_DECODED_VALUE), input + "\n" + output);
    EXPECT_EQ(decode(KIV_DEBUG_DECODED_VALUE | KIV_DEBUG_NEWLINE_DECODER), "\n" + output);
}

TEST_F(TracedCoding, AFailingEncodeShowsItsMessage) {
    script.raiseIndex = 7;
    kivStoreDebugFlags(w.get(), KIV_DEBUG_ERRORS | KIV_DEBUG_ENCODER_OUTPUT);
    w->errorMode = 1;
    KivBuffer out{0, nullptr};
    auto caught = fenk::test::catchRaise(w.get(), [&] { kivEncodePdu(w.get(), 1, &value, &out); });
    EXPECT_EQ(caught.value, 8);
    EXPECT_EQ(w.output(), "The encoder error message:\n\nE0008S: Out of memory; bytes requested: 0.\n")
        << "a raised text is shown once, by the result hook";
}
