// Two small octet helpers for callers that handle raw encodings.
#include "api/api_slots.h"

// Total length of the first BER element: tag octets, length octets and
// contents, or 0 when the header runs past the buffer, the length is
// indefinite or takes more than four octets. A short-form length is not
// checked against the buffer.
uint32_t kivBerElementLength(void*, const KivBuffer* buffer) {
    if (!buffer || !buffer->value || buffer->length < 1) return 0;
    const uint8_t* p = buffer->value;
    uint32_t available = buffer->length;
    uint32_t header = 1;
    if ((p[0] & 0x1F) == 0x1F) {
        do {
            if (header >= available) return 0;
        } while (p[header++] & 0x80);
    }
    if (header >= available) return 0;
    uint8_t first = p[header++];
    if (first == 0x80) return 0;
    if (first < 0x80) return first + header;
    uint32_t count = first & 0x7F;
    if (header + count > available || count > 4) return 0;
    uint32_t length = 0;
    for (uint32_t i = 0; i < count; ++i) length = (length << 8) | p[header + i];
    return length + header + count;
}

// Skips octets equal to the given one: 0 when octets remain, 4 when none do,
// 11 for a missing buffer.
int32_t kivSkipLeadingOctets(KivGlobal* world, KivBuffer* buffer, uint8_t octet) {
    if (!world) return 6;
    if (!buffer || !buffer->value) return 11;
    if (buffer->length == 0) return 4;
    while (buffer->length > 0 && *buffer->value == octet) {
        ++buffer->value;
        --buffer->length;
    }
    return buffer->length > 0 ? 0 : 4;
}
