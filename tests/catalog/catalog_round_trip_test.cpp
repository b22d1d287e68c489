// The catalog's coders end to end: encode, decode and compare many generated
// values under BER and DER; DER is canonical whatever order the SET OF was
// given in, and byte-identical to a peer library's DER.
#include <gtest/gtest.h>

#include <algorithm>

#include "catalog_fixture.h"
#include "peer/catalog_peer.h"
#include "support/alloc_hooks.h"

namespace fenk::test {
namespace {

class RoundTrip : public ::testing::TestWithParam<int> {};

TEST_P(RoundTrip, DecodeOfEncodeGivesTheValueBackAndLeavesNothing) {
    CatalogWorld w;
    AllocCounter counter;
    installCountingHooks(w.get(), &counter);
    ASSERT_EQ(kivSelectRules(w.get(), GetParam()), 0);
    std::mt19937 rng(GetParam() * 7919 + 1);
    for (int i = 0; i < 150; ++i) {
        OwnedEntry v;
        randomEntry(rng, v);
        Encoded e = encodeEntry(w.get(), v.entry);
        ASSERT_EQ(e.code, 0) << w->messageText;
        Decoded d = decodeEntry(w.get(), e.octets);
        ASSERT_EQ(d.code, 0) << w->messageText;
        EXPECT_TRUE(sameEntry(v.entry, *static_cast<CatalogEntry*>(d.value))) << "value " << i;
        EXPECT_EQ(kivCompareValue(w.get(), CATALOG_PDU_ENTRY, &v.entry, d.value), 0u);
        EXPECT_EQ(kivReleasePdu(w.get(), CATALOG_PDU_ENTRY, d.value), 0);
        ASSERT_EQ(counter.live, 0) << "value " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(BerAndDer, RoundTrip, ::testing::Values(0, 3));

TEST(DerEncoding, IsTheSameWhateverTheOrderOfTheSetOf) {
    CatalogWorld w;
    kivSelectRules(w.get(), 3);
    std::mt19937 rng(42);
    for (int count : {0, 1, 2, 20, 200}) {
        OwnedEntry v;
        randomEntry(rng, v, count);
        Encoded first = encodeEntry(w.get(), v.entry);
        ASSERT_EQ(first.code, 0);
        for (int shuffle = 0; shuffle < 3; ++shuffle) {
            std::vector<std::string> texts(v.tagTexts.begin(), v.tagTexts.end());
            std::shuffle(texts.begin(), texts.end(), rng);
            v.tagTexts.assign(texts.begin(), texts.end());
            v.link();
            EXPECT_EQ(encodeEntry(w.get(), v.entry).octets, first.octets) << count;
        }
    }
}

TEST(BerEncoding, KeepsTheSetOfInTheOrderGiven) {
    CatalogWorld w;
    kivSelectRules(w.get(), 0);
    Encoded e = encodeEntry(w.get(), *catalogSampleEntry());
    ASSERT_EQ(e.code, 0);
    // The tag "2026" as an element, not the year of created.
    const std::string year("\x13\x04" "2026");
    std::string text(e.octets.begin(), e.octets.end());
    EXPECT_LT(text.find("reference"), text.find("Archive"));
    EXPECT_LT(text.find("Archive"), text.find(year));
    // DER's order of the same tags is pinned by the exact encoding below.
}

TEST(DerEncoding, OfTheSampleIsExact) {
    CatalogWorld w;
    kivSelectRules(w.get(), 3);
    Encoded e = encodeEntry(w.get(), *catalogSampleEntry());
    ASSERT_EQ(e.code, 0);
    const std::vector<uint8_t> expected = {
        0x30, 0x5F, 0x0C, 0x0D, 'M', 'a', 'p', 's', ' ', '&', ' ', 'C', 'h', 'a', 'r', 't',
        's', 0x02, 0x03, 0x12, 0xD6, 0x87, 0x18, 0x12, '2', '0', '2', '6', '1', '1', '2',
        '2', '2', '1', '3', '0', '4', '5', '.', '2', '5', 'Z', 0x03, 0x02, 0x04, 0xD0,
        0x04, 0x10, 0x9F, 0x86, 0xD0, 0x81, 0x88, 0x4C, 0x7D, 0x65, 0x9A, 0x2F, 0xEA, 0xA0,
        0xC5, 0x5A, 0xD0, 0x15, 0x31, 0x1A, 0x13, 0x04, '2', '0', '2', '6', 0x13, 0x07,
        'A', 'r', 'c', 'h', 'i', 'v', 'e', 0x13, 0x09, 'r', 'e', 'f', 'e', 'r', 'e', 'n',
        'c', 'e', 0xA0, 0x03, 0x02, 0x01, 0x07};
    EXPECT_EQ(e.octets, expected);
}

TEST(DerEncoding, DropsTrailingZeroBitsOfTheNamedBitsOnly) {
    CatalogWorld w;
    OwnedEntry v;
    sampleEntry(v);
    v.flags = {0x40, 0x00};  // verified, then 11 zero bits
    v.entry.flags.length = 13;
    v.link();
    kivSelectRules(w.get(), 3);
    Encoded der = encodeEntry(w.get(), v.entry);
    kivSelectRules(w.get(), 0);
    Encoded ber = encodeEntry(w.get(), v.entry);
    auto flagsOf = [](const std::vector<uint8_t>& o) {
        for (size_t i = 0; i + 1 < o.size(); ++i)
            if (o[i] == 0x03 && o[i + 1] <= 3) return std::vector<uint8_t>(o.begin() + i, o.begin() + i + 2 + o[i + 1]);
        return std::vector<uint8_t>();
    };
    EXPECT_EQ(flagsOf(der.octets), (std::vector<uint8_t>{0x03, 0x02, 0x06, 0x40}));
    EXPECT_EQ(flagsOf(ber.octets), (std::vector<uint8_t>{0x03, 0x03, 0x03, 0x40, 0x00}));
}

TEST(Encoding, IntoTheCallersBufferFitsOrRefusesWithoutLeaking) {
    CatalogWorld w;
    AllocCounter counter;
    installCountingHooks(w.get(), &counter);
    kivSelectRules(w.get(), 3);
    uint8_t room[200];
    KivBuffer out{sizeof room, room};
    ASSERT_EQ(kivEncodePdu(w.get(), CATALOG_PDU_ENTRY, catalogSampleEntry(), &out), 0);
    EXPECT_EQ(out.length, 97u);
    EXPECT_EQ(out.value, room);
    EXPECT_EQ(room[0], 0x30);
    KivBuffer small{10, room};
    EXPECT_EQ(kivEncodePdu(w.get(), CATALOG_PDU_ENTRY, catalogSampleEntry(), &small), 1);
    EXPECT_STREQ(w->messageText,
                 "E0001S: Output buffer too small; total buffer size: 10; check PDU #1 "
                 "'Entry'.\n");
    EXPECT_EQ(counter.live, 0);
    EXPECT_EQ(kivMeasureEncoding(w.get(), CATALOG_PDU_ENTRY, catalogSampleEntry()), 97u);
    EXPECT_EQ(counter.live, 0);
}

TEST(Decoding, IntoTheCallersBufferBuildsTheValueThere) {
    CatalogWorld w;
    AllocCounter counter;
    installCountingHooks(w.get(), &counter);
    kivSelectRules(w.get(), 3);
    Encoded e = encodeEntry(w.get(), *catalogSampleEntry());
    alignas(8) uint8_t room[512];
    kivStoreDecodeBufferLength(w.get(), sizeof room);
    Decoded d = decodeEntry(w.get(), e.octets, room);
    ASSERT_EQ(d.code, 0) << w->messageText;
    EXPECT_EQ(d.value, room);
    EXPECT_TRUE(sameEntry(*catalogSampleEntry(), *static_cast<CatalogEntry*>(d.value)));
    EXPECT_EQ(counter.live, 0);
    // The world is back out of the caller's buffer for the next encoding.
    EXPECT_EQ(encodeEntry(w.get(), *catalogSampleEntry()).octets, e.octets);
    kivStoreDecodeBufferLength(w.get(), 64);
    EXPECT_EQ(decodeEntry(w.get(), e.octets, room).code, 1);
    EXPECT_EQ(counter.live, 0);
}

TEST(Decoding, WithATemporaryBufferStillGivesBackAFailedValue) {
    CatalogWorld w;
    AllocCounter counter;
    installCountingHooks(w.get(), &counter);
    alignas(8) static uint8_t temporary[16 * 1024];
    KivWorkBuffer work{sizeof temporary, temporary};
    ASSERT_EQ(kivStoreWorkBuffer(w.get(), &work), 0);
    kivSelectRules(w.get(), 3);
    Encoded e = encodeEntry(w.get(), *catalogSampleEntry());
    ASSERT_EQ(e.code, 0);
    // Month 13 in created: the entry, name and time are allocated by then.
    std::string octets(e.octets.begin(), e.octets.end());
    size_t month = octets.find("20261122") + 4;
    e.octets[month] = '1';
    e.octets[month + 1] = '3';
    counter.calls = 0;
    EXPECT_EQ(decodeEntry(w.get(), e.octets).code, 12);
    EXPECT_GE(counter.calls, 3);
    EXPECT_EQ(counter.live, 0);
}

TEST(XerEncoding, WritesTheSampleAndSortsTheSetOfOnlyUnderCxer) {
    CatalogWorld w;
    kivSelectRules(w.get(), 5);
    Encoded e = encodeEntry(w.get(), *catalogSampleEntry());
    ASSERT_EQ(e.code, 0) << w->messageText;
    const std::string head =
        "<Entry><name>Maps &amp; Charts</name><serial>1234567</serial>"
        "<created>20261122213045.25Z</created><flags>1101</flags>"
        "<digest>9F86D081884C7D659A2FEAA0C55AD015</digest><tags>";
    EXPECT_EQ(std::string(e.octets.begin(), e.octets.end()),
              head + "<PrintableString>reference</PrintableString><PrintableString>Archive"
                     "</PrintableString><PrintableString>2026</PrintableString></tags>"
                     "<note>020107</note></Entry>");
    kivSelectRules(w.get(), 6);
    e = encodeEntry(w.get(), *catalogSampleEntry());
    ASSERT_EQ(e.code, 0) << w->messageText;
    EXPECT_EQ(std::string(e.octets.begin(), e.octets.end()),
              head + "<PrintableString>2026</PrintableString><PrintableString>Archive"
                     "</PrintableString><PrintableString>reference</PrintableString></tags>"
                     "<note>020107</note></Entry>");
}

TEST(Transcoding, FromDerToXmlGivesTheXerEncodingOfTheDecodedValue) {
    CatalogWorld w;
    AllocCounter counter;
    installCountingHooks(w.get(), &counter);
    // The decoded SET OF is in DER order, which is also the canonical XML order.
    kivSelectRules(w.get(), 6);
    Encoded xer = encodeEntry(w.get(), *catalogSampleEntry());
    kivSelectRules(w.get(), 3);
    Encoded der = encodeEntry(w.get(), *catalogSampleEntry());
    kivStoreXmlRules(w.get(), 5);
    KivBuffer in{static_cast<uint32_t>(der.octets.size()), der.octets.data()}, out{0, nullptr};
    ASSERT_EQ(kivTranscodeToXml(w.get(), CATALOG_PDU_ENTRY, 3, &in, &out), 0);
    EXPECT_EQ(std::vector<uint8_t>(out.value, out.value + out.length), xer.octets);
    kivFreeBlock(w.get(), out.value);
    EXPECT_EQ(kivCurrentRules(w.get()), 3);
    EXPECT_EQ(counter.live, 0);
}

TEST(Printing, ShowsTheSampleInValueNotation) {
    CatalogWorld w;
    ASSERT_EQ(kivDisplayPdu(w.get(), CATALOG_PDU_ENTRY, catalogSampleEntry()), 0);
    EXPECT_EQ(w.output(),
              "value Entry ::= {\n"
              "  name \"Maps & Charts\",\n"
              "  serial 1234567,\n"
              "  created \"20261122213045.25Z\",\n"
              "  flags '1101'B,\n"
              "  digest '9F86D081884C7D659A2FEAA0C55AD015'H,\n"
              "  tags { \"reference\", \"Archive\", \"2026\" },\n"
              "  note '020107'H\n"
              "}\n");
}

#ifdef FENK_HAVE_OPENSSL
TEST(PeerCrossCheck, DerEncodingsAreByteIdenticalBothWays) {
    CatalogWorld w;
    kivSelectRules(w.get(), 3);
    std::mt19937 rng(2026);
    for (int i = 0; i < 200; ++i) {
        OwnedEntry v;
        randomEntry(rng, v);
        Encoded ours = encodeEntry(w.get(), v.entry);
        ASSERT_EQ(ours.code, 0) << w->messageText;
        PeerEntry* peer = peerFromCatalog(&v.entry);
        ASSERT_NE(peer, nullptr);
        unsigned char* theirs = nullptr;
        int length = peerEncode(peer, &theirs);
        ASSERT_GT(length, 0);
        EXPECT_EQ(ours.octets, std::vector<uint8_t>(theirs, theirs + length)) << "value " << i;
        peerFreeEncoding(theirs);
        peerFree(peer);
        // The peer reads our encoding back to the same octets.
        PeerEntry* back = peerDecode(ours.octets.data(), static_cast<long>(ours.octets.size()));
        ASSERT_NE(back, nullptr);
        length = peerEncode(back, &theirs);
        EXPECT_EQ(ours.octets, std::vector<uint8_t>(theirs, theirs + length));
        peerFreeEncoding(theirs);
        peerFree(back);
    }
}
#endif

}  // namespace
}  // namespace fenk::test
