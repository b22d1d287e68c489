// Runs the canonical-form check of time texts on arbitrary input inside a
// jump frame: it either passes or raises message 277 (code 5) or 73 (12).
// A text that passes must already be its own normal form under canonical
// rules, up to the time-difference minutes that the check also forbids.
#include <csetjmp>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "fenkapi.h"
#include "kivapit.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static KivGlobal world;
    static bool made = kivCompanionInitWorld(&world, nullptr) == 0;
    if (!made) return 0;
    std::string text(reinterpret_cast<const char*>(data), size);
    text.resize(std::strlen(text.c_str()));
    world.messageOut = world.messageText;
    world.errorMode = 3;
    world.encodingRules = 3;

    jmp_buf frame;
    world.jumpBuffer = &frame;
    const int code = setjmp(frame);
    world.jumpBuffer = nullptr;
    if (code != 0) {
        if (code == 5 && std::strncmp(world.messageText, "D0330E: ", 8) != 0) std::abort();
        if (code == 12 && std::strncmp(world.messageText, "D0012S: ", 8) != 0) std::abort();
        if (code != 5 && code != 12) std::abort();
        return 0;
    }
    world.jumpBuffer = &frame;
    const int32_t rc = kivCheckTimeCanonicalForm(&world, text.c_str());
    world.jumpBuffer = nullptr;
    if (rc != 0) std::abort();

    // A passing text has a normal form that denotes the same value.
    char* normal = nullptr;
    if (kivNormalizeTimeText(&world, text.c_str(), &normal) != 0) std::abort();
    if (kivTimeTextsDiffer(&world, text.c_str(), normal) != 0) std::abort();
    kivReleaseThroughTable(&world, normal);
    return 0;
}
