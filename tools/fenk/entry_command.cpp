#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "entry_value.h"

namespace fenk::cli {

const std::vector<std::string> kEntryOptions = {"name",   "serial", "created", "flags",
                                                "digest", "tags",   "note"};

bool buildEntry(const Args& args, EntryValue& v) {
    const CatalogEntry* sample = catalogSampleEntry();
    v.entry = *sample;
    if (args.has("name")) {
        v.name = args.get("name");
        v.entry.name.length = static_cast<uint32_t>(v.name.size());
        v.entry.name.value = reinterpret_cast<uint8_t*>(v.name.data());
    }
    if (args.has("serial")) {
        const std::string serial = args.get("serial");
        char* end = nullptr;
        v.entry.serial = std::strtoll(serial.c_str(), &end, 10);
        if (*end || serial.empty()) {
            std::fprintf(stderr, "fenk: --serial takes a decimal integer\n");
            return false;
        }
    }
    if (args.has("created")) {
        v.created = args.get("created");
        v.entry.created = v.created.data();
    }
    if (args.has("flags")) {
        const std::string bits = args.get("flags");
        v.flags.assign((bits.size() + 7) / 8, 0);
        for (size_t i = 0; i < bits.size(); ++i) {
            if (bits[i] != '0' && bits[i] != '1') {
                std::fprintf(stderr, "fenk: --flags takes binary digits\n");
                return false;
            }
            if (bits[i] == '1') v.flags[i / 8] |= static_cast<uint8_t>(0x80u >> (i % 8));
        }
        v.entry.flags.length = static_cast<uint32_t>(bits.size());
        v.entry.flags.value = v.flags.data();
    }
    if (args.has("digest")) {
        if (!fromHex(args.get("digest"), v.digest)) {
            std::fprintf(stderr, "fenk: --digest takes hexadecimal digits\n");
            return false;
        }
        v.entry.digest.length = static_cast<uint32_t>(v.digest.size());
        v.entry.digest.value = reinterpret_cast<uint8_t*>(v.digest.data());
    }
    if (args.has("tags")) {
        // Comma-separated; an empty text gives an empty SET OF.
        const std::string all = args.get("tags");
        for (size_t start = 0; !all.empty() && start <= all.size();) {
            size_t comma = all.find(',', start);
            if (comma == std::string::npos) comma = all.size();
            v.tagTexts.push_back(all.substr(start, comma - start));
            start = comma + 1;
        }
        v.tags.assign(v.tagTexts.size(), CatalogTag{});
        size_t i = 0;
        for (auto& t : v.tagTexts) {
            v.tags[i].value = t.data();
            v.tags[i].next = i + 1 < v.tags.size() ? &v.tags[i + 1] : nullptr;
            ++i;
        }
        v.entry.tags = v.tags.empty() ? nullptr : v.tags.data();
    }
    if (args.has("note")) {
        if (!fromHex(args.get("note"), v.note)) {
            std::fprintf(stderr, "fenk: --note takes hexadecimal digits\n");
            return false;
        }
        v.entry.bitMask = v.note.empty() ? 0 : CATALOG_NOTE_PRESENT;
        v.entry.note.length = static_cast<uint32_t>(v.note.size());
        v.entry.note.encoded = reinterpret_cast<uint8_t*>(v.note.data());
    }
    return true;
}

namespace {

constexpr const char* kUsage =
    "usage: fenk entry encode [--rules ber|der|xer] [--binary] [VALUE OPTIONS]\n"
    "       fenk entry decode [--rules ber|der] [--binary] [FILE]\n"
    "       fenk entry print [VALUE OPTIONS]\n"
    "\n"
    "The sample PDU:\n"
    "  Entry ::= SEQUENCE { name UTF8String (SIZE(1..64)), serial INTEGER,\n"
    "    created GeneralizedTime, flags BIT STRING { active(0), verified(1),\n"
    "    archived(2), shared(3) }, digest OCTET STRING, tags SET OF PrintableString,\n"
    "    note [0] ANY OPTIONAL }\n"
    "\n"
    "Value options (each missing one takes the sample's field):\n"
    "  --name TEXT  --serial N  --created TIME  --flags BITS (e.g. 1101)\n"
    "  --digest HEX  --tags A,B,C  --note HEX (one BER element; empty for none)\n"
    "encode writes the encoding in hexadecimal (XML as text), or binary with --binary;\n"
    "decode reads hexadecimal, or binary with --binary, and prints the value.\n";

int encode(const Args& args) {
    EntryValue v;
    if (!buildEntry(args, v)) return kBadUsage;
    int rules = rulesNumber(args.get("rules", "der"));
    if (rules < 0) return usage(kUsage, false);
    World world;
    KivGlobal* w = world.get();
    int32_t code = kivSelectRules(w, rules);
    if (code == 0) code = rules >= 5 ? kivStoreXmlRules(w, rules) : 0;
    KivBuffer out{0, nullptr};
    if (code == 0) code = kivEncodePdu(w, CATALOG_PDU_ENTRY, &v.entry, &out);
    if (code != 0) return refuse(w, code);
    if (args.has("binary") || rules >= 5) {
        std::fwrite(out.value, 1, out.length, stdout);
        if (rules >= 5 && !args.has("binary")) std::fputc('\n', stdout);
    } else {
        std::printf("%s\n", toHex(out.value, out.length).c_str());
    }
    kivFreeBlock(w, out.value);
    return kDone;
}

int decode(const Args& args) {
    int rules = rulesNumber(args.get("rules", "der"));
    if (rules < 0 || rules >= 5) return usage(kUsage, false);
    std::string data, octets;
    if (!readInput(args, 1, data)) return kBadUsage;
    if (args.has("binary")) {
        octets = data;
    } else if (!fromHex(data, octets)) {
        std::fprintf(stderr, "fenk: the input is not hexadecimal\n");
        return kBadUsage;
    }
    World world;
    KivGlobal* w = world.get();
    int32_t code = kivSelectRules(w, rules);
    int32_t pdu = CATALOG_PDU_ENTRY;
    KivBuffer in{static_cast<uint32_t>(octets.size()),
                 reinterpret_cast<uint8_t*>(octets.data())};
    void* value = nullptr;
    if (code == 0) code = kivDecodePdu(w, &pdu, &in, &value);
    if (code != 0) return refuse(w, code);
    kivDisplayPdu(w, pdu, value);
    kivReleasePdu(w, pdu, value);
    return kDone;
}

int print(const Args& args) {
    EntryValue v;
    if (!buildEntry(args, v)) return kBadUsage;
    World world;
    int32_t code = kivDisplayPdu(world.get(), CATALOG_PDU_ENTRY, &v.entry);
    return code ? refuse(world.get(), code) : kDone;
}

}  // namespace

int entry(int argc, char** argv) {
    std::vector<std::string> valued = kEntryOptions;
    valued.push_back("rules");
    Args args;
    if (!parseArgs(argc, argv, 2, valued, {"binary"}, args)) return kBadUsage;
    if (args.help) return usage(kUsage, true);
    if (args.words.empty()) return usage(kUsage, false);
    const std::string& verb = args.words[0];
    if (verb == "encode" && args.words.size() == 1) return encode(args);
    if (verb == "decode" && args.words.size() <= 2) return decode(args);
    if (verb == "print" && args.words.size() == 1) return print(args);
    return usage(kUsage, false);
}

}  // namespace fenk::cli
