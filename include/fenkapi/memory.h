/* fenkapi: Working memory — recorded allocation, output chunks, scratch and temporary memory, SET OF ordering, memory handles.
 * Slot numbers, routine types, records and call helpers of the subsystem.
 * Included by fenkapi.h. */
#ifndef FENKAPI_MEMORY_H
#define FENKAPI_MEMORY_H

#ifdef __cplusplus
extern "C" {
#endif

/* Recorded allocation: every block is recorded in the world's block table
 * so that a failed operation gives it back. Failures raise. */
enum {
    kivSlotAllocZeroed = 97,
    kivSlotAllocExact = 98,
    kivSlotAllocRounded = 130,
    kivSlotTempAlloc = 132,
    kivSlotTempRelease = 133
};

typedef void* KivAllocZeroedFn(KivGlobal* world, int32_t size);
typedef void* KivAllocExactFn(KivGlobal* world, uint32_t size);
typedef void* KivAllocRoundedFn(KivGlobal* world, uint32_t size);
/* Temporary memory: lives until released back to a mark (a pointer that
 * slot 132 returned) or until the operation ends. */
typedef void* KivTempAllocFn(KivGlobal* world, uint64_t size);
typedef void KivTempReleaseFn(KivGlobal* world, void* mark);

#if KIV_CALL_HELPERS
static inline void* kivAllocZeroed(KivGlobal* w, int32_t size) { return KIV_SLOT(KivAllocZeroedFn, kivSlotAllocZeroed)(w, size); }
static inline void* kivAllocExact(KivGlobal* w, uint32_t size) { return KIV_SLOT(KivAllocExactFn, kivSlotAllocExact)(w, size); }
static inline void* kivAllocRounded(KivGlobal* w, uint32_t size) { return KIV_SLOT(KivAllocRoundedFn, kivSlotAllocRounded)(w, size); }
static inline void* kivTempAlloc(KivGlobal* w, uint64_t size) { return KIV_SLOT(KivTempAllocFn, kivSlotTempAlloc)(w, size); }
static inline void kivTempRelease(KivGlobal* w, void* mark) { KIV_SLOT(KivTempReleaseFn, kivSlotTempRelease)(w, mark); }
#endif

#ifdef __cplusplus
}
#endif

#endif
