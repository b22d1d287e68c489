/* BER and DER decoder of the catalog. The value's blocks come from the
 * library's recorded allocation (or the caller's buffer), so that a raise
 * anywhere below gives every block back; component frames give each message
 * its field, element and PDU. DER adds the canonical checks: definite minimal
 * lengths, minimal integers, no trailing zero bits, SET OF in order. */
#include <string.h>

#include "catalog_internal.h"

typedef struct Reader {
    KivGlobal* world;
    const uint8_t* p;
    const uint8_t* end;
    int der;
} Reader;

/* Message indices raised here. */
enum {
    MSG_END_OF_INPUT = 45,        /* 0081S, code 4 */
    MSG_TAG_MISMATCH = 104,       /* 0033E, code 5 */
    MSG_MISENCODED = 107,         /* 0037E, code 5 */
    MSG_SIZE = 27,                /* 0063S, code 17 */
    MSG_ALPHABET = 29,            /* 0064S, code 17 */
    MSG_TAG_TOO_LONG = 93,        /* 0019E, code 10 */
    MSG_LENGTH_TOO_LONG = 99,     /* 0026S, code 10 */
    MSG_INDEFINITE = 58,          /* 0108S, code 13 */
    MSG_DER_INDEFINITE = 135,     /* 0117S, code 5 */
    MSG_INTEGER_TOO_LONG = 148,   /* 0144E, code 10 */
    MSG_EMPTY_ANY = 82,           /* 0089E, code 5 */
    MSG_PDU_NUMBER = 3            /* 0003S, code 3 */
};

/* A tag as the messages show it: class in bits 15 and 14, number below. */
static uint32_t tagCode(uint8_t identifier, uint32_t number) {
    return ((uint32_t)(identifier >> 6) << 14) | (number & 0x3FFFu);
}

static uint32_t readTag(Reader* r, uint8_t* identifier) {
    if (r->p >= r->end) kivRaise(r->world, MSG_END_OF_INPUT, 0);
    *identifier = *r->p++;
    uint32_t number = *identifier & 0x1Fu;
    if (number == 0x1Fu) {
        uint8_t b;
        number = 0;
        do {
            if (r->p >= r->end) kivRaise(r->world, MSG_END_OF_INPUT, 0);
            b = *r->p++;
            number = (number << 7) | (b & 0x7Fu);
            if (number > 0x3FFFu) kivRaise(r->world, MSG_TAG_TOO_LONG, number);
        } while (b & 0x80u);
    }
    return number;
}

static uint32_t readLength(Reader* r) {
    if (r->p >= r->end) kivRaise(r->world, MSG_END_OF_INPUT, 0);
    uint8_t first = *r->p++;
    uint32_t length = first;
    if (first == 0x80u) {
        if (r->der) kivRaiseText(r->world, MSG_DER_INDEFINITE, NULL);
        kivRaise(r->world, MSG_INDEFINITE, 0);
    }
    if (first > 0x80u) {
        uint32_t k = first & 0x7Fu;
        if (k > 4) kivRaise(r->world, MSG_LENGTH_TOO_LONG, k);
        if ((uint32_t)(r->end - r->p) < k) kivRaise(r->world, MSG_END_OF_INPUT, 0);
        if (r->der && (r->p[0] == 0 || (k == 1 && r->p[0] < 0x80u)))
            kivRaise(r->world, MSG_MISENCODED, 0);
        length = 0;
        while (k--) length = (length << 8) | *r->p++;
    }
    if (length > (uint32_t)(r->end - r->p)) kivRaise(r->world, MSG_END_OF_INPUT, 0);
    return length;
}

/* Reads the header of an element that must carry identifier (a one-octet
 * tag) and answers its contents, leaving the reader after the element. */
static const uint8_t* expect(Reader* r, uint8_t identifier, uint32_t* length) {
    uint8_t found;
    uint32_t number = readTag(r, &found);
    if (found != identifier)
        kivRaise(r->world, MSG_TAG_MISMATCH,
                 tagCode(found, number) | tagCode(identifier, identifier & 0x1Fu) << 16);
    *length = readLength(r);
    const uint8_t* contents = r->p;
    r->p += *length;
    return contents;
}

static uint8_t* keep(KivGlobal* world, const uint8_t* octets, uint32_t length, uint32_t extra) {
    if (length + extra == 0) return NULL;
    uint8_t* block = (uint8_t*)kivAllocRounded(world, length + extra);
    memcpy(block, octets, length);
    if (extra) block[length] = 0;
    return block;
}

static int64_t readInteger(Reader* r) {
    uint32_t length;
    const uint8_t* c = expect(r, 0x02, &length);
    if (length == 0) kivRaise(r->world, MSG_MISENCODED, 0);
    if (length > 8) kivRaise(r->world, MSG_INTEGER_TOO_LONG, length);
    if (r->der && length > 1 &&
        ((c[0] == 0x00 && !(c[1] & 0x80u)) || (c[0] == 0xFF && (c[1] & 0x80u))))
        kivRaise(r->world, MSG_MISENCODED, 0);
    uint64_t v = (c[0] & 0x80u) ? ~(uint64_t)0 : 0;
    for (uint32_t i = 0; i < length; ++i) v = (v << 8) | c[i];
    return (int64_t)v;
}

static void readBits(Reader* r, CatalogString* bits) {
    uint32_t length;
    const uint8_t* c = expect(r, 0x03, &length);
    if (length == 0 || c[0] > 7 || (length == 1 && c[0] != 0))
        kivRaise(r->world, MSG_MISENCODED, 0);
    uint8_t unused = c[0];
    if (r->der && length > 1) {
        /* Unused bits are zero, and a named bit list ends with a one bit. */
        uint8_t last = c[length - 1];
        if ((last & ((1u << unused) - 1u)) || !(last & (1u << unused)))
            kivRaise(r->world, MSG_MISENCODED, 0);
    }
    bits->length = (length - 1) * 8 - unused;
    bits->value = keep(r->world, c + 1, length - 1, 0);
}

/* The PrintableString alphabet, one flag per octet. */
static const uint8_t printable[256] = {
    ['A' ... 'Z'] = 1, ['a' ... 'z'] = 1, ['0' ... '9'] = 1, [' '] = 1, ['\''] = 1,
    ['('] = 1,         [')'] = 1,         ['+'] = 1,         [','] = 1, ['-'] = 1,
    ['.'] = 1,         ['/'] = 1,         [':'] = 1,         ['='] = 1, ['?'] = 1,
};

static CatalogTag* readTags(Reader* r) {
    KivGlobal* world = r->world;
    uint32_t length;
    const uint8_t* c = expect(r, 0x31, &length);
    Reader body = {world, c, c + length, r->der};
    CatalogTag* head = NULL;
    CatalogTag** tail = &head;
    const uint8_t* previous = NULL;
    uint32_t previousLength = 0;
    KivComponentFrame frame;
    catalogEnter(world, &frame, &catalogTagElement, 0);
    while (body.p < body.end) {
        ++frame.index;
        const uint8_t* start = body.p;
        uint32_t n;
        const uint8_t* text = expect(&body, 0x13, &n);
        for (uint32_t i = 0; i < n; ++i)
            if (!printable[text[i]]) kivRaise(world, MSG_ALPHABET, text[i]);
        uint32_t encodedLength = (uint32_t)(body.p - start);
        if (r->der && previous) {
            /* Canonical order: ascending encodings, a prefix first. */
            uint32_t common = previousLength < encodedLength ? previousLength : encodedLength;
            int order = memcmp(previous, start, common);
            if (order > 0 || (order == 0 && previousLength > encodedLength))
                kivRaise(world, MSG_MISENCODED, 0);
        }
        previous = start;
        previousLength = encodedLength;
        CatalogTag* node = (CatalogTag*)kivAllocRounded(world, sizeof *node);
        node->next = NULL;
        node->value = (char*)keep(world, text, n, 1);
        *tail = node;
        tail = &node->next;
    }
    catalogLeave(world, &frame);
    return head;
}

static CatalogEntry* readEntry(Reader* r) {
    KivGlobal* world = r->world;
    KivComponentFrame pdu, frame;
    catalogEnter(world, &pdu, &catalogEntryType, 0);
    uint32_t length;
    const uint8_t* c = expect(r, 0x30, &length);
    Reader body = {world, c, c + length, r->der};
    CatalogEntry* e = (CatalogEntry*)kivAllocZeroed(world, (int32_t)sizeof *e);

    catalogEnter(world, &frame, &catalogFields[CATALOG_FIELD_NAME], 0);
    c = expect(&body, 0x0C, &length);
    uint32_t chars = catalogUtf8Length(c, length);
    if (chars < CATALOG_NAME_MIN || chars > CATALOG_NAME_MAX) kivRaise(world, MSG_SIZE, chars);
    e->name.length = length;
    e->name.value = keep(world, c, length, 0);

    frame.descriptor = &catalogFields[CATALOG_FIELD_SERIAL];
    e->serial = readInteger(&body);

    frame.descriptor = &catalogFields[CATALOG_FIELD_CREATED];
    c = expect(&body, 0x18, &length);
    e->created = (char*)keep(world, c, length, 1);
    kivCheckGeneralizedOrUTCTime(world, e->created, 0);

    frame.descriptor = &catalogFields[CATALOG_FIELD_FLAGS];
    readBits(&body, &e->flags);

    frame.descriptor = &catalogFields[CATALOG_FIELD_DIGEST];
    c = expect(&body, 0x04, &length);
    e->digest.length = length;
    e->digest.value = keep(world, c, length, 0);

    frame.descriptor = &catalogFields[CATALOG_FIELD_TAGS];
    e->tags = readTags(&body);

    if (body.p < body.end && *body.p == 0xA0) {
        frame.descriptor = &catalogFields[CATALOG_FIELD_NOTE];
        c = expect(&body, 0xA0, &length);
        if (length == 0) kivRaise(world, MSG_EMPTY_ANY, 0);
        KivBuffer inner = {length, (uint8_t*)c};
        if (kivBerElementLength(&inner) != length) kivRaise(world, MSG_MISENCODED, 0);
        e->note.length = length;
        e->note.encoded = keep(world, c, length, 0);
        e->bitMask |= CATALOG_NOTE_PRESENT;
    }
    catalogLeave(world, &frame);
    if (body.p < body.end) {
        uint8_t found;
        uint32_t number = readTag(&body, &found);
        kivRaise(world, MSG_TAG_MISMATCH, tagCode(found, number));
    }
    catalogLeave(world, &pdu);
    return e;
}

int32_t catalogBerDecode(KivGlobal* world, int32_t* pduNum, KivBuffer* input, void** value,
                         uint32_t flags) {
    jmp_buf frame;
    const int pool = *value != NULL;
    (void)flags;
    if (*pduNum == 0) *pduNum = CATALOG_PDU_ENTRY;
    catalogBeginOperation(world, &frame, CATALOG_MODE_DECODE, *pduNum);
    world->poolMode = (uint8_t)pool;
    if (pool) {
        /* The value is built inside the caller's buffer. */
        world->poolCursor = (uint8_t*)*value;
        world->poolLeft = world->decodeBufferLength;
    }
    if (setjmp(frame)) {
        /* With a temporary buffer the end of the operation leaves recorded
         * blocks alone (they may be its own); the value's blocks are ours. */
        if (!pool && world->privateState->userBufferLength)
            kivFreeTrackedBlocks(world, world->freeHook);
        kivEndOperationMemory(world);
        world->poolMode = 0;
        world->errorPath = NULL;
        if (!pool) *value = NULL;
        return world->errorCode;
    }
    kivTraceDecoderInput(world, input->value, (int32_t)input->length);
    if (*pduNum != CATALOG_PDU_ENTRY) kivRaise(world, MSG_PDU_NUMBER, (uint32_t)*pduNum);
    Reader r = {world, input->value, input->value + input->length, world->encodingRules == 3};
    *value = readEntry(&r);
    kivTraceDecoderResult(world, 0, *pduNum, value);
    /* The blocks now belong to the caller. */
    if (!pool) kivDropBlockTable(world);
    kivEndOperationMemory(world);
    world->poolMode = 0;
    return 0;
}
