// Transcoding between XML rules and the others: decode with one set of
// rules, encode with another, release the decoded value whatever happened,
// and put the world's rules back.
#include "api/api_slots.h"

namespace {

int32_t transcode(KivGlobal* world, int32_t pduNum, int32_t source, int32_t target,
                  KivBuffer* input, KivBuffer* output) {
    int32_t remembered = world->encodingRules;
    // A refused selection still records the rules, so every path ends by
    // selecting the remembered ones again.
    int32_t code = kivSelectRules(world, source);
    void* value = nullptr;
    if (code == 0) code = kivDecodePdu(world, &pduNum, input, &value);
    if (code == 0) {
        int32_t step = kivSelectRules(world, target);
        if (step == 0) step = kivEncodePdu(world, pduNum, value, output);
        int32_t released = kivReleasePdu(world, pduNum, value);
        code = released != 0 ? released : step;
    }
    kivSelectRules(world, remembered);
    return code;
}

}  // namespace

int32_t kivTranscodeToXml(KivGlobal* world, int32_t pduNum, int32_t sourceRules,
                          KivBuffer* input, KivBuffer* output) {
    if (!world) return 6;
    int32_t target = kivChooseXmlRules(world);
    if (target < 0) return 22;
    return transcode(world, pduNum, sourceRules, target, input, output);
}

int32_t kivTranscodeFromXml(KivGlobal* world, int32_t pduNum, int32_t targetRules,
                            KivBuffer* input, KivBuffer* output) {
    if (!world) return 6;
    int32_t source = kivChooseXmlRules(world);
    if (source < 0) return 22;
    return transcode(world, pduNum, source, targetRules, input, output);
}
