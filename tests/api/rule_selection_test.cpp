// Choosing encoding rules against the linked-rules bitmap and the coder
// pairs present.
#include <gtest/gtest.h>

#include "support/scripted_coders.h"
#include "support/test_world.h"

using fenk::test::TestWorld;

namespace {

KivCoderPair encoderOnly{fenk::test::scriptedPair.encoder, nullptr};
KivCoderPair decoderOnly{nullptr, fenk::test::scriptedPair.decoder};
KivCoderPair empty{nullptr, nullptr};

struct Linked {
    uint8_t bits[2];
};

Linked only(std::initializer_list<int> bits) {
    Linked l{{0, 0}};
    for (int b : bits) l.bits[b / 8] |= uint8_t(1u << (b % 8));
    return l;
}

}  // namespace

TEST(SelectRules, UnknownNumbersAnswer22AndKeepTheRules) {
    TestWorld w;
    w->encodingRules = 3;
    for (int32_t r : {4, 9, -1, 100}) {
        EXPECT_EQ(kivSelectRules(w.get(), r), 22) << r;
        EXPECT_EQ(w->encodingRules, 3);
    }
    EXPECT_EQ(kivSelectRules(nullptr, 0), 6);
}

TEST(SelectRules, NullBitmapLinksEverythingSoThePairDecides) {
    TestWorld w;
    for (int32_t r : {0, 1, 2, 3, 5, 6, 7, 8}) {
        EXPECT_EQ(kivSelectRules(w.get(), r), r == 1 || r == 2 ? 0 : 23) << r;
        EXPECT_EQ(w->encodingRules, r) << "a refused selection still stores the rules";
    }
    w->berCoders = &decoderOnly;
    w->perCoders = &encoderOnly;
    w->xerCoders = &decoderOnly;
    w.priv()->exerCoders = &encoderOnly;
    for (int32_t r : {0, 1, 2, 3, 5, 6, 7, 8}) EXPECT_EQ(kivSelectRules(w.get(), r), 0) << r;
    w->berCoders = &empty;
    for (int32_t r : {0, 3, 7}) EXPECT_EQ(kivSelectRules(w.get(), r), 23) << r;
}

TEST(SelectRules, EachRuleNeedsItsOwnBits) {
    TestWorld w;
    w->berCoders = w->perCoders = w->xerCoders = &fenk::test::scriptedPair;
    w.priv()->exerCoders = &fenk::test::scriptedPair;
    struct Case {
        std::initializer_list<int> bits;
        int32_t rules;
        int32_t answer;
    };
    const Case cases[] = {
        {{0}, 0, 0},  {{3}, 0, 0},  {{7}, 0, 0},   {{1}, 0, 23},
        {{1}, 1, 0},  {{2}, 2, 0},  {{10}, 1, 0},  {{0}, 1, 23},
        {{3}, 3, 0},  {{0}, 3, 23}, {{4}, 5, 0},   {{5}, 5, 0},  {{8}, 5, 23},
        {{5}, 6, 0},  {{4}, 6, 23}, {{7}, 7, 0},   {{0}, 7, 23},
        {{8}, 8, 0},  {{4}, 8, 23},
    };
    for (const Case& c : cases) {
        Linked l = only(c.bits);
        kivCompanionSetLinkedRules(w.get(), 10, l.bits);
        EXPECT_EQ(kivSelectRules(w.get(), c.rules), c.answer)
            << "rules " << c.rules << " bit " << *c.bits.begin();
    }
    // Bits above the highest are not linked.
    Linked l = only({7});
    for (int32_t highest : {6, 7}) {
        kivCompanionSetLinkedRules(w.get(), highest, l.bits);
        EXPECT_EQ(kivSelectRules(w.get(), 7), highest == 6 ? 23 : 0);
    }
}

TEST(SelectRules, PerWithoutItsPairDependsOnTheProvisionBit) {
    TestWorld w;
    Linked l = only({1, 10});
    kivCompanionSetLinkedRules(w.get(), 10, l.bits);
    EXPECT_EQ(kivSelectRules(w.get(), 1), 0);
    l = only({1});
    kivCompanionSetLinkedRules(w.get(), 10, l.bits);
    EXPECT_EQ(kivSelectRules(w.get(), 2), 23);
    w->perCoders = &empty;
    EXPECT_EQ(kivSelectRules(w.get(), 2), 23) << "linked but the pair has no coder";
}

TEST(XmlRules, StoreAndChooseFromTheBitmap) {
    TestWorld w;
    EXPECT_EQ(kivStoreXmlRules(w.get(), 7), 22);
    EXPECT_EQ(kivStoreXmlRules(nullptr, 5), 6);
    EXPECT_EQ(kivChooseXmlRules(nullptr), 6);

    struct Case {
        int32_t highest;
        std::initializer_list<int> bits;
        int32_t choice;
    };
    const Case cases[] = {{10, {4, 5, 8}, 8}, {7, {4, 5, 8}, 5}, {10, {5}, 6},
                          {4, {5}, -1},      {10, {0, 3}, -1}, {3, {4}, -1}};
    for (const Case& c : cases) {
        w.priv()->xmlRules = 0;
        Linked l = only(c.bits);
        kivCompanionSetLinkedRules(w.get(), c.highest, l.bits);
        EXPECT_EQ(kivChooseXmlRules(w.get()), c.choice);
        EXPECT_EQ(w.priv()->xmlRules, c.choice < 0 ? 0 : c.choice);
    }
    EXPECT_EQ(kivStoreXmlRules(w.get(), 6), 0);
    EXPECT_EQ(kivChooseXmlRules(w.get()), 6) << "a stored choice is kept";

    // No bitmap: everything linked, the highest bit decides.
    w.priv()->xmlRules = 0;
    kivCompanionSetLinkedRules(w.get(), 10, nullptr);
    EXPECT_EQ(kivChooseXmlRules(w.get()), 8);
    w.priv()->xmlRules = 0;
    kivCompanionSetLinkedRules(w.get(), 4, nullptr);
    EXPECT_EQ(kivChooseXmlRules(w.get()), 5);
}
