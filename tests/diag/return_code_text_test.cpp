// Slot 292: which codes have a description, the texts of codes 9 and 10 by
// side, and a few texts byte for byte.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "support/test_world.h"

using fenk::test::TestWorld;

namespace {

TEST(ReturnCodeText, ExactlyTheDescribedCodesHaveText) {
    std::set<int32_t> described;
    for (int32_t code = -300; code <= 300; ++code)
        if (kivReturnCodeText(nullptr, code)) described.insert(code);
    EXPECT_EQ(described.size(), 103u);
    for (int32_t code : {0, 86, 97, 103, 108, 115, 130}) EXPECT_TRUE(described.count(code)) << code;
    for (int32_t code : {-1, 87, 96, 104, 107, 116, 129, 131}) EXPECT_FALSE(described.count(code)) << code;
    EXPECT_EQ(kivReturnCodeText(nullptr, INT32_MIN), nullptr);
    EXPECT_EQ(kivReturnCodeText(nullptr, INT32_MAX), nullptr);
}

TEST(ReturnCodeText, TextsAsTheSystemHoldsThem) {
    EXPECT_STREQ(kivReturnCodeText(nullptr, 0), "Success");
    EXPECT_STREQ(kivReturnCodeText(nullptr, 14),
                 "Memory violation signal was trapped. [If you are linking with static /MD library, "
                 "make sure you have added the line: '#define ONE_DLL 1' to the header file.]");
    EXPECT_STREQ(kivReturnCodeText(nullptr, 61), "Error when closing iconv() tables");
    EXPECT_STREQ(kivReturnCodeText(nullptr, 62), "Error when closing iconv() tables");
    EXPECT_STREQ(kivReturnCodeText(nullptr, 103),
                 "OBJECT IDENTIFIER conflicts with X.680; or the value specified is too large for "
                 "the chosen C representation - in such a case,  you should apply the --<KIV.OBJECTID "
                 "LONG>-- directive to the problematic type.");
    EXPECT_STREQ(kivReturnCodeText(nullptr, 130),
                 "The decoder or kivSkipPadBytes() was unable to read from the socket due to an "
                 "exceeded timeout or an error reading from the socket");
}

TEST(ReturnCodeText, CodesNineAndTenDependOnTheSide) {
    TestWorld w;
    const std::string choice = "Choice selector is out of range";
    const std::string tags = "The PDU number that you specified does not match the tag found in the encoded data";
    EXPECT_EQ(kivReturnCodeText(nullptr, 9), "Encoder: " + choice + ".  Decoder: " + tags);
    w->errorMode = 5;
    EXPECT_EQ(kivReturnCodeText(w.get(), 9), tags);
    EXPECT_STREQ(kivReturnCodeText(w.get(), 10),
                 "Implementation limit exceeded.  For example, an integer value was too great");
    // Only mode 5 is the decoder's: 3 and 4 get the encoder's texts.
    const std::string oid =
        "OBJECT IDENTIFIER value conflicts with X.680; or the value specified is too large for the "
        "chosen C representation, or it is too large to fit the implementation limit, or its length "
        "exceeds the value set by the KIV.OBJECTID LONG directive";
    for (int32_t mode : {0, 3, 4, 6}) {
        w->errorMode = mode;
        EXPECT_EQ(kivReturnCodeText(w.get(), 9), choice) << mode;
        EXPECT_EQ(kivReturnCodeText(w.get(), 10), oid) << mode;
    }
    EXPECT_EQ(kivReturnCodeText(nullptr, 10),
              "Decoder: Implementation limit exceeded.  For example, an integer value was too great. "
              " Encoder/Constraint checker: " + oid);
    // No other code looks at the world.
    for (int32_t code = 0; code <= 130; ++code) {
        if (code == 9 || code == 10) continue;
        EXPECT_EQ(kivReturnCodeText(w.get(), code), kivReturnCodeText(nullptr, code)) << code;
    }
}

}  // namespace
