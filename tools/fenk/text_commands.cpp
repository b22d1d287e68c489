// fenk real (decimal REAL texts), hexdump, xml and ber-length.
#include <cstdio>
#include <cstring>

#include "cli.h"

namespace fenk::cli {

namespace {

constexpr const char* kRealUsage =
    "usage: fenk real parse TEXT\n"
    "       fenk real canonical TEXT [--positional]\n"
    "       fenk real compare TEXT TEXT\n"
    "       fenk real print TEXT\n"
    "\n"
    "Decimal REAL texts (e.g. 12.5E-3, -0, PLUS_INFINITY). parse shows the parts;\n"
    "canonical writes the canonical text (--positional: without exponent);\n"
    "compare orders two values; print shows the value notation.\n";

constexpr const char* kParseErrors[] = {
    "",
    "empty or blank text",
    "an exponent marker but no digit",
    "nothing after the exponent marker",
    "not a number, or characters left over",
    "exponent too big",
};

void printReal(KivGlobal* world, void* context) {
    kivPrintDecimalReal(world, static_cast<const char*>(context));
}

}  // namespace

int realCommand(int argc, char** argv) {
    Args args;
    if (!parseArgs(argc, argv, 2, {}, {"positional"}, args)) return kBadUsage;
    if (args.help) return usage(kRealUsage, true);
    if (args.words.size() < 2) return usage(kRealUsage, false);
    const std::string& verb = args.words[0];
    if (args.words.size() != (verb == "compare" ? 3u : 2u)) return usage(kRealUsage, false);
    const std::string& text = args.words[1];
    World world;
    KivGlobal* w = world.get();

    if (verb == "parse" || verb == "canonical") {
        KivDecimalReal record{};
        int32_t code = kivParseDecimalReal(text.c_str(), &record);
        if (code) {
            std::printf("%s: %s\n", text.c_str(),
                        code > 0 && code <= 5 ? kParseErrors[code] : "refused");
            return kRefused;
        }
        if (verb == "parse") {
            // The significant digits, without a decimal mark between them.
            std::string digits;
            if (!record.firstDigit) digits = "0";
            else
                for (const char* p = record.firstDigit; p <= record.lastDigit; ++p)
                    if (*p >= '0' && *p <= '9') digits += *p;
            std::printf("sign %s, digits %s, exponent %d\n", record.sign ? "-" : "+",
                        digits.c_str(), record.exponent);
            return kDone;
        }
        if (args.has("positional")) record.flags |= KIV_DECIMAL_POSITIONAL;
        // Room for every digit, the zeros of the positional layout, the sign,
        // the mark and the exponent.
        size_t digits = record.firstDigit ? record.lastDigit - record.firstDigit + 1 : 1;
        size_t exponent = record.exponent < 0 ? -static_cast<long>(record.exponent)
                                              : static_cast<long>(record.exponent);
        std::string buffer(digits + exponent + 32, '\0');
        kivDecimalRealText(&record, buffer.data());
        std::printf("%s\n", buffer.c_str());
        return kDone;
    }
    if (verb == "compare") {
        switch (kivCompareDecimalReals(w, text.c_str(), args.words[2].c_str())) {
        case 0: std::printf("equal\n"); return kDone;
        case 2: std::printf("below\n"); return kDone;
        case 3: std::printf("above\n"); return kDone;
        default: std::printf("not comparable\n"); return kRefused;
        }
    }
    if (verb == "print") {
        int32_t code = runRaising(w, printReal, const_cast<char*>(text.c_str()));
        if (code) return refuse(w, code);
        std::printf("\n");
        return kDone;
    }
    return usage(kRealUsage, false);
}

int hexdumpCommand(int argc, char** argv) {
    static const char* kText =
        "usage: fenk hexdump [--framed] [FILE]\n"
        "Dumps the octets of FILE (or stdin) as the trace does; --framed adds\n"
        "offsets and characters.\n";
    Args args;
    if (!parseArgs(argc, argv, 2, {}, {"framed"}, args)) return kBadUsage;
    if (args.help) return usage(kText, true);
    if (args.words.size() > 1) return usage(kText, false);
    std::string data;
    if (!readInput(args, 0, data)) return kBadUsage;
    World world;
    KivGlobal* w = world.get();
    kivStoreDebugFlags(w, args.has("framed") ? KIV_DEBUG_FRAMED_DUMPS : 0);
    kivHexDump(w, reinterpret_cast<const uint8_t*>(data.data()),
               static_cast<int32_t>(data.size()));
    return kDone;
}

int xmlCommand(int argc, char** argv) {
    static const char* kText =
        "usage: fenk xml [--indent] [FILE]\n"
        "Prints the XML text of FILE (or stdin) as the trace does; --indent\n"
        "re-indents it, one element a line.\n";
    Args args;
    if (!parseArgs(argc, argv, 2, {}, {"indent"}, args)) return kBadUsage;
    if (args.help) return usage(kText, true);
    if (args.words.size() > 1) return usage(kText, false);
    std::string data;
    if (!readInput(args, 0, data)) return kBadUsage;
    World world;
    kivPrintXmlText(world.get(), data.data(), static_cast<int32_t>(data.size()),
                    args.has("indent") ? 1 : 0);
    std::printf("\n");
    return kDone;
}

int berLengthCommand(int argc, char** argv) {
    static const char* kText =
        "usage: fenk ber-length [--binary] [FILE]\n"
        "Prints the total length of the first BER element of FILE (or stdin),\n"
        "given in hexadecimal or, with --binary, as octets. An indefinite or\n"
        "incomplete header answers 0 and exit status 1.\n";
    Args args;
    if (!parseArgs(argc, argv, 2, {}, {"binary"}, args)) return kBadUsage;
    if (args.help) return usage(kText, true);
    if (args.words.size() > 1) return usage(kText, false);
    std::string data, octets;
    if (!readInput(args, 0, data)) return kBadUsage;
    if (args.has("binary")) {
        octets = data;
    } else if (!fromHex(data, octets)) {
        std::fprintf(stderr, "fenk: the input is not hexadecimal\n");
        return kBadUsage;
    }
    KivBuffer buffer{static_cast<uint32_t>(octets.size()),
                     reinterpret_cast<uint8_t*>(octets.data())};
    uint32_t length = kivBerElementLength(&buffer);
    std::printf("%u\n", length);
    return length ? kDone : kRefused;
}

}  // namespace fenk::cli
