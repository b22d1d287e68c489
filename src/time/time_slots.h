/* The slot routines of the time types subsystem, declared for the table and for
 * direct calls inside the library. C-compatible: the table is written in C. */
#ifndef FENK_TIME_SLOTS_H
#define FENK_TIME_SLOTS_H

#include "fenkapi.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ISO 8601 TIME values and the property-settings checks */
KivParseTimeValueFn kivParseTimeValue;
KivCompareTimeValuesFn kivCompareTimeValues;
KivTimeValuesDifferFn kivTimeValuesDiffer;
KivCheckIntervalSettingsFn kivCheckIntervalSettings;
KivCheckPointDateSettingsFn kivCheckPointDateSettings;
KivCheckPointTimeSettingsFn kivCheckPointTimeSettings;
KivCheckRecurringIntervalFn kivCheckRecurringInterval;
KivCheckTimeIntervalFn kivCheckTimeInterval;
KivCheckDateOnlyFn kivCheckDateOnly;
KivCheckTimeOfDayOnlyFn kivCheckTimeOfDayOnly;
KivCheckDateAndTimeFn kivCheckDateAndTime;
KivCheckRecurrenceDigitsFn kivCheckRecurrenceDigits;

/* UTCTime and GeneralizedTime check (raises) */
KivCheckGeneralizedOrUTCTimeFn kivCheckGeneralizedOrUTCTime;

#ifdef __cplusplus
}
#endif

#endif
