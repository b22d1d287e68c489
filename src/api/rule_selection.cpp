// Choosing the world's encoding rules (slot 0) and its XML rules (219, 220)
// against what the companion reports as linked.
#include "api/api_slots.h"
#include "api/rules.h"
#include "kivapit.h"

namespace fenk {

namespace {
constexpr const char* kRuleNames[] = {"BER", "PER", "PER", "DER", "ECN",
                                      "XER", "CXER", "CER", "EXER"};
constexpr int32_t kRuleCount = sizeof kRuleNames / sizeof kRuleNames[0];
}  // namespace

const char* ruleName(int32_t rules) {
    return rules >= 0 && rules < kRuleCount ? kRuleNames[rules] : nullptr;
}

KivCoderPair* coderPairOf(KivGlobal* world, int32_t rules) {
    switch (rules) {
        case kivRulesBer:
        case kivRulesDer:
        case kivRulesCer: return world->berCoders;
        case kivRulesPerAligned:
        case kivRulesPerUnaligned: return world->perCoders;
        case kivRulesXer:
        case kivRulesCxer: return world->xerCoders;
        case kivRulesExer: return world->privateState ? world->privateState->exerCoders : nullptr;
        default: return nullptr;
    }
}

bool ruleLinked(KivGlobal* world, int32_t bit) {
    int32_t highest = 0;
    const uint8_t* bitmap = nullptr;
    kivCompanionLinkedRules(world, &highest, &bitmap);
    if (!bitmap) return true;
    if (bit > highest) return false;
    return (bitmap[bit / 8] >> (bit % 8)) & 1;
}

}  // namespace fenk

namespace {

// Linked-rules bits.
enum : int32_t { kBitBer = 0, kBitPer1 = 1, kBitPer2 = 2, kBitDer = 3, kBitXer = 4,
                 kBitCxer = 5, kBitCer = 7, kBitExer = 8, kBitPerProvision = 10 };

constexpr int32_t kNotLinked = 23;

// A pair is usable when it exists and has an encoder or, failing that, a
// decoder.
int32_t usable(const KivCoderPair* pair) {
    return pair && (pair->encoder || pair->decoder) ? 0 : kNotLinked;
}

// The answer for rules that need their pair and one linked bit.
int32_t pairWithBit(KivGlobal* world, const KivCoderPair* pair, int32_t bit) {
    if (!pair || !fenk::ruleLinked(world, bit)) return kNotLinked;
    return usable(pair);
}

int32_t selectionAnswer(KivGlobal* world, int32_t rules) {
    using fenk::ruleLinked;
    KivCoderPair* pair = fenk::coderPairOf(world, rules);
    switch (rules) {
        case kivRulesBer:
            if (!pair) return kNotLinked;
            if (ruleLinked(world, kBitBer) || ruleLinked(world, kBitDer) ||
                ruleLinked(world, kBitCer))
                return usable(pair);
            return kNotLinked;
        case kivRulesPerAligned:
        case kivRulesPerUnaligned:
            if (!pair || !(ruleLinked(world, kBitPer1) || ruleLinked(world, kBitPer2)))
                return ruleLinked(world, kBitPerProvision) ? 0 : kNotLinked;
            return usable(pair);
        case kivRulesDer: return pairWithBit(world, pair, kBitDer);
        case kivRulesXer:
            if (!pair) return kNotLinked;
            if (ruleLinked(world, kBitXer) || ruleLinked(world, kBitCxer)) return usable(pair);
            return kNotLinked;
        case kivRulesCxer: return pairWithBit(world, pair, kBitCxer);
        case kivRulesCer: return pairWithBit(world, pair, kBitCer);
        default: return pairWithBit(world, pair, kBitExer);  // EXER
    }
}

}  // namespace

int32_t kivSelectRules(KivGlobal* world, int32_t rules) {
    if (!world) return 6;
    if (rules < kivRulesBer || rules > kivRulesExer || rules == kivRulesEcn) return 22;
    int32_t answer = selectionAnswer(world, rules);
    // Even a refused selection (23) records the request.
    world->encodingRules = rules;
    return answer;
}

int32_t kivStoreXmlRules(KivGlobal* world, int32_t rules) {
    if (!world) return 6;
    if (rules != kivRulesXer && rules != kivRulesCxer && rules != kivRulesExer) return 22;
    world->privateState->xmlRules = rules;
    return 0;
}

// When the companion reports no bitmap, every rule counts as linked (as for
// slot 0), so the choice falls on the richest rules the highest bit allows.
int32_t kivChooseXmlRules(KivGlobal* world) {
    if (!world) return 6;
    if (world->privateState->xmlRules != 0) return world->privateState->xmlRules;
    int32_t highest = 0;
    const uint8_t* bitmap = nullptr;
    kivCompanionLinkedRules(world, &highest, &bitmap);
    auto linked = [&](int32_t bit) {
        return highest >= bit && (!bitmap || ((bitmap[bit / 8] >> (bit % 8)) & 1));
    };
    int32_t choice;
    if (linked(kBitExer)) choice = kivRulesExer;
    else if (linked(kBitXer)) choice = kivRulesXer;
    else if (linked(kBitCxer)) choice = kivRulesCxer;
    else return -1;
    kivStoreXmlRules(world, choice);
    return world->privateState->xmlRules;
}
