// The error text of a raise: argument formats, PDU and component context,
// XML input position and the 510-character limit.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "support/raise_catcher.h"
#include "support/test_world.h"

using fenk::test::catchRaise;
using fenk::test::TestWorld;

namespace {

constexpr int32_t kTagMismatch = 104;  // "0033E: Tag mismatch or tag not expected: "
constexpr int32_t kBadCharacter = 29;  // "0064S: Permitted alphabet constraint violated, bad character: "
constexpr int32_t kSize = 27;          // "0063S: Size constraint violated, length of value = "
constexpr int32_t kNameMismatch = 156; // "0151E: XML tag name does not match PDU number: "

class ErrorContext : public ::testing::Test {
protected:
    void SetUp() override {
        w->messageOut = w->messageText;
        w->errorMode = 3;
    }
    template <class Call>
    std::string raised(Call call) {
        auto caught = catchRaise(w.get(), call);
        EXPECT_TRUE(caught.raised);
        return w->messageText;
    }
    std::string raise(int32_t index, uint32_t number) {
        return raised([&] { kivRaise(w.get(), index, number); });
    }
    std::string raiseText(int32_t index, const char* text) {
        return raised([&] { kivRaiseText(w.get(), index, text); });
    }
    TestWorld w;
};

TEST_F(ErrorContext, TagsInEveryClassWithTheExpectedTag) {
    const std::string head = "D0033E: Tag mismatch or tag not expected: ";
    EXPECT_EQ(raise(kTagMismatch, 0x00048002), head + "[2] (expected tag [UNIVERSAL 4]).\n");
    EXPECT_EQ(raise(kTagMismatch, 0x0003), head + "[UNIVERSAL 3].\n");
    EXPECT_EQ(raise(kTagMismatch, 0x7FFF), head + "[APPLICATION 16383].\n");
    EXPECT_EQ(raise(kTagMismatch, 0xC0014001),
              head + "[APPLICATION 1] (expected tag [PRIVATE 1]).\n");
    EXPECT_EQ(raise(kTagMismatch, 0x80000000), head + "[UNIVERSAL 0] (expected tag [0]).\n");
}

TEST_F(ErrorContext, CharactersPrintableOrAsFourOctets) {
    const std::string head = "D0064S: Permitted alphabet constraint violated, bad character: ";
    const std::pair<uint32_t, const char*> cases[] = {
        {65, "'A'"}, {9786, "{0,0,38,58}"}, {9, "{0,0,0,9}"} /* a control character */,
        {0xE9, "{0,0,0,233}"}, {0x01020304, "{1,2,3,4}"}};
    for (const auto& [number, shown] : cases)
        EXPECT_EQ(raise(kBadCharacter, number), head + shown + ".\n") << number;
}

TEST_F(ErrorContext, FirstCharacterFollowsTheErrorMode) {
    w->errorMode = 2;
    EXPECT_EQ(raise(kSize, 1)[0], 'E');
    w->errorMode = 5;
    EXPECT_EQ(raise(kSize, 1)[0], 'D');
    w->errorMode = 7;
    w->messageText[0] = '#';
    EXPECT_EQ(raise(kSize, 1), "#0063S: Size constraint violated, length of value = 1.\n");
    w->errorMode = -1;
    EXPECT_EQ(raise(kSize, 1)[0], '#');
}

struct Path {
    KivComponentDescriptor outerDescriptor{"top", "Top", 10};
    KivComponentDescriptor middleDescriptor{"list", "U", 1};
    KivComponentDescriptor innerDescriptor{"a", "T", 1};
    KivComponentFrame outer{nullptr, &outerDescriptor, 0};
    KivComponentFrame middle{&outer, &middleDescriptor, 2};
    KivComponentFrame inner{&middle, &innerDescriptor, 0};
};

TEST_F(ErrorContext, PduContextWalksTheFramesOutward) {
    Path path;
    KivPduDescriptor pdu{"Name", "Other"};
    w->errorPduNumber = 3;
    w->errorPduInfo = &pdu;
    w->errorPath = &path.inner;
    // The outer frame's kind decides how a frame is shown; the outermost
    // frame stands for the PDU and is not shown itself.
    EXPECT_EQ(raise(kSize, 5),
              "D0063S: Size constraint violated, length of value = 5; check field 'a' (type: T) of"
              " element #2 (type: U) of PDU #3 'Name'.\n");
    for (uint32_t kind : {8u, 21u}) {
        path.middleDescriptor.kind = kind;
        EXPECT_NE(raise(kSize, 5).find("; check element #0 (type: T) of element #2"),
                  std::string::npos)
            << kind;
    }
    // No descriptor, no frames.
    w->errorPduInfo = nullptr;
    w->errorPath = nullptr;
    EXPECT_EQ(raise(kSize, 5), "D0063S: Size constraint violated, length of value = 5; check PDU #3.\n");
    // A PDU number below 1: no context (messages of kind bit 6 never carry
    // any, see raise_test.cpp).
    w->errorPduNumber = -1;
    EXPECT_EQ(raise(kSize, 5), "D0063S: Size constraint violated, length of value = 5.\n");
}

TEST_F(ErrorContext, PlaceholderPduNamesGiveWayToTheSecondName) {
    w->errorPduNumber = 12;
    const struct {
        const char* name;
        const char* shown;
    } cases[] = {{"Abcd#12", "Real"}, {"Abcd#", "Real"}, {"Abc#", "Abc#"}, {"#bcd", "#bcd"},
                 {"Abcde#", "Abcde#"}};
    for (const auto& c : cases) {
        KivPduDescriptor pdu{c.name, "Real"};
        w->errorPduInfo = &pdu;
        EXPECT_EQ(raise(kSize, 0), std::string("D0063S: Size constraint violated, length of value = 0"
                                               "; check PDU #12 '") +
                                       c.shown + "'.\n")
            << c.name;
    }
}

TEST_F(ErrorContext, PositionInXmlInputCountsLinesAndCharacters) {
    const char* input = "x\ny";
    const void* state[2] = {nullptr, input};
    w.priv()->xmlDecoderState = state;
    w->decodeInput = input + 2;
    const std::string head = "D0151E: XML tag name does not match PDU number: 'T'";
    for (int32_t rules : {5, 6}) {
        w->encodingRules = rules;
        EXPECT_EQ(raiseText(kNameMismatch, "T"), head + "; check PDU at line 2 position 1.\n");
    }
    w->decodeInput = input + 1;
    EXPECT_EQ(raiseText(kNameMismatch, "T"), head + "; check PDU at line 1 position 1.\n");
    // EXER counts the length read so far from decodeInput.
    w->encodingRules = 8;
    w->decodeInput = "ab\ncd\ne";
    w->decodeInputLength = 5;
    w->errorPduNumber = 2;
    EXPECT_EQ(raiseText(kNameMismatch, "T"), head + "; check PDU #2 at line 2 position 3.\n");
    w->decodeInput = nullptr;
    EXPECT_EQ(raiseText(kNameMismatch, "T"), head + "; check PDU #2 at line 1 position 0.\n");
    // Encoder side or other rules: no position.
    w->errorMode = 0;
    EXPECT_EQ(raiseText(kNameMismatch, "T"), "E0151E: XML tag name does not match PDU number: 'T'"
                                             "; check PDU #2.\n");
    w->errorMode = 3;
    w->encodingRules = 1;
    EXPECT_EQ(raiseText(kNameMismatch, "T"), head + "; check PDU #2.\n");
}

// The text may grow to 510 characters before ".\n"; a piece that would pass
// that is left out whole.
TEST_F(ErrorContext, PiecesThatPassTheLimitAreLeftOutWhole) {
    const std::string head = "D0103S: The requested encoding rules were not linked: ";
    const size_t room = 510 - head.size() - 2;
    std::string text(room, 'r');
    EXPECT_EQ(raiseText(53, text.c_str()), head + "'" + text + "'.\n");
    EXPECT_EQ(std::strlen(w->messageText), 512u) << "510 characters, then the full stop and newline";
    text += 'r';
    EXPECT_EQ(raiseText(53, text.c_str()), head + ".\n");

    // Fill up to leave exactly the room for "; check" and a short PDU text.
    const std::string kindSix = "D0062S: Value range constraint violated, component ";
    w->errorPduNumber = 7;
    const std::string pdu = " PDU #7";
    std::string filler(510 - kindSix.size() - 2 - 7 - pdu.size(), 'f');
    EXPECT_EQ(raiseText(26, filler.c_str()), kindSix + "'" + filler + "'; check" + pdu + ".\n");
    filler += 'f';
    EXPECT_EQ(raiseText(26, filler.c_str()), kindSix + "'" + filler + "'; check.\n");
    filler += "fffffff";
    EXPECT_EQ(raiseText(26, filler.c_str()), kindSix + "'" + filler + "'.\n");
}

TEST_F(ErrorContext, TheWalkStopsAtTheFirstComponentThatDoesNotFit) {
    const std::string longType(470, 't');
    KivComponentDescriptor d1{"a", "T", 1}, d2{"b", longType.c_str(), 1}, d3{"c", "V", 1},
        d4{"top", "Top", 1};
    KivComponentFrame f4{nullptr, &d4, 0}, f3{&f4, &d3, 0}, f2{&f3, &d2, 0}, f1{&f2, &d1, 0};
    w->errorPduNumber = 1;
    w->errorPath = &f1;
    // f2's text does not leave room for the PDU text: f3, though short, is
    // not shown either.
    EXPECT_EQ(raise(kSize, 5), "D0063S: Size constraint violated, length of value = 5; check"
                               " field 'a' (type: T) of PDU #1.\n");
}

}  // namespace
