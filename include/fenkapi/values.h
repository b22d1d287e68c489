/* fenkapi: Value utilities — copy and comparison, constructors, GeneralizedTime and UTCTime conversions, constraint checks and name lookup.
 * Slot numbers, routine types, records and call helpers of the subsystem.
 * Included by fenkapi.h. */
#ifndef FENKAPI_VALUES_H
#define FENKAPI_VALUES_H

#ifdef __cplusplus
extern "C" {
#endif

/* KivTimeStruct: the C structure of UTCTime and GeneralizedTime values (18
 * bytes). For UTCTime, year holds the two-digit value. zoneOffset is the
 * offset from UTC in minutes (local time = UTC + zoneOffset); isUtc is 1 for
 * a time in UTC ('Z'). */
typedef struct KivTimeStruct {
    uint16_t year;
    uint16_t month;
    uint16_t day;
    uint16_t hour;
    uint16_t minute;
    uint16_t second;
    uint16_t milliseconds;
    int16_t zoneOffset;
    uint8_t isUtc;
} KivTimeStruct;

KIV_STATIC_ASSERT(sizeof(KivTimeStruct) == 18, "KivTimeStruct is 18 bytes");
KIV_STATIC_ASSERT(offsetof(KivTimeStruct, milliseconds) == 12, "milliseconds");
KIV_STATIC_ASSERT(offsetof(KivTimeStruct, zoneOffset) == 14, "zoneOffset");
KIV_STATIC_ASSERT(offsetof(KivTimeStruct, isUtc) == 16, "isUtc");
/* end of KivTimeStruct */

/* Open-type record: the PDU number of the decoded value (0 if none), the
 * length of the encoding, the encoded octets and the decoded value (each may
 * be null). A user field of 8 bytes follows when the world's settings ask
 * for it; this record covers the common 24 bytes. */
typedef struct KivOpenType {
    int32_t pduNum;
    uint32_t length;
    uint8_t* encoded;
    void* decoded;
} KivOpenType;

KIV_STATIC_ASSERT(sizeof(KivOpenType) == 24, "open-type record is 24 bytes");
KIV_STATIC_ASSERT(offsetof(KivOpenType, encoded) == 8, "encoded");
KIV_STATIC_ASSERT(offsetof(KivOpenType, decoded) == 16, "decoded");
/* end of the open-type record */

#ifdef __cplusplus
}
#endif

#endif
