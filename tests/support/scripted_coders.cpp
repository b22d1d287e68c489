#include "scripted_coders.h"

#include <cstring>
#include <mutex>
#include <unordered_map>

namespace fenk::test {
namespace {

std::mutex scriptsLock;
std::unordered_map<const KivGlobal*, CoderScript*> scripts;

// Child worlds share their parent's coders: look the script up by the
// outermost world.
CoderScript* scriptOf(const KivGlobal* world) {
    while (world->parentWorld) world = world->parentWorld;
    std::lock_guard<std::mutex> guard(scriptsLock);
    return scripts.at(world);
}

int32_t scriptedEncode(KivGlobal* world, int32_t pduNum, void* value, KivBuffer* buffer,
                       uint32_t flags) {
    CoderScript* s = scriptOf(world);
    ++s->encodeCalls;
    s->lastPdu = pduNum;
    s->lastValue = value;
    s->lastFlags = flags;
    s->lastBuffer = *buffer;
    s->firstOutputOctet = buffer->value && buffer->length ? buffer->value[0] : 0;
    if (s->traceHooks)
        kivTraceEncoderInput(world, pduNum, value, buffer->value, static_cast<int32_t>(buffer->length));
    if (s->scribbleFlags) world->encodingFlags = s->scribbleFlags;
    if (s->raiseIndex) kivRaise(world, s->raiseIndex, 0);
    if (s->answer) return s->answer;
    if (buffer->value) {
        if (buffer->length < s->octets.size()) return 1;
        std::memcpy(buffer->value, s->octets.data(), s->octets.size());
    } else {
        buffer->value = s->octets.data();
    }
    buffer->length = static_cast<uint32_t>(s->octets.size());
    if (s->traceHooks) kivTraceEncoderResult(world, 0, buffer->value, buffer->length);
    return 0;
}

int32_t scriptedDecode(KivGlobal* world, int32_t* pduNum, KivBuffer* input, void** value,
                       uint32_t flags) {
    CoderScript* s = scriptOf(world);
    ++s->decodeCalls;
    s->lastPdu = pduNum ? *pduNum : 0;
    s->lastFlags = flags;
    s->lastBuffer = *input;
    if (s->traceHooks) kivTraceDecoderInput(world, input->value, static_cast<int32_t>(input->length));
    if (s->scribbleFlags) world->decodingFlags = s->scribbleFlags;
    if (s->raiseIndex) kivRaise(world, s->raiseIndex, 0);
    if (s->answer) return s->answer;
    if (s->decodedPdu && pduNum) *pduNum = s->decodedPdu;
    *value = s->decoded;
    if (s->traceHooks) kivTraceDecoderResult(world, 0, pduNum ? *pduNum : 0, value);
    return 0;
}

}  // namespace

KivCoderPair scriptedPair{&scriptedEncode, &scriptedDecode};

void installScriptedCoders(KivGlobal* world, CoderScript* script) {
    {
        std::lock_guard<std::mutex> guard(scriptsLock);
        scripts[world] = script;
    }
    world->berCoders = &scriptedPair;
    world->perCoders = &scriptedPair;
    world->xerCoders = &scriptedPair;
    world->privateState->exerCoders = &scriptedPair;
}

}  // namespace fenk::test
