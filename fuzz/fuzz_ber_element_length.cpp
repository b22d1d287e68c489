// The BER element length over arbitrary octets: the input is copied into a
// buffer of exactly its size, so any read past the given length is caught.
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "fenkapi.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    auto* copy = static_cast<uint8_t*>(std::malloc(size ? size : 1));
    if (size) std::memcpy(copy, data, size);
    KivBuffer buffer{static_cast<uint32_t>(size), copy};
    uint32_t length = kivBerElementLength(&buffer);
    // A nonzero answer needs a whole header: a tag and a length octet.
    if (length != 0 && size < 2) std::abort();
    std::free(copy);
    return 0;
}
