// Shared by the printer tests: a world whose table has its own temporary
// memory (slots 132 and 133) that hands out blocks of exactly the size
// asked, records the sizes and can give null; and helpers that capture what
// a print service writes and what a to-text service returns.
#ifndef FENK_TEST_PRINT_FIXTURE_H
#define FENK_TEST_PRINT_FIXTURE_H

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "support/test_world.h"

namespace fenk::test {

class PrintWorld : public TestWorld {
public:
    PrintWorld() {
        for (int i = 0; i < KIV_SLOT_COUNT; ++i) table_[i] = apiTbl[i];
        table_[kivSlotTempAlloc] = reinterpret_cast<KivRoutine>(&PrintWorld::take);
        table_[kivSlotTempRelease] = reinterpret_cast<KivRoutine>(&PrintWorld::release);
        get()->apiTable = table_;
        current_ = this;
    }
    ~PrintWorld() {
        EXPECT_TRUE(blocks_.empty()) << "slot 148 left " << blocks_.size() << " texts";
        for (void* block : blocks_) std::free(block);
        get()->apiTable = apiTbl;
        current_ = nullptr;
    }

    // Runs a print service and answers what it wrote.
    template <class Call>
    std::string printed(Call&& call) {
        clearOutput();
        call();
        return output();
    }

    // Answers a to-text service's text and releases it with slot 148.
    std::string text(char* result) {
        EXPECT_NE(result, nullptr);
        if (!result) return "<null>";
        std::string copy(result);
        kivFreeText(get(), result);
        return copy;
    }

    std::vector<uint64_t> sizes;  // every size asked of slot 132
    bool giveNull = false;

private:
    static void* take(KivGlobal*, uint64_t size) {
        current_->sizes.push_back(size);
        if (current_->giveNull) return nullptr;
        void* block = std::malloc(size);
        current_->blocks_.push_back(block);
        return block;
    }
    // Releases the mark and everything taken after it, like a stack.
    static void release(KivGlobal*, void* mark) {
        auto& blocks = current_->blocks_;
        for (size_t i = 0; i < blocks.size(); ++i) {
            if (blocks[i] != mark) continue;
            for (size_t j = i; j < blocks.size(); ++j) std::free(blocks[j]);
            blocks.resize(i);
            return;
        }
        ADD_FAILURE() << "slot 133 given a pointer that slot 132 did not hand out";
    }

    KivRoutine table_[KIV_SLOT_COUNT];
    std::vector<void*> blocks_;
    static inline PrintWorld* current_ = nullptr;
};

}  // namespace fenk::test

#endif
