// Classifies, parses and normalises arbitrary time texts under the rules
// chosen by the first byte, and checks what must hold for any input: the
// normal form is idempotent, denotes the same value as the text, and no
// text is left allocated.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "fenkapi.h"
#include "kivapit.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static KivGlobal world;
    static bool made = kivCompanionInitWorld(&world, nullptr) == 0;
    if (!made || size == 0) return 0;
    static constexpr int32_t rules[] = {0, 3, 6, 7};
    world.encodingRules = rules[data[0] % 4];
    std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    text.resize(std::strlen(text.c_str()));

    const int32_t form = kivClassifyTimeText(&world, text.c_str());
    if (form < 0 || form > 9) std::abort();
    char* once = nullptr;
    const int32_t rc = kivNormalizeTimeText(&world, text.c_str(), &once);
    if (rc != 0 && rc != 12) std::abort();
    if (rc == 12) {
        if (once) std::abort();
        return 0;
    }
    if (form == 9 || kivClassifyTimeText(&world, once) != form) std::abort();
    char* twice = nullptr;
    if (kivNormalizeTimeText(&world, once, &twice) != 0 || std::strcmp(once, twice) != 0)
        std::abort();
    if (kivTimeTextsDiffer(&world, text.c_str(), once) != 0) std::abort();
    kivReleaseThroughTable(&world, twice);
    kivReleaseThroughTable(&world, once);
    return 0;
}
