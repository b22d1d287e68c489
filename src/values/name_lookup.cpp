// The number of an XML name, looked up in the name tables that the control
// table provides: a root name record resolves a name, within its namespace,
// through lookup tables in one of three forms (a single name, names sorted
// by their bytes, or a hash table with chains).
#include <cstring>
#include <string_view>

#include "values/values_slots.h"

namespace {

constexpr int32_t kNotFound = -1;

// A name matches an entry when their bytes agree over the name's length and
// the entry ends there; an entry without text matches only the empty name.
bool matches(const char* entry, std::string_view name) {
    if (!entry) return name.empty();
    return std::strncmp(entry, name.data(), name.size()) == 0 && entry[name.size()] == '\0';
}

// The lookups answer the index of the matching entry, -1 when there is none.
int32_t findSorted(const KivSortedNames* names, std::string_view name) {
    int32_t low = 0;
    int32_t high = static_cast<int32_t>(names->count) - 1;
    while (low <= high) {
        const int32_t middle = (low + high) / 2;
        const char* entry = names->entries[middle].text;
        if (matches(entry, name)) return middle;
        // Byte order over the name's length; equal there means the entry is
        // longer, so the name orders before it.
        if (entry && std::strncmp(name.data(), entry, name.size()) <= 0) {
            if (middle == 0) return -1;
            high = middle - 1;
        } else {
            low = middle + 1;
        }
    }
    return -1;
}

int32_t findHashed(const KivHashedNames* names, std::string_view name) {
    uint32_t h = static_cast<uint32_t>(name.size()) + names->seed;
    for (unsigned char octet : name) h = (h * 2) ^ octet;
    for (uint32_t i = h % names->bucketCount; i != KIV_HASH_CHAIN_END; i = names->entries[i].next)
        if (matches(names->entries[i].text, name)) return static_cast<int32_t>(i);
    return -1;
}

// Answers the index of the entry that matches (-1 when none) and stores its
// value.
int32_t findName(const KivLookupTable* table, std::string_view name, int32_t* value) {
    int32_t i = -1;
    switch (table->form) {
        case KIV_LOOKUP_SINGLE: {
            auto* entry = static_cast<const KivNameEntry*>(table->data);
            if (matches(entry->text, name)) {
                *value = entry->value;
                i = 0;
            }
            break;
        }
        case KIV_LOOKUP_SORTED: {
            auto* names = static_cast<const KivSortedNames*>(table->data);
            i = findSorted(names, name);
            if (i >= 0) *value = names->entries[i].value;
            break;
        }
        default: {
            auto* names = static_cast<const KivHashedNames*>(table->data);
            i = findHashed(names, name);
            if (i >= 0) *value = names->entries[i].value;
        }
    }
    return i;
}

int32_t lookUp(const KivLookupTable* table, std::string_view name) {
    int32_t value = kNotFound;
    findName(table, name, &value);
    return value;
}

bool sameNamespace(const char* entry, const char* given, size_t givenLength) {
    if (entry == given) return true;
    return givenLength != 0 && entry && std::strncmp(entry, given, givenLength) == 0 &&
           entry[givenLength] == '\0';
}

// The name is never empty here: slot 300 refuses empty names first, so the
// record's empty-name value is not reached.
int32_t resolve(const KivNameRecord* record, const char* ns, std::string_view name) {
    if (record->flags & KIV_NAMES_BY_NAMESPACE) {
        auto* names = static_cast<const KivNamespaceNames*>(record->table);
        const size_t nsLength = ns ? std::strlen(ns) : 0;
        for (int32_t i = 0; i < names->count; ++i) {
            const KivNamespaceChoice& choice = names->entries[i];
            if (!sameNamespace(choice.namespaceName, ns, nsLength)) continue;
            if (choice.kind == 0) return choice.value;
            if (choice.kind == 1 && choice.value != 0xFFFF)
                return lookUp(&names->tables[choice.value], name);
            return kNotFound;
        }
        return record->notFound;
    }
    if (record->flags & KIV_NAMES_ONE_NAMESPACE) {
        if (ns != record->namespaceName) return record->notFound;
        return lookUp(static_cast<const KivLookupTable*>(record->table), name);
    }
    auto* qualified = static_cast<const KivQualifiedLookupTable*>(record->table);
    int32_t ownValue;  // the parallel entry's value is the one that counts
    const int32_t i = findName(&qualified->names, name, &ownValue);
    if (i < 0 || qualified->namespaces[i].text != ns) return kNotFound;
    return qualified->namespaces[i].value;
}

}  // namespace

int32_t kivLookupNameNumber(KivGlobal* world, const char* namespaceName, const char* name,
                            uint32_t* number) {
    if (!world || !world->privateState || !name || !*name || !number) return 6;
    auto* tables = static_cast<const KivXmlNameTables*>(world->privateState->namespaceTable);
    // Design decision: tables without a root name record count as no tables.
    if (!tables || !tables->rootNames) return 6;

    const char* ns = namespaceName;
    if (ns) {
        for (int32_t i = 0; i < tables->count; ++i) {
            const char* known = tables->entries[i].uri;
            if (known && std::strcmp(known, ns) == 0) {
                ns = known;  // the tables compare namespaces by their own pointers
                break;
            }
        }
    }
    const int32_t result = resolve(tables->rootNames, ns, name);
    *number = static_cast<uint32_t>(result);
    return result < 1 ? 5 : 0;
}
