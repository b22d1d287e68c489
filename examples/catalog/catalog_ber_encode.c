/* BER and DER encoder of the catalog: a backward writer. Components are
 * written last to first into output chunks that fill from their ends, so
 * every length is known when its header is written; the chunks are joined
 * once at the end. Under DER the SET OF components go through the library's
 * canonical ordering. */
#include <string.h>

#include "catalog_internal.h"

typedef struct Writer {
    KivGlobal* world;
    uint8_t* cursor;
    uint32_t left;
    int der;
} Writer;

static void put(Writer* w, const uint8_t* octets, uint32_t length) {
    if (length == 0) return; /* an empty value may have no data at all */
    if (length > w->left) {
        catalogWriteBackward(w->world, &w->cursor, &w->left, octets, length);
        return;
    }
    w->cursor -= length;
    w->left -= length;
    memcpy(w->cursor, octets, length);
}

/* Headers are a few octets: copied one by one, without a call. */
static void putSmall(Writer* w, const uint8_t* octets, uint32_t length) {
    if (length > w->left) {
        catalogWriteBackward(w->world, &w->cursor, &w->left, octets, length);
        return;
    }
    w->left -= length;
    while (length) *--w->cursor = octets[--length];
}

/* Writes the identifier and length octets in front of length content octets
 * and answers the whole element's size. */
static uint32_t putHeader(Writer* w, uint8_t tag, uint32_t length) {
    uint8_t header[6];
    uint32_t n = 0;
    if (length < 0x80u) {
        header[5] = (uint8_t)length;
        n = 1;
    } else {
        for (uint32_t v = length; v; v >>= 8) header[5 - n++] = (uint8_t)v;
        header[5 - n] = (uint8_t)(0x80u | n);
        ++n;
    }
    header[5 - n] = tag;
    ++n;
    putSmall(w, header + 6 - n, n);
    return n + length;
}

static uint32_t putPrimitive(Writer* w, uint8_t tag, const uint8_t* octets, uint32_t length) {
    put(w, octets, length);
    return putHeader(w, tag, length);
}

static uint32_t putInteger(Writer* w, int64_t value) {
    uint8_t octets[8];
    uint64_t v = (uint64_t)value;
    for (int i = 7; i >= 0; --i, v >>= 8) octets[i] = (uint8_t)v;
    /* Minimal two's complement: drop a leading octet that only repeats the
     * sign of the next one. */
    uint32_t skip = 0;
    while (skip < 7 && ((octets[skip] == 0x00 && !(octets[skip + 1] & 0x80)) ||
                        (octets[skip] == 0xFF && (octets[skip + 1] & 0x80))))
        ++skip;
    return putPrimitive(w, 0x02, octets + skip, 8 - skip);
}

static uint32_t putBits(Writer* w, const CatalogString* bits) {
    uint32_t count = bits->length;
    /* A named bit list drops its trailing zero bits under DER. */
    if (w->der) count = kivSignificantBits(bits->value, count);
    uint32_t octets = (count + 7) / 8;
    uint8_t unused = (uint8_t)(octets * 8 - count);
    if (octets) {
        uint8_t last = (uint8_t)(bits->value[octets - 1] & (0xFFu << unused));
        put(w, &last, 1);
        put(w, bits->value, octets - 1);
    }
    put(w, &unused, 1);
    return putHeader(w, 0x03, octets + 1);
}

static uint32_t putTags(Writer* w, const CatalogTag* head) {
    KivGlobal* world = w->world;
    int32_t n = 0;
    for (const CatalogTag* t = head; t; t = t->next) ++n;
    uint32_t total = 0;
    if (n > 0) {
        /* The list runs forward and the writer backward: walk it from an
         * array of its nodes in temporary memory. */
        const CatalogTag** nodes =
            (const CatalogTag**)kivTempAlloc(world, (uint64_t)n * sizeof *nodes);
        int32_t i = 0;
        for (const CatalogTag* t = head; t; t = t->next) nodes[i++] = t;
        kivBeginSetOf(world, n, &w->cursor, &w->left);
        KivComponentFrame frame;
        catalogEnter(world, &frame, &catalogTagElement, 0);
        while (i-- > 0) {
            frame.index = i + 1;
            kivNextSetOfComponent(world, &w->left);
            const char* text = nodes[i]->value;
            total += putPrimitive(w, 0x13, (const uint8_t*)text, (uint32_t)strlen(text));
        }
        catalogLeave(world, &frame);
        kivEndSetOf(world, &w->cursor, &w->left, 0);
        kivTempRelease(world, (void*)nodes);
    }
    return putHeader(w, 0x31, total);
}

static uint32_t putEntry(Writer* w, const CatalogEntry* e) {
    KivGlobal* world = w->world;
    KivComponentFrame pdu, frame;
    uint32_t total = 0;
    catalogEnter(world, &pdu, &catalogEntryType, 0);
    catalogEnter(world, &frame, &catalogFields[CATALOG_FIELD_NOTE], 0);
    if (e->bitMask & CATALOG_NOTE_PRESENT) {
        if (!e->note.encoded || e->note.length == 0) kivRaise(world, 82, 0);
        put(w, e->note.encoded, e->note.length);
        total += putHeader(w, 0xA0, e->note.length);
    }
    frame.descriptor = &catalogFields[CATALOG_FIELD_TAGS];
    total += putTags(w, e->tags);
    frame.descriptor = &catalogFields[CATALOG_FIELD_DIGEST];
    total += putPrimitive(w, 0x04, e->digest.value, e->digest.length);
    frame.descriptor = &catalogFields[CATALOG_FIELD_FLAGS];
    total += putBits(w, &e->flags);
    frame.descriptor = &catalogFields[CATALOG_FIELD_CREATED];
    if (!e->created) kivRaise(world, 72, 0);
    kivCheckGeneralizedOrUTCTime(world, e->created, 0);
    total += putPrimitive(w, 0x18, (const uint8_t*)e->created, (uint32_t)strlen(e->created));
    frame.descriptor = &catalogFields[CATALOG_FIELD_SERIAL];
    total += putInteger(w, e->serial);
    frame.descriptor = &catalogFields[CATALOG_FIELD_NAME];
    uint32_t chars = catalogUtf8Length(e->name.value, e->name.length);
    if (chars < CATALOG_NAME_MIN || chars > CATALOG_NAME_MAX) kivRaise(world, 27, chars);
    total += putPrimitive(w, 0x0C, e->name.value, e->name.length);
    catalogLeave(world, &frame);
    catalogLeave(world, &pdu);
    return putHeader(w, 0x30, total);
}

int32_t catalogBerEncode(KivGlobal* world, int32_t pduNum, void* value, KivBuffer* output,
                         uint32_t flags) {
    jmp_buf frame;
    Writer w = {world, NULL, 0, world->encodingRules == 3};
    catalogBeginOperation(world, &frame, CATALOG_MODE_ENCODE, pduNum);
    if (setjmp(frame)) {
        kivEndOperationMemory(world);
        world->errorPath = NULL;
        return world->errorCode;
    }
    if (!(flags & KIV_ENCODE_COUNT_ONLY))
        kivTraceEncoderInput(world, pduNum, value, output->value, (int32_t)output->length);
    if (pduNum != CATALOG_PDU_ENTRY) kivRaise(world, 3, (uint32_t)pduNum);
    if (world->encodingRules == 7) kivRaiseText(world, 52, "CER");

    putEntry(&w, (const CatalogEntry*)value);
    uint8_t* encoding = NULL;
    uint32_t joined = 0;
    kivJoinBackwardOutput(world, (int32_t)w.left, &joined, &encoding);
    catalogDeliver(world, output, encoding, joined, flags);
    if (!(flags & KIV_ENCODE_COUNT_ONLY))
        kivTraceEncoderResult(world, 0, output->value, output->length);
    kivEndOperationMemory(world);
    return 0;
}
