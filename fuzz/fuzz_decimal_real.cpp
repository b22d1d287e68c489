// Decimal REAL texts: whatever the input, parsing stays inside the text,
// every parsed number survives both canonical layouts in both conventions,
// and comparison is consistent with the parse.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "fenkapi.h"

namespace {

struct Run {
    bool negative;
    std::string digits;
    int64_t exponent;  // of the first digit
};

Run runOf(const KivDecimalReal& r) {
    Run run{r.sign != 0, "", 0};
    if (!r.firstDigit) return run;
    for (const char* p = r.firstDigit; p <= r.lastDigit; ++p)
        if (*p != '.' && *p != ',') run.digits += *p;
    run.exponent = r.exponent;
    if (r.flags & KIV_DECIMAL_INTEGER_MANTISSA)
        run.exponent += static_cast<int64_t>(run.digits.size()) - 1;
    return run;
}

bool same(const Run& a, const Run& b) {
    return a.negative == b.negative && a.digits == b.digits &&
           (a.digits.empty() || a.exponent == b.exponent);
}

void checkText(const std::string& text) {
    for (uint32_t convention : {0u, KIV_DECIMAL_INTEGER_MANTISSA}) {
        KivDecimalReal record{};
        record.flags = convention;
        const int32_t result = kivParseDecimalReal(text.c_str(), &record);
        if (result < 0 || result > 5) std::abort();
        if (result != 0) continue;
        if (record.firstDigit &&
            (record.firstDigit < text.c_str() || record.lastDigit >= text.c_str() + text.size() ||
             record.lastDigit < record.firstDigit))
            std::abort();
        const Run run = runOf(record);
        for (uint32_t layout : {0u, KIV_DECIMAL_POSITIONAL}) {
            if (layout && (run.exponent > 4000 || run.exponent < -4000)) continue;
            std::vector<char> out(text.size() + 4100 + 32, '#');
            record.flags = (record.flags & ~KIV_DECIMAL_POSITIONAL) | layout;
            kivDecimalRealText(&record, out.data());
            KivDecimalReal back{};
            back.flags = convention;
            if (kivParseDecimalReal(out.data(), &back) != 0) std::abort();
            if (!same(runOf(back), run)) std::abort();
            // Comparison reads both texts without the integer mantissa.
            if (convention == 0 && kivCompareDecimalReals(nullptr, text.c_str(), out.data()) != 0)
                std::abort();
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const size_t split = input.find('\0');
    const std::string a = input.substr(0, split);
    const std::string b = split == std::string::npos ? std::string("0") : input.substr(split + 1).c_str();
    checkText(a);
    const int32_t ab = kivCompareDecimalReals(nullptr, a.c_str(), b.c_str());
    const int32_t ba = kivCompareDecimalReals(nullptr, b.c_str(), a.c_str());
    if (ab != 0 && ab != 2 && ab != 3 && ab != 4) std::abort();
    KivDecimalReal ra{};
    KivDecimalReal rb{};
    if (kivParseDecimalReal(a.c_str(), &ra) == 0 && kivParseDecimalReal(b.c_str(), &rb) == 0) {
        // Two numbers: the order is total and antisymmetric.
        if (ab == 4 || (ab == 0) != (ba == 0) || (ab == 2) != (ba == 3)) std::abort();
    }
    return 0;
}
