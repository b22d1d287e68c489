// Line breaks of printed values, indented two blanks per level. A closing
// level (negative change) takes effect on the line it starts; an opening one
// only from the next line break on.
#include "print/print_sink.h"
#include "print/print_slots.h"

void kivPrintNewLine(KivGlobal* world, int32_t change) {
    if (change < 0) world->printIndent += change;
    kivCompanionPrint(world, "\n%*s", 2 * world->printIndent, "");
    if (change > 0) world->printIndent += change;
}
