// Joining output chunks, finishing pool-mode output, and the pointer-table
// stack.
#include <cstring>

#include "memory_fixture.h"
#include "support/fake_coders.h"

namespace fenk::test {
namespace {

using OutputChunks = MemoryTest;

std::vector<uint8_t> pattern(size_t n, uint8_t seed) {
    std::vector<uint8_t> v(n);
    for (size_t i = 0; i < n; ++i) v[i] = static_cast<uint8_t>(seed + i * 7 + i / 251);
    return v;
}

TEST_F(OutputChunks, BackwardJoinOfThreeChunks) {
    std::vector<uint8_t> expected = pattern(2500, 3);
    uint8_t* cursor = nullptr;
    uint32_t left = 0;
    // Prepended in pieces of odd sizes, last piece first.
    size_t end = expected.size();
    while (end) {
        size_t piece = end < 333 ? end : 333;
        writeBackward(w.get(), &cursor, &left, expected.data() + end - piece,
                      static_cast<uint32_t>(piece));
        end -= piece;
    }
    ASSERT_EQ(w->blockTable.count, 3);
    EXPECT_EQ(left, 572u);
    EXPECT_EQ(w->outputBytes, 3072u);
    uint32_t length = 0;
    uint8_t* out = nullptr;
    kivJoinBackwardOutput(w.get(), static_cast<int32_t>(left), &length, &out);
    ASSERT_EQ(length, 2500u);
    EXPECT_EQ(std::vector<uint8_t>(out, out + length), expected);
    EXPECT_EQ(w->blockTable.count, 0);
    kivFreeBlock(w.get(), out);
}

TEST_F(OutputChunks, ForwardJoinClearsThePendingBitsOfTheLastOctet) {
    std::vector<uint8_t> expected = pattern(1500, 9);
    expected.back() = 0xFF;
    writeForward(w.get(), expected.data(), 1500);
    // The last octet is still being filled: 3 bits used.
    w->poolCursor -= 1;
    w->poolLeft += 1;
    w->pendingBits = 3;
    uint32_t length = 0;
    uint8_t* out = nullptr;
    kivJoinForwardOutput(w.get(), &length, &out);
    ASSERT_EQ(length, 1500u);
    expected.back() = 0xE0;
    EXPECT_EQ(std::vector<uint8_t>(out, out + length), expected);
    kivFreeBlock(w.get(), out);
}

TEST_F(OutputChunks, EmptyOutputIsOneZeroOctetForwardAndNothingBackward) {
    uint32_t length = 0;
    uint8_t* out = nullptr;
    kivFinishOutput(w.get(), &length, &out, 0);
    ASSERT_EQ(length, 1u);
    EXPECT_EQ(out[0], 0);
    kivFreeBlock(w.get(), out);

    // A chunk taken but nothing written: the same.
    kivNewOutputChunk(w.get());
    w->poolLeft = 1024;
    kivJoinForwardOutput(w.get(), &length, &out);
    ASSERT_EQ(length, 1u);
    EXPECT_EQ(out[0], 0);
    kivFreeBlock(w.get(), out);
    EXPECT_EQ(counter.live, 0);

    // Backward, an empty chunk joins to nothing and allocates nothing.
    kivNewOutputChunk(w.get());
    length = 99;
    uint8_t sentinel = 0;
    out = &sentinel;
    kivJoinBackwardOutput(w.get(), 1024, &length, &out);
    EXPECT_EQ(length, 0u);
    EXPECT_EQ(out, &sentinel);
}

TEST_F(OutputChunks, CountOnlyModeReportsTheCountWithoutABuffer) {
    w->encodingFlags = KIV_ENCODE_COUNT_ONLY;
    uint32_t length = 0;
    uint8_t* out = nullptr;
    kivJoinForwardOutput(w.get(), &length, &out);
    EXPECT_EQ(length, 1u);  // nothing counted still makes one octet
    w->encodedOctetCount = 41;
    w->pendingBits = 2;
    kivJoinForwardOutput(w.get(), &length, &out);
    EXPECT_EQ(length, 42u);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(counter.calls, 0);
}

TEST_F(OutputChunks, PoolModeFinishWithAndWithoutTheMove) {
    uint8_t buffer[64];
    // Nothing written gives one zero octet at the cursor; a full buffer is
    // never moved.
    const struct { bool direct; uint32_t written, flags, at, length; } cases[] = {
        {false, 10, 0, 0, 10},
        {false, 10, KIV_ENCODE_AT_BUFFER_END, 54, 10},
        {true, 0, KIV_ENCODE_AT_BUFFER_END, 63, 1},
        {true, 64, KIV_ENCODE_AT_BUFFER_END, 0, 64},
    };
    for (const auto& c : cases) {
        std::memset(buffer, 0xEE, sizeof buffer);
        for (uint32_t i = 0; i < c.written; ++i) buffer[i] = static_cast<uint8_t>(i + 1);
        w->poolMode = 1;
        w->poolCursor = buffer + c.written;
        w->poolLeft = 64 - c.written;
        uint32_t length = 64;
        uint8_t* out = buffer;
        (c.direct ? kivFinishBufferOutput : kivFinishOutput)(w.get(), &length, &out, c.flags);
        EXPECT_EQ(length, c.length) << c.written;
        ASSERT_EQ(out, buffer + c.at) << c.written;
        for (uint32_t i = 0; i < c.length; ++i) EXPECT_EQ(out[i], c.written ? i + 1 : 0) << c.written;
    }
    EXPECT_EQ(counter.calls, 0);
}

TEST_F(OutputChunks, ForwardJoinFailureRaisesWithTheLength) {
    std::vector<uint8_t> data = pattern(1030, 1);
    writeForward(w.get(), data.data(), 1030);
    counter.failAt = counter.calls + 1;
    uint32_t length = 0;
    uint8_t* out = nullptr;
    Caught c = run([&] { kivJoinForwardOutput(w.get(), &length, &out); });
    EXPECT_TRUE(c.raised);
    EXPECT_EQ(raised.index, 7);
    EXPECT_EQ(raised.number, 1030u);
    kivEndOperationMemory(w.get());
}

TEST_F(OutputChunks, PointerTableStack) {
    KivPrivate* p = w.priv();
    uint32_t count = 0;
    EXPECT_EQ(kivCurrentPointerTable(w.get(), &count), p->pointerTables.entries);
    kivSetPointerTableCount(w.get(), 0xFFFF);
    kivCurrentPointerTable(w.get(), &count);
    EXPECT_EQ(count, 0xFFFFFFFFu);  // the 16-bit count, sign-extended
    kivSetPointerTableCount(w.get(), 3);

    void** upper = kivPushPointerTable(w.get());
    EXPECT_NE(upper, p->pointerTables.entries);
    kivSetPointerTableCount(w.get(), 7);
    EXPECT_EQ(kivCurrentPointerTable(w.get(), &count), upper);
    EXPECT_EQ(count, 7u);
    void** top = kivPushPointerTable(w.get());
    EXPECT_EQ(counter.live, 2);
    EXPECT_EQ(kivPopPointerTable(w.get()), upper);
    EXPECT_EQ(counter.freeOrder.back(), static_cast<void*>(reinterpret_cast<uint8_t*>(top) - 8));
    EXPECT_EQ(kivPopPointerTable(w.get()), p->pointerTables.entries);
    kivCurrentPointerTable(w.get(), &count);
    EXPECT_EQ(count, 3u);
    EXPECT_EQ(counter.live, 0);

    counter.failAt = counter.calls + 1;
    Caught c = run([&] { kivPushPointerTable(w.get()); });
    EXPECT_TRUE(c.raised);
    EXPECT_EQ(raised.number, 432u);
    EXPECT_EQ(p->currentPointerTable, &p->pointerTables);
}

TEST_F(OutputChunks, ChildWorldsHandBackTheirTemporaryStateAndBlocks) {
    // Two nested children, each with recorded blocks and a deferred block.
    KivGlobal outer{}, inner{};
    for (KivGlobal* child : {&outer, &inner}) {
        child->privateState = w.priv();  // no temporary buffer
        installCountingHooks(child, &counter);
        child->apiTable = w->apiTable;
        child->currentBlockTable = &child->blockTable;
        child->deferredBlock = w->allocHook(w.get(), 8);
        kivAllocExact(child, 8);
    }
    w->childWorld = &outer;
    outer.parentWorld = w.get();
    outer.childWorld = &inner;
    inner.parentWorld = &outer;
    inner.poolMode = 1;  // a pool-mode child keeps its blocks
    inner.tempChunks = reinterpret_cast<void*>(0x10);
    inner.userBufferStart = reinterpret_cast<uint8_t*>(0x20);
    inner.userBufferEnd = reinterpret_cast<uint8_t*>(0x30);
    inner.extraChunks = reinterpret_cast<void*>(0x40);
    kivReleaseChildWorlds(w.get(), 0);
    EXPECT_EQ(w->tempChunks, reinterpret_cast<void*>(0x10));
    EXPECT_EQ(w->userBufferStart, reinterpret_cast<uint8_t*>(0x20));
    EXPECT_EQ(w->userBufferEnd, reinterpret_cast<uint8_t*>(0x30));
    EXPECT_EQ(w->extraChunks, reinterpret_cast<void*>(0x40));
    EXPECT_EQ(counter.live, 1);  // the inner child's recorded block
    EXPECT_EQ(inner.blockTable.count, 1);
    kivFreeTrackedBlocks(&inner, inner.freeHook);
}

}  // namespace
}  // namespace fenk::test
