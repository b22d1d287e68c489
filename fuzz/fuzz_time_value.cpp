// Parses arbitrary text as a TIME value inside a jump frame. A failure must
// be one of the time messages; a success must give a record that keeps the
// rules of its fields and orders and equals itself.
#include <csetjmp>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "fenkapi.h"
#include "kivapit.h"

namespace {

void check(bool condition) {
    if (!condition) std::abort();
}

void checkPoint(const KivTimePoint& p) {
    const KivDatePart& d = p.date;
    if (d.flags & 0x20) check(d.week >= 1 && d.week <= 53);
    if (d.flags & 0x10) check(d.month >= 1 && d.month <= 12);
    if (d.flags & 0x08) check(d.day >= 1 && d.day <= 366);
    const KivTimeOfDayPart& t = p.timeOfDay;
    check(t.hours <= 24 && t.minutes <= 59 && t.seconds <= 60);
    if (t.hours == 24) check(t.minutes == 0 && t.seconds == 0 && t.fraction == 0);
    check(t.zoneHours <= 15 && t.zoneMinutes <= 59);
    if (d.flags != 0 && t.flags != 0) check(d.flags & 0x08);
}

void checkSingle(const KivTimeValue& v) {
    check(kivCompareTimeValues(&v, &v) == 0);
    check(kivTimeValuesDiffer(&v, &v) == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static KivGlobal world;
    static bool made = kivCompanionInitWorld(&world, nullptr) == 0;
    check(made);
    char text[512];
    if (size >= sizeof text) return 0;
    std::memcpy(text, data, size);
    text[size] = '\0';

    world.messageOut = world.messageText;
    world.errorMode = 3;
    static KivTimeValue value;
    std::memset(&value, 0, sizeof value);
    jmp_buf frame;
    world.jumpBuffer = &frame;
    int code = setjmp(frame);
    if (code != 0) {
        check(code == 12 || code == 10);
        check(std::strncmp(world.messageText, code == 12 ? "D0012S: " : "D0144E: ", 8) == 0);
        return 0;
    }
    kivParseTimeValue(&world, text, &value);

    uint8_t kind = value.kind;
    uint8_t first = kind & 0x50, second = kind & 0x28;
    check(first == 0x40 || first == 0x10);
    check(second != 0x28 && !(first == 0x10 && second == 0x08));
    if (kind & 0x80) check(second != 0 || first == 0x10);
    if (first == 0x40) checkPoint(value.first.point);
    if (second == 0x20) checkPoint(value.second.point);
    if (kind == 0x40 || kind == 0x10) checkSingle(value);
    check(kivTimeValuesDiffer(&value, &value) == 0);
    if ((kind & 0x60) == 0x60) {
        // The start is not later than the end, zones set aside.
        KivTimeValue start{}, end{};
        start.kind = end.kind = 0x40;
        start.first.point = value.first.point;
        end.first.point = value.second.point;
        start.first.point.timeOfDay.flags &= 0xFB;
        end.first.point.timeOfDay.flags &= 0xFB;
        int32_t order = kivCompareTimeValues(&start, &end);
        check(order == 0 || order == -1);
        check(kivCompareTimeValues(&end, &start) == -order);
    }
    return 0;
}
