// Normal form of a time text: parsed with the parser of its form and
// written again with the matching formatter.
#include "time/time_text.h"

int32_t kivNormalizeTimeText(KivGlobal* world, const char* text, char** out) {
    fenk::TimeText parsed{};
    int32_t result = fenk::parseTimeText(world, text, &parsed);
    if (result != 0) return result;
    return fenk::formatTimeText(world, &parsed, out);
}
