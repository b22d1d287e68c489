// Memory handles: blocks, fragments, the hint, merging, and the hooks.
#include <cstdlib>
#include <cstring>
#include <map>
#include <random>

#include "support/test_world.h"

#include <gtest/gtest.h>

namespace fenk::test {
namespace {

// The plain routines of the world, recording what the handle obtains.
std::vector<size_t> obtained;
long outstanding = 0;
bool failNext = false;

void* recordingAlloc(size_t size) {
    if (failNext) {
        failNext = false;
        return nullptr;
    }
    obtained.push_back(size);
    ++outstanding;
    return std::malloc(size);
}

void recordingFree(void* block) {
    if (block) --outstanding;
    std::free(block);
}

KivFragment* headerOf(void* payload) { return static_cast<KivFragment*>(payload) - 1; }

KivFragment* after(KivFragment* f) {
    return reinterpret_cast<KivFragment*>(reinterpret_cast<uint8_t*>(f + 1) + f->size);
}

class MemoryHandle : public ::testing::Test {
protected:
    void SetUp() override {
        obtained.clear();
        outstanding = 0;
        w->allocRoutine = &recordingAlloc;
        w->freeRoutine = &recordingFree;
    }
    void TearDown() override {
        if (h) {
            EXPECT_EQ(kivDestroyMemoryHandle(w.get(), h), 0);
        }
        EXPECT_EQ(outstanding, 0);
    }
    void* alloc(size_t n) { return w->allocHook(w.get(), n); }
    void release(void* p) { w->freeHook(w.get(), p); }

    TestWorld w;
    KivMemoryHandle* h = nullptr;
};

TEST_F(MemoryHandle, BlocksAreSizedByTheHandleOrTheRequest) {
    h = kivCreateMemoryHandle(w.get(), 4096);
    ASSERT_NE(h, nullptr);
    EXPECT_EQ(obtained, std::vector<size_t>{40});
    EXPECT_EQ(h->totalBytes, 40u);
    EXPECT_EQ(h->newestBlock, nullptr);  // no block until the first request

    void* small = alloc(10);
    ASSERT_EQ(obtained.size(), 2u);
    EXPECT_EQ(obtained[1], 4096u + 64 + 32);
    KivHandleBlock* first = h->newestBlock;
    EXPECT_EQ(first->size, 4160u);
    EXPECT_EQ(headerOf(small)->size, 16u);
    EXPECT_EQ(headerOf(small)->tag, KIV_FRAGMENT_USED);
    EXPECT_EQ(first->freeBytes, 4160u - 32 - 48);

    void* big = alloc(10000);
    EXPECT_EQ(obtained.back(), 10000u + 64 + 32);
    EXPECT_EQ(h->blockCount, 2u);
    EXPECT_EQ(h->totalBytes, 40u + 4192 + 10096);
    EXPECT_EQ(h->newestBlock->link, first);
    EXPECT_EQ(headerOf(big)->block, h->newestBlock);
}

TEST_F(MemoryHandle, SplittingLeavesAFreeRemainderAsTheHint) {
    h = kivCreateMemoryHandle(w.get(), 1000);
    void* a = alloc(24);
    KivFragment* fa = headerOf(a);
    KivFragment* rest = after(fa);
    EXPECT_EQ(fa->previous, nullptr);
    EXPECT_EQ(rest->tag, KIV_FRAGMENT_LAST);
    EXPECT_EQ(rest->previous, fa);
    EXPECT_EQ(rest->size, 1064u - 32 - 56);
    EXPECT_EQ(h->hint, rest);
    // Fill the block: the remainder becomes an empty last fragment.
    void* b = alloc(16);
    void* c = alloc(8);
    void* fill = alloc(h->hint->size - 32);
    EXPECT_EQ(after(headerOf(fill))->size, 0u);
    release(b);
    EXPECT_EQ(headerOf(b)->tag, KIV_FRAGMENT_FREE);
    EXPECT_EQ(h->hint, headerOf(b));
    // A free fragment of exactly the size asked for is passed over: it could
    // not hold the remainder's header. A new block is opened instead.
    void* d = alloc(16);
    EXPECT_EQ(h->blockCount, 2u);
    EXPECT_EQ(headerOf(d)->block, h->newestBlock);
    EXPECT_EQ(headerOf(b)->tag, KIV_FRAGMENT_FREE);
    (void)c;
}

TEST_F(MemoryHandle, NeighboursMergeInEitherOrder) {
    for (bool forwardOrder : {true, false}) {
        h = kivCreateMemoryHandle(w.get(), 1000);
        void* a = alloc(40);
        void* b = alloc(24);
        void* c = alloc(8);  // keeps the last fragment away
        alloc(h->hint->size - 32);  // fills the block, so the hint is the merged fragment
        KivHandleBlock* block = h->newestBlock;
        uint64_t before = block->freeBytes;
        release(forwardOrder ? a : b);
        release(forwardOrder ? b : a);
        KivFragment* merged = headerOf(a);
        EXPECT_EQ(merged->tag, KIV_FRAGMENT_FREE);
        EXPECT_EQ(merged->size, 40u + 32 + 24);
        EXPECT_EQ(headerOf(c)->previous, merged);
        EXPECT_EQ(block->freeBytes, before + 40 + 24 + 32);
        // Freeing it again does nothing.
        release(b);
        release(a);
        EXPECT_EQ(block->freeBytes, before + 96);
        EXPECT_EQ(h->hint, merged);
        EXPECT_EQ(alloc(64), a);
        EXPECT_EQ(kivDestroyMemoryHandle(w.get(), h), 0);
        h = nullptr;
    }
}

TEST_F(MemoryHandle, FreeingBeforeTheLastFragmentMakesItTheLast) {
    h = kivCreateMemoryHandle(w.get(), 1000);
    void* a = alloc(16);
    void* b = alloc(16);
    KivFragment* last = after(headerOf(b));
    uint64_t lastSize = last->size;
    release(b);
    EXPECT_EQ(headerOf(b)->tag, KIV_FRAGMENT_LAST);
    EXPECT_EQ(headerOf(b)->size, 16 + 32 + lastSize);
    EXPECT_EQ(h->hint, headerOf(b));
    release(a);  // merges all into one last fragment
    EXPECT_EQ(headerOf(a)->tag, KIV_FRAGMENT_LAST);
    EXPECT_EQ(headerOf(a)->size, 1064u - 32);
    EXPECT_EQ(h->newestBlock->freeBytes, 1064u - 32);
}

TEST_F(MemoryHandle, ReallocCopiesWhatFits) {
    h = kivCreateMemoryHandle(w.get(), 1000);
    auto* p = static_cast<uint8_t*>(alloc(16));
    for (int i = 0; i < 16; ++i) p[i] = static_cast<uint8_t>(i);
    auto* q = static_cast<uint8_t*>(w->reallocHook(w.get(), p, 100));
    for (int i = 0; i < 16; ++i) EXPECT_EQ(q[i], i);
    EXPECT_NE(headerOf(p)->tag, KIV_FRAGMENT_USED);
    auto* r = static_cast<uint8_t*>(w->reallocHook(w.get(), q, 5));
    EXPECT_EQ(headerOf(r)->size, 8u);
    for (int i = 0; i < 8; ++i) EXPECT_EQ(r[i], i);
    failNext = true;
    EXPECT_EQ(w->reallocHook(w.get(), r, 5000), nullptr);
    EXPECT_EQ(headerOf(r)->tag, KIV_FRAGMENT_USED);  // the old one stays
}

TEST_F(MemoryHandle, HooksAreSavedAndRestored) {
    KivAllocHook alloc0 = w->allocHook;
    KivFreeHook free0 = w->freeHook;
    KivReallocHook realloc0 = w->reallocHook;
    EXPECT_EQ(kivUseMemoryHandle(w.get(), nullptr), 0);  // none in use: nothing changes
    EXPECT_EQ(w->allocHook, alloc0);
    EXPECT_EQ(kivUseMemoryHandle(nullptr, nullptr), 6);
    EXPECT_EQ(kivCreateMemoryHandle(nullptr, 100), nullptr);
    EXPECT_EQ(kivDestroyMemoryHandle(w.get(), nullptr), 6);

    KivMemoryHandle* one = kivCreateMemoryHandle(w.get(), 100);
    EXPECT_NE(w->allocHook, alloc0);
    EXPECT_EQ(w.priv()->memoryHandle, one);
    KivAllocHook handleAlloc = w->allocHook;
    // Replacing one handle by another keeps the hooks saved at first.
    KivMemoryHandle* two = kivCreateMemoryHandle(w.get(), 100);
    EXPECT_EQ(w.priv()->memoryHandle, two);
    EXPECT_EQ(w->allocHook, handleAlloc);
    EXPECT_EQ(w.priv()->savedAllocHook, alloc0);
    // Destroying one that is not in use leaves the hooks alone.
    EXPECT_EQ(kivDestroyMemoryHandle(w.get(), one), 0);
    EXPECT_EQ(w->allocHook, handleAlloc);
    EXPECT_EQ(kivDestroyMemoryHandle(w.get(), two), 0);
    EXPECT_EQ(w->allocHook, alloc0);
    EXPECT_EQ(w->freeHook, free0);
    EXPECT_EQ(w->reallocHook, realloc0);
    EXPECT_EQ(w.priv()->memoryHandle, nullptr);

    failNext = true;
    EXPECT_EQ(kivCreateMemoryHandle(w.get(), 100), nullptr);
    EXPECT_EQ(w->allocHook, alloc0);
}

// Walks every block and checks the fragment chain against the live
// allocations of the model: payload sizes, links, tags, free-byte counts,
// merged neighbours, and the contents written at allocation.
void checkAgainstModel(KivMemoryHandle* h, const std::map<uint8_t*, std::pair<size_t, uint8_t>>& live) {
    size_t usedSeen = 0;
    uint64_t total = 40;
    uint32_t blocks = 0;
    for (KivHandleBlock* b = h->newestBlock; b; b = b->link) {
        ++blocks;
        total += b->size + 32;
        auto* f = reinterpret_cast<KivFragment*>(b + 1);
        KivFragment* previous = nullptr;
        uint64_t freeSum = 0;
        bool previousFree = false;
        for (;;) {
            ASSERT_EQ(f->block, b);
            ASSERT_EQ(f->previous, previous);
            bool isFree = f->tag != KIV_FRAGMENT_USED;
            ASSERT_FALSE(isFree && previousFree) << "unmerged neighbours";
            if (isFree) {
                freeSum += f->size;
            } else {
                ASSERT_EQ(f->tag, KIV_FRAGMENT_USED);
                auto it = live.find(reinterpret_cast<uint8_t*>(f + 1));
                ASSERT_NE(it, live.end());
                ASSERT_EQ(f->size, (it->second.first + 7) & ~size_t{7});
                for (size_t i = 0; i < it->second.first; ++i)
                    ASSERT_EQ(it->first[i], it->second.second);
                ++usedSeen;
            }
            if (f->tag == KIV_FRAGMENT_LAST) break;
            ASSERT_EQ(f->tag == KIV_FRAGMENT_FREE || f->tag == KIV_FRAGMENT_USED, true);
            previousFree = isFree;
            previous = f;
            f = after(f);
        }
        ASSERT_EQ(reinterpret_cast<uint8_t*>(after(f)), reinterpret_cast<uint8_t*>(b + 1) + b->size);
        ASSERT_EQ(b->freeBytes, freeSum);
    }
    EXPECT_EQ(usedSeen, live.size());
    EXPECT_EQ(h->totalBytes, total);
    EXPECT_EQ(h->blockCount, blocks);
}

TEST_F(MemoryHandle, RandomRunAgreesWithTheModel) {
    h = kivCreateMemoryHandle(w.get(), 2048);
    std::mt19937 random(11);
    std::map<uint8_t*, std::pair<size_t, uint8_t>> live;
    std::vector<uint8_t*> order;
    for (int step = 0; step < 4000; ++step) {
        unsigned op = random() % 10;
        if (op < 5 || live.empty()) {
            size_t n = random() % 4 == 0 ? random() % 3000 : random() % 200;
            auto* p = static_cast<uint8_t*>(alloc(n));
            ASSERT_NE(p, nullptr);
            auto fill = static_cast<uint8_t>(step);
            std::memset(p, fill, n);
            live[p] = {n, fill};
            order.push_back(p);
        } else {
            size_t k = random() % order.size();
            uint8_t* p = order[k];
            order[k] = order.back();
            order.pop_back();
            auto entry = live[p];
            live.erase(p);
            if (op < 8) {
                release(p);
            } else {
                size_t n = random() % 400;
                auto* q = static_cast<uint8_t*>(w->reallocHook(w.get(), p, n));
                ASSERT_NE(q, nullptr);
                size_t kept = n < entry.first ? n : entry.first;
                for (size_t i = 0; i < kept; ++i) ASSERT_EQ(q[i], entry.second);
                std::memset(q, entry.second, n);
                live[q] = {n, entry.second};
                order.push_back(q);
            }
        }
        if (step % 50 == 0) {
            checkAgainstModel(h, live);
            if (HasFatalFailure()) return;
        }
    }
    checkAgainstModel(h, live);
}

}  // namespace
}  // namespace fenk::test
