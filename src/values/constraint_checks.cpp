// Membership checks that generated constraint checkers call: ENUMERATED
// values and permitted alphabets. A failed check raises and does not return.
#include "api/table_memory.h"
#include "diag/diag_slots.h"
#include "values/values_slots.h"

namespace {

constexpr int32_t kNotEnumerated = 36;   // "0071S: Value not among the ENUMERATED: "
constexpr int32_t kBadCharacter = 29;    // "0064S: Permitted alphabet constraint violated, ..."
constexpr uint8_t kNotInAlphabet = 255;

// 16- and 32-bit characters: by the index table over the 256 codes from the
// lowest on, or by the alphabet's value set.
template <class Char>
void checkWide(KivGlobal* world, const Char* chars, uint32_t count,
               const KivPermittedAlphabet* alphabet) {
    if (alphabet->size == KIV_ALPHABET_VALUE_SET) {
        auto* inSet = KIV_TABLE_CALL(world, KivValueInSetFn, kivSlotValueInSet);
        for (uint32_t i = 0; i < count; ++i)
            if (!inSet(alphabet->valueSet, chars[i])) kivRaise(world, kBadCharacter, chars[i]);
        return;
    }
    const bool indexed = alphabet->size < 256;
    for (uint32_t i = 0; i < count; ++i) {
        const uint32_t code = chars[i];
        const bool inRange = code >= alphabet->lowest && code - alphabet->lowest <= 255;
        if (!inRange || (indexed && alphabet->indexTable[code - alphabet->lowest] == kNotInAlphabet))
            kivRaise(world, kBadCharacter, code);
    }
}

}  // namespace

const uint32_t* kivFindEnumerated(KivGlobal* world, uint32_t value, const KivEnumeratedList* list) {
    for (int32_t i = 0; list && i < list->count; ++i)
        if (list->values[i] == value) return &list->values[i];
    kivRaise(world, kNotEnumerated, value);
}

const uint32_t* kivFindEnumeratedToo(KivGlobal* world, uint32_t value,
                                     const KivEnumeratedList* list) {
    return kivFindEnumerated(world, value, list);
}

void kivCheckAlphabet8(KivGlobal* world, const uint8_t* chars, uint32_t count,
                       const KivPermittedAlphabet* alphabet) {
    for (uint32_t i = 0; i < count; ++i)
        if (chars[i] > 127 || alphabet->indexTable[chars[i]] == kNotInAlphabet)
            kivRaise(world, kBadCharacter, chars[i]);
}

void kivCheckAlphabet16(KivGlobal* world, const uint16_t* chars, uint32_t count,
                        const KivPermittedAlphabet* alphabet) {
    checkWide(world, chars, count, alphabet);
}

void kivCheckAlphabet32(KivGlobal* world, const uint32_t* chars, uint32_t count,
                        const KivPermittedAlphabet* alphabet) {
    checkWide(world, chars, count, alphabet);
}
