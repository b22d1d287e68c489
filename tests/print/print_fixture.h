// Shared by the printer tests: a world whose table has its own temporary
// memory (slots 132 and 133) that hands out blocks of exactly the size
// asked, records the sizes and can give null; and helpers that capture what
// a print service writes and what a to-text service returns; and every
// to-text service with a value and its text.
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
    size_t live() const { return blocks_.size(); }

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

// Plain function pointers: a raise jumps across the call.
inline const uint8_t kOctets[] = {0xDE, 0xAD, 0xBE, 0xEF};
inline const KivTimeStruct kTime = {2024, 2, 29, 23, 59, 58, 7, 0, 1};
inline const KivTimeStruct kUtcTime = {24, 2, 29, 23, 59, 58, 0, 0, 0};

struct Service {
    const char* name;
    char* (*call)(KivGlobal*);
    const char* text;
};

inline std::vector<Service> services() {
    return {
        {"bits", [](KivGlobal* w) { return kivBitsToText(w, "<", kOctets, 9, ">"); },
         "<11011110 1>"},
        {"bit string", [](KivGlobal* w) { return kivBitStringToText(w, kOctets, 4); }, "'1101'B"},
        {"bits in integer",
         [](KivGlobal* w) {
             static const uint16_t v = 0xC000;
             return kivBitsInIntegerToText(w, &v, 2, 2);
         },
         "'11'B"},
        {"hex", [](KivGlobal* w) { return kivHexToText(w, "", kOctets, 4, ""); }, "DEADBEEF"},
        {"octet string", [](KivGlobal* w) { return kivOctetStringToText(w, kOctets, 2); },
         "'DEAD'H"},
        {"UTCTime", [](KivGlobal* w) { return kivUTCTimeToText(w, &kUtcTime); },
         "\"240229235958Z\""},
        {"GeneralizedTime", [](KivGlobal* w) { return kivGeneralizedTimeToText(w, &kTime); },
         "\"20240229235958.007Z\""},
        {"int64", [](KivGlobal* w) { return kivInt64ToText(w, -12); }, "-12"},
        {"uint64", [](KivGlobal* w) { return kivUInt64ToText(w, 12); }, "12"},
        {"wide", [](KivGlobal* w) { return kivWideCharStringToText(w, "a\x01", 2, 1); },
         "{\"a\", {0, 0, 0, 1}}"},
        {"quote chars", [](KivGlobal* w) { return kivQuoteChars(w, "ab", 2); }, "\"ab\""},
        {"quote text", [](KivGlobal* w) { return kivQuoteCString(w, "ab"); }, "\"ab\""},
        {"binary REAL", [](KivGlobal* w) { return kivBinaryRealToText(w, 0.5); },
         "{ mantissa 1, base 2, exponent -1 }"},
        {"decimal REAL", [](KivGlobal* w) { return kivDecimalRealToText(w, "2.5"); }, "25E-1"},
    };
}

}  // namespace fenk::test

#endif
