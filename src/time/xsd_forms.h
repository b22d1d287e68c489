// Pieces shared by the writers and parsers of the XML Schema calendar forms.
#ifndef FENK_TIME_XSD_FORMS_H
#define FENK_TIME_XSD_FORMS_H

#include <cstdint>

#include "fenkapi.h"

namespace fenk {

// Zone offsets are minutes east of UTC within 14 hours, or a sentinel.
constexpr int32_t kZoneNone = KIV_ZONE_NONE;
constexpr int32_t kZoneUtc = KIV_ZONE_UTC;
constexpr int32_t kZoneLimit = 840;

}  // namespace fenk

#endif
