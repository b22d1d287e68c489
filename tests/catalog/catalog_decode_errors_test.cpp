// Every way the catalog's decoder refuses an encoding: the code, the message
// with its field, element and PDU, and nothing left allocated. Also the
// allocation-failure sweeps of decoding, encoding and copying.
#include <gtest/gtest.h>

#include "catalog_fixture.h"
#include "support/alloc_hooks.h"

namespace fenk::test {
namespace {

using Octets = std::vector<uint8_t>;

Octets tlv(uint8_t tag, const Octets& contents) {
    Octets o{tag};
    size_t n = contents.size();
    if (n < 0x80) {
        o.push_back(static_cast<uint8_t>(n));
    } else {
        o.push_back(0x82);
        o.push_back(static_cast<uint8_t>(n >> 8));
        o.push_back(static_cast<uint8_t>(n));
    }
    o.insert(o.end(), contents.begin(), contents.end());
    return o;
}

Octets text(const std::string& s) { return Octets(s.begin(), s.end()); }

// The fields of an Entry encoding, each a whole element, the sample's by
// default; a test damages one and builds the rest around it.
struct Parts {
    Octets name = tlv(0x0C, text("Maps & Charts"));
    Octets serial = tlv(0x02, {0x12, 0xD6, 0x87});
    Octets created = tlv(0x18, text("20261122213045.25Z"));
    Octets flags = tlv(0x03, {0x04, 0xD0});
    Octets digest = tlv(0x04, {0x9F, 0x86});
    Octets tags = tlv(0x31, Octets{0x13, 0x01, 'A', 0x13, 0x01, 'B'});
    Octets rest = tlv(0xA0, {0x02, 0x01, 0x07});

    Octets build() const {
        Octets all;
        for (const Octets* p : {&name, &serial, &created, &flags, &digest, &tags, &rest})
            all.insert(all.end(), p->begin(), p->end());
        return tlv(0x30, all);
    }
};

struct Refusal {
    const char* what;
    int rules;
    Octets input;
    int32_t code;
    const char* message;
};

Parts with(void (*change)(Parts&)) {
    Parts p;
    change(p);
    return p;
}

std::vector<Refusal> refusals() {
    Octets sample = Parts().build();
    Octets wrongOuter = sample;
    wrongOuter[0] = 0x31;
    Octets truncated(sample.begin(), sample.begin() + 40);
    Octets indefinite = sample;
    indefinite[1] = 0x80;
    return {
        {"outer tag", 3, wrongOuter, 5,
         "D0033E: Tag mismatch or tag not expected: [UNIVERSAL 17] (expected tag "
         "[UNIVERSAL 16]); check PDU #1 'Entry'.\n"},
        {"name tag", 0, with([](Parts& p) { p.name[0] = 0x13; }).build(), 5,
         "D0033E: Tag mismatch or tag not expected: [UNIVERSAL 19] (expected tag "
         "[UNIVERSAL 12]); check field 'name' (type: UTF8String) of PDU #1 'Entry'.\n"},
        {"context tag for serial", 0, with([](Parts& p) { p.serial[0] = 0x82; }).build(), 5,
         "D0033E: Tag mismatch or tag not expected: [2] (expected tag [UNIVERSAL 2]); check "
         "field 'serial' (type: INTEGER) of PDU #1 'Entry'.\n"},
        {"empty name", 3, with([](Parts& p) { p.name = tlv(0x0C, {}); }).build(), 17,
         "D0063S: Size constraint violated, length of value = 0; check field 'name' (type: "
         "UTF8String) of PDU #1 'Entry'.\n"},
        {"65 characters", 0,
         with([](Parts& p) { p.name = tlv(0x0C, text(std::string(64, 'x') + "\xC3\xA9")); })
             .build(),
         17,
         "D0063S: Size constraint violated, length of value = 65; check field 'name' (type: "
         "UTF8String) of PDU #1 'Entry'.\n"},
        {"truncated", 0, truncated, 4,
         "D0081S: End of input reached before message was fully decoded; check PDU #1 "
         "'Entry'.\n"},
        {"missing fields", 0,
         with([](Parts& p) { p.flags = p.digest = p.tags = p.rest = {}; }).build(), 4,
         "D0081S: End of input reached before message was fully decoded; check field "
         "'flags' (type: BIT STRING) of PDU #1 'Entry'.\n"},
        {"month 13", 0,
         with([](Parts& p) { p.created = tlv(0x18, text("20261322213045Z")); }).build(), 12,
         "D0012S: Out-of-range value in time type. Month = 13; check field 'created' (type: "
         "GeneralizedTime) of PDU #1 'Entry'.\n"},
        {"local time under DER", 3,
         with([](Parts& p) { p.created = tlv(0x18, text("20261122213045")); }).build(), 12,
         "D0013S: Time value must be in universal coordinated time format and must end with "
         "'Z'; check field 'created' (type: GeneralizedTime) of PDU #1 'Entry'.\n"},
        {"bad character", 0,
         with([](Parts& p) { p.tags = tlv(0x31, {0x13, 0x01, 'A', 0x13, 0x01, '*'}); })
             .build(),
         17,
         "D0064S: Permitted alphabet constraint violated, bad character: '*'; check element "
         "#2 (type: PrintableString) of field 'tags' (type: SET OF) of PDU #1 'Entry'.\n"},
        {"element tag", 0,
         with([](Parts& p) { p.tags = tlv(0x31, {0x0C, 0x01, 'A'}); }).build(), 5,
         "D0033E: Tag mismatch or tag not expected: [UNIVERSAL 12] (expected tag "
         "[UNIVERSAL 19]); check element #1 (type: PrintableString) of field 'tags' (type: "
         "SET OF) of PDU #1 'Entry'.\n"},
        {"SET OF out of order under DER", 3,
         with([](Parts& p) { p.tags = tlv(0x31, {0x13, 0x01, 'B', 0x13, 0x01, 'A'}); })
             .build(),
         5,
         "D0037E: Value misencoded or length wrong for value; check element #2 (type: "
         "PrintableString) of field 'tags' (type: SET OF) of PDU #1 'Entry'.\n"},
        {"indefinite length under DER", 3, indefinite, 5,
         "D0117S: Expected definite length, found indefinite length DER encoding; check PDU "
         "#1 'Entry'.\n"},
        {"indefinite length under BER", 0, indefinite, 13,
         "D0108S: The FENK and Quarn encoders do not support indefinite-length encoding; "
         "check PDU #1 'Entry'.\n"},
        {"long form of a short length under DER", 3,
         with([](Parts& p) { p.digest = {0x04, 0x81, 0x02, 0x9F, 0x86}; }).build(), 5,
         "D0037E: Value misencoded or length wrong for value; check field 'digest' (type: "
         "OCTET STRING) of PDU #1 'Entry'.\n"},
        {"padded integer under DER", 3,
         with([](Parts& p) { p.serial = tlv(0x02, {0x00, 0x05}); }).build(), 5,
         "D0037E: Value misencoded or length wrong for value; check field 'serial' (type: "
         "INTEGER) of PDU #1 'Entry'.\n"},
        {"integer of nine octets", 0,
         with([](Parts& p) { p.serial = tlv(0x02, Octets(9, 0x11)); }).build(), 10,
         "D0144E: Integer or enumerated value too long: length = 9; check field 'serial' "
         "(type: INTEGER) of PDU #1 'Entry'.\n"},
        {"trailing zero bit under DER", 3,
         with([](Parts& p) { p.flags = tlv(0x03, {0x03, 0xD0}); }).build(), 5,
         "D0037E: Value misencoded or length wrong for value; check field 'flags' (type: BIT "
         "STRING) of PDU #1 'Entry'.\n"},
        {"unused bits above 7", 0,
         with([](Parts& p) { p.flags = tlv(0x03, {0x08, 0xD0}); }).build(), 5,
         "D0037E: Value misencoded or length wrong for value; check field 'flags' (type: BIT "
         "STRING) of PDU #1 'Entry'.\n"},
        {"empty note", 0, with([](Parts& p) { p.rest = tlv(0xA0, {}); }).build(), 5,
         "D0089E: Length of encoded data of ANY is 0; check field 'note' (type: ANY) of PDU "
         "#1 'Entry'.\n"},
        {"note of two elements", 0,
         with([](Parts& p) { p.rest = tlv(0xA0, {0x05, 0x00, 0x05, 0x00}); }).build(), 5,
         "D0037E: Value misencoded or length wrong for value; check field 'note' (type: ANY) "
         "of PDU #1 'Entry'.\n"},
        {"unexpected element", 0,
         with([](Parts& p) { p.rest = {0x05, 0x00}; }).build(), 5,
         "D0033E: Tag mismatch or tag not expected: [UNIVERSAL 5]; check PDU #1 'Entry'.\n"},
    };
}

TEST(DecoderRefusals, AnswerTheCodeWithTheMessageAndContextAndLeakNothing) {
    for (const Refusal& r : refusals()) {
        SCOPED_TRACE(r.what);
        CatalogWorld w;
        AllocCounter counter;
        installCountingHooks(w.get(), &counter);
        ASSERT_EQ(kivSelectRules(w.get(), r.rules), 0);
        Decoded d = decodeEntry(w.get(), r.input);
        EXPECT_EQ(d.code, r.code);
        EXPECT_STREQ(w->messageText, r.message);
        EXPECT_EQ(d.value, nullptr);
        EXPECT_EQ(counter.live, 0);
    }
}

TEST(DecoderRefusals, TheSameEncodingsPassWhereOnlyDerForbidsThem) {
    Parts padded;
    padded.serial = tlv(0x02, {0x00, 0x05});
    padded.created = tlv(0x18, text("20261122213045"));
    padded.tags = tlv(0x31, {0x13, 0x01, 'B', 0x13, 0x01, 'A'});
    CatalogWorld w;
    kivSelectRules(w.get(), 0);
    Decoded d = decodeEntry(w.get(), padded.build());
    ASSERT_EQ(d.code, 0) << w->messageText;
    const auto* e = static_cast<const CatalogEntry*>(d.value);
    EXPECT_EQ(e->serial, 5);
    EXPECT_STREQ(e->tags->value, "B");
    kivReleasePdu(w.get(), CATALOG_PDU_ENTRY, d.value);
}

TEST(DecoderRefusals, AnUnknownPduNumberHasNoPduContext) {
    CatalogWorld w;
    EXPECT_EQ(decodeEntry(w.get(), Parts().build(), nullptr, 2).code, 3);
    EXPECT_STREQ(w->messageText, "D0003S: PDU number not in range: 2.\n");
}

TEST(DecoderRefusals, GoToTheTraceWithTheErrorFlag) {
    CatalogWorld w;
    kivStoreDebugFlags(w.get(), KIV_DEBUG_ERRORS);
    Octets input = with([](Parts& p) { p.created = tlv(0x18, text("2026112221")); }).build();
    EXPECT_EQ(decodeEntry(w.get(), input).code, 12);
    const std::string message =
        "D0012S: Out-of-range value in time type; check field 'created' (type: "
        "GeneralizedTime) of PDU #1 'Entry'.\n";
    EXPECT_EQ(w.output(), "The decoder error message:\n\n" + message);
}

// Fails the 1st, 2nd, ... allocation until the operation succeeds, which
// must take more than atLeast allocations; every failure answers 8, writes
// the out-of-memory message with the prefix (if any) and leaves nothing behind.
template <class Operation>
void sweepAllocationFailures(int rules, char prefix, long atLeast, Operation operation) {
    for (long n = 1;; ++n) {
        SCOPED_TRACE(n);
        CatalogWorld w;
        AllocCounter counter;
        installCountingHooks(w.get(), &counter);
        kivSelectRules(w.get(), rules);
        counter.failAt = n;
        int32_t code = operation(w.get());
        if (counter.calls < n) {
            EXPECT_EQ(code, 0);
            EXPECT_EQ(counter.live, 0);
            ASSERT_GT(n, atLeast) << "the sweep reached too few allocations";
            return;
        }
        EXPECT_EQ(code, 8);
        if (prefix) {
            EXPECT_EQ(std::string(w->messageText).substr(0, 40),
                      prefix + std::string("0008S: Out of memory; bytes requested: "));
        }
        EXPECT_EQ(counter.live, 0);
    }
}

TEST(AllocationFailure, DuringDecodingGivesBackEveryBlock) {
    std::mt19937 rng(7);
    OwnedEntry v;
    randomEntry(rng, v, 60);
    CatalogWorld source;
    kivSelectRules(source.get(), 3);
    Octets encoding = encodeEntry(source.get(), v.entry).octets;
    sweepAllocationFailures(3, 'D', 3, [&](KivGlobal* w) {
        Decoded d = decodeEntry(w, encoding);
        if (d.code == 0) kivReleasePdu(w, CATALOG_PDU_ENTRY, d.value);
        return d.code;
    });
}

TEST(AllocationFailure, DuringEncodingGivesBackEveryBlock) {
    std::mt19937 rng(8);
    OwnedEntry v;
    randomEntry(rng, v, 150);  // several output chunks and SET OF components
    for (int rules : {0, 3, 5, 6}) {
        SCOPED_TRACE(rules);
        sweepAllocationFailures(rules, 'E', 3, [&](KivGlobal* w) {
            Encoded e = encodeEntry(w, v.entry);
            return e.code;
        });
    }
}

TEST(AllocationFailure, DuringCopyingGivesBackEveryBlock) {
    std::mt19937 rng(5);
    OwnedEntry v;
    randomEntry(rng, v, 30);
    sweepAllocationFailures(0, 0, 30, [&](KivGlobal* w) {
        void* copy = nullptr;
        auto code = static_cast<int32_t>(kivCopyValue(w, CATALOG_PDU_ENTRY, &v.entry, &copy));
        if (code == 0) kivReleasePdu(w, CATALOG_PDU_ENTRY, copy);
        return code;
    });
}

}  // namespace
}  // namespace fenk::test
