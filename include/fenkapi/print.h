/* fenkapi: Value printer — value notation, character strings, REAL texts, XML text, namespace prefixes, decimal REAL text, value sets.
 * Slot numbers, routine types, records and call helpers of the subsystem.
 * Included by fenkapi.h. */
#ifndef FENKAPI_PRINT_H
#define FENKAPI_PRINT_H

#include "fenkapi/values.h" /* KivTimeStruct, KivOpenType */

#ifdef __cplusplus
extern "C" {
#endif

/* Value printing services: bit strings, octet strings, open types,
 * ENUMERATED, line breaks, UTCTime and GeneralizedTime, 64-bit integers.
 * Print services write their pieces through the companion's formatted
 * output and cut string values at printLimit; to-text services build the
 * whole text in temporary memory (slot 132), to be released with slot 148. */
enum {
    kivSlotPrintBits = 115,
    kivSlotPrintBitString = 116,
    kivSlotPrintGeneralizedTime = 119,
    kivSlotPrintHex = 120,
    kivSlotPrintOctetString = 122,
    kivSlotPrintOpenType = 123,
    kivSlotPrintBitsInInteger = 124,
    kivSlotPrintUTCTime = 126,
    kivSlotPrintNewLine = 127,
    kivSlotPrintEnumerated = 129,
    kivSlotBitsToText = 134,
    kivSlotBitStringToText = 135,
    kivSlotGeneralizedTimeToText = 138,
    kivSlotHexToText = 139,
    kivSlotOctetStringToText = 141,
    kivSlotBitsInIntegerToText = 142,
    kivSlotUTCTimeToText = 144,
    kivSlotInt64ToText = 146,
    kivSlotUInt64ToText = 147,
    kivSlotFreeText = 148
};

/* One entry of a generated enumerator table, in the order of the type's
 * enumerators. */
typedef struct KivEnumerator {
    const char* identifier;
    int64_t reserved8;
    int32_t reserved16;
    uint32_t value;
} KivEnumerator;

KIV_STATIC_ASSERT(sizeof(KivEnumerator) == 24, "enumerator entry is 24 bytes");
KIV_STATIC_ASSERT(offsetof(KivEnumerator, value) == 20, "enumerator value");

/* Prefix and suffix may be null in the print services; the to-text services
 * need both (an empty text for none). */
typedef void KivPrintBitsFn(KivGlobal* world, const char* prefix, const uint8_t* bits,
                            int32_t count, const char* suffix);
typedef char* KivBitsToTextFn(KivGlobal* world, const char* prefix, const uint8_t* bits,
                              int32_t count, const char* suffix);
typedef void KivPrintBitStringFn(KivGlobal* world, const uint8_t* bits, int32_t count);
typedef char* KivBitStringToTextFn(KivGlobal* world, const uint8_t* bits, int32_t count);
/* The bits are held in an unsigned integer of size bytes (1 to 8); the first
 * bit is the most significant bit of its top byte. */
typedef void KivPrintBitsInIntegerFn(KivGlobal* world, const void* value, uint32_t size,
                                     int32_t count);
typedef char* KivBitsInIntegerToTextFn(KivGlobal* world, const void* value, uint32_t size,
                                       int32_t count);
typedef void KivPrintHexFn(KivGlobal* world, const char* prefix, const uint8_t* octets,
                           int32_t length, const char* suffix);
typedef char* KivHexToTextFn(KivGlobal* world, const char* prefix, const uint8_t* octets,
                             int32_t length, const char* suffix);
typedef void KivPrintOctetStringFn(KivGlobal* world, const uint8_t* octets, int32_t length);
typedef char* KivOctetStringToTextFn(KivGlobal* world, const uint8_t* octets, int32_t length);
typedef void KivPrintOpenTypeFn(KivGlobal* world, const KivOpenType* value);
typedef void KivPrintEnumeratedFn(KivGlobal* world, uint64_t value, const KivEnumerator* table,
                                  int32_t count);
typedef void KivPrintNewLineFn(KivGlobal* world, int32_t change);
typedef void KivPrintUTCTimeFn(KivGlobal* world, const KivTimeStruct* time);
typedef char* KivUTCTimeToTextFn(KivGlobal* world, const KivTimeStruct* time);
typedef void KivPrintGeneralizedTimeFn(KivGlobal* world, const KivTimeStruct* time);
typedef char* KivGeneralizedTimeToTextFn(KivGlobal* world, const KivTimeStruct* time);
typedef char* KivInt64ToTextFn(KivGlobal* world, int64_t value);
typedef char* KivUInt64ToTextFn(KivGlobal* world, uint64_t value);
/* Releases a text of a to-text service (and whatever temporary memory was
 * taken after it). */
typedef void KivFreeTextFn(KivGlobal* world, char* text);

#if KIV_CALL_HELPERS
static inline void kivPrintBits(KivGlobal* w, const char* prefix, const uint8_t* bits, int32_t count, const char* suffix) { KIV_SLOT(KivPrintBitsFn, kivSlotPrintBits)(w, prefix, bits, count, suffix); }
static inline char* kivBitsToText(KivGlobal* w, const char* prefix, const uint8_t* bits, int32_t count, const char* suffix) { return KIV_SLOT(KivBitsToTextFn, kivSlotBitsToText)(w, prefix, bits, count, suffix); }
static inline void kivPrintBitString(KivGlobal* w, const uint8_t* bits, int32_t count) { KIV_SLOT(KivPrintBitStringFn, kivSlotPrintBitString)(w, bits, count); }
static inline char* kivBitStringToText(KivGlobal* w, const uint8_t* bits, int32_t count) { return KIV_SLOT(KivBitStringToTextFn, kivSlotBitStringToText)(w, bits, count); }
static inline void kivPrintBitsInInteger(KivGlobal* w, const void* value, uint32_t size, int32_t count) { KIV_SLOT(KivPrintBitsInIntegerFn, kivSlotPrintBitsInInteger)(w, value, size, count); }
static inline char* kivBitsInIntegerToText(KivGlobal* w, const void* value, uint32_t size, int32_t count) { return KIV_SLOT(KivBitsInIntegerToTextFn, kivSlotBitsInIntegerToText)(w, value, size, count); }
static inline void kivPrintHex(KivGlobal* w, const char* prefix, const uint8_t* octets, int32_t length, const char* suffix) { KIV_SLOT(KivPrintHexFn, kivSlotPrintHex)(w, prefix, octets, length, suffix); }
static inline char* kivHexToText(KivGlobal* w, const char* prefix, const uint8_t* octets, int32_t length, const char* suffix) { return KIV_SLOT(KivHexToTextFn, kivSlotHexToText)(w, prefix, octets, length, suffix); }
static inline void kivPrintOctetString(KivGlobal* w, const uint8_t* octets, int32_t length) { KIV_SLOT(KivPrintOctetStringFn, kivSlotPrintOctetString)(w, octets, length); }
static inline char* kivOctetStringToText(KivGlobal* w, const uint8_t* octets, int32_t length) { return KIV_SLOT(KivOctetStringToTextFn, kivSlotOctetStringToText)(w, octets, length); }
static inline void kivPrintOpenType(KivGlobal* w, const KivOpenType* value) { KIV_SLOT(KivPrintOpenTypeFn, kivSlotPrintOpenType)(w, value); }
static inline void kivPrintEnumerated(KivGlobal* w, uint64_t value, const KivEnumerator* table, int32_t count) { KIV_SLOT(KivPrintEnumeratedFn, kivSlotPrintEnumerated)(w, value, table, count); }
static inline void kivPrintNewLine(KivGlobal* w, int32_t change) { KIV_SLOT(KivPrintNewLineFn, kivSlotPrintNewLine)(w, change); }
static inline void kivPrintUTCTime(KivGlobal* w, const KivTimeStruct* time) { KIV_SLOT(KivPrintUTCTimeFn, kivSlotPrintUTCTime)(w, time); }
static inline char* kivUTCTimeToText(KivGlobal* w, const KivTimeStruct* time) { return KIV_SLOT(KivUTCTimeToTextFn, kivSlotUTCTimeToText)(w, time); }
static inline void kivPrintGeneralizedTime(KivGlobal* w, const KivTimeStruct* time) { KIV_SLOT(KivPrintGeneralizedTimeFn, kivSlotPrintGeneralizedTime)(w, time); }
static inline char* kivGeneralizedTimeToText(KivGlobal* w, const KivTimeStruct* time) { return KIV_SLOT(KivGeneralizedTimeToTextFn, kivSlotGeneralizedTimeToText)(w, time); }
static inline char* kivInt64ToText(KivGlobal* w, int64_t value) { return KIV_SLOT(KivInt64ToTextFn, kivSlotInt64ToText)(w, value); }
static inline char* kivUInt64ToText(KivGlobal* w, uint64_t value) { return KIV_SLOT(KivUInt64ToTextFn, kivSlotUInt64ToText)(w, value); }
static inline void kivFreeText(KivGlobal* w, char* text) { KIV_SLOT(KivFreeTextFn, kivSlotFreeText)(w, text); }
#endif
/* end of the value printing services */

/* Character string printers: runs of printable characters as quoted text,
 * other characters as {column, row} tuples (8-bit) or {group, plane, row,
 * cell} quadruples (multi-octet), the whole list in braces when there is
 * more than one element. Width 1 data are UTF-8 octets, widths 2 and 4 code
 * units in the machine's byte order. */
enum {
    kivSlotPrintCharString = 117,
    kivSlotPrintCString = 121,
    kivSlotPrintWideCharString = 128,
    kivSlotQuoteChars = 136,
    kivSlotQuoteCString = 140,
    kivSlotWideCharStringToText = 145
};

typedef void KivPrintCharStringFn(KivGlobal* world, const char* chars, uint32_t count);
typedef void KivPrintCStringFn(KivGlobal* world, const char* text);
typedef void KivPrintWideCharStringFn(KivGlobal* world, const void* data, int32_t length,
                                      uint16_t width);
typedef char* KivWideCharStringToTextFn(KivGlobal* world, const void* data, int32_t length,
                                        uint16_t width);
/* The characters as they are between two double quotes; printLimit does not
 * apply. */
typedef char* KivQuoteCharsFn(KivGlobal* world, const char* chars, int32_t count);
typedef char* KivQuoteCStringFn(KivGlobal* world, const char* text);

#if KIV_CALL_HELPERS
static inline void kivPrintCharString(KivGlobal* w, const char* chars, uint32_t count) { KIV_SLOT(KivPrintCharStringFn, kivSlotPrintCharString)(w, chars, count); }
static inline void kivPrintCString(KivGlobal* w, const char* text) { KIV_SLOT(KivPrintCStringFn, kivSlotPrintCString)(w, text); }
static inline void kivPrintWideCharString(KivGlobal* w, const void* data, int32_t length, uint16_t width) { KIV_SLOT(KivPrintWideCharStringFn, kivSlotPrintWideCharString)(w, data, length, width); }
static inline char* kivWideCharStringToText(KivGlobal* w, const void* data, int32_t length, uint16_t width) { return KIV_SLOT(KivWideCharStringToTextFn, kivSlotWideCharStringToText)(w, data, length, width); }
static inline char* kivQuoteChars(KivGlobal* w, const char* chars, int32_t count) { return KIV_SLOT(KivQuoteCharsFn, kivSlotQuoteChars)(w, chars, count); }
static inline char* kivQuoteCString(KivGlobal* w, const char* text) { return KIV_SLOT(KivQuoteCStringFn, kivSlotQuoteCString)(w, text); }
#endif
/* end of the character string printers */

/* REAL value text and special REAL values. Binary REALs are doubles (or
 * floats); decimal REALs are texts, with the special values held as
 * "PLUS_INFINITY", "MINUS_INFINITY", "NOT_A_NUMBER", "0" and "-0". */
enum {
    kivSlotPrintDecimalReal = 118,
    kivSlotPrintBinaryReal = 125,
    kivSlotDecimalRealToText = 137,
    kivSlotBinaryRealToText = 143,
    kivSlotRealHasClass = 213,
    kivSlotRealClassWord = 214,
    kivSlotSetRealClass = 215,
    kivSlotClassifyReal = 233
};

/* Special-value classes (the first contents octet of the special REALs). */
enum {
    kivRealZero = 0,
    kivRealPlusInfinity = 64,
    kivRealMinusInfinity = 65,
    kivRealNotANumber = 66,
    kivRealMinusZero = 67,
    kivRealOrdinary = -1
};

typedef void KivPrintBinaryRealFn(KivGlobal* world, double value);
typedef char* KivBinaryRealToTextFn(KivGlobal* world, double value);
typedef void KivPrintDecimalRealFn(KivGlobal* world, const char* text);
typedef char* KivDecimalRealToTextFn(KivGlobal* world, const char* text);
/* These four take no world. A size of 4 means a float; any other a double. */
typedef int32_t KivClassifyRealFn(const void* value, int32_t size);
typedef int32_t KivRealHasClassFn(const void* value, int32_t size, int32_t code);
typedef const char* KivRealClassWordFn(int32_t code, int32_t underscore);
typedef int32_t KivSetRealClassFn(void* value, int32_t size, int32_t code);

#if KIV_CALL_HELPERS
static inline void kivPrintBinaryReal(KivGlobal* w, double value) { KIV_SLOT(KivPrintBinaryRealFn, kivSlotPrintBinaryReal)(w, value); }
static inline char* kivBinaryRealToText(KivGlobal* w, double value) { return KIV_SLOT(KivBinaryRealToTextFn, kivSlotBinaryRealToText)(w, value); }
static inline void kivPrintDecimalReal(KivGlobal* w, const char* text) { KIV_SLOT(KivPrintDecimalRealFn, kivSlotPrintDecimalReal)(w, text); }
static inline char* kivDecimalRealToText(KivGlobal* w, const char* text) { return KIV_SLOT(KivDecimalRealToTextFn, kivSlotDecimalRealToText)(w, text); }
static inline int32_t kivClassifyReal(const void* value, int32_t size) { return KIV_SLOT(KivClassifyRealFn, kivSlotClassifyReal)(value, size); }
static inline int32_t kivRealHasClass(const void* value, int32_t size, int32_t code) { return KIV_SLOT(KivRealHasClassFn, kivSlotRealHasClass)(value, size, code); }
static inline const char* kivRealClassWord(int32_t code, int32_t underscore) { return KIV_SLOT(KivRealClassWordFn, kivSlotRealClassWord)(code, underscore); }
static inline int32_t kivSetRealClass(void* value, int32_t size, int32_t code) { return KIV_SLOT(KivSetRealClassFn, kivSlotSetRealClass)(value, size, code); }
#endif
/* end of the REAL value text */

/* Decimal REAL text: a decimal REAL held as text is broken into a sign, the
 * run of its significant digits (pointers into the text) and a power of ten;
 * written back in a canonical layout; and compared numerically. */
enum {
    kivSlotCompareDecimalReals = 221,
    kivSlotParseDecimalReal = 228,
    kivSlotDecimalRealText = 229
};

/* flags of KivDecimalReal */
#define KIV_DECIMAL_HAS_EXPONENT 0x01u    /* parser: the text has an exponent marker */
#define KIV_DECIMAL_POSITIONAL 0x02u      /* caller: canonical text without exponent */
#define KIV_DECIMAL_NEGATIVE_ZERO 0x04u   /* parser */
#define KIV_DECIMAL_POSITIVE_ZERO 0x08u   /* parser */
#define KIV_DECIMAL_INTEGER_MANTISSA 0x80u /* caller: value = digits x 10^exponent */

typedef struct KivDecimalReal {
    int32_t sign;           /* 1 for a negative value */
    const char* firstDigit; /* first significant digit; null for zero */
    const char* lastDigit;  /* last significant digit (a mark may lie between) */
    int32_t exponent;       /* power of ten; meaning set by KIV_DECIMAL_INTEGER_MANTISSA */
    uint32_t flags;
} KivDecimalReal;

KIV_STATIC_ASSERT(sizeof(KivDecimalReal) == 32, "KivDecimalReal is 32 bytes");
KIV_STATIC_ASSERT(offsetof(KivDecimalReal, firstDigit) == 8, "firstDigit");
KIV_STATIC_ASSERT(offsetof(KivDecimalReal, exponent) == 24, "exponent");
KIV_STATIC_ASSERT(offsetof(KivDecimalReal, flags) == 28, "flags");

/* 0 success; 1 empty or blank; 2 an exponent marker but no digit; 3 nothing
 * after the marker; 4 not a number or characters left; 5 exponent too big. */
typedef int32_t KivParseDecimalRealFn(const char* text, KivDecimalReal* record);
/* The buffer must hold the sign, every digit of the run, the zeros that the
 * positional layout adds, the mark and "E" with up to eleven characters of
 * exponent. No result. */
typedef void KivDecimalRealTextFn(const KivDecimalReal* record, char* buffer);
/* 0 equal, 2 a below b, 3 a above b, 4 not comparable. */
typedef int32_t KivCompareDecimalRealsFn(KivGlobal* world, const char* a, const char* b);

/* Value sets: a packed search tree of 32-bit words, made by the compiler,
 * answering whether an unsigned value belongs to a set. */
enum { kivSlotValueInSet = 291 };

#define KIV_VALUE_SET_COMPACT 0xFFFFFFFFu /* first word: compact layout */
#define KIV_VALUE_SET_ONE 0u              /* node kinds (header bits 30-31) */
#define KIV_VALUE_SET_RANGE 1u
#define KIV_VALUE_SET_LIST 2u
#define KIV_VALUE_SET_NONE 3u
#define KIV_VALUE_SET_SMALLER 0x02000000u /* header: a smaller subtree follows */

/* Nonzero when the value is in the set. */
typedef int32_t KivValueInSetFn(const uint32_t* tree, uint32_t value);

/* XML namespace prefixes: the application's choice of prefix (or of the
 * default namespace) for each namespace of the generated name tables, and
 * the stem that generated prefixes are drawn from. */
enum {
    kivSlotSetNamespacePrefix = 216,
    kivSlotGetNamespacePrefix = 217,
    kivSlotGetListItem = 218
};

/* flags of KivNamespaceEntry */
#define KIV_NAMESPACE_CHOSEN 0x0001u   /* given a prefix or made the default */
#define KIV_NAMESPACE_FIXED 0x0002u    /* takes no prefix of the application's choice */

typedef struct KivNamespaceEntry {
    uint16_t flags;
    const char* uri;
    const char* prefix; /* null: the default namespace, or none chosen yet */
} KivNamespaceEntry;

/* The generated XML name and namespace tables (KivPrivate namespaceTable). */
typedef struct KivXmlNameTables {
    uint32_t flags; /* low three bits 1: a default namespace is allowed */
    int32_t count;
    const KivNamespaceEntry* entries;
    const KivNameRecord* rootNames; /* name lookup of the values subsystem */
    const char* defaultPrefixStem;
} KivXmlNameTables;

/* A counted list of length-plus-data items (slot 218). */
typedef struct KivBufferList {
    uint32_t count;
    const KivBuffer* items;
} KivBufferList;

KIV_STATIC_ASSERT(sizeof(KivNamespaceEntry) == 24, "namespace entries are three words");
KIV_STATIC_ASSERT(offsetof(KivXmlNameTables, entries) == 8, "entries");
KIV_STATIC_ASSERT(offsetof(KivXmlNameTables, rootNames) == 16, "rootNames");
KIV_STATIC_ASSERT(offsetof(KivXmlNameTables, defaultPrefixStem) == 24, "defaultPrefixStem");
KIV_STATIC_ASSERT(sizeof(KivBufferList) == 16, "KivBufferList");

/* 0; 6 a null argument or no tables; 111 no default namespace allowed;
 * 112 unknown or fixed namespace; 113 not a prefix name; 114 prefix taken or
 * a default namespace already set; 8 the world's copy of the entries could
 * not be allocated. */
typedef int32_t KivSetNamespacePrefixFn(KivGlobal* world, const char* uri, const char* prefix);
typedef int32_t KivGetNamespacePrefixFn(KivGlobal* world, const char* uri, const char** prefix);
typedef int32_t KivGetListItemFn(KivGlobal* world, const KivBufferList* list, uint32_t index,
                                 KivBuffer* item);

#if KIV_CALL_HELPERS
static inline int32_t kivParseDecimalReal(const char* text, KivDecimalReal* record) { return KIV_SLOT(KivParseDecimalRealFn, kivSlotParseDecimalReal)(text, record); }
static inline void kivDecimalRealText(const KivDecimalReal* record, char* buffer) { KIV_SLOT(KivDecimalRealTextFn, kivSlotDecimalRealText)(record, buffer); }
static inline int32_t kivCompareDecimalReals(KivGlobal* w, const char* a, const char* b) { return KIV_SLOT(KivCompareDecimalRealsFn, kivSlotCompareDecimalReals)(w, a, b); }
static inline int32_t kivValueInSet(const uint32_t* tree, uint32_t value) { return KIV_SLOT(KivValueInSetFn, kivSlotValueInSet)(tree, value); }
static inline int32_t kivSetNamespacePrefix(KivGlobal* w, const char* uri, const char* prefix) { return KIV_SLOT(KivSetNamespacePrefixFn, kivSlotSetNamespacePrefix)(w, uri, prefix); }
static inline int32_t kivGetNamespacePrefix(KivGlobal* w, const char* uri, const char** prefix) { return KIV_SLOT(KivGetNamespacePrefixFn, kivSlotGetNamespacePrefix)(w, uri, prefix); }
static inline int32_t kivGetListItem(KivGlobal* w, const KivBufferList* list, uint32_t index, KivBuffer* item) { return KIV_SLOT(KivGetListItemFn, kivSlotGetListItem)(w, list, index, item); }
#endif

/* XML text printer: an XML encoding printed as it stands (layout 0) or
 * re-indented (nonzero), through the companion's output. */
enum { kivSlotPrintXmlText = 194 };
typedef void KivPrintXmlTextFn(KivGlobal* world, const char* text, int32_t length, uint8_t reindent);
#if KIV_CALL_HELPERS
static inline void kivPrintXmlText(KivGlobal* w, const char* text, int32_t length, uint8_t reindent) { KIV_SLOT(KivPrintXmlTextFn, kivSlotPrintXmlText)(w, text, length, reindent); }
#endif

#ifdef __cplusplus
}
#endif

#endif
