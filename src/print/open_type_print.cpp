// Open-type values: the decoded value through the control table's print
// routine (slot 22, nested), else the encoding as an octet string.
#include "diag/diag_slots.h"
#include "print/print_sink.h"
#include "print/print_slots.h"

void kivPrintOpenType(KivGlobal* world, const KivOpenType* value) {
    if (value->decoded && value->pduNum != 0) {
        // A PDU number below 1 tells slot 22 to print inside the running
        // print, without an error frame of its own; printNesting says so too.
        uint32_t nesting = world->printNesting;
        world->printNesting = nesting | 1u;
        int32_t result = kivDisplayPdu(world, -value->pduNum, value->decoded);
        world->printNesting = nesting;
        if (result != 0) kivCompanionPrint(world, "<error>");
    } else if (value->encoded) {
        kivPrintOctetString(world, value->encoded, static_cast<int32_t>(value->length));
    } else {
        kivCompanionPrint(world, "<unknown>");
    }
}
