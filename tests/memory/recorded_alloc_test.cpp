// Recorded allocation, block-table disposal and the end-of-operation clean-up.
#include <cstring>

#include "memory_fixture.h"

namespace fenk::test {
namespace {

using RecordedAlloc = MemoryTest;

TEST_F(RecordedAlloc, SizesRoundingZeroingAndTheByteCount) {
    auto* exact = static_cast<uint8_t*>(kivAllocExact(w.get(), 13));
    auto* rounded = static_cast<uint8_t*>(kivAllocRounded(w.get(), 13));
    std::memset(rounded, 0xAB, 16);  // asan: the rounded size is really there
    counter.failAt = 0;
    auto* zeroed = static_cast<uint8_t*>(kivAllocZeroed(w.get(), 9));
    for (int i = 0; i < 9; ++i) EXPECT_EQ(zeroed[i], 0);
    EXPECT_EQ(kivAllocExact(w.get(), 0), nullptr);
    EXPECT_EQ(w->outputBytes, 13u + 16u + 16u);
    EXPECT_EQ(w->blockTable.count, 3);
    EXPECT_EQ(w->blockTable.entries[0], exact);
    EXPECT_EQ(w->blockTable.entries[2], zeroed);
    kivFreeTrackedBlocks(w.get(), w->freeHook);
    EXPECT_EQ(counter.live, 0);
    EXPECT_EQ(w->outputBytes, 0u);
}

TEST_F(RecordedAlloc, PoolModeCarvesTheCallerBufferWithoutAlignment) {
    uint8_t pool[20];
    w->poolMode = 1;
    w->poolCursor = pool;
    w->poolLeft = sizeof pool;
    w->decodeBufferLength = 20;
    EXPECT_EQ(kivAllocExact(w.get(), 3), pool);
    EXPECT_EQ(kivAllocRounded(w.get(), 3), pool + 3);  // rounded to 8, cursor not aligned
    EXPECT_EQ(w->poolLeft, 9u);
    EXPECT_EQ(counter.calls, 0);
    Caught c = run([&] { kivAllocRounded(w.get(), 10); });
    EXPECT_TRUE(c.raised);
    EXPECT_EQ(raised.index, 1);
    EXPECT_EQ(raised.number, 20u);  // the caller buffer's total size
    c = run([&] { kivNewOutputChunk(w.get()); });
    EXPECT_EQ(raised.index, 1);
    EXPECT_EQ(raised.number, 9u);  // what is left of it
    EXPECT_EQ(w->blockTable.count, 0);
}

TEST_F(RecordedAlloc, The53rdBlockOpensATableAndFreeingIsTheExactReverse) {
    std::vector<void*> allocated;  // blocks and the tables they opened, in order
    for (int i = 0; i < 52 * 4 + 7; ++i) {
        KivBlockTable* before = w->currentBlockTable;
        void* block = kivAllocExact(w.get(), 8 + i % 50);
        if (w->currentBlockTable != before) allocated.push_back(w->currentBlockTable);
        allocated.push_back(block);
        if (i != 52) continue;
        ASSERT_EQ(w->blockTable.count, 52);
        ASSERT_EQ(w->blockTable.next, w->currentBlockTable);
        EXPECT_EQ(w->currentBlockTable->count, 1);
        EXPECT_EQ(w->currentBlockTable->entries[0], block);
        EXPECT_EQ(counter.live, 54);
    }
    ASSERT_EQ(allocated.size(), 52u * 4 + 7 + 4);
    kivFreeTrackedBlocks(w.get(), w->freeHook);
    EXPECT_EQ(counter.freeOrder, std::vector<void*>(allocated.rbegin(), allocated.rend()));
    EXPECT_EQ(counter.live, 0);
    EXPECT_EQ(w->blockTable.count, 0);
    EXPECT_EQ(w->blockTable.next, nullptr);
    EXPECT_EQ(w->currentBlockTable, &w->blockTable);
}

TEST_F(RecordedAlloc, DroppingTheTableKeepsTheBlocksForTheCaller) {
    void* blocks[60];
    for (auto& b : blocks) b = kivAllocExact(w.get(), 24);
    kivDropBlockTable(w.get());
    EXPECT_EQ(counter.frees, 1);  // only the chained table
    EXPECT_EQ(w->blockTable.count, 0);
    EXPECT_EQ(w->blockTable.next, nullptr);
    EXPECT_EQ(w->outputBytes, 0u);
    for (void* b : blocks) kivFreeBlock(w.get(), b);
}

TEST_F(RecordedAlloc, FailedAllocationsRaiseWithTheOctetsAskedFor) {
    counter.failAt = 1;
    Caught c = run([&] { kivAllocRounded(w.get(), 21); });
    EXPECT_TRUE(c.raised);
    EXPECT_EQ(raised.index, 7);
    EXPECT_EQ(raised.number, 24u);
    EXPECT_EQ(w->blockTable.count, 1);  // the null block is recorded too

    for (int i = 0; i < 51; ++i) kivAllocExact(w.get(), 8);
    counter.failAt = counter.calls + 1;
    c = run([&] { kivAllocExact(w.get(), 8); });
    EXPECT_EQ(raised.index, 7);
    EXPECT_EQ(raised.number, 432u);  // the new table
    counter.failAt = counter.calls + 2;  // the table is obtained, the chunk is not
    c = run([&] { kivNewOutputChunk(w.get()); });
    EXPECT_EQ(raised.number, 1024u);
    EXPECT_EQ(w->currentBlockTable->count, 1);
    kivEndOperationMemory(w.get());
}

// Without a raise routine installed by an operation entry, the table's own
// raise composes the message and jumps with its code.
TEST(MemoryRaise, TheThreeMessagesWithTheirCodesAndNumbers) {
    TestWorld w;
    AllocCounter counter;
    installCountingHooks(w.get(), &counter);
    w->messageOut = w->messageText;
    w->errorMode = 3;
    counter.failAt = 1;
    Caught c = catchRaise(w.get(), [&] { kivNewOutputChunk(w.get()); });
    EXPECT_EQ(c.value, 8);
    EXPECT_STREQ(w->messageText, "D0008S: Out of memory; bytes requested: 1024.\n");

    w->poolMode = 1;
    w->decodeBufferLength = 300;
    c = catchRaise(w.get(), [&] { kivAllocExact(w.get(), 1); });
    EXPECT_EQ(c.value, 1);
    EXPECT_STREQ(w->messageText, "D0001S: Output buffer too small; total buffer size: 300.\n");

    uint8_t area[64];
    KivWorkBuffer descriptor{64, area};
    kivStoreWorkBuffer(w.get(), &descriptor);
    w->userBufferStart = w->userBufferEnd = w.priv()->userBufferAddress;
    c = catchRaise(w.get(), [&] { kivTempAlloc(w.get(), 3); });
    EXPECT_EQ(c.value, 8);
    EXPECT_STREQ(w->messageText,
                 "D0132S: Buffer provided for temporary memory is too small; Bytes requested: 8.\n");
    kivEndOperationMemory(w.get());
    EXPECT_EQ(counter.live, 0);
}

TEST(FreeBlock, UsesTheWorldsFreeHookOrTheCLibrary) {
    TestWorld w;
    AllocCounter counter;
    installCountingHooks(w.get(), &counter);
    void* block = w->allocHook(w.get(), 10);
    kivFreeBlock(w.get(), block);
    EXPECT_EQ(counter.frees, 1);
    kivFreeBlock(nullptr, std::malloc(10));  // asan would report a leak or a mismatch
    w->freeHook = nullptr;
    kivFreeBlock(w.get(), std::malloc(10));
}

TEST_F(RecordedAlloc, EndOfOperationOrder) {
    // The deferred block goes through the release routine of slot 55; the
    // temporary chains and recorded blocks through the free hook.
    w->deferredBlock = w->allocHook(w.get(), 40);
    void* temp = kivTempAlloc(w.get(), 16);
    void* block = kivAllocExact(w.get(), 16);
    kivEndOperationMemory(w.get());
    ASSERT_EQ(counter.freeOrder.size(), 3u);
    EXPECT_EQ(w->deferredBlock, nullptr);
    EXPECT_EQ(counter.freeOrder[1], static_cast<uint8_t*>(temp) - 24);
    EXPECT_EQ(counter.freeOrder[2], block);
    EXPECT_EQ(w->tempChunks, nullptr);
}

TEST_F(RecordedAlloc, PoolModeEndDropsTheTableAndATempBufferKeepsTheBlocks) {
    void* block = kivAllocExact(w.get(), 16);
    w->poolMode = 1;
    kivEndOperationMemory(w.get());
    EXPECT_EQ(counter.live, 1);  // dropped, not freed
    EXPECT_EQ(w->blockTable.count, 0);
    kivFreeBlock(w.get(), block);

    w->poolMode = 0;
    useTempBuffer(256);
    block = kivAllocExact(w.get(), 16);
    kivTempAlloc(w.get(), 32);
    kivEndOperationMemory(w.get());
    EXPECT_EQ(counter.live, 1);
    EXPECT_EQ(w->blockTable.count, 1);
    kivFreeTrackedBlocks(w.get(), w->freeHook);
}

}  // namespace
}  // namespace fenk::test
