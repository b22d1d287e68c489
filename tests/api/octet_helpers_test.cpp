#include <gtest/gtest.h>

#include <vector>

#include "support/test_world.h"

namespace {
uint32_t berLength(std::vector<uint8_t> octets) {
    KivBuffer b{static_cast<uint32_t>(octets.size()), octets.data()};
    return kivBerElementLength(&b);
}
}  // namespace

TEST(BerElementLength, HeaderForms) {
    EXPECT_EQ(berLength({0x30, 0x03, 0x02, 0x01, 0x05}), 5u);
    EXPECT_EQ(berLength({0x30, 0x80}), 0u);
    EXPECT_EQ(berLength({0x1F, 0x81, 0x01, 0x05}), 9u) << "short form is not checked against L";
    EXPECT_EQ(berLength({0x1F, 0x81}), 0u) << "tag runs past the end";
    EXPECT_EQ(berLength({0x30}), 0u) << "no length octet";
    EXPECT_EQ(berLength({0x04, 0x82, 0x01, 0x00}), 0x100u + 4);
    EXPECT_EQ(berLength({0x04, 0x82, 0x01}), 0u) << "long form past the end";
    EXPECT_EQ(berLength({0x04, 0x85, 0, 0, 0, 0, 1}), 0u) << "more than four length octets";
    EXPECT_EQ(berLength({0x04, 0x84, 0xFF, 0xFF, 0xFF, 0xFF}), 0xFFFFFFFFu + 6u)
        << "unsigned 32-bit arithmetic wraps";
    EXPECT_EQ(berLength({}), 0u);
    KivBuffer none{4, nullptr};
    EXPECT_EQ(kivBerElementLength(&none), 0u);
}

TEST(SkipLeadingOctets, AdvancesOverTheValue) {
    fenk::test::TestWorld w;
    uint8_t octets[] = {0, 0, 7};
    KivBuffer b{3, octets};
    EXPECT_EQ(kivSkipLeadingOctets(w.get(), &b, 0), 0);
    EXPECT_EQ(b.length, 1u);
    EXPECT_EQ(b.value, octets + 2);
    KivBuffer zeros{2, octets};
    EXPECT_EQ(kivSkipLeadingOctets(w.get(), &zeros, 0), 4);
    EXPECT_EQ(zeros.length, 0u);
    EXPECT_EQ(kivSkipLeadingOctets(w.get(), &zeros, 0), 4);
    KivBuffer none{3, nullptr};
    EXPECT_EQ(kivSkipLeadingOctets(w.get(), &none, 0), 11);
    EXPECT_EQ(kivSkipLeadingOctets(w.get(), nullptr, 0), 11);
    EXPECT_EQ(kivSkipLeadingOctets(nullptr, &b, 0), 6);
}
