// Runs a call inside a jump frame of its own and hands back what a raise
// delivered. The call must not leave objects with destructors on the stack
// between the frame and the raise: the jump skips them.
#ifndef FENK_TEST_RAISE_CATCHER_H
#define FENK_TEST_RAISE_CATCHER_H

#include <csetjmp>

#include "fenkapi.h"

namespace fenk::test {

struct Caught {
    bool raised;
    int value;  // the jump value: a return code, or a message index in mode 6
};

template <class Call>
Caught catchRaise(KivGlobal* world, Call&& call) {
    jmp_buf frame;
    jmp_buf* volatile saved = world->jumpBuffer;
    world->jumpBuffer = &frame;
    int value = setjmp(frame);
    if (value == 0) {
        call();
        world->jumpBuffer = saved;
        return {false, 0};
    }
    world->jumpBuffer = saved;
    return {true, value};
}

}  // namespace fenk::test

#endif
