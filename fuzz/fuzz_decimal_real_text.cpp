// Decimal REAL texts through both forms: the print form (rewritten digit by
// digit) and the to-text form (parsed). Checks what holds for any text: the
// printed mantissa never passes 52 characters, the to-text result fits its
// 112 bytes and is either refused or a mantissa and an exponent.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "fenkapi.h"
#include "fuzz_capture.h"
#include "kivapit.h"

namespace {

bool isSpecial(const std::string& text) {
    return text == "PLUS-INFINITY" || text == "MINUS-INFINITY" || text == "NOT-A-NUMBER" ||
           text == "0" || text == "-0";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static FuzzCapture capture;
    KivGlobal* world = &capture.world;
    std::string text(reinterpret_cast<const char*>(data), size);
    // The first octet's low bit chooses the braced base-10 form.
    world->privateState->levelMask = size > 0 && (data[0] & 1) ? 0x100 : 0;

    kivPrintDecimalReal(world, text.c_str());
    std::string printed = capture.take();
    size_t exponent = printed.rfind('E');
    if (!isSpecial(printed) && (exponent == std::string::npos || exponent > 52)) std::abort();

    char* result = kivDecimalRealToText(world, text.c_str());
    if (!result) std::abort();
    std::string made(result);
    bool braced = made.rfind("{mantissa ", 0) == 0 &&
                  made.find(", base 10, exponent ") != std::string::npos && made.back() == '}';
    bool plain = made.find('E') != std::string::npos;
    if (made.size() >= 112) std::abort();
    if (made != "<IMPLEMENTATION LIMIT EXCEEDED>" && !isSpecial(made) && !braced && !plain)
        std::abort();
    kivFreeText(world, result);
    if (world->tempChunks) std::abort();  // the text was the only temporary block
    return 0;
}
