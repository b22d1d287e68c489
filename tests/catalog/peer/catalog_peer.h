/* The catalog's Entry as a peer library's ASN.1 templates describe it, to
 * cross-check our DER encodings and to measure against. Built only where
 * that library is installed (FENK_HAVE_OPENSSL). */
#ifndef FENK_CATALOG_PEER_H
#define FENK_CATALOG_PEER_H

#include "catalog.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct PeerEntry PeerEntry;

/* A peer value holding the same fields as entry; null when it cannot be made. */
PeerEntry* peerFromCatalog(const CatalogEntry* entry);
/* DER encoding; answers its length (negative on failure) and the octets,
 * released with peerFreeEncoding. */
int peerEncode(const PeerEntry* entry, unsigned char** octets);
void peerFreeEncoding(unsigned char* octets);
PeerEntry* peerDecode(const unsigned char* octets, long length);
void peerFree(PeerEntry* entry);

#ifdef __cplusplus
}
#endif

#endif
