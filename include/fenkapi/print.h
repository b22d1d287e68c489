/* fenkapi: Value printer — value notation, character strings, REAL texts, XML text, namespace prefixes, decimal REAL text, value sets.
 * Slot numbers, routine types, records and call helpers of the subsystem.
 * Included by fenkapi.h. */
#ifndef FENKAPI_PRINT_H
#define FENKAPI_PRINT_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
