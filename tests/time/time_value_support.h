// Parsing TIME values in a world of their own, with raised failures caught
// and their composed message text kept.
#ifndef FENK_TEST_TIME_VALUE_SUPPORT_H
#define FENK_TEST_TIME_VALUE_SUPPORT_H

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "support/raise_catcher.h"
#include "support/test_world.h"

namespace fenk::test {

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
