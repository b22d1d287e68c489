// Child worlds: what is shared with the parent, what starts at zero, and the
// temporary-memory accounting when a child ends.
#include <gtest/gtest.h>

#include <cstring>

#include "support/raise_catcher.h"
#include "support/test_world.h"

using fenk::test::TestWorld;

namespace {

struct Range {
    size_t offset, size;
};
#define G(field) Range{offsetof(KivGlobal, field), sizeof(KivGlobal::field)}
#define P(field) Range{offsetof(KivPrivate, field), sizeof(KivPrivate::field)}

// What a child takes over from its parent, byte for byte.
const Range kSharedGlobal[] = {
    G(allocRoutine), G(freeRoutine), G(printLimit), G(outputStream), G(printRoutine),
    G(settingsHeader), G(settingsBlock), G(controlTable), G(encodingRules), G(encodingFlags),
    G(jumpBuffer), G(savedSignalHandler), G(reserved1312), G(tempChunks), G(reserved1840),
    G(userBufferStart), G(userBufferEnd), G(extraChunks), G(messageOut), G(errorPath),
    G(errorPduNumber), G(errorPduInfo), G(errorMode), G(reserved2296), G(allocHook),
    G(freeHook), G(reallocHook), G(raiseRoutine),
    // the trace window state and everything after it
    Range{offsetof(KivGlobal, traceWindow), sizeof(KivGlobal) - offsetof(KivGlobal, traceWindow)},
};
const Range kSharedPrivate[] = {
    P(outputHook), P(userBufferLength), P(userBufferAddress), P(entryWord), P(entryContext),
    P(entryCount), P(entryTable), P(entryExtra), P(companionSetting), P(namespaceTable),
    P(prefixStem), P(namespaceEntries), P(namespaceFlags),
};
// Set by the making itself rather than copied.
const Range kOwnGlobal[] = {G(currentBlockTable), G(parentWorld), G(privateState),
                            G(coderFlags)};
const Range kOwnPrivate[] = {P(pointerTables.count), P(currentPointerTable),
                             P(privateListHead)};

template <size_t N>
bool inAny(size_t at, const Range (&ranges)[N]) {
    for (const Range& r : ranges)
        if (at >= r.offset && at < r.offset + r.size) return true;
    return false;
}

// Every byte of the child outside its own fields is the parent's where
// shared and zero elsewhere.
template <class T, size_t NO, size_t NS>
void expectShared(const T* child, const T* parent, const Range (&own)[NO],
                  const Range (&shared)[NS]) {
    auto* c = reinterpret_cast<const uint8_t*>(child);
    auto* p = reinterpret_cast<const uint8_t*>(parent);
    for (size_t i = 0; i < sizeof(T); ++i) {
        if (inAny(i, own)) continue;
        ASSERT_EQ(c[i], inAny(i, shared) ? p[i] : 0) << sizeof(T) << "-byte record, byte " << i;
    }
}

// A parent whose every byte is nonzero, with a temporary buffer.
struct PatternParent {
    alignas(16) uint8_t temp[8192];
    KivGlobal world;
    KivPrivate state;
    PatternParent() {
        auto* g = reinterpret_cast<uint8_t*>(&world);
        auto* p = reinterpret_cast<uint8_t*>(&state);
        for (size_t i = 0; i < sizeof world; ++i) g[i] = uint8_t(0x11 + i % 200);
        for (size_t i = 0; i < sizeof state; ++i) p[i] = uint8_t(0x17 + i % 200);
        world.privateState = &state;
        world.apiTable = apiTbl;
        world.parentWorld = nullptr;
        world.tempChunks = nullptr;
        world.extraChunks = nullptr;
        world.userBufferStart = temp;
        world.userBufferEnd = temp + sizeof temp;
        world.coderFlags = 0xFFFFFFFF;
        state.userBufferAddress = temp;
        state.userBufferLength = sizeof temp;
    }
};

}  // namespace

TEST(ChildWorld, CopiesExactlyTheSharedFieldsAndZeroesTheRest) {
    PatternParent parent;
    KivGlobal* child = kivMakeChildWorld(&parent.world);
    // The parent as it was copied: carving the child out of its temporary
    // memory had already moved its marks.
    const KivGlobal& before = parent.world;
    ASSERT_NE(child, nullptr);
    EXPECT_EQ(reinterpret_cast<uint8_t*>(child), parent.temp) << "carved from temporary memory";

    expectShared(child, &before, kOwnGlobal, kSharedGlobal);
    EXPECT_EQ(child->coderFlags, 0x7u);
    EXPECT_EQ(child->parentWorld, &parent.world);
    EXPECT_EQ(parent.world.childWorld, child);
    EXPECT_EQ(child->currentBlockTable, &child->blockTable);
    EXPECT_EQ(child->decodingFlags, 0u);
    EXPECT_EQ(child->globalLock, nullptr);

    KivPrivate* cp = child->privateState;
    ASSERT_NE(cp, &parent.state);
    expectShared(cp, &parent.state, kOwnPrivate, kSharedPrivate);
    EXPECT_EQ(cp->pointerTables.count, 1);
    EXPECT_EQ(cp->currentPointerTable, &cp->pointerTables);
    EXPECT_EQ(cp->privateListHead, &cp->privateListHead);
}

TEST(ChildWorld, EndingKeepsTheChildsTemporaryMemoryCountedThenReleasesIt) {
    PatternParent parent;
    uint8_t* start = parent.world.userBufferStart;
    KivGlobal* child = kivMakeChildWorld(&parent.world);
    uint8_t* afterChild = parent.world.userBufferStart;
    EXPECT_GE(afterChild - start, static_cast<ptrdiff_t>(sizeof(KivGlobal) + sizeof(KivPrivate)));

    // Work inside the child takes temporary memory from the shared buffer.
    void* work = kivTempAlloc(child, 100);
    EXPECT_EQ(work, afterChild);
    EXPECT_EQ(parent.world.userBufferStart, afterChild) << "the parent does not see it yet";

    EXPECT_EQ(kivEndChildWorld(child), &parent.world);
    EXPECT_EQ(parent.world.childWorld, nullptr);
    EXPECT_EQ(parent.world.userBufferStart, start) << "released back to the child itself";
    EXPECT_EQ(kivEndChildWorld(nullptr), nullptr);
}

TEST(ChildWorld, WorksOverHeapTemporaryMemory) {
    TestWorld w;
    KivGlobal* child = kivMakeChildWorld(w.get());
    ASSERT_NE(child, nullptr);
    EXPECT_NE(w->tempChunks, nullptr);
    kivTempAlloc(child, 64);
    EXPECT_EQ(kivEndChildWorld(child), w.get());
    EXPECT_EQ(w->tempChunks, nullptr) << "every chunk given back";
}

TEST(ChildWorld, RaiseInAGrandchildUnwindsTheTopLevelFrame) {
    TestWorld w;
    w->errorMode = 5;
    w->messageOut = w->messageText;
    KivGlobal* child = kivMakeChildWorld(w.get());
    KivGlobal* grandchild = kivMakeChildWorld(child);
    auto caught = fenk::test::catchRaise(w.get(), [&] {
        // The grandchild copied the jump buffer before the frame was set, so
        // only the walk to the outermost world can find the frame.
        kivRaise(grandchild, 53, 0);
    });
    EXPECT_TRUE(caught.raised);
    EXPECT_EQ(caught.value, 23);
    EXPECT_EQ(w->errorCode, 23);
    kivEndChildWorld(grandchild);
    kivEndChildWorld(child);
}

TEST(TempChain, ReleasesBackToTheOutermostRecord) {
    TestWorld w;
    alignas(16) static uint8_t buffer[4096];
    KivWorkBuffer config{sizeof buffer, buffer};
    ASSERT_EQ(kivStoreWorkBuffer(w.get(), &config), 0);
    w->userBufferStart = w.priv()->userBufferAddress;
    w->userBufferEnd = w->userBufferStart + w.priv()->userBufferLength;
    uint8_t* start = w->userBufferStart;

    kivTempAlloc(w.get(), 16);  // something before the chain stays
    uint8_t* chainStart = w->userBufferStart;
    auto** outer = static_cast<void**>(kivTempAlloc(w.get(), 32));
    auto** middle = static_cast<void**>(kivTempAlloc(w.get(), 32));
    auto** inner = static_cast<void**>(kivTempAlloc(w.get(), 32));
    outer[2] = nullptr;
    outer[3] = middle;
    middle[2] = outer;
    middle[3] = inner;
    inner[2] = middle;
    inner[3] = &buffer;  // cleared by the release
    kivReleaseTempChain(w.get(), inner);
    EXPECT_EQ(w->userBufferStart, chainStart);
    EXPECT_GT(chainStart, start);
    EXPECT_EQ(inner[3], nullptr);
}
