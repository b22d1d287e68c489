// Canonical SET OF ordering: components are encoded apart, sorted and written
// out in ascending order under DER (backward) and CXER (forward).
#include <algorithm>
#include <random>

#include "memory_fixture.h"
#include "support/fake_coders.h"

namespace fenk::test {
namespace {

using Bytes = std::vector<uint8_t>;

constexpr int32_t kBer = 0, kDer = 3, kXer = 5, kCxer = 6;

class SetOfOrder : public MemoryTest {
protected:
    void SetUp() override {
        MemoryTest::SetUp();
        installFakeBerCoders(w.get());
    }

    bool forward() { return w->encodingRules == kCxer; }
    uint8_t** cursor() { return forward() ? &w->poolCursor : &backCursor; }
    uint32_t* left() { return forward() ? &w->poolLeft : &backLeft; }

    void write(const Bytes& octets) {
        if (forward())
            writeForward(w.get(), octets.data(), static_cast<uint32_t>(octets.size()));
        else
            writeBackward(w.get(), &backCursor, &backLeft, octets.data(),
                          static_cast<uint32_t>(octets.size()));
    }

    // Encodes a SET OF of the given components the way a generated encoder
    // does: a backward writer prepends, so it encodes the components last
    // first; the order given is the order of the value either way.
    void encodeSetOf(const std::vector<Bytes>& components, uint8_t mask = 0) {
        auto n = static_cast<int32_t>(components.size());
        kivBeginSetOf(w.get(), n, cursor(), left());
        for (int32_t i = 0; i < n; ++i) {
            kivNextSetOfComponent(w.get(), left());
            write(components[static_cast<size_t>(forward() ? i : n - 1 - i)]);
        }
        kivEndSetOf(w.get(), cursor(), left(), mask);
    }

    Bytes join() {
        uint32_t length = 0;
        uint8_t* out = nullptr;
        if (forward())
            kivJoinForwardOutput(w.get(), &length, &out);
        else
            kivJoinBackwardOutput(w.get(), static_cast<int32_t>(backLeft), &length, &out);
        Bytes result(out, out + length);
        kivFreeBlock(w.get(), out);
        backLeft = 0;
        w->poolLeft = 0;
        return result;
    }

    // Whole encoding: text around the SET OF, written in the writer's order.
    Bytes encodeWithin(const std::vector<Bytes>& components, uint8_t mask = 0) {
        write(forward() ? Bytes{0xA0} : Bytes{0xEE});
        encodeSetOf(components, mask);
        write(forward() ? Bytes{0xEE} : Bytes{0xA0});
        return join();
    }

    static Bytes concat(const std::vector<Bytes>& parts) {
        Bytes all{0xA0};
        for (const Bytes& p : parts) all.insert(all.end(), p.begin(), p.end());
        all.push_back(0xEE);
        return all;
    }

    uint8_t* backCursor = nullptr;
    uint32_t backLeft = 0;
};

TEST_F(SetOfOrder, OtherRulesAndCountingLeaveTheComponentsAsTheyCome) {
    const std::vector<Bytes> components{{0x02, 0x01, 0x05}, {0x02, 0x01, 0x03}};
    for (int32_t rules : {kBer, 1, 2, kXer, 8}) {
        w->encodingRules = rules;
        EXPECT_EQ(encodeWithin(components), concat(components)) << rules;
    }
    w->encodingRules = kDer;
    w->encodingFlags = KIV_ENCODE_COUNT_ONLY;
    counter = AllocCounter{};
    uint8_t* cursor = nullptr;
    uint32_t left = 7;
    kivBeginSetOf(w.get(), 2, &cursor, &left);
    kivNextSetOfComponent(w.get(), &left);
    kivEndSetOf(w.get(), &cursor, &left, 0);
    EXPECT_EQ(left, 7u);
    EXPECT_EQ(w->setOfFrames, nullptr);
    EXPECT_EQ(counter.calls, 0);
}

TEST_F(SetOfOrder, SmallCasesUnderBothRules) {
    for (int32_t rules : {kDer, kCxer}) {
        w->encodingRules = rules;
        EXPECT_EQ(encodeWithin({{0x02, 0x01, 0x05}, {0x02, 0x01, 0x03}}),
                  concat({{0x02, 0x01, 0x03}, {0x02, 0x01, 0x05}}));
        // A prefix sorts first.
        EXPECT_EQ(encodeWithin({{0x04, 0x02, 0x01}, {0x04, 0x02}}),
                  concat({{0x04, 0x02}, {0x04, 0x02, 0x01}}));
        // The mask makes 0x04 and 0x24 equal in the first octet only.
        EXPECT_EQ(encodeWithin({{0x04, 0x01}, {0x24, 0x00}}, 0x20),
                  concat({{0x24, 0x00}, {0x04, 0x01}}));
        EXPECT_EQ(encodeWithin({{0x04, 0x01}, {0x24, 0x00}}),
                  concat({{0x04, 0x01}, {0x24, 0x00}}));
        EXPECT_EQ(encodeWithin({{0x30, 0x00}}), concat({{0x30, 0x00}}));
        EXPECT_EQ(encodeWithin({}), concat({})) << "an empty SET OF writes nothing";
        EXPECT_EQ(w->setOfFrames, nullptr);
        EXPECT_EQ(counter.live, 0) << rules;
    }
}

TEST_F(SetOfOrder, EqualEntriesKeepTheOrderOfTheFibonacciShellSort) {
    // Five entries: gaps 3 then 1. The gap-3 pass moves the second of two
    // equal entries in front of the first; a stable sort would not.
    const Bytes z{0x30, 0x09}, a{0x04, 0x05}, y{0x10, 0x01}, a2{0x24, 0x05}, last{0x31, 0x00};
    for (int32_t rules : {kDer, kCxer}) {
        w->encodingRules = rules;
        // The entries in encoding order: a backward writer encodes last first.
        std::vector<Bytes> entries{z, a, y, a2, last};
        if (!forward()) std::reverse(entries.begin(), entries.end());
        EXPECT_EQ(encodeWithin(entries, 0x20), concat({a2, a, y, z, last}));
    }
}

TEST_F(SetOfOrder, ThousandsOfComponentsAcrossChunks) {
    std::mt19937 random(7);
    std::vector<Bytes> components(3000);
    for (size_t i = 0; i < components.size(); ++i) {
        size_t n = 1 + random() % (i % 97 == 0 ? 2600 : 12);
        components[i].resize(n);
        for (auto& octet : components[i]) octet = static_cast<uint8_t>(random() % 4);
    }
    std::vector<Bytes> sorted = components;
    // Octet order, a prefix first.
    std::sort(sorted.begin(), sorted.end(), [](const Bytes& p, const Bytes& q) {
        size_t common = std::min(p.size(), q.size());
        for (size_t i = 0; i < common; ++i)
            if (p[i] != q[i]) return p[i] < q[i];
        return p.size() < q.size();
    });
    for (int32_t rules : {kDer, kCxer}) {
        w->encodingRules = rules;
        EXPECT_EQ(encodeWithin(components), concat(sorted)) << rules;
        EXPECT_EQ(counter.live, 0);
    }
}

TEST_F(SetOfOrder, NestedSetOfsSortEachLevel) {
    for (int32_t rules : {kDer, kCxer}) {
        w->encodingRules = rules;
        // Each outer component is a SET OF of its own, with a header.
        auto inner = [&](const std::vector<Bytes>& c) {
            kivNextSetOfComponent(w.get(), left());
            if (forward()) write({0x31});
            encodeSetOf(c);
            if (!forward()) write({0x31});
        };
        write(forward() ? Bytes{0xA0} : Bytes{0xEE});
        kivBeginSetOf(w.get(), 3, cursor(), left());
        inner({{0x05}, {0x03}, {0x04}});
        inner({{0x02}, {0x09}});
        inner({{0x07}, {0x01}});
        kivEndSetOf(w.get(), cursor(), left(), 0);
        write(forward() ? Bytes{0xEE} : Bytes{0xA0});
        EXPECT_EQ(join(), (Bytes{0xA0, 0x31, 0x01, 0x07, 0x31, 0x02, 0x09, 0x31, 0x03, 0x04, 0x05,
                                 0xEE}))
            << rules;
        EXPECT_EQ(counter.live, 0);
    }
}

// A single SET OF failing at each allocation is swept in tests/faults; here
// an allocation fails with two frames open, and the clean-up pops both.
TEST_F(SetOfOrder, AFailureInANestedSetOfUnwindsEveryFrame) {
    const Bytes big(1100, 0x44);  // built beforehand: a raise skips destructors
    for (int32_t rules : {kDer, kCxer}) {
        w->encodingRules = rules;
        counter = AllocCounter{};
        backLeft = 0;
        w->poolLeft = 0;
        Caught c = run([&] {
            for (int level = 0; level < 2; ++level) {
                kivBeginSetOf(w.get(), 2, cursor(), left());
                kivNextSetOfComponent(w.get(), left());
            }
            ASSERT_NE(w->setOfFrames, nullptr);
            counter.failAt = counter.calls + 1;
            write(big);
        });
        ASSERT_TRUE(c.raised) << rules;
        EXPECT_EQ(raised.index, 7);
        kivEndOperationMemory(w.get());
        EXPECT_EQ(w->setOfFrames, nullptr) << rules;
        EXPECT_EQ(counter.live, 0) << rules;
        EXPECT_EQ(w->blockTable.count, 0);
    }
}

TEST_F(SetOfOrder, TheFrameAndTheEntryArrayAreReportedWhenMissing) {
    w->encodingRules = kDer;
    for (uint32_t asked : {488u, 4u * 16}) {
        counter.failAt = counter.calls + (asked == 488 ? 1 : 2);
        EXPECT_TRUE(run([&] { kivBeginSetOf(w.get(), 4, &backCursor, &backLeft); }).raised);
        EXPECT_EQ(raised.number, asked);
    }
    EXPECT_EQ(w->setOfFrames, nullptr);
}

}  // namespace
}  // namespace fenk::test
