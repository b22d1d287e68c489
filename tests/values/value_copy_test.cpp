// The guarded copy and comparison of whole values: a layout written the way
// generated code writes it, copied and compared; mutations; a caller buffer
// too small at every size; copiers that raise or fault; the open-type
// routines and flags. Failure of each heap allocation is swept in
// tests/faults.
#include <gtest/gtest.h>
#include <sys/mman.h>

#include <functional>
#include <string>
#include <tuple>
#include <vector>

#include "support/alloc_hooks.h"
#include "support/test_pdu.h"
#include "support/test_world.h"

using namespace fenk::test;

namespace {

volatile int* faultingAddress() {
    static void* page = mmap(nullptr, 4096, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return static_cast<volatile int*>(page);
}

// Copiers that take some memory and then fail.
int32_t raisingCopier(KivGlobal* w, uint32_t, const void*, void** out) {
    *out = kivAllocExact(w, 40);
    kivCopyText(w, "partial");
    kivRaise(w, 27, 3);  // "0063S: Size constraint violated, ..." code 17
}

int32_t faultingCopier(KivGlobal* w, uint32_t, const void*, void** out) {
    *out = kivAllocRounded(w, 24);
    return *faultingAddress();
}

int32_t failingUserRoutine(KivGlobal*, void*, void*) { return 1; }

void* userArguments[2];
int32_t notingUserRoutine(KivGlobal*, void* source, void* destination) {
    userArguments[0] = source;
    userArguments[1] = destination;
    return 0;
}

class ValueCopy : public ::testing::Test {
protected:
    void SetUp() override {
        installCountingHooks(w.get(), &counter);
        kivSetValueRoutines(w.get(), &testValueRoutines);
    }
    uint32_t copy(void** out) { return kivCopyValue(w.get(), kTestPdu, source.get(), out); }
    uint32_t compare(const void* a, const void* b) { return kivCompareValue(w.get(), kTestPdu, a, b); }
    void useRoutines(KivValueCopier copier) {
        routines = {nullptr, copier, &compareTestValues};
        kivSetValueRoutines(w.get(), &routines);
    }

    TestWorld w;
    AllocCounter counter;
    TestPduSource source;
    KivValueRoutines routines{};
};

TEST_F(ValueCopy, CopyIsDeepEqualAndTheCallersOwn) {
    void* out = nullptr;
    ASSERT_EQ(copy(&out), 0u);
    auto* c = static_cast<TestPdu*>(out);
    const TestPdu* s = source.get();
    EXPECT_EQ(compare(s, c), 0u);
    EXPECT_TRUE(c->octets.data != s->octets.data && c->name != s->name && c->items != s->items &&
                c->events.last != s->events.last && c->extra.encoded != s->extra.encoded);
    EXPECT_STREQ(static_cast<TestInner*>(c->extra.decoded)->note, "inner note");
    // Dropped, not freed: 15 blocks live, no record of them left.
    EXPECT_EQ(std::tuple(counter.live, counter.frees, w->blockTable.count), std::tuple(15, 0, 0));
    freeTestValue(w.get(), kTestPdu, out);
    EXPECT_EQ(counter.live, 0);
}

TEST_F(ValueCopy, EveryChangedFieldMakesTheValuesDiffer) {
    void* out = nullptr;
    ASSERT_EQ(copy(&out), 0u);
    struct Change { const char* what; std::function<void(TestPdu&)> apply; bool differs; };
    const std::vector<Change> changes = {
        {"version", [](TestPdu& p) { p.version = 4; }, true},
        {"octet", [](TestPdu& p) { static_cast<uint8_t*>(p.octets.data)[4] ^= 1; }, true},
        {"octet length", [](TestPdu& p) { p.octets.length = 4; }, true},
        {"bmp unit", [](TestPdu& p) { static_cast<char16_t*>(p.bmp.data)[3] = u'K'; }, true},
        {"last bit", [](TestPdu& p) { static_cast<uint8_t*>(p.flags.data)[1] ^= 0x40; }, true},
        {"bit beyond the length", [](TestPdu& p) { static_cast<uint8_t*>(p.flags.data)[1] ^= 0x20; }, false},
        {"bit count", [](TestPdu& p) { p.flags.length = 9; }, true},
        {"name", [](TestPdu& p) { p.name[0] = 'S'; }, true},
        {"name absent", [](TestPdu& p) { p.name = nullptr; }, true},
        {"serial", [](TestPdu& p) { static_cast<uint8_t*>(p.serial.data)[8] = 0; }, true},
        {"serial sign octet",
         [](TestPdu& p) { p.serial.data = static_cast<uint8_t*>(p.serial.data) + 1; p.serial.length -= 1; }, true},
        {"item number", [](TestPdu& p) { p.items->next->number = 1; }, true},
        {"item tag", [](TestPdu& p) { p.items->next->next->tag = 9; }, true},
        {"item count", [](TestPdu& p) { p.items->next->next = nullptr; }, true},
        {"event code", [](TestPdu& p) { reinterpret_cast<TestEvent*>(p.events.last)->code = 1; }, true},
        {"event count", [](TestPdu& p) { p.events.count = 2; }, true},
        {"inner value", [](TestPdu& p) { static_cast<TestInner*>(p.extra.decoded)->value = 8; }, true},
        {"inner note", [](TestPdu& p) { static_cast<TestInner*>(p.extra.decoded)->note = nullptr; }, true},
        {"open type pdu", [](TestPdu& p) { p.extra.pduNum = 3; }, true},
        // With decoded values compared, the encodings are not looked at.
        {"encoded octet", [](TestPdu& p) { p.extra.encoded[0] = 0; }, false},
    };
    for (const Change& change : changes) {
        TestPduSource changed;
        change.apply(*changed.get());
        EXPECT_EQ(compare(changed.get(), out) != 0, change.differs) << change.what;
        EXPECT_EQ(compare(out, changed.get()) != 0, change.differs) << change.what;
    }
    freeTestValue(w.get(), kTestPdu, out);
}

TEST_F(ValueCopy, CallerBufferHoldsTheWholeCopyOrAnswersOne) {
    alignas(8) static uint8_t buffer[2048];
    kivStoreDecodeBufferLength(w.get(), sizeof buffer);
    void* out = buffer;
    ASSERT_EQ(copy(&out), 0u);
    EXPECT_EQ(out, buffer) << "the top-level value is carved first";
    EXPECT_EQ(compare(source.get(), out), 0u);
    EXPECT_EQ(counter.calls, 0) << "nothing from the hooks";
    const uint32_t used = sizeof buffer - w->poolLeft;
    EXPECT_GT(used, sizeof(TestPdu));

    for (uint32_t size = 1; size < used; ++size) {
        kivStoreDecodeBufferLength(w.get(), size);
        void* small = buffer;
        ASSERT_EQ(copy(&small), 1u) << size;
    }
    kivStoreDecodeBufferLength(w.get(), used);
    out = buffer;
    EXPECT_EQ(copy(&out), 0u);
    EXPECT_EQ(w->poolLeft, 0u);
    EXPECT_EQ(counter.calls, 0);
}

TEST_F(ValueCopy, RefusesMissingArgumentsAndRoutines) {
    void* out = nullptr;
    const TestPdu* s = source.get();
    EXPECT_EQ(std::tuple(kivCopyValue(nullptr, kTestPdu, s, &out), kivCopyValue(w.get(), kTestPdu, nullptr, &out),
                         kivCopyValue(w.get(), kTestPdu, s, nullptr), kivCompareValue(nullptr, kTestPdu, s, s),
                         kivCompareValue(w.get(), kTestPdu, nullptr, s), kivCompareValue(w.get(), kTestPdu, s, nullptr)),
              std::tuple(6u, 6u, 6u, 6u, 6u, 6u));
    // A caller buffer of no length: refused before the copier runs.
    uint8_t buffer[64];
    out = buffer;
    EXPECT_EQ(copy(&out), 6u);
    EXPECT_EQ(std::tuple(out, counter.calls), std::tuple(static_cast<void*>(buffer), 0));

    KivValueRoutines none{};
    kivSetValueRoutines(w.get(), &none);
    out = nullptr;
    EXPECT_EQ(std::tuple(copy(&out), compare(s, s)), std::tuple(25u, 25u));
    kivSetValueRoutines(w.get(), nullptr);
    EXPECT_EQ(std::tuple(copy(&out), compare(s, s)), std::tuple(25u, 25u));
}

TEST_F(ValueCopy, RaisesAndFaultsBecomeTheAnswerAndFreeThePartialCopy) {
    useRoutines(&raisingCopier);
    void* out = nullptr;
    EXPECT_EQ(copy(&out), 17u);
    EXPECT_EQ(out, nullptr) << "the copier had stored a block that is freed now";
    EXPECT_EQ(std::tuple(counter.live, counter.frees), std::tuple(0, 2));

    useRoutines(&faultingCopier);
    EXPECT_EQ(copy(&out), 14u);
    EXPECT_EQ(counter.live, 0);

    // The PDU number the routines do not know.
    kivSetValueRoutines(w.get(), &testValueRoutines);
    EXPECT_EQ(kivCopyValue(w.get(), 9, source.get(), &out), 3u);
    EXPECT_EQ(kivCompareValue(w.get(), 9, source.get(), source.get()), 3u);
    EXPECT_EQ(counter.live, 0);
}

TEST_F(ValueCopy, UserFieldRoutinesAreCalledAndTheirFailureIsFortyRaised) {
    kivStoreOpenTypeHandlers(w.get(), &notingUserRoutine, &failingUserRoutine);
    void* out = nullptr;
    ASSERT_EQ(copy(&out), 0u);
    const std::tuple<void*, void*> expected(&source.get()->extra, &static_cast<TestPdu*>(out)->extra);
    EXPECT_EQ(std::tuple(userArguments[0], userArguments[1]), expected);
    EXPECT_EQ(compare(source.get(), out), 40u);
    freeTestValue(w.get(), kTestPdu, out);

    kivStoreOpenTypeHandlers(w.get(), &failingUserRoutine, nullptr);
    out = nullptr;
    EXPECT_EQ(copy(&out), 40u);
    EXPECT_EQ(counter.live, 0);
}

TEST_F(ValueCopy, OpenTypeFlagsLeaveFormsOutOfCopiesAndComparisons) {
    w->decodingFlags = KIV_IGNORE_DECODED_OPEN_TYPE;
    void* out = nullptr;
    ASSERT_EQ(copy(&out), 0u);
    auto* c = static_cast<TestPdu*>(out);
    EXPECT_EQ(std::tuple(c->extra.pduNum, c->extra.decoded), std::tuple(0, nullptr));
    EXPECT_EQ(compare(source.get(), out), 0u) << "the encodings are compared instead";
    c->extra.encoded[4] = 9;
    EXPECT_EQ(compare(source.get(), out), 1u);
    w->decodingFlags |= KIV_IGNORE_ENCODED_OPEN_TYPE;
    EXPECT_EQ(compare(source.get(), out), 0u) << "nothing of the open type is looked at";
    freeTestValue(w.get(), kTestPdu, out);

    w->decodingFlags = KIV_IGNORE_ENCODED_OPEN_TYPE;
    out = nullptr;
    ASSERT_EQ(copy(&out), 0u);
    c = static_cast<TestPdu*>(out);
    EXPECT_EQ(std::tuple(c->extra.length, c->extra.encoded), std::tuple(0u, nullptr));
    EXPECT_EQ(compare(source.get(), out), 0u);
    freeTestValue(w.get(), kTestPdu, out);
    EXPECT_EQ(counter.live, 0);
}

}  // namespace
