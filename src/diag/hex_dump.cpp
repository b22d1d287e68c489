// Hexadecimal dumps (slot 19): the plain layout, 32 octets a line in groups
// of four, and the framed layout with offsets and a character column. Each
// line is built in a small buffer and written with one output call.
#include "diag/diag_slots.h"
#include "diag/hex_dump.h"
#include "kivapit.h"

namespace {

constexpr char kDigits[] = "0123456789ABCDEF";

char shown(uint8_t octet) { return octet >= 32 && octet < 127 ? static_cast<char>(octet) : '.'; }

char* putHex(char* out, uint8_t octet) {
    *out++ = kDigits[octet >> 4];
    *out++ = kDigits[octet & 15];
    return out;
}

void flush(KivGlobal* world, const char* line, const char* end) {
    kivCompanionPrint(world, "%.*s", static_cast<int>(end - line), line);
}

void dumpPlain(KivGlobal* world, const uint8_t* octets, int32_t n) {
    char line[32 * 2 + 8 + 1];
    char* out = line;
    for (int32_t i = 0; i < n; ++i) {
        out = putHex(out, octets[i]);
        int32_t inLine = (i + 1) % 32;
        if (inLine == 0) {
            *out++ = '\n';
            flush(world, line, out);
            out = line;
        } else if (inLine % 4 == 0) {
            *out++ = ' ';
        }
    }
    if (out != line || n % 32 != 0) {
        *out++ = '\n';
        flush(world, line, out);
    }
}

void dumpFramed(KivGlobal* world, const uint8_t* octets, int32_t n) {
    kivCompanionPrint(world, "#   000000:   ");
    if (n < 1) {
        kivCompanionPrint(world, "\n");
        return;
    }
    char line[16 * 2 + 7 + 4 + 16];
    for (int32_t start = 0; start < n; start += 16) {
        int32_t k = n - start < 16 ? n - start : 16;
        char* out = line;
        for (int32_t j = 0; j < k; ++j) {
            out = putHex(out, octets[start + j]);
            bool last = start + j + 1 == n;
            if (j % 2 == 1 && j != 15 && !last) *out++ = ' ';
        }
        if (k == 16) {
            for (int i = 0; i < 4; ++i) *out++ = ' ';
            for (int32_t j = 0; j < 16; ++j) *out++ = shown(octets[start + j]);
            flush(world, line, out);
            if (start + 16 < n) kivCompanionPrint(world, "\n#   %06x:   ", start + 16);
            else kivCompanionPrint(world, "\n");
            continue;
        }
        // A partial last line is padded so its characters stand under those
        // of the full lines.
        flush(world, line, out);
        int32_t missing = 16 - k;
        kivCompanionPrint(world, "%*c", missing / 2 + 2 * missing + 3, ' ');
        kivCompanionPrint(world, " ");
        out = line;
        for (int32_t j = 0; j < k; ++j) *out++ = shown(octets[start + j]);
        *out++ = '\n';
        flush(world, line, out);
    }
}

}  // namespace

namespace fenk {

void printDumpHeading(KivGlobal* world) {
    kivCompanionPrint(world,
                      "#   Offset    Stream of Octets Written in Hexadecimal    Character Format\n");
    printDumpRule(world);
}

void printDumpRule(KivGlobal* world) {
    kivCompanionPrint(world,
                      "#   ======    =======================================    ================\n");
}

}  // namespace fenk

void kivHexDump(KivGlobal* world, const uint8_t* octets, int32_t length) {
    if (!world || !octets) return;
    if (world->privateState->debugFlags & 0x80) {
        if (length != 0) dumpFramed(world, octets, length);
    } else if (length >= 1) {
        dumpPlain(world, octets, length);
    }
}
