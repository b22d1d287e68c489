// ENUMERATED values by the generated enumerator table.
#include "print/print_sink.h"
#include "print/print_slots.h"

void kivPrintEnumerated(KivGlobal* world, uint64_t value, const KivEnumerator* table,
                        int32_t count) {
    for (int32_t i = 0; i < count; ++i) {
        if (table[i].value == value) {
            kivCompanionPrint(world, "%s", table[i].identifier);
            return;
        }
    }
    kivCompanionPrint(world, "kiv_unknown_enumerator");
}
