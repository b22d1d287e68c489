// The library's formatted output (slots 25, 26) and the trace text store
// behind an open trace window: the temporary file, its line index and the
// reset of both (slot 28).
#include "tracewin/trace_store.h"

#include <unistd.h>

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/temp_file.h"
#include "platform/ui/ui.h"
#include "tracewin/tracewin_slots.h"

namespace fenk {
namespace {

constexpr size_t kFormatCapacity = 1024;

std::atomic<uint32_t> resetCount{0};

// A formatted text: in the 1024-character buffer when it fits, else in a
// block from the world's allocation routine, so that a long text is still
// written whole. Plain record: output may run inside a guarded operation.
struct FormattedText {
    char local[kFormatCapacity];
    char* text;
    int length;
};

void formatText(KivGlobal* world, FormattedText& out, const char* format, va_list args) {
    va_list again;
    va_copy(again, args);
    out.text = out.local;
    out.length = std::vsnprintf(out.local, kFormatCapacity, format, args);
    if (out.length >= static_cast<int>(kFormatCapacity)) {
        auto* block = world->allocRoutine ? static_cast<char*>(world->allocRoutine(out.length + 1u)) : nullptr;
        if (block) {
            std::vsnprintf(block, out.length + 1u, format, again);
            out.text = block;
        } else {
            out.length = kFormatCapacity - 1;  // no memory: the text is cut
        }
    }
    va_end(again);
}

void releaseText(KivGlobal* world, FormattedText& text) {
    if (text.text != text.local) world->freeRoutine(text.text);
}

KivTracePage* newPage(KivGlobal* world) {
    if (!world->allocRoutine) return nullptr;
    auto* page = static_cast<KivTracePage*>(world->allocRoutine(sizeof(KivTracePage)));
    auto* starts = static_cast<uint32_t*>(world->allocRoutine(KIV_TRACE_PAGE_LINES * sizeof(uint32_t)));
    auto* lengths = static_cast<uint16_t*>(world->allocRoutine(KIV_TRACE_PAGE_LINES * sizeof(uint16_t)));
    if (!page || !starts || !lengths) {
        if (page) world->freeRoutine(page);
        if (starts) world->freeRoutine(starts);
        if (lengths) world->freeRoutine(lengths);
        return nullptr;
    }
    std::memset(starts, 0, KIV_TRACE_PAGE_LINES * sizeof(uint32_t));
    std::memset(lengths, 0, KIV_TRACE_PAGE_LINES * sizeof(uint16_t));
    *page = KivTracePage{nullptr, nullptr, starts, lengths, 0};
    return page;
}

// Enters a new line starting at the given file offset. False when memory
// ran out (the index is then unchanged).
bool indexNewLine(KivGlobal* world, uint32_t start) {
    if (!world->traceFirstPage) {
        KivTracePage* page = newPage(world);
        if (!page) return false;
        world->traceFirstPage = world->traceCurrentPage = page;
        world->tracePageNumber = 0;
        world->traceLineCount = 0;
    } else if (world->traceLineCount >= KIV_TRACE_PAGE_LINES * (world->tracePageNumber + 1u)) {
        KivTracePage* page = newPage(world);
        if (!page) return false;
        page->previous = world->traceCurrentPage;
        page->pageNumber = static_cast<uint16_t>(world->tracePageNumber + 1);
        world->traceCurrentPage->next = page;
        world->traceCurrentPage = page;
        world->tracePageNumber = page->pageNumber;
    }
    world->traceCurrentPage->lineStarts[world->traceLineCount % KIV_TRACE_PAGE_LINES] = start;
    ++world->traceLineCount;
    return true;
}

// Shows the new line at once and lets the window handle what is waiting for
// it, so that it stays responsive while a long operation prints. False when
// the store was reset or the window went away meanwhile.
bool repaintWindow(KivGlobal* world) {
    const ui::Backend& ui = ui::backend();
    ui::Window window = world->traceWindow;
    uint32_t resets = traceResetCount();
    ui.setUserData(window, world);
    ui.invalidate(window, false);
    ui.sendMessage(window, ui::Msg::paint, 0, 0);
    ui.setUserData(window, nullptr);
    ui.dispatchPending(window);
    return world->traceWindow == window && world->traceFile &&
           resets == traceResetCount();
}

// Line lengths are kept in 16 bits: a longer line is recorded as 65535
// bytes (and read back cut there) rather than with a wrapped length.
void addToLineLength(KivGlobal* world, size_t segment) {
    size_t length = world->traceLineLength + segment;
    world->traceLineLength = static_cast<uint16_t>(length > UINT16_MAX ? UINT16_MAX : length);
}

// Indexes the text just written at file offset position, segment by segment
// (a segment ends after a line feed or at the end of the text). False when
// index memory ran out.
bool indexText(KivGlobal* world, const char* text, size_t length, uint32_t position) {
    size_t offset = 0;
    while (offset < length) {
        const void* feed = std::memchr(text + offset, '\n', length - offset);
        size_t segment = feed ? static_cast<const char*>(feed) - (text + offset) + 1 : length - offset;
        if (world->traceLineOpen) {
            if (!feed) {
                addToLineLength(world, segment);
                return true;
            }
            world->traceLineOpen = 0;
        } else {
            if (!indexNewLine(world, position)) {
                showTraceError(world->traceWindow, "Unable To Alocate a Memory Block");
                return false;
            }
            if (!feed) world->traceLineOpen = 1;
            ui::backend().setScrollRange(world->traceWindow, ui::barVertical, 0,
                                         static_cast<int32_t>(world->traceLineCount));
        }
        addToLineLength(world, segment);
        if (feed) {
            uint32_t last = world->traceLineCount - 1;
            world->traceCurrentPage->lineLengths[last % KIV_TRACE_PAGE_LINES] = world->traceLineLength;
            world->traceLineLength = 0;
            // A reset while the window handled its messages emptied the
            // store: the rest of this text belongs to no index.
            if (!repaintWindow(world)) return true;
        }
        position += static_cast<uint32_t>(segment);
        offset += segment;
    }
    return true;
}

int printToWindow(KivGlobal* world, const char* format, va_list args) {
    FormattedText formatted;
    formatText(world, formatted, format, args);
    int result = 0;
    if (formatted.length > 0) {
        FILE* file = world->traceFile;
        std::fseek(file, 0, SEEK_END);
        auto position = static_cast<uint32_t>(std::ftell(file));
        size_t written = std::fwrite(formatted.text, 1, formatted.length, file);
        if (written != static_cast<size_t>(formatted.length)) {
            showTraceError(world->traceWindow, "Error Writing a Temporary File");
            result = -1;
        } else {
            world->traceWritten = 1;
            result = indexText(world, formatted.text, written, position) ? static_cast<int>(written) : -1;
        }
    }
    releaseText(world, formatted);
    return result;
}

int printToStream(KivGlobal* world, const char* format, va_list args) {
    if (!world->outputStream) return 0;
    if (world->controlTable) {
        KivOutputRoutine hook = world->privateState ? world->privateState->outputHook : nullptr;
        if (hook) return hook(world, format, args);
        if (world->outputContext) return world->outputContext(world, format, args);
    }
    if (!world->printRoutine || world->printRoutine == world->defaultPrintRoutine) {
        int result = std::vfprintf(world->outputStream, format, args);
        std::fflush(world->outputStream);
        return result;
    }
    // An argument list cannot be spread again as separate arguments, so a
    // replaced print routine receives the finished text.
    FormattedText formatted;
    formatText(world, formatted, format, args);
    int result = world->printRoutine(world->outputStream, "%s", formatted.text);
    releaseText(world, formatted);
    return result;
}

}  // namespace

uint32_t traceResetCount() { return resetCount.load(std::memory_order_relaxed); }

void showTraceError(void* owner, const char* text) {
    ui::backend().messageBox(owner, text, "Error", ui::iconStop);
}

bool openTraceTempFile(KivGlobal* world) {
    char path[kTempPathCapacity];
    FILE* file = openTempFile(path);
    char* name = file ? strdup(path) : nullptr;
    if (!name) {
        if (file) {
            std::fclose(file);
            unlink(path);
        }
        showTraceError(world->traceWindow, "Unable To Open a Temporary File");
        ui::backend().validate(world->traceWindow);
        return false;
    }
    world->traceFile = file;
    world->traceFilePath = name;
    return true;
}

}  // namespace fenk

extern "C" {

int kivTraceVPrint(KivGlobal* world, const char* format, va_list args) {
    if (!world || !format) return 0;
    if (world->traceWindow && world->traceFile) return fenk::printToWindow(world, format, args);
    return fenk::printToStream(world, format, args);
}

int kivTracePrint(KivGlobal* world, const char* format, ...) {
    va_list args;
    va_start(args, format);
    int result = kivTraceVPrint(world, format, args);
    va_end(args);
    return result;
}

void kivResetTrace(KivGlobal* world) {
    if (!world) return;
    fenk::resetCount.fetch_add(1, std::memory_order_relaxed);
    if (world->traceFile) {
        std::fclose(world->traceFile);
        if (world->traceFilePath) unlink(world->traceFilePath);
    }
    std::free(world->traceFilePath);
    world->traceFile = nullptr;
    world->traceFilePath = nullptr;
    if (world->traceWindow) fenk::openTraceTempFile(world);
    for (KivTracePage* page = world->traceFirstPage; page;) {
        KivTracePage* next = page->next;
        world->freeRoutine(page->lineStarts);
        world->freeRoutine(page->lineLengths);
        world->freeRoutine(page);
        page = next;
    }
    world->traceLineCount = 0;
    world->traceFirstPage = world->traceCurrentPage = nullptr;
    world->traceLineLength = 0;
    world->tracePageNumber = 0;
    // An unfinished line goes with the index: the next text starts a line.
    world->traceLineOpen = 0;
}

}  // extern "C"
