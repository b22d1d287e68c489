// The companion stand-in: world initialisation, linked rules, character
// classes and formatted output.
#include <gtest/gtest.h>

#include <cctype>

#include "support/test_world.h"

using fenk::test::TestWorld;

TEST(Companion, InitWorldSetsUpWhatTheLibraryAssumes) {
    KivControlTable table{nullptr, 17, nullptr};
    TestWorld w(&table);
    EXPECT_EQ(w->controlTable, &table);
    EXPECT_EQ(w->apiTable, apiTbl);
    ASSERT_NE(w->privateState, nullptr);
    ASSERT_NE(w->globalLock, nullptr);
    EXPECT_NE(w.priv()->privateAllocRoutine, nullptr);
    EXPECT_EQ(w->berCoders, nullptr);
    EXPECT_EQ(w->encodingRules, 0);
    EXPECT_EQ(w.priv()->levelMask, 0u);
    // The lock is recursive: a registry operation may nest.
    ASSERT_EQ(pthread_mutex_lock(&w->globalLock->mutex), 0);
    EXPECT_EQ(pthread_mutex_trylock(&w->globalLock->mutex), 0);
    pthread_mutex_unlock(&w->globalLock->mutex);
    pthread_mutex_unlock(&w->globalLock->mutex);
    EXPECT_EQ(kivCompanionInitWorld(nullptr, nullptr), 6);
}

TEST(Companion, LinkedRulesDefaultThenStored) {
    TestWorld w;
    int32_t highest = 0;
    const uint8_t* bitmap = reinterpret_cast<const uint8_t*>(1);
    kivCompanionLinkedRules(w.get(), &highest, &bitmap);
    EXPECT_EQ(highest, 10);
    EXPECT_EQ(bitmap, nullptr);
    static const uint8_t onlyBer[] = {0x01};
    kivCompanionSetLinkedRules(w.get(), 7, onlyBer);
    kivCompanionLinkedRules(w.get(), &highest, &bitmap);
    EXPECT_EQ(highest, 7);
    EXPECT_EQ(bitmap, onlyBer);
}

TEST(Companion, CharacterClassesFollowTheCLocale) {
    for (int c = 0; c < 256; ++c) {
        uint16_t bits = kivCompanionCharClass[c];
        EXPECT_EQ((bits & KIV_CLASS_DIGIT) != 0, std::isdigit(c) != 0) << c;
        EXPECT_EQ((bits & KIV_CLASS_PRINTABLE) != 0, std::isprint(c) != 0) << c;
        EXPECT_EQ((bits & KIV_CLASS_SPACE) != 0, std::isspace(c) != 0) << c;
    }
}

TEST(Companion, PrintWritesFormattedTextInCallOrder) {
    TestWorld w;
    kivCompanionPrint(w.get(), "%s=%d", "a", 1);
    kivCompanionPrint(w.get(), "%%%c\n", 'z');
    EXPECT_EQ(w.output(), "a=1%z\n");
    EXPECT_EQ(kivCompanionPrint(nullptr, "x"), 0);
}
