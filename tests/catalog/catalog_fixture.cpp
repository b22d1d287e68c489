#include <gtest/gtest.h>

#include "catalog_fixture.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace fenk::test {

void OwnedEntry::link() {
    entry.name = {static_cast<uint32_t>(name.size()),
                  reinterpret_cast<uint8_t*>(name.data())};
    entry.created = created.data();
    entry.digest = {static_cast<uint32_t>(digest.size()), digest.data()};
    entry.flags.value = flags.data();
    tags.assign(tagTexts.size(), CatalogTag{});
    size_t i = 0;
    for (auto& t : tagTexts) {
        tags[i].value = t.data();
        tags[i].next = i + 1 < tags.size() ? &tags[i + 1] : nullptr;
        ++i;
    }
    entry.tags = tags.empty() ? nullptr : tags.data();
    entry.bitMask = note.empty() ? 0 : CATALOG_NOTE_PRESENT;
    entry.note = {0, static_cast<uint32_t>(note.size()),
                  note.empty() ? nullptr : reinterpret_cast<uint8_t*>(note.data()), nullptr};
}

namespace {

int uniform(std::mt19937& rng, int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(rng);
}

std::string randomName(std::mt19937& rng) {
    // One to 64 characters, some of them two or three octets long in UTF-8.
    static const char* const pieces[] = {"a", "Z", "7", " ", "&", "<", "\xC3\xA9",
                                         "\xE2\x82\xAC", "\xC3\x9F"};
    std::string s;
    for (int n = uniform(rng, 1, 64); n > 0; --n) s += pieces[uniform(rng, 0, 8)];
    return s;
}

std::string randomTime(std::mt19937& rng) {
    char text[40];
    std::snprintf(text, sizeof text, "%04d%02d%02d%02d%02d%02d", uniform(rng, 1950, 2999),
                  uniform(rng, 1, 12), uniform(rng, 1, 28), uniform(rng, 0, 23),
                  uniform(rng, 0, 59), uniform(rng, 0, 59));
    std::string s = text;
    // A canonical fraction: absent, or digits whose last is not zero.
    int digits = uniform(rng, 0, 3);
    if (digits) {
        s += '.';
        for (int i = 1; i < digits; ++i) s += static_cast<char>('0' + uniform(rng, 0, 9));
        s += static_cast<char>('1' + uniform(rng, 0, 8));
    }
    return s + "Z";
}

std::string randomPrintable(std::mt19937& rng) {
    static const char alphabet[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789 '()+,-./:=?";
    std::string s;
    for (int n = uniform(rng, 0, 12); n > 0; --n) s += alphabet[uniform(rng, 0, 73)];
    return s;
}

}  // namespace

void randomEntry(std::mt19937& rng, OwnedEntry& out, int tagCount) {
    out.name = randomName(rng);
    static const int64_t edges[] = {0, -1, 127, 128, -128, -129, INT64_MAX, INT64_MIN};
    out.entry.serial = uniform(rng, 0, 3) == 0
                           ? edges[uniform(rng, 0, 7)]
                           : static_cast<int64_t>(std::uniform_int_distribution<uint64_t>()(rng));
    out.created = randomTime(rng);
    uint32_t bits = static_cast<uint32_t>(uniform(rng, 0, 40));
    out.flags.assign((bits + 7) / 8, 0);
    for (auto& b : out.flags) b = static_cast<uint8_t>(uniform(rng, 0, 255));
    // Bits beyond the length are zero in a well-formed value.
    if (bits % 8) out.flags.back() &= static_cast<uint8_t>(0xFF << (8 - bits % 8));
    out.entry.flags.length = bits;
    out.digest.assign(static_cast<size_t>(uniform(rng, 0, 300)), 0);
    for (auto& b : out.digest) b = static_cast<uint8_t>(uniform(rng, 0, 255));
    out.tagTexts.clear();
    for (int n = tagCount < 0 ? uniform(rng, 0, 200) : tagCount; n > 0; --n)
        out.tagTexts.push_back(randomPrintable(rng));
    out.note.clear();
    if (uniform(rng, 0, 1)) {
        size_t length = static_cast<size_t>(uniform(rng, 0, 200));
        out.note = std::string(1, '\x04');
        if (length < 128) {
            out.note += static_cast<char>(length);
        } else {
            out.note += '\x81';
            out.note += static_cast<char>(length);
        }
        for (size_t i = 0; i < length; ++i) out.note += static_cast<char>(uniform(rng, 0, 255));
    }
    out.link();
}

void sampleEntry(OwnedEntry& out) {
    const CatalogEntry* s = catalogSampleEntry();
    out.name.assign(reinterpret_cast<const char*>(s->name.value), s->name.length);
    out.entry.serial = s->serial;
    out.created = s->created;
    out.flags.assign(s->flags.value, s->flags.value + (s->flags.length + 7) / 8);
    out.entry.flags.length = s->flags.length;
    out.digest.assign(s->digest.value, s->digest.value + s->digest.length);
    out.tagTexts.clear();
    for (const CatalogTag* t = s->tags; t; t = t->next) out.tagTexts.push_back(t->value);
    out.note.assign(reinterpret_cast<const char*>(s->note.encoded), s->note.length);
    out.link();
}

namespace {

bool bit(const CatalogString& bits, uint32_t i) {
    return i < bits.length && (bits.value[i / 8] & (0x80u >> (i % 8)));
}

std::vector<std::string> tagList(const CatalogTag* t) {
    std::vector<std::string> v;
    for (; t; t = t->next) v.push_back(t->value);
    std::sort(v.begin(), v.end());
    return v;
}

}  // namespace

::testing::AssertionResult sameEntry(const CatalogEntry& a, const CatalogEntry& b) {
    auto octets = [](const CatalogString& s) {
        return std::string(reinterpret_cast<const char*>(s.value), s.length);
    };
    if (octets(a.name) != octets(b.name)) return ::testing::AssertionFailure() << "name";
    if (a.serial != b.serial) return ::testing::AssertionFailure() << "serial";
    if (std::strcmp(a.created, b.created)) return ::testing::AssertionFailure() << "created";
    for (uint32_t i = 0; i < std::max(a.flags.length, b.flags.length); ++i)
        if (bit(a.flags, i) != bit(b.flags, i))
            return ::testing::AssertionFailure() << "flags bit " << i;
    if (octets(a.digest) != octets(b.digest)) return ::testing::AssertionFailure() << "digest";
    if (tagList(a.tags) != tagList(b.tags)) return ::testing::AssertionFailure() << "tags";
    if ((a.bitMask & CATALOG_NOTE_PRESENT) != (b.bitMask & CATALOG_NOTE_PRESENT))
        return ::testing::AssertionFailure() << "note presence";
    if ((a.bitMask & CATALOG_NOTE_PRESENT) &&
        (a.note.length != b.note.length ||
         std::memcmp(a.note.encoded, b.note.encoded, a.note.length)))
        return ::testing::AssertionFailure() << "note";
    return ::testing::AssertionSuccess();
}

Encoded encodeEntry(KivGlobal* world, const CatalogEntry& entry) {
    KivBuffer out{0, nullptr};
    int32_t code = kivEncodePdu(world, CATALOG_PDU_ENTRY, const_cast<CatalogEntry*>(&entry), &out);
    Encoded e{code, {}};
    if (code == 0) {
        e.octets.assign(out.value, out.value + out.length);
        kivFreeBlock(world, out.value);
    }
    return e;
}

Decoded decodeEntry(KivGlobal* world, const std::vector<uint8_t>& octets, void* into,
                    int32_t pdu) {
    KivBuffer in{static_cast<uint32_t>(octets.size()), const_cast<uint8_t*>(octets.data())};
    Decoded d{0, into};
    d.code = kivDecodePdu(world, &pdu, &in, &d.value);
    return d;
}

}  // namespace fenk::test
