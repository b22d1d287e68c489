#include "diag/error_context.h"

#include <cinttypes>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "diag/messages.h"
#include "kivapit.h"

namespace fenk {
namespace {

constexpr int32_t kRulesXer = 5;
constexpr int32_t kRulesCxer = 6;
constexpr int32_t kRulesExer = 8;

// The error text under construction. A piece is appended whole or not at
// all: a piece that would take the text past the limit is left out, never
// cut.
struct ErrorText {
    char* out;
    size_t length;

    bool fits(size_t pieceLength) const { return length + pieceLength <= kErrorTextLimit; }

    void append(std::string_view piece) {
        std::memcpy(out + length, piece.data(), piece.size());
        length += piece.size();
    }

    void appendIfFits(std::string_view piece) {
        if (!piece.empty() && fits(piece.size())) append(piece);
    }
};

// A formatted piece of the text. A piece too long for the buffer could never
// fit the message either: its length is then set past the limit, so that no
// fit test passes.
struct Piece {
    char text[kErrorTextLimit + 2];
    size_t length = 0;

    std::string_view view() const { return {text, length}; }
};

__attribute__((format(printf, 2, 3))) void format(Piece& piece, const char* pattern, ...) {
    va_list args;
    va_start(args, pattern);
    int written = std::vsnprintf(piece.text, sizeof piece.text, pattern, args);
    va_end(args);
    piece.length = (written < 0 || static_cast<size_t>(written) >= sizeof piece.text)
                       ? kErrorTextLimit + 1
                       : static_cast<size_t>(written);
}

const char* orEmpty(const char* text) { return text ? text : ""; }

// A tag in the 16-bit coding of the coders: bits 15 and 14 the class, bits
// 0 to 13 the number.
void tagText(char (&out)[32], uint32_t tag) {
    unsigned long number = tag & 0x3FFFu;
    switch (tag & 0xC000u) {
        case 0x0000u: std::snprintf(out, sizeof out, "[UNIVERSAL %lu]", number); break;
        case 0x4000u: std::snprintf(out, sizeof out, "[APPLICATION %lu]", number); break;
        case 0x8000u: std::snprintf(out, sizeof out, "[%lu]", number); break;
        default: std::snprintf(out, sizeof out, "[PRIVATE %lu]", number); break;
    }
}

// The tag found (low 16 bits) and, when the high 16 bits hold one, the tag
// expected.
void formatTags(Piece& piece, uint32_t value) {
    char found[32];
    tagText(found, value & 0xFFFFu);
    if (value >> 16) {
        char expected[32];
        tagText(expected, value >> 16);
        format(piece, "%s (expected tag %s)", found, expected);
    } else {
        format(piece, "%s", found);
    }
}

void appendArgument(ErrorText& text, uint32_t kind, RaiseArgument argument) {
    const uint32_t low = static_cast<uint32_t>(argument.value);
    const bool wide = argument.form == ArgumentForm::wide;
    Piece piece;
    if ((kind & kKindArgumentMask) == kArgText || argument.form == ArgumentForm::dataText) {
        bool isText = argument.form == ArgumentForm::text || argument.form == ArgumentForm::dataText;
        const char* value = reinterpret_cast<const char*>(static_cast<uintptr_t>(argument.value));
        if (!isText || !value) return;
        size_t valueLength = std::strlen(value);
        if (!text.fits(valueLength + 2)) return;
        text.append("'");
        text.append({value, valueLength});
        text.append("'");
        return;
    }
    switch (kind & kKindArgumentMask) {
        case kArgTag:
            formatTags(piece, low);
            break;
        case kArgSigned:
            if (wide)
                format(piece, "%" PRId64, static_cast<int64_t>(argument.value));
            else
                format(piece, "%ld", static_cast<long>(static_cast<int32_t>(low)));
            break;
        case kArgUnsigned:
            if (wide)
                format(piece, "%" PRIu64, argument.value);
            else
                format(piece, "%lu", static_cast<unsigned long>(low));
            break;
        case kArgCharacter:
            if (low < 256 && (kivCompanionCharClass[low] & KIV_CLASS_PRINTABLE))
                format(piece, "'%c'", static_cast<int>(low));
            else
                format(piece, "{%u,%u,%u,%u}", low >> 24, (low >> 16) & 0xFFu, (low >> 8) & 0xFFu,
                       low & 0xFFu);
            break;
        default:
            return;
    }
    text.appendIfFits(piece.view());
}

bool numbersElements(const KivComponentFrame* frame) {
    if (!frame->descriptor) return false;
    uint32_t kind = frame->descriptor->kind;
    return kind == 8 || kind == 10 || kind == 21;
}

// "; check", the chain of components from the innermost outward, and the
// PDU. The walk stops at the first component that would leave no room for
// the PDU text.
void appendPduContext(ErrorText& text, const KivGlobal* world) {
    if (text.fits(7)) text.append("; check");
    Piece pdu;
    const KivPduDescriptor* info = world->errorPduInfo;
    if (info) {
        // A name with '#' as its fifth character is a generated placeholder.
        const char* name = orEmpty(info->name);
        if (std::strlen(name) > 4 && name[4] == '#') name = orEmpty(info->altName);
        format(pdu, " PDU #%d '%s'", static_cast<int>(world->errorPduNumber), name);
    } else {
        format(pdu, " PDU #%d", static_cast<int>(world->errorPduNumber));
    }
    for (const KivComponentFrame* frame = world->errorPath; frame && frame->outer;
         frame = frame->outer) {
        const KivComponentDescriptor* descriptor = frame->descriptor;
        const char* name = descriptor ? orEmpty(descriptor->name) : "";
        const char* typeName = descriptor ? orEmpty(descriptor->typeName) : "";
        Piece component;
        if (numbersElements(frame->outer))
            format(component, " element #%ld (type: %s) of", static_cast<long>(frame->index),
                   typeName);
        else
            format(component, " field '%s' (type: %s) of", name, typeName);
        if (!text.fits(component.length + pdu.length)) break;
        text.append(component.view());
    }
    text.appendIfFits(pdu.view());
}

// Line and position of the error point in the XML text being decoded.
void appendXmlPosition(ErrorText& text, const KivGlobal* world) {
    const char* start;
    const char* end;
    if (world->encodingRules == kRulesExer) {
        start = world->decodeInput;
        end = start && world->decodeInputLength > 0 ? start + world->decodeInputLength : start;
    } else {
        const KivPrivate* state = world->privateState;
        auto words = state ? static_cast<const char* const*>(state->xmlDecoderState) : nullptr;
        start = words ? words[1] : nullptr;
        end = world->decodeInput;
    }
    long line = 1;
    long position = 0;
    if (start) {
        for (const char* p = start; p < end; ++p) {
            if (*p == '\n') {
                ++line;
                position = 1;
            } else {
                ++position;
            }
        }
    }
    if (world->errorPduNumber == 0 && text.fits(11)) text.append("; check PDU");
    Piece where;
    format(where, " at line %ld position %ld", line, position);
    text.appendIfFits(where.view());
}

}  // namespace

void composeErrorContext(KivGlobal* world, int32_t index, RaiseArgument argument) {
    const MessageRecord& record = messages[index];
    world->errorCode = record.code;
    if (!world->messageOut) return;
    ErrorText text{world->messageOut, 1};
    if (world->errorMode >= 0 && world->errorMode <= 2)
        text.out[0] = 'E';
    else if (world->errorMode >= 3 && world->errorMode <= 5)
        text.out[0] = 'D';
    // Otherwise the first character stays as the caller left it.
    std::string_view message = record.text;
    text.append(message.substr(0, kErrorTextLimit - 1));
    appendArgument(text, record.kind, argument);
    if (!(record.kind & kKindNoPduContext) && world->errorPduNumber > 0)
        appendPduContext(text, world);
    const int32_t rules = world->encodingRules;
    if (text.out[0] == 'D' && (rules == kRulesExer || rules == kRulesXer || rules == kRulesCxer))
        appendXmlPosition(text, world);
    text.append(".\n");
    text.out[text.length] = '\0';
}

}  // namespace fenk
