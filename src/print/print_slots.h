/* The slot routines of the value printer subsystem, declared for the table and for
 * direct calls inside the library. C-compatible: the table is written in C. */
#ifndef FENK_PRINT_SLOTS_H
#define FENK_PRINT_SLOTS_H

#include "fenkapi.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Decimal REAL text, value sets and XML namespace prefixes */
KivParseDecimalRealFn kivParseDecimalReal;
KivDecimalRealTextFn kivDecimalRealText;
KivCompareDecimalRealsFn kivCompareDecimalReals;
KivValueInSetFn kivValueInSet;
KivSetNamespacePrefixFn kivSetNamespacePrefix;
KivGetNamespacePrefixFn kivGetNamespacePrefix;
KivGetListItemFn kivGetListItem;

/* Value printing services */
KivPrintBitsFn kivPrintBits;
KivBitsToTextFn kivBitsToText;
KivPrintBitStringFn kivPrintBitString;
KivBitStringToTextFn kivBitStringToText;
KivPrintBitsInIntegerFn kivPrintBitsInInteger;
KivBitsInIntegerToTextFn kivBitsInIntegerToText;
KivPrintHexFn kivPrintHex;
KivHexToTextFn kivHexToText;
KivPrintOctetStringFn kivPrintOctetString;
KivOctetStringToTextFn kivOctetStringToText;
KivPrintOpenTypeFn kivPrintOpenType;
KivPrintEnumeratedFn kivPrintEnumerated;
KivPrintNewLineFn kivPrintNewLine;
KivPrintUTCTimeFn kivPrintUTCTime;
KivUTCTimeToTextFn kivUTCTimeToText;
KivPrintGeneralizedTimeFn kivPrintGeneralizedTime;
KivGeneralizedTimeToTextFn kivGeneralizedTimeToText;
KivInt64ToTextFn kivInt64ToText;
KivUInt64ToTextFn kivUInt64ToText;
KivFreeTextFn kivFreeText;

/* Character string printers */
KivPrintCharStringFn kivPrintCharString;
KivPrintCStringFn kivPrintCString;
KivPrintWideCharStringFn kivPrintWideCharString;
KivWideCharStringToTextFn kivWideCharStringToText;
KivQuoteCharsFn kivQuoteChars;
KivQuoteCStringFn kivQuoteCString;

/* REAL value text and special REAL values */
KivPrintBinaryRealFn kivPrintBinaryReal;
KivBinaryRealToTextFn kivBinaryRealToText;
KivPrintDecimalRealFn kivPrintDecimalReal;
KivDecimalRealToTextFn kivDecimalRealToText;
KivClassifyRealFn kivClassifyReal;
KivRealHasClassFn kivRealHasClass;
KivRealClassWordFn kivRealClassWord;
KivSetRealClassFn kivSetRealClass;

/* XML text printer */
KivPrintXmlTextFn kivPrintXmlText;

#ifdef __cplusplus
}
#endif

#endif
