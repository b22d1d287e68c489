// Deep copy of a PDU with a list of 1 000 elements: the guarded copy with
// recorded allocation, and the same copy drawn from a memory handle, against
// a baseline that copies the same layout with plain malloc. Every round
// also gives the copy back (free of each block; destroying the handle).
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>

#include "../tests/support/test_pdu.h"
#include "kivapit.h"

using namespace fenk::test;

namespace {

constexpr size_t kItems = 1000;

TestPduSource& sample() {
    static TestPduSource source(kItems, 3);
    return source;
}

void* duplicate(const void* data, size_t size) {
    if (!size) return nullptr;
    void* copy = std::malloc(size);
    std::memcpy(copy, data, size);
    return copy;
}

// The same layout copied by hand with malloc: no recording, no guard.
TestInner* mallocCopyInner(const TestInner* s) {
    auto* d = static_cast<TestInner*>(std::malloc(sizeof *s));
    *d = *s;
    if (s->note) d->note = static_cast<char*>(duplicate(s->note, std::strlen(s->note) + 1));
    return d;
}

TestPdu* mallocCopy(const TestPdu* s) {
    auto* d = static_cast<TestPdu*>(std::malloc(sizeof *s));
    *d = *s;
    d->octets.data = duplicate(s->octets.data, s->octets.length);
    d->bmp.data = duplicate(s->bmp.data, 2u * s->bmp.length);
    d->flags.data = duplicate(s->flags.data, (s->flags.length + 7) / 8);
    if (s->name) d->name = static_cast<char*>(duplicate(s->name, std::strlen(s->name) + 1));
    d->serial.data = duplicate(s->serial.data, s->serial.length);
    TestItem** tail = &d->items;
    for (const TestItem* item = s->items; item; item = item->next) {
        *tail = static_cast<TestItem*>(duplicate(item, sizeof *item));
        tail = &(*tail)->next;
    }
    *tail = nullptr;
    KivDoubleNode* previous = nullptr;
    KivDoubleNode** next = &d->events.first;
    for (const KivDoubleNode* event = s->events.first; event; event = event->next) {
        auto* node = static_cast<KivDoubleNode*>(duplicate(event, sizeof(TestEvent)));
        node->previous = previous;
        *next = previous = node;
        next = &node->next;
    }
    d->events.last = previous;
    d->extra.encoded = static_cast<uint8_t*>(duplicate(s->extra.encoded, s->extra.length));
    d->extra.decoded = mallocCopyInner(static_cast<const TestInner*>(s->extra.decoded));
    return d;
}

void mallocFree(TestPdu* v) {
    std::free(v->octets.data);
    std::free(v->bmp.data);
    std::free(v->flags.data);
    std::free(v->name);
    std::free(v->serial.data);
    for (TestItem* item = v->items; item;) {
        TestItem* next = item->next;
        std::free(item);
        item = next;
    }
    for (KivDoubleNode* event = v->events.first; event;) {
        KivDoubleNode* next = event->next;
        std::free(event);
        event = next;
    }
    std::free(v->extra.encoded);
    auto* inner = static_cast<TestInner*>(v->extra.decoded);
    std::free(inner->note);
    std::free(inner);
    std::free(v);
}

void MallocBaseline(benchmark::State& state) {
    for (auto _ : state) {
        TestPdu* copy = mallocCopy(sample().get());
        benchmark::DoNotOptimize(copy);
        mallocFree(copy);
    }
    state.SetItemsProcessed(state.iterations() * kItems);
}

// A world as the companion makes it: its hooks reach malloc and free.
struct World {
    KivGlobal world;
    World() {
        kivCompanionInitWorld(&world, nullptr);
        kivSetValueRoutines(&world, &testValueRoutines);
    }
    ~World() { kivCompanionEndWorld(&world); }
};

void* libraryCopy(benchmark::State& state, KivGlobal* world) {
    void* copy = nullptr;
    if (kivCopyValue(world, kTestPdu, sample().get(), &copy) != 0) state.SkipWithError("copy");
    return copy;
}

void RecordedCopy(benchmark::State& state) {
    World w;
    for (auto _ : state) freeTestValue(&w.world, kTestPdu, libraryCopy(state, &w.world));
    state.SetItemsProcessed(state.iterations() * kItems);
}

// Each copy is drawn from a memory handle of its own and given back by
// destroying the handle.
void HandleCopy(benchmark::State& state) {
    World w;
    for (auto _ : state) {
        KivMemoryHandle* handle = kivCreateMemoryHandle(&w.world, 1 << 16);
        benchmark::DoNotOptimize(libraryCopy(state, &w.world));
        kivDestroyMemoryHandle(&w.world, handle);
    }
    state.SetItemsProcessed(state.iterations() * kItems);
}

}  // namespace

BENCHMARK(MallocBaseline)->Unit(benchmark::kMicrosecond);
BENCHMARK(RecordedCopy)->Unit(benchmark::kMicrosecond);
BENCHMARK(HandleCopy)->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
