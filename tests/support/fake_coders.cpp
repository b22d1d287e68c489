#include "fake_coders.h"

#include <cstring>

namespace fenk::test {
namespace {

KivRoutine fakeBerTable[KIV_CODER_BACKWARD_WRITER + 1];

}  // namespace

void installFakeBerCoders(KivGlobal* world) {
    fakeBerTable[KIV_CODER_BACKWARD_WRITER] = reinterpret_cast<KivRoutine>(&writeBackward);
    world->berCoders = reinterpret_cast<KivCoderPair*>(fakeBerTable);
}

void writeBackward(KivGlobal* world, uint8_t** cursor, uint32_t* left, const uint8_t* octets,
                   uint32_t length) {
    while (length) {
        if (*left == 0) {
            *cursor = static_cast<uint8_t*>(kivNewOutputChunk(world)) + KIV_OUTPUT_CHUNK_SIZE;
            *left = KIV_OUTPUT_CHUNK_SIZE;
        }
        uint32_t part = length < *left ? length : *left;
        *cursor -= part;
        *left -= part;
        length -= part;
        std::memcpy(*cursor, octets + length, part);
    }
}

void writeForward(KivGlobal* world, const uint8_t* octets, uint32_t length) {
    while (length) {
        if (world->poolLeft == 0) {
            world->poolCursor = static_cast<uint8_t*>(kivNewOutputChunk(world));
            world->poolLeft = KIV_OUTPUT_CHUNK_SIZE;
        }
        uint32_t part = length < world->poolLeft ? length : world->poolLeft;
        std::memcpy(world->poolCursor, octets, part);
        world->poolCursor += part;
        world->poolLeft -= part;
        octets += part;
        length -= part;
    }
}

}  // namespace fenk::test
