/* fenkapi: Value printer — value notation, character strings, REAL texts, XML text, namespace prefixes, decimal REAL text, value sets.
 * Slot numbers, routine types, records and call helpers of the subsystem.
 * Included by fenkapi.h. */
#ifndef FENKAPI_PRINT_H
#define FENKAPI_PRINT_H

#ifdef __cplusplus
extern "C" {
#endif

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

typedef struct KivNameRecord KivNameRecord;

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

#ifdef __cplusplus
}
#endif

#endif
