// A world with counting allocation hooks and a recording raise routine, as
// the working-memory tests use it.
#ifndef FENK_TEST_MEMORY_FIXTURE_H
#define FENK_TEST_MEMORY_FIXTURE_H

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "support/alloc_hooks.h"
#include "support/raise_catcher.h"
#include "support/recording_raise.h"
#include "support/test_world.h"

namespace fenk::test {

class MemoryTest : public ::testing::Test {
protected:
    void SetUp() override {
        installCountingHooks(w.get(), &counter);
        installRecordingRaise(w.get(), &raised);
        w->currentBlockTable = &w->blockTable;
    }
    // Every test gives back what it obtained through the hooks.
    void TearDown() override { EXPECT_EQ(counter.live, 0) << "blocks left"; }

    // Runs a call that may raise; the jump value is the message index.
    template <class Call>
    Caught run(Call&& call) {
        return catchRaise(w.get(), call);
    }

    // Configures a temporary buffer of length octets and sets the marks the
    // way an operation entry does.
    void useTempBuffer(int32_t length) {
        buffer.assign(static_cast<size_t>(length) + 8, 0);
        KivWorkBuffer descriptor{length, buffer.data()};
        ASSERT_EQ(kivStoreWorkBuffer(w.get(), &descriptor), 0);
        w->userBufferStart = w.priv()->userBufferAddress;
        w->userBufferEnd = w->userBufferStart + w.priv()->userBufferLength;
    }

    TestWorld w;
    AllocCounter counter;
    RaiseRecord raised;
    std::vector<uint8_t> buffer;
};

}  // namespace fenk::test

#endif
