/* fenkapi: Trace window — the trace text store and the trace window.
 * Slot numbers, routine types, records and call helpers of the subsystem.
 * Included by fenkapi.h. */
#ifndef FENKAPI_TRACEWIN_H
#define FENKAPI_TRACEWIN_H

#ifdef __cplusplus
extern "C" {
#endif

/* Trace text store and trace window: while a trace window is open, printed
 * text goes to a temporary file whose lines are indexed in pages of 200;
 * otherwise it goes to the world's output routines or stream. */
enum {
    kivSlotTracePrint = 25,
    kivSlotTraceVPrint = 26,
    kivSlotReadTraceLine = 27,
    kivSlotResetTrace = 28,
    kivSlotSaveTrace = 29,
    kivSlotOpenTraceWindow = 31
};

#define KIV_TRACE_PAGE_LINES 200

/* One page of the line index: line n lives on page n / 200 at entry
 * n mod 200. Lengths include the line feed; 0 while a line is unfinished. */
typedef struct KivTracePage {
    struct KivTracePage* previous;
    struct KivTracePage* next;
    uint32_t* lineStarts;  /* 200 file offsets */
    uint16_t* lineLengths; /* 200 lengths */
    uint16_t pageNumber;
} KivTracePage;

#ifdef __cplusplus
KIV_STATIC_ASSERT(offsetof(KivTracePage, lineStarts) == 16, "lineStarts");
KIV_STATIC_ASSERT(offsetof(KivTracePage, pageNumber) == 32, "pageNumber");
KIV_STATIC_ASSERT(sizeof(KivTracePage) == 40, "KivTracePage is 40 bytes");
#endif

typedef int KivTracePrintFn(KivGlobal* world, const char* format, ...);
typedef int KivTraceVPrintFn(KivGlobal* world, const char* format, va_list args);
/* Reads line `line` of the temporary file into destination (at least 1024
 * characters) with tabs expanded; answers the bytes read, negative on a read
 * failure. The first argument is not read. */
typedef int32_t KivReadTraceLineFn(void* unused, void* ownerWindow, FILE* file, char* destination,
                                   KivTracePage* firstPage, uint32_t line);
typedef void KivResetTraceFn(KivGlobal* world);
typedef void KivSaveTraceFn(KivGlobal* world, void* ownerWindow, const char* path);
/* 0; 6 for a null world; 24 if a trace window is already open or cannot be
 * made; 27 if the temporary file cannot be opened (the window stays open). */
typedef int32_t KivOpenTraceWindowFn(KivGlobal* world);

#if KIV_CALL_HELPERS
#define kivTracePrint(w, ...) (KIV_SLOT(KivTracePrintFn, kivSlotTracePrint)((w), __VA_ARGS__))
static inline int kivTraceVPrint(KivGlobal* w, const char* format, va_list args) { return KIV_SLOT(KivTraceVPrintFn, kivSlotTraceVPrint)(w, format, args); }
static inline int32_t kivReadTraceLine(void* unused, void* owner, FILE* file, char* destination, KivTracePage* firstPage, uint32_t line) { return KIV_SLOT(KivReadTraceLineFn, kivSlotReadTraceLine)(unused, owner, file, destination, firstPage, line); }
static inline void kivResetTrace(KivGlobal* w) { KIV_SLOT(KivResetTraceFn, kivSlotResetTrace)(w); }
static inline void kivSaveTrace(KivGlobal* w, void* owner, const char* path) { KIV_SLOT(KivSaveTraceFn, kivSlotSaveTrace)(w, owner, path); }
static inline int32_t kivOpenTraceWindow(KivGlobal* w) { return KIV_SLOT(KivOpenTraceWindowFn, kivSlotOpenTraceWindow)(w); }
#endif

#ifdef __cplusplus
}
#endif

#endif
