/* The slot routines of the working memory subsystem, declared for the table and for
 * direct calls inside the library. C-compatible: the table is written in C. */
#ifndef FENK_MEMORY_SLOTS_H
#define FENK_MEMORY_SLOTS_H

#include "fenkapi.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Working memory: recorded allocation, output chunks, scratch and temporary
 * memory, the pointer-table stack, the end of an operation */
KivFreeBlockFn kivFreeBlock;
KivAllocZeroedFn kivAllocZeroed;
KivAllocExactFn kivAllocExact;
KivNewOutputChunkFn kivNewOutputChunk;
KivDropBlockTableFn kivDropBlockTable;
KivFreeTrackedBlocksFn kivFreeTrackedBlocks;
KivReleaseChildWorldsFn kivReleaseChildWorlds;
KivFreeTempChainsFn kivFreeTempChains;
KivJoinBackwardOutputFn kivJoinBackwardOutput;
KivJoinForwardOutputFn kivJoinForwardOutput;
KivFinishBufferOutputFn kivFinishBufferOutput;
KivAllocRoundedFn kivAllocRounded;
KivScratchAllocFn kivScratchAlloc;
KivTempAllocFn kivTempAlloc;
KivTempReleaseFn kivTempRelease;
KivTempGrowFn kivTempGrow;
KivScratchFreeFn kivScratchFree;
KivFinishOutputFn kivFinishOutput;
KivEndOperationMemoryFn kivEndOperationMemory;
KivCurrentPointerTableFn kivCurrentPointerTable;
KivSetPointerTableCountFn kivSetPointerTableCount;
KivPushPointerTableFn kivPushPointerTable;
KivPopPointerTableFn kivPopPointerTable;

/* SET OF ordering */
KivBeginSetOfFn kivBeginSetOf;
KivNextSetOfComponentFn kivNextSetOfComponent;
KivEndSetOfFn kivEndSetOf;

/* Memory handles */
KivCreateMemoryHandleFn kivCreateMemoryHandle;
KivDestroyMemoryHandleFn kivDestroyMemoryHandle;
KivUseMemoryHandleFn kivUseMemoryHandle;
/* The handle routines, installed as the world's hooks (not slots) */
void* kivHandleAlloc(KivGlobal* world, size_t size);
void kivHandleFree(KivGlobal* world, void* block);
void* kivHandleRealloc(KivGlobal* world, void* block, size_t size);

#ifdef __cplusplus
}
#endif

#endif
