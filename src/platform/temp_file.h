// Temporary files with no name race: made by mkstemp, mode 0600.
#ifndef FENK_PLATFORM_TEMP_FILE_H
#define FENK_PLATFORM_TEMP_FILE_H

#include <cstddef>
#include <cstdio>

namespace fenk {

constexpr size_t kTempPathCapacity = 4096;

// Creates and opens (read and write) a new temporary file in $TMPDIR or
// /tmp; its name goes to path. Null when no file could be made.
FILE* openTempFile(char (&path)[kTempPathCapacity]);

}  // namespace fenk

#endif
