// The small helpers of generated code: significant bits, trailing blanks,
// the two leading base-128 numbers, and the routines that only refuse.
#include <gtest/gtest.h>

#include <tuple>

#include "support/test_world.h"

using fenk::test::TestWorld;

namespace {

TEST(SignificantBits, LastSetBitWithinTheCount) {
    const uint8_t a[] = {0x80, 0x00};
    const uint8_t b[] = {0x00, 0x01};
    const uint8_t c[] = {0x00, 0x10, 0xFF};
    EXPECT_EQ(kivSignificantBits(a, 16), 1u);
    EXPECT_EQ(kivSignificantBits(b, 16), 16u);
    EXPECT_EQ(kivSignificantBits(b, 12), 0u) << "the set bit lies beyond bit 11";
    EXPECT_EQ(kivSignificantBits(c, 16), 12u);
    EXPECT_EQ(kivSignificantBits(c, 17), 17u);
    EXPECT_EQ(kivSignificantBits(c, 0), 0u);
}

TEST(TrimTrailingBlanks, DropsSpacesAndNuls) {
    const char text[] = {'a', 'b', ' ', '\0', ' '};
    EXPECT_EQ(kivTrimTrailingBlanks(text, 5), 2);
    EXPECT_EQ(kivTrimTrailingBlanks(" \0 ", 3), 0);
    EXPECT_EQ(kivTrimTrailingBlanks(" a", 2), 2);
    EXPECT_EQ(kivTrimTrailingBlanks(nullptr, 0), 0);
    EXPECT_EQ(kivTrimTrailingBlanks(nullptr, -4), -4);
}

TEST(ReadTwoNumbers, ReadsAndConsumes) {
    TestWorld w;
    uint8_t oid[] = {0x2A, 0x86, 0x48, 0x05};
    KivBuffer data{4, oid};
    uint32_t first = 0, second = 0;
    EXPECT_EQ(kivReadTwoNumbers(w.get(), &data, &first, &second), 0);
    EXPECT_EQ(std::tuple(first, second, data.length, data.value), std::tuple(42u, 840u, 1u, oid + 3));

    uint8_t longest[] = {0x8F, 0xFF, 0xFF, 0xFF, 0x7F, 0x81, 0x80, 0x80, 0x80, 0x00};
    data = {10, longest};
    EXPECT_EQ(kivReadTwoNumbers(w.get(), &data, nullptr, &second), 0);
    EXPECT_EQ(std::tuple(second, data.length), std::tuple(1u << 28, 0u));
}

TEST(ReadTwoNumbers, RefusesWithoutTouchingTheRecord) {
    TestWorld w;
    uint8_t six[] = {0x81, 0x82, 0x83, 0x84, 0x85, 0x06};
    uint8_t cut[] = {0x01, 0x82};
    uint8_t secondTooLong[] = {0x01, 0x81, 0x82, 0x83, 0x84, 0x85, 0x06};
    uint32_t first = 7;
    struct Case { uint8_t* octets; uint32_t length; };
    for (Case c : {Case{six, 6}, Case{cut, 2}, Case{secondTooLong, 7}, Case{six + 5, 1}}) {
        KivBuffer data{c.length, c.octets};
        EXPECT_EQ(kivReadTwoNumbers(w.get(), &data, &first, nullptr), 5);
        EXPECT_EQ(std::tuple(data.length, data.value, first), std::tuple(c.length, c.octets, 7u)) << c.length;
    }
    KivBuffer data{1, nullptr};
    EXPECT_EQ(kivReadTwoNumbers(w.get(), &data, &first, nullptr), 6);
    data = {0, six};
    EXPECT_EQ(kivReadTwoNumbers(w.get(), &data, &first, nullptr), 6);
    EXPECT_EQ(kivReadTwoNumbers(w.get(), nullptr, &first, nullptr), 6);
    data = {6, six};
    EXPECT_EQ(kivReadTwoNumbers(nullptr, &data, &first, nullptr), 6);
}

TEST(Refusals, BadArgumentOrUnsupportedRepresentation) {
    int x = 0;
    EXPECT_EQ(kivRefuseFour(&x, &x, &x, 0), 25);
    EXPECT_EQ(kivRefuseFour(&x, &x, &x, -1), 6);
    EXPECT_EQ(kivRefuseFour(&x, nullptr, &x, 3), 6);
    EXPECT_EQ(kivRefuseThree(&x, &x, &x, 0xFF), 25);
    EXPECT_EQ(kivRefuseThree(&x, &x, nullptr, 0), 6);
}

}  // namespace
