// Value constructors and copies. A constructor that cannot get its memory
// answers null; a copy answers 8 from its guarded operation, or raises 8
// when called on its own outside one.
#include <array>
#include <cstddef>
#include <cstring>

#include "catalog.h"
#include "fault_plan.h"
#include "sweep.h"

namespace fenk::test {
namespace {

constexpr uint8_t kOctets[] = {1, 2, 3, 4};
constexpr uint16_t kUnits[] = {0x41, 0x42};
constexpr uint32_t kWideUnits[] = {0x10FFFF, 0x41};

// One block: checks the first octets and gives the block back.
Outcome single(KivGlobal* w, void* made, const void* expected, size_t size) {
    if (!made) return failed(0);
    const bool same = std::memcmp(made, expected, size) == 0;
    kivFreeBlock(w, made);
    return same ? done() : failed(kWrongResult);
}

// A record with its data block: checks the data and gives both back.
Outcome withData(KivGlobal* w, KivLengthData* made, uint32_t length, const void* data,
                 size_t size) {
    if (!made) return failed(0);
    const bool same = made->length == length && std::memcmp(made->data, data, size) == 0;
    kivFreeBlock(w, made->data);
    kivFreeBlock(w, made);
    return same ? done() : failed(kWrongResult);
}

bool sameAsSample(KivGlobal* w, const void* value) {
    pauseFaults();
    const bool same = kivCompareValue(w, CATALOG_PDU_ENTRY, catalogSampleEntry(), value) == 0;
    resumeFaults();
    return same;
}

// A record holding a copy of the catalog's sample value at decodedAt.
Outcome withValue(KivGlobal* w, void* made, size_t decodedAt) {
    if (!made) return failed(0);
    void* value = *reinterpret_cast<void**>(static_cast<uint8_t*>(made) + decodedAt);
    const bool same = sameAsSample(w, value);
    kivReleasePdu(w, CATALOG_PDU_ENTRY, value);
    kivFreeBlock(w, made);
    return same ? done() : failed(kWrongResult);
}

constexpr WorldKind P = WorldKind::plain;
constexpr WorldKind C = WorldKind::catalog;

#define NEW_SINGLE(name, call, expected, size)                                   \
    {"constructors", name, P, Fails::null, 0, [](KivGlobal* w) {                 \
         static const auto value = expected;                                     \
         return single(w, call, &value, size);                                   \
     }}
#define NEW_DATA(name, call, length, data, size)                                  \
    {"constructors", name, P, Fails::null, 0, [](KivGlobal* w) {                  \
         return withData(w, reinterpret_cast<KivLengthData*>(call), length, data, size); \
     }}

const ServiceGroup group({
    NEW_SINGLE("8-bit value (251)", kivNewValue8a(w, 7), uint8_t{7}, 1),
    NEW_SINGLE("16-bit value (253)", kivNewValue16a(w, 700), uint16_t{700}, 2),
    NEW_SINGLE("32-bit value (255)", kivNewValue32a(w, 70000), uint32_t{70000}, 4),
    NEW_SINGLE("64-bit value (259)", kivNewValue64a(w, 1ull << 40), uint64_t{1ull << 40}, 8),
    NEW_SINGLE("float (261)", kivNewFloat(w, 0.5f), 0.5f, 4),
    NEW_SINGLE("double (262)", kivNewDouble(w, 0.25), 0.25, 8),
    NEW_SINGLE("text (270)", kivNewText(w, "abc"), (std::array<char, 4>{'a', 'b', 'c', 0}), 4),
    NEW_DATA("octets (273)", kivNewOctets(w, kOctets, 4), 4, kOctets, 4),
    NEW_DATA("octets from text (274)", kivNewOctetsFromText(w, "abc"), 3, "abc", 3),
    NEW_DATA("16-bit string (271)", kivNewString16(w, kUnits, 2), 2, kUnits, 4),
    NEW_DATA("32-bit string (272)", kivNewString32(w, kWideUnits, 2), 2, kWideUnits, 8),
    NEW_DATA("bits (275)", kivNewBits(w, kOctets, 20), 20, kOctets, 2),
    NEW_DATA("array copy (277)", kivNewArrayCopy(w, kOctets, 2, 2), 2, kOctets, 4),
    {"constructors", "open type, encoded (278)", P, Fails::null, 0,
     [](KivGlobal* w) {
         KivOpenType* made = kivNewOpenTypeEncoded(w, kOctets, 4, 24);
         if (!made) return failed(0);
         const bool same = made->length == 4 && std::memcmp(made->encoded, kOctets, 4) == 0;
         kivFreeBlock(w, made->encoded);
         kivFreeBlock(w, made);
         return same ? done() : failed(kWrongResult);
     }},
    {"constructors", "containing octets (281)", P, Fails::null, 0,
     [](KivGlobal* w) {
         KivContaining* made = kivNewContainingOctets(w, kOctets, 4);
         if (!made) return failed(0);
         const bool same = made->length == 4 && std::memcmp(made->encoded, kOctets, 4) == 0;
         kivFreeBlock(w, made->encoded);
         kivFreeBlock(w, made);
         return same ? done() : failed(kWrongResult);
     }},
    {"constructors", "open type, decoded (279)", C, Fails::null, 0,
     [](KivGlobal* w) {
         return withValue(w, kivNewOpenTypeDecoded(w, catalogSampleEntry(), CATALOG_PDU_ENTRY, 24),
                          offsetof(KivOpenType, decoded));
     }},
    {"constructors", "containing a value (282)", C, Fails::null, 0,
     [](KivGlobal* w) {
         return withValue(w, kivNewContainingValue(w, catalogSampleEntry(), CATALOG_PDU_ENTRY),
                          offsetof(KivContaining, decoded));
     }},
    {"constructors", "GeneralizedTime record (267)", P, Fails::null, 0,
     [](KivGlobal* w) {
         KivTimeStruct* t = kivNewGeneralizedTimeStruct(w, "20240229120000.5Z");
         if (!t) return failed(0);
         const bool same = t->day == 29 && t->milliseconds == 500;
         kivRelease(w, t);
         return same ? done() : failed(kWrongResult);
     }},

    {"copies", "value copy (160)", C, Fails::answers, 8,
     [](KivGlobal* w) {
         void* copy = nullptr;
         uint32_t code = kivCopyValue(w, CATALOG_PDU_ENTRY, catalogSampleEntry(), &copy);
         if (code != 0) return failed(copy ? kWrongResult : static_cast<int>(code));
         const bool same = sameAsSample(w, copy);
         kivReleasePdu(w, CATALOG_PDU_ENTRY, copy);
         return same ? done() : failed(kWrongResult);
     }},
    {"copies", "text copy (164)", P, Fails::raises, 8,
     [](KivGlobal* w) { return single(w, kivCopyText(w, "copy me"), "copy me", 8); }},
    {"copies", "length and data (163)", P, Fails::raises, 8,
     [](KivGlobal* w) {
         static const KivLengthData source{4, const_cast<uint8_t*>(kOctets)};
         KivLengthData copy = source;  // the caller copies the length
         kivCopyLengthData(w, &source, &copy, 4, 1);
         const bool same = copy.data != source.data && std::memcmp(copy.data, kOctets, 4) == 0;
         kivFreeBlock(w, copy.data);
         return same ? done() : failed(kWrongResult);
     },
     kivEndOperationMemory, "slot 175"},
    {"copies", "linked list (161)", P, Fails::raises, 8,
     [](KivGlobal* w) {
         static KivListNode nodes[3] = {{&nodes[1]}, {&nodes[2]}, {nullptr}};
         static KivListNode* const head = nodes;
         KivListNode* copy = nullptr;
         kivCopySinglyLinkedList(w, &head, &copy, sizeof(KivListNode));
         int count = 0;
         while (copy) {
             KivListNode* next = copy->next;
             kivFreeBlock(w, copy);
             copy = next;
             ++count;
         }
         return count == 3 ? done() : failed(kWrongResult);
     },
     kivEndOperationMemory, "slot 175"},
});

}  // namespace
}  // namespace fenk::test
