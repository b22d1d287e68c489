// The value constructors: layouts and sizes, the empty and null cases,
// failure of each allocation without leaks, and the deep-copying ones.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "support/alloc_hooks.h"
#include "support/test_pdu.h"
#include "support/test_world.h"

using namespace fenk::test;

namespace {

class Constructors : public ::testing::Test {
protected:
    void SetUp() override { installCountingHooks(w.get(), &counter); }
    // Frees a record and its data block.
    template <class Record>
    void release(Record* record, void* data) {
        kivFreeBlock(w.get(), data);
        kivFreeBlock(w.get(), record);
    }
    TestWorld w;
    AllocCounter counter;
};

TEST_F(Constructors, ScalarsHoldTheirValueInABlockOfTheirWidth) {
    KivGlobal* g = w.get();
    std::vector<void*> made;
    auto expect = [&](auto* block, auto value) {
        static_assert(sizeof *block == sizeof value);
        ASSERT_NE(block, nullptr);
        EXPECT_EQ(*block, value);
        made.push_back(block);
    };
    expect(kivNewValue8a(g, 0xA1), uint8_t{0xA1});
    expect(kivNewValue8b(g, 0xB2), uint8_t{0xB2});
    expect(kivNewValue8c(g, 0xC3), uint8_t{0xC3});
    expect(kivNewValue16a(g, 0xA1A2), uint16_t{0xA1A2});
    expect(kivNewValue16b(g, 0xB1B2), uint16_t{0xB1B2});
    expect(kivNewValue32a(g, 0xA1A2A3A4), uint32_t{0xA1A2A3A4});
    expect(kivNewValue32b(g, 0xB1B2B3B4), uint32_t{0xB1B2B3B4});
    expect(kivNewValue32c(g, 0xC1C2C3C4), uint32_t{0xC1C2C3C4});
    expect(kivNewValue32d(g, 0xD1D2D3D4), uint32_t{0xD1D2D3D4});
    expect(kivNewValue64a(g, 0xA1A2A3A4A5A6A7A8), uint64_t{0xA1A2A3A4A5A6A7A8});
    expect(kivNewValue64b(g, 0xB1B2B3B4B5B6B7B8), uint64_t{0xB1B2B3B4B5B6B7B8});
    expect(kivNewValue64c(g, 0xC1C2C3C4C5C6C7C8), uint64_t{0xC1C2C3C4C5C6C7C8});
    expect(kivNewFloat(g, 1.5f), 1.5f);
    expect(kivNewDouble(g, -2.25), -2.25);
    EXPECT_EQ(counter.live, 14);
    for (void* block : made) kivFreeBlock(g, block);
    EXPECT_EQ(counter.live, 0);
}

TEST_F(Constructors, NoAllocationHookGivesNullEverywhere) {
    KivGlobal* g = w.get();
    g->allocHook = nullptr;
    const uint8_t octets[] = {1, 2, 3};
    const uint16_t units[] = {1};
    const uint32_t wide[] = {1};
    int value = 0;
    EXPECT_EQ(kivNewValue8a(g, 1), nullptr);
    EXPECT_EQ(kivNewValue64c(g, 1), nullptr);
    EXPECT_EQ(kivNewDouble(g, 1), nullptr);
    EXPECT_EQ(kivNewEmptyText(g, 4), nullptr);
    EXPECT_EQ(kivNewText(g, "x"), nullptr);
    EXPECT_EQ(kivNewOctets(g, octets, 0), nullptr);
    EXPECT_EQ(kivNewOctetsFromText(g, ""), nullptr);
    EXPECT_EQ(kivNewString16(g, units, 1), nullptr);
    EXPECT_EQ(kivNewString32(g, wide, 1), nullptr);
    EXPECT_EQ(kivNewBits(g, octets, 3), nullptr);
    EXPECT_EQ(kivNewArray(g, 0, 4, 1), nullptr);
    EXPECT_EQ(kivNewArrayCopy(g, octets, 3, 1), nullptr);
    EXPECT_EQ(kivNewOpenTypeEncoded(g, octets, 3, 24), nullptr);
    EXPECT_EQ(kivNewOpenTypeDecoded(g, &value, kTestInner, 24), nullptr);
    EXPECT_EQ(kivNewContainingBits(g, octets, 3), nullptr);
    EXPECT_EQ(kivNewContainingOctets(g, octets, 3), nullptr);
    EXPECT_EQ(kivNewContainingValue(g, &value, kTestInner), nullptr);
    EXPECT_EQ(counter.calls, 0);
}

TEST_F(Constructors, TextsAndOctets) {
    KivGlobal* g = w.get();
    char* empty = kivNewEmptyText(g, 10);
    EXPECT_STREQ(empty, "");
    empty[10] = 'x';  // length + 1 octets are there (sanitizers check)
    kivFreeBlock(g, empty);
    char* text = kivNewText(g, "some text");
    EXPECT_STREQ(text, "some text");
    kivFreeBlock(g, text);

    const uint8_t three[] = {0xFF, 0xFE, 0xFD};
    KivLengthData* octets = kivNewOctets(g, three, 3);
    ASSERT_NE(octets, nullptr);
    EXPECT_EQ(octets->length, 3u);
    EXPECT_EQ(std::memcmp(octets->data, "\xFF\xFE\xFD\0", 4), 0) << "followed by a 0 octet";
    release(octets, octets->data);

    KivLengthData* fromText = kivNewOctetsFromText(g, "abc");
    EXPECT_EQ(fromText->length, 3u);
    EXPECT_STREQ(static_cast<char*>(fromText->data), "abc");
    release(fromText, fromText->data);
    KivLengthData* fromEmpty = kivNewOctetsFromText(g, "");
    EXPECT_EQ(fromEmpty->length, 0u);
    ASSERT_NE(fromEmpty->data, nullptr) << "the terminator still has its block";
    EXPECT_STREQ(static_cast<char*>(fromEmpty->data), "");
    release(fromEmpty, fromEmpty->data);
    EXPECT_EQ(counter.live, 0);
}

TEST_F(Constructors, RecordsCopyTheirUnitsAndTreatEmptyAndNullSources) {
    KivGlobal* g = w.get();
    const uint16_t units16[] = {0x0041, 0xFFFF};
    KivLengthData* s16 = kivNewString16(g, units16, 2);
    EXPECT_EQ(s16->length, 2u);
    EXPECT_EQ(std::memcmp(s16->data, units16, 4), 0);
    release(s16, s16->data);
    const uint32_t units32[] = {0x1F600, 0x41, 0x10FFFF};
    KivLengthData* s32 = kivNewString32(g, units32, 3);
    EXPECT_EQ(s32->length, 3u);
    EXPECT_EQ(std::memcmp(s32->data, units32, 12), 0);
    release(s32, s32->data);

    KivLengthData* none = kivNewString16(g, nullptr, 0);
    ASSERT_NE(none, nullptr);
    EXPECT_EQ(none->length, 0u);
    EXPECT_EQ(none->data, nullptr);
    EXPECT_EQ(counter.live, 1) << "the record alone";
    release(none, nullptr);
    EXPECT_EQ(kivNewString16(g, nullptr, 2), nullptr);
    EXPECT_EQ(kivNewOctets(g, nullptr, 1), nullptr);
    EXPECT_EQ(kivNewArrayCopy(g, nullptr, 1, 4), nullptr);
    EXPECT_EQ(kivNewContainingOctets(g, nullptr, 1), nullptr);
    EXPECT_EQ(counter.live, 0) << "each released its record";

    // Bits: (count >> 3) + 1 octets, exactly what the source holds.
    const uint8_t twelve[2] = {0xAB, 0xC0};
    KivLengthData* b12 = kivNewBits(g, twelve, 12);
    EXPECT_EQ(b12->length, 12u);
    EXPECT_EQ(std::memcmp(b12->data, twelve, 2), 0);
    release(b12, b12->data);
    const uint8_t sixteen[3] = {0xAB, 0xCD, 0xEF};
    KivLengthData* b16 = kivNewBits(g, sixteen, 16);
    EXPECT_EQ(std::memcmp(b16->data, sixteen, 3), 0) << "one octet beyond the bits";
    release(b16, b16->data);
    KivLengthData* noBits = kivNewBits(g, nullptr, 0);
    EXPECT_EQ(noBits->data, nullptr);
    release(noBits, nullptr);
    EXPECT_EQ(counter.live, 0);
}

TEST_F(Constructors, ArraysAndContentsConstraints) {
    KivGlobal* g = w.get();
    KivArray* zeroed = kivNewArray(g, 5, 8, 1);
    EXPECT_EQ(zeroed->count, 5u);
    const uint8_t zeros[40] = {};
    EXPECT_EQ(std::memcmp(zeroed->elements, zeros, 40), 0);
    release(zeroed, zeroed->elements);
    KivArray* emptyArray = kivNewArray(g, 0, 8, 0);
    EXPECT_EQ(emptyArray->elements, nullptr);
    release(emptyArray, nullptr);
    const int32_t elements[] = {4, 5, 6};
    KivArray* copied = kivNewArrayCopy(g, elements, 3, sizeof(int32_t));
    EXPECT_EQ(copied->count, 3u);
    EXPECT_EQ(std::memcmp(copied->elements, elements, sizeof elements), 0);
    release(copied, copied->elements);

    const uint8_t bits[] = {0xF0, 0x0F};
    KivContaining* cb = kivNewContainingBits(g, bits, 9);
    EXPECT_EQ(cb->length, 9u);
    EXPECT_EQ(cb->decoded, nullptr);
    EXPECT_EQ(std::memcmp(cb->encoded, bits, 2), 0);
    release(cb, cb->encoded);
    KivContaining* co = kivNewContainingOctets(g, bits, 2);
    EXPECT_EQ(co->length, 2u);
    EXPECT_EQ(std::memcmp(co->encoded, bits, 2), 0);
    release(co, co->encoded);
    KivContaining* ce = kivNewContainingOctets(g, nullptr, 0);
    EXPECT_EQ(ce->encoded, nullptr);
    release(ce, nullptr);
    EXPECT_EQ(counter.live, 0);
}

TEST_F(Constructors, OpenTypesCarryACopyOfTheEncodingOrTheValue) {
    KivGlobal* g = w.get();
    const uint8_t encoded[] = {0x02, 0x01, 0x05};
    auto* ot = reinterpret_cast<KivOpenTypeWithUser*>(kivNewOpenTypeEncoded(g, encoded, 3, 32));
    EXPECT_EQ(ot->common.pduNum, 0);
    EXPECT_EQ(ot->common.length, 3u);
    EXPECT_EQ(ot->common.decoded, nullptr);
    EXPECT_EQ(ot->userField, 0u) << "zero-filled to the caller's size";
    EXPECT_EQ(std::memcmp(ot->common.encoded, encoded, 3), 0);
    release(ot, ot->common.encoded);
    KivOpenType* emptyOt = kivNewOpenTypeEncoded(g, nullptr, 0, 24);
    EXPECT_EQ(emptyOt->encoded, nullptr);
    release(emptyOt, nullptr);
    EXPECT_EQ(kivNewOpenTypeEncoded(g, nullptr, 3, 24), nullptr);

    kivSetValueRoutines(g, &testValueRoutines);
    TestPduSource source;
    KivOpenType* decoded = kivNewOpenTypeDecoded(g, source.get(), kTestPdu, 24);
    ASSERT_NE(decoded, nullptr);
    EXPECT_EQ(decoded->pduNum, static_cast<int32_t>(kTestPdu));
    EXPECT_EQ(decoded->encoded, nullptr);
    EXPECT_EQ(kivCompareValue(g, kTestPdu, source.get(), decoded->decoded), 0u);
    freeTestValue(g, kTestPdu, decoded->decoded);
    kivFreeBlock(g, decoded);

    KivContaining* containing = kivNewContainingValue(g, source.get(), kTestPdu);
    ASSERT_NE(containing, nullptr);
    EXPECT_EQ(containing->length, 0u);
    EXPECT_EQ(containing->encoded, nullptr);
    EXPECT_EQ(kivCompareValue(g, kTestPdu, source.get(), containing->decoded), 0u);
    freeTestValue(g, kTestPdu, containing->decoded);
    kivFreeBlock(g, containing);
    EXPECT_EQ(counter.live, 0);

    EXPECT_EQ(kivNewOpenTypeDecoded(g, source.get(), 77, 24), nullptr) << "a PDU the table lacks";
    EXPECT_EQ(kivNewContainingValue(g, source.get(), 77), nullptr);
    EXPECT_EQ(counter.live, 0);
}

// Every constructor that allocates twice or more: each allocation failing in
// turn gives null and leaves nothing behind.
TEST_F(Constructors, FailureAtEachAllocationLeavesNothing) {
    KivGlobal* g = w.get();
    kivSetValueRoutines(g, &testValueRoutines);
    TestPduSource source;
    const uint8_t octets[] = {1, 2, 3, 4};
    const uint16_t units[] = {1, 2};
    const uint32_t wide[] = {1, 2};
    struct Constructor {
        const char* name;
        std::function<void*()> make;
        std::function<void(void*)> release;
    };
    auto withData = [this](void* r) { release(r, static_cast<KivLengthData*>(r)->data); };
    auto withEncoded = [this](void* r) { release(r, static_cast<KivContaining*>(r)->encoded); };
    auto withOpenEncoded = [this](void* r) { release(r, static_cast<KivOpenType*>(r)->encoded); };
    auto withValue = [this](void* r) {
        freeTestValue(w.get(), kTestPdu, static_cast<KivContaining*>(r)->decoded);
        kivFreeBlock(w.get(), r);
    };
    auto withOpenValue = [this](void* r) {
        freeTestValue(w.get(), kTestPdu, static_cast<KivOpenType*>(r)->decoded);
        kivFreeBlock(w.get(), r);
    };
    const std::vector<Constructor> constructors = {
        {"octets", [&] { return kivNewOctets(g, octets, 4); }, withData},
        {"octets from text", [&] { return kivNewOctetsFromText(g, "abc"); }, withData},
        {"string16", [&] { return kivNewString16(g, units, 2); }, withData},
        {"string32", [&] { return kivNewString32(g, wide, 2); }, withData},
        {"bits", [&] { return kivNewBits(g, octets, 20); }, withData},
        {"array", [&] { return kivNewArray(g, 2, 4, 1); }, withData},
        {"array copy", [&] { return kivNewArrayCopy(g, octets, 2, 2); }, withData},
        {"open type encoded", [&] { return kivNewOpenTypeEncoded(g, octets, 4, 24); }, withOpenEncoded},
        {"containing bits", [&] { return kivNewContainingBits(g, octets, 20); }, withEncoded},
        {"containing octets", [&] { return kivNewContainingOctets(g, octets, 4); }, withEncoded},
        {"open type decoded", [&] { return kivNewOpenTypeDecoded(g, source.get(), kTestPdu, 24); },
         withOpenValue},
        {"containing value", [&] { return kivNewContainingValue(g, source.get(), kTestPdu); },
         withValue},
    };
    for (const Constructor& c : constructors) {
        for (long k = 1;; ++k) {
            counter = AllocCounter{};
            counter.failAt = k;
            void* made = c.make();
            if (made) {
                EXPECT_GE(k, 3) << c.name << ": two allocations or more";
                c.release(made);
                EXPECT_EQ(counter.live, 0) << c.name;
                break;
            }
            EXPECT_EQ(counter.live, 0) << c.name << ", allocation " << k;
        }
    }
}

}  // namespace
