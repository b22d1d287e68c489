// Encode and decode entries: check the arguments and the rules, pick the
// coder pair, and call the coder with the world's flags, restoring them
// afterwards. Argument errors are composed into messageText and returned.
#include <cstring>

#include "api/api_slots.h"
#include "api/rules.h"
#include "diag/compose.h"

namespace {

enum : int32_t {
    kMsgNullArgument = 4,     // code 6
    kMsgNullControl = 37,     // code 20
    kMsgUnknownRules = 51,    // code 22
    kMsgNotLinked = 53,       // code 23, with the rule's name
    kMsgNoCoderSupport = 66,  // code 23, with "DER"
};

constexpr uint32_t kCoderSupportsDer = 0x2;
constexpr uint32_t kFlagUseCallerBuffer = 0x4;

int32_t compose(KivGlobal* world, int32_t index, char side, const void* argument = nullptr) {
    return kivComposeMessage(world, world->messageText, index, side, argument);
}

// The pair for the world's rules, or the composed refusal in *refusal.
const KivCoderPair* pairForCoding(KivGlobal* world, char side, int32_t* refusal) {
    int32_t rules = world->encodingRules;
    const char* name = fenk::ruleName(rules);
    if (!name || rules == kivRulesEcn) {
        *refusal = compose(world, kMsgUnknownRules, side);
        return nullptr;
    }
    // DER needs generated code that supports it, whatever coders exist.
    if (rules == kivRulesDer && !(world->coderFlags & kCoderSupportsDer)) {
        *refusal = compose(world, kMsgNoCoderSupport, side, "DER");
        return nullptr;
    }
    const KivCoderPair* pair = fenk::coderPairOf(world, rules);
    bool present = pair && (side == 'E' ? pair->encoder != nullptr : pair->decoder != nullptr);
    if (!present) {
        *refusal = compose(world, kMsgNotLinked, side, name);
        return nullptr;
    }
    if (!world->controlTable) {
        *refusal = compose(world, kMsgNullControl, side);
        return nullptr;
    }
    return pair;
}

void startCoding(KivGlobal* world) {
    world->messageText[0] = '\0';
    world->messageOut = world->messageText;
}

void copyMessage(KivGlobal* world, char* destination) {
    if (destination && destination != world->messageText)
        std::memcpy(destination, world->messageText, std::strlen(world->messageText) + 1);
}

}  // namespace

int32_t kivEncodePdu(KivGlobal* world, int32_t pduNum, void* value, KivBuffer* buffer) {
    if (!world) return 6;
    if (!value || !buffer) return compose(world, kMsgNullArgument, 'E');
    // Canonical XER pads the caller's buffer with blanks before encoding.
    if (world->encodingRules == kivRulesCxer && buffer->value)
        std::memset(buffer->value, 0x20, buffer->length);
    int32_t refusal = 0;
    const KivCoderPair* pair = pairForCoding(world, 'E', &refusal);
    if (!pair) return refusal;
    startCoding(world);
    uint32_t flags = world->encodingFlags;
    int32_t code = pair->encoder(world, pduNum, value, buffer, flags);
    world->encodingFlags = flags;
    return code;
}

int32_t kivDecodePdu(KivGlobal* world, int32_t* pduNum, KivBuffer* input, void** value) {
    if (!world) return 6;
    if (!input || !input->value || !value) return compose(world, kMsgNullArgument, 'D');
    // A value pointer that already points somewhere means a caller buffer,
    // which needs its length.
    if (*value && world->decodeBufferLength == 0) return compose(world, kMsgNullArgument, 'D');
    int32_t refusal = 0;
    const KivCoderPair* pair = pairForCoding(world, 'D', &refusal);
    if (!pair) return refusal;
    startCoding(world);
    uint32_t flags = world->decodingFlags;
    uint32_t passed = world->encodingRules == kivRulesDer ? flags & ~0x400u : flags;
    int32_t code = pair->decoder(world, pduNum, input, value, passed);
    world->decodingFlags = flags;
    return code;
}

int32_t kivEncodeWithFlags(KivGlobal* world, int32_t pduNum, void* value, uint8_t** address,
                           uint32_t* length, void*, uint32_t flags, char* message) {
    if (!world) return 6;
    world->messageText[0] = '\0';
    int32_t code;
    if (!address || !length) {
        code = compose(world, kMsgNullArgument, 'E');
    } else {
        KivBuffer buffer{0, nullptr};
        if (flags & kFlagUseCallerBuffer) buffer = KivBuffer{*length, *address};
        uint32_t saved = world->encodingFlags;
        world->encodingFlags = flags;
        code = kivEncodePdu(world, pduNum, value, &buffer);
        world->encodingFlags = saved;
        *address = buffer.value;
        *length = buffer.length;
    }
    copyMessage(world, message);
    return code;
}

// The length pointer must always be given; a null one is refused like the
// address and value pointers rather than followed.
int32_t kivDecodeWithFlags(KivGlobal* world, int32_t* pduNum, uint8_t** address,
                           uint32_t* length, void** value, uint32_t* bufferLength, void*,
                           uint32_t flags, char* message) {
    if (!world) return 6;
    world->messageText[0] = '\0';
    int32_t code;
    if (!address || !value || !length) {
        code = compose(world, kMsgNullArgument, 'D');
    } else {
        KivBuffer input{*length, *address};
        if (bufferLength && (flags & kFlagUseCallerBuffer)) {
            world->decodeBufferLength = *bufferLength;
        } else {
            *value = nullptr;
            world->decodeBufferLength = 0;
        }
        uint32_t saved = world->decodingFlags;
        world->decodingFlags = flags;
        code = kivDecodePdu(world, pduNum, &input, value);
        world->decodingFlags = saved;
        if (bufferLength) *bufferLength = world->decodeBufferLength;
        *address = input.value;
        *length = input.length;
    }
    copyMessage(world, message);
    return code;
}

int32_t kivReleasePdu(KivGlobal* world, int32_t pduNum, void* value) {
    if (!world) return 6;
    world->currentBlockTable = &world->blockTable;
    world->privateState->currentPointerTable = &world->privateState->pointerTables;
    if (!world->controlTable) return 20;
    if (!world->controlTable->releasePdu) return 21;
    return world->controlTable->releasePdu(world, pduNum, value, world);
}

// Encodes with output counted rather than kept (bit 6) and without the
// trace echo of composed messages (bit 1).
uint32_t kivMeasureEncoding(KivGlobal* world, int32_t pduNum, void* value) {
    if (!world) return 0;
    uint32_t saved = world->encodingFlags;
    world->encodingFlags = (saved & ~0x2u) | 0x40u;
    KivBuffer buffer{0, nullptr};
    int32_t code = kivEncodePdu(world, pduNum, value, &buffer);
    world->encodingFlags = saved;
    return code == 0 ? buffer.length : 0;
}
