/* fenkapi: API frame and world context — the table, world accessors, fixed
 * answers and the companion forwarders. Included by fenkapi.h. */
#ifndef FENKAPI_API_H
#define FENKAPI_API_H

#ifdef __cplusplus
extern "C" {
#endif

enum {
    kivSlotCurrentRules = 1,
    kivSlotStoreLevel = 2,
    kivSlotFetchLevel = 3,
    kivSlotStoreLevelMask = 4,
    kivSlotAnswerZero = 5, /* also 52, 53, 86 */
    kivSlotStoreDecodeBufferLength = 10,
    kivSlotFetchDecodeBufferLength = 11,
    kivSlotStoreEncoderFlags = 12,
    kivSlotFetchEncoderFlags = 13,
    kivSlotStoreAllFlags = 14,
    kivSlotFetchAllFlags = 15,
    kivSlotStoreDecoderFlags = 16,
    kivSlotFetchDecoderFlags = 17,
    kivSlotMessageText = 18,
    kivSlotAnswerMinusOne = 36,     /* also 40, 46 */
    kivSlotAnswerMinusOneWide = 37, /* also 38, 39 */
    kivSlotDoNothing = 41,          /* also 42, 87 */
    kivSlotNoTrailingBuffer = 43,
    kivSlotStoreWorkBuffer = 44,
    kivSlotRepresentationUnsupported = 45,
    kivSlotInitialBufferExists = 47,
    kivSlotCannotOpenDecoderInput = 48,
    kivSlotCannotCloseDecoderInput = 49,
    kivSlotCannotOpenEncoderOutput = 50,
    kivSlotCannotCloseEncoderOutput = 51,
    kivSlotStoreMemoryHooks = 54,
    kivSlotFetchMemoryHooks = 55,
    kivSlotStoreOutput = 56,
    kivSlotFetchOutput = 57,
    kivSlotStoreOutputHook = 58,
    kivSlotFetchOutputHook = 59,
    kivSlotStoreOpenTypeHandlers = 60,
    kivSlotFetchOpenTypeHandlers = 61,
    kivSlotFetchPrivateWord = 62,
    kivSlotFetchByteSetting = 73,
    kivSlotStoreByteSetting = 90,
    kivSlotStoreShortSetting = 91,
    kivSlotFetchShortSetting = 92,
    kivSlotInstallDefaultRoutines = 96,
    kivSlotReleaseThroughTable = 167, /* also 191 */
    kivSlotCompanionEntry143 = 222,
    kivSlotCompanionEntry144 = 223,
    kivSlotCompanionEntry145 = 224,
    kivSlotCompanionEntry146 = 225,
    kivSlotCompanionEntry148 = 226,
    kivSlotCompanionEntry149 = 227,
    kivSlotStoreDebugFlags = 235,
    kivSlotFetchDebugFlags = 236,
    kivSlotAllocate = 242,
    kivSlotAllocateZeroed = 243,
    kivSlotRelease = 244
};

/* The application's temporary buffer as handed to slot 44. */
typedef struct KivWorkBuffer {
    int32_t length;
    void* address;
} KivWorkBuffer;

/* Accessors answer 6 for a null world where they return a code, and -1
 * (0xFFFFFFFF when 32 bits wide) where they return a value. */
typedef int32_t KivCurrentRulesFn(KivGlobal* world);
typedef int32_t KivStoreLevelFn(KivGlobal* world, uint32_t level);
typedef int32_t KivFetchLevelFn(KivGlobal* world);
typedef int32_t KivStoreLevelMaskFn(KivGlobal* world, uint32_t mask);
typedef int32_t KivStoreDecodeBufferLengthFn(KivGlobal* world, uint32_t length);
typedef uint32_t KivFetchDecodeBufferLengthFn(KivGlobal* world);
typedef int32_t KivStoreEncoderFlagsFn(KivGlobal* world, uint32_t flags);
typedef uint32_t KivFetchEncoderFlagsFn(KivGlobal* world);
typedef int32_t KivStoreAllFlagsFn(KivGlobal* world, uint32_t flags);
typedef uint32_t KivFetchAllFlagsFn(KivGlobal* world);
typedef int32_t KivStoreDecoderFlagsFn(KivGlobal* world, uint32_t flags);
typedef uint32_t KivFetchDecoderFlagsFn(KivGlobal* world);
typedef char* KivMessageTextFn(KivGlobal* world);
typedef int32_t KivStoreWorkBufferFn(KivGlobal* world, const KivWorkBuffer* buffer);
typedef void KivStoreMemoryHooksFn(KivGlobal* world, KivAllocHook alloc, KivFreeHook release,
                                   KivReallocHook realloc);
typedef void KivFetchMemoryHooksFn(KivGlobal* world, KivAllocHook* alloc, KivFreeHook* release,
                                   KivReallocHook* realloc);
typedef void KivStoreOutputFn(KivGlobal* world, FILE* stream, KivOutputRoutine routine);
typedef void KivFetchOutputFn(KivGlobal* world, FILE** stream, KivOutputRoutine* routine);
typedef void KivStoreOutputHookFn(KivGlobal* world, FILE* stream, KivOutputRoutine hook);
typedef void KivFetchOutputHookFn(KivGlobal* world, FILE** stream, KivOutputRoutine* hook);
typedef void KivStoreOpenTypeHandlersFn(KivGlobal* world, KivOpenTypeRoutine copier,
                                        KivOpenTypeRoutine comparer);
typedef void KivFetchOpenTypeHandlersFn(KivGlobal* world, KivOpenTypeRoutine* copier,
                                        KivOpenTypeRoutine* comparer);
typedef uint32_t KivFetchPrivateWordFn(KivGlobal* world);
typedef int32_t KivFetchByteSettingFn(KivGlobal* world);
typedef void KivStoreByteSettingFn(KivGlobal* world, uint8_t value);
typedef void KivStoreShortSettingFn(KivGlobal* world, uint16_t value);
typedef uint16_t KivFetchShortSettingFn(KivGlobal* world);
typedef int32_t KivInstallDefaultRoutinesFn(KivGlobal* world);
typedef int32_t KivStoreDebugFlagsFn(KivGlobal* world, uint32_t flags);
typedef uint32_t KivFetchDebugFlagsFn(KivGlobal* world);
typedef void* KivAllocateFn(KivGlobal* world, size_t size);
typedef void* KivAllocateZeroedFn(KivGlobal* world, size_t size);
typedef void KivReleaseFn(KivGlobal* world, void* block);
/* Releases through whatever release routine slot 55 reports. */
typedef void KivReleaseThroughTableFn(KivGlobal* world, void* block);

/* Fixed answers: arguments are ignored. */
typedef int32_t KivAnswerZeroFn(void);
typedef int32_t KivAnswerMinusOneFn(void);
typedef int64_t KivAnswerMinusOneWideFn(void);
typedef void KivDoNothingFn(void);
typedef int32_t KivFixedCodeFn(void); /* slots 43, 45, 47 to 51 */

/* Slots 222 to 227 pass up to six integer or pointer arguments unchanged to
 * the companion's entries 143 to 146, 148 and 149, and give back their result. */
typedef int64_t KivCompanionEntryFn(void* a1, int64_t a2, int64_t a3, int64_t a4, int64_t a5,
                                    int64_t a6);

#if KIV_CALL_HELPERS
static inline int32_t kivCurrentRules(KivGlobal* w) { return KIV_SLOT(KivCurrentRulesFn, kivSlotCurrentRules)(w); }
static inline int32_t kivStoreLevel(KivGlobal* w, uint32_t level) { return KIV_SLOT(KivStoreLevelFn, kivSlotStoreLevel)(w, level); }
static inline int32_t kivFetchLevel(KivGlobal* w) { return KIV_SLOT(KivFetchLevelFn, kivSlotFetchLevel)(w); }
static inline int32_t kivStoreLevelMask(KivGlobal* w, uint32_t mask) { return KIV_SLOT(KivStoreLevelMaskFn, kivSlotStoreLevelMask)(w, mask); }
static inline int32_t kivStoreDecodeBufferLength(KivGlobal* w, uint32_t length) { return KIV_SLOT(KivStoreDecodeBufferLengthFn, kivSlotStoreDecodeBufferLength)(w, length); }
static inline uint32_t kivFetchDecodeBufferLength(KivGlobal* w) { return KIV_SLOT(KivFetchDecodeBufferLengthFn, kivSlotFetchDecodeBufferLength)(w); }
static inline int32_t kivStoreEncoderFlags(KivGlobal* w, uint32_t flags) { return KIV_SLOT(KivStoreEncoderFlagsFn, kivSlotStoreEncoderFlags)(w, flags); }
static inline uint32_t kivFetchEncoderFlags(KivGlobal* w) { return KIV_SLOT(KivFetchEncoderFlagsFn, kivSlotFetchEncoderFlags)(w); }
static inline int32_t kivStoreAllFlags(KivGlobal* w, uint32_t flags) { return KIV_SLOT(KivStoreAllFlagsFn, kivSlotStoreAllFlags)(w, flags); }
static inline uint32_t kivFetchAllFlags(KivGlobal* w) { return KIV_SLOT(KivFetchAllFlagsFn, kivSlotFetchAllFlags)(w); }
static inline int32_t kivStoreDecoderFlags(KivGlobal* w, uint32_t flags) { return KIV_SLOT(KivStoreDecoderFlagsFn, kivSlotStoreDecoderFlags)(w, flags); }
static inline uint32_t kivFetchDecoderFlags(KivGlobal* w) { return KIV_SLOT(KivFetchDecoderFlagsFn, kivSlotFetchDecoderFlags)(w); }
static inline char* kivMessageText(KivGlobal* w) { return KIV_SLOT(KivMessageTextFn, kivSlotMessageText)(w); }
static inline int32_t kivStoreWorkBuffer(KivGlobal* w, const KivWorkBuffer* b) { return KIV_SLOT(KivStoreWorkBufferFn, kivSlotStoreWorkBuffer)(w, b); }
static inline void kivStoreMemoryHooks(KivGlobal* w, KivAllocHook a, KivFreeHook f, KivReallocHook r) { KIV_SLOT(KivStoreMemoryHooksFn, kivSlotStoreMemoryHooks)(w, a, f, r); }
static inline void kivFetchMemoryHooks(KivGlobal* w, KivAllocHook* a, KivFreeHook* f, KivReallocHook* r) { KIV_SLOT(KivFetchMemoryHooksFn, kivSlotFetchMemoryHooks)(w, a, f, r); }
static inline void kivStoreOutput(KivGlobal* w, FILE* s, KivOutputRoutine r) { KIV_SLOT(KivStoreOutputFn, kivSlotStoreOutput)(w, s, r); }
static inline void kivFetchOutput(KivGlobal* w, FILE** s, KivOutputRoutine* r) { KIV_SLOT(KivFetchOutputFn, kivSlotFetchOutput)(w, s, r); }
static inline void kivStoreOutputHook(KivGlobal* w, FILE* s, KivOutputRoutine h) { KIV_SLOT(KivStoreOutputHookFn, kivSlotStoreOutputHook)(w, s, h); }
static inline void kivFetchOutputHook(KivGlobal* w, FILE** s, KivOutputRoutine* h) { KIV_SLOT(KivFetchOutputHookFn, kivSlotFetchOutputHook)(w, s, h); }
static inline void kivStoreOpenTypeHandlers(KivGlobal* w, KivOpenTypeRoutine c, KivOpenTypeRoutine k) { KIV_SLOT(KivStoreOpenTypeHandlersFn, kivSlotStoreOpenTypeHandlers)(w, c, k); }
static inline void kivFetchOpenTypeHandlers(KivGlobal* w, KivOpenTypeRoutine* c, KivOpenTypeRoutine* k) { KIV_SLOT(KivFetchOpenTypeHandlersFn, kivSlotFetchOpenTypeHandlers)(w, c, k); }
static inline uint32_t kivFetchPrivateWord(KivGlobal* w) { return KIV_SLOT(KivFetchPrivateWordFn, kivSlotFetchPrivateWord)(w); }
static inline int32_t kivFetchByteSetting(KivGlobal* w) { return KIV_SLOT(KivFetchByteSettingFn, kivSlotFetchByteSetting)(w); }
static inline void kivStoreByteSetting(KivGlobal* w, uint8_t v) { KIV_SLOT(KivStoreByteSettingFn, kivSlotStoreByteSetting)(w, v); }
static inline void kivStoreShortSetting(KivGlobal* w, uint16_t v) { KIV_SLOT(KivStoreShortSettingFn, kivSlotStoreShortSetting)(w, v); }
static inline uint16_t kivFetchShortSetting(KivGlobal* w) { return KIV_SLOT(KivFetchShortSettingFn, kivSlotFetchShortSetting)(w); }
static inline int32_t kivInstallDefaultRoutines(KivGlobal* w) { return KIV_SLOT(KivInstallDefaultRoutinesFn, kivSlotInstallDefaultRoutines)(w); }
static inline int32_t kivStoreDebugFlags(KivGlobal* w, uint32_t flags) { return KIV_SLOT(KivStoreDebugFlagsFn, kivSlotStoreDebugFlags)(w, flags); }
static inline uint32_t kivFetchDebugFlags(KivGlobal* w) { return KIV_SLOT(KivFetchDebugFlagsFn, kivSlotFetchDebugFlags)(w); }
static inline void* kivAllocate(KivGlobal* w, size_t size) { return KIV_SLOT(KivAllocateFn, kivSlotAllocate)(w, size); }
static inline void* kivAllocateZeroed(KivGlobal* w, size_t size) { return KIV_SLOT(KivAllocateZeroedFn, kivSlotAllocateZeroed)(w, size); }
static inline void kivRelease(KivGlobal* w, void* block) { KIV_SLOT(KivReleaseFn, kivSlotRelease)(w, block); }
static inline void kivReleaseThroughTable(KivGlobal* w, void* block) { KIV_SLOT(KivReleaseThroughTableFn, kivSlotReleaseThroughTable)(w, block); }
#endif


/* Encoding rules and codec entry points. Rule numbers: 0 BER, 1 PER
 * (aligned), 2 PER (unaligned), 3 DER, 4 ECN, 5 XER, 6 CXER, 7 CER, 8 EXER. */
enum {
    kivRulesBer = 0,
    kivRulesPerAligned = 1,
    kivRulesPerUnaligned = 2,
    kivRulesDer = 3,
    kivRulesEcn = 4,
    kivRulesXer = 5,
    kivRulesCxer = 6,
    kivRulesCer = 7,
    kivRulesExer = 8
};

enum {
    kivSlotSelectRules = 0,
    kivSlotEncodeWithFlags = 6,
    kivSlotDecodeWithFlags = 7,
    kivSlotEncodePdu = 20,
    kivSlotDecodePdu = 21,
    kivSlotReleasePdu = 23,
    kivSlotMeasureEncoding = 34,
    kivSlotBerElementLength = 35,
    kivSlotTranscodeToXml = 192,
    kivSlotTranscodeFromXml = 193,
    kivSlotStoreXmlRules = 219,
    kivSlotChooseXmlRules = 220,
    kivSlotSkipLeadingOctets = 232
};

typedef int32_t KivSelectRulesFn(KivGlobal* world, int32_t rules);
typedef int32_t KivEncodePduFn(KivGlobal* world, int32_t pduNum, void* value, KivBuffer* buffer);
typedef int32_t KivDecodePduFn(KivGlobal* world, int32_t* pduNum, KivBuffer* input, void** value);
typedef int32_t KivEncodeWithFlagsFn(KivGlobal* world, int32_t pduNum, void* value,
                                     uint8_t** address, uint32_t* length, void* unused,
                                     uint32_t flags, char* message);
typedef int32_t KivDecodeWithFlagsFn(KivGlobal* world, int32_t* pduNum, uint8_t** address,
                                     uint32_t* length, void** value, uint32_t* bufferLength,
                                     void* unused, uint32_t flags, char* message);
typedef int32_t KivReleasePduFn(KivGlobal* world, int32_t pduNum, void* value);
typedef uint32_t KivMeasureEncodingFn(KivGlobal* world, int32_t pduNum, void* value);
typedef uint32_t KivBerElementLengthFn(void* unused, const KivBuffer* buffer);
typedef int32_t KivTranscodeToXmlFn(KivGlobal* world, int32_t pduNum, int32_t sourceRules,
                                    KivBuffer* input, KivBuffer* output);
typedef int32_t KivTranscodeFromXmlFn(KivGlobal* world, int32_t pduNum, int32_t targetRules,
                                      KivBuffer* input, KivBuffer* output);
typedef int32_t KivStoreXmlRulesFn(KivGlobal* world, int32_t rules);
typedef int32_t KivChooseXmlRulesFn(KivGlobal* world);
typedef int32_t KivSkipLeadingOctetsFn(KivGlobal* world, KivBuffer* buffer, uint8_t octet);

#if KIV_CALL_HELPERS
static inline int32_t kivSelectRules(KivGlobal* w, int32_t rules) { return KIV_SLOT(KivSelectRulesFn, kivSlotSelectRules)(w, rules); }
static inline int32_t kivEncodePdu(KivGlobal* w, int32_t pduNum, void* value, KivBuffer* buffer) { return KIV_SLOT(KivEncodePduFn, kivSlotEncodePdu)(w, pduNum, value, buffer); }
static inline int32_t kivDecodePdu(KivGlobal* w, int32_t* pduNum, KivBuffer* input, void** value) { return KIV_SLOT(KivDecodePduFn, kivSlotDecodePdu)(w, pduNum, input, value); }
static inline int32_t kivEncodeWithFlags(KivGlobal* w, int32_t pduNum, void* value, uint8_t** address, uint32_t* length, uint32_t flags, char* message) { return KIV_SLOT(KivEncodeWithFlagsFn, kivSlotEncodeWithFlags)(w, pduNum, value, address, length, NULL, flags, message); }
static inline int32_t kivDecodeWithFlags(KivGlobal* w, int32_t* pduNum, uint8_t** address, uint32_t* length, void** value, uint32_t* bufferLength, uint32_t flags, char* message) { return KIV_SLOT(KivDecodeWithFlagsFn, kivSlotDecodeWithFlags)(w, pduNum, address, length, value, bufferLength, NULL, flags, message); }
static inline int32_t kivReleasePdu(KivGlobal* w, int32_t pduNum, void* value) { return KIV_SLOT(KivReleasePduFn, kivSlotReleasePdu)(w, pduNum, value); }
static inline uint32_t kivMeasureEncoding(KivGlobal* w, int32_t pduNum, void* value) { return KIV_SLOT(KivMeasureEncodingFn, kivSlotMeasureEncoding)(w, pduNum, value); }
static inline uint32_t kivBerElementLength(const KivBuffer* buffer) { return KIV_SLOT(KivBerElementLengthFn, kivSlotBerElementLength)(NULL, buffer); }
static inline int32_t kivTranscodeToXml(KivGlobal* w, int32_t pduNum, int32_t sourceRules, KivBuffer* input, KivBuffer* output) { return KIV_SLOT(KivTranscodeToXmlFn, kivSlotTranscodeToXml)(w, pduNum, sourceRules, input, output); }
static inline int32_t kivTranscodeFromXml(KivGlobal* w, int32_t pduNum, int32_t targetRules, KivBuffer* input, KivBuffer* output) { return KIV_SLOT(KivTranscodeFromXmlFn, kivSlotTranscodeFromXml)(w, pduNum, targetRules, input, output); }
static inline int32_t kivStoreXmlRules(KivGlobal* w, int32_t rules) { return KIV_SLOT(KivStoreXmlRulesFn, kivSlotStoreXmlRules)(w, rules); }
static inline int32_t kivChooseXmlRules(KivGlobal* w) { return KIV_SLOT(KivChooseXmlRulesFn, kivSlotChooseXmlRules)(w); }
static inline int32_t kivSkipLeadingOctets(KivGlobal* w, KivBuffer* buffer, uint8_t octet) { return KIV_SLOT(KivSkipLeadingOctetsFn, kivSlotSkipLeadingOctets)(w, buffer, octet); }
#endif

/* Child worlds and further settings. */
enum {
    kivSlotStorePrivatePointer = 94,
    kivSlotStorePrivateTable = 95,
    kivSlotStoreEntryTable = 149,
    kivSlotEndChildWorld = 176,
    kivSlotMakeChildWorld = 178,
    kivSlotFetchPrivateWord1 = 182,
    kivSlotStorePrivateWord1 = 183,
    kivSlotFetchPrivateWord2 = 184,
    kivSlotStorePrivateWord2 = 185,
    kivSlotReleaseTempChain = 301
};

typedef KivGlobal* KivMakeChildWorldFn(KivGlobal* parent);
typedef KivGlobal* KivEndChildWorldFn(KivGlobal* child);
typedef void KivReleaseTempChainFn(KivGlobal* world, void* innermost);
typedef int32_t KivStorePrivatePointerFn(KivGlobal* world, uint64_t value);
typedef int32_t KivStorePrivateTableFn(KivGlobal* world, void* first, void* second, uint16_t count);
typedef uint32_t KivFetchPrivateWord1Fn(KivGlobal* world);
typedef int32_t KivStorePrivateWord1Fn(KivGlobal* world, uint32_t value);
typedef uint32_t KivFetchPrivateWord2Fn(KivGlobal* world);
typedef int32_t KivStorePrivateWord2Fn(KivGlobal* world, uint32_t value);
typedef int32_t KivStoreEntryTableFn(KivGlobal* world, uint64_t context, uint32_t word,
                                     const void* entries, uint32_t count, uint64_t extra);

#if KIV_CALL_HELPERS
static inline KivGlobal* kivMakeChildWorld(KivGlobal* parent) { return KIV_SLOT(KivMakeChildWorldFn, kivSlotMakeChildWorld)(parent); }
static inline KivGlobal* kivEndChildWorld(KivGlobal* child) { return KIV_SLOT(KivEndChildWorldFn, kivSlotEndChildWorld)(child); }
static inline void kivReleaseTempChain(KivGlobal* w, void* innermost) { KIV_SLOT(KivReleaseTempChainFn, kivSlotReleaseTempChain)(w, innermost); }
static inline int32_t kivStorePrivatePointer(KivGlobal* w, uint64_t value) { return KIV_SLOT(KivStorePrivatePointerFn, kivSlotStorePrivatePointer)(w, value); }
static inline int32_t kivStorePrivateTable(KivGlobal* w, void* first, void* second, uint16_t count) { return KIV_SLOT(KivStorePrivateTableFn, kivSlotStorePrivateTable)(w, first, second, count); }
static inline uint32_t kivFetchPrivateWord1(KivGlobal* w) { return KIV_SLOT(KivFetchPrivateWord1Fn, kivSlotFetchPrivateWord1)(w); }
static inline int32_t kivStorePrivateWord1(KivGlobal* w, uint32_t value) { return KIV_SLOT(KivStorePrivateWord1Fn, kivSlotStorePrivateWord1)(w, value); }
static inline uint32_t kivFetchPrivateWord2(KivGlobal* w) { return KIV_SLOT(KivFetchPrivateWord2Fn, kivSlotFetchPrivateWord2)(w); }
static inline int32_t kivStorePrivateWord2(KivGlobal* w, uint32_t value) { return KIV_SLOT(KivStorePrivateWord2Fn, kivSlotStorePrivateWord2)(w, value); }
static inline int32_t kivStoreEntryTable(KivGlobal* w, uint64_t context, uint32_t word, const void* entries, uint32_t count, uint64_t extra) { return KIV_SLOT(KivStoreEntryTableFn, kivSlotStoreEntryTable)(w, context, word, entries, count, extra); }
#endif

#ifdef __cplusplus
}
#endif

#endif
