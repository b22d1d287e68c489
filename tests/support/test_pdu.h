// A PDU layout with its value routines written the way generated code
// writes them: the copier and comparator call the library's helpers for
// every string, bit string, integer, list and open type. Header-only, so
// that benchmarks can use the same value without the test fixtures.
#ifndef FENK_TEST_TEST_PDU_H
#define FENK_TEST_TEST_PDU_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "fenkapi.h"

namespace fenk::test {

enum : uint32_t { kTestPdu = 1, kTestInner = 2 };

// SEQUENCE OF Item, singly linked.
struct TestItem {
    TestItem* next;
    int64_t number;
    int32_t tag;
};
constexpr int32_t kTestItemElement = offsetof(TestItem, tag) + sizeof(int32_t) - sizeof(void*);

// SEQUENCE OF Event, doubly linked and counted.
struct TestEvent {
    KivDoubleNode link;
    uint32_t code;
};

// PDU 2, carried by the open type.
struct TestInner {
    int32_t value;
    char* note;  // null when absent
};

// PDU 1.
struct TestPdu {
    int32_t version;
    KivLengthData octets;    // OCTET STRING
    KivShortLengthData bmp;  // BMPString: 16-bit length in 2-octet units
    KivLengthData flags;     // BIT STRING: length in bits
    char* name;              // VisibleString, null when absent
    KivLengthData serial;    // INTEGER of any length, signed
    TestItem* items;
    KivCountedList events;
    KivOpenType extra;
};

inline int32_t copyTestValue(KivGlobal* w, uint32_t pduNum, const void* source, void** out) {
    switch (pduNum) {
        case kTestPdu: {
            const auto* s = static_cast<const TestPdu*>(source);
            auto* d = static_cast<TestPdu*>(kivAllocExact(w, sizeof(TestPdu)));
            *out = d;
            *d = *s;
            kivCopyLengthData(w, &s->octets, &d->octets, 4, 1);
            kivCopyLengthData(w, &s->bmp, &d->bmp, KIV_LENGTH_WIDTH_16, 2);
            kivCopyLengthData(w, &s->flags, &d->flags, 4, KIV_UNIT_BITS);
            d->name = s->name ? kivCopyText(w, s->name) : nullptr;
            kivCopyLengthData(w, &s->serial, &d->serial, 4, 1);
            kivCopySinglyLinkedList(w, reinterpret_cast<KivListNode* const*>(&s->items),
                                    reinterpret_cast<KivListNode**>(&d->items), sizeof(TestItem));
            kivCopyCountedList(w, &s->events.first, &d->events, sizeof(TestEvent));
            kivCopyOpenType(w, &s->extra, &d->extra);
            return 0;
        }
        case kTestInner: {
            const auto* s = static_cast<const TestInner*>(source);
            auto* d = static_cast<TestInner*>(kivAllocExact(w, sizeof(TestInner)));
            *out = d;
            *d = *s;
            d->note = s->note ? kivCopyText(w, s->note) : nullptr;
            return 0;
        }
        default:
            kivRaise(w, 3, pduNum);  // "0003S: PDU number not in range: "
    }
}

inline bool textsDiffer(const char* a, const char* b) {
    if (!a || !b) return a != b;
    return std::strcmp(a, b) != 0;
}

inline bool eventsDiffer(const KivCountedList& a, const KivCountedList& b) {
    if (a.count != b.count) return true;
    const KivDoubleNode* x = a.first;
    const KivDoubleNode* y = b.first;
    for (; x && y; x = x->next, y = y->next)
        if (reinterpret_cast<const TestEvent*>(x)->code != reinterpret_cast<const TestEvent*>(y)->code)
            return true;
    return x || y;
}

inline int32_t compareTestValues(KivGlobal* w, uint32_t pduNum, const void* first,
                                 const void* second) {
    switch (pduNum) {
        case kTestPdu: {
            const auto* a = static_cast<const TestPdu*>(first);
            const auto* b = static_cast<const TestPdu*>(second);
            if (a->version != b->version) return 1;
            if (kivLengthDataDiffer(&a->octets, &b->octets, 4, 1)) return 1;
            if (kivLengthDataDiffer(&a->bmp, &b->bmp, KIV_LENGTH_WIDTH_16, 2)) return 1;
            if (kivLengthDataDiffer(&a->flags, &b->flags, 4, KIV_UNIT_BITS)) return 1;
            if (textsDiffer(a->name, b->name)) return 1;
            if (kivHugeIntegersDiffer(&a->serial, &b->serial, 4, 1)) return 1;
            if (kivListsDiffer(reinterpret_cast<KivListNode* const*>(&a->items),
                               reinterpret_cast<KivListNode* const*>(&b->items), kTestItemElement))
                return 1;
            if (eventsDiffer(a->events, b->events)) return 1;
            return kivOpenTypesDiffer(w, &a->extra, &b->extra);
        }
        case kTestInner: {
            const auto* a = static_cast<const TestInner*>(first);
            const auto* b = static_cast<const TestInner*>(second);
            return a->value != b->value || textsDiffer(a->note, b->note);
        }
        default:
            kivRaise(w, 3, pduNum);
    }
}

inline const KivValueRoutines testValueRoutines{nullptr, &copyTestValue, &compareTestValues};

// Gives back every block of a copy made through the hooks.
inline void freeTestValue(KivGlobal* w, uint32_t pduNum, void* value) {
    if (!value) return;
    if (pduNum == kTestInner) {
        auto* v = static_cast<TestInner*>(value);
        kivFreeBlock(w, v->note);
        kivFreeBlock(w, v);
        return;
    }
    auto* v = static_cast<TestPdu*>(value);
    kivFreeBlock(w, v->octets.data);
    kivFreeBlock(w, v->bmp.data);
    kivFreeBlock(w, v->flags.data);
    kivFreeBlock(w, v->name);
    kivFreeBlock(w, v->serial.data);
    for (TestItem* item = v->items; item;) {
        TestItem* next = item->next;
        kivFreeBlock(w, item);
        item = next;
    }
    for (KivDoubleNode* event = v->events.first; event;) {
        KivDoubleNode* next = event->next;
        kivFreeBlock(w, event);
        event = next;
    }
    kivFreeBlock(w, v->extra.encoded);
    freeTestValue(w, static_cast<uint32_t>(v->extra.pduNum), v->extra.decoded);
    kivFreeBlock(w, v);
}

// A source value with every field present, owning its storage.
class TestPduSource {
public:
    explicit TestPduSource(size_t itemCount = 3, size_t eventCount = 3)
        : items_(itemCount), events_(eventCount) {
        for (size_t i = 0; i < itemCount; ++i)
            items_[i] = {i + 1 < itemCount ? &items_[i + 1] : nullptr,
                         static_cast<int64_t>(i) * 1000 - 7, static_cast<int32_t>(i % 5)};
        for (size_t i = 0; i < eventCount; ++i)
            events_[i] = {{i + 1 < eventCount ? &events_[i + 1].link : nullptr,
                           i ? &events_[i - 1].link : nullptr},
                          static_cast<uint32_t>(100 + i)};
        pdu_ = {3,
                {5, octets_},
                {4, bmp_},
                {10, flags_},
                name_,
                {sizeof serial_, serial_},
                itemCount ? items_.data() : nullptr,
                {eventCount ? &events_.front().link : nullptr,
                 eventCount ? &events_.back().link : nullptr, static_cast<uint32_t>(eventCount)},
                {kTestInner, sizeof encoded_, encoded_, &inner_}};
    }
    TestPduSource(const TestPduSource&) = delete;
    TestPduSource& operator=(const TestPduSource&) = delete;

    TestPdu* get() { return &pdu_; }

private:
    uint8_t octets_[5] = {0x01, 0x02, 0x03, 0x04, 0x05};
    char16_t bmp_[4] = {u'F', u'e', u'n', u'k'};
    uint8_t flags_[2] = {0xA5, 0xC0};  // 10 bits
    char name_[7] = "sample";
    uint8_t serial_[9] = {0x00, 0x9F, 0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC, 0xDE};
    uint8_t encoded_[5] = {0x30, 0x03, 0x02, 0x01, 0x07};
    char note_[11] = "inner note";
    std::vector<TestItem> items_;
    std::vector<TestEvent> events_;
    TestInner inner_{7, note_};
    TestPdu pdu_{};
};

}  // namespace fenk::test

#endif
