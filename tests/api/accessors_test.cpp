// World accessors through the table: levels, flags, the work buffer, hooks,
// output settings and the null-world answers.
#include <gtest/gtest.h>

#include <cstdlib>

#include "support/alloc_hooks.h"
#include "support/test_world.h"

using fenk::test::TestWorld;

TEST(Levels, MapBothWaysAndRejectUnknownOnes) {
    TestWorld w;
    const uint32_t masks[] = {0, 0x280FF, 0x280FE, 0x28080, 0x28000, 0x20000};
    for (uint32_t level = 0; level <= 5; ++level) {
        ASSERT_EQ(kivStoreLevel(w.get(), level), 0);
        EXPECT_EQ(w.priv()->levelMask, masks[level]);
        EXPECT_EQ(kivFetchLevel(w.get()), static_cast<int32_t>(level));
    }
    EXPECT_EQ(kivStoreLevel(w.get(), 6), 6);
    EXPECT_EQ(w.priv()->levelMask, 0x20000u) << "a refused level stores nothing";
    EXPECT_EQ(kivStoreLevelMask(w.get(), 0x28001), 0);
    EXPECT_EQ(w.priv()->levelMask, 0x28001u);
    EXPECT_EQ(kivFetchLevel(w.get()), -2);
}

TEST(Flags, EncoderStoreRemovesIndefiniteLengthAndReportsIt) {
    TestWorld w;
    EXPECT_EQ(kivStoreEncoderFlags(w.get(), 0x40000020), 13);
    EXPECT_EQ(kivFetchEncoderFlags(w.get()), 0x40400200u);
    EXPECT_STREQ(kivMessageText(w.get()),
                 "E0108S: The FENK and Quarn encoders do not support indefinite-length encoding.\n");
    EXPECT_EQ(w.output(), "") << "no trace bit set: nothing echoed";

    EXPECT_EQ(kivStoreEncoderFlags(w.get(), 0x20000), 0);
    EXPECT_EQ(kivFetchEncoderFlags(w.get()), 0x20000u);

    // Echoed when the encoding flags or bit 6 of the debug flags ask for it.
    w->encodingFlags = 0x2;
    EXPECT_EQ(kivStoreEncoderFlags(w.get(), 0x20), 13);
    EXPECT_EQ(w.output(),
              "E0108S: The FENK and Quarn encoders do not support indefinite-length encoding.\n");
    w.clearOutput();
    w->encodingFlags = 0;
    kivStoreDebugFlags(w.get(), 0x40);
    EXPECT_EQ(kivStoreEncoderFlags(w.get(), 0x20), 13);
    EXPECT_NE(w.output().find("0108S"), std::string::npos);
}

TEST(Flags, DecoderAdjustmentAndAllFlags) {
    TestWorld w;
    const std::pair<uint32_t, uint32_t> decoder[] = {
        {0x20000400, 0x20000200}, {0x20020400, 0x20020000}, {0x40000000, 0x40400200}};
    for (auto [stored, fetched] : decoder) {
        EXPECT_EQ(kivStoreDecoderFlags(w.get(), stored), 0);
        EXPECT_EQ(kivFetchDecoderFlags(w.get()), fetched) << stored;
    }
    // All flags: both are stored, their union fetched.
    EXPECT_EQ(kivStoreAllFlags(w.get(), 0x21), 13);
    EXPECT_EQ(kivFetchEncoderFlags(w.get()), 0x201u);
    EXPECT_EQ(kivFetchDecoderFlags(w.get()), 0x221u) << "the decoder keeps bit 5";
    w->encodingFlags = 0x1000;
    w->decodingFlags = 0x0010;
    EXPECT_EQ(kivFetchAllFlags(w.get()), 0x1010u);
}

TEST(WorkBuffer, AlignsAndKeepsWhole16ByteUnits) {
    TestWorld w;
    // A refused buffer (too small once aligned) stores nothing.
    const struct {
        int32_t length;
        uintptr_t at;
        int32_t answer;
        uint32_t kept;
        uintptr_t start;
    } cases[] = {{40, 0x1003, 0, 32, 0x1008}, {20, 0x1003, 1, 32, 0x1008}, {5, 0x1003, 1, 32, 0x1008},
                 {-100, 0x1003, 1, 32, 0x1008}, {16, 0x2000, 0, 16, 0x2000}};
    for (const auto& c : cases) {
        KivWorkBuffer buffer{c.length, reinterpret_cast<void*>(c.at)};
        EXPECT_EQ(kivStoreWorkBuffer(w.get(), &buffer), c.answer) << c.length;
        EXPECT_EQ(w.priv()->userBufferLength, c.kept) << c.length;
        EXPECT_EQ(w.priv()->userBufferAddress, reinterpret_cast<uint8_t*>(c.start)) << c.length;
    }

    EXPECT_EQ(kivStoreWorkBuffer(w.get(), nullptr), 0);
    EXPECT_EQ(w.priv()->userBufferLength, 0u);
    EXPECT_EQ(w.priv()->userBufferAddress, nullptr);
}

TEST(Hooks, StoreFetchAndAllocateThroughThem) {
    TestWorld w;
    fenk::test::AllocCounter counter;
    fenk::test::installCountingHooks(w.get(), &counter);
    KivAllocHook a = nullptr;
    KivFreeHook f = nullptr;
    KivReallocHook r = nullptr;
    kivFetchMemoryHooks(w.get(), &a, &f, &r);
    EXPECT_EQ(a, w->allocHook);
    EXPECT_EQ(f, w->freeHook);
    EXPECT_EQ(r, w->reallocHook);
    kivFetchMemoryHooks(w.get(), nullptr, nullptr, nullptr);

    auto* block = static_cast<unsigned char*>(kivAllocateZeroed(w.get(), 64));
    ASSERT_NE(block, nullptr);
    for (int i = 0; i < 64; ++i) ASSERT_EQ(block[i], 0);
    EXPECT_EQ(counter.live, 1);
    kivReleaseThroughTable(w.get(), block);
    EXPECT_EQ(counter.live, 0);

    counter.failAt = counter.calls + 1;
    EXPECT_EQ(kivAllocateZeroed(w.get(), 64), nullptr);

    // Stored in argument order: allocate, release, reallocate.
    kivStoreMemoryHooks(w.get(), nullptr, f, nullptr);
    EXPECT_EQ(w->allocHook, nullptr);
    EXPECT_EQ(w->freeHook, f);
    EXPECT_EQ(kivAllocate(w.get(), 8), nullptr);
    EXPECT_EQ(kivAllocateZeroed(w.get(), 8), nullptr);
    kivStoreMemoryHooks(w.get(), nullptr, nullptr, nullptr);
    kivRelease(w.get(), nullptr);
    kivReleaseThroughTable(w.get(), nullptr);
}

namespace {
int plainAllocations = 0;
void* countingPlainAlloc(size_t size) {
    ++plainAllocations;
    return std::malloc(size);
}
int plainResizes = 0;
void* countingPlainRealloc(void* block, size_t size) {
    ++plainResizes;
    return std::realloc(block, size);
}
}  // namespace

TEST(Defaults, HooksGoThroughThePlainRoutines) {
    TestWorld w;
    EXPECT_EQ(w->printLimit, 35);
    EXPECT_NE(w->printRoutine, nullptr);
    EXPECT_EQ(w->defaultPrintRoutine, w->printRoutine);
    w->allocRoutine = &countingPlainAlloc;
    void* block = kivAllocate(w.get(), 10);
    EXPECT_EQ(plainAllocations, 1);
    kivRelease(w.get(), block);

    w->printLimit = 0;
    w->outputStream = nullptr;
    EXPECT_EQ(kivInstallDefaultRoutines(w.get()), 0);
    EXPECT_EQ(w->printLimit, 35);
    EXPECT_EQ(w->outputStream, stdout);
    block = kivAllocate(w.get(), 10);
    EXPECT_EQ(plainAllocations, 1) << "slot 96 put the library routine back";

    // The resize hook calls the world's plain resize routine; without one it
    // answers null and leaves the block alone.
    w->reallocRoutine = &countingPlainRealloc;
    block = w->reallocHook(w.get(), block, 20);
    EXPECT_EQ(plainResizes, 1);
    ASSERT_NE(block, nullptr);
    w->reallocRoutine = nullptr;
    EXPECT_EQ(w->reallocHook(w.get(), block, 40), nullptr);
    kivRelease(w.get(), block);
}

namespace {
int hookCalls = 0;
int outputHook(KivGlobal*, const char*, va_list) { return ++hookCalls; }
int outputContext(KivGlobal*, const char*, va_list) { return 0; }
int32_t copier(KivGlobal*, void*, void*) { return 1; }
int32_t comparer(KivGlobal*, void*, void*) { return 2; }
}  // namespace

TEST(Settings, StoreAndFetch) {
    TestWorld w;
    FILE* stream = nullptr;
    KivOutputRoutine routine = nullptr;

    kivStoreOutput(w.get(), stderr, &outputContext);
    kivFetchOutput(w.get(), &stream, &routine);
    EXPECT_EQ(stream, stderr);
    EXPECT_EQ(routine, &outputContext);
    kivStoreOutput(w.get(), nullptr, nullptr);  // null arguments keep what is there
    EXPECT_EQ(w->outputStream, stderr);
    EXPECT_EQ(w->outputContext, &outputContext);

    kivStoreOutputHook(w.get(), nullptr, &outputHook);
    kivFetchOutputHook(w.get(), &stream, &routine);
    EXPECT_EQ(stream, stderr);
    EXPECT_EQ(routine, &outputHook);
    kivStoreOutputHook(w.get(), stdout, nullptr);  // the hook is always stored
    EXPECT_EQ(w.priv()->outputHook, nullptr);
    EXPECT_EQ(w->outputStream, stdout);

    kivStoreOpenTypeHandlers(w.get(), &copier, &comparer);
    KivOpenTypeRoutine c = nullptr, k = nullptr;
    kivFetchOpenTypeHandlers(w.get(), &c, &k);
    EXPECT_EQ(c, &copier);
    EXPECT_EQ(k, &comparer);

    kivStoreByteSetting(w.get(), 200);
    EXPECT_EQ(kivFetchByteSetting(w.get()), 200);
    kivStoreShortSetting(w.get(), 0xBEEF);
    EXPECT_EQ(kivFetchShortSetting(w.get()), 0xBEEF);
    w.priv()->privateWord0 = 0x12345678;
    EXPECT_EQ(kivFetchPrivateWord(w.get()), 0x12345678u);
    EXPECT_EQ(kivStoreDebugFlags(w.get(), 0x41), 0);
    EXPECT_EQ(kivFetchDebugFlags(w.get()), 0x41u);
    EXPECT_EQ(kivStoreDecodeBufferLength(w.get(), 4096), 0);
    EXPECT_EQ(kivFetchDecodeBufferLength(w.get()), 4096u);
    w->encodingRules = 3;
    EXPECT_EQ(kivCurrentRules(w.get()), 3);
    EXPECT_EQ(kivMessageText(w.get()), w->messageText);
}

TEST(NullWorld, CodesAndValuesAnswerWithoutStoring) {
    EXPECT_EQ(kivCurrentRules(nullptr), -1);
    EXPECT_EQ(kivStoreLevel(nullptr, 1), 6);
    EXPECT_EQ(kivFetchLevel(nullptr), -1);
    EXPECT_EQ(kivStoreLevelMask(nullptr, 1), 6);
    EXPECT_EQ(kivStoreDecodeBufferLength(nullptr, 1), 6);
    EXPECT_EQ(kivFetchDecodeBufferLength(nullptr), 0xFFFFFFFFu);
    EXPECT_EQ(kivStoreEncoderFlags(nullptr, 0x20), 6);
    EXPECT_EQ(kivFetchEncoderFlags(nullptr), 0xFFFFFFFFu);
    EXPECT_EQ(kivStoreAllFlags(nullptr, 0), 6);
    EXPECT_EQ(kivFetchAllFlags(nullptr), 0xFFFFFFFFu);
    EXPECT_EQ(kivStoreDecoderFlags(nullptr, 0), 6);
    EXPECT_EQ(kivFetchDecoderFlags(nullptr), 0xFFFFFFFFu);
    EXPECT_EQ(kivMessageText(nullptr), nullptr);
    EXPECT_EQ(kivFetchPrivateWord(nullptr), 0xFFFFFFFFu);
    EXPECT_EQ(kivFetchByteSetting(nullptr), -1);
    EXPECT_EQ(kivStoreDebugFlags(nullptr, 1), 6);
    EXPECT_EQ(kivFetchDebugFlags(nullptr), 0xFFFFFFFFu);
    EXPECT_EQ(kivInstallDefaultRoutines(nullptr), 6);
    EXPECT_EQ(kivStoreWorkBuffer(nullptr, nullptr), 6);
    EXPECT_EQ(kivAllocate(nullptr, 8), nullptr);
    kivStoreMemoryHooks(nullptr, nullptr, nullptr, nullptr);
    kivFetchMemoryHooks(nullptr, nullptr, nullptr, nullptr);
    kivStoreOutput(nullptr, stdout, nullptr);
    kivStoreOutputHook(nullptr, stdout, nullptr);
    kivStoreOpenTypeHandlers(nullptr, nullptr, nullptr);
    kivStoreByteSetting(nullptr, 1);
    kivRelease(nullptr, nullptr);
}
