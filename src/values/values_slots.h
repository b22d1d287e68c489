/* The slot routines of the value utilities subsystem, declared for the table and for
 * direct calls inside the library. C-compatible: the table is written in C. */
#ifndef FENK_VALUES_SLOTS_H
#define FENK_VALUES_SLOTS_H

#include "fenkapi.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Constraint checks and name lookup */
KivFindEnumeratedFn kivFindEnumerated;
KivFindEnumeratedFn kivFindEnumeratedToo;
KivCheckAlphabet8Fn kivCheckAlphabet8;
KivCheckAlphabet16Fn kivCheckAlphabet16;
KivCheckAlphabet32Fn kivCheckAlphabet32;
KivSignificantBitsFn kivSignificantBits;
KivTrimTrailingBlanksFn kivTrimTrailingBlanks;
KivReadTwoNumbersFn kivReadTwoNumbers;
KivLookupNameNumberFn kivLookupNameNumber;
KivRefuseFourFn kivRefuseFour;
KivRefuseThreeFn kivRefuseThree;

/* GeneralizedTime and UTCTime conversions */
KivParseGeneralizedTimeFn kivParseGeneralizedTime;
KivParseUtcTimeFn kivParseUtcTime;
KivFormatGeneralizedTimeFn kivFormatGeneralizedTime;
KivFormatUtcTimeFn kivFormatUtcTime;
KivGeneralizedTimeFieldsFn kivGeneralizedTimeFields;
KivUtcTimeFieldsFn kivUtcTimeFields;
KivTimeTextToStructFn kivGeneralizedTimeToStruct;
KivTimeTextToStructFn kivUtcTimeToStruct;
KivNewTimeStructFn kivNewGeneralizedTimeStruct;
KivNewTimeStructFn kivNewUtcTimeStruct;
KivSecondsToTimeTextFn kivSecondsToGeneralizedTimeText;
KivSecondsToTimeStructFn kivSecondsToGeneralizedTimeStruct;
KivSecondsToTimeTextFn kivSecondsToUtcTimeText;
KivSecondsToTimeStructFn kivSecondsToUtcTimeStruct;
KivTimeTextToSecondsFn kivGeneralizedTimeTextToSeconds;
KivTimeStructToSecondsFn kivGeneralizedTimeStructToSeconds;
KivTimeTextToSecondsFn kivUtcTimeTextToSeconds;
KivTimeStructToSecondsFn kivUtcTimeStructToSeconds;

#ifdef __cplusplus
}
#endif

#endif
