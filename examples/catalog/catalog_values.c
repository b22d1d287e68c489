/* The control table's value routines: a copier and a comparator that know
 * the Entry's layout and leave the shapes to the library's helpers. Both run
 * inside the library's guarded copy and compare operations, so every block a
 * copy takes is recorded and a failure gives it back. */
#include <string.h>

#include "catalog_internal.h"

static int32_t copyEntry(KivGlobal* world, uint32_t pduNum, const void* source,
                         void** destination) {
    if (pduNum != CATALOG_PDU_ENTRY) kivRaise(world, 3, pduNum);
    const CatalogEntry* s = (const CatalogEntry*)source;
    CatalogEntry* d = (CatalogEntry*)kivAllocRounded(world, sizeof *d);
    /* The fixed part first; the helpers then replace every pointer. */
    *d = *s;
    kivCopyLengthData(world, &s->name, &d->name, 4, 1);
    d->created = kivCopyText(world, s->created);
    kivCopyLengthData(world, &s->flags, &d->flags, 4, -1);
    kivCopyLengthData(world, &s->digest, &d->digest, 4, 1);
    kivCopySinglyLinkedList(world, (KivListNode* const*)&s->tags, (KivListNode**)&d->tags,
                            (int32_t)sizeof(CatalogTag));
    for (CatalogTag* t = d->tags; t; t = t->next) t->value = kivCopyText(world, t->value);
    if (s->bitMask & CATALOG_NOTE_PRESENT) kivCopyOpenType(world, &s->note, &d->note);
    else memset(&d->note, 0, sizeof d->note);
    *destination = d;
    return 0;
}

/* A SET OF is unordered: the same texts as often in both, in any order. */
static int tagsDiffer(KivGlobal* world, const CatalogTag* a, const CatalogTag* b) {
    uint32_t n = 0, m = 0;
    for (const CatalogTag* t = a; t; t = t->next) ++n;
    for (const CatalogTag* t = b; t; t = t->next) ++m;
    if (n != m) return 1;
    if (n == 0) return 0;
    uint8_t* matched = (uint8_t*)kivTempAlloc(world, n);
    memset(matched, 0, n);
    int differ = 0;
    for (const CatalogTag* t = a; t && !differ; t = t->next) {
        uint32_t i = 0;
        const CatalogTag* u = b;
        for (; u; u = u->next, ++i)
            if (!matched[i] && strcmp(t->value, u->value) == 0) break;
        if (u) matched[i] = 1;
        else differ = 1;
    }
    kivTempRelease(world, matched);
    return differ;
}

static int32_t compareEntries(KivGlobal* world, uint32_t pduNum, const void* first,
                              const void* second) {
    if (pduNum != CATALOG_PDU_ENTRY) kivRaise(world, 3, pduNum);
    const CatalogEntry* a = (const CatalogEntry*)first;
    const CatalogEntry* b = (const CatalogEntry*)second;
    if (kivLengthDataDiffer(&a->name, &b->name, 4, 1) || a->serial != b->serial ||
        strcmp(a->created, b->created) != 0 ||
        kivNamedBitsDiffer(a->flags.value, b->flags.value, (int32_t)a->flags.length,
                           (int32_t)b->flags.length) ||
        kivLengthDataDiffer(&a->digest, &b->digest, 4, 1) ||
        tagsDiffer(world, a->tags, b->tags) ||
        (a->bitMask & CATALOG_NOTE_PRESENT) != (b->bitMask & CATALOG_NOTE_PRESENT))
        return 1;
    if ((a->bitMask & CATALOG_NOTE_PRESENT) && kivOpenTypesDiffer(world, &a->note, &b->note))
        return 1;
    return 0;
}

const KivValueRoutines catalogValueRoutines = {NULL, copyEntry, compareEntries};
