// A raise routine for tests of code that raises through the world's
// raiseRoutine: it notes the message index and number and jumps to the
// world's jumpBuffer with the index as the jump value.
#ifndef FENK_TEST_RECORDING_RAISE_H
#define FENK_TEST_RECORDING_RAISE_H

#include <cstdint>

#include "fenkapi.h"

namespace fenk::test {

struct RaiseRecord {
    int32_t index = 0;
    uint32_t number = 0;
    int count = 0;  // raises so far
};

// Installs the recording routine as the world's raiseRoutine. One record per
// thread: the last one installed receives the raises.
void installRecordingRaise(KivGlobal* world, RaiseRecord* record);

}  // namespace fenk::test

#endif
