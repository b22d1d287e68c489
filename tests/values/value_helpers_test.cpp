// The helpers of generated copiers and comparators, and the kind
// comparator behind DEFAULT values.
#include <gtest/gtest.h>

#include <cstring>
#include <tuple>
#include <utility>
#include <vector>

#include "support/alloc_hooks.h"
#include "support/raise_catcher.h"
#include "support/test_world.h"

using namespace fenk::test;

namespace {

using Octets = std::vector<uint8_t>;

KivLengthData huge(const Octets& octets) {
    return {static_cast<uint32_t>(octets.size()), const_cast<uint8_t*>(octets.data())};
}

int32_t order(const Octets& a, const Octets& b, bool isSigned) {
    KivLengthData x = huge(a), y = huge(b);
    return kivCompareHugeIntegers(&x, &y, 4, isSigned, 8);
}

TEST(CompareHelpers, BitStringsCompareOnlyTheirBits) {
    const uint8_t a[] = {0xA0, 0xF0}, b[] = {0xA0, 0xFF};
    EXPECT_EQ(kivBitsDiffer(a, b, 12), 0);
    EXPECT_EQ(kivBitsDiffer(a, b, 13), 1);
    EXPECT_EQ(kivBitsDiffer(a, b, 0), 0);

    const uint8_t a0[] = {0xA0}, zero[] = {0x00}, zeroOne[] = {0x00, 0x01};
    EXPECT_EQ(kivNamedBitsDiffer(a0, a0, 4, 8), 0) << "trailing zero bits do not count";
    EXPECT_EQ(kivNamedBitsDiffer(a0, a0, 8, 4), 0);
    EXPECT_EQ(kivNamedBitsDiffer(zero, zeroOne, 8, 16), 1);
    EXPECT_EQ(kivNamedBitsDiffer(zero, zeroOne, 8, 15), 0) << "bit 15 lies beyond 15 bits";
    const uint8_t x[] = {0xA4}, y[] = {0xA0, 0x00, 0x80};
    EXPECT_EQ(kivNamedBitsDiffer(x, y, 5, 16), 0);
    EXPECT_EQ(kivNamedBitsDiffer(y, x, 17, 5), 1) << "bit 16 of the longer is set";
    EXPECT_EQ(kivNamedBitsDiffer(x, y, 6, 5), 1) << "bit 5 of 0xA4 is set";
}

TEST(CompareHelpers, LengthDataRecordsOfBothWidthsAndAtAPosition) {
    uint8_t d1[] = {1, 2, 3, 4, 5, 6}, d2[] = {1, 2, 3, 4, 5, 7};
    KivLengthData empty1{0, nullptr}, empty2{0, d1};
    EXPECT_EQ(kivLengthDataDiffer(&empty1, &empty2, 4, 1), 0);
    // A 16-bit length: the octets after it are not part of it.
    KivLengthData wideA{0xAAAA0003, d1}, wideB{0x55550003, d1};
    EXPECT_EQ(kivLengthDataDiffer(&wideA, &wideB, KIV_LENGTH_WIDTH_16, 1), 0);
    EXPECT_EQ(kivLengthDataDiffer(&wideA, &wideB, 4, 1), 1);
    struct At { uint16_t length; uint8_t filler[10]; uint8_t* data; } atA{3, {1}, d1}, atB{3, {2}, d2};  // data at 16
    EXPECT_EQ(kivLengthDataAtDiffer(&atA, &atB, 2, 1, 16), 0);
    EXPECT_EQ(kivLengthDataAtDiffer(&atA, &atB, 2, 2, 16), 1) << "3 units of 2 reach octet 6";
    EXPECT_EQ(kivLengthDataAtDiffer(&atA, &atB, 2, -1, 16), 0) << "3 bits";
}

TEST(CompareHelpers, HugeIntegersIgnoreRedundantLeadingOctets) {
    const struct { Octets a, b; bool isSigned, differ; } same[] = {
        {{0x00, 0x7F}, {0x7F}, true, false}, {{0xFF, 0x80}, {0x80}, true, false},
        {{0x00, 0x80}, {0x80}, true, true},  {{0x00, 0x80}, {0x80}, false, false},
        {{0xFF, 0x80}, {0x80}, false, true},  // unsigned high octets stay
        {{0x00, 0x00, 0x00}, {0x00}, true, false}, {{0x00}, {}, true, true}, {{}, {}, true, false}};
    for (const auto& c : same) {
        KivLengthData x = huge(c.a), y = huge(c.b);
        EXPECT_EQ(kivHugeIntegersDiffer(&x, &y, 4, c.isSigned) != 0, c.differ) << c.a.size() << c.isSigned;
    }
    EXPECT_LT(order({0xFF, 0x00}, {0x80}, true), 0) << "-256 before -128";
    EXPECT_GT(order({0x01}, {0x80}, true), 0);
    EXPECT_GT(order({0x80}, {0x01}, false), 0) << "unsigned 128 after 1";
    EXPECT_GT(order({0x01, 0x00}, {0x7F}, true), 0);
    EXPECT_LT(order({0x80, 0x00}, {0x80, 0x01}, true), 0);
    EXPECT_EQ(order({0x00, 0x00, 0x42}, {0x42}, true), 0);
    EXPECT_EQ(order({}, {}, true), 0);
    EXPECT_EQ(order({}, {0x00}, true), -1);
    EXPECT_EQ(order({0x80}, {}, true), 1);
}

// The copy helpers outside an operation: the blocks land in the world's
// block table and are given back with it.
class CopyHelpers : public ::testing::Test {
protected:
    void SetUp() override { installCountingHooks(w.get(), &counter); }
    void TearDown() override {
        kivFreeTrackedBlocks(w.get(), w->freeHook);
        EXPECT_EQ(counter.live, 0);
    }
    TestWorld w;
    AllocCounter counter;
};

// Generated copiers pass their own destination (see the test PDU); a new
// record is 16 bytes, or the data position and the pointer.
TEST_F(CopyHelpers, LengthDataRecordsOfTheirOwn) {
    uint8_t bits[] = {0xFF, 0xC0};
    KivLengthData empty{0, bits};
    EXPECT_EQ(static_cast<KivLengthData*>(kivCopyLengthData(w.get(), &empty, nullptr, 4, 1))->data, nullptr);
    struct At { uint32_t length; uint32_t other[5]; uint8_t* data; } at{10, {7, 7, 7, 7, 7}, bits};  // data at 24
    auto* atCopy = static_cast<At*>(kivCopyLengthDataAt(w.get(), &at, nullptr, 4, -1, 24));
    EXPECT_NE(atCopy->data, bits);
    EXPECT_EQ(std::tuple(atCopy->length, std::memcmp(atCopy->data, bits, 2)), std::tuple(10u, 0));
    EXPECT_EQ(counter.calls, 3) << "no data block for the empty record";

    // A 16-bit length: only its two bytes are read and written.
    uint16_t units[] = {0x1111, 0x2222, 0x3333};
    struct Short { uint16_t length; uint16_t other[3]; uint16_t* data; };  // data at 8
    Short narrow{3, {0xFFFF, 0xFFFF, 0xFFFF}, units};
    auto* narrowCopy = static_cast<Short*>(kivCopyLengthData(w.get(), &narrow, nullptr, KIV_LENGTH_WIDTH_16, 2));
    ASSERT_NE(narrowCopy->data, units);
    EXPECT_EQ(std::tuple(narrowCopy->length, std::memcmp(narrowCopy->data, units, sizeof units)), std::tuple(3u, 0));
}

struct Pair { KivDoubleNode link; int64_t value; };

TEST_F(CopyHelpers, ListsKeepTheirOrderAndLinks) {
    Pair nodes[3];
    for (int i = 0; i < 3; ++i) {
        nodes[i].link.next = i < 2 ? &nodes[i + 1].link : nullptr;
        nodes[i].link.previous = reinterpret_cast<KivDoubleNode*>(0x1);  // never copied as is
        nodes[i].value = 10 * (i + 1);
    }
    KivDoubleNode* head = &nodes[0].link;
    KivCountedList* counted = kivCopyCountedList(w.get(), &head, nullptr, sizeof(Pair));
    ASSERT_EQ(counted->count, 3u);
    const KivDoubleNode* previous = nullptr;
    const KivDoubleNode* node = counted->first;
    for (int i = 0; i < 3; previous = node, node = node->next, ++i)
        EXPECT_EQ(std::tuple(node->previous, reinterpret_cast<const Pair*>(node)->value), std::tuple(previous, 10 * (i + 1)));
    EXPECT_EQ(std::tuple(node, counted->last), std::tuple(nullptr, previous));

    KivDoubleNode* none = nullptr;
    KivCountedList holder{head, head, 5};
    kivCopyCountedList(w.get(), &none, &holder, sizeof(Pair));
    EXPECT_EQ(std::tuple(holder.first, holder.last, holder.count), std::tuple(nullptr, nullptr, 0u));

    // Singly linked: the previous word is just element data.
    KivListNode* singly = reinterpret_cast<KivListNode*>(head);
    KivListNode** copy = kivCopySinglyLinkedList(w.get(), &singly, nullptr, sizeof(Pair));
    EXPECT_EQ(reinterpret_cast<Pair*>(*copy)->link.previous, reinterpret_cast<KivDoubleNode*>(0x1));
    EXPECT_EQ(kivListHeadsDiffer(*copy, singly, sizeof(Pair) - sizeof(KivListNode)), 0);
    KivListNode** doubly = kivCopyDoublyLinkedList(w.get(), &singly, nullptr, sizeof(Pair));
    EXPECT_EQ(reinterpret_cast<Pair*>(*doubly)->link.previous, nullptr);
    EXPECT_EQ(kivListHeadsDiffer(*copy, *doubly, sizeof(Pair) - sizeof(KivListNode)), 1);
}

TEST_F(CopyHelpers, OpenTypesWithAndWithoutUserField) {
    uint8_t encoded[] = {1, 2, 3};
    KivOpenTypeWithUser source{{0, 3, encoded, nullptr}, 0x1122334455667788};
    kivStoreShortSetting(w.get(), KIV_OPEN_TYPE_USER_FIELD);
    auto* copy = reinterpret_cast<KivOpenTypeWithUser*>(kivCopyOpenType(w.get(), &source.common, nullptr));
    EXPECT_EQ(copy->userField, 0x1122334455667788u);
    EXPECT_NE(copy->common.encoded, encoded);
    EXPECT_EQ(kivOpenTypesDiffer(w.get(), &copy->common, &source.common), 0);

    kivStoreShortSetting(w.get(), 0);
    KivOpenType* plain = kivCopyOpenType(w.get(), &source.common, nullptr);
    EXPECT_EQ(counter.calls, 4) << "32 and 24 bytes of records, each with 3 octets";
    EXPECT_EQ(kivOpenTypesDiffer(w.get(), plain, &source.common), 0);

    // Encodings present in one only, or different; decoded values that no
    // value routine can show equal.
    KivOpenType other{0, 3, nullptr, nullptr};
    uint8_t changed[] = {1, 2, 4};
    KivOpenType otherChanged{0, 3, changed, nullptr};
    int value = 1;
    KivOpenType decoded{2, 0, nullptr, &value};
    const std::pair<KivOpenType*, KivOpenType*> differing[] = {
        {&source.common, &other}, {&other, &source.common}, {&source.common, &otherChanged},
        {&decoded, &decoded}, {&source.common, &decoded}};
    for (auto [a, b] : differing) EXPECT_EQ(kivOpenTypesDiffer(w.get(), a, b), 1) << a << " " << b;
    // Nor can a decoded value be copied: "0067S: Error in copying an open type".
    Caught caught = catchRaise(w.get(), [&] { kivCopyOpenType(w.get(), &decoded, nullptr); });
    EXPECT_EQ(caught.value, 44);
}

// The kind comparator, mostly through kivEqualsDefault (which compares as
// under PER, the data where the kind puts it).
class KindComparator : public ::testing::Test {
protected:
    void SetUp() override { w->encodingRules = kivRulesPerUnaligned; }
    bool equal(const void* a, const void* b, int32_t size, uint32_t bits, uint32_t kind) {
        return kivEqualsDefault(w.get(), a, b, size, bits, kind) != 0;
    }
    TestWorld w;
};

TEST_F(KindComparator, InPlaceKinds) {
    const uint8_t a[] = {1, 2, 3, 4, 5, 6, 7, 8}, b[] = {1, 2, 3, 4, 5, 6, 7, 9};
    for (uint32_t kind : {0u, 5u, 6u, 7u, 29u, 30u, 55u, 58u}) {
        EXPECT_TRUE(equal(a, b, 7, 0, kind)) << kind;
        EXPECT_FALSE(equal(a, b, 8, 0, kind)) << kind;
    }
    const uint8_t t1 = 0x03, t2 = 0xFD, t3 = 0x02;
    EXPECT_TRUE(equal(&t1, &t2, 1, 0, 8)) << "a BOOLEAN is its bit 0";
    EXPECT_FALSE(equal(&t1, &t3, 1, 0, 8));
    // Kind 1: a bit string in an integer, laid out sign-extended over size bytes.
    int16_t minusOne = -1, top = 0x7FFF;
    EXPECT_FALSE(equal(&minusOne, &top, 3, 8, 1)) << "FF FF FF against 00 7F FF";
    int16_t high = static_cast<int16_t>(0x80F0), highToo = static_cast<int16_t>(0x80FF);
    EXPECT_TRUE(equal(&high, &highToo, 2, 12, 1));
    EXPECT_FALSE(equal(&high, &highToo, 2, 13, 1));
    int32_t wide = 0x12345678, wideToo = 0x12345679;
    EXPECT_TRUE(equal(&wide, &wideToo, 4, 31, 1));
    EXPECT_FALSE(equal(&wide, &wideToo, 4, 32, 1));
    EXPECT_TRUE(equal(a, b, 0, 63, 2));
    EXPECT_FALSE(equal(a, b, 0, 64, 2));
    EXPECT_TRUE(equal("text", "text\0x", 0, 0, 24));
    EXPECT_FALSE(equal("text", "texts", 0, 0, 59));
}

TEST_F(KindComparator, LengthPrefixedKinds) {
    struct InPlace16 { uint16_t length; uint8_t data[6]; };
    const InPlace16 p1{3, {1, 2, 3, 4}}, p2{3, {1, 2, 3, 5}}, e1{0, {1}}, e2{0, {2}};
    EXPECT_TRUE(equal(&p1, &p2, 2, 0, 9));
    EXPECT_TRUE(equal(&e1, &e2, 2, 0, 21)) << "two empty values are equal";
    EXPECT_FALSE(equal(&e1, &e2, 2, 0, 26)) << "but not for kind 26";
    EXPECT_FALSE(equal(&p1, &p2, 2, 0, 26)) << "3 units of 16 bits";
    EXPECT_TRUE(equal(&p1, &p2, 1, 0, 63));
    EXPECT_FALSE(equal(&e1, &e2, 1, 0, 63)) << "nor for kind 63";
    struct InPlace32 { uint32_t length; uint8_t data[4]; } b1{12, {0xAB, 0xC0}}, b2{12, {0xAB, 0xCF}};
    EXPECT_TRUE(equal(&b1, &b2, 4, 0, 4)) << "only 12 bits count";

    uint8_t bytesA[12] = {1, 2, 3, 4, 5, 6, 7, 8}, bytesB[12] = {1, 2, 3, 4, 5, 6, 7, 9};
    KivLengthData r1{4, bytesA}, r2{4, bytesB}, none1{0, nullptr}, none2{0, bytesB};
    for (uint32_t kind : {10u, 20u, 25u}) {
        EXPECT_TRUE(equal(&r1, &r2, 4, 0, kind)) << kind;
        EXPECT_TRUE(equal(&none1, &none2, 4, 0, kind)) << kind;
    }
    EXPECT_FALSE(equal(&none1, &none2, 4, 0, 28));
    EXPECT_FALSE(equal(&r1, &r2, 4, 0, 53)) << "4 units of 16 bits reach octet 8";
    r1.length = r2.length = 3;
    EXPECT_TRUE(equal(&r1, &r2, 4, 0, 53));
    EXPECT_TRUE(equal(&r1, &r2, 4, 0xFFFFFFFF, 63)) << "by pointer";
    EXPECT_FALSE(equal(&r1, &r2, 4, 0, 54));
    r1.length = r2.length = 31;
    EXPECT_TRUE(equal(&r1, &r2, 4, 0, 3)) << "31 bits";

    uint8_t n1[] = {0xFF, 0xFF, 0x80}, n2[] = {0x80};
    KivLengthData h1{3, n1}, h2{1, n2};
    EXPECT_TRUE(equal(&h1, &h2, 4, 1, 62)) << "signed: the same -128";
    EXPECT_FALSE(equal(&h1, &h2, 4, 0, 62));
}

TEST_F(KindComparator, CallersPositionAndLists) {
    struct Positioned { uint32_t length; uint32_t other; uint8_t data[4]; } a{2, 1, {5, 6}}, b{2, 2, {5, 6}};  // data at 8
    EXPECT_EQ(kivKindValuesDiffer(w.get(), &a, &b, 4, 8, 0, 9), 0);
    EXPECT_EQ(kivKindValuesDiffer(w.get(), &a, &b, 4, 4, 0, 9), 1) << "the other word at 4";

    struct Node { KivListNode link; int32_t skipped; int32_t element; };  // element at 12
    Node n1[2] = {{{nullptr}, 1, 7}, {{nullptr}, 1, 8}}, n2[2] = {{{nullptr}, 2, 7}, {{nullptr}, 2, 8}};
    n1[0].link.next = &n1[1].link;
    n2[0].link.next = &n2[1].link;
    EXPECT_EQ(kivKindValuesDiffer(w.get(), n1, n2, 4, 12, 0, 27), 0);
    EXPECT_EQ(kivKindValuesDiffer(w.get(), n1, n2, 4, 8, 0, 27), 1);
    EXPECT_FALSE(equal(n1, n2, 8, 0, 27)) << "the element follows the next pointer";
    n2[0].skipped = n2[1].skipped = 1;
    EXPECT_TRUE(equal(n1, n2, 8, 0, 27));
    n2[0].link.next = nullptr;
    EXPECT_FALSE(equal(n1, n2, 8, 0, 27)) << "one node fewer";
}

TEST_F(KindComparator, RulesShortCutsAndUncomparableKinds) {
    const uint8_t a[] = {1, 2}, b[] = {1, 3};
    for (int32_t rules : {kivRulesBer, kivRulesCer, kivRulesXer}) {
        w->encodingRules = rules;
        EXPECT_EQ(kivKindValuesDiffer(w.get(), a, a, 1, 0, 0, 0), 1) << "only PER and DER compare";
    }
    EXPECT_EQ(kivKindValuesDiffer(w.get(), a, b, 1, 0, 0, 99), 1);
    EXPECT_TRUE(equal(a, b, 1, 0, 0)) << "compared as under PER";
    EXPECT_TRUE(equal(a, b, 1, 0, 50)) << "kinds 50 and 22 compare octets";
    EXPECT_FALSE(equal(a, b, 2, 0, 22));
    EXPECT_TRUE(equal(a, a, 2, 0, 99)) << "the same value";
    EXPECT_FALSE(equal(a, nullptr, 2, 0, 0));
    EXPECT_EQ(w->encodingRules, kivRulesXer);
    w->encodingRules = kivRulesPerAligned;
    EXPECT_EQ(kivKindValuesDiffer(w.get(), a, a, 1, 0, 0, 99), 255);

    w->encodingRules = kivRulesDer;
    w->messageOut = w->messageText;
    EXPECT_FALSE(equal(a, b, 1, 0, 99)) << "not comparable, and no raise";
    EXPECT_EQ(w->encodingRules, kivRulesDer);
    Caught caught = catchRaise(w.get(), [&] { kivKindValuesDiffer(w.get(), a, a, 1, 0, 0, 99); });
    EXPECT_TRUE(caught.raised);
    EXPECT_EQ(caught.value, 30);
    EXPECT_STREQ(w->messageText, "E0116S: Data type is not supported by DER time-optimized encoder.\n");
}

}  // namespace
