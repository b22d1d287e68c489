// Eight threads, each with its own world, run encodes, decodes, copies,
// prints and time conversions for FENK_SOAK_SECONDS (2 by default), with
// raises and trapped memory faults mixed in. Every answer is checked against
// values fixed before the threads start, and every thread works on values of
// its own, so that state leaking from one world or thread into another shows
// up as a wrong answer; under ThreadSanitizer the run must report no race.
#include <gtest/gtest.h>
#include <sys/mman.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <thread>
#include <vector>

#include "catalog.h"
#include "support/raise_catcher.h"
#include "support/test_world.h"

namespace {

constexpr int kThreads = 8;

// A page that faults on every access.
volatile int* faultingAddress() {
    static void* page = mmap(nullptr, 4096, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return static_cast<volatile int*>(page);
}

// The value that the soak's copier and printer treat as a bad pointer: they
// read the faulting page instead, inside the library's guarded operation.
CatalogEntry faultMarker;

int32_t copyOrFault(KivGlobal* w, uint32_t pduNum, const void* source, void** destination) {
    if (source == &faultMarker) return *faultingAddress();
    return catalogValueRoutines.copier(w, pduNum, source, destination);
}

int32_t compareEntries(KivGlobal* w, uint32_t pduNum, const void* first, const void* second) {
    return catalogValueRoutines.comparator(w, pduNum, first, second);
}

int32_t printOrFault(KivGlobal* w, int32_t pduNum, void* value) {
    if (value == &faultMarker) return *faultingAddress();
    return catalogPrintPdu(w, pduNum, value);
}

const KivValueRoutines soakValueRoutines{nullptr, &copyOrFault, &compareEntries};
CatalogControlTable soakControlTable{
    {catalogReleasePdu, KIV_CONTROL_TABLE_VERSION, &printOrFault}, &soakValueRoutines};

// A world with the catalog's coders and the soak's routines, made the way
// an application makes one.
struct SoakWorld : fenk::test::TestWorld {
    SoakWorld() : TestWorld(&soakControlTable) {
        catalogInstall(get());
        kivSetValueRoutines(get(), &soakValueRoutines);
    }
};

std::vector<uint8_t> encode(KivGlobal* w, int32_t rules, CatalogEntry* value, int32_t* code) {
    kivSelectRules(w, rules);
    KivBuffer out{0, nullptr};
    *code = kivEncodePdu(w, CATALOG_PDU_ENTRY, value, &out);
    if (*code != 0) return {};
    std::vector<uint8_t> octets(out.value, out.value + out.length);
    kivFreeBlock(w, out.value);
    return octets;
}

// One thread's values and every answer expected of them.
struct Expected {
    std::string name, created, timeText, shiftedText;
    CatalogEntry entry;
    std::vector<uint8_t> der, ber, badMonth;
    std::string xer, printed, badMonthMessage, smallBufferMessage, enumeratedMessage;
    uint64_t seconds;
    int32_t offset;  // minutes east, for seconds back to text
    uint32_t smallBuffer, missingEnumerated;
};

std::string zoned(time_t seconds, int offsetMinutes) {
    time_t local = seconds + offsetMinutes * 60;
    struct tm f;
    gmtime_r(&local, &f);
    char text[40];
    std::strftime(text, sizeof text, "%Y%m%d%H%M%S", &f);
    if (offsetMinutes == 0) return std::string(text) + "Z";
    char zone[16];
    std::snprintf(zone, sizeof zone, "+%02d%02d", offsetMinutes / 60, offsetMinutes % 60);
    return text + std::string(zone);
}

// Thread t's Entry is the sample with its own name, serial and creation
// time; the printed text and XER are written out here from the sample's
// known form, the seconds come from the C library, and the DER and BER
// octets are what one world made of the value before any thread ran.
void prepare(Expected& e, int t, KivGlobal* w) {
    e.name = "Maps & Charts " + std::string(1, static_cast<char>('A' + t));
    e.created = "202611222130" + std::to_string(10 + t) + ".25Z";
    e.entry = *catalogSampleEntry();
    e.entry.name = {static_cast<uint32_t>(e.name.size()),
                    reinterpret_cast<uint8_t*>(e.name.data())};
    e.entry.serial = 1234567 + 1000003LL * t;
    e.entry.created = e.created.data();
    const std::string serial = std::to_string(e.entry.serial);
    std::string xmlName = e.name;
    xmlName.replace(xmlName.find('&'), 1, "&amp;");
    e.xer = "<Entry><name>" + xmlName + "</name><serial>" + serial + "</serial><created>" +
            e.created +
            "</created><flags>1101</flags><digest>9F86D081884C7D659A2FEAA0C55AD015</digest>"
            "<tags><PrintableString>reference</PrintableString><PrintableString>Archive"
            "</PrintableString><PrintableString>2026</PrintableString></tags>"
            "<note>020107</note></Entry>";
    e.printed = "value Entry ::= {\n  name \"" + e.name + "\",\n  serial " + serial +
                ",\n  created \"" + e.created +
                "\",\n  flags '1101'B,\n  digest '9F86D081884C7D659A2FEAA0C55AD015'H,\n"
                "  tags { \"reference\", \"Archive\", \"2026\" },\n  note '020107'H\n}\n";

    struct tm f{};
    f.tm_year = 2030 - 1900 + t;
    f.tm_mon = t;
    f.tm_mday = 1 + 3 * t;
    f.tm_hour = 23 - t;
    f.tm_min = 7 * t;
    f.tm_sec = 1 + t;
    e.seconds = static_cast<uint64_t>(timegm(&f));
    e.timeText = zoned(static_cast<time_t>(e.seconds), 0);
    e.offset = 45 * t;
    e.shiftedText = zoned(static_cast<time_t>(e.seconds), e.offset);

    int32_t code = 0;
    e.der = encode(w, kivRulesDer, &e.entry, &code);
    EXPECT_EQ(code, 0);
    e.ber = encode(w, kivRulesBer, &e.entry, &code);
    EXPECT_EQ(code, 0);
    EXPECT_NE(e.der, e.ber) << "the tags are not in DER order";
    // Months 13 to 20 in created: each thread's refusal names its own month.
    e.badMonth = e.der;
    const std::string octets(e.der.begin(), e.der.end());
    const size_t month = octets.find(e.created) + 4;
    e.badMonth[month] = static_cast<uint8_t>('0' + (13 + t) / 10);
    e.badMonth[month + 1] = static_cast<uint8_t>('0' + (13 + t) % 10);
    e.badMonthMessage = "D0012S: Out-of-range value in time type. Month = " +
                        std::to_string(13 + t) +
                        "; check field 'created' (type: GeneralizedTime) of PDU #1 'Entry'.\n";
    e.smallBuffer = 10 + t;
    e.smallBufferMessage = "E0001S: Output buffer too small; total buffer size: " +
                           std::to_string(e.smallBuffer) + "; check PDU #1 'Entry'.\n";
    e.missingEnumerated = 100 + t;
    e.enumeratedMessage = "E0071S: Value not among the ENUMERATED: " +
                          std::to_string(e.missingEnumerated) + ".\n";
}

// ISO 8601 texts and their normal forms: canonical rules drop the end's
// repeated time difference and zero duration components, BER keeps both.
struct Normalization {
    const char* text;
    const char* der;
    const char* ber;
};
constexpr Normalization kNormalizations[] = {
    {"2009-01-01T10:00+01/2009-01-01T12:00+01:00", "2009-01-01T10:00+01/2009-01-01T12:00",
     "2009-01-01T10:00+01/2009-01-01T12:00+01"},
    {"P1Y0M0DT0H0M5S", "P1YT5S", "P1Y0M0DT0H0M5S"},
    {"0900-01-01T10:00:00,5+01:00", "0900-01-01T10:00:00.5+01", "0900-01-01T10:00:00.5+01"},
};

enum Op {
    encodeDer, encodeBer, encodeXer, decodeDer, copyValue, printValue, timeToSeconds,
    secondsToTime, normalizeTime, raiseBadMonth, raiseSmallBuffer, raiseEnumerated,
    raiseUnknownPdu, faultInCopy, faultInPrint, kOps
};
constexpr const char* kOpNames[kOps] = {
    "DER encode", "BER encode", "XER encode", "DER decode", "copy", "print",
    "GeneralizedTime to seconds", "seconds to GeneralizedTime", "ISO time normal form",
    "decode raising 'month'", "encode raising 'buffer too small'", "ENUMERATED check raising",
    "compare raising 'PDU number'", "fault in copy", "fault in print"};

// Runs one operation on the thread's world; true when every answer is the
// expected one. round counts the thread's passes through the table.
bool run(Op op, SoakWorld& world, Expected& e, int round) {
    KivGlobal* w = world.get();
    int32_t code = 0;
    switch (op) {
        case encodeDer: return encode(w, kivRulesDer, &e.entry, &code) == e.der && code == 0;
        case encodeBer: return encode(w, kivRulesBer, &e.entry, &code) == e.ber && code == 0;
        case encodeXer: {
            const std::vector<uint8_t> xer = encode(w, kivRulesXer, &e.entry, &code);
            return code == 0 && std::string(xer.begin(), xer.end()) == e.xer;
        }
        case decodeDer: {
            kivSelectRules(w, kivRulesDer);
            KivBuffer in{static_cast<uint32_t>(e.der.size()), e.der.data()};
            int32_t pdu = CATALOG_PDU_ENTRY;
            void* value = nullptr;
            if (kivDecodePdu(w, &pdu, &in, &value) != 0) return false;
            const bool same = static_cast<CatalogEntry*>(value)->serial == e.entry.serial &&
                              kivCompareValue(w, CATALOG_PDU_ENTRY, value, &e.entry) == 0;
            return kivReleasePdu(w, CATALOG_PDU_ENTRY, value) == 0 && same;
        }
        case copyValue: {
            void* copy = nullptr;
            if (kivCopyValue(w, CATALOG_PDU_ENTRY, &e.entry, &copy) != 0) return false;
            const bool same = copy != &e.entry &&
                              kivCompareValue(w, CATALOG_PDU_ENTRY, &e.entry, copy) == 0;
            return kivReleasePdu(w, CATALOG_PDU_ENTRY, copy) == 0 && same;
        }
        case printValue:
            world.clearOutput();
            return kivDisplayPdu(w, CATALOG_PDU_ENTRY, &e.entry) == 0 &&
                   world.output() == e.printed;
        case timeToSeconds: {
            uint64_t seconds = 0;
            return kivGeneralizedTimeTextToSeconds(w, e.timeText.c_str(), &seconds) == 0 &&
                   seconds == e.seconds;
        }
        case secondsToTime: {
            char buffer[32];
            char* text = buffer;
            return kivSecondsToGeneralizedTimeText(w, static_cast<int32_t>(e.seconds), e.offset,
                                                   &text) == 0 &&
                   e.shiftedText == text;
        }
        case normalizeTime: {
            // The normal form follows the world's rules, which the encodes change.
            const Normalization& n = kNormalizations[round % 3];
            const bool canonical = round % 2 == 0;
            kivSelectRules(w, canonical ? kivRulesDer : kivRulesBer);
            char* text = nullptr;
            if (kivNormalizeTimeText(w, n.text, &text) != 0) return false;
            const bool same = std::strcmp(text, canonical ? n.der : n.ber) == 0;
            kivReleaseThroughTable(w, text);
            return same;
        }
        case raiseBadMonth: {
            kivSelectRules(w, kivRulesDer);
            KivBuffer in{static_cast<uint32_t>(e.badMonth.size()), e.badMonth.data()};
            int32_t pdu = CATALOG_PDU_ENTRY;
            void* value = nullptr;
            return kivDecodePdu(w, &pdu, &in, &value) == 12 &&
                   e.badMonthMessage == w->messageText;
        }
        case raiseSmallBuffer: {
            kivSelectRules(w, kivRulesDer);
            uint8_t room[32];
            KivBuffer out{e.smallBuffer, room};
            return kivEncodePdu(w, CATALOG_PDU_ENTRY, &e.entry, &out) == 1 &&
                   e.smallBufferMessage == w->messageText;
        }
        case raiseEnumerated: {
            const uint32_t values[] = {3, 7};
            const KivEnumeratedList list{2, values};
            // A check outside any coder: no PDU context from the last coding.
            w->messageOut = w->messageText;
            w->errorMode = 0;
            w->errorPduNumber = 0;
            auto caught = fenk::test::catchRaise(w, [&] { kivFindEnumerated(w, e.missingEnumerated, &list); });
            return caught.raised && caught.value == 17 && e.enumeratedMessage == w->messageText &&
                   kivFindEnumerated(w, 7, &list) == &values[1];
        }
        case raiseUnknownPdu:
            return kivCompareValue(w, 7, &e.entry, &e.entry) == 3 && w->errorCode == 3;
        case faultInCopy: {
            void* copy = nullptr;
            return kivCopyValue(w, CATALOG_PDU_ENTRY, &faultMarker, &copy) == 14 &&
                   w->errorCode == 14 && copy == nullptr;
        }
        case faultInPrint:
            return kivDisplayPdu(w, CATALOG_PDU_ENTRY, &faultMarker) == 14 && w->errorCode == 14;
        case kOps: break;
    }
    return false;
}

double soakSeconds() {
    const char* text = std::getenv("FENK_SOAK_SECONDS");
    const double seconds = text ? std::atof(text) : 2.0;
    return seconds > 0 ? seconds : 2.0;
}

struct ThreadResult {
    long iterations = 0;
    long wrong = 0;
    long perOp[kOps] = {};
    std::string firstWrong;
};

TEST(Soak, EightWorldsInEightThreadsAnswerCorrectlyUntilTheDeadline) {
    std::vector<Expected> expected(kThreads);
    {
        SoakWorld w;
        for (int t = 0; t < kThreads; ++t) prepare(expected[t], t, w.get());
    }
    ASSERT_FALSE(HasFailure());

    const double seconds = soakSeconds();
    std::atomic<int> ready{0};
    std::atomic<bool> go{false};
    std::vector<ThreadResult> results(kThreads);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            SoakWorld world;  // made in the thread, as an application would
            Expected& e = expected[t];
            ThreadResult& r = results[t];
            ++ready;
            while (!go) std::this_thread::yield();
            const auto deadline = std::chrono::steady_clock::now() +
                                  std::chrono::duration<double>(seconds);
            // Every operation at least once, then on until the deadline; the
            // threads start at different operations so that different kinds
            // overlap.
            for (int i = 0; i < kOps || std::chrono::steady_clock::now() < deadline; ++i) {
                const Op op = static_cast<Op>((i + t * 2) % kOps);
                ++r.iterations;
                ++r.perOp[op];
                if (!run(op, world, e, i / kOps) && r.wrong++ == 0)
                    r.firstWrong = std::string(kOpNames[op]) + " at iteration " +
                                   std::to_string(i) + ", message: " + world->messageText;
            }
        });
    }
    while (ready < kThreads) std::this_thread::yield();
    go = true;
    for (auto& thread : threads) thread.join();

    long total = 0;
    for (int t = 0; t < kThreads; ++t) {
        const ThreadResult& r = results[t];
        std::printf("thread %d: %ld iterations\n", t, r.iterations);
        total += r.iterations;
        EXPECT_EQ(r.wrong, 0) << "thread " << t << ", first: " << r.firstWrong;
        for (int op = 0; op < kOps; ++op)
            EXPECT_GT(r.perOp[op], 0) << "thread " << t << " never ran " << kOpNames[op];
    }
    std::printf("%d threads, %.0f s, %ld operations of %d kinds\n", kThreads, seconds, total,
                kOps);
}

}  // namespace
