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

/* ISO 8601 time texts: field records, parsers, formatters, normal form,
 * comparison, canonical-form check, digit scanners and writers */
KivFormatTimePointFn kivFormatTimePoint;
KivParseTimePointFn kivParseTimePoint;
KivFormatDurationFn kivFormatDuration;
KivParseDurationFn kivParseDuration;
KivFormatStartEndFn kivFormatStartEnd;
KivParseStartEndFn kivParseStartEnd;
KivFormatStartDurationFn kivFormatStartDuration;
KivParseStartDurationFn kivParseStartDuration;
KivFormatDurationEndFn kivFormatDurationEnd;
KivParseDurationEndFn kivParseDurationEnd;
KivFormatRecurringDurationFn kivFormatRecurringDuration;
KivParseRecurringDurationFn kivParseRecurringDuration;
KivFormatRecurringStartEndFn kivFormatRecurringStartEnd;
KivParseRecurringStartEndFn kivParseRecurringStartEnd;
KivParseRecurringStartDurationFn kivParseRecurringStartDuration;
KivFormatRecurringStartDurationFn kivFormatRecurringStartDuration;
KivFormatRecurringDurationEndFn kivFormatRecurringDurationEnd;
KivParseRecurringDurationEndFn kivParseRecurringDurationEnd;
KivClassifyTimeTextFn kivClassifyTimeText;
KivCheckTimeCanonicalFormFn kivCheckTimeCanonicalForm;
KivNormalizeTimeTextFn kivNormalizeTimeText;
KivTimeTextsDifferFn kivTimeTextsDiffer;
KivScanDurationFn kivScanDuration;
KivScanDigitsFn kivScanDigits;
KivScanFixedDigitsFn kivScanFixedDigits;
KivPutDigitsMinFn kivPutDigitsMin;
KivPutDigitsFixedFn kivPutDigitsFixed;

/* XML Schema calendar forms */
KivDurationToTextFn kivDurationToText;
KivTextToDurationFn kivTextToDuration;
KivDateTimeToTextFn kivDateTimeToText;
KivTextToDateTimeFn kivTextToDateTime;
KivTimeToTextFn kivTimeToText;
KivTextToTimeFn kivTextToTime;
KivDateToTextFn kivDateToText;
KivTextToDateFn kivTextToDate;
KivYearMonthToTextFn kivYearMonthToText;
KivTextToYearMonthFn kivTextToYearMonth;
KivYearToTextFn kivYearToText;
KivTextToYearFn kivTextToYear;
KivMonthDayToTextFn kivMonthDayToText;
KivTextToMonthDayFn kivTextToMonthDay;
KivDayToTextFn kivDayToText;
KivTextToDayFn kivTextToDay;
KivMonthToTextFn kivMonthToText;
KivTextToMonthFn kivTextToMonth;
/* end of ISO 8601 time texts and XML Schema calendar forms */

#ifdef __cplusplus
}
#endif

#endif
