#include "alloc_hooks.h"

#include <cstdlib>
#include <mutex>
#include <unordered_map>

namespace fenk::test {
namespace {

// Hooks get only the world, so each world's counter is looked up here.
std::mutex countersLock;
std::unordered_map<const KivGlobal*, AllocCounter*> counters;

AllocCounter* counterOf(const KivGlobal* world) {
    std::lock_guard<std::mutex> guard(countersLock);
    auto it = counters.find(world);
    return it == counters.end() ? nullptr : it->second;
}

bool attemptFails(AllocCounter* c) { return ++c->calls == c->failAt; }

void* countingAlloc(KivGlobal* world, size_t size) {
    AllocCounter* c = counterOf(world);
    if (attemptFails(c)) return nullptr;
    void* block = std::malloc(size ? size : 1);
    if (block) ++c->live;
    return block;
}

void* countingRealloc(KivGlobal* world, void* block, size_t size) {
    AllocCounter* c = counterOf(world);
    if (attemptFails(c)) return nullptr;
    void* moved = std::realloc(block, size ? size : 1);
    if (moved && !block) ++c->live;
    return moved;
}

void countingFree(KivGlobal* world, void* block) {
    if (!block) return;
    AllocCounter* c = counterOf(world);
    --c->live;
    ++c->frees;
    c->freeOrder.push_back(block);
    std::free(block);
}

}  // namespace

void installCountingHooks(KivGlobal* world, AllocCounter* counter) {
    {
        std::lock_guard<std::mutex> guard(countersLock);
        counters[world] = counter;
    }
    world->allocHook = &countingAlloc;
    world->reallocHook = &countingRealloc;
    world->freeHook = &countingFree;
}

}  // namespace fenk::test
