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

/* Value copy and comparison: the guarded copy and comparison of whole PDU
 * values through the control table's value routines, and the helpers that
 * generated copiers and comparators call for the shapes that recur in every
 * schema. Copy helpers allocate from working memory and raise on failure. */
enum {
    kivSlotEqualsDefault = 150,
    kivSlotCompareValue = 151,
    kivSlotBitsDiffer = 152,
    kivSlotNamedBitsDiffer = 153,
    kivSlotLengthDataDiffer = 154,
    kivSlotHugeIntegersDiffer = 155,
    kivSlotListsDiffer = 156,
    kivSlotListHeadsDiffer = 157,
    kivSlotOpenTypesDiffer = 158,
    kivSlotSetValueRoutines = 159,
    kivSlotCopyValue = 160,
    kivSlotCopySinglyLinkedList = 161,
    kivSlotCopyDoublyLinkedList = 162,
    kivSlotCopyLengthData = 163,
    kivSlotCopyText = 164,
    kivSlotCopyOpenType = 165,
    kivSlotCopyLengthDataAt = 169,
    kivSlotLengthDataAtDiffer = 170,
    kivSlotCompareHugeIntegers = 171,
    kivSlotKindValuesDiffer = 173,
    kivSlotCopyCountedList = 241
};

/* Bits of decodingFlags: copies leave out, and comparisons ignore, the
 * encoded or the decoded form of open types. */
#define KIV_IGNORE_ENCODED_OPEN_TYPE 0x80000u
#define KIV_IGNORE_DECODED_OPEN_TYPE 0x100000u
/* Bit of shortSetting: open-type records carry an 8-byte user field. */
#define KIV_OPEN_TYPE_USER_FIELD 0x0004u
/* Width selector of the length-plus-data helpers: a 16-bit length field
 * (any other value: 32 bits). The data pointer is at offset 8 either way. */
#define KIV_LENGTH_WIDTH_16 2
/* A negative unit means the length counts bits. */
#define KIV_UNIT_BITS (-1)

/* The generated value routines. A copier stores the address of the new
 * top-level value through its last argument; a comparator answers 0 for
 * equal values. */
typedef int32_t (*KivValueCopier)(KivGlobal* world, uint32_t pduNum, const void* source,
                                  void** destination);
typedef int32_t (*KivValueComparator)(KivGlobal* world, uint32_t pduNum, const void* first,
                                      const void* second);

/* The control table's table of value routines (entries 1 and 2 are the ones
 * this library calls). */
typedef struct KivValueRoutines {
    KivRoutine entry0;
    KivValueCopier copier;
    KivValueComparator comparator;
} KivValueRoutines;

/* Length-plus-data records: the length (u32, or u16 with width selector 2),
 * then the data pointer at offset 8. */
typedef struct KivLengthData {
    uint32_t length;
    void* data;
} KivLengthData;

typedef struct KivShortLengthData {
    uint16_t length;
    void* data;
} KivShortLengthData;

/* List nodes: the next pointer first (null ends the list); a doubly linked
 * node has the previous pointer next; the element follows. */
typedef struct KivListNode {
    struct KivListNode* next;
} KivListNode;

typedef struct KivDoubleNode {
    struct KivDoubleNode* next;
    struct KivDoubleNode* previous;
} KivDoubleNode;

typedef struct KivCountedList {
    KivDoubleNode* first;
    KivDoubleNode* last;
    uint32_t count;
} KivCountedList;

/* The open-type record with its user field (KIV_OPEN_TYPE_USER_FIELD). */
typedef struct KivOpenTypeWithUser {
    KivOpenType common;
    uint64_t userField;
} KivOpenTypeWithUser;

KIV_STATIC_ASSERT(sizeof(KivValueRoutines) == 24, "value routines");
KIV_STATIC_ASSERT(sizeof(KivLengthData) == 16, "length-plus-data record is 16 bytes");
KIV_STATIC_ASSERT(offsetof(KivShortLengthData, data) == 8, "data pointer at offset 8");
KIV_STATIC_ASSERT(sizeof(KivDoubleNode) == 16, "doubly linked node header");
KIV_STATIC_ASSERT(sizeof(KivCountedList) == 24, "counted-list holder is 24 bytes");
KIV_STATIC_ASSERT(offsetof(KivCountedList, count) == 16, "count");
KIV_STATIC_ASSERT(sizeof(KivOpenTypeWithUser) == 32, "open type with user field");

/* Guarded operations: 0 or a return code (6 null argument, 25 no value
 * routine, else the code of the raised message). With *destination set, the
 * copy is built inside that caller buffer of decodeBufferLength octets; a
 * failed copy leaves *destination null. */
typedef uint32_t KivCopyValueFn(KivGlobal* world, uint32_t pduNum, const void* source,
                                void** destination);
typedef uint32_t KivCompareValueFn(KivGlobal* world, uint32_t pduNum, const void* first,
                                   const void* second);
typedef void KivSetValueRoutinesFn(KivGlobal* world, const KivValueRoutines* routines);

/* Copy helpers: with a null destination a new record is allocated; the
 * result is the destination. */
typedef void* KivCopyLengthDataFn(KivGlobal* world, const void* source, void* destination,
                                  int16_t width, int32_t unit);
typedef void* KivCopyLengthDataAtFn(KivGlobal* world, const void* source, void* destination,
                                    int16_t width, int32_t unit, uint32_t position);
typedef KivListNode** KivCopyListFn(KivGlobal* world, KivListNode* const* source,
                                    KivListNode** destination, int32_t nodeSize);
typedef KivCountedList* KivCopyCountedListFn(KivGlobal* world, KivDoubleNode* const* source,
                                             KivCountedList* destination, uint32_t nodeSize);
typedef char* KivCopyTextFn(KivGlobal* world, const char* text);
typedef KivOpenType* KivCopyOpenTypeFn(KivGlobal* world, const KivOpenType* source,
                                       KivOpenType* destination);

/* Compare helpers: 0 equal, 1 different. */
typedef int32_t KivBitsDifferFn(const uint8_t* a, const uint8_t* b, int32_t bitCount);
typedef int32_t KivNamedBitsDifferFn(const uint8_t* a, const uint8_t* b, int32_t bitsA,
                                     int32_t bitsB);
typedef int32_t KivLengthDataDifferFn(const void* a, const void* b, int16_t width, int32_t unit);
typedef int32_t KivLengthDataAtDifferFn(const void* a, const void* b, int16_t width, int32_t unit,
                                        uint32_t position);
typedef int32_t KivHugeIntegersDifferFn(const void* a, const void* b, int16_t width,
                                        int32_t isSigned);
/* Negative, 0 or positive as a orders before, with or after b. */
typedef int32_t KivCompareHugeIntegersFn(const void* a, const void* b, int16_t width,
                                         int32_t isSigned, uint32_t position);
typedef int32_t KivListsDifferFn(KivListNode* const* a, KivListNode* const* b,
                                 int32_t elementSize);
typedef int32_t KivListHeadsDifferFn(const KivListNode* a, const KivListNode* b,
                                     uint32_t elementSize);
typedef int32_t KivOpenTypesDifferFn(KivGlobal* world, const KivOpenType* a, const KivOpenType* b);
/* 1 when the value equals the default value. */
typedef uint8_t KivEqualsDefaultFn(KivGlobal* world, const void* value, const void* defaultValue,
                                   int32_t size, uint32_t bits, uint32_t kind);
/* 0 equal, 1 different, 255 not comparable. */
typedef int32_t KivKindValuesDifferFn(KivGlobal* world, const void* a, const void* b,
                                      uint32_t size, uint32_t position, uint32_t bits,
                                      uint32_t kind);

#if KIV_CALL_HELPERS
static inline uint32_t kivCopyValue(KivGlobal* w, uint32_t pduNum, const void* source, void** destination) { return KIV_SLOT(KivCopyValueFn, kivSlotCopyValue)(w, pduNum, source, destination); }
static inline uint32_t kivCompareValue(KivGlobal* w, uint32_t pduNum, const void* first, const void* second) { return KIV_SLOT(KivCompareValueFn, kivSlotCompareValue)(w, pduNum, first, second); }
static inline void kivSetValueRoutines(KivGlobal* w, const KivValueRoutines* routines) { KIV_SLOT(KivSetValueRoutinesFn, kivSlotSetValueRoutines)(w, routines); }
static inline void* kivCopyLengthData(KivGlobal* w, const void* source, void* destination, int16_t width, int32_t unit) { return KIV_SLOT(KivCopyLengthDataFn, kivSlotCopyLengthData)(w, source, destination, width, unit); }
static inline void* kivCopyLengthDataAt(KivGlobal* w, const void* source, void* destination, int16_t width, int32_t unit, uint32_t position) { return KIV_SLOT(KivCopyLengthDataAtFn, kivSlotCopyLengthDataAt)(w, source, destination, width, unit, position); }
static inline KivListNode** kivCopySinglyLinkedList(KivGlobal* w, KivListNode* const* source, KivListNode** destination, int32_t nodeSize) { return KIV_SLOT(KivCopyListFn, kivSlotCopySinglyLinkedList)(w, source, destination, nodeSize); }
static inline KivListNode** kivCopyDoublyLinkedList(KivGlobal* w, KivListNode* const* source, KivListNode** destination, int32_t nodeSize) { return KIV_SLOT(KivCopyListFn, kivSlotCopyDoublyLinkedList)(w, source, destination, nodeSize); }
static inline KivCountedList* kivCopyCountedList(KivGlobal* w, KivDoubleNode* const* source, KivCountedList* destination, uint32_t nodeSize) { return KIV_SLOT(KivCopyCountedListFn, kivSlotCopyCountedList)(w, source, destination, nodeSize); }
static inline char* kivCopyText(KivGlobal* w, const char* text) { return KIV_SLOT(KivCopyTextFn, kivSlotCopyText)(w, text); }
static inline KivOpenType* kivCopyOpenType(KivGlobal* w, const KivOpenType* source, KivOpenType* destination) { return KIV_SLOT(KivCopyOpenTypeFn, kivSlotCopyOpenType)(w, source, destination); }
static inline int32_t kivBitsDiffer(const uint8_t* a, const uint8_t* b, int32_t bitCount) { return KIV_SLOT(KivBitsDifferFn, kivSlotBitsDiffer)(a, b, bitCount); }
static inline int32_t kivNamedBitsDiffer(const uint8_t* a, const uint8_t* b, int32_t bitsA, int32_t bitsB) { return KIV_SLOT(KivNamedBitsDifferFn, kivSlotNamedBitsDiffer)(a, b, bitsA, bitsB); }
static inline int32_t kivLengthDataDiffer(const void* a, const void* b, int16_t width, int32_t unit) { return KIV_SLOT(KivLengthDataDifferFn, kivSlotLengthDataDiffer)(a, b, width, unit); }
static inline int32_t kivLengthDataAtDiffer(const void* a, const void* b, int16_t width, int32_t unit, uint32_t position) { return KIV_SLOT(KivLengthDataAtDifferFn, kivSlotLengthDataAtDiffer)(a, b, width, unit, position); }
static inline int32_t kivHugeIntegersDiffer(const void* a, const void* b, int16_t width, int32_t isSigned) { return KIV_SLOT(KivHugeIntegersDifferFn, kivSlotHugeIntegersDiffer)(a, b, width, isSigned); }
static inline int32_t kivCompareHugeIntegers(const void* a, const void* b, int16_t width, int32_t isSigned, uint32_t position) { return KIV_SLOT(KivCompareHugeIntegersFn, kivSlotCompareHugeIntegers)(a, b, width, isSigned, position); }
static inline int32_t kivListsDiffer(KivListNode* const* a, KivListNode* const* b, int32_t elementSize) { return KIV_SLOT(KivListsDifferFn, kivSlotListsDiffer)(a, b, elementSize); }
static inline int32_t kivListHeadsDiffer(const KivListNode* a, const KivListNode* b, uint32_t elementSize) { return KIV_SLOT(KivListHeadsDifferFn, kivSlotListHeadsDiffer)(a, b, elementSize); }
static inline int32_t kivOpenTypesDiffer(KivGlobal* w, const KivOpenType* a, const KivOpenType* b) { return KIV_SLOT(KivOpenTypesDifferFn, kivSlotOpenTypesDiffer)(w, a, b); }
static inline uint8_t kivEqualsDefault(KivGlobal* w, const void* value, const void* defaultValue, int32_t size, uint32_t bits, uint32_t kind) { return KIV_SLOT(KivEqualsDefaultFn, kivSlotEqualsDefault)(w, value, defaultValue, size, bits, kind); }
static inline int32_t kivKindValuesDiffer(KivGlobal* w, const void* a, const void* b, uint32_t size, uint32_t position, uint32_t bits, uint32_t kind) { return KIV_SLOT(KivKindValuesDifferFn, kivSlotKindValuesDiffer)(w, a, b, size, position, bits, kind); }
#endif
/* end of value copy and comparison */

/* Value constructors: blocks of the layouts generated code expects, from the
 * world's allocation hook, to be released with the library's free
 * operations. Failure of any kind gives null and leaves nothing behind;
 * nothing raises. */
enum {
    kivSlotNewValue8a = 251,
    kivSlotNewValue8b = 252,
    kivSlotNewValue16a = 253,
    kivSlotNewValue16b = 254,
    kivSlotNewValue32a = 255,
    kivSlotNewValue32b = 256,
    kivSlotNewValue32c = 257,
    kivSlotNewValue32d = 258,
    kivSlotNewValue64a = 259,
    kivSlotNewValue64b = 260,
    kivSlotNewFloat = 261,
    kivSlotNewDouble = 262,
    kivSlotNewValue8c = 263,
    kivSlotNewValue64c = 264,
    kivSlotNewEmptyText = 269,
    kivSlotNewText = 270,
    kivSlotNewString16 = 271,
    kivSlotNewString32 = 272,
    kivSlotNewOctets = 273,
    kivSlotNewOctetsFromText = 274,
    kivSlotNewBits = 275,
    kivSlotNewArray = 276,
    kivSlotNewArrayCopy = 277,
    kivSlotNewOpenTypeEncoded = 278,
    kivSlotNewOpenTypeDecoded = 279,
    kivSlotNewContainingBits = 280,
    kivSlotNewContainingOctets = 281,
    kivSlotNewContainingValue = 282
};

/* Array record: the element count and the elements. */
typedef struct KivArray {
    uint32_t count;
    void* elements;
} KivArray;

/* Contents-constraint record: the length of the encoded form (bits or
 * octets), the encoded form and the decoded value. */
typedef struct KivContaining {
    uint32_t length;
    uint8_t* encoded;
    void* decoded;
} KivContaining;

KIV_STATIC_ASSERT(sizeof(KivArray) == 16, "array record is 16 bytes");
KIV_STATIC_ASSERT(sizeof(KivContaining) == 24, "contents-constraint record is 24 bytes");
KIV_STATIC_ASSERT(offsetof(KivContaining, decoded) == 16, "decoded");

typedef uint8_t* KivNewValue8Fn(KivGlobal* world, uint8_t value);
typedef uint16_t* KivNewValue16Fn(KivGlobal* world, uint16_t value);
typedef uint32_t* KivNewValue32Fn(KivGlobal* world, uint32_t value);
typedef uint64_t* KivNewValue64Fn(KivGlobal* world, uint64_t value);
typedef float* KivNewFloatFn(KivGlobal* world, float value);
typedef double* KivNewDoubleFn(KivGlobal* world, double value);
typedef char* KivNewEmptyTextFn(KivGlobal* world, uint32_t length);
typedef char* KivNewTextFn(KivGlobal* world, const char* text);
typedef KivLengthData* KivNewOctetsFn(KivGlobal* world, const uint8_t* data, uint32_t length);
typedef KivLengthData* KivNewOctetsFromTextFn(KivGlobal* world, const char* text);
typedef KivLengthData* KivNewString16Fn(KivGlobal* world, const uint16_t* units, uint32_t count);
typedef KivLengthData* KivNewString32Fn(KivGlobal* world, const uint32_t* units, uint32_t count);
typedef KivLengthData* KivNewBitsFn(KivGlobal* world, const uint8_t* bits, uint32_t bitCount);
typedef KivArray* KivNewArrayFn(KivGlobal* world, uint32_t count, uint64_t elementSize,
                                uint8_t zero);
typedef KivArray* KivNewArrayCopyFn(KivGlobal* world, const void* elements, uint32_t count,
                                    uint64_t elementSize);
typedef KivOpenType* KivNewOpenTypeEncodedFn(KivGlobal* world, const uint8_t* encoded,
                                             int32_t length, uint64_t recordSize);
typedef KivOpenType* KivNewOpenTypeDecodedFn(KivGlobal* world, const void* value,
                                             uint32_t pduNum, uint64_t recordSize);
typedef KivContaining* KivNewContainingBitsFn(KivGlobal* world, const uint8_t* bits,
                                              uint64_t bitCount);
typedef KivContaining* KivNewContainingOctetsFn(KivGlobal* world, const uint8_t* octets,
                                                uint64_t length);
typedef KivContaining* KivNewContainingValueFn(KivGlobal* world, const void* value,
                                               uint32_t pduNum);

#if KIV_CALL_HELPERS
static inline uint8_t* kivNewValue8a(KivGlobal* w, uint8_t v) { return KIV_SLOT(KivNewValue8Fn, kivSlotNewValue8a)(w, v); }
static inline uint8_t* kivNewValue8b(KivGlobal* w, uint8_t v) { return KIV_SLOT(KivNewValue8Fn, kivSlotNewValue8b)(w, v); }
static inline uint8_t* kivNewValue8c(KivGlobal* w, uint8_t v) { return KIV_SLOT(KivNewValue8Fn, kivSlotNewValue8c)(w, v); }
static inline uint16_t* kivNewValue16a(KivGlobal* w, uint16_t v) { return KIV_SLOT(KivNewValue16Fn, kivSlotNewValue16a)(w, v); }
static inline uint16_t* kivNewValue16b(KivGlobal* w, uint16_t v) { return KIV_SLOT(KivNewValue16Fn, kivSlotNewValue16b)(w, v); }
static inline uint32_t* kivNewValue32a(KivGlobal* w, uint32_t v) { return KIV_SLOT(KivNewValue32Fn, kivSlotNewValue32a)(w, v); }
static inline uint32_t* kivNewValue32b(KivGlobal* w, uint32_t v) { return KIV_SLOT(KivNewValue32Fn, kivSlotNewValue32b)(w, v); }
static inline uint32_t* kivNewValue32c(KivGlobal* w, uint32_t v) { return KIV_SLOT(KivNewValue32Fn, kivSlotNewValue32c)(w, v); }
static inline uint32_t* kivNewValue32d(KivGlobal* w, uint32_t v) { return KIV_SLOT(KivNewValue32Fn, kivSlotNewValue32d)(w, v); }
static inline uint64_t* kivNewValue64a(KivGlobal* w, uint64_t v) { return KIV_SLOT(KivNewValue64Fn, kivSlotNewValue64a)(w, v); }
static inline uint64_t* kivNewValue64b(KivGlobal* w, uint64_t v) { return KIV_SLOT(KivNewValue64Fn, kivSlotNewValue64b)(w, v); }
static inline uint64_t* kivNewValue64c(KivGlobal* w, uint64_t v) { return KIV_SLOT(KivNewValue64Fn, kivSlotNewValue64c)(w, v); }
static inline float* kivNewFloat(KivGlobal* w, float v) { return KIV_SLOT(KivNewFloatFn, kivSlotNewFloat)(w, v); }
static inline double* kivNewDouble(KivGlobal* w, double v) { return KIV_SLOT(KivNewDoubleFn, kivSlotNewDouble)(w, v); }
static inline char* kivNewEmptyText(KivGlobal* w, uint32_t length) { return KIV_SLOT(KivNewEmptyTextFn, kivSlotNewEmptyText)(w, length); }
static inline char* kivNewText(KivGlobal* w, const char* text) { return KIV_SLOT(KivNewTextFn, kivSlotNewText)(w, text); }
static inline KivLengthData* kivNewOctets(KivGlobal* w, const uint8_t* data, uint32_t length) { return KIV_SLOT(KivNewOctetsFn, kivSlotNewOctets)(w, data, length); }
static inline KivLengthData* kivNewOctetsFromText(KivGlobal* w, const char* text) { return KIV_SLOT(KivNewOctetsFromTextFn, kivSlotNewOctetsFromText)(w, text); }
static inline KivLengthData* kivNewString16(KivGlobal* w, const uint16_t* units, uint32_t count) { return KIV_SLOT(KivNewString16Fn, kivSlotNewString16)(w, units, count); }
static inline KivLengthData* kivNewString32(KivGlobal* w, const uint32_t* units, uint32_t count) { return KIV_SLOT(KivNewString32Fn, kivSlotNewString32)(w, units, count); }
static inline KivLengthData* kivNewBits(KivGlobal* w, const uint8_t* bits, uint32_t bitCount) { return KIV_SLOT(KivNewBitsFn, kivSlotNewBits)(w, bits, bitCount); }
static inline KivArray* kivNewArray(KivGlobal* w, uint32_t count, uint64_t elementSize, uint8_t zero) { return KIV_SLOT(KivNewArrayFn, kivSlotNewArray)(w, count, elementSize, zero); }
static inline KivArray* kivNewArrayCopy(KivGlobal* w, const void* elements, uint32_t count, uint64_t elementSize) { return KIV_SLOT(KivNewArrayCopyFn, kivSlotNewArrayCopy)(w, elements, count, elementSize); }
static inline KivOpenType* kivNewOpenTypeEncoded(KivGlobal* w, const uint8_t* encoded, int32_t length, uint64_t recordSize) { return KIV_SLOT(KivNewOpenTypeEncodedFn, kivSlotNewOpenTypeEncoded)(w, encoded, length, recordSize); }
static inline KivOpenType* kivNewOpenTypeDecoded(KivGlobal* w, const void* value, uint32_t pduNum, uint64_t recordSize) { return KIV_SLOT(KivNewOpenTypeDecodedFn, kivSlotNewOpenTypeDecoded)(w, value, pduNum, recordSize); }
static inline KivContaining* kivNewContainingBits(KivGlobal* w, const uint8_t* bits, uint64_t bitCount) { return KIV_SLOT(KivNewContainingBitsFn, kivSlotNewContainingBits)(w, bits, bitCount); }
static inline KivContaining* kivNewContainingOctets(KivGlobal* w, const uint8_t* octets, uint64_t length) { return KIV_SLOT(KivNewContainingOctetsFn, kivSlotNewContainingOctets)(w, octets, length); }
static inline KivContaining* kivNewContainingValue(KivGlobal* w, const void* value, uint32_t pduNum) { return KIV_SLOT(KivNewContainingValueFn, kivSlotNewContainingValue)(w, value, pduNum); }
#endif
/* end of value constructors */

#ifdef __cplusplus
}
#endif

#endif
