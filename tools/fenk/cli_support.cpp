#include <csetjmp>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>

#include "catalog.h"
#include "cli.h"
#include "kivapit.h"

namespace fenk::cli {

bool parseArgs(int argc, char** argv, int first, const std::vector<std::string>& valued,
               const std::vector<std::string>& switches, Args& args) {
    auto among = [](const std::vector<std::string>& list, const std::string& name) {
        for (const auto& s : list)
            if (s == name) return true;
        return false;
    };
    for (int i = first; i < argc; ++i) {
        std::string a = argv[i];
        if (a == "--help" || a == "-h") {
            args.help = true;
        } else if (a.size() > 2 && a.compare(0, 2, "--") == 0 &&
                   std::isalpha(static_cast<unsigned char>(a[2]))) {
            // Options are named; "--05-01" and "---15" are XML Schema texts.
            std::string name = a.substr(2);
            if (among(valued, name)) {
                if (i + 1 >= argc) {
                    std::fprintf(stderr, "fenk: option --%s needs a value\n", name.c_str());
                    return false;
                }
                args.options[name] = argv[++i];
            } else if (among(switches, name)) {
                args.options[name] = "";
            } else {
                std::fprintf(stderr, "fenk: unknown option --%s\n", name.c_str());
                return false;
            }
        } else {
            args.words.push_back(a);
        }
    }
    return true;
}

int usage(const char* text, bool asked) {
    std::fputs(text, asked ? stdout : stderr);
    return asked ? kDone : kBadUsage;
}

bool readInput(const Args& args, size_t word, std::string& data) {
    if (args.words.size() <= word || args.words[word] == "-") {
        data.assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
        return true;
    }
    std::ifstream in(args.words[word], std::ios::binary);
    if (!in) {
        std::fprintf(stderr, "fenk: cannot read %s\n", args.words[word].c_str());
        return false;
    }
    data.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return true;
}

bool fromHex(const std::string& text, std::string& octets) {
    octets.clear();
    int high = -1;
    for (char c : text) {
        int v;
        if (c >= '0' && c <= '9') v = c - '0';
        else if (c >= 'a' && c <= 'f') v = c - 'a' + 10;
        else if (c >= 'A' && c <= 'F') v = c - 'A' + 10;
        else if (c == ' ' || c == '\n' || c == '\t' || c == '\r') continue;
        else return false;
        if (high < 0) {
            high = v;
        } else {
            octets.push_back(static_cast<char>(high * 16 + v));
            high = -1;
        }
    }
    return high < 0;
}

std::string toHex(const uint8_t* octets, size_t length) {
    static const char digits[] = "0123456789ABCDEF";
    std::string s;
    for (size_t i = 0; i < length; ++i) {
        s += digits[octets[i] >> 4];
        s += digits[octets[i] & 15];
    }
    return s;
}

World::World() {
    ok_ = catalogInitWorld(&world_) == 0;
    if (ok_) world_.outputStream = stdout;
}

World::~World() {
    if (ok_) kivCompanionEndWorld(&world_);
}

// Outside encoding and decoding a message has no 'E' or 'D': this error mode
// leaves the first character, a blank, as it is.
constexpr int32_t kKeepFirstCharacter = 7;

int32_t runRaising(KivGlobal* world, void (*service)(KivGlobal*, void*), void* context) {
    jmp_buf frame;
    world->jumpBuffer = &frame;
    world->messageOut = world->messageText;
    world->messageText[0] = ' ';
    world->messageText[1] = 0;
    world->errorMode = kKeepFirstCharacter;
    world->errorPduNumber = 0;
    world->errorPath = nullptr;
    world->raiseRoutine = reinterpret_cast<KivRaiseRoutine>(apiTbl[kivSlotRaise]);
    world->currentBlockTable = &world->blockTable;
    if (setjmp(frame)) {
        kivEndOperationMemory(world);
        return world->errorCode;
    }
    service(world, context);
    kivEndOperationMemory(world);
    return 0;
}

int refuse(KivGlobal* world, int32_t code) {
    const char* text = kivReturnCodeText(world, code);
    const char* message = world->messageText;
    if (*message == ' ') ++message;
    if (*message) std::fputs(message, stdout);
    std::printf("code %d: %s\n", code, text ? text : "(no description)");
    return kRefused;
}

int rulesNumber(const std::string& name) {
    if (name == "ber") return 0;
    if (name == "der") return 3;
    if (name == "xer") return 5;
    if (name == "cxer") return 6;
    return -1;
}

int codeCommand(int argc, char** argv) {
    static const char* kText =
        "usage: fenk code N\n"
        "Prints the description of return code N.\n";
    Args args;
    if (!parseArgs(argc, argv, 2, {}, {}, args)) return kBadUsage;
    if (args.help) return usage(kText, true);
    if (args.words.size() != 1) return usage(kText, false);
    char* end = nullptr;
    long code = std::strtol(args.words[0].c_str(), &end, 10);
    if (*end || args.words[0].empty()) return usage(kText, false);
    const char* text = kivReturnCodeText(nullptr, static_cast<int32_t>(code));
    if (!text) {
        std::printf("%ld: no such return code\n", code);
        return kRefused;
    }
    std::printf("%ld: %s\n", code, text);
    return kDone;
}

}  // namespace fenk::cli
