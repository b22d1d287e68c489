// Resetting and dumping memory handles: the detail levels, the sums, the
// forms with and without addresses, and a damaged handle.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "support/test_world.h"

using fenk::test::TestWorld;

namespace {

struct HandleDump : ::testing::Test {
    TestWorld w;
    KivMemoryHandle* handle = nullptr;
    void* a = nullptr;
    void* b = nullptr;
    void SetUp() override {
        handle = kivCreateMemoryHandle(w.get(), 256);
        ASSERT_NE(handle, nullptr);
        a = kivAllocate(w.get(), 24);
        b = kivAllocate(w.get(), 40);
        kivAllocate(w.get(), 8);
        kivRelease(w.get(), b);
    }
    void TearDown() override { kivDestroyMemoryHandle(w.get(), handle); }
    std::string dump(uint32_t detail, int32_t expect = 0) {
        w.clearOutput();
        KivHandleSummary s{};
        EXPECT_EQ(kivDumpMemoryHandle(w.get(), handle, &s, detail), expect);
        summary = s;
        return w.output();
    }
    KivHandleSummary summary{};
};

}  // namespace

TEST_F(HandleDump, LevelsPrintMoreAndSumTheSame) {
    EXPECT_EQ(dump(0), "");
    EXPECT_EQ(summary.blockCount, 1u);
    EXPECT_EQ(summary.totalBytes, 40u + 256 + 64 + 32);
    EXPECT_EQ(summary.allocatedBytes, 0u) << "level 0 leaves the sums at zero";

    EXPECT_EQ(dump(1), "");
    // Block of 320: fragments 24 used, 40 free, 8 used, and the last one.
    EXPECT_EQ(summary.allocatedBytes, 32u);
    EXPECT_EQ(summary.freeBytes, 40u + (320 - 32 - (24 + 32) - (40 + 32) - (8 + 32)));
    EXPECT_EQ(summary.internalBytes, 40u + 4 * 32 + 32);

    EXPECT_EQ(dump(0x22), "Handle:\nHandle summary (bytes): 32 allocated, 160 free, 200 used internally\n");
    EXPECT_EQ(dump(0x24),
              "Handle:\n"
              "  Block #1: length = 320 bytes\n"
              "    Fragment #1: status = 'used', length = 24\n"
              "    Fragment #2: status = 'free', length = 40\n"
              "    Fragment #3: status = 'used', length = 8\n"
              "    Fragment #4: status = 'last/free', length = 120\n"
              "  Block summary (bytes): 32 allocated, 160 free, 128 used internally\n"
              "Handle summary (bytes): 32 allocated, 160 free, 200 used internally\n");
    char first[64];
    std::snprintf(first, sizeof first, "Handle: [0x%.8x]\n",
                  static_cast<unsigned>(reinterpret_cast<uintptr_t>(handle)));
    std::string withAddresses = dump(4);
    EXPECT_EQ(withAddresses.rfind(first, 0), 0u);
    char fragment[96];
    std::snprintf(fragment, sizeof fragment, "    Fragment #1 [0x%.8x]: status = 'used', length = 24\n",
                  static_cast<unsigned>(reinterpret_cast<uintptr_t>(a)));
    EXPECT_NE(withAddresses.find(fragment), std::string::npos);
}

TEST_F(HandleDump, ADamagedFragmentAnswers18) {
    reinterpret_cast<KivFragment*>(b)[-1].tag = 'x';
    EXPECT_EQ(dump(0x24, 18).find("Fragment #2"), std::string::npos);
    reinterpret_cast<KivFragment*>(b)[-1].tag = KIV_FRAGMENT_FREE;
    reinterpret_cast<KivFragment*>(b)[-1].block = nullptr;
    dump(1, 18);
    reinterpret_cast<KivFragment*>(b)[-1].block = handle->newestBlock;
    reinterpret_cast<KivFragment*>(b)[-1].size = 1u << 30;  // runs out of the block
    dump(1, 18);
    reinterpret_cast<KivFragment*>(b)[-1].size = 40;
    dump(1, 0);
}

TEST_F(HandleDump, ResetFreesEveryFragmentAndNullsAnswer6) {
    EXPECT_EQ(kivCurrentMemoryHandle(w.get()), handle);
    EXPECT_EQ(kivResetMemoryHandle(w.get(), handle), 0);
    EXPECT_EQ(dump(0x24),
              "Handle:\n"
              "  Block #1: length = 320 bytes\n"
              "    Fragment #1: status = 'last/free', length = 288\n"
              "  Block summary (bytes): 0 allocated, 288 free, 32 used internally\n"
              "Handle summary (bytes): 0 allocated, 288 free, 104 used internally\n");
    EXPECT_EQ(handle->hint, reinterpret_cast<KivFragment*>(handle->newestBlock + 1));
    void* again = kivAllocate(w.get(), 24);
    EXPECT_EQ(again, a) << "the first fragment is handed out again";

    KivHandleSummary s;
    EXPECT_EQ(kivResetMemoryHandle(nullptr, handle), 6);
    EXPECT_EQ(kivResetMemoryHandle(w.get(), nullptr), 6);
    EXPECT_EQ(kivDumpMemoryHandle(w.get(), handle, nullptr, 1), 6);
    EXPECT_EQ(kivDumpMemoryHandle(nullptr, handle, &s, 1), 6);
    EXPECT_EQ(kivCurrentMemoryHandle(nullptr), nullptr);
}
