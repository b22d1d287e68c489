// The raising check of UTCTime and GeneralizedTime texts: which message each
// fault raises (silent mode hands back the message index), in which order,
// under BER, DER and CER, and the lowercase-z allowance of levelMask.
#include <gtest/gtest.h>

#include "time_test_support.h"

namespace {

using namespace fenk::test;

constexpr int kPasses = 0;  // no raise
constexpr uint16_t kGeneralized = 0, kUtc = 1;

// The message index raised for the text, or kPasses.
int indexRaised(TestWorld& w, const char* text, uint16_t kind) {
    w->errorMode = 6;
    auto caught = catchRaise(w.get(), [&] { kivCheckGeneralizedOrUTCTime(w.get(), text, kind); });
    return caught.raised ? caught.value : kPasses;
}

struct Case { const char* text; int index; };

void expectAll(TestWorld& w, uint16_t kind, std::initializer_list<Case> cases) {
    for (const Case& c : cases)
        EXPECT_EQ(indexRaised(w, c.text, kind), c.index) << (c.text ? c.text : "null") << " rules " << w->encodingRules;
}

TEST(TimeCheck, GeneralizedTimeUnderBer) {
    TestWorld w;
    expectAll(w, kGeneralized,
              {{"200905201305", kPasses}, {"20090520130507,5-0130", kPasses}, {"20090520130507.", kPasses},
               {"20090520130507.000", kPasses}, {"20090520130507+05", kPasses},
               {"20090520130507+0530xyz", kPasses}, {"20090520130507+0001", kPasses},
               {"20090520130507z", kPasses}, {"20090520130507Zx", 73}, {"20090520130507+2400", 73},
               {"20090520130507+0560", 73}, {"20090520130507+05x", 73}, {"20090520130507+", 73},
               {"20090520130507 ", 73}, {"2009052013", 73}, {"20090520130", 73}, {nullptr, 73},
               {"20091320130507Z", 74}, {"20090020130507Z", 74}, {"20090532130507Z", 75},
               {"20090500130507Z", 75}, {"20090520250507Z", 76}, {"20090520136007Z", 77},
               {"20090520130560Z", 78}, {"20091332256060Z", 74}, {"20090231130507Z", kPasses}});
}

TEST(TimeCheck, GeneralizedTimeCanonicalForm) {
    TestWorld w;
    for (int32_t rules : {kDer, kCer}) {
        w->encodingRules = rules;
        w.priv()->levelMask = 0;
        expectAll(w, kGeneralized,
                  {{"20090520130507Z", kPasses}, {"20090520130507.5Z", kPasses},
                   {"20090520130507.05Z", kPasses}, {"20090520130507.5z", 9}, {"20090520130507.50Z", 9},
                   {"20090520130507.000Z", 9}, {"20090520130507.Z", 9}, {"20090520130507,5Z", 9},
                   {"200905201305Z", 9}, {"20090520130507+0100", 9}, {"20090520130507+0001", 9},
                   {"20090520130507", 9}, {"20090520130507zx", 73}, {"20090520130507+2500", 73},
                   {"2009052013Z", 73}, {"20091320130507Z", 74}, {"200913201305Z", 9}});
        w.priv()->levelMask = 0x8000;
        expectAll(w, kGeneralized,
                  {{"20090520130507.5z", kPasses}, {"20090520130507+0100", 9}});
    }
}

TEST(TimeCheck, UtcTime) {
    TestWorld w;
    expectAll(w, kUtc,
              {{"0905201305Z", kPasses}, {"090520130507z", kPasses}, {"090520130507+9999", kPasses},
               {"090520130507-05", kPasses}, {"090520130507", 73}, {"090520130507.5Z", 73},
               {"090520130507Zx", 73}, {"090520130507+9", 73}, {"09052013", 73}, {"091320130507Z", 74},
               {"090520130560Z", 78}});
    for (int32_t rules : {kDer, kCer}) {
        w->encodingRules = rules;
        w.priv()->levelMask = 0;
        expectAll(w, kUtc,
                  {{"090520130507Z", kPasses}, {"0905201305Z", 9}, {"090520130507z", 9},
                   {"090520130507+0100", 9}, {"090520130507", 9}, {"090520130507Zx", 73}});
        w.priv()->levelMask = 0x8000;
        expectAll(w, kUtc,
                  {{"090520130507z", kPasses}, {"090520130507+0100", 9}, {"090520130507", 73}});
    }
}

TEST(TimeCheck, RaisesWithCode12AndNamesTheFieldAndItsValue) {
    TestWorld w;
    w->messageOut = w->messageText;
    w->errorMode = 3;
    const std::pair<const char*, const char*> cases[] = {
        {"20091320130507Z", "D0012S: Out-of-range value in time type. Month = 13.\n"},
        {"20090520250507Z", "D0012S: Out-of-range value in time type. Hour = 25.\n"},
        {"2009052013", "D0012S: Out-of-range value in time type.\n"}};
    for (auto [text, message] : cases) {
        auto caught = catchRaise(w.get(), [&] { kivCheckGeneralizedOrUTCTime(w.get(), text, kGeneralized); });
        EXPECT_EQ(std::tuple(caught.raised, caught.value, std::string(w->messageText)), std::tuple(true, 12, message));
    }
    w->encodingRules = kDer;
    auto caught = catchRaise(w.get(), [&] { kivCheckGeneralizedOrUTCTime(w.get(), "0905201305Z", kUtc); });
    EXPECT_EQ(caught.value, 12);
    EXPECT_STREQ(w->messageText,
                 "D0013S: Time value must be in universal coordinated time format and must end "
                 "with 'Z'.\n");
}

}  // namespace
