/* kivapit: the companion runtime that fenkapi imports from, and the toolkit
 * initialisation that sets up a world before the first call.
 *
 * The library reaches the companion through these names only:
 *   kivCompanionPrint        formatted output to the world's trace destination
 *   kivCompanionLinkedRules  which encoding rules were linked
 *   kivCompanionCharClass    character classes of the 256 octets
 *   kivCompanionEntry143..149  passed through slots 222 to 227
 */
#ifndef KIVAPIT_H
#define KIVAPIT_H

#include "fenkapi.h"

#ifdef __cplusplus
extern "C" {
#endif

#if defined(__GNUC__)
#define KIVAPIT_EXPORT __attribute__((visibility("default")))
#else
#define KIVAPIT_EXPORT
#endif

/* Character classes of kivCompanionCharClass, as the C locale classifies
 * each octet. */
#define KIV_CLASS_DIGIT 0x0004u
#define KIV_CLASS_PRINTABLE 0x0020u
#define KIV_CLASS_SPACE 0x0080u

/* Writes formatted text to the world's trace destination through the
 * library's output service (slot 26 of the world's apiTable), in call order
 * and with nothing added. Answers that service's result. */
KIVAPIT_EXPORT int kivCompanionPrint(KivGlobal* world, const char* format, ...);

/* The highest valid bit of the linked-rules bitmap and the bitmap itself.
 * A null bitmap means every rule is linked. Defaults: 10 and null. */
KIVAPIT_EXPORT void kivCompanionLinkedRules(KivGlobal* world, int32_t* highestBit,
                                            const uint8_t** bitmap);
KIVAPIT_EXPORT void kivCompanionSetLinkedRules(KivGlobal* world, int32_t highestBit,
                                               const uint8_t* bitmap);

KIVAPIT_EXPORT extern const uint16_t kivCompanionCharClass[256];

/* The entries behind slots 222 to 227. Each records its ordinal and
 * arguments as the last companion call and answers its ordinal. */
typedef struct KivCompanionCall {
    int32_t ordinal;
    void* a1;
    int64_t args[5];
} KivCompanionCall;

KIVAPIT_EXPORT int64_t kivCompanionEntry143(void* a1, int64_t a2, int64_t a3, int64_t a4,
                                            int64_t a5, int64_t a6);
KIVAPIT_EXPORT int64_t kivCompanionEntry144(void* a1, int64_t a2, int64_t a3, int64_t a4,
                                            int64_t a5, int64_t a6);
KIVAPIT_EXPORT int64_t kivCompanionEntry145(void* a1, int64_t a2, int64_t a3, int64_t a4,
                                            int64_t a5, int64_t a6);
KIVAPIT_EXPORT int64_t kivCompanionEntry146(void* a1, int64_t a2, int64_t a3, int64_t a4,
                                            int64_t a5, int64_t a6);
KIVAPIT_EXPORT int64_t kivCompanionEntry148(void* a1, int64_t a2, int64_t a3, int64_t a4,
                                            int64_t a5, int64_t a6);
KIVAPIT_EXPORT int64_t kivCompanionEntry149(void* a1, int64_t a2, int64_t a3, int64_t a4,
                                            int64_t a5, int64_t a6);

/* The calling thread's last call of an entry above. */
KIVAPIT_EXPORT KivCompanionCall kivCompanionLastCall(void);

/* Toolkit initialisation: zeroes the world, gives it a zeroed KivPrivate,
 * creates its globalLock, points apiTable at apiTbl, sets controlTable,
 * installs the default routines (slot 96) and makes their print routine the
 * default, so output goes straight to outputStream. Coder pairs stay null.
 * Answers 0, 6 for a null world, 8 when memory runs out. */
KIVAPIT_EXPORT int kivCompanionInitWorld(KivGlobal* world, void* controlTable);

/* Releases what kivCompanionInitWorld made. */
KIVAPIT_EXPORT void kivCompanionEndWorld(KivGlobal* world);

#ifdef __cplusplus
}
#endif

#endif
