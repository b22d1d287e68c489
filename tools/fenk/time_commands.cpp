// fenk time (UTCTime and GeneralizedTime) and fenk iso (ISO 8601 TIME).
#include <cinttypes>
#include <cstdio>
#include <cstdlib>

#include "cli.h"

namespace fenk::cli {

namespace {

constexpr const char* kTimeUsage =
    "usage: fenk time check TEXT [--utc] [--rules ber|der]\n"
    "       fenk time seconds TEXT [--utc]\n"
    "       fenk time from-seconds N [--utc] [--offset MINUTES]\n"
    "\n"
    "GeneralizedTime by default, UTCTime with --utc. check raises what the\n"
    "encoders raise (DER demands the canonical form); seconds counts from\n"
    "1970-01-01T00:00:00Z; from-seconds writes the time text of a count.\n";

struct CheckRequest {
    const char* text;
    uint16_t utc;
};

void checkTime(KivGlobal* world, void* context) {
    const auto* r = static_cast<const CheckRequest*>(context);
    kivCheckGeneralizedOrUTCTime(world, r->text, r->utc);
}

bool toInteger(const std::string& text, long long& value) {
    char* end = nullptr;
    value = std::strtoll(text.c_str(), &end, 10);
    return !text.empty() && !*end;
}

}  // namespace

int timeCommand(int argc, char** argv) {
    Args args;
    if (!parseArgs(argc, argv, 2, {"rules", "offset"}, {"utc"}, args)) return kBadUsage;
    if (args.help) return usage(kTimeUsage, true);
    if (args.words.size() != 2) return usage(kTimeUsage, false);
    const std::string& verb = args.words[0];
    const std::string& text = args.words[1];
    const bool utc = args.has("utc");
    World world;
    KivGlobal* w = world.get();
    int rules = rulesNumber(args.get("rules", "ber"));
    if (rules != 0 && rules != 3) return usage(kTimeUsage, false);
    kivSelectRules(w, rules);

    if (verb == "check") {
        CheckRequest r{text.c_str(), static_cast<uint16_t>(utc ? 1 : 0)};
        int32_t code = runRaising(w, checkTime, &r);
        if (code) return refuse(w, code);
        std::printf("%s: a valid %s\n", text.c_str(), utc ? "UTCTime" : "GeneralizedTime");
        return kDone;
    }
    if (verb == "seconds") {
        uint64_t seconds = 0;
        int32_t code = utc ? kivUtcTimeTextToSeconds(w, text.c_str(), &seconds)
                           : kivGeneralizedTimeTextToSeconds(w, text.c_str(), &seconds);
        if (code) return refuse(w, code);
        std::printf("%" PRIu64 "\n", seconds);
        return kDone;
    }
    if (verb == "from-seconds") {
        long long seconds, offset = 0;
        if (!toInteger(text, seconds) || !toInteger(args.get("offset", "0"), offset) ||
            seconds < INT32_MIN || seconds > INT32_MAX || offset < INT32_MIN ||
            offset > INT32_MAX)
            return usage(kTimeUsage, false);
        char* out = nullptr;
        int32_t code =
            utc ? kivSecondsToUtcTimeText(w, static_cast<int32_t>(seconds),
                                          static_cast<int32_t>(offset), &out)
                : kivSecondsToGeneralizedTimeText(w, static_cast<int32_t>(seconds),
                                                  static_cast<int32_t>(offset), &out);
        if (code) return refuse(w, code);
        std::printf("%s\n", out);
        kivFreeBlock(w, out);
        return kDone;
    }
    return usage(kTimeUsage, false);
}

namespace {

constexpr const char* kIsoUsage =
    "usage: fenk iso parse TEXT\n"
    "       fenk iso normalize TEXT [--rules ber|der]\n"
    "       fenk iso compare TEXT TEXT\n"
    "       fenk iso canonical TEXT\n"
    "\n"
    "ISO 8601 TIME texts: points, durations, intervals and recurring intervals.\n"
    "parse names the form; normalize rewrites the text in normal form (canonical\n"
    "under DER); compare orders two values; canonical checks the canonical form.\n";

constexpr const char* kForms[] = {
    "time point",
    "duration",
    "interval, start and end",
    "interval, start and duration",
    "interval, duration and end",
    "recurring interval, duration",
    "recurring interval, start and end",
    "recurring interval, start and duration",
    "recurring interval, duration and end",
};

struct ParseRequest {
    const char* text;
    KivTimeValue* value;
};

void parseValue(KivGlobal* world, void* context) {
    auto* r = static_cast<ParseRequest*>(context);
    kivParseTimeValue(world, r->text, r->value);
}

void checkCanonical(KivGlobal* world, void* context) {
    kivCheckTimeCanonicalForm(world, static_cast<const char*>(context));
}

}  // namespace

int isoCommand(int argc, char** argv) {
    Args args;
    if (!parseArgs(argc, argv, 2, {"rules"}, {}, args)) return kBadUsage;
    if (args.help) return usage(kIsoUsage, true);
    if (args.words.size() < 2) return usage(kIsoUsage, false);
    const std::string& verb = args.words[0];
    const bool pair = verb == "compare";
    if (args.words.size() != (pair ? 3u : 2u)) return usage(kIsoUsage, false);
    int rules = rulesNumber(args.get("rules", "ber"));
    if (rules != 0 && rules != 3) return usage(kIsoUsage, false);
    World world;
    KivGlobal* w = world.get();
    kivSelectRules(w, rules);
    const char* text = args.words[1].c_str();

    if (verb == "parse") {
        KivTimeValue value{};
        ParseRequest r{text, &value};
        int32_t code = runRaising(w, parseValue, &r);
        if (code) return refuse(w, code);
        int32_t form = kivClassifyTimeText(w, text);
        std::printf("%s: %s\n", text, form >= 0 && form <= 8 ? kForms[form] : "unknown form");
        return kDone;
    }
    if (verb == "normalize") {
        char* out = nullptr;
        int32_t code = kivNormalizeTimeText(w, text, &out);
        if (code) return refuse(w, code);
        std::printf("%s\n", out);
        kivReleaseThroughTable(w, out);
        return kDone;
    }
    if (verb == "compare") {
        KivTimeValue a{}, b{};
        ParseRequest ra{text, &a}, rb{args.words[2].c_str(), &b};
        int32_t code = runRaising(w, parseValue, &ra);
        if (!code) code = runRaising(w, parseValue, &rb);
        if (code) return refuse(w, code);
        switch (kivCompareTimeValues(&a, &b)) {
        case -1: std::printf("earlier\n"); return kDone;
        case 0: std::printf("equal\n"); return kDone;
        case 1: std::printf("later\n"); return kDone;
        default: std::printf("not comparable\n"); return kRefused;
        }
    }
    if (verb == "canonical") {
        int32_t code = runRaising(w, checkCanonical, const_cast<char*>(text));
        if (code) return refuse(w, code);
        std::printf("%s: canonical\n", text);
        return kDone;
    }
    return usage(kIsoUsage, false);
}

}  // namespace fenk::cli
