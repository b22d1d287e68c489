// Slot 22 as the guarded entry: its checks, the field set-up, raises and
// memory violations unwound into answers, the clean-up, the trap's handler
// bookkeeping, and many threads at once.
#include <gtest/gtest.h>
#include <setjmp.h>
#include <signal.h>
#include <sys/mman.h>

#include <atomic>
#include <cstring>
#include <thread>
#include <vector>

#include "support/raise_catcher.h"
#include "support/test_world.h"

using fenk::test::catchRaise;
using fenk::test::TestWorld;

namespace {

// A page that faults on every access.
volatile int* faultingAddress() {
    static void* page = mmap(nullptr, 4096, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return static_cast<volatile int*>(page);
}

// What the print routine does is chosen by the PDU number.
enum Action : int32_t {
    answerValue = 1,
    raise = 2,
    fault = 3,
    raiseInGrandchild = 4,
    inspect = 5,
    nestedThenFault = 6,  // value is another world: a guarded raise there, then a fault here
    silentSerialization = 7,  // silent mode: the jump value is the index, 19 like the code
    nestedSilentThenFault = 8,  // value is another world: a silent 19 there, then a fault here
    faultInAnotherThread = 9,   // a thread outside any guarded operation faults
};

struct Seen {
    KivGlobal world;  // a copy of the world as the print routine saw it
    KivSignalHandler handlerInForce;
};
thread_local Seen seen;

// The handler in force before the trap: it leaves a faulting access by a jump.
thread_local sigjmp_buf recovery;
void recoveringHandler(int) { siglongjmp(recovery, 1); }

KivSignalHandler handlerInForce() {
    struct sigaction current;
    sigaction(SIGSEGV, nullptr, &current);
    return current.sa_handler;
}

// A guarded print on another world, called far below the caller's frame so
// that the caller's own later calls leave that print's frame as it was.
__attribute__((noinline)) int32_t deepSilentPrint(KivGlobal* world) {
    volatile char pad[1 << 16];
    pad[sizeof pad - 1] = 0;
    int32_t dummy = 0;
    return kivDisplayPdu(world, silentSerialization, &dummy) + pad[sizeof pad - 1];
}

int32_t printRoutine(KivGlobal* world, int32_t pduNum, void* value) {
    // Nested requests come negated; the low bits pick their action.
    switch (pduNum > 7 ? pduNum : pduNum & 7) {
        case raise:
            kivRaise(world, 27, 4);
        case fault:
            return *faultingAddress();
        case raiseInGrandchild: {
            static thread_local KivGlobal child, grandchild;
            child.parentWorld = world;
            grandchild.parentWorld = &child;
            kivRaiseText(&grandchild, 20, "v");
        }
        case nestedThenFault: {
            int32_t dummy = 0;
            if (kivDisplayPdu(static_cast<KivGlobal*>(value), raise, &dummy) != 17) return -1;
            return *faultingAddress();
        }
        case silentSerialization:
            world->errorMode = 6;
            kivRaise(world, 19, 0);
        case nestedSilentThenFault: {
            // The fault belongs to this operation, not to the other world's
            // one that is over, even inside a jump frame of that world.
            auto* other = static_cast<KivGlobal*>(value);
            auto caught = catchRaise(other, [other] {
                if (deepSilentPrint(other) != 19) return;
                (void)*faultingAddress();
            });
            return caught.raised ? -2 : -1;
        }
        case faultInAnotherThread: {
            bool recovered = false;
            std::thread([&recovered] {
                if (sigsetjmp(recovery, 1) == 0) (void)*faultingAddress();
                else recovered = true;
            }).join();
            return recovered ? 1 : -1;
        }
        case inspect:
            std::memcpy(&seen.world, world, sizeof *world);
            seen.handlerInForce = handlerInForce();
            return 0;
        default:
            return *static_cast<int32_t*>(value);
    }
}

KivControlTable goodTable{nullptr, KIV_CONTROL_TABLE_VERSION, &printRoutine};

void recordingHandler(int) {}
void recordingInfoHandler(int, siginfo_t*, void*) {}

class GuardedPrint : public ::testing::Test {
protected:
    void SetUp() override {
        w->messageOut = w->messageText;
        std::strcpy(w->messageText, "untouched");
    }
    int32_t display(int32_t pduNum) { return kivDisplayPdu(w.get(), pduNum, &value); }
    int32_t value = 42;
    TestWorld w{&goodTable};
};

TEST_F(GuardedPrint, ChecksArgumentsNestingAndTheControlTable) {
    EXPECT_EQ(kivDisplayPdu(nullptr, 1, &value), 6);
    EXPECT_EQ(kivDisplayPdu(w.get(), 1, nullptr), 6);
    EXPECT_EQ(display(0), 3) << "a nested request without the printer's bit";
    EXPECT_EQ(display(-8), 3);
    // With the bit the routine runs directly: nothing of the guard is set up.
    w->printNesting = 1;
    w->errorMode = 1;
    w->printIndent = 3;
    EXPECT_EQ(display(-8), 42);
    EXPECT_EQ(display(-8 + inspect), 0);
    EXPECT_EQ(seen.world.messageOut, w->messageText);
    EXPECT_EQ(seen.world.printIndent, 3);
    EXPECT_EQ(w->errorMode, 1);
    EXPECT_STREQ(w->messageText, "untouched");

    // The control table checks record their message.
    w->printNesting = 0;
    w->printIndent = 0;
    w->errorMode = 0;
    w->controlTable = nullptr;
    EXPECT_EQ(display(1), 20);
    EXPECT_STREQ(w->messageText, "E0073S: Attempt made to pass a NULL control table pointer.\n");
    KivControlTable table = goodTable;
    w->controlTable = &table;
    table.printPdu = nullptr;
    EXPECT_EQ(display(1), 21);
    EXPECT_STREQ(w->messageText, "E0074S: NULL function pointer in the control table.\n");
    table.printPdu = &printRoutine;
    table.version = 16;
    w->errorMode = 3;
    EXPECT_EQ(display(1), 7);
    EXPECT_STREQ(w->messageText,
                 "D0007S: Version number of generated encoder/decoder differs from that of "
                 "run-time library, 17.\n");
    // A nested request meets the same checks.
    w->printNesting = 1;
    EXPECT_EQ(display(0), 7);
}

TEST_F(GuardedPrint, SetsUpTheWorldAndPutsTheOuterFrameBack) {
    KivGlobal parent{};
    jmp_buf outer;
    w->jumpBuffer = &outer;
    w->parentWorld = &parent;
    w->childWorld = &parent;
    w->printIndent = 2;
    w->errorMode = 0;
    KivComponentFrame frame{};
    w->errorPath = &frame;
    alignas(8) static uint8_t buffer[64];
    KivWorkBuffer work{64, buffer};
    ASSERT_EQ(kivStoreWorkBuffer(w.get(), &work), 0);

    EXPECT_EQ(display(inspect), 0);
    const KivGlobal& in = seen.world;
    EXPECT_EQ(in.messageOut, nullptr);
    EXPECT_EQ(in.parentWorld, nullptr);
    EXPECT_EQ(in.childWorld, nullptr);
    EXPECT_EQ(in.errorPath, nullptr);
    EXPECT_EQ(in.printIndent, 0);
    EXPECT_EQ(in.errorMode, 5);
    EXPECT_EQ(reinterpret_cast<KivRoutine>(in.raiseRoutine), apiTbl[kivSlotRaise]);
    EXPECT_EQ(in.currentBlockTable, &w->blockTable);
    EXPECT_EQ(in.userBufferStart, buffer);
    EXPECT_EQ(in.userBufferEnd, buffer + 64);
    EXPECT_NE(in.jumpBuffer, &outer);
    EXPECT_EQ(w->jumpBuffer, &outer);

    ASSERT_EQ(kivStoreWorkBuffer(w.get(), nullptr), 0);
    EXPECT_EQ(display(inspect), 0);
    EXPECT_EQ(seen.world.userBufferStart, nullptr);
    EXPECT_EQ(seen.world.userBufferEnd, nullptr);
}

TEST_F(GuardedPrint, RaisesAndFaultsBecomeAnswers) {
    EXPECT_EQ(display(answerValue), 42);
    EXPECT_EQ(display(raise), 17);
    EXPECT_EQ(w->errorCode, 17);
    EXPECT_EQ(display(raiseInGrandchild), 17);
    EXPECT_STREQ(w->messageText, "untouched") << "errors under the guard compose no text";
    // Two faults in a row in one thread: the second is trapped too.
    EXPECT_EQ(display(fault), 14);
    EXPECT_EQ(display(fault), 14);
    EXPECT_EQ(w->errorCode, 14);
    EXPECT_EQ(display(answerValue), 42);
    // A guarded operation inside another, on a second world, raises and is
    // over: the fault that follows belongs to the outer operation.
    TestWorld inner{&goodTable};
    EXPECT_EQ(kivDisplayPdu(w.get(), nestedThenFault, inner.get()), 14);
    EXPECT_EQ(inner->errorCode, 17);
    // The same after an inner operation unwound with the value 19 although
    // its thread was registered: it must not stay registered.
    EXPECT_EQ(kivDisplayPdu(w.get(), nestedSilentThenFault, inner.get()), 14);
}

TEST_F(GuardedPrint, TrapIsInForceOnlyDuringTheOperation) {
    struct sigaction mine = {}, before;
    mine.sa_handler = &recordingHandler;
    sigaction(SIGSEGV, &mine, &before);

    EXPECT_EQ(display(inspect), 0);
    EXPECT_NE(seen.handlerInForce, &recordingHandler);
    EXPECT_EQ(w->savedSignalHandler, &recordingHandler);
    EXPECT_EQ(handlerInForce(), &recordingHandler);
    EXPECT_EQ(display(fault), 14);
    EXPECT_EQ(handlerInForce(), &recordingHandler);

    // Bit 0x200 of decodingFlags: no trap, no registration.
    w->savedSignalHandler = nullptr;
    w->decodingFlags |= 0x200;
    EXPECT_EQ(display(inspect), 0);
    EXPECT_EQ(seen.handlerInForce, &recordingHandler);
    EXPECT_EQ(w->savedSignalHandler, nullptr);
    EXPECT_EQ(display(raise), 17);

    // A three-argument handler is recorded by its address and comes back
    // whole, flags included, when the operation is over.
    struct sigaction three = {}, after;
    three.sa_sigaction = &recordingInfoHandler;
    three.sa_flags = SA_SIGINFO;
    sigaction(SIGSEGV, &three, nullptr);
    w->decodingFlags &= ~0x200u;
    EXPECT_EQ(display(fault), 14);
    EXPECT_EQ(reinterpret_cast<void*>(w->savedSignalHandler),
              reinterpret_cast<void*>(&recordingInfoHandler));
    sigaction(SIGSEGV, nullptr, &after);
    EXPECT_EQ(after.sa_sigaction, &recordingInfoHandler);
    EXPECT_TRUE(after.sa_flags & SA_SIGINFO);
    sigaction(SIGSEGV, &before, nullptr);
}

TEST_F(GuardedPrint, AFaultOfAnUnguardedThreadGoesToTheHandlerBefore) {
    struct sigaction mine = {}, before;
    mine.sa_handler = &recoveringHandler;
    sigemptyset(&mine.sa_mask);
    sigaction(SIGSEGV, &mine, &before);
    EXPECT_EQ(display(faultInAnotherThread), 1);
    EXPECT_EQ(w->errorCode, 0) << "the operation itself did not fault";
    EXPECT_EQ(handlerInForce(), &recoveringHandler);
    EXPECT_EQ(display(fault), 14) << "the next operation traps again";
    EXPECT_EQ(handlerInForce(), &recoveringHandler);
    sigaction(SIGSEGV, &before, nullptr);
}

TEST_F(GuardedPrint, RegistrationNeedsTheGlobalLock) {
    KivCriticalSection* lock = w->globalLock;
    w->globalLock = nullptr;
    seen.world.printIndent = -1;
    EXPECT_EQ(display(inspect), 19);
    EXPECT_EQ(w->errorCode, 19);
    EXPECT_EQ(seen.world.printIndent, -1) << "the print routine never ran";
    w->globalLock = lock;
    EXPECT_EQ(display(fault), 14) << "nothing was left registered or armed";
}

// The unwound path frees the temporary chains through the world's table.
int freeCalls;
bool freeRaises;
void freeTempChains(KivGlobal* world) {
    ++freeCalls;
    if (freeRaises) kivRaise(world, 27, 1);
}

TEST_F(GuardedPrint, CleanUpFreesTemporaryChainsOnce) {
    KivRoutine table[KIV_SLOT_COUNT];
    std::memcpy(table, apiTbl, sizeof table);
    table[106] = reinterpret_cast<KivRoutine>(&freeTempChains);
    w->apiTable = table;
    freeCalls = 0;
    freeRaises = false;
    EXPECT_EQ(display(answerValue), 42);
    EXPECT_EQ(freeCalls, 0);
    EXPECT_EQ(display(raise), 17);
    EXPECT_EQ(freeCalls, 1);
    // Chains carved from the application's buffer are not freed.
    alignas(8) static uint8_t buffer[64];
    KivWorkBuffer work{64, buffer};
    ASSERT_EQ(kivStoreWorkBuffer(w.get(), &work), 0);
    EXPECT_EQ(display(fault), 14);
    EXPECT_EQ(freeCalls, 1);
    ASSERT_EQ(kivStoreWorkBuffer(w.get(), nullptr), 0);
    // A raise during the clean-up answers 18.
    freeRaises = true;
    EXPECT_EQ(display(raise), 18);
    EXPECT_EQ(freeCalls, 2);
    EXPECT_EQ(display(fault), 18);
    // A failed registration answers 19 even when its clean-up raised.
    KivCriticalSection* lock = w->globalLock;
    w->globalLock = nullptr;
    EXPECT_EQ(display(answerValue), 19);
    EXPECT_EQ(freeCalls, 4);
    w->globalLock = lock;
    freeRaises = false;
    EXPECT_EQ(display(fault), 14);
}

// Eight threads, each with its own world, running guarded prints that
// succeed, raise or fault, all at once.
TEST(GuardedThreads, EachThreadGetsItsOwnAnswers) {
    constexpr int kThreads = 8;
    constexpr int kRounds = 900;
    KivSignalHandler before = handlerInForce();
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&wrong, t] {
            TestWorld w{&goodTable};
            int32_t value = 1000 + t;
            for (int round = 0; round < kRounds; ++round) {
                int32_t action = answerValue + (round + t) % 3;
                int32_t answer = kivDisplayPdu(w.get(), action, &value);
                int32_t expected = action == answerValue ? value : action == raise ? 17 : 14;
                if (answer != expected || (action != answerValue && w->errorCode != expected))
                    ++wrong;
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(wrong.load(), 0);
    EXPECT_EQ(handlerInForce(), before) << "the last operation put the old handler back";
    TestWorld w{&goodTable};
    int32_t value = 0;
    EXPECT_EQ(kivDisplayPdu(w.get(), fault, &value), 14);
}

// While another thread runs a guarded operation, a fault in a thread that
// is in none is not swallowed: it meets the handler that was there before.
// The faulting thread has itself run guarded operations that succeeded,
// raised and faulted: once they are over it counts as unguarded again.
std::atomic<bool> guardedThreadInside{false};

void faultBesideAGuardedOperation() {
    static KivControlTable waiting{nullptr, KIV_CONTROL_TABLE_VERSION,
                                   [](KivGlobal*, int32_t, void*) -> int32_t {
                                       guardedThreadInside = true;
                                       for (;;) pause();
                                   }};
    std::thread([] {
        TestWorld w{&waiting};
        int32_t value = 0;
        kivDisplayPdu(w.get(), 1, &value);
    }).detach();
    while (!guardedThreadInside) std::this_thread::yield();
    static TestWorld own{&goodTable};
    int32_t value = 0;
    for (int32_t action : {answerValue, raise, fault})
        std::fprintf(stderr, "answer %d\n", kivDisplayPdu(own.get(), action, &value));
    (void)*faultingAddress();
    std::fprintf(stderr, "survived\n");
}

TEST(GuardedThreadsDeathTest, FaultOutsideAnyOperationIsNotSwallowed) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(faultBesideAGuardedOperation(), "answer 0\nanswer 17\nanswer 14\n");
}

}  // namespace
