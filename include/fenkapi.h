/* fenkapi: the API runtime library of the FENK encoder/decoder runtime.
 *
 * The library exports one data symbol, apiTbl: 342 routine slots. Everything
 * an application, the companion runtime or generated coders need reaches the
 * library through a fixed slot. This header declares the shared records, the
 * table, and (through the subsystem headers included at the end) the slot
 * numbers, the routine type of every slot and a call helper per service.
 *
 * Compiles as C11 and as C++20. Records are laid out field by field in the
 * order given, each at its natural alignment; sizes and key offsets are
 * pinned below so every consumer is checked.
 */
#ifndef FENKAPI_H
#define FENKAPI_H

#include <setjmp.h>
#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>
#include <pthread.h>

#ifdef __cplusplus
extern "C" {
#endif

#define KIV_SLOT_COUNT 342

typedef struct KivGlobal KivGlobal;
typedef struct KivPrivate KivPrivate;

/* A slot holds any routine; callers cast it to the slot's routine type. */
typedef void (*KivRoutine)(void);

/* The exported table. */
extern KivRoutine apiTbl[KIV_SLOT_COUNT];

/* Buffer descriptor of encode, decode and the octet helpers. */
typedef struct KivBuffer {
    uint32_t length;
    uint8_t* value;
} KivBuffer;

typedef int32_t (*KivEncoder)(KivGlobal* world, int32_t pduNum, void* value, KivBuffer* output,
                              uint32_t flags);
typedef int32_t (*KivDecoder)(KivGlobal* world, int32_t* pduNum, KivBuffer* input, void** value,
                              uint32_t flags);

/* One coder pair per family of encoding rules. */
typedef struct KivCoderPair {
    KivEncoder encoder;
    KivDecoder decoder;
} KivCoderPair;

/* Recorded blocks and the pointer-table stack: a count, 52 entries, a link. */
#define KIV_BLOCK_TABLE_ENTRIES 52
typedef struct KivBlockTable {
    int16_t count;
    void* entries[KIV_BLOCK_TABLE_ENTRIES];
    struct KivBlockTable* next;
} KivBlockTable;

/* The lock of the thread registry: a recursive mutex made by the companion. */
typedef struct KivCriticalSection {
    pthread_mutex_t mutex;
} KivCriticalSection;

/* Error context kept by the generated coders (the innermost frame is
 * errorPath; the outermost stands for the PDU itself). */
typedef struct KivComponentDescriptor {
    const char* name;
    const char* typeName;
    uint32_t kind;
} KivComponentDescriptor;

typedef struct KivComponentFrame {
    struct KivComponentFrame* outer;
    const KivComponentDescriptor* descriptor;
    int32_t index;
} KivComponentFrame;

typedef struct KivPduDescriptor {
    const char* name;
    const char* altName; /* used when name is a generated placeholder */
} KivPduDescriptor;

/* The members of the generated control table that the library relies on;
 * generated code may extend the record after them. */
typedef int32_t (*KivReleasePduRoutine)(KivGlobal* world, int32_t pduNum, void* value,
                                         KivGlobal* owner);
typedef int32_t (*KivPrintPduRoutine)(KivGlobal* world, int32_t pduNum, void* value);
typedef struct KivControlTable {
    KivReleasePduRoutine releasePdu;
    uint16_t version;
    KivPrintPduRoutine printPdu;
} KivControlTable;

#define KIV_CONTROL_TABLE_VERSION 17

typedef void* (*KivPlainAlloc)(size_t size);
typedef void* (*KivPlainRealloc)(void* block, size_t size);
typedef void (*KivPlainFree)(void* block);
typedef int (*KivPrintRoutine)(FILE* stream, const char* format, ...);
typedef int (*KivOutputRoutine)(KivGlobal* world, const char* format, va_list args);
typedef void* (*KivAllocHook)(KivGlobal* world, size_t size);
typedef void* (*KivReallocHook)(KivGlobal* world, void* block, size_t size);
typedef void (*KivFreeHook)(KivGlobal* world, void* block);
typedef void (*KivSignalHandler)(int signal);
typedef void (*KivRaiseRoutine)(KivGlobal* world, int32_t index, uint32_t number);
typedef int32_t (*KivOpenTypeRoutine)(KivGlobal* world, void* source, void* target);

/* The world context: one per instance, owned by the application. Reserved
 * ranges keep their places for the companion runtime and generated code;
 * each is named after its offset. */
struct KivGlobal {
    KivPlainAlloc allocRoutine;
    KivPlainRealloc reallocRoutine;
    KivPlainFree freeRoutine;
    int64_t printLimit;
    uint8_t reserved32[16];
    FILE* outputStream;
    KivPrintRoutine printRoutine;
    uint8_t settingsHeader[8];
    uint8_t settingsBlock[360];
    KivControlTable* controlTable;
    uint8_t reserved440[4];
    int32_t encodingRules;
    uint32_t encodingFlags;
    uint32_t decodingFlags;
    uint32_t decodeBufferLength;
    char messageText[520];
    uint32_t printNesting;
    uint8_t reserved984[312];
    jmp_buf* jumpBuffer;
    KivSignalHandler savedSignalHandler;
    uint8_t reserved1312[8];
    int32_t errorCode;
    uint8_t reserved1324[4];
    char* messageOut;
    uint8_t poolMode;
    KivComponentFrame* errorPath;
    int32_t errorPduNumber;
    const KivPduDescriptor* errorPduInfo;
    int32_t errorMode;
    uint8_t* poolCursor;
    uint32_t poolLeft;
    KivBlockTable blockTable;
    KivBlockTable* currentBlockTable;
    void* tempChunks;
    uint8_t reserved1840[8];
    uint8_t* userBufferStart;
    uint8_t* userBufferEnd;
    void* extraChunks;
    uint8_t reserved1872[404];
    uint32_t outputBytes;
    uint32_t coderFlags;
    KivRaiseRoutine raiseRoutine;
    uint8_t reserved2296[4];
    uint32_t pendingBits;
    KivGlobal* parentWorld;
    const char* decodeInput;
    int32_t decodeInputLength;
    void* deferredBlock;
    uint32_t encodedOctetCount;
    void* setOfFrames;
    KivGlobal* childWorld;
    FILE* savedOutputStream;
    KivPrintRoutine defaultPrintRoutine;
    KivOutputRoutine outputContext;
    KivAllocHook allocHook;
    KivReallocHook reallocHook;
    KivFreeHook freeHook;
    int32_t printIndent;
    uint16_t shortSetting;
    KivPrivate* privateState;
    uint8_t reserved2424[16];
    KivCriticalSection* globalLock;
    /* Trace window state: the window and the trace text store. */
    void* traceWindow;
    uint32_t traceLineCount;
    struct KivTracePage* traceCurrentPage;
    struct KivTracePage* traceFirstPage;
    uint16_t traceLineLength;
    uint16_t tracePageNumber;
    FILE* traceFile;
    char* traceFilePath;
    uint8_t traceLineOpen;
    int32_t traceWritten;
    uint8_t reserved2512[40];
    KivCoderPair* berCoders;
    KivCoderPair* perCoders;
    KivRoutine* apiTable;
    uint8_t reserved2576[128];
    KivCoderPair* xerCoders;
    uint8_t reserved2712[16];
};

/* The inner record, reached through privateState. */
struct KivPrivate {
    uint32_t privateWord0;
    KivOutputRoutine outputHook;
    KivPlainAlloc privateAllocRoutine;
    uint8_t reserved24[8];
    uint32_t userBufferLength;
    uint8_t* userBufferAddress;
    KivBlockTable pointerTables;
    KivBlockTable* currentPointerTable;
    uint8_t byteSetting;
    uint32_t entryWord;
    uint64_t entryContext;
    uint32_t entryCount;
    void* entryTable;
    uint64_t entryExtra;
    uint8_t reserved528[8];
    void* valueRoutines;
    uint64_t companionSetting;
    void* xmlDecoderState;
    uint64_t privatePointer;
    void* privateTable;
    uint16_t privateTableCount;
    void* privateTable2;
    uint8_t reserved592[24];
    uint32_t levelMask;
    uint32_t privateWord1;
    uint8_t reserved624[4];
    uint32_t privateWord2;
    uint8_t reserved632[8];
    void* privateListHead;
    uint8_t reserved648[172];
    int32_t xmlRules;
    KivOpenTypeRoutine openTypeCopier;
    KivOpenTypeRoutine openTypeComparer;
    uint32_t debugFlags;
    uint8_t reserved844[12];
    uint8_t* encodeBufferStart;
    int32_t encodeBufferLength;
    void* memoryHandle;
    KivAllocHook savedAllocHook;
    KivReallocHook savedReallocHook;
    KivFreeHook savedFreeHook;
    uint8_t reserved904[16];
    void* namespaceTable;
    char prefixStem[16];
    void* namespaceEntries;
    uint32_t namespaceFlags;
    KivCoderPair* exerCoders;
    uint8_t reserved968[32];
};

#ifdef __cplusplus
#define KIV_STATIC_ASSERT static_assert
#else
#define KIV_STATIC_ASSERT _Static_assert
#endif

KIV_STATIC_ASSERT(sizeof(KivBlockTable) == 432, "block table is 432 bytes");
KIV_STATIC_ASSERT(sizeof(KivGlobal) == 2728, "KivGlobal is 2728 bytes");
KIV_STATIC_ASSERT(sizeof(KivPrivate) == 1000, "KivPrivate is 1000 bytes");
KIV_STATIC_ASSERT(offsetof(KivGlobal, printLimit) == 24, "printLimit");
KIV_STATIC_ASSERT(offsetof(KivGlobal, outputStream) == 48, "outputStream");
KIV_STATIC_ASSERT(offsetof(KivGlobal, controlTable) == 432, "controlTable");
KIV_STATIC_ASSERT(offsetof(KivGlobal, encodingRules) == 444, "encodingRules");
KIV_STATIC_ASSERT(offsetof(KivGlobal, messageText) == 460, "messageText");
KIV_STATIC_ASSERT(offsetof(KivGlobal, jumpBuffer) == 1296, "jumpBuffer");
KIV_STATIC_ASSERT(offsetof(KivGlobal, messageOut) == 1328, "messageOut");
KIV_STATIC_ASSERT(offsetof(KivGlobal, poolMode) == 1336, "poolMode");
KIV_STATIC_ASSERT(offsetof(KivGlobal, errorPath) == 1344, "errorPath");
KIV_STATIC_ASSERT(offsetof(KivGlobal, blockTable) == 1392, "blockTable");
KIV_STATIC_ASSERT(offsetof(KivGlobal, userBufferStart) == 1848, "userBufferStart");
KIV_STATIC_ASSERT(offsetof(KivGlobal, outputBytes) == 2276, "outputBytes");
KIV_STATIC_ASSERT(offsetof(KivGlobal, parentWorld) == 2304, "parentWorld");
KIV_STATIC_ASSERT(offsetof(KivGlobal, allocHook) == 2384, "allocHook");
KIV_STATIC_ASSERT(offsetof(KivGlobal, privateState) == 2416, "privateState");
KIV_STATIC_ASSERT(offsetof(KivGlobal, globalLock) == 2440, "globalLock");
KIV_STATIC_ASSERT(offsetof(KivGlobal, traceWindow) == 2448, "traceWindow");
KIV_STATIC_ASSERT(offsetof(KivGlobal, traceLineCount) == 2456, "traceLineCount");
KIV_STATIC_ASSERT(offsetof(KivGlobal, traceLineLength) == 2480, "traceLineLength");
KIV_STATIC_ASSERT(offsetof(KivGlobal, traceFile) == 2488, "traceFile");
KIV_STATIC_ASSERT(offsetof(KivGlobal, traceWritten) == 2508, "traceWritten");
KIV_STATIC_ASSERT(offsetof(KivGlobal, berCoders) == 2552, "berCoders");
KIV_STATIC_ASSERT(offsetof(KivGlobal, apiTable) == 2568, "apiTable");
KIV_STATIC_ASSERT(offsetof(KivGlobal, xerCoders) == 2704, "xerCoders");
KIV_STATIC_ASSERT(offsetof(KivPrivate, outputHook) == 8, "outputHook");
KIV_STATIC_ASSERT(offsetof(KivPrivate, userBufferLength) == 32, "userBufferLength");
KIV_STATIC_ASSERT(offsetof(KivPrivate, pointerTables) == 48, "pointerTables");
KIV_STATIC_ASSERT(offsetof(KivPrivate, levelMask) == 616, "levelMask");
KIV_STATIC_ASSERT(offsetof(KivPrivate, xmlRules) == 820, "xmlRules");
KIV_STATIC_ASSERT(offsetof(KivPrivate, debugFlags) == 840, "debugFlags");
KIV_STATIC_ASSERT(offsetof(KivPrivate, memoryHandle) == 872, "memoryHandle");
KIV_STATIC_ASSERT(offsetof(KivPrivate, namespaceTable) == 920, "namespaceTable");
KIV_STATIC_ASSERT(offsetof(KivPrivate, prefixStem) == 928, "prefixStem");
KIV_STATIC_ASSERT(offsetof(KivPrivate, exerCoders) == 960, "exerCoders");

/* Inside the library the services are ordinary functions; outside it, the
 * call helpers of the subsystem headers reach them through apiTbl. */
#ifdef FENKAPI_BUILDING_LIBRARY
#define KIV_CALL_HELPERS 0
#else
#define KIV_CALL_HELPERS 1
#endif

/* Cast a slot to its routine type. */
#define KIV_SLOT(type, slot) ((type*)apiTbl[(slot)])

#ifdef __cplusplus
}
#endif

#include "fenkapi/api.h"
#include "fenkapi/diag.h"
#include "fenkapi/print.h"
#include "fenkapi/time.h"
#include "fenkapi/values.h"
#include "fenkapi/tracewin.h"
#include "fenkapi/memory.h"

#endif
