/* fenkapi: Working memory — recorded allocation, output chunks, scratch and temporary memory, SET OF ordering, memory handles.
 * Slot numbers, routine types, records and call helpers of the subsystem.
 * Included by fenkapi.h. */
#ifndef FENKAPI_MEMORY_H
#define FENKAPI_MEMORY_H

#ifdef __cplusplus
extern "C" {
#endif

/* Working memory: recorded allocation (every block is recorded in the
 * world's block table so that a failed operation gives it back), output
 * chunks and their joins, scratch and temporary memory, the pointer-table
 * stack and the clean-up that ends an operation. Failures raise. */
enum {
    kivSlotFreeBlock = 24,
    kivSlotAllocZeroed = 97,
    kivSlotAllocExact = 98,
    kivSlotNewOutputChunk = 99,
    kivSlotDropBlockTable = 102,
    kivSlotFreeTrackedBlocks = 103,
    kivSlotReleaseChildWorlds = 104,
    kivSlotFreeTempChains = 106,
    kivSlotJoinBackwardOutput = 107,
    kivSlotJoinForwardOutput = 108,
    kivSlotFinishBufferOutput = 109,
    kivSlotAllocRounded = 130,
    kivSlotScratchAlloc = 131,
    kivSlotTempAlloc = 132,
    kivSlotTempRelease = 133,
    kivSlotTempGrow = 166,
    kivSlotScratchFree = 168,
    kivSlotFinishOutput = 174,
    kivSlotEndOperationMemory = 175,
    kivSlotCurrentPointerTable = 187,
    kivSlotSetPointerTableCount = 188,
    kivSlotPushPointerTable = 189,
    kivSlotPopPointerTable = 190
};

/* Output is grown in chunks of this many octets. */
#define KIV_OUTPUT_CHUNK_SIZE 1024
/* Bit of encodingFlags: the encoder only counts its output. */
#define KIV_ENCODE_COUNT_ONLY 0x40u
/* Bit of the encoder flags of slots 109 and 174: move a pool-mode encoding
 * to the end of the caller's buffer. */
#define KIV_ENCODE_AT_BUFFER_END 0x100u

typedef void* KivAllocZeroedFn(KivGlobal* world, int32_t size);
typedef void* KivAllocExactFn(KivGlobal* world, uint32_t size);
typedef void* KivAllocRoundedFn(KivGlobal* world, uint32_t size);
typedef void* KivNewOutputChunkFn(KivGlobal* world);
typedef void KivJoinBackwardOutputFn(KivGlobal* world, int32_t freeOctets, uint32_t* length,
                                     uint8_t** encoding);
typedef void KivJoinForwardOutputFn(KivGlobal* world, uint32_t* length, uint8_t** encoding);
typedef void KivFinishBufferOutputFn(KivGlobal* world, uint32_t* length, uint8_t** buffer,
                                     uint32_t encoderFlags);
typedef void KivFinishOutputFn(KivGlobal* world, uint32_t* length, uint8_t** buffer,
                               uint32_t encoderFlags);
typedef void KivDropBlockTableFn(KivGlobal* world);
/* Frees every recorded block with routine, newest first. */
typedef void KivFreeTrackedBlocksFn(KivGlobal* world, KivFreeHook routine);
typedef void KivFreeTempChainsFn(KivGlobal* world);
typedef void KivReleaseChildWorldsFn(KivGlobal* world, uint8_t force);
typedef void KivEndOperationMemoryFn(KivGlobal* world);
typedef void* KivScratchAllocFn(KivGlobal* world, int32_t size);
typedef void KivScratchFreeFn(KivGlobal* world, void* block);
/* Temporary memory: lives until released back to a mark (a pointer that
 * slot 132 returned) or until the operation ends. */
typedef void* KivTempAllocFn(KivGlobal* world, uint64_t size);
typedef void* KivTempGrowFn(KivGlobal* world, void* block, uint64_t keep, uint64_t size);
typedef void KivTempReleaseFn(KivGlobal* world, void* mark);
typedef void** KivPushPointerTableFn(KivGlobal* world);
typedef void** KivPopPointerTableFn(KivGlobal* world);
typedef void** KivCurrentPointerTableFn(KivGlobal* world, uint32_t* count);
typedef void KivSetPointerTableCountFn(KivGlobal* world, uint16_t count);
/* world may be null: then the C library's free is used. */
typedef void KivFreeBlockFn(KivGlobal* world, void* block);

#if KIV_CALL_HELPERS
static inline void kivFreeBlock(KivGlobal* w, void* block) { KIV_SLOT(KivFreeBlockFn, kivSlotFreeBlock)(w, block); }
static inline void* kivAllocZeroed(KivGlobal* w, int32_t size) { return KIV_SLOT(KivAllocZeroedFn, kivSlotAllocZeroed)(w, size); }
static inline void* kivAllocExact(KivGlobal* w, uint32_t size) { return KIV_SLOT(KivAllocExactFn, kivSlotAllocExact)(w, size); }
static inline void* kivNewOutputChunk(KivGlobal* w) { return KIV_SLOT(KivNewOutputChunkFn, kivSlotNewOutputChunk)(w); }
static inline void kivDropBlockTable(KivGlobal* w) { KIV_SLOT(KivDropBlockTableFn, kivSlotDropBlockTable)(w); }
static inline void kivFreeTrackedBlocks(KivGlobal* w, KivFreeHook routine) { KIV_SLOT(KivFreeTrackedBlocksFn, kivSlotFreeTrackedBlocks)(w, routine); }
static inline void kivReleaseChildWorlds(KivGlobal* w, uint8_t force) { KIV_SLOT(KivReleaseChildWorldsFn, kivSlotReleaseChildWorlds)(w, force); }
static inline void kivFreeTempChains(KivGlobal* w) { KIV_SLOT(KivFreeTempChainsFn, kivSlotFreeTempChains)(w); }
static inline void kivJoinBackwardOutput(KivGlobal* w, int32_t freeOctets, uint32_t* length, uint8_t** encoding) { KIV_SLOT(KivJoinBackwardOutputFn, kivSlotJoinBackwardOutput)(w, freeOctets, length, encoding); }
static inline void kivJoinForwardOutput(KivGlobal* w, uint32_t* length, uint8_t** encoding) { KIV_SLOT(KivJoinForwardOutputFn, kivSlotJoinForwardOutput)(w, length, encoding); }
static inline void kivFinishBufferOutput(KivGlobal* w, uint32_t* length, uint8_t** buffer, uint32_t flags) { KIV_SLOT(KivFinishBufferOutputFn, kivSlotFinishBufferOutput)(w, length, buffer, flags); }
static inline void* kivAllocRounded(KivGlobal* w, uint32_t size) { return KIV_SLOT(KivAllocRoundedFn, kivSlotAllocRounded)(w, size); }
static inline void* kivScratchAlloc(KivGlobal* w, int32_t size) { return KIV_SLOT(KivScratchAllocFn, kivSlotScratchAlloc)(w, size); }
static inline void* kivTempAlloc(KivGlobal* w, uint64_t size) { return KIV_SLOT(KivTempAllocFn, kivSlotTempAlloc)(w, size); }
static inline void kivTempRelease(KivGlobal* w, void* mark) { KIV_SLOT(KivTempReleaseFn, kivSlotTempRelease)(w, mark); }
static inline void* kivTempGrow(KivGlobal* w, void* block, uint64_t keep, uint64_t size) { return KIV_SLOT(KivTempGrowFn, kivSlotTempGrow)(w, block, keep, size); }
static inline void kivScratchFree(KivGlobal* w, void* block) { KIV_SLOT(KivScratchFreeFn, kivSlotScratchFree)(w, block); }
static inline void kivFinishOutput(KivGlobal* w, uint32_t* length, uint8_t** buffer, uint32_t flags) { KIV_SLOT(KivFinishOutputFn, kivSlotFinishOutput)(w, length, buffer, flags); }
static inline void kivEndOperationMemory(KivGlobal* w) { KIV_SLOT(KivEndOperationMemoryFn, kivSlotEndOperationMemory)(w); }
static inline void** kivCurrentPointerTable(KivGlobal* w, uint32_t* count) { return KIV_SLOT(KivCurrentPointerTableFn, kivSlotCurrentPointerTable)(w, count); }
static inline void kivSetPointerTableCount(KivGlobal* w, uint16_t count) { KIV_SLOT(KivSetPointerTableCountFn, kivSlotSetPointerTableCount)(w, count); }
static inline void** kivPushPointerTable(KivGlobal* w) { return KIV_SLOT(KivPushPointerTableFn, kivSlotPushPointerTable)(w); }
static inline void** kivPopPointerTable(KivGlobal* w) { return KIV_SLOT(KivPopPointerTableFn, kivSlotPopPointerTable)(w); }
#endif

/* SET OF ordering under DER and CXER: the encoder calls begin, then next
 * before each component, then end; the components come out in ascending
 * order of their encodings. Elsewhere the three calls do nothing. */
enum {
    kivSlotBeginSetOf = 110,
    kivSlotNextSetOfComponent = 111,
    kivSlotEndSetOf = 112
};

/* Entry 83 of the BER coder table (the table berCoders points to, whose
 * first two entries are the coder pair): prepends octets to a backward
 * writer's output. */
#define KIV_CODER_BACKWARD_WRITER 83
typedef void KivBackwardOctetWriterFn(KivGlobal* world, uint8_t** cursor, uint32_t* left,
                                      const uint8_t* octets, uint32_t length);

typedef void KivBeginSetOfFn(KivGlobal* world, int32_t components, uint8_t** cursor,
                             uint32_t* left);
typedef void KivNextSetOfComponentFn(KivGlobal* world, uint32_t* left);
typedef void KivEndSetOfFn(KivGlobal* world, uint8_t** cursor, uint32_t* left, uint8_t mask);

#if KIV_CALL_HELPERS
static inline void kivBeginSetOf(KivGlobal* w, int32_t n, uint8_t** cursor, uint32_t* left) { KIV_SLOT(KivBeginSetOfFn, kivSlotBeginSetOf)(w, n, cursor, left); }
static inline void kivNextSetOfComponent(KivGlobal* w, uint32_t* left) { KIV_SLOT(KivNextSetOfComponentFn, kivSlotNextSetOfComponent)(w, left); }
static inline void kivEndSetOf(KivGlobal* w, uint8_t** cursor, uint32_t* left, uint8_t mask) { KIV_SLOT(KivEndSetOfFn, kivSlotEndSetOf)(w, cursor, left, mask); }
#endif

/* Memory handles: large blocks from the world's allocRoutine carved into
 * fragments; while a handle is in use its three routines are the world's
 * hooks. The layout is shared with the handle dump and reset. */
enum {
    kivSlotCreateMemoryHandle = 245,
    kivSlotDestroyMemoryHandle = 247,
    kivSlotUseMemoryHandle = 248
};

#define KIV_FRAGMENT_USED 97u  /* 'a' */
#define KIV_FRAGMENT_FREE 102u /* 'f' */
#define KIV_FRAGMENT_LAST 108u /* 'l': the free last fragment of its block */

typedef struct KivHandleBlock KivHandleBlock;

/* 32 bytes, followed by size payload bytes; the next header follows the
 * payload. */
typedef struct KivFragment {
    uint32_t tag;
    uint64_t size;
    KivHandleBlock* block;
    struct KivFragment* previous;
} KivFragment;

/* The block's fragments start right after these three fields. */
struct KivHandleBlock {
    KivHandleBlock* link;
    uint64_t size;
    uint64_t freeBytes;
};

typedef struct KivMemoryHandle {
    uint64_t blockSize;
    uint64_t totalBytes;
    uint32_t blockCount;
    KivHandleBlock* newestBlock;
    KivFragment* hint;
} KivMemoryHandle;

KIV_STATIC_ASSERT(sizeof(KivFragment) == 32, "fragment header is 32 bytes");
KIV_STATIC_ASSERT(sizeof(KivHandleBlock) == 24, "block header is 24 bytes");
KIV_STATIC_ASSERT(sizeof(KivMemoryHandle) == 40, "memory handle is 40 bytes");
KIV_STATIC_ASSERT(offsetof(KivMemoryHandle, newestBlock) == 24, "newestBlock");

typedef KivMemoryHandle* KivCreateMemoryHandleFn(KivGlobal* world, uint32_t blockSize);
typedef int32_t KivDestroyMemoryHandleFn(KivGlobal* world, KivMemoryHandle* handle);
typedef int32_t KivUseMemoryHandleFn(KivGlobal* world, KivMemoryHandle* handle);

#if KIV_CALL_HELPERS
static inline KivMemoryHandle* kivCreateMemoryHandle(KivGlobal* w, uint32_t blockSize) { return KIV_SLOT(KivCreateMemoryHandleFn, kivSlotCreateMemoryHandle)(w, blockSize); }
static inline int32_t kivDestroyMemoryHandle(KivGlobal* w, KivMemoryHandle* h) { return KIV_SLOT(KivDestroyMemoryHandleFn, kivSlotDestroyMemoryHandle)(w, h); }
static inline int32_t kivUseMemoryHandle(KivGlobal* w, KivMemoryHandle* h) { return KIV_SLOT(KivUseMemoryHandleFn, kivSlotUseMemoryHandle)(w, h); }
#endif

/* Resetting, fetching and dumping a memory handle. Detail level: the low 4
 * bits of the detail word (0 sums only, 1 sums only, 2 handle lines, 3 block
 * lines, 4 fragment lines); bit 0x20 leaves addresses out. */
enum {
    kivSlotResetMemoryHandle = 246,
    kivSlotCurrentMemoryHandle = 249,
    kivSlotDumpMemoryHandle = 250
};

typedef struct KivHandleSummary {
    uint32_t blockCount;
    uint64_t totalBytes;
    uint64_t internalBytes;
    uint64_t allocatedBytes;
    uint64_t freeBytes;
} KivHandleSummary;

KIV_STATIC_ASSERT(sizeof(KivHandleSummary) == 40, "handle summary is 40 bytes");

typedef int32_t KivResetMemoryHandleFn(KivGlobal* world, KivMemoryHandle* handle);
typedef KivMemoryHandle* KivCurrentMemoryHandleFn(KivGlobal* world);
typedef int32_t KivDumpMemoryHandleFn(KivGlobal* world, KivMemoryHandle* handle,
                                      KivHandleSummary* summary, uint32_t detail);

#if KIV_CALL_HELPERS
static inline int32_t kivResetMemoryHandle(KivGlobal* w, KivMemoryHandle* h) { return KIV_SLOT(KivResetMemoryHandleFn, kivSlotResetMemoryHandle)(w, h); }
static inline KivMemoryHandle* kivCurrentMemoryHandle(KivGlobal* w) { return KIV_SLOT(KivCurrentMemoryHandleFn, kivSlotCurrentMemoryHandle)(w); }
static inline int32_t kivDumpMemoryHandle(KivGlobal* w, KivMemoryHandle* h, KivHandleSummary* s, uint32_t detail) { return KIV_SLOT(KivDumpMemoryHandleFn, kivSlotDumpMemoryHandle)(w, h, s, detail); }
#endif

#ifdef __cplusplus
}
#endif

#endif
