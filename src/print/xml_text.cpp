// Printing XML text (slot 194): as it stands, line by line, or re-indented
// with each element on its own line and two blanks per level. The printer
// does not check the XML; it looks only at "<", ">", "/", "?", "!", quotes
// and whitespace, and never reads past the given length.
#include <atomic>
#include <cstring>
#include <string_view>

#include "kivapit.h"
#include "print/print_slots.h"

namespace {

using std::string_view;

constexpr size_t kPieceLength = 2048;

enum TagKind { kStart = 0, kEmpty = 1, kEnd = 2, kMarkup = 3, kCdata = 4 };

struct Tag {
    TagKind kind;
    size_t length;  // from the "<" to just after its ">", or the rest of the text
};

// The nesting depth is one counter for the whole process: threads printing
// XML at the same time share it (and disturb each other's indentation).
std::atomic<int> depth{0};

void print(KivGlobal* world, string_view s) {
    kivCompanionPrint(world, "%.*s", static_cast<int>(s.size()), s.data());
}

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// Position of the first occurrence of what at or after from, or npos.
size_t find(string_view s, string_view what, size_t from) {
    return from > s.size() ? string_view::npos : s.find(what, from);
}

Tag classify(string_view s) {
    size_t i = 1;
    while (i < s.size()) {
        char c = s[i];
        if (c == '"' || c == '\'') {
            size_t close = s.find(c, i + 1);
            i = close == string_view::npos ? s.size() : close + 1;
            continue;
        }
        if (c == '/' || c == '>' || c == '?' || c == '!') break;
        ++i;
    }
    if (i + 1 >= s.size()) return {kStart, s.size()};

    TagKind kind = kStart;
    size_t from = i;  // where the search for the closing ">" starts
    switch (s[i]) {
        case '/': kind = i == 1 ? kEnd : kEmpty; break;
        case '>': kind = kStart; break;
        case '?': kind = kMarkup; break;
        default:  // '!'
            if (s[i + 1] == '-') {
                kind = kMarkup;
                from = find(s, "-->", i + 1);
            } else if (s[i + 1] == '[') {
                kind = kCdata;
                from = find(s, "]]>", i + 1);
            } else {
                kind = kMarkup;
                size_t stop = s.find_first_of("[>", i + 1);
                if (stop != string_view::npos && s[stop] == '[') stop = s.find(']', stop + 1);
                from = stop;
            }
    }
    size_t close = from == string_view::npos ? string_view::npos : s.find('>', from);
    return {kind, close == string_view::npos ? s.size() : close + 1};
}

// Start and empty-element tags with their whitespace tidied: quoted values
// and single blanks stay; other whitespace runs become one blank, or nothing
// before "=" or a quote; a run before "/" or ">" (or the end) closes the tag.
void writeTidyTag(KivGlobal* world, string_view tag, TagKind kind) {
    size_t copied = 0, j = 0;
    while (j < tag.size()) {
        char c = tag[j];
        if (c == '"' || c == '\'') {
            size_t close = tag.find(c, j + 1);
            j = close == string_view::npos ? tag.size() : close + 1;
            continue;
        }
        if (!isSpace(c)) {
            ++j;
            continue;
        }
        size_t k = j;
        bool plainBlank = true;
        while (k < tag.size() && isSpace(tag[k])) plainBlank &= tag[k++] == ' ';
        if (k - j == 1 && plainBlank) {
            j = k;
            continue;
        }
        if (j > copied) print(world, tag.substr(copied, j - copied));
        if (k == tag.size() || tag[k] == '/' || tag[k] == '>') {
            print(world, kind == kEmpty ? "/>" : ">");
            return;
        }
        if (tag[k] != '=' && tag[k] != '"' && tag[k] != '\'') print(world, " ");
        j = copied = k;
    }
    if (copied < tag.size()) print(world, tag.substr(copied));
}

void writeTag(KivGlobal* world, string_view tag, TagKind kind) {
    switch (kind) {
        case kStart:
        case kEmpty: writeTidyTag(world, tag, kind); break;
        case kEnd: {
            size_t name = 2;
            while (name < tag.size() && !isSpace(tag[name]) && tag[name] != '>') ++name;
            kivCompanionPrint(world, "%.*s>", static_cast<int>(name), tag.data());
            break;
        }
        default: print(world, tag);
    }
}

void indent(KivGlobal* world) {
    int width = 2 * depth.load(std::memory_order_relaxed);
    if (width > 0) kivCompanionPrint(world, "%*s", width, "");
}

// One line of the unchanged layout, without its line feed: a carriage return
// before the line feed is dropped, and long lines go out in pieces.
void writeLine(KivGlobal* world, string_view line) {
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    while (line.size() > kPieceLength) {
        string_view piece = line.substr(0, kPieceLength);
        if (piece.back() == '\r') piece.remove_suffix(1);
        print(world, piece);
        line.remove_prefix(kPieceLength);
    }
    kivCompanionPrint(world, "%.*s\n", static_cast<int>(line.size()), line.data());
}

void printUnchanged(KivGlobal* world, string_view text) {
    for (size_t lf; (lf = text.find('\n')) != string_view::npos; text.remove_prefix(lf + 1))
        writeLine(world, text.substr(0, lf));
    if (!text.empty()) print(world, text);
}

// Character data of the prolog, line by line; a line ends at a line feed or
// a carriage return, a carriage return and line feed counting as one end.
void printProlog(KivGlobal* world, string_view data) {
    while (!data.empty()) {
        size_t end = data.find_first_of("\r\n");
        if (end == string_view::npos) {
            kivCompanionPrint(world, "%.*s\n", static_cast<int>(data.size()), data.data());
            return;
        }
        if (end == 0) print(world, "\n");
        else kivCompanionPrint(world, "%.*s\n", static_cast<int>(end), data.data());
        size_t skip = data[end] == '\r' && end + 1 < data.size() && data[end + 1] == '\n' ? 2 : 1;
        data.remove_prefix(end + skip);
    }
}

// The element walk. Every open element but the innermost is still waiting
// for its end tag, so the walk needs only the number of open elements and
// whether the innermost one's end tag has been written.
void printElements(KivGlobal* world, string_view text) {
    Tag root = classify(text);
    writeTag(world, text.substr(0, root.length), root.kind);
    text.remove_prefix(root.length);
    size_t open = 1;
    bool ended = false;
    for (;;) {
        size_t lt = text.find('<');
        if (lt == string_view::npos) return;
        string_view data = text.substr(0, lt);
        bool blank = true;
        for (char c : data) blank &= isSpace(c);
        bool lineBreak = !data.empty() && (data.back() == '\n' || data.back() == '\r');
        Tag tag = classify(text.substr(lt));
        if (ended && tag.kind != kMarkup) {
            // The innermost element is complete: its parent takes over the
            // same character data.
            if (--open == 0) return;
            ended = false;
            continue;
        }
        if (!blank) print(world, data);
        else if (tag.kind != kCdata || lineBreak) print(world, "\n");
        bool indentHere = blank || lineBreak;
        string_view tagText = text.substr(lt, tag.length);
        switch (tag.kind) {
            case kStart:
                if (indentHere) indent(world);
                depth.fetch_add(1, std::memory_order_relaxed);
                writeTag(world, tagText, tag.kind);
                ++open;
                break;
            case kEmpty:
            case kMarkup:
                if (indentHere) indent(world);
                writeTag(world, tagText, tag.kind);
                break;
            case kCdata:
                if (lineBreak) indent(world);
                writeTag(world, tagText, tag.kind);
                break;
            case kEnd:
                depth.fetch_sub(1, std::memory_order_relaxed);
                if (indentHere) indent(world);
                writeTag(world, tagText, tag.kind);
                ended = true;
                break;
        }
        text.remove_prefix(lt + tag.length);
    }
}

void printReindented(KivGlobal* world, string_view text) {
    depth.store(1, std::memory_order_relaxed);
    size_t lt = text.find('<');
    if (lt == string_view::npos) return;
    text.remove_prefix(lt);
    for (;;) {
        Tag tag = classify(text);
        if (tag.kind != kMarkup) break;
        writeTag(world, text.substr(0, tag.length), tag.kind);
        print(world, "\n");
        text.remove_prefix(tag.length);
        lt = text.find('<');
        printProlog(world, text.substr(0, lt == string_view::npos ? text.size() : lt));
        if (lt == string_view::npos) return;
        text.remove_prefix(lt);
    }
    printElements(world, text);
}

}  // namespace

// Design decision: a tag that is not closed before the end of the text is
// taken to run to the end of the text and is written as far as it goes.
void kivPrintXmlText(KivGlobal* world, const char* text, int32_t length, uint8_t reindent) {
    if (!world || !text || length <= 0) return;
    string_view all(text, static_cast<size_t>(length));
    if (reindent) printReindented(world, all);
    else printUnchanged(world, all);
}
