// An Entry value built from command-line options, owning its storage.
#ifndef FENK_CLI_ENTRY_VALUE_H
#define FENK_CLI_ENTRY_VALUE_H

#include <list>
#include <string>
#include <vector>

#include "catalog.h"
#include "cli.h"

namespace fenk::cli {

struct EntryValue {
    CatalogEntry entry{};
    std::string name, created, digest, note;
    std::vector<uint8_t> flags;
    std::list<std::string> tagTexts;
    std::vector<CatalogTag> tags;
};

// The options that describe an Entry; each missing one takes the sample's
// field. Answers false with a message on a malformed option.
extern const std::vector<std::string> kEntryOptions;
bool buildEntry(const Args& args, EntryValue& value);

}  // namespace fenk::cli

#endif
