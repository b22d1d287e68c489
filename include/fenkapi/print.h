/* fenkapi: Value printer — value notation, character strings, REAL texts, XML text, namespace prefixes, decimal REAL text, value sets.
 * Slot numbers, routine types, records and call helpers of the subsystem.
 * Included by fenkapi.h. */
#ifndef FENKAPI_PRINT_H
#define FENKAPI_PRINT_H

#ifdef __cplusplus
extern "C" {
#endif

/* XML text printer: an XML encoding printed as it stands (layout 0) or
 * re-indented (nonzero), through the companion's output. */
enum { kivSlotPrintXmlText = 194 };
typedef void KivPrintXmlTextFn(KivGlobal* world, const char* text, int32_t length, uint8_t reindent);
#if KIV_CALL_HELPERS
static inline void kivPrintXmlText(KivGlobal* w, const char* text, int32_t length, uint8_t reindent) { KIV_SLOT(KivPrintXmlTextFn, kivSlotPrintXmlText)(w, text, length, reindent); }
#endif

#ifdef __cplusplus
}
#endif

#endif
