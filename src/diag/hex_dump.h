// The headings that frame a dump in the framed layout.
#ifndef FENK_DIAG_HEX_DUMP_H
#define FENK_DIAG_HEX_DUMP_H

#include "fenkapi.h"

namespace fenk {

// The column titles and the rule under them.
void printDumpHeading(KivGlobal* world);
// The rule alone, which also closes a framed dump.
void printDumpRule(KivGlobal* world);

}  // namespace fenk

#endif
