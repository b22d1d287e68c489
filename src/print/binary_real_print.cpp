// Binary REAL values (C doubles) in value notation: the special words, or
// { mantissa m, base 2, exponent e } with an odd mantissa of at most 31
// significant bits.
#include <cfloat>

#include "print/print_sink.h"
#include "print/print_slots.h"

namespace {

constexpr uint64_t kBinaryRealTextSize = 60;
constexpr double kMantissaTop = 2147483647.0;
constexpr int32_t kExponentBound = 32000;

template <class Sink>
void writeBinaryReal(Sink& out, double v) {
    int32_t cls = kivClassifyReal(&v, sizeof v);
    if (cls == kivRealNotANumber) {
        out.put("%s", "NOT-A-NUMBER");
        return;
    }
    if (cls == kivRealMinusZero) {
        out.put("-0");
        return;
    }
    // Beyond single precision counts as infinite here, unlike the classifier.
    if (v >= FLT_MAX) {
        out.put("%s", "PLUS-INFINITY");
        return;
    }
    if (v <= -FLT_MAX) {
        out.put("%s", "MINUS-INFINITY");
        return;
    }
    if (v == 0) {
        out.put("0");
        return;
    }
    double m = v < 0 ? -v : v;
    int32_t e = 0;
    while (m < kMantissaTop && e > -kExponentBound) {
        m *= 2;
        --e;
    }
    while (m > kMantissaTop && e < kExponentBound) {
        m /= 2;
        ++e;
    }
    // Truncated, not rounded: bits below the 31 kept are dropped.
    auto mantissa = static_cast<int32_t>(m);
    while (mantissa % 2 == 0) {
        mantissa /= 2;
        ++e;
    }
    if (v < 0) mantissa = -mantissa;
    out.put("{ mantissa %d, base 2, exponent %d }", static_cast<int>(mantissa), static_cast<int>(e));
}

}  // namespace

void kivPrintBinaryReal(KivGlobal* world, double value) {
    fenk::PrintSink out{world};
    writeBinaryReal(out, value);
}

char* kivBinaryRealToText(KivGlobal* world, double value) {
    fenk::TextSink out = fenk::newText(world, kBinaryRealTextSize);
    char* text = out.at;
    writeBinaryReal(out, value);
    return text;
}
