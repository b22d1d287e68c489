/* Shared by the catalog's coders: the operation frame, the error-context
 * descriptors and the tag numbers. */
#ifndef FENK_CATALOG_INTERNAL_H
#define FENK_CATALOG_INTERNAL_H

#include <setjmp.h>

#include "catalog.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Error-context descriptors (name, type name, kind); kind 10 marks the SET OF,
 * whose components are numbered elements. */
extern const KivPduDescriptor catalogEntryPdu;
extern const KivComponentDescriptor catalogEntryType;
extern const KivComponentDescriptor catalogFields[7];
extern const KivComponentDescriptor catalogTagElement;

enum {
    CATALOG_FIELD_NAME,
    CATALOG_FIELD_SERIAL,
    CATALOG_FIELD_CREATED,
    CATALOG_FIELD_FLAGS,
    CATALOG_FIELD_DIGEST,
    CATALOG_FIELD_TAGS,
    CATALOG_FIELD_NOTE
};

#define CATALOG_NAME_MIN 1u
#define CATALOG_NAME_MAX 64u

/* Error modes: the composer prefixes 'E' for 0 and 'D' for 3. */
#define CATALOG_MODE_ENCODE 0
#define CATALOG_MODE_DECODE 3

/* Points the world's unwinding fields at the coder's own frame before it sets
 * its jump point: raises below unwind there, with the PDU as context. */
void catalogBeginOperation(KivGlobal* world, jmp_buf* frame, int32_t mode, int32_t pduNum);

/* Enters and leaves a component: the frames live in the coder's stack and
 * chain outward to the PDU's frame. */
static inline void catalogEnter(KivGlobal* world, KivComponentFrame* frame,
                                const KivComponentDescriptor* descriptor, int32_t index) {
    frame->outer = world->errorPath;
    frame->descriptor = descriptor;
    frame->index = index;
    world->errorPath = frame;
}

static inline void catalogLeave(KivGlobal* world, KivComponentFrame* frame) {
    world->errorPath = frame->outer;
}

/* Characters of a UTF-8 text: octets that do not continue a sequence. */
uint32_t catalogUtf8Length(const uint8_t* octets, uint32_t length);

/* Hands the output to the caller: into the caller's buffer when one was given
 * (raising "buffer too small" when it does not fit), else the encoding itself,
 * which then belongs to the caller. */
void catalogDeliver(KivGlobal* world, KivBuffer* output, uint8_t* encoding, uint32_t length,
                    uint32_t flags);

/* Entry 83 of the BER coder table: prepends octets to a backward output. */
void catalogWriteBackward(KivGlobal* world, uint8_t** cursor, uint32_t* left,
                          const uint8_t* octets, uint32_t length);

#ifdef __cplusplus
}
#endif

#endif
