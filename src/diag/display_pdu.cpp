// Slot 22: a PDU value printed in value notation by the control table's
// print routine, as a guarded operation.
#include "diag/diag_slots.h"
#include "diag/guarded_entry.h"

namespace {

constexpr int32_t kNullControlTable = 37;  // "0073S: Attempt made to pass a NULL control table pointer"
constexpr int32_t kNullRoutine = 38;       // "0074S: NULL function pointer in the control table"
constexpr int32_t kVersionMismatch = 5;    // "0007S: Version number of generated encoder/decoder ..."
constexpr int32_t kDecodingMode = 5;

struct PrintRequest {
    KivPrintPduRoutine print;
    int32_t pduNum;
    void* value;
};

int32_t printValue(KivGlobal* world, void* context) {
    const auto* request = static_cast<const PrintRequest*>(context);
    return request->print(world, request->pduNum, request->value);
}

// The control table must be there, have a print routine and be of the
// version this library reads. A refusal is recorded in messageOut as the
// caller left it.
int32_t checkControlTable(KivGlobal* world) {
    const KivControlTable* table = world->controlTable;
    if (!table) {
        kivRecordMessage(world, kNullControlTable, 0);
        return 20;
    }
    if (!table->printPdu) {
        kivRecordMessage(world, kNullRoutine, 0);
        return 21;
    }
    if (table->version != KIV_CONTROL_TABLE_VERSION) {
        kivRecordMessage(world, kVersionMismatch, KIV_CONTROL_TABLE_VERSION);
        return 7;
    }
    return 0;
}

}  // namespace

// A PDU number below 1 is a value printer's nested request for an open-type
// value (its type index passed negated); it is honoured only while the
// printer says so through bit 0 of printNesting, and runs unguarded inside
// the guarded print already running. The nesting test comes before the
// control-table checks, which apply to both kinds of request.
int32_t kivDisplayPdu(KivGlobal* world, int32_t pduNum, void* value) {
    if (!world || !value) return 6;
    if (pduNum < 1 && !(world->printNesting & 1)) return 3;
    if (int32_t refused = checkControlTable(world)) return refused;
    if (pduNum < 1) return world->controlTable->printPdu(world, pduNum, value);
    world->errorPath = nullptr;
    world->printIndent = 0;
    world->errorMode = kDecodingMode;
    PrintRequest request{world->controlTable->printPdu, pduNum, value};
    return fenk::runGuarded(world, {&printValue, nullptr, &request});
}
