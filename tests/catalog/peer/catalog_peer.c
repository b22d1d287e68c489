#include "catalog_peer.h"

#ifdef FENK_HAVE_OPENSSL

#include <openssl/asn1t.h>
#include <string.h>

struct PeerEntry {
    ASN1_UTF8STRING* name;
    ASN1_INTEGER* serial;
    ASN1_GENERALIZEDTIME* created;
    ASN1_BIT_STRING* flags;
    ASN1_OCTET_STRING* digest;
    OPENSSL_STACK* tags;
    ASN1_TYPE* note;
};

ASN1_SEQUENCE(PeerEntry) = {
    ASN1_SIMPLE(PeerEntry, name, ASN1_UTF8STRING),
    ASN1_SIMPLE(PeerEntry, serial, ASN1_INTEGER),
    ASN1_SIMPLE(PeerEntry, created, ASN1_GENERALIZEDTIME),
    ASN1_SIMPLE(PeerEntry, flags, ASN1_BIT_STRING),
    ASN1_SIMPLE(PeerEntry, digest, ASN1_OCTET_STRING),
    ASN1_SET_OF(PeerEntry, tags, ASN1_PRINTABLESTRING),
    ASN1_EXP_OPT(PeerEntry, note, ASN1_ANY, 0),
} ASN1_SEQUENCE_END(PeerEntry)

IMPLEMENT_ASN1_FUNCTIONS(PeerEntry)

PeerEntry* peerFromCatalog(const CatalogEntry* e) {
    PeerEntry* p = PeerEntry_new();
    if (!p) return NULL;
    int ok = ASN1_STRING_set(p->name, e->name.value, (int)e->name.length) &&
             ASN1_INTEGER_set_int64(p->serial, e->serial) &&
             ASN1_STRING_set(p->created, e->created, (int)strlen(e->created)) &&
             ASN1_STRING_set(p->digest, e->digest.value, (int)e->digest.length);
    /* The peer takes the unused bits from the trailing zeros: clear the bits
     * beyond the length, as a named bit list is encoded. */
    uint32_t octets = (e->flags.length + 7) / 8;
    ok = ok && ASN1_STRING_set(p->flags, e->flags.value, (int)octets);
    if (ok && octets && e->flags.length % 8)
        p->flags->data[octets - 1] &= (unsigned char)(0xFFu << (8 - e->flags.length % 8));
    if (ok) p->flags->flags &= ~(long)(ASN1_STRING_FLAG_BITS_LEFT | 0x07);
    /* A new value already holds an empty stack for the SET OF. */
    if (!p->tags) p->tags = OPENSSL_sk_new_null();
    ok = ok && p->tags;
    for (const CatalogTag* t = e->tags; ok && t; t = t->next) {
        ASN1_STRING* s = ASN1_STRING_type_new(V_ASN1_PRINTABLESTRING);
        ok = s && ASN1_STRING_set(s, t->value, (int)strlen(t->value)) &&
             OPENSSL_sk_push(p->tags, s) > 0;
        if (!ok) ASN1_STRING_free(s);
    }
    if (ok && (e->bitMask & CATALOG_NOTE_PRESENT)) {
        const unsigned char* q = e->note.encoded;
        p->note = d2i_ASN1_TYPE(NULL, &q, (long)e->note.length);
        ok = p->note != NULL;
    }
    if (!ok) {
        PeerEntry_free(p);
        return NULL;
    }
    return p;
}

int peerEncode(const PeerEntry* entry, unsigned char** octets) {
    *octets = NULL;
    return i2d_PeerEntry((PeerEntry*)entry, octets);
}

void peerFreeEncoding(unsigned char* octets) { OPENSSL_free(octets); }

PeerEntry* peerDecode(const unsigned char* octets, long length) {
    return d2i_PeerEntry(NULL, &octets, length);
}

void peerFree(PeerEntry* entry) { PeerEntry_free(entry); }

#endif
