// fenk: the command-line front end. Each subcommand is a thin layer over the
// library's slots. Exit status: 0 done, 1 the service refused, 2 usage.
#ifndef FENK_CLI_H
#define FENK_CLI_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "fenkapi.h"

namespace fenk::cli {

enum Exit { kDone = 0, kRefused = 1, kBadUsage = 2 };

// Words and options of one command line; "--name value" for the options
// that take a value, "--name" alone for the others.
struct Args {
    std::vector<std::string> words;
    std::map<std::string, std::string> options;
    bool help = false;

    bool has(const std::string& name) const { return options.count(name) != 0; }
    std::string get(const std::string& name, const std::string& otherwise = "") const {
        auto it = options.find(name);
        return it == options.end() ? otherwise : it->second;
    }
};

// Parses argv from first on; valued names the options that take a value.
// Answers false (after a message on stderr) on an unknown or incomplete option.
bool parseArgs(int argc, char** argv, int first, const std::vector<std::string>& valued,
               const std::vector<std::string>& switches, Args& args);

// Prints a usage text to stderr (stdout for --help) and answers the status.
int usage(const char* text, bool asked);

// The input of a command: the named file, or stdin when there is none or it
// is "-". Answers false with a message when it cannot be read.
bool readInput(const Args& args, size_t word, std::string& data);

// Hexadecimal text (blanks and newlines ignored) to octets and back.
bool fromHex(const std::string& text, std::string& octets);
std::string toHex(const uint8_t* octets, size_t length);

// A world of the catalog, writing to stdout, released at scope end.
class World {
public:
    World();
    ~World();
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    KivGlobal* get() { return &world_; }
    bool ok() const { return ok_; }

private:
    KivGlobal world_;
    bool ok_;
};

// Runs a service that raises inside a jump frame of its own, as an operation
// entry would. Answers 0, or the raised message's code with its text in the
// world's messageText (without the encoder or decoder prefix). The service
// must leave no object needing a destructor on the stack.
int32_t runRaising(KivGlobal* world, void (*service)(KivGlobal*, void*), void* context);

// Reports a refusal: the code, its description and any message.
int refuse(KivGlobal* world, int32_t code);

int rulesNumber(const std::string& name);

int demo(int argc, char** argv);
int entry(int argc, char** argv);
int timeCommand(int argc, char** argv);
int isoCommand(int argc, char** argv);
int xsdCommand(int argc, char** argv);
int realCommand(int argc, char** argv);
int hexdumpCommand(int argc, char** argv);
int xmlCommand(int argc, char** argv);
int berLengthCommand(int argc, char** argv);
int codeCommand(int argc, char** argv);

}  // namespace fenk::cli

#endif
