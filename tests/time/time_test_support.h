// Helpers of the time tests: formatting into a fresh std::string, running a
// formatter under given encoding rules, describing field records, and
// parsing TIME values in a world of their own with raised failures caught
// and their composed message text kept.
#ifndef FENK_TEST_TIME_TEST_SUPPORT_H
#define FENK_TEST_TIME_TEST_SUPPORT_H

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "fenkapi.h"
#include "support/raise_catcher.h"
#include "support/test_world.h"

namespace fenk::test {

constexpr int32_t kBer = 0, kDer = 3, kCxer = 6, kCer = 7;  // encoding rules

// The text a formatter allocated through the table, released again; "#rc"
// when the formatter failed with rc.
template <class Format>
std::string formatted(KivGlobal* w, Format&& format) {
    char* text = nullptr;
    int32_t rc = format(&text);
    if (rc != 0) {
        char failure[32];
        std::snprintf(failure, sizeof failure, "#%d%s", rc, text ? " with text" : "");
        return failure;
    }
    std::string s(text);
    kivReleaseThroughTable(w, text);
    return s;
}

// The fields of a record in one line, for comparing records in tests.
inline std::string describe(const KivTimeFields& f) {
    char b[200];
    std::snprintf(b, sizeof b, "flags %04x C%d Y%d W%u M%u D%u %u:%u:%u .%u/%u res %u zone %02x %s%u:%u",
                  f.flags, f.century, f.year, f.week, f.month, f.day, f.hours, f.minutes, f.seconds, f.fraction,
                  f.fractionDigits, f.reserved, f.zoneFlags, f.zoneNegative ? "-" : "+", f.zoneHours, f.zoneMinutes);
    return b;
}

inline std::string describe(const KivDurationFields& d) {
    char b[200];
    std::snprintf(b, sizeof b, "flags %08x %uY %uM %uW %uD %uH %uM %uS .%u/%u", d.flags, d.years, d.months,
                  d.weeks, d.days, d.hours, d.minutes, d.seconds, d.fraction, d.fractionDigits);
    return b;
}

inline std::string normalized(KivGlobal* w, const char* text, int32_t rules = kBer) {
    w->encodingRules = rules;
    return formatted(w, [&](char** out) { return kivNormalizeTimeText(w, text, out); });
}

struct ParseOutcome {
    bool raised;
    int code;             // the return code the raise delivered
    std::string message;  // the composed messageText
};

class TimeValueParser {
public:
    TimeValueParser() {
        world_->messageOut = world_->messageText;
        world_->errorMode = 3;  // decoding: messages start with 'D'
    }

    ParseOutcome parse(const char* text, KivTimeValue* value) {
        KivGlobal* w = world_.get();
        w->messageText[0] = '\0';
        Caught caught = catchRaise(w, [&] { kivParseTimeValue(w, text, value); });
        return {caught.raised, caught.value, caught.raised ? std::string(w->messageText) : ""};
    }

    // A text that must parse; a raise fails the test.
    KivTimeValue value(const char* text) {
        KivTimeValue v;
        std::memset(&v, 0, sizeof v);
        ParseOutcome outcome = parse(text, &v);
        EXPECT_FALSE(outcome.raised) << text << ": " << outcome.message;
        return v;
    }

private:
    TestWorld world_;
};

}  // namespace fenk::test

#endif
