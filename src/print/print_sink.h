// Where the value printers put their pieces. Each printer is written once,
// against a sink, and serves both its print service (pieces go out through
// the companion's formatted output, one call each, nothing buffered) and its
// to-text twin (pieces are appended to a text in temporary memory). A
// counting sink sizes a text whose length has no closed form.
//
// All three are plain records: a raise from slot 132 may cross them.
#ifndef FENK_PRINT_SINK_H
#define FENK_PRINT_SINK_H

#include <cstdarg>
#include <cstddef>
#include <cstdint>

#include "fenkapi.h"
#include "kivapit.h"

namespace fenk {

struct PrintSink {
    KivGlobal* world;

    template <class... Args>
    void put(const char* format, Args... args) {
        kivCompanionPrint(world, format, args...);
    }
};

// Appends to [at, end); at always points at the terminating NUL. A piece
// that would pass end is cut there (sizes are worked out beforehand, so this
// only guards).
struct TextSink {
    char* at;
    char* end;

    void put(const char* format, ...) __attribute__((format(printf, 2, 3)));
};

// Counts the characters that the pieces would take.
struct CountSink {
    size_t length;

    void put(const char* format, ...) __attribute__((format(printf, 2, 3)));
};

// A text sink over size bytes of temporary memory, taken through the world's
// slot 132 (which raises when memory runs out) and started empty. at is null
// only if a replaced slot 132 gives null; every to-text service then answers
// null.
TextSink newText(KivGlobal* world, uint64_t size);

// The low 32 bits of printLimit, as the printers use them: a signed count,
// 0 meaning no limit.
inline int32_t printLimit32(const KivGlobal* world) {
    return static_cast<int32_t>(static_cast<uint64_t>(world->printLimit));
}

}  // namespace fenk

#endif
