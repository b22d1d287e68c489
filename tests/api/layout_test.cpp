#include <gtest/gtest.h>

#include "support/test_world.h"

extern "C" {
size_t fenkC11SizeOfGlobal(void);
size_t fenkC11SizeOfPrivate(void);
size_t fenkC11OffsetOfXerCoders(void);
size_t fenkC11OffsetOfExerCoders(void);
int32_t fenkC11StoreAndFetchLevel(KivGlobal* world, uint32_t level);
}

TEST(Layout, CSeesTheSameRecordsAsCpp) {
    EXPECT_EQ(fenkC11SizeOfGlobal(), 2728u);
    EXPECT_EQ(fenkC11SizeOfPrivate(), 1000u);
    EXPECT_EQ(fenkC11OffsetOfXerCoders(), offsetof(KivGlobal, xerCoders));
    EXPECT_EQ(fenkC11OffsetOfExerCoders(), offsetof(KivPrivate, exerCoders));
    fenk::test::TestWorld world;
    EXPECT_EQ(fenkC11StoreAndFetchLevel(world.get(), 4), 4);
}
