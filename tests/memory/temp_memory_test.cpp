// Scratch and temporary memory, from a temporary buffer and from the heap.
#include <cstring>

#include "memory_fixture.h"

namespace fenk::test {
namespace {

using TempBuffer = MemoryTest;
using TempHeap = MemoryTest;

TEST_F(TempBuffer, BothEndsMeetInTheMiddleAndAReleaseMakesRoomAgain) {
    useTempBuffer(256);
    uint8_t* low = w->userBufferStart;
    uint8_t* high = w->userBufferEnd;
    auto* t1 = static_cast<uint8_t*>(kivTempAlloc(w.get(), 10));
    auto* t2 = static_cast<uint8_t*>(kivTempAlloc(w.get(), 60));
    EXPECT_EQ(t1, low);
    EXPECT_EQ(t2, low + 16);
    auto* s1 = static_cast<uint8_t*>(kivScratchAlloc(w.get(), 20));
    EXPECT_EQ(s1, high - 24);  // 24 octets and the size word below them
    uint64_t word;
    std::memcpy(&word, s1 - 8, 8);
    EXPECT_EQ(word, 24u);
    EXPECT_EQ(counter.calls, 0);  // no heap at all

    // 256 - 80 - 32 = 144 octets left between the marks.
    Caught c = run([&] { kivTempAlloc(w.get(), 145); });
    EXPECT_TRUE(c.raised);
    EXPECT_EQ(raised.index, 146);
    EXPECT_EQ(raised.number, 152u);
    c = run([&] { kivScratchAlloc(w.get(), 137); });
    EXPECT_EQ(raised.index, 146);
    EXPECT_EQ(raised.number, 144u + 8u);
    EXPECT_EQ(kivScratchAlloc(w.get(), 136), low + 80 + 8);  // exactly fits
    kivScratchFree(w.get(), nullptr);

    kivTempRelease(w.get(), t2);
    EXPECT_EQ(w->userBufferStart, t2);
    EXPECT_EQ(kivTempAlloc(w.get(), 200), t2);  // room again
    kivTempRelease(w.get(), t1);
    kivScratchFree(w.get(), s1);
    EXPECT_EQ(w->userBufferStart, low);
    EXPECT_EQ(w->userBufferEnd, high);
}

TEST_F(TempBuffer, OutputChunksComeFromTheScratchStackAndArePoppedBack) {
    useTempBuffer(4096);
    uint8_t* high = w->userBufferEnd;
    for (int i = 0; i < 3; ++i) kivNewOutputChunk(w.get());
    EXPECT_EQ(w->userBufferEnd, high - 3 * 1032);
    uint32_t length = 0;
    uint8_t* out = nullptr;
    kivJoinBackwardOutput(w.get(), 1000, &length, &out);
    EXPECT_EQ(length, 2048u + 24u);
    EXPECT_EQ(w->userBufferEnd, high);
    kivFreeBlock(w.get(), out);
    EXPECT_EQ(counter.live, 0);

    Caught c = run([&] {
        for (int i = 0; i < 4; ++i) kivNewOutputChunk(w.get());
    });
    EXPECT_TRUE(c.raised);
    EXPECT_EQ(raised.index, 146);
    EXPECT_EQ(raised.number, 1032u);
}

TEST_F(TempBuffer, GrowingStaysInPlaceOrRaises) {
    useTempBuffer(64);
    void* block = kivTempAlloc(w.get(), 8);
    EXPECT_EQ(kivTempGrow(w.get(), block, 8, 40), block);
    EXPECT_EQ(w->userBufferStart, static_cast<uint8_t*>(block) + 40);
    Caught c = run([&] { kivTempGrow(w.get(), block, 8, 65); });
    EXPECT_TRUE(c.raised);
    EXPECT_EQ(raised.number, 72u);
}

TEST_F(TempHeap, EveryBlockIsAChunkWithAHeaderKeepingTheMarks) {
    auto* a = static_cast<uint8_t*>(kivTempAlloc(w.get(), 5));
    void* chunkA = w->tempChunks;
    EXPECT_EQ(a, static_cast<uint8_t*>(chunkA) + 24);
    EXPECT_EQ(w->userBufferStart, a + 8);
    EXPECT_EQ(w->userBufferEnd, a + 8);
    auto* b = static_cast<uint8_t*>(kivTempAlloc(w.get(), 16));
    auto** header = reinterpret_cast<void**>(b - 24);
    EXPECT_EQ(header[0], chunkA);
    EXPECT_EQ(header[1], a + 8);
    EXPECT_EQ(header[2], a + 8);
    EXPECT_EQ(counter.live, 2);

    counter.failAt = counter.calls + 1;
    Caught c = run([&] { kivTempAlloc(w.get(), 100); });
    EXPECT_EQ(raised.index, 7);
    EXPECT_EQ(raised.number, 104u + 24u);
    EXPECT_TRUE(c.raised);
    // A scratch block on the heap is the caller's own; a failure reports the
    // size asked for.
    long before = counter.live;
    void* scratch = kivScratchAlloc(w.get(), 51);
    EXPECT_EQ(counter.live, before + 1);
    EXPECT_EQ(w->tempChunks, static_cast<void*>(b - 24)) << "no temporary chunk";
    kivScratchFree(w.get(), scratch);
    EXPECT_EQ(counter.live, before);
    counter.failAt = counter.calls + 1;
    EXPECT_TRUE(run([&] { kivScratchAlloc(w.get(), 51); }).raised);
    EXPECT_EQ(raised.index, 7);
    EXPECT_EQ(raised.number, 51u) << "not rounded";

    kivTempRelease(w.get(), a);
    EXPECT_EQ(counter.live, 0);
    EXPECT_EQ(w->tempChunks, nullptr);
    EXPECT_EQ(w->userBufferStart, nullptr);
    EXPECT_EQ(w->userBufferEnd, nullptr);
}

TEST_F(TempHeap, ReleaseToTheNewestChunkOrAnOlderOne) {
    uint8_t* a = static_cast<uint8_t*>(kivTempAlloc(w.get(), 64));
    // Shrink the newest block in place, so a mark inside it is not its start.
    kivTempGrow(w.get(), a, 0, 16);
    EXPECT_EQ(w->userBufferStart, a + 16);
    // A mark inside the newest chunk's block only moves the cursor back.
    kivTempRelease(w.get(), a + 8);
    EXPECT_EQ(w->userBufferStart, a + 8);
    EXPECT_EQ(w->tempChunks, static_cast<void*>(a - 24));
    EXPECT_EQ(counter.live, 1);
    void* b = kivTempAlloc(w.get(), 8);
    void* c = kivTempAlloc(w.get(), 8);
    // The newest chunk's own block: freed, marks back from its header.
    kivTempRelease(w.get(), c);
    EXPECT_EQ(counter.live, 2);
    EXPECT_EQ(w->userBufferStart, static_cast<uint8_t*>(b) + 8);
    // A mark inside an older chunk: the newer ones go, the older one stays
    // newest with the cursor at the mark.
    kivTempRelease(w.get(), a + 8);
    EXPECT_EQ(counter.live, 1);
    EXPECT_EQ(w->tempChunks, static_cast<void*>(a - 24));
    EXPECT_EQ(w->userBufferStart, a + 8);
    EXPECT_EQ(w->userBufferEnd, a + 64);  // the saved high mark
    // Releasing further, to a block that starts an older chunk, frees it too.
    void* d = kivTempAlloc(w.get(), 8);
    (void)d;
    kivTempRelease(w.get(), a);
    EXPECT_EQ(counter.live, 0);
    EXPECT_EQ(w->tempChunks, nullptr);
}

TEST_F(TempHeap, GrowingMovesToANewChunkKeepingTheOctetsAndTheHeader) {
    void* older = kivTempAlloc(w.get(), 8);
    auto* block = static_cast<uint8_t*>(kivTempAlloc(w.get(), 8));
    std::memcpy(block, "abcdefgh", 8);
    auto* moved = static_cast<uint8_t*>(kivTempGrow(w.get(), block, 5, 100));
    EXPECT_NE(moved, block);
    EXPECT_EQ(std::memcmp(moved, "abcde", 5), 0);
    EXPECT_EQ(reinterpret_cast<void**>(moved - 24)[0], static_cast<uint8_t*>(older) - 24);
    EXPECT_EQ(w->userBufferEnd, moved + 104);
    EXPECT_EQ(counter.live, 2);
    kivTempRelease(w.get(), moved);
    EXPECT_EQ(w->tempChunks, static_cast<uint8_t*>(older) - 24);
    kivFreeTempChains(w.get());
}

TEST_F(TempHeap, TempChainsFreeBothChains) {
    kivTempAlloc(w.get(), 8);
    kivTempAlloc(w.get(), 8);
    void** extra = static_cast<void**>(w->allocHook(w.get(), 16));
    extra[0] = w->allocHook(w.get(), 16);
    *static_cast<void**>(extra[0]) = nullptr;
    w->extraChunks = extra;
    kivFreeTempChains(w.get());
    EXPECT_EQ(counter.live, 0);
    EXPECT_EQ(w->tempChunks, nullptr);
    EXPECT_EQ(w->extraChunks, nullptr);
}

}  // namespace
}  // namespace fenk::test
