/* XER encoder of the catalog: a forward writer appending text to the output
 * chunks (poolCursor and poolLeft), joined in writing order at the end. Under
 * CXER the SET OF components go through the library's canonical ordering. */
#include <inttypes.h>
#include <stdio.h>
#include <string.h>

#include "catalog_internal.h"

static void text(KivGlobal* world, const char* octets, uint32_t length) {
    while (length) {
        if (world->poolLeft == 0) {
            world->poolCursor = (uint8_t*)kivNewOutputChunk(world);
            world->poolLeft = KIV_OUTPUT_CHUNK_SIZE;
        }
        uint32_t part = length < world->poolLeft ? length : world->poolLeft;
        memcpy(world->poolCursor, octets, part);
        world->poolCursor += part;
        world->poolLeft -= part;
        world->encodedOctetCount += part;
        octets += part;
        length -= part;
    }
}

static void literal(KivGlobal* world, const char* s) { text(world, s, (uint32_t)strlen(s)); }

/* Character data: the three characters that markup reserves are escaped. */
static void characters(KivGlobal* world, const uint8_t* octets, uint32_t length) {
    uint32_t run = 0;
    for (uint32_t i = 0; i < length; ++i) {
        const char* escape = octets[i] == '<' ? "&lt;"
                             : octets[i] == '>' ? "&gt;"
                             : octets[i] == '&' ? "&amp;"
                                                : NULL;
        if (!escape) continue;
        text(world, (const char*)octets + run, i - run);
        literal(world, escape);
        run = i + 1;
    }
    text(world, (const char*)octets + run, length - run);
}

static void hex(KivGlobal* world, const uint8_t* octets, uint32_t length) {
    static const char digits[] = "0123456789ABCDEF";
    for (uint32_t i = 0; i < length; ++i) {
        char pair[2] = {digits[octets[i] >> 4], digits[octets[i] & 15]};
        text(world, pair, 2);
    }
}

static void writeEntry(KivGlobal* world, const CatalogEntry* e) {
    KivComponentFrame pdu, frame;
    catalogEnter(world, &pdu, &catalogEntryType, 0);
    catalogEnter(world, &frame, &catalogFields[CATALOG_FIELD_NAME], 0);
    uint32_t chars = catalogUtf8Length(e->name.value, e->name.length);
    if (chars < CATALOG_NAME_MIN || chars > CATALOG_NAME_MAX) kivRaise(world, 27, chars);
    literal(world, "<Entry><name>");
    characters(world, e->name.value, e->name.length);

    char number[64];
    snprintf(number, sizeof number, "</name><serial>%" PRId64 "</serial><created>", e->serial);
    literal(world, number);
    frame.descriptor = &catalogFields[CATALOG_FIELD_CREATED];
    if (!e->created) kivRaise(world, 72, 0);
    kivCheckGeneralizedOrUTCTime(world, e->created, 0);
    literal(world, e->created);

    literal(world, "</created><flags>");
    for (uint32_t i = 0; i < e->flags.length; ++i)
        text(world, (e->flags.value[i / 8] & (0x80u >> (i % 8))) ? "1" : "0", 1);
    literal(world, "</flags><digest>");
    hex(world, e->digest.value, e->digest.length);
    literal(world, "</digest><tags>");

    int32_t n = 0;
    for (const CatalogTag* t = e->tags; t; t = t->next) ++n;
    kivBeginSetOf(world, n, &world->poolCursor, &world->poolLeft);
    for (const CatalogTag* t = e->tags; t; t = t->next) {
        kivNextSetOfComponent(world, &world->poolLeft);
        literal(world, "<PrintableString>");
        characters(world, (const uint8_t*)t->value, (uint32_t)strlen(t->value));
        literal(world, "</PrintableString>");
    }
    kivEndSetOf(world, &world->poolCursor, &world->poolLeft, 0);
    literal(world, "</tags>");

    if (e->bitMask & CATALOG_NOTE_PRESENT) {
        /* The open type's type is unknown here: its encoding goes as hex. */
        literal(world, "<note>");
        hex(world, e->note.encoded, e->note.length);
        literal(world, "</note>");
    }
    literal(world, "</Entry>");
    catalogLeave(world, &frame);
    catalogLeave(world, &pdu);
}

int32_t catalogXerEncode(KivGlobal* world, int32_t pduNum, void* value, KivBuffer* output,
                         uint32_t flags) {
    jmp_buf frame;
    catalogBeginOperation(world, &frame, CATALOG_MODE_ENCODE, pduNum);
    if (setjmp(frame)) {
        kivEndOperationMemory(world);
        world->errorPath = NULL;
        return world->errorCode;
    }
    world->encodedOctetCount = 0;
    if (!(flags & KIV_ENCODE_COUNT_ONLY))
        kivTraceEncoderInput(world, pduNum, value, output->value, (int32_t)output->length);
    if (pduNum != CATALOG_PDU_ENTRY) kivRaise(world, 3, (uint32_t)pduNum);
    writeEntry(world, (const CatalogEntry*)value);
    /* The trace joins the chunks itself, so it looks before they are joined. */
    if (!(flags & KIV_ENCODE_COUNT_ONLY))
        kivTraceEncoderResult(world, 0, world->poolCursor, world->poolLeft);
    uint8_t* encoding = NULL;
    uint32_t length = 0;
    kivJoinForwardOutput(world, &length, &encoding);
    catalogDeliver(world, output, encoding, length, flags);
    kivEndOperationMemory(world);
    return 0;
}
