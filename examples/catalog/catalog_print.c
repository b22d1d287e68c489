/* The control table's print and release routines, and the demo's sample. */
#include <inttypes.h>
#include <string.h>

#include "catalog_internal.h"
#include "kivapit.h"

static void field(KivGlobal* world, const char* name, int first) {
    if (!first) kivCompanionPrint(world, ",");
    kivPrintNewLine(world, 0);
    kivCompanionPrint(world, "%s ", name);
}

int32_t catalogPrintPdu(KivGlobal* world, int32_t pduNum, void* value) {
    if (pduNum < 0) pduNum = -pduNum;
    if (pduNum != CATALOG_PDU_ENTRY || !value) return 3;
    const CatalogEntry* e = (const CatalogEntry*)value;
    kivCompanionPrint(world, "value Entry ::= {");
    ++world->printIndent;
    field(world, "name", 1);
    kivPrintCharString(world, (const char*)e->name.value, e->name.length);
    field(world, "serial", 0);
    char* serial = kivInt64ToText(world, e->serial);
    kivCompanionPrint(world, "%s", serial);
    kivFreeText(world, serial);
    field(world, "created", 0);
    kivPrintCString(world, e->created ? e->created : "");
    field(world, "flags", 0);
    kivPrintBitString(world, e->flags.value, (int32_t)e->flags.length);
    field(world, "digest", 0);
    kivPrintOctetString(world, e->digest.value, (int32_t)e->digest.length);
    field(world, "tags", 0);
    kivCompanionPrint(world, "{");
    for (const CatalogTag* t = e->tags; t; t = t->next) {
        kivCompanionPrint(world, t == e->tags ? " " : ", ");
        kivPrintCString(world, t->value);
    }
    kivCompanionPrint(world, e->tags ? " }" : "}");
    if (e->bitMask & CATALOG_NOTE_PRESENT) {
        field(world, "note", 0);
        kivPrintOpenType(world, &e->note);
    }
    kivPrintNewLine(world, -1);
    kivCompanionPrint(world, "}\n");
    return 0;
}

int32_t catalogReleasePdu(KivGlobal* world, int32_t pduNum, void* value, KivGlobal* owner) {
    (void)owner;
    if (pduNum != CATALOG_PDU_ENTRY) return 3;
    CatalogEntry* e = (CatalogEntry*)value;
    if (!e) return 0;
    kivFreeBlock(world, e->name.value);
    kivFreeBlock(world, e->created);
    kivFreeBlock(world, e->flags.value);
    kivFreeBlock(world, e->digest.value);
    for (CatalogTag* t = e->tags; t;) {
        CatalogTag* next = t->next;
        kivFreeBlock(world, t->value);
        kivFreeBlock(world, t);
        t = next;
    }
    kivFreeBlock(world, e->note.encoded);
    kivFreeBlock(world, e);
    return 0;
}

CatalogEntry* catalogSampleEntry(void) {
    static uint8_t name[] = "Maps & Charts";
    static uint8_t flags[] = {0xD0}; /* active, verified, shared */
    static uint8_t digest[] = {0x9F, 0x86, 0xD0, 0x81, 0x88, 0x4C, 0x7D, 0x65,
                               0x9A, 0x2F, 0xEA, 0xA0, 0xC5, 0x5A, 0xD0, 0x15};
    static char created[] = "20261122213045.25Z";
    static char tagText[3][12] = {"reference", "Archive", "2026"};
    static CatalogTag tags[3];
    static uint8_t note[] = {0x02, 0x01, 0x07};
    static CatalogEntry entry;
    for (int i = 0; i < 3; ++i) {
        tags[i].value = tagText[i];
        tags[i].next = i < 2 ? &tags[i + 1] : NULL;
    }
    entry.bitMask = CATALOG_NOTE_PRESENT;
    entry.name.length = (uint32_t)strlen((const char*)name);
    entry.name.value = name;
    entry.serial = 1234567;
    entry.created = created;
    entry.flags.length = 4;
    entry.flags.value = flags;
    entry.digest.length = sizeof digest;
    entry.digest.value = digest;
    entry.tags = tags;
    entry.note.length = sizeof note;
    entry.note.encoded = note;
    return &entry;
}
