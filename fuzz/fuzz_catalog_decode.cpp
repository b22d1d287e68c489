// The catalog's BER/DER decoder over arbitrary octets (the first octet picks
// the rules). A value that decodes is printed, re-encoded, copied, compared
// and released; the sanitizers catch bad reads and blocks left behind.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "catalog.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static KivGlobal world;
    static bool made = [] {
        if (catalogInitWorld(&world) != 0) return false;
        world.outputStream = std::fopen("/dev/null", "w");
        return world.outputStream != nullptr;
    }();
    if (!made || size == 0) return 0;
    kivSelectRules(&world, (data[0] & 1) ? 3 : 0);
    auto* octets = static_cast<uint8_t*>(std::malloc(size - 1 ? size - 1 : 1));
    std::memcpy(octets, data + 1, size - 1);
    KivBuffer in{static_cast<uint32_t>(size - 1), octets};
    int32_t pdu = CATALOG_PDU_ENTRY;
    void* value = nullptr;
    if (kivDecodePdu(&world, &pdu, &in, &value) == 0) {
        kivDisplayPdu(&world, pdu, value);
        KivBuffer out{0, nullptr};
        if (kivEncodePdu(&world, pdu, value, &out) == 0) kivFreeBlock(&world, out.value);
        void* copy = nullptr;
        if (kivCopyValue(&world, CATALOG_PDU_ENTRY, value, &copy) == 0) {
            if (kivCompareValue(&world, CATALOG_PDU_ENTRY, value, copy) != 0) std::abort();
            kivReleasePdu(&world, pdu, copy);
        }
        kivReleasePdu(&world, pdu, value);
    }
    std::free(octets);
    return 0;
}
