// XML namespace prefixes of one world: the application's choice of prefix or
// default namespace for each namespace of the generated tables, and the stem
// of the encoder's own prefixes, kept clear of the chosen ones.
//
// The generated entries are constant; the first change copies them into the
// world (namespaceEntries), and every change after that goes to the copy.
// Prefix texts are stored by pointer: the caller keeps them alive.
#include <cstring>
#include <string_view>

#include "print/print_slots.h"

namespace {

constexpr int32_t kBadArgument = 6;
constexpr int32_t kOutOfMemory = 8;
constexpr int32_t kNoDefaultAllowed = 111;
constexpr int32_t kUnknownNamespace = 112;
constexpr int32_t kBadPrefix = 113;
constexpr int32_t kPrefixTaken = 114;

constexpr size_t kStemCapacity = sizeof(KivPrivate::prefixStem) - 1;

const KivXmlNameTables* tablesOf(KivGlobal* world) {
    if (!world || !world->privateState) return nullptr;
    return static_cast<const KivXmlNameTables*>(world->privateState->namespaceTable);
}

const KivNamespaceEntry* currentEntries(const KivPrivate* state, const KivXmlNameTables* tables) {
    return state->namespaceEntries ? static_cast<const KivNamespaceEntry*>(state->namespaceEntries)
                                   : tables->entries;
}

// The entry of a namespace that takes the application's prefixes; -1 for an
// unknown namespace or one that takes none. Reading a prefix finds entries
// the same way, so a namespace that takes none is unknown there too.
int32_t findEntry(const KivNamespaceEntry* entries, int32_t count, const char* uri) {
    for (int32_t i = 0; i < count; ++i)
        if (entries[i].uri && std::strcmp(entries[i].uri, uri) == 0)
            return (entries[i].flags & KIV_NAMESPACE_FIXED) ? -1 : i;
    return -1;
}

bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

bool isPrefixName(const char* prefix) {
    if (!isLetter(*prefix)) return false;
    for (const char* p = prefix + 1; *p; ++p) {
        const char c = *p;
        if (!isLetter(c) && !(c >= '0' && c <= '9') && c != '.' && c != '-' && c != '_')
            return false;
    }
    return true;
}

bool anyPrefixBeginsWith(const KivNamespaceEntry* entries, int32_t count, std::string_view stem) {
    for (int32_t i = 0; i < count; ++i)
        if (entries[i].prefix && std::string_view(entries[i].prefix).starts_with(stem))
            return true;
    return false;
}

// Counts the stem up once, like an odometer on its last character: 'z' turns
// to 'a' and carries left; a carry past the first character lengthens the
// stem by one 'a'. Design decision: a stem already at its 15 characters does
// not grow; it wraps around to all 'a' (the next steps find a free one).
void advanceStem(char* stem) {
    size_t length = std::strlen(stem);
    for (size_t i = length; i > 0; --i) {
        if (stem[i - 1] != 'z') {
            ++stem[i - 1];
            return;
        }
        stem[i - 1] = 'a';
    }
    if (length < kStemCapacity) {
        stem[length] = 'a';
        stem[length + 1] = '\0';
    }
}

// Keeps the encoder's stem clear of a prefix the application just chose.
// Design decision: a table without a default stem (null or empty) has no
// generated prefixes to keep clear.
void keepStemClear(KivPrivate* state, const KivXmlNameTables* tables,
                   const KivNamespaceEntry* entries, const char* prefix) {
    char* stem = state->prefixStem;
    const char* current = stem[0] ? stem : tables->defaultPrefixStem;
    if (!current || !*current || !std::string_view(prefix).starts_with(current)) return;
    if (!stem[0]) {
        // Design decision: a longer default stem is cut to the 15 characters
        // that the world's stem holds.
        std::strncpy(stem, tables->defaultPrefixStem, kStemCapacity);
        stem[kStemCapacity] = '\0';
    }
    while (anyPrefixBeginsWith(entries, tables->count, stem)) advanceStem(stem);
}

}  // namespace

int32_t kivSetNamespacePrefix(KivGlobal* world, const char* uri, const char* prefix) {
    const KivXmlNameTables* tables = tablesOf(world);
    if (!tables || !uri) return kBadArgument;
    KivPrivate* state = world->privateState;
    if (tables->count <= 0) return kUnknownNamespace;

    if (!state->namespaceEntries) {
        const size_t size = sizeof(KivNamespaceEntry) * static_cast<size_t>(tables->count);
        // Design decision: without memory for the world's copy nothing is
        // changed and the call answers "Out of memory".
        void* copy = state->privateAllocRoutine ? state->privateAllocRoutine(size) : nullptr;
        if (!copy) return kOutOfMemory;
        std::memcpy(copy, tables->entries, size);
        state->namespaceEntries = copy;
    }
    auto* entries = static_cast<KivNamespaceEntry*>(state->namespaceEntries);
    const int32_t found = findEntry(entries, tables->count, uri);
    if (found < 0) return kUnknownNamespace;
    KivNamespaceEntry& entry = entries[found];

    if (!prefix) {
        if ((tables->flags & 7) != 1) return kNoDefaultAllowed;
        if ((state->namespaceFlags & 1) && entry.prefix) return kPrefixTaken;
        entry.prefix = nullptr;
        entry.flags |= KIV_NAMESPACE_CHOSEN;
        state->namespaceFlags |= 1;
        return 0;
    }

    for (int32_t i = 0; i < tables->count; ++i)
        if (entries[i].prefix && std::strcmp(entries[i].prefix, prefix) == 0) return kPrefixTaken;
    if (!isPrefixName(prefix)) return kBadPrefix;
    if (!entry.prefix) state->namespaceFlags &= ~1u;
    entry.flags |= KIV_NAMESPACE_CHOSEN;
    entry.prefix = prefix;
    keepStemClear(state, tables, entries, prefix);
    return 0;
}

int32_t kivGetNamespacePrefix(KivGlobal* world, const char* uri, const char** prefix) {
    const KivXmlNameTables* tables = tablesOf(world);
    if (!tables || !uri || !prefix) return kBadArgument;
    const KivNamespaceEntry* entries = currentEntries(world->privateState, tables);
    const int32_t found = findEntry(entries, tables->count, uri);
    if (found < 0) return kUnknownNamespace;
    *prefix = entries[found].prefix;
    return 0;
}

int32_t kivGetListItem(KivGlobal* world, const KivBufferList* list, uint32_t index,
                       KivBuffer* item) {
    if (!item) return kBadArgument;
    if (!world || !list || !list->items || index >= list->count) {
        item->length = 0;
        item->value = nullptr;
        return kBadArgument;
    }
    *item = list->items[index];
    return 0;
}
