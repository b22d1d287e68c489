/* fenkapi: Working memory — recorded allocation, output chunks, scratch and temporary memory, SET OF ordering, memory handles.
 * Slot numbers, routine types, records and call helpers of the subsystem.
 * Included by fenkapi.h. */
#ifndef FENKAPI_MEMORY_H
#define FENKAPI_MEMORY_H

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
