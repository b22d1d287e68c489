// Characters between two double quotes, as they are: nothing is escaped or
// converted and printLimit does not apply.
#include <cstring>

#include "print/print_sink.h"
#include "print/print_slots.h"

// The count bounds the copy like "%.*s" does (an earlier NUL ends it); a
// negative count is taken as 0.
char* kivQuoteChars(KivGlobal* world, const char* chars, int32_t count) {
    int32_t n = count > 0 ? count : 0;
    fenk::TextSink out = fenk::newText(world, static_cast<uint64_t>(n) + 3);
    char* text = out.at;
    out.put("\"%.*s\"", static_cast<int>(n), n != 0 ? chars : "");
    return text;
}

// A null text is quoted as an empty one.
char* kivQuoteCString(KivGlobal* world, const char* text) {
    if (!text) text = "";
    fenk::TextSink out = fenk::newText(world, std::strlen(text) + 3);
    char* quoted = out.at;
    out.put("\"%s\"", text);
    return quoted;
}
