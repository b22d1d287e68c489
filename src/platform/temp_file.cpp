#include "platform/temp_file.h"

#include <cstdlib>
#include <unistd.h>

namespace fenk {

FILE* openTempFile(char (&path)[kTempPathCapacity]) {
    const char* dir = std::getenv("TMPDIR");
    if (!dir || !*dir) dir = "/tmp";
    int n = std::snprintf(path, kTempPathCapacity, "%s/fenktraceXXXXXX", dir);
    if (n < 0 || static_cast<size_t>(n) >= kTempPathCapacity) return nullptr;
    int fd = mkstemp(path);  // creates with mode 0600
    if (fd < 0) return nullptr;
    FILE* file = fdopen(fd, "w+");
    if (!file) {
        close(fd);
        unlink(path);
    }
    return file;
}

}  // namespace fenk
