// Transcoding: the decoded value is released in every case that decoded,
// and the world's rules come back whatever happened.
#include <gtest/gtest.h>

#include "support/scripted_coders.h"
#include "support/test_world.h"

using fenk::test::CoderScript;
using fenk::test::TestWorld;

namespace {

int releases = 0;
int32_t releasedPdu = 0;
void* releasedValue = nullptr;
int32_t releaseAnswer = 0;
int32_t releasePdu(KivGlobal*, int32_t pdu, void* value, KivGlobal*) {
    ++releases;
    releasedPdu = pdu;
    releasedValue = value;
    return releaseAnswer;
}

struct Transcoding : ::testing::Test {
    KivControlTable table{&releasePdu, 17, nullptr};
    TestWorld w{&table};
    CoderScript script;
    int decoded = 0;
    uint8_t input[3] = {1, 2, 3};
    KivBuffer in{3, input};
    KivBuffer out{0, nullptr};
    void SetUp() override {
        fenk::test::installScriptedCoders(w.get(), &script);
        w->coderFlags = 0x2;
        w->encodingRules = 7;
        releases = 0;
        releaseAnswer = 0;
        script.decoded = &decoded;
        script.octets = {'<', 'a', '/', '>'};
    }
};

}  // namespace

TEST_F(Transcoding, ToXmlDecodesEncodesReleasesAndRestores) {
    kivStoreXmlRules(w.get(), 5);
    script.decodedPdu = 9;
    EXPECT_EQ(kivTranscodeToXml(w.get(), 2, 0, &in, &out), 0);
    EXPECT_EQ(script.decodeCalls, 1);
    EXPECT_EQ(script.encodeCalls, 1);
    EXPECT_EQ(script.lastPdu, 9) << "the encoder gets the number the decoder updated";
    EXPECT_EQ(script.lastValue, &decoded);
    EXPECT_EQ(out.length, 4u);
    EXPECT_EQ(releases, 1);
    EXPECT_EQ(releasedPdu, 9);
    EXPECT_EQ(releasedValue, &decoded);
    EXPECT_EQ(w->encodingRules, 7);
}

TEST_F(Transcoding, FailuresStillReleaseWhatWasDecoded) {
    kivStoreXmlRules(w.get(), 6);
    // The encode fails.
    script.answer = 0;
    KivCoderPair decodeOnly{nullptr, fenk::test::scriptedPair.decoder};
    w->xerCoders = &decodeOnly;
    EXPECT_EQ(kivTranscodeFromXml(w.get(), 1, 0, &in, &out), 0) << "XML decoded, BER encoded";
    EXPECT_EQ(kivTranscodeToXml(w.get(), 1, 0, &in, &out), 23) << "the XML pair cannot encode";
    EXPECT_EQ(releases, 2);
    EXPECT_EQ(w->encodingRules, 7);

    // The target selection fails: nothing encoded, the value released, 23.
    w->xerCoders = &fenk::test::scriptedPair;
    static const uint8_t onlyBer[] = {0x01, 0x00};
    kivCompanionSetLinkedRules(w.get(), 10, onlyBer);
    int encodes = script.encodeCalls;
    EXPECT_EQ(kivTranscodeToXml(w.get(), 1, 0, &in, &out), 23);
    EXPECT_EQ(script.encodeCalls, encodes);
    EXPECT_EQ(releases, 3);
    EXPECT_EQ(w->encodingRules, 7);

    // A release that fails wins over the step before it.
    kivCompanionSetLinkedRules(w.get(), 10, nullptr);
    releaseAnswer = 21;
    EXPECT_EQ(kivTranscodeToXml(w.get(), 1, 0, &in, &out), 21);
}

TEST_F(Transcoding, NothingToReleaseWhenDecodingFailsOrCannotStart) {
    kivStoreXmlRules(w.get(), 5);
    script.answer = 4;
    EXPECT_EQ(kivTranscodeToXml(w.get(), 1, 0, &in, &out), 4);
    EXPECT_EQ(releases, 0);
    EXPECT_EQ(w->encodingRules, 7);
    EXPECT_EQ(kivTranscodeToXml(w.get(), 1, 4, &in, &out), 22) << "ECN cannot be selected";
    EXPECT_EQ(w->encodingRules, 7);
    w->berCoders = nullptr;
    EXPECT_EQ(kivTranscodeToXml(w.get(), 1, 0, &in, &out), 23);
    EXPECT_EQ(w->encodingRules, 7) << "a refused selection is undone too";
    EXPECT_EQ(releases, 0);

    w.priv()->xmlRules = 0;
    static const uint8_t noXml[] = {0x01, 0x00};
    kivCompanionSetLinkedRules(w.get(), 10, noXml);
    EXPECT_EQ(kivTranscodeFromXml(w.get(), 1, 0, &in, &out), 22);
    EXPECT_EQ(kivTranscodeToXml(nullptr, 1, 0, &in, &out), 6);
}
