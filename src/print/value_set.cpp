// Membership in a value set laid out by the compiler as a packed search tree
// of 32-bit words. A node: word 0 unread (in the compact layout it may be the
// previous node's last word), word 1 the header, word 2 on the values; word 2
// is the key that every value of the smaller subtree lies below.
#include "print/print_slots.h"

namespace {

constexpr uint32_t kindOf(uint32_t header) { return header >> 30; }
constexpr uint32_t listCount(uint32_t header) { return (header >> 26) & 0x7; }
constexpr uint32_t largerDistance(uint32_t header) { return header & 0xFFFF; }

// Words from a node's start to its smaller subtree; skip is 1 in the normal
// layout and 0 in the compact one.
uint32_t smallerOffset(uint32_t header, uint32_t skip) {
    switch (kindOf(header)) {
        case KIV_VALUE_SET_ONE:
            return 2 + skip;
        case KIV_VALUE_SET_RANGE:
            return 3 + skip;
        case KIV_VALUE_SET_LIST:
            return listCount(header) + skip;
        default:
            return skip;
    }
}

bool nodeMatches(const uint32_t* node, uint32_t value) {
    const uint32_t header = node[1];
    switch (kindOf(header)) {
        case KIV_VALUE_SET_ONE:
            return value == node[2];
        case KIV_VALUE_SET_RANGE:
            return value <= node[3];
        case KIV_VALUE_SET_LIST:
            for (uint32_t i = 0; i < listCount(header); ++i)
                if (node[2 + i] == value) return true;
            return false;
        default:
            return false;
    }
}

}  // namespace

int32_t kivValueInSet(const uint32_t* tree, uint32_t value) {
    const uint32_t skip = tree[0] == KIV_VALUE_SET_COMPACT ? 0 : 1;
    const uint32_t* node = tree;
    for (;;) {
        const uint32_t header = node[1];
        if (value < node[2]) {
            const uint32_t offset = smallerOffset(header, skip);
            // A compact empty node pointing at itself would never end the
            // walk: it is read as having no smaller subtree.
            if (!(header & KIV_VALUE_SET_SMALLER) || offset == 0) return 0;
            node += offset;
            continue;
        }
        if (nodeMatches(node, value)) return 1;
        const uint32_t distance = largerDistance(header);
        if (distance == 0) return 0;
        node += distance;
    }
}
