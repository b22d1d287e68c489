/* The catalog's control table, descriptors and coder tables, and the world
 * set-up that an application built on the catalog runs first. */
#include <string.h>

#include "catalog_internal.h"
#include "kivapit.h"

const KivPduDescriptor catalogEntryPdu = {"Entry", "Entry"};
const KivComponentDescriptor catalogEntryType = {"Entry", "Entry", 12};
const KivComponentDescriptor catalogFields[7] = {
    {"name", "UTF8String", 29},    {"serial", "INTEGER", 2},
    {"created", "GeneralizedTime", 24}, {"flags", "BIT STRING", 3},
    {"digest", "OCTET STRING", 4}, {"tags", "SET OF", 10},
    {"note", "ANY", 15},
};
const KivComponentDescriptor catalogTagElement = {"", "PrintableString", 19};

CatalogControlTable catalogControlTable = {
    {catalogReleasePdu, KIV_CONTROL_TABLE_VERSION, catalogPrintPdu},
    &catalogValueRoutines,
};

/* The BER coder table: the coder pair first, the backward octet writer at
 * entry 83; the library's SET OF ordering writes sorted components through it.
 * Filled when the program loads, so that threads making worlds at the same
 * time only read it. */
static KivRoutine berTable[KIV_CODER_BACKWARD_WRITER + 1] = {
    (KivRoutine)catalogBerEncode,
    (KivRoutine)catalogBerDecode,
    [KIV_CODER_BACKWARD_WRITER] = (KivRoutine)catalogWriteBackward,
};
static KivCoderPair xerPair = {catalogXerEncode, NULL};

/* coderFlags bit 1: the coders were made with DER support. */
#define CATALOG_CODER_DER 0x2u

void catalogInstall(KivGlobal* world) {
    world->berCoders = (KivCoderPair*)berTable;
    world->xerCoders = &xerPair;
    world->coderFlags |= CATALOG_CODER_DER;
    kivSetValueRoutines(world, catalogControlTable.valueRoutines);
}

int catalogInitWorld(KivGlobal* world) {
    int code = kivCompanionInitWorld(world, &catalogControlTable);
    if (code != 0) return code;
    catalogInstall(world);
    return 0;
}

void catalogBeginOperation(KivGlobal* world, jmp_buf* frame, int32_t mode, int32_t pduNum) {
    world->jumpBuffer = frame;
    world->errorMode = mode;
    if (!world->messageOut) world->messageOut = world->messageText;
    world->raiseRoutine = (KivRaiseRoutine)apiTbl[kivSlotRaise];
    world->errorPath = NULL;
    world->errorPduNumber = pduNum;
    world->errorPduInfo = &catalogEntryPdu;
    world->parentWorld = NULL;
    world->childWorld = NULL;
    world->currentBlockTable = &world->blockTable;
    world->pendingBits = 0;
    world->poolMode = 0;
    world->poolLeft = 0;
    const KivPrivate* p = world->privateState;
    if (p && p->userBufferLength) {
        world->userBufferStart = p->userBufferAddress;
        world->userBufferEnd = p->userBufferAddress + p->userBufferLength;
    } else {
        world->userBufferStart = world->userBufferEnd = NULL;
    }
}

uint32_t catalogUtf8Length(const uint8_t* octets, uint32_t length) {
    uint32_t count = 0;
    for (uint32_t i = 0; i < length; ++i)
        if ((octets[i] & 0xC0u) != 0x80u) ++count;
    return count;
}

void catalogDeliver(KivGlobal* world, KivBuffer* output, uint8_t* encoding, uint32_t length,
                    uint32_t flags) {
    if (flags & KIV_ENCODE_COUNT_ONLY) {
        /* A measuring run keeps only the length. */
        world->deferredBlock = encoding;
        output->length = length;
        output->value = NULL;
        return;
    }
    if (!output->value) {
        output->value = encoding;
        output->length = length;
        return;
    }
    /* The end of the operation frees the joined copy, whatever happens. */
    world->deferredBlock = encoding;
    if (length > output->length) kivRaise(world, 1, output->length);
    memcpy(output->value, encoding, length);
    output->length = length;
}

void catalogWriteBackward(KivGlobal* world, uint8_t** cursor, uint32_t* left,
                          const uint8_t* octets, uint32_t length) {
    while (length) {
        if (*left == 0) {
            *cursor = (uint8_t*)kivNewOutputChunk(world) + KIV_OUTPUT_CHUNK_SIZE;
            *left = KIV_OUTPUT_CHUNK_SIZE;
        }
        uint32_t part = length < *left ? length : *left;
        *cursor -= part;
        *left -= part;
        length -= part;
        memcpy(*cursor, octets + length, part);
    }
}
