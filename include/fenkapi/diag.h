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

/* Tracing: the hexadecimal dump, the four trace hooks that generated coders
 * call around each encoding and decoding, the trace file and the printers of
 * octet strings in hexadecimal value notation. */
enum {
    kivSlotHexDump = 19,
    kivSlotOpenTraceFile = 32,
    kivSlotCloseTraceFile = 33,
    kivSlotPrintDottedOctets = 69,
    kivSlotPrintQuotedOctets = 70,
    kivSlotTraceEncoderInput = 237,
    kivSlotTraceEncoderResult = 238,
    kivSlotTraceDecoderInput = 239,
    kivSlotTraceDecoderResult = 240
};

/* debugFlags bits */
#define KIV_DEBUG_NEWLINE_DECODER 0x01u
#define KIV_DEBUG_NEWLINE_ENCODER 0x02u
#define KIV_DEBUG_DECODED_VALUE 0x04u
#define KIV_DEBUG_DECODER_INPUT 0x08u
#define KIV_DEBUG_ENCODER_OUTPUT 0x10u
#define KIV_DEBUG_ENCODER_INPUT 0x20u
#define KIV_DEBUG_ERRORS 0x40u
#define KIV_DEBUG_FRAMED_DUMPS 0x80u

typedef void KivHexDumpFn(KivGlobal* world, const uint8_t* octets, int32_t length);
typedef int32_t KivOpenTraceFileFn(KivGlobal* world, const char* name);
typedef int32_t KivCloseTraceFileFn(KivGlobal* world);
typedef int32_t KivPrintDottedOctetsFn(KivGlobal* world, const char* text);
typedef int32_t KivPrintQuotedOctetsFn(KivGlobal* world, const char* text);
typedef void KivTraceEncoderInputFn(KivGlobal* world, int32_t pduNum, void* value, void* unused,
                                    uint8_t* output, int32_t outputLength);
typedef void KivTraceEncoderResultFn(KivGlobal* world, int32_t error, uint8_t* output,
                                     uint32_t length);
typedef void KivTraceDecoderInputFn(KivGlobal* world, const uint8_t* input, int32_t length);
typedef void KivTraceDecoderResultFn(KivGlobal* world, int32_t error, int32_t pduNum,
                                     void** value);

#if KIV_CALL_HELPERS
static inline void kivHexDump(KivGlobal* w, const uint8_t* octets, int32_t length) { KIV_SLOT(KivHexDumpFn, kivSlotHexDump)(w, octets, length); }
static inline int32_t kivOpenTraceFile(KivGlobal* w, const char* name) { return KIV_SLOT(KivOpenTraceFileFn, kivSlotOpenTraceFile)(w, name); }
static inline int32_t kivCloseTraceFile(KivGlobal* w) { return KIV_SLOT(KivCloseTraceFileFn, kivSlotCloseTraceFile)(w); }
static inline int32_t kivPrintDottedOctets(KivGlobal* w, const char* text) { return KIV_SLOT(KivPrintDottedOctetsFn, kivSlotPrintDottedOctets)(w, text); }
static inline int32_t kivPrintQuotedOctets(KivGlobal* w, const char* text) { return KIV_SLOT(KivPrintQuotedOctetsFn, kivSlotPrintQuotedOctets)(w, text); }
static inline void kivTraceEncoderInput(KivGlobal* w, int32_t pduNum, void* value, uint8_t* output, int32_t outputLength) { KIV_SLOT(KivTraceEncoderInputFn, kivSlotTraceEncoderInput)(w, pduNum, value, NULL, output, outputLength); }
static inline void kivTraceEncoderResult(KivGlobal* w, int32_t error, uint8_t* output, uint32_t length) { KIV_SLOT(KivTraceEncoderResultFn, kivSlotTraceEncoderResult)(w, error, output, length); }
static inline void kivTraceDecoderInput(KivGlobal* w, const uint8_t* input, int32_t length) { KIV_SLOT(KivTraceDecoderInputFn, kivSlotTraceDecoderInput)(w, input, length); }
static inline void kivTraceDecoderResult(KivGlobal* w, int32_t error, int32_t pduNum, void** value) { KIV_SLOT(KivTraceDecoderResultFn, kivSlotTraceDecoderResult)(w, error, pduNum, value); }
#endif

#ifdef __cplusplus
}
#endif

#endif
