// Reading one line of the trace text back (slot 27), as the window paints it.
#include <algorithm>
#include <cstdio>
#include <cstring>

#include "tracewin/trace_store.h"
#include "tracewin/tracewin_slots.h"

namespace fenk {
namespace {

constexpr size_t kLineCapacity = 1024;
constexpr uint32_t kLastPage = 32767;
constexpr char kTabBlanks[] = "        ";

// Appends text to the destination, never letting it reach kLineCapacity
// characters.
void append(char* destination, size_t& used, const char* text, size_t length) {
    size_t room = kLineCapacity - 1 - used;
    size_t n = std::min(length, room);
    std::memcpy(destination + used, text, n);
    used += n;
}

// A tab stands for 8 blanks; a run of tabs for one separator.
void expandTabs(char* destination, const char* line, size_t length) {
    size_t used = 0;
    if (length > 0 && line[0] == '\t') append(destination, used, kTabBlanks, 8);
    bool anyPiece = false;
    size_t i = 0;
    while (i < length) {
        while (i < length && line[i] == '\t') ++i;
        size_t start = i;
        while (i < length && line[i] != '\t') ++i;
        if (i == start) break;
        if (anyPiece) append(destination, used, kTabBlanks, 8);
        append(destination, used, line + start, i - start);
        anyPiece = true;
    }
    if (!anyPiece) {
        used = 0;
        append(destination, used, line, length);
    }
    destination[used] = '\0';
}

}  // namespace
}  // namespace fenk

extern "C" int32_t kivReadTraceLine(void*, void* ownerWindow, FILE* file, char* destination,
                                    KivTracePage* firstPage, uint32_t line) {
    if (!destination) return 0;
    destination[0] = '\0';
    uint32_t pageNumber = std::min(line / KIV_TRACE_PAGE_LINES, fenk::kLastPage);
    KivTracePage* page = firstPage;
    while (page && page->pageNumber != pageNumber) page = page->next;
    if (!page || !file) return 0;
    uint32_t entry = line % KIV_TRACE_PAGE_LINES;
    uint16_t length = page->lineLengths[entry];
    // A line is at most 65535 bytes (its length is kept in 16 bits).
    char bytes[65536];
    size_t got = 0;
    if (length > 0) {
        if (std::fseek(file, page->lineStarts[entry], SEEK_SET) != 0) got = 0;
        else got = std::fread(bytes, 1, length, file);
        if (got < length && std::ferror(file)) {
            std::clearerr(file);
            fenk::showTraceError(ownerWindow, "Cannot Read Temporary File");
            return -1;
        }
    }
    bytes[got] = '\0';
    fenk::expandTabs(destination, bytes, got);
    return static_cast<int32_t>(got);
}
