// The character string printers at every width, with and without a limit.
// Checks what holds for any data: the to-text form equals the uncut print,
// a limited print stays within a small multiple of its limit, and the text
// is the only temporary block.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "fenkapi.h"
#include "fuzz_capture.h"
#include "kivapit.h"

namespace {

// 0 stands for the 8-bit printer; the others are unit widths.
constexpr uint16_t kWidths[] = {0, 1, 2, 4, 3, 8};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static FuzzCapture capture;
    KivGlobal* world = &capture.world;
    if (size < 2) return 0;
    uint16_t width = kWidths[data[0] % (sizeof kWidths / sizeof kWidths[0])];
    int64_t limit = data[1];
    // A private copy, so that reading past the data is caught.
    std::string chars(reinterpret_cast<const char*>(data + 2), size - 2);

    world->printLimit = limit;
    std::string limited;
    std::string whole;
    if (width == 0) {
        kivPrintCharString(world, chars.data(), static_cast<uint32_t>(chars.size()));
        limited = capture.take();
        world->printLimit = 0;
        kivPrintCharString(world, chars.data(), static_cast<uint32_t>(chars.size()));
        whole = capture.take();
    } else {
        auto units = static_cast<int32_t>(chars.size() / width);
        kivPrintWideCharString(world, chars.data(), units, width);
        limited = capture.take();
        world->printLimit = 0;
        kivPrintWideCharString(world, chars.data(), units, width);
        whole = capture.take();
        char* text = kivWideCharStringToText(world, chars.data(), units, width);
        if (!text || whole != text) std::abort();
        kivFreeText(world, text);
        if (world->tempChunks) std::abort();
    }
    if (limit == 0 && limited != whole) std::abort();
    if (limit != 0 && limited.size() > static_cast<size_t>(2 * limit + 16)) std::abort();
    if (limited.size() > whole.size() + 5) std::abort();
    return 0;
}
