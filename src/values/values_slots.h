/* The slot routines of the value utilities subsystem, declared for the table and for
 * direct calls inside the library. C-compatible: the table is written in C. */
#ifndef FENK_VALUES_SLOTS_H
#define FENK_VALUES_SLOTS_H

#include "fenkapi.h"

#ifdef __cplusplus
extern "C" {
#endif

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
