#include "cli.h"
namespace fenk::cli {
int timeCommand(int, char**) { return kBadUsage; }
int isoCommand(int, char**) { return kBadUsage; }
int realCommand(int, char**) { return kBadUsage; }
int hexdumpCommand(int, char**) { return kBadUsage; }
int xmlCommand(int, char**) { return kBadUsage; }
int berLengthCommand(int, char**) { return kBadUsage; }
}
