// Raises arbitrary messages with arbitrary arguments, PDU names, component
// paths and XML input, and checks what holds whatever the input: the text
// stays within the message area, ends with a full stop and a newline, and
// the jump carries the code (or the index in silent mode).
#include <csetjmp>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "fenkapi.h"
#include "kivapit.h"

namespace {

struct Input {
    const uint8_t* data;
    size_t size;

    uint8_t byte() {
        if (!size) return 0;
        --size;
        return *data++;
    }
    uint32_t word() {
        uint32_t v = 0;
        for (int i = 0; i < 4; ++i) v = v << 8 | byte();
        return v;
    }
    // The next piece of text, up to a zero octet or the end.
    const char* text(char (&out)[600]) {
        size_t n = 0;
        while (size && *data && n + 1 < sizeof out) out[n++] = static_cast<char>(byte());
        byte();
        out[n] = '\0';
        return out;
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static KivGlobal world;
    static bool made = kivCompanionInitWorld(&world, nullptr) == 0;
    if (!made) std::abort();
    Input in{data, size};
    const uint8_t how = in.byte();
    const int32_t index = static_cast<int32_t>(in.byte() % 2 ? in.byte() : in.byte() + 256) % 285;
    const uint64_t number = uint64_t{in.word()} << 32 | in.word();
    world.errorMode = in.byte() % 8;
    world.encodingRules = in.byte() % 9;
    world.errorPduNumber = static_cast<int8_t>(in.byte());
    world.messageOut = (how & 0x80) ? nullptr : world.messageText;

    static char argument[600], name[600], altName[600], xml[600], names[4][600], types[4][600];
    in.text(argument);
    KivPduDescriptor pdu{in.text(name), in.text(altName)};
    world.errorPduInfo = (how & 0x40) ? &pdu : nullptr;
    KivComponentDescriptor descriptors[4];
    KivComponentFrame frames[4];
    const int depth = in.byte() % 5;
    for (int i = 0; i < depth; ++i) {
        descriptors[i] = {in.text(names[i]), in.text(types[i]), in.byte() % 24u};
        frames[i] = {i + 1 < depth ? &frames[i + 1] : nullptr, &descriptors[i],
                     static_cast<int32_t>(in.word())};
    }
    world.errorPath = depth ? &frames[0] : nullptr;
    const char* text = in.text(xml);
    const void* decoderState[2] = {nullptr, text};
    world.privateState->xmlDecoderState = decoderState;
    const size_t xmlLength = std::strlen(text);
    world.decodeInput = text + (xmlLength ? number % (xmlLength + 1) : 0);
    world.decodeInputLength = static_cast<int32_t>(xmlLength);
    if (world.encodingRules == 8) world.decodeInput = text;

    jmp_buf frame;
    world.jumpBuffer = &frame;
    volatile int mode = world.errorMode;
    int value = setjmp(frame);
    if (value == 0) {
        switch (how & 3) {
            case 0: kivRaise(&world, index, static_cast<uint32_t>(number));
            case 1: kivRaiseWide(&world, index, number);
            case 2: kivRaiseText(&world, index, argument);
            default: kivRaiseData(&world, index, argument, static_cast<uint32_t>(std::strlen(argument)));
        }
    }
    kivFreeTempChains(&world);
    if (mode == 6) {
        if (value != (index ? index : 1)) std::abort();
        return 0;
    }
    if (value != (world.errorCode ? world.errorCode : 1)) std::abort();
    if (world.messageOut) {
        size_t length = std::strlen(world.messageText);
        if (length > 512 || length < 3 || std::strcmp(world.messageText + length - 2, ".\n") != 0)
            std::abort();
    }
    return 0;
}
