#include <cstdio>
#include <cstring>

#include "cli.h"

namespace {

constexpr const char* kUsage =
    "usage: fenk COMMAND [ARGS]\n"
    "\n"
    "commands:\n"
    "  demo                                  encode, decode, copy, compare, transcode a sample\n"
    "  entry encode|decode|print             the sample PDU Entry (--rules ber|der|xer)\n"
    "  time check|seconds|from-seconds       UTCTime and GeneralizedTime (--utc, --rules)\n"
    "  iso parse|normalize|compare|canonical ISO 8601 TIME texts\n"
    "  xsd parse|format                      XML Schema date and time forms\n"
    "  real parse|canonical|compare|print    decimal REAL texts\n"
    "  hexdump [--framed] [FILE]             hexadecimal dump of octets\n"
    "  xml [--indent] [FILE]                 XML text as the trace prints it\n"
    "  ber-length [FILE]                     length of the first BER element (hex input)\n"
    "  code N                                description of a return code\n"
    "\n"
    "Input is read from FILE, or stdin when none is given. Every command takes --help.\n"
    "Exit status: 0 done, 1 the service refused, 2 usage.\n";

struct Command {
    const char* name;
    int (*run)(int argc, char** argv);
};

constexpr Command kCommands[] = {
    {"demo", fenk::cli::demo},
    {"entry", fenk::cli::entry},
    {"time", fenk::cli::timeCommand},
    {"iso", fenk::cli::isoCommand},
    {"xsd", fenk::cli::xsdCommand},
    {"real", fenk::cli::realCommand},
    {"hexdump", fenk::cli::hexdumpCommand},
    {"xml", fenk::cli::xmlCommand},
    {"ber-length", fenk::cli::berLengthCommand},
    {"code", fenk::cli::codeCommand},
};

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return fenk::cli::usage(kUsage, false);
    if (!std::strcmp(argv[1], "--help") || !std::strcmp(argv[1], "-h"))
        return fenk::cli::usage(kUsage, true);
    for (const Command& c : kCommands)
        if (!std::strcmp(argv[1], c.name)) return c.run(argc, argv);
    std::fprintf(stderr, "fenk: unknown command '%s'\n", argv[1]);
    return fenk::cli::usage(kUsage, false);
}
