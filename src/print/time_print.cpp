// UTCTime and GeneralizedTime values from their C structure, in double
// quotes: "090520130500-0130", "20090520130507.250Z".
#include "print/print_sink.h"
#include "print/print_slots.h"

namespace {

// Texts are 26 bytes, enough for every field within its range; fields out
// of range get a text as long as they need.
constexpr uint64_t kTimeTextSize = 26;

// The printers read every field as signed 16-bit.
int field(uint16_t value) { return static_cast<int16_t>(value); }

template <class Sink>
void writeZoneOffset(Sink& out, int offset) {
    int minutes = offset < 0 ? -offset : offset;
    out.put("%c%02d%02d", offset < 0 ? '-' : '+', minutes / 60, minutes % 60);
}

// UTCTime has no fraction; a zero offset is written as Z, isUtc is not read.
template <class Sink>
void writeUtcTime(Sink& out, const KivTimeStruct* t) {
    out.put("\"");
    out.put("%02d%02d%02d%02d%02d%02d", field(t->year), field(t->month), field(t->day),
            field(t->hour), field(t->minute), field(t->second));
    if (t->zoneOffset != 0)
        writeZoneOffset(out, t->zoneOffset);
    else
        out.put("Z");
    out.put("\"");
}

// GeneralizedTime always has three fraction digits; no zone at all means
// local time.
template <class Sink>
void writeGeneralizedTime(Sink& out, const KivTimeStruct* t) {
    out.put("\"");
    out.put("%04d%02d%02d%02d%02d%02d.%03d", field(t->year), field(t->month), field(t->day),
            field(t->hour), field(t->minute), field(t->second), field(t->milliseconds));
    if (t->isUtc)
        out.put("Z");
    else if (t->zoneOffset != 0)
        writeZoneOffset(out, t->zoneOffset);
    out.put("\"");
}

template <class Write>
char* timeToText(KivGlobal* world, const KivTimeStruct* time, Write write) {
    fenk::CountSink count{0};
    write(count, time);
    uint64_t size = count.length + 1 > kTimeTextSize ? count.length + 1 : kTimeTextSize;
    fenk::TextSink out = fenk::newText(world, size);
    char* text = out.at;
    if (text) write(out, time);
    return text;
}

}  // namespace

void kivPrintUTCTime(KivGlobal* world, const KivTimeStruct* time) {
    fenk::PrintSink out{world};
    writeUtcTime(out, time);
}

char* kivUTCTimeToText(KivGlobal* world, const KivTimeStruct* time) {
    return timeToText(world, time, [](auto& out, const KivTimeStruct* t) { writeUtcTime(out, t); });
}

void kivPrintGeneralizedTime(KivGlobal* world, const KivTimeStruct* time) {
    fenk::PrintSink out{world};
    writeGeneralizedTime(out, time);
}

char* kivGeneralizedTimeToText(KivGlobal* world, const KivTimeStruct* time) {
    return timeToText(world, time,
                      [](auto& out, const KivTimeStruct* t) { writeGeneralizedTime(out, t); });
}
