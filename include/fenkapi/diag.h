/* fenkapi: Diagnostics — messages, raising, the guarded entry, error context, return-code texts, tracing and dumps.
 * Slot numbers, routine types, records and call helpers of the subsystem.
 * Included by fenkapi.h. */
#ifndef FENKAPI_DIAG_H
#define FENKAPI_DIAG_H

#ifdef __cplusplus
extern "C" {
#endif

/* Raising: compose the numbered message with its error context into the
 * outermost world's messageOut and unwind to that world's jumpBuffer. A
 * raise never returns. */
enum {
    kivSlotDisplayPdu = 22,
    kivSlotRaiseWide = 105,
    kivSlotRaiseData = 172,
    kivSlotRaise = 177,
    kivSlotRaiseText = 230,
    kivSlotRecordMessage = 231
};

typedef int32_t KivDisplayPduFn(KivGlobal* world, int32_t pduNum, void* value);
typedef void KivRaiseFn(KivGlobal* world, int32_t index, uint32_t number);
typedef void KivRaiseWideFn(KivGlobal* world, int32_t index, uint64_t number);
typedef void KivRaiseTextFn(KivGlobal* world, int32_t index, const char* text);
typedef void KivRaiseDataFn(KivGlobal* world, int32_t index, const void* data, uint32_t length);
typedef void KivRecordMessageFn(KivGlobal* world, int32_t index, uint32_t number);

#if KIV_CALL_HELPERS
static inline int32_t kivDisplayPdu(KivGlobal* w, int32_t pduNum, void* value) { return KIV_SLOT(KivDisplayPduFn, kivSlotDisplayPdu)(w, pduNum, value); }
__attribute__((noreturn)) static inline void kivRaise(KivGlobal* w, int32_t index, uint32_t number) { KIV_SLOT(KivRaiseFn, kivSlotRaise)(w, index, number); __builtin_unreachable(); }
__attribute__((noreturn)) static inline void kivRaiseWide(KivGlobal* w, int32_t index, uint64_t number) { KIV_SLOT(KivRaiseWideFn, kivSlotRaiseWide)(w, index, number); __builtin_unreachable(); }
__attribute__((noreturn)) static inline void kivRaiseText(KivGlobal* w, int32_t index, const char* text) { KIV_SLOT(KivRaiseTextFn, kivSlotRaiseText)(w, index, text); __builtin_unreachable(); }
__attribute__((noreturn)) static inline void kivRaiseData(KivGlobal* w, int32_t index, const void* data, uint32_t length) { KIV_SLOT(KivRaiseDataFn, kivSlotRaiseData)(w, index, data, length); __builtin_unreachable(); }
static inline void kivRecordMessage(KivGlobal* w, int32_t index, uint32_t number) { KIV_SLOT(KivRecordMessageFn, kivSlotRecordMessage)(w, index, number); }
#endif

/* Return-code descriptions: one constant sentence per return code, null for
 * a code without one. The world (may be null) matters only for codes 9 and
 * 10, whose text depends on whether it is decoding. */
enum { kivSlotReturnCodeText = 292 };

typedef const char* KivReturnCodeTextFn(KivGlobal* world, int32_t code);

#if KIV_CALL_HELPERS
static inline const char* kivReturnCodeText(KivGlobal* w, int32_t code) { return KIV_SLOT(KivReturnCodeTextFn, kivSlotReturnCodeText)(w, code); }
#endif

#ifdef __cplusplus
}
#endif

#endif
