// A world made the way an application makes one, with its output captured
// in memory.
#ifndef FENK_TEST_WORLD_H
#define FENK_TEST_WORLD_H

#include <string>

#include "fenkapi.h"
#include "kivapit.h"

namespace fenk::test {

class TestWorld {
public:
    explicit TestWorld(void* controlTable = nullptr);
    ~TestWorld();
    TestWorld(const TestWorld&) = delete;
    TestWorld& operator=(const TestWorld&) = delete;

    KivGlobal* get() { return &world_; }
    KivGlobal* operator->() { return &world_; }
    KivPrivate* priv() { return world_.privateState; }

    // Everything written to the world's output stream so far.
    std::string output();
    void clearOutput();

private:
    KivGlobal world_;
    char* buffer_ = nullptr;
    size_t size_ = 0;
    FILE* stream_ = nullptr;
};

}  // namespace fenk::test

#endif
