/* The slot routines of the value printer subsystem, declared for the table and for
 * direct calls inside the library. C-compatible: the table is written in C. */
#ifndef FENK_PRINT_SLOTS_H
#define FENK_PRINT_SLOTS_H

#include "fenkapi.h"

#ifdef __cplusplus
extern "C" {
#endif

/* XML text printer */
KivPrintXmlTextFn kivPrintXmlText;

#ifdef __cplusplus
}
#endif

#endif
