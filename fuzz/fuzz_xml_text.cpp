// The XML text printer over arbitrary text in both layouts. The text is
// copied into a buffer of exactly its length, so any read past it is caught.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "fenkapi.h"
#include "kivapit.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static KivGlobal world;
    static bool made = [] {
        if (kivCompanionInitWorld(&world, nullptr) != 0) return false;
        world.outputStream = std::fopen("/dev/null", "w");
        return world.outputStream != nullptr;
    }();
    if (!made || size == 0) return 0;
    auto* text = static_cast<char*>(std::malloc(size));
    std::memcpy(text, data, size);
    kivPrintXmlText(&world, text + 1, static_cast<int32_t>(size - 1), data[0] & 1);
    std::free(text);
    return 0;
}
