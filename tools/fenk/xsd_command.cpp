// fenk xsd: the XML Schema date and time forms, text to fields and back.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "cli.h"

namespace fenk::cli {
namespace {

constexpr const char* kXsdUsage =
    "usage: fenk xsd parse FORM TEXT\n"
    "       fenk xsd format FORM NAME=VALUE...\n"
    "\n"
    "XML Schema forms: duration dateTime time date gYearMonth gYear gMonthDay gDay gMonth.\n"
    "parse prints the fields of a text, one NAME=VALUE a line; format writes the text\n"
    "of the fields given (names: negative year month day hour minute second fraction\n"
    "zone). A zone is Z, none, or minutes east of UTC (+60, -330).\n";

enum Form { kDuration, kDateTime, kTime, kDate, kYearMonth, kYear, kMonthDay, kDay, kMonth };
constexpr const char* kFormNames[] = {"duration", "dateTime", "time",  "date", "gYearMonth",
                                      "gYear",    "gMonthDay", "gDay", "gMonth"};

// Every field any form has; a form reads and writes its own.
struct Fields {
    uint8_t negative = 0;
    int32_t year = 0, month = 0, day = 0;
    uint32_t years = 0, months = 0, days = 0, hour = 0, minute = 0, second = 0;
    std::string fraction;
    int32_t zone = KIV_ZONE_NONE;
};

int formOf(const std::string& name) {
    for (int f = 0; f <= kMonth; ++f)
        if (name == kFormNames[f]) return f;
    return -1;
}

std::string zoneText(int32_t zone) {
    if (zone == KIV_ZONE_NONE) return "none";
    if (zone == KIV_ZONE_UTC) return "Z";
    char text[16];
    std::snprintf(text, sizeof text, "%+d", zone);
    return text;
}

int32_t parseText(KivGlobal* w, int form, const char* t, Fields& f) {
    const char* fraction = nullptr;
    uint32_t count = 0;
    int32_t code = 12;
    switch (form) {
        case kDuration:
            code = kivTextToDuration(w, t, &f.negative, &f.years, &f.months, &f.days, &f.hour,
                                     &f.minute, &f.second, &fraction, &count);
            break;
        case kDateTime:
            code = kivTextToDateTime(w, t, &f.year, &f.month, &f.day, &f.hour, &f.minute, &f.second,
                                     &fraction, &count, &f.zone);
            break;
        case kTime:
            code = kivTextToTime(w, t, &f.hour, &f.minute, &f.second, &fraction, &count, &f.zone);
            break;
        case kDate: code = kivTextToDate(w, t, &f.year, &f.month, &f.day, &f.zone); break;
        case kYearMonth: code = kivTextToYearMonth(w, t, &f.year, &f.month, &f.zone); break;
        case kYear: code = kivTextToYear(w, t, &f.year, &f.zone); break;
        case kMonthDay: code = kivTextToMonthDay(w, t, &f.month, &f.day, &f.zone); break;
        case kDay: code = kivTextToDay(w, t, &f.day, &f.zone); break;
        case kMonth: code = kivTextToMonth(w, t, &f.month, &f.zone); break;
    }
    if (code == 0 && fraction) f.fraction.assign(fraction, count);
    return code;
}

int32_t formatText(KivGlobal* w, int form, const Fields& f, char** out) {
    const char* fr = f.fraction.empty() ? nullptr : f.fraction.c_str();
    auto n = static_cast<uint32_t>(f.fraction.size());
    switch (form) {
        case kDuration:
            return kivDurationToText(w, f.negative, f.years, f.months, f.days, f.hour, f.minute,
                                     f.second, fr, n, out);
        case kDateTime:
            return kivDateTimeToText(w, f.year, f.month, f.day, f.hour, f.minute, f.second, fr, n,
                                     f.zone, out);
        case kTime: return kivTimeToText(w, f.hour, f.minute, f.second, fr, n, f.zone, out);
        case kDate: return kivDateToText(w, f.year, f.month, f.day, f.zone, out);
        case kYearMonth: return kivYearMonthToText(w, f.year, f.month, f.zone, out);
        case kYear: return kivYearToText(w, f.year, f.zone, out);
        case kMonthDay: return kivMonthDayToText(w, f.month, f.day, f.zone, out);
        case kDay: return kivDayToText(w, f.day, f.zone, out);
        default: return kivMonthToText(w, f.month, f.zone, out);
    }
}

void printFields(int form, const Fields& f) {
    auto line = [](const char* name, long long v) { std::printf("%s=%lld\n", name, v); };
    if (form == kDuration) {
        line("negative", f.negative);
        line("year", f.years);
        line("month", f.months);
        line("day", f.days);
    }
    if (form == kDateTime || form == kDate || form == kYearMonth || form == kYear) line("year", f.year);
    if (form == kDateTime || form == kDate || form == kYearMonth || form == kMonthDay || form == kMonth)
        line("month", f.month);
    if (form == kDateTime || form == kDate || form == kMonthDay || form == kDay) line("day", f.day);
    if (form == kDuration || form == kDateTime || form == kTime) {
        line("hour", f.hour);
        line("minute", f.minute);
        line("second", f.second);
        if (!f.fraction.empty()) std::printf("fraction=%s\n", f.fraction.c_str());
    }
    if (form != kDuration) std::printf("zone=%s\n", zoneText(f.zone).c_str());
}

// NAME=VALUE into the fields; false on an unknown name or a bad number.
bool setField(Fields& f, int form, const std::string& word) {
    size_t eq = word.find('=');
    if (eq == std::string::npos) return false;
    std::string name = word.substr(0, eq), value = word.substr(eq + 1);
    if (name == "fraction") {
        f.fraction = value;
        return true;
    }
    if (name == "zone") {
        if (value == "Z") f.zone = KIV_ZONE_UTC;
        else if (value == "none") f.zone = KIV_ZONE_NONE;
        else f.zone = static_cast<int32_t>(std::strtol(value.c_str(), nullptr, 10));
        return true;
    }
    char* end = nullptr;
    long long v = std::strtoll(value.c_str(), &end, 10);
    if (value.empty() || *end) return false;
    bool duration = form == kDuration;
    if (name == "negative") f.negative = v != 0;
    else if (name == "year") duration ? void(f.years = uint32_t(v)) : void(f.year = int32_t(v));
    else if (name == "month") duration ? void(f.months = uint32_t(v)) : void(f.month = int32_t(v));
    else if (name == "day") duration ? void(f.days = uint32_t(v)) : void(f.day = int32_t(v));
    else if (name == "hour") f.hour = uint32_t(v);
    else if (name == "minute") f.minute = uint32_t(v);
    else if (name == "second") f.second = uint32_t(v);
    else return false;
    return true;
}

}  // namespace

int xsdCommand(int argc, char** argv) {
    Args args;
    if (!parseArgs(argc, argv, 2, {}, {}, args)) return kBadUsage;
    if (args.help) return usage(kXsdUsage, true);
    if (args.words.size() < 3) return usage(kXsdUsage, false);
    const std::string& verb = args.words[0];
    int form = formOf(args.words[1]);
    if (form < 0 || (verb != "parse" && verb != "format")) return usage(kXsdUsage, false);
    World world;
    KivGlobal* w = world.get();
    Fields fields;
    if (verb == "parse") {
        if (args.words.size() != 3) return usage(kXsdUsage, false);
        int32_t code = parseText(w, form, args.words[2].c_str(), fields);
        if (code) return refuse(w, code);
        printFields(form, fields);
        return kDone;
    }
    for (size_t i = 2; i < args.words.size(); ++i)
        if (!setField(fields, form, args.words[i])) return usage(kXsdUsage, false);
    char* text = nullptr;
    int32_t code = formatText(w, form, fields, &text);
    if (code) return refuse(w, code);
    std::printf("%s\n", text);
    kivReleaseThroughTable(w, text);
    return kDone;
}

}  // namespace fenk::cli
