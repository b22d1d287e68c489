// The application's temporary buffer (slot 44): kept 8-aligned, in whole
// 16-byte units, so temporary and scratch memory can be carved from both ends.
#include "api/api_slots.h"

int32_t kivStoreWorkBuffer(KivGlobal* world, const KivWorkBuffer* buffer) {
    if (!world) return 6;
    KivPrivate* p = world->privateState;
    if (!buffer) {
        p->userBufferLength = 0;
        p->userBufferAddress = nullptr;
        return 0;
    }
    uintptr_t address = reinterpret_cast<uintptr_t>(buffer->address);
    int64_t skip = static_cast<int64_t>((8 - (address & 7)) & 7);
    int64_t length = buffer->length;
    if (length <= skip) return 1;
    int64_t usable = (length - skip) & ~int64_t{15};
    if (usable < 16) return 1;
    p->userBufferLength = static_cast<uint32_t>(usable);
    p->userBufferAddress = reinterpret_cast<uint8_t*>(address + static_cast<uintptr_t>(skip));
    return 0;
}
