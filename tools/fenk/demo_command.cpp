#include <cstdio>
#include <string>

#include "catalog.h"
#include "cli.h"

namespace fenk::cli {

namespace {

constexpr const char* kUsage =
    "usage: fenk demo\n"
    "Encodes a sample Entry in DER with tracing on, decodes it back, copies and\n"
    "compares it, transcodes it to XML, and shows a damaged encoding failing\n"
    "with its message.\n";

void heading(const char* text) { std::printf("\n==== %s ====\n\n", text); }

// Offset of the first octet of the created field's contents: its month
// digits are damaged to show a decoder failure with its context.
size_t findTime(const uint8_t* octets, size_t length) {
    for (size_t i = 0; i + 2 < length; ++i)
        if (octets[i] == 0x18 && octets[i + 2] >= '0' && octets[i + 2] <= '9') return i + 2;
    return 0;
}

}  // namespace

int demo(int argc, char** argv) {
    Args args;
    if (!parseArgs(argc, argv, 2, {}, {}, args)) return kBadUsage;
    if (args.help) return usage(kUsage, true);
    if (!args.words.empty()) return usage(kUsage, false);
    World world;
    KivGlobal* w = world.get();
    CatalogEntry* sample = catalogSampleEntry();

    heading("Encoding an Entry in DER, tracing on");
    kivSelectRules(w, 3);
    kivStoreDebugFlags(w, KIV_DEBUG_ENCODER_INPUT | KIV_DEBUG_ENCODER_OUTPUT |
                              KIV_DEBUG_FRAMED_DUMPS | KIV_DEBUG_ERRORS);
    KivBuffer der{0, nullptr};
    int32_t code = kivEncodePdu(w, CATALOG_PDU_ENTRY, sample, &der);
    if (code) return refuse(w, code);
    std::printf("\nkivEncodePdu answered %d: %u octets\n", code, der.length);

    heading("Decoding it back");
    kivStoreDebugFlags(w, KIV_DEBUG_DECODED_VALUE | KIV_DEBUG_ERRORS);
    int32_t pdu = CATALOG_PDU_ENTRY;
    void* decoded = nullptr;
    code = kivDecodePdu(w, &pdu, &der, &decoded);
    if (code) return refuse(w, code);
    std::printf("\nkivDecodePdu answered %d\n", code);
    kivStoreDebugFlags(w, 0);

    heading("Copying and comparing the decoded value");
    void* copy = nullptr;
    code = static_cast<int32_t>(kivCopyValue(w, CATALOG_PDU_ENTRY, decoded, &copy));
    if (code) return refuse(w, code);
    std::printf("kivCopyValue answered %d\n", code);
    auto compare = [&](const char* what, const void* a, const void* b) {
        uint32_t answer = kivCompareValue(w, CATALOG_PDU_ENTRY, a, b);
        std::printf("kivCompareValue(%s) answered %u: %s\n", what, answer,
                    answer ? "different" : "equal");
    };
    compare("decoded, copy", decoded, copy);
    compare("sample, copy", sample, copy);
    ++static_cast<CatalogEntry*>(copy)->serial;
    compare("sample, copy with serial + 1", sample, copy);
    kivReleasePdu(w, CATALOG_PDU_ENTRY, copy);

    heading("Transcoding the DER encoding to XML, re-indented");
    kivStoreXmlRules(w, 5);
    KivBuffer xml{0, nullptr};
    code = kivTranscodeToXml(w, CATALOG_PDU_ENTRY, 3, &der, &xml);
    if (code) return refuse(w, code);
    kivPrintXmlText(w, reinterpret_cast<const char*>(xml.value),
                    static_cast<int32_t>(xml.length), 1);
    std::printf("\n");
    kivFreeBlock(w, xml.value);

    heading("Decoding a damaged encoding (the month of created is 13)");
    std::string damaged(reinterpret_cast<const char*>(der.value), der.length);
    size_t at = findTime(der.value, der.length);
    damaged[at + 4] = '1';
    damaged[at + 5] = '3';
    KivBuffer bad{der.length, reinterpret_cast<uint8_t*>(damaged.data())};
    void* none = nullptr;
    code = kivDecodePdu(w, &pdu, &bad, &none);
    std::printf("kivDecodePdu answered %d\n%s", code, w->messageText);
    const char* text = kivReturnCodeText(w, code);
    std::printf("code %d: %s\n", code, text ? text : "(no description)");

    kivReleasePdu(w, pdu, decoded);
    kivFreeBlock(w, der.value);
    return kDone;
}

}  // namespace fenk::cli
