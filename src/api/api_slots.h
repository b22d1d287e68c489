/* The slot routines of the API frame and world context, declared for the
 * table and for direct calls inside the library. C-compatible: the table is
 * written in C. */
#ifndef FENK_API_SLOTS_H
#define FENK_API_SLOTS_H

#include "fenkapi.h"

#ifdef __cplusplus
extern "C" {
#endif

/* World accessors */
KivCurrentRulesFn kivCurrentRules;
KivStoreLevelFn kivStoreLevel;
KivFetchLevelFn kivFetchLevel;
KivStoreLevelMaskFn kivStoreLevelMask;
KivStoreDecodeBufferLengthFn kivStoreDecodeBufferLength;
KivFetchDecodeBufferLengthFn kivFetchDecodeBufferLength;
KivStoreEncoderFlagsFn kivStoreEncoderFlags;
KivFetchEncoderFlagsFn kivFetchEncoderFlags;
KivStoreAllFlagsFn kivStoreAllFlags;
KivFetchAllFlagsFn kivFetchAllFlags;
KivStoreDecoderFlagsFn kivStoreDecoderFlags;
KivFetchDecoderFlagsFn kivFetchDecoderFlags;
KivMessageTextFn kivMessageText;
KivStoreWorkBufferFn kivStoreWorkBuffer;
KivStoreMemoryHooksFn kivStoreMemoryHooks;
KivFetchMemoryHooksFn kivFetchMemoryHooks;
KivStoreOutputFn kivStoreOutput;
KivFetchOutputFn kivFetchOutput;
KivStoreOutputHookFn kivStoreOutputHook;
KivFetchOutputHookFn kivFetchOutputHook;
KivStoreOpenTypeHandlersFn kivStoreOpenTypeHandlers;
KivFetchOpenTypeHandlersFn kivFetchOpenTypeHandlers;
KivFetchPrivateWordFn kivFetchPrivateWord;
KivFetchByteSettingFn kivFetchByteSetting;
KivStoreByteSettingFn kivStoreByteSetting;
KivStoreShortSettingFn kivStoreShortSetting;
KivFetchShortSettingFn kivFetchShortSetting;
KivInstallDefaultRoutinesFn kivInstallDefaultRoutines;
KivStoreDebugFlagsFn kivStoreDebugFlags;
KivFetchDebugFlagsFn kivFetchDebugFlags;
KivAllocateFn kivAllocate;
KivAllocateZeroedFn kivAllocateZeroed;
KivReleaseFn kivRelease;
KivReleaseThroughTableFn kivReleaseThroughTable;

/* Fixed answers */
KivAnswerZeroFn kivAnswerZero;
KivAnswerMinusOneFn kivAnswerMinusOne;
KivAnswerMinusOneWideFn kivAnswerMinusOneWide;
KivDoNothingFn kivDoNothing;
KivFixedCodeFn kivNoTrailingBuffer;
KivFixedCodeFn kivRepresentationUnsupported;
KivFixedCodeFn kivInitialBufferExists;
KivFixedCodeFn kivCannotOpenDecoderInput;
KivFixedCodeFn kivCannotCloseDecoderInput;
KivFixedCodeFn kivCannotOpenEncoderOutput;
KivFixedCodeFn kivCannotCloseEncoderOutput;

/* Companion forwarders (slots 222 to 227) */
KivCompanionEntryFn kivCompanionForward143;
KivCompanionEntryFn kivCompanionForward144;
KivCompanionEntryFn kivCompanionForward145;
KivCompanionEntryFn kivCompanionForward146;
KivCompanionEntryFn kivCompanionForward148;
KivCompanionEntryFn kivCompanionForward149;


/* Encoding rules and codec entry points */
KivSelectRulesFn kivSelectRules;
KivEncodePduFn kivEncodePdu;
KivDecodePduFn kivDecodePdu;
KivEncodeWithFlagsFn kivEncodeWithFlags;
KivDecodeWithFlagsFn kivDecodeWithFlags;
KivReleasePduFn kivReleasePdu;
KivMeasureEncodingFn kivMeasureEncoding;
KivBerElementLengthFn kivBerElementLength;
KivTranscodeToXmlFn kivTranscodeToXml;
KivTranscodeFromXmlFn kivTranscodeFromXml;
KivStoreXmlRulesFn kivStoreXmlRules;
KivChooseXmlRulesFn kivChooseXmlRules;
KivSkipLeadingOctetsFn kivSkipLeadingOctets;

/* Child worlds and further settings */
KivMakeChildWorldFn kivMakeChildWorld;
KivEndChildWorldFn kivEndChildWorld;
KivReleaseTempChainFn kivReleaseTempChain;
KivStorePrivatePointerFn kivStorePrivatePointer;
KivStorePrivateTableFn kivStorePrivateTable;
KivFetchPrivateWord1Fn kivFetchPrivateWord1;
KivStorePrivateWord1Fn kivStorePrivateWord1;
KivFetchPrivateWord2Fn kivFetchPrivateWord2;
KivStorePrivateWord2Fn kivStorePrivateWord2;
KivStoreEntryTableFn kivStoreEntryTable;

#ifdef __cplusplus
}
#endif

#endif
