// The four trace hooks that generated coders call at the start and end of
// each encoding and decoding. debugFlags decides what they show: the value
// in value notation, the encoding as a dump (or as XML text for the XML
// rules) and the error message.
#include <cstring>

#include "diag/diag_slots.h"
#include "diag/hex_dump.h"
#include "kivapit.h"
#include "print/print_slots.h"

namespace {

enum : uint32_t {
    kNewlineBeforeDecoderResult = 0x01 | 0x08,
    kNewlineBeforeEncoderResult = 0x02 | 0x20,
    kShowDecodedValue = 0x04,
    kShowDecoderInput = 0x08,
    kShowEncoderOutput = 0x10,
    kShowEncoderInput = 0x20,
    kShowErrors = 0x40,
    kFramedDumps = 0x80,
};

constexpr uint32_t kMeasuringRun = 0x40;        // encodingFlags: output counted, not kept
constexpr uint32_t kDumpXmlAsOctets = 0x40000000;  // decodingFlags
constexpr uint32_t kChunkSize = 1024;

uint32_t debugFlags(const KivGlobal* world) { return world->privateState->debugFlags; }

bool isXmlRules(int32_t rules) {
    return rules == kivRulesXer || rules == kivRulesCxer || rules == kivRulesExer;
}

KivPrintPduRoutine printRoutineOf(const KivGlobal* world) {
    return world->controlTable ? world->controlTable->printPdu : nullptr;
}

// An encoding shown as XML text for the XML rules, otherwise as a dump with
// its headings in the framed layout.
void showEncoding(KivGlobal* world, const uint8_t* octets, int32_t length) {
    if (isXmlRules(world->encodingRules) && !(world->decodingFlags & kDumpXmlAsOctets)) {
        kivPrintXmlText(world, reinterpret_cast<const char*>(octets), length, 0);
        kivCompanionPrint(world, "\n");
        return;
    }
    bool framed = debugFlags(world) & kFramedDumps;
    if (framed) fenk::printDumpHeading(world);
    kivHexDump(world, octets, length);
    if (framed) fenk::printDumpRule(world);
}

// The octets produced so far as one range. BER, DER and CER coders hand
// over their joined encoding; the forward writers are read from the caller
// buffer (pool mode) or joined from the output chunks into *joined, which the
// caller releases.
struct Range {
    const uint8_t* octets;
    int32_t length;
};

const uint8_t kZeroOctet = 0;

Range forwardOutput(KivGlobal* world, uint8_t* current, uint32_t left, uint8_t** joined) {
    if (world->poolMode) {
        if (world->pendingBits != 0) {
            *current &= static_cast<uint8_t>(0xFF << (8 - world->pendingBits));
            --left;
        }
        uint32_t total = static_cast<uint32_t>(world->privateState->encodeBufferLength);
        if (total == left) return {&kZeroOctet, 1};
        return {world->privateState->encodeBufferStart, static_cast<int32_t>(total - left)};
    }
    uint32_t chunks = 0;
    for (const KivBlockTable* t = &world->blockTable; t; t = t->next)
        chunks += static_cast<uint32_t>(t->count);
    // The given length is what is still free in the last chunk.
    uint32_t free = left;
    if (world->pendingBits != 0 && free > 0) --free;
    uint32_t length = chunks * kChunkSize - free;
    uint32_t size = length ? length : 1;
    auto* block = static_cast<uint8_t*>(world->allocHook(world, size));
    if (!block) kivRaise(world, 7, size);
    *joined = block;
    if (length == 0) {
        block[0] = 0;
        return {block, 1};
    }
    uint32_t at = 0;
    for (const KivBlockTable* t = &world->blockTable; t; t = t->next)
        for (int16_t i = 0; i < t->count; ++i) {
            uint32_t take = length - at < kChunkSize ? length - at : kChunkSize;
            std::memcpy(block + at, t->entries[i], take);
            at += take;
        }
    return {block, static_cast<int32_t>(length)};
}

const char* prefix(const KivGlobal* world, uint32_t bits) {
    return debugFlags(world) & bits ? "\n" : "";
}

}  // namespace

void kivTraceEncoderInput(KivGlobal* world, int32_t pduNum, void* value, void*,
                          uint8_t* output, int32_t outputLength) {
    if (!world || (world->encodingFlags & kMeasuringRun)) return;
    world->privateState->encodeBufferStart = output;
    world->privateState->encodeBufferLength = outputLength;
    KivPrintPduRoutine print = printRoutineOf(world);
    if ((debugFlags(world) & kShowEncoderInput) && print) {
        kivCompanionPrint(world, "The input to the encoder:\n\n");
        print(world, pduNum, value);
    }
}

void kivTraceEncoderResult(KivGlobal* world, int32_t error, uint8_t* output, uint32_t length) {
    if (!world || (world->encodingFlags & kMeasuringRun)) return;
    const char* lead = prefix(world, kNewlineBeforeEncoderResult);
    if (error != 0) {
        if (world->messageOut && (debugFlags(world) & kShowErrors))
            kivCompanionPrint(world, "%sThe encoder error message:\n\n%s", lead, world->messageOut);
        return;
    }
    if (!(debugFlags(world) & kShowEncoderOutput)) return;
    uint8_t* joined = nullptr;
    Range range{output, static_cast<int32_t>(length)};
    int32_t rules = world->encodingRules;
    if (rules != kivRulesBer && rules != kivRulesDer && rules != kivRulesCer)
        range = forwardOutput(world, output, length, &joined);
    kivCompanionPrint(world, "%sThe encoder output:\n\n", lead);
    showEncoding(world, range.octets, range.length);
    if (joined) world->freeHook(world, joined);
}

void kivTraceDecoderInput(KivGlobal* world, const uint8_t* input, int32_t length) {
    if (!world || !(debugFlags(world) & kShowDecoderInput)) return;
    kivCompanionPrint(world, "The input to the decoder:\n\n");
    showEncoding(world, input, length);
}

void kivTraceDecoderResult(KivGlobal* world, int32_t error, int32_t pduNum, void** value) {
    if (!world) return;
    const char* lead = prefix(world, kNewlineBeforeDecoderResult);
    if (error != 0) {
        if (world->messageOut && (debugFlags(world) & kShowErrors))
            kivCompanionPrint(world, "%sThe decoder error message:\n\n%s", lead, world->messageOut);
        return;
    }
    KivPrintPduRoutine print = printRoutineOf(world);
    if ((debugFlags(world) & kShowDecodedValue) && print && value) {
        kivCompanionPrint(world, "%sThe decoder output:\n\n", lead);
        print(world, pduNum, *value);
    }
}
