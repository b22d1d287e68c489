/* The catalog: a small application schema and its coders, written by hand in
 * the shape that generated code has.
 *
 *   Catalog DEFINITIONS EXPLICIT TAGS ::= BEGIN
 *     Entry ::= SEQUENCE {
 *       name     UTF8String (SIZE(1..64)),
 *       serial   INTEGER,
 *       created  GeneralizedTime,
 *       flags    BIT STRING { active(0), verified(1), archived(2), shared(3) },
 *       digest   OCTET STRING,
 *       tags     SET OF PrintableString,
 *       note     [0] ANY OPTIONAL
 *     }
 *   END
 *
 * Values use the C representations that the library's helpers know: the
 * strings are length-plus-data records, the SET OF a singly linked list, the
 * open type an open-type record holding the encoded element.
 */
#ifndef FENK_CATALOG_H
#define FENK_CATALOG_H

#include "fenkapi.h"

#ifdef __cplusplus
extern "C" {
#endif

#define CATALOG_PDU_ENTRY 1

/* Length-plus-data record: octets (name, digest) or bits (flags). */
typedef struct CatalogString {
    uint32_t length;
    uint8_t* value;
} CatalogString;

typedef struct CatalogTag {
    struct CatalogTag* next;
    char* value; /* PrintableString, NUL-terminated */
} CatalogTag;

#define CATALOG_NOTE_PRESENT 0x80u

#define CATALOG_FLAG_ACTIVE 0
#define CATALOG_FLAG_VERIFIED 1
#define CATALOG_FLAG_ARCHIVED 2
#define CATALOG_FLAG_SHARED 3

typedef struct CatalogEntry {
    uint8_t bitMask;      /* CATALOG_NOTE_PRESENT */
    CatalogString name;   /* UTF-8 octets; the size counts characters */
    int64_t serial;
    char* created;        /* GeneralizedTime text */
    CatalogString flags;  /* length in bits */
    CatalogString digest; /* octets */
    CatalogTag* tags;
    KivOpenType note;     /* encoded: one complete element */
} CatalogEntry;

/* The control table: the members the library reads, then the catalog's own. */
typedef struct CatalogControlTable {
    KivControlTable base;
    const KivValueRoutines* valueRoutines; /* copier and comparator */
} CatalogControlTable;

extern CatalogControlTable catalogControlTable;
extern const KivValueRoutines catalogValueRoutines;

/* Makes a world for the catalog: the toolkit initialisation with the catalog's
 * control table, then catalogInstall. Answers kivCompanionInitWorld's code. */
int catalogInitWorld(KivGlobal* world);

/* Installs the BER/DER and XER coder tables and the value routines on a
 * world made with the catalog's control table. */
void catalogInstall(KivGlobal* world);

/* The coders, as the world's coder pairs reach them. The encoders leave an
 * encoding from the allocation hook (release it with slot 24) unless the
 * caller's buffer was given; decoded values are released with slot 23. */
int32_t catalogBerEncode(KivGlobal* world, int32_t pduNum, void* value, KivBuffer* output,
                         uint32_t flags);
int32_t catalogBerDecode(KivGlobal* world, int32_t* pduNum, KivBuffer* input, void** value,
                         uint32_t flags);
int32_t catalogXerEncode(KivGlobal* world, int32_t pduNum, void* value, KivBuffer* output,
                         uint32_t flags);

/* The control table's routines. */
int32_t catalogReleasePdu(KivGlobal* world, int32_t pduNum, void* value, KivGlobal* owner);
int32_t catalogPrintPdu(KivGlobal* world, int32_t pduNum, void* value);

/* A fixed sample value, the one the demo shows. */
CatalogEntry* catalogSampleEntry(void);

#ifdef __cplusplus
}
#endif

#endif
