// The value constructors: layouts and sizes, the empty and null cases, and
// the deep-copying ones. Failure of each allocation is swept in tests/faults.
#include <gtest/gtest.h>

#include <cstring>
#include <tuple>

#include "support/alloc_hooks.h"
#include "support/test_pdu.h"
#include "support/test_world.h"

using namespace fenk::test;

namespace {

class Constructors : public ::testing::Test {
protected:
    void SetUp() override {
        installCountingHooks(g, &counter);
        kivSetValueRoutines(g, &testValueRoutines);
    }
    void release(void* record, void* data) {
        kivFreeBlock(g, data);
        kivFreeBlock(g, record);
    }
    TestWorld w;
    KivGlobal* g = w.get();
    AllocCounter counter;
    TestPduSource source;
};

TEST_F(Constructors, ScalarsHoldTheirValueInABlockOfTheirWidth) {
    auto check = [&](auto* block, auto value) {
        static_assert(sizeof *block == sizeof value);
        ASSERT_NE(block, nullptr);
        EXPECT_EQ(*block, value);
        kivFreeBlock(g, block);
    };
    check(kivNewValue8a(g, 0xA1), uint8_t{0xA1});
    check(kivNewValue8b(g, 0xB2), uint8_t{0xB2});
    check(kivNewValue8c(g, 0xC3), uint8_t{0xC3});
    check(kivNewValue16a(g, 0xA1A2), uint16_t{0xA1A2});
    check(kivNewValue16b(g, 0xB1B2), uint16_t{0xB1B2});
    check(kivNewValue32a(g, 0xA1A2A3A4), uint32_t{0xA1A2A3A4});
    check(kivNewValue32b(g, 0xB1B2B3B4), uint32_t{0xB1B2B3B4});
    check(kivNewValue32c(g, 0xC1C2C3C4), uint32_t{0xC1C2C3C4});
    check(kivNewValue32d(g, 0xD1D2D3D4), uint32_t{0xD1D2D3D4});
    check(kivNewValue64a(g, 0xA1A2A3A4A5A6A7A8), uint64_t{0xA1A2A3A4A5A6A7A8});
    check(kivNewValue64b(g, 0xB1B2B3B4B5B6B7B8), uint64_t{0xB1B2B3B4B5B6B7B8});
    check(kivNewValue64c(g, 0xC1C2C3C4C5C6C7C8), uint64_t{0xC1C2C3C4C5C6C7C8});
    check(kivNewFloat(g, 1.5f), 1.5f);
    check(kivNewDouble(g, -2.25), -2.25);
    EXPECT_EQ(counter.calls, 14);
    EXPECT_EQ(counter.live, 0);

    g->allocHook = nullptr;
    EXPECT_EQ(kivNewValue64c(g, 1), nullptr);
    EXPECT_EQ(kivNewText(g, "x"), nullptr);
    EXPECT_EQ(kivNewString16(g, nullptr, 0), nullptr) << "no hook, not even for the record";
    EXPECT_EQ(kivNewOpenTypeDecoded(g, source.get(), kTestPdu, 24), nullptr);
    EXPECT_EQ(kivNewContainingValue(g, source.get(), kTestPdu), nullptr);
    EXPECT_EQ(counter.calls, 14);
}

TEST_F(Constructors, TextsOctetsAndUnits) {
    char* empty = kivNewEmptyText(g, 10);
    EXPECT_STREQ(empty, "");
    empty[10] = 'x';  // length + 1 octets are there (sanitizers check)
    kivFreeBlock(g, empty);

    KivLengthData* octets = kivNewOctets(g, reinterpret_cast<const uint8_t*>("\xFF\xFE\xFD"), 3);
    ASSERT_EQ(octets->length, 3u);
    EXPECT_EQ(std::memcmp(octets->data, "\xFF\xFE\xFD\0", 4), 0) << "followed by a 0 octet";
    release(octets, octets->data);
    KivLengthData* fromEmpty = kivNewOctetsFromText(g, "");
    ASSERT_NE(fromEmpty->data, nullptr) << "the terminator still has its block";
    EXPECT_EQ(fromEmpty->length, 0u);
    release(fromEmpty, fromEmpty->data);

    const uint32_t units32[] = {0x1F600, 0x41, 0x10FFFF};
    KivLengthData* s32 = kivNewString32(g, units32, 3);
    EXPECT_EQ(std::tuple(s32->length, std::memcmp(s32->data, units32, 12)), std::tuple(3u, 0));
    release(s32, s32->data);
    KivLengthData* none = kivNewString16(g, nullptr, 0);
    EXPECT_EQ(std::tuple(none->length, none->data), std::tuple(0u, nullptr));
    release(none, nullptr);
    EXPECT_EQ(kivNewString16(g, nullptr, 2), nullptr);
    EXPECT_EQ(kivNewArrayCopy(g, nullptr, 1, 4), nullptr);
    EXPECT_EQ(kivNewContainingOctets(g, nullptr, 1), nullptr);
    EXPECT_EQ(counter.live, 0) << "each released its record";

    // Bits: (count >> 3) + 1 octets, exactly what the sources hold here.
    const uint8_t twelve[2] = {0xAB, 0xC0}, sixteen[3] = {0xAB, 0xCD, 0xEF};
    KivLengthData* b12 = kivNewBits(g, twelve, 12);
    EXPECT_EQ(std::tuple(b12->length, std::memcmp(b12->data, twelve, 2)), std::tuple(12u, 0));
    release(b12, b12->data);
    KivContaining* b16 = kivNewContainingBits(g, sixteen, 16);
    EXPECT_EQ(std::tuple(b16->length, b16->decoded), std::tuple(16u, nullptr));
    EXPECT_EQ(std::memcmp(b16->encoded, sixteen, 3), 0) << "one octet beyond the bits";
    release(b16, b16->encoded);
    EXPECT_EQ(counter.live, 0);
}

TEST_F(Constructors, ArraysAndOpenTypes) {
    KivArray* zeroed = kivNewArray(g, 5, 8, 1);
    const uint8_t zeros[40] = {};
    EXPECT_EQ(std::tuple(zeroed->count, std::memcmp(zeroed->elements, zeros, 40)), std::tuple(5u, 0));
    release(zeroed, zeroed->elements);
    KivArray* emptyArray = kivNewArray(g, 0, 8, 0);
    EXPECT_EQ(emptyArray->elements, nullptr);
    release(emptyArray, nullptr);

    const uint8_t encoded[] = {0x02, 0x01, 0x05};
    auto* ot = reinterpret_cast<KivOpenTypeWithUser*>(kivNewOpenTypeEncoded(g, encoded, 3, 32));
    EXPECT_EQ(std::tuple(ot->common.pduNum, ot->common.length, ot->common.decoded,
                         std::memcmp(ot->common.encoded, encoded, 3)), std::tuple(0, 3u, nullptr, 0));
    EXPECT_EQ(ot->userField, 0u) << "zero-filled to the caller's size";
    release(ot, ot->common.encoded);
    KivOpenType* emptyOt = kivNewOpenTypeEncoded(g, nullptr, 0, 24);
    EXPECT_EQ(emptyOt->encoded, nullptr);
    release(emptyOt, nullptr);

    KivOpenType* decoded = kivNewOpenTypeDecoded(g, source.get(), kTestPdu, 24);
    ASSERT_NE(decoded, nullptr);
    EXPECT_EQ(std::tuple(decoded->pduNum, decoded->encoded), std::tuple(static_cast<int32_t>(kTestPdu), nullptr));
    EXPECT_EQ(kivCompareValue(g, kTestPdu, source.get(), decoded->decoded), 0u);
    freeTestValue(g, kTestPdu, decoded->decoded);
    kivFreeBlock(g, decoded);
    KivContaining* containing = kivNewContainingValue(g, source.get(), kTestPdu);
    EXPECT_EQ(containing->encoded, nullptr);
    EXPECT_EQ(kivCompareValue(g, kTestPdu, source.get(), containing->decoded), 0u);
    freeTestValue(g, kTestPdu, containing->decoded);
    kivFreeBlock(g, containing);

    EXPECT_EQ(kivNewOpenTypeDecoded(g, source.get(), 77, 24), nullptr) << "a PDU the table lacks";
    EXPECT_EQ(kivNewContainingValue(g, source.get(), 77), nullptr);
    EXPECT_EQ(counter.live, 0);
}

}  // namespace
