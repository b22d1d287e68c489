/* fenkapi: Value utilities — copy and comparison, constructors, GeneralizedTime and UTCTime conversions, constraint checks and name lookup.
 * Slot numbers, routine types, records and call helpers of the subsystem.
 * Included by fenkapi.h. */
#ifndef FENKAPI_VALUES_H
#define FENKAPI_VALUES_H

#ifdef __cplusplus
extern "C" {
#endif

/* Constraint checks and name lookup: ENUMERATED membership and permitted
 * alphabets (both raise on failure), bit and text trimming, the two leading
 * base-128 numbers of an octet string, the lookup of a number by XML name,
 * and two routines that only refuse. */
enum {
    kivSlotSignificantBits = 100,
    kivSlotTrimTrailingBlanks = 101,
    kivSlotFindEnumerated = 113,
    kivSlotFindEnumeratedToo = 114,
    kivSlotCheckAlphabet8 = 179,
    kivSlotCheckAlphabet16 = 180,
    kivSlotCheckAlphabet32 = 181,
    kivSlotRefuseFour = 298,
    kivSlotRefuseThree = 299,
    kivSlotLookupNameNumber = 300,
    kivSlotReadTwoNumbers = 341
};

typedef struct KivEnumeratedList {
    int32_t count;
    const uint32_t* values;
} KivEnumeratedList;

/* size is the number of characters, or KIV_ALPHABET_VALUE_SET when the
 * alphabet is the value set valueSet. The index table maps each code from
 * lowest on (8-bit strings: each code itself) to the character's index, 255
 * for a character outside the alphabet; it covers 256 codes. */
#define KIV_ALPHABET_VALUE_SET 0xFFFFFFFFu
typedef struct KivPermittedAlphabet {
    uint32_t size;
    const uint32_t* valueSet;
    const uint8_t* indexTable;
    uint32_t lowest;
} KivPermittedAlphabet;

/* Name tables for XML names (rootNames of KivXmlNameTables). A name record
 * resolves a name, within a namespace, to a number. */
#define KIV_NAMES_BY_NAMESPACE 0x1u /* table is a KivNamespaceNames */
#define KIV_NAMES_ONE_NAMESPACE 0x2u /* table is a KivLookupTable for namespaceName */
/* neither flag: table is a KivQualifiedLookupTable */
typedef struct KivNameRecord KivNameRecord;
struct KivNameRecord {
    uint32_t flags;
    const void* table;
    const char* namespaceName;
    int16_t notFound;
    int16_t emptyName;
};

/* forms of KivLookupTable */
#define KIV_LOOKUP_SINGLE 0u /* data: one KivNameEntry */
#define KIV_LOOKUP_SORTED 1u /* data: KivSortedNames */
#define KIV_LOOKUP_HASHED 2u /* data: KivHashedNames */
typedef struct KivLookupTable {
    uint16_t form;
    const void* data;
} KivLookupTable;

/* A name (null for the empty name) and its value; also the namespace and
 * value of each entry of a qualified table's parallel array. */
typedef struct KivNameEntry {
    const char* text;
    int16_t value;
} KivNameEntry;

typedef struct KivSortedNames {
    uint16_t count;
    const KivNameEntry* entries; /* ascending byte order of the names */
} KivSortedNames;

#define KIV_HASH_CHAIN_END 0xFFFFu
typedef struct KivHashedName {
    const char* text;
    uint16_t next; /* KIV_HASH_CHAIN_END ends a chain */
    uint16_t value;
} KivHashedName;

typedef struct KivHashedNames {
    const KivHashedName* entries; /* 0 .. bucketCount - 1 are chain heads */
    uint32_t seed;
    uint16_t bucketCount;
} KivHashedNames;

/* kind 0: value is the number; kind 1: value is the index of the lookup
 * table (0xFFFF: none) */
typedef struct KivNamespaceChoice {
    const char* namespaceName;
    uint16_t kind;
    uint16_t value;
} KivNamespaceChoice;

typedef struct KivNamespaceNames {
    int32_t count;
    const KivNamespaceChoice* entries;
    const KivLookupTable* tables;
} KivNamespaceNames;

/* A lookup table whose entry i belongs to the namespace of namespaces[i]. */
typedef struct KivQualifiedLookupTable {
    KivLookupTable names;
    const KivNameEntry* namespaces;
} KivQualifiedLookupTable;

KIV_STATIC_ASSERT(sizeof(KivEnumeratedList) == 16, "KivEnumeratedList");
KIV_STATIC_ASSERT(sizeof(KivPermittedAlphabet) == 32, "KivPermittedAlphabet");
KIV_STATIC_ASSERT(offsetof(KivPermittedAlphabet, lowest) == 24, "lowest");
KIV_STATIC_ASSERT(sizeof(KivNameRecord) == 32, "KivNameRecord");
KIV_STATIC_ASSERT(offsetof(KivNameRecord, notFound) == 24, "notFound");
KIV_STATIC_ASSERT(sizeof(KivLookupTable) == 16, "lookup tables are 16 bytes");
KIV_STATIC_ASSERT(sizeof(KivNameEntry) == 16, "KivNameEntry");
KIV_STATIC_ASSERT(sizeof(KivHashedName) == 16, "KivHashedName");
KIV_STATIC_ASSERT(offsetof(KivHashedNames, bucketCount) == 12, "bucketCount");
KIV_STATIC_ASSERT(sizeof(KivNamespaceChoice) == 16, "KivNamespaceChoice");
KIV_STATIC_ASSERT(sizeof(KivNamespaceNames) == 24, "KivNamespaceNames");
KIV_STATIC_ASSERT(offsetof(KivQualifiedLookupTable, namespaces) == 16, "third word");

typedef const uint32_t* KivFindEnumeratedFn(KivGlobal* world, uint32_t value,
                                            const KivEnumeratedList* list);
typedef void KivCheckAlphabet8Fn(KivGlobal* world, const uint8_t* chars, uint32_t count,
                                 const KivPermittedAlphabet* alphabet);
typedef void KivCheckAlphabet16Fn(KivGlobal* world, const uint16_t* chars, uint32_t count,
                                  const KivPermittedAlphabet* alphabet);
typedef void KivCheckAlphabet32Fn(KivGlobal* world, const uint32_t* chars, uint32_t count,
                                  const KivPermittedAlphabet* alphabet);
typedef uint32_t KivSignificantBitsFn(const uint8_t* bits, uint32_t bitCount);
typedef int32_t KivTrimTrailingBlanksFn(const char* text, int32_t length);
/* 0; 5 a number does not end within five octets; 6 a null argument or no data. */
typedef int32_t KivReadTwoNumbersFn(KivGlobal* world, KivBuffer* data, uint32_t* first,
                                    uint32_t* second);
/* 0; 5 not found (number below 1); 6 a null argument, no tables or an empty name. */
typedef int32_t KivLookupNameNumberFn(KivGlobal* world, const char* namespaceName,
                                      const char* name, uint32_t* number);
typedef int32_t KivRefuseFourFn(const void* a, const void* b, const void* c, int32_t d);
typedef int32_t KivRefuseThreeFn(const void* a, const void* b, const void* c, uint8_t d);

#if KIV_CALL_HELPERS
static inline const uint32_t* kivFindEnumerated(KivGlobal* w, uint32_t value, const KivEnumeratedList* list) { return KIV_SLOT(KivFindEnumeratedFn, kivSlotFindEnumerated)(w, value, list); }
static inline const uint32_t* kivFindEnumeratedToo(KivGlobal* w, uint32_t value, const KivEnumeratedList* list) { return KIV_SLOT(KivFindEnumeratedFn, kivSlotFindEnumeratedToo)(w, value, list); }
static inline void kivCheckAlphabet8(KivGlobal* w, const uint8_t* chars, uint32_t count, const KivPermittedAlphabet* alphabet) { KIV_SLOT(KivCheckAlphabet8Fn, kivSlotCheckAlphabet8)(w, chars, count, alphabet); }
static inline void kivCheckAlphabet16(KivGlobal* w, const uint16_t* chars, uint32_t count, const KivPermittedAlphabet* alphabet) { KIV_SLOT(KivCheckAlphabet16Fn, kivSlotCheckAlphabet16)(w, chars, count, alphabet); }
static inline void kivCheckAlphabet32(KivGlobal* w, const uint32_t* chars, uint32_t count, const KivPermittedAlphabet* alphabet) { KIV_SLOT(KivCheckAlphabet32Fn, kivSlotCheckAlphabet32)(w, chars, count, alphabet); }
static inline uint32_t kivSignificantBits(const uint8_t* bits, uint32_t bitCount) { return KIV_SLOT(KivSignificantBitsFn, kivSlotSignificantBits)(bits, bitCount); }
static inline int32_t kivTrimTrailingBlanks(const char* text, int32_t length) { return KIV_SLOT(KivTrimTrailingBlanksFn, kivSlotTrimTrailingBlanks)(text, length); }
static inline int32_t kivReadTwoNumbers(KivGlobal* w, KivBuffer* data, uint32_t* first, uint32_t* second) { return KIV_SLOT(KivReadTwoNumbersFn, kivSlotReadTwoNumbers)(w, data, first, second); }
static inline int32_t kivLookupNameNumber(KivGlobal* w, const char* namespaceName, const char* name, uint32_t* number) { return KIV_SLOT(KivLookupNameNumberFn, kivSlotLookupNameNumber)(w, namespaceName, name, number); }
static inline int32_t kivRefuseFour(const void* a, const void* b, const void* c, int32_t d) { return KIV_SLOT(KivRefuseFourFn, kivSlotRefuseFour)(a, b, c, d); }
static inline int32_t kivRefuseThree(const void* a, const void* b, const void* c, uint8_t d) { return KIV_SLOT(KivRefuseThreeFn, kivSlotRefuseThree)(a, b, c, d); }
#endif

/* KivTimeStruct: the C structure of UTCTime and GeneralizedTime values (18
 * bytes). For UTCTime, year holds the two-digit value. zoneOffset is the
 * offset from UTC in minutes (local time = UTC + zoneOffset); isUtc is 1 for
 * a time in UTC ('Z'). */
typedef struct KivTimeStruct {
    uint16_t year;
    uint16_t month;
    uint16_t day;
    uint16_t hour;
    uint16_t minute;
    uint16_t second;
    uint16_t milliseconds;
    int16_t zoneOffset;
    uint8_t isUtc;
} KivTimeStruct;

KIV_STATIC_ASSERT(sizeof(KivTimeStruct) == 18, "KivTimeStruct is 18 bytes");
KIV_STATIC_ASSERT(offsetof(KivTimeStruct, milliseconds) == 12, "milliseconds");
KIV_STATIC_ASSERT(offsetof(KivTimeStruct, zoneOffset) == 14, "zoneOffset");
KIV_STATIC_ASSERT(offsetof(KivTimeStruct, isUtc) == 16, "isUtc");
/* end of KivTimeStruct */

/* GeneralizedTime and UTCTime conversions among text, separate fields,
 * KivTimeStruct and seconds since 1970-01-01T00:00:00Z. Under DER and CER
 * the text routines insist on the canonical forms. Every routine answers 0,
 * 6 (a null argument), 8 (out of memory) or 12 (out-of-range value in time
 * type); none raises.
 * Zone values of the text routines: 0 local time, 1 'Z', otherwise the offset
 * in minutes (negative west of UTC). */
enum {
    kivSlotParseGeneralizedTime = 65,
    kivSlotParseUtcTime = 66,
    kivSlotFormatGeneralizedTime = 67,
    kivSlotFormatUtcTime = 68,
    kivSlotGeneralizedTimeFields = 88,
    kivSlotUtcTimeFields = 89,
    kivSlotGeneralizedTimeToStruct = 265,
    kivSlotUtcTimeToStruct = 266,
    kivSlotNewGeneralizedTimeStruct = 267,
    kivSlotNewUtcTimeStruct = 268,
    kivSlotSecondsToGeneralizedTimeText = 283,
    kivSlotSecondsToGeneralizedTimeStruct = 284,
    kivSlotSecondsToUtcTimeText = 285,
    kivSlotSecondsToUtcTimeStruct = 286,
    kivSlotGeneralizedTimeTextToSeconds = 287,
    kivSlotGeneralizedTimeStructToSeconds = 288,
    kivSlotUtcTimeTextToSeconds = 289,
    kivSlotUtcTimeStructToSeconds = 290
};

typedef int32_t KivParseGeneralizedTimeFn(KivGlobal* world, const char* text, uint32_t* year,
                                          uint32_t* month, uint32_t* day, uint32_t* hour,
                                          uint32_t* minute, uint32_t* second,
                                          uint32_t* fractionValue, uint16_t* fractionDigits,
                                          int32_t* zone);
typedef int32_t KivParseUtcTimeFn(KivGlobal* world, const char* text, uint32_t* year,
                                  uint32_t* month, uint32_t* day, uint32_t* hour,
                                  uint32_t* minute, uint32_t* second, int32_t* zone);
/* The output needs room for 14 digits, a point, the fraction digits, a
 * five-character offset and the terminator. */
typedef int32_t KivFormatGeneralizedTimeFn(KivGlobal* world, uint32_t year, int32_t month,
                                           int32_t day, uint32_t hour, uint32_t minute,
                                           uint32_t second, uint32_t fractionValue,
                                           uint16_t fractionDigits, int32_t zone, char* out);
typedef int32_t KivFormatUtcTimeFn(KivGlobal* world, uint32_t year, int32_t month, int32_t day,
                                   uint32_t hour, uint32_t minute, uint32_t second, int32_t zone,
                                   char* out);
typedef int32_t KivGeneralizedTimeFieldsFn(KivGlobal* world, const char* text, uint16_t* year,
                                           uint16_t* month, uint16_t* day, uint16_t* hour,
                                           uint16_t* minute, uint16_t* second,
                                           uint32_t* fractionValue, uint16_t* fractionDigits,
                                           int32_t* zone);
typedef int32_t KivUtcTimeFieldsFn(KivGlobal* world, const char* text, uint16_t* year,
                                   uint16_t* month, uint16_t* day, uint16_t* hour,
                                   uint16_t* minute, uint16_t* second, int32_t* zone);
typedef int32_t KivTimeTextToStructFn(KivGlobal* world, KivTimeStruct* out, const char* text);
/* A new structure from the allocation hook, or null when the text is refused
 * or there is no memory; it belongs to the caller. */
typedef KivTimeStruct* KivNewTimeStructFn(KivGlobal* world, const char* text);
/* When *text (or *out) is null, a block is allocated through the table and
 * stored there; it belongs to the caller. */
typedef int32_t KivSecondsToTimeTextFn(KivGlobal* world, int32_t seconds, int32_t offsetMinutes,
                                       char** text);
typedef int32_t KivSecondsToTimeStructFn(KivGlobal* world, int32_t seconds,
                                         int32_t offsetMinutes, KivTimeStruct** out);
typedef int32_t KivTimeTextToSecondsFn(KivGlobal* world, const char* text, uint64_t* seconds);
typedef int32_t KivTimeStructToSecondsFn(KivGlobal* world, const KivTimeStruct* value,
                                         uint64_t* seconds);

#if KIV_CALL_HELPERS
static inline int32_t kivParseGeneralizedTime(KivGlobal* w, const char* t, uint32_t* y, uint32_t* mo, uint32_t* d, uint32_t* h, uint32_t* mi, uint32_t* s, uint32_t* fv, uint16_t* fd, int32_t* z) { return KIV_SLOT(KivParseGeneralizedTimeFn, kivSlotParseGeneralizedTime)(w, t, y, mo, d, h, mi, s, fv, fd, z); }
static inline int32_t kivParseUtcTime(KivGlobal* w, const char* t, uint32_t* y, uint32_t* mo, uint32_t* d, uint32_t* h, uint32_t* mi, uint32_t* s, int32_t* z) { return KIV_SLOT(KivParseUtcTimeFn, kivSlotParseUtcTime)(w, t, y, mo, d, h, mi, s, z); }
static inline int32_t kivFormatGeneralizedTime(KivGlobal* w, uint32_t y, int32_t mo, int32_t d, uint32_t h, uint32_t mi, uint32_t s, uint32_t fv, uint16_t fd, int32_t z, char* out) { return KIV_SLOT(KivFormatGeneralizedTimeFn, kivSlotFormatGeneralizedTime)(w, y, mo, d, h, mi, s, fv, fd, z, out); }
static inline int32_t kivFormatUtcTime(KivGlobal* w, uint32_t y, int32_t mo, int32_t d, uint32_t h, uint32_t mi, uint32_t s, int32_t z, char* out) { return KIV_SLOT(KivFormatUtcTimeFn, kivSlotFormatUtcTime)(w, y, mo, d, h, mi, s, z, out); }
static inline int32_t kivGeneralizedTimeFields(KivGlobal* w, const char* t, uint16_t* y, uint16_t* mo, uint16_t* d, uint16_t* h, uint16_t* mi, uint16_t* s, uint32_t* fv, uint16_t* fd, int32_t* z) { return KIV_SLOT(KivGeneralizedTimeFieldsFn, kivSlotGeneralizedTimeFields)(w, t, y, mo, d, h, mi, s, fv, fd, z); }
static inline int32_t kivUtcTimeFields(KivGlobal* w, const char* t, uint16_t* y, uint16_t* mo, uint16_t* d, uint16_t* h, uint16_t* mi, uint16_t* s, int32_t* z) { return KIV_SLOT(KivUtcTimeFieldsFn, kivSlotUtcTimeFields)(w, t, y, mo, d, h, mi, s, z); }
static inline int32_t kivGeneralizedTimeToStruct(KivGlobal* w, KivTimeStruct* out, const char* t) { return KIV_SLOT(KivTimeTextToStructFn, kivSlotGeneralizedTimeToStruct)(w, out, t); }
static inline int32_t kivUtcTimeToStruct(KivGlobal* w, KivTimeStruct* out, const char* t) { return KIV_SLOT(KivTimeTextToStructFn, kivSlotUtcTimeToStruct)(w, out, t); }
static inline KivTimeStruct* kivNewGeneralizedTimeStruct(KivGlobal* w, const char* t) { return KIV_SLOT(KivNewTimeStructFn, kivSlotNewGeneralizedTimeStruct)(w, t); }
static inline KivTimeStruct* kivNewUtcTimeStruct(KivGlobal* w, const char* t) { return KIV_SLOT(KivNewTimeStructFn, kivSlotNewUtcTimeStruct)(w, t); }
static inline int32_t kivSecondsToGeneralizedTimeText(KivGlobal* w, int32_t s, int32_t off, char** t) { return KIV_SLOT(KivSecondsToTimeTextFn, kivSlotSecondsToGeneralizedTimeText)(w, s, off, t); }
static inline int32_t kivSecondsToGeneralizedTimeStruct(KivGlobal* w, int32_t s, int32_t off, KivTimeStruct** out) { return KIV_SLOT(KivSecondsToTimeStructFn, kivSlotSecondsToGeneralizedTimeStruct)(w, s, off, out); }
static inline int32_t kivSecondsToUtcTimeText(KivGlobal* w, int32_t s, int32_t off, char** t) { return KIV_SLOT(KivSecondsToTimeTextFn, kivSlotSecondsToUtcTimeText)(w, s, off, t); }
static inline int32_t kivSecondsToUtcTimeStruct(KivGlobal* w, int32_t s, int32_t off, KivTimeStruct** out) { return KIV_SLOT(KivSecondsToTimeStructFn, kivSlotSecondsToUtcTimeStruct)(w, s, off, out); }
static inline int32_t kivGeneralizedTimeTextToSeconds(KivGlobal* w, const char* t, uint64_t* s) { return KIV_SLOT(KivTimeTextToSecondsFn, kivSlotGeneralizedTimeTextToSeconds)(w, t, s); }
static inline int32_t kivGeneralizedTimeStructToSeconds(KivGlobal* w, const KivTimeStruct* v, uint64_t* s) { return KIV_SLOT(KivTimeStructToSecondsFn, kivSlotGeneralizedTimeStructToSeconds)(w, v, s); }
static inline int32_t kivUtcTimeTextToSeconds(KivGlobal* w, const char* t, uint64_t* s) { return KIV_SLOT(KivTimeTextToSecondsFn, kivSlotUtcTimeTextToSeconds)(w, t, s); }
static inline int32_t kivUtcTimeStructToSeconds(KivGlobal* w, const KivTimeStruct* v, uint64_t* s) { return KIV_SLOT(KivTimeStructToSecondsFn, kivSlotUtcTimeStructToSeconds)(w, v, s); }
#endif

/* Open-type record: the PDU number of the decoded value (0 if none), the
 * length of the encoding, the encoded octets and the decoded value (each may
 * be null). A user field of 8 bytes follows when the world's settings ask
 * for it; this record covers the common 24 bytes. */
typedef struct KivOpenType {
    int32_t pduNum;
    uint32_t length;
    uint8_t* encoded;
    void* decoded;
} KivOpenType;

KIV_STATIC_ASSERT(sizeof(KivOpenType) == 24, "open-type record is 24 bytes");
KIV_STATIC_ASSERT(offsetof(KivOpenType, encoded) == 8, "encoded");
KIV_STATIC_ASSERT(offsetof(KivOpenType, decoded) == 16, "decoded");
/* end of the open-type record */

#ifdef __cplusplus
}
#endif

#endif
