/* A consumer of the installed package: makes a world and calls a few slots. */
#include <stdio.h>
#include <string.h>

#include "fenkapi.h"
#include "kivapit.h"

int main(void) {
    KivGlobal world;
    if (kivCompanionInitWorld(&world, NULL) != 0) return 1;
    int ok = kivStoreLevel(&world, 2) == 0 && kivFetchLevel(&world) == 2 &&
             kivStoreEncoderFlags(&world, 0x20) == 13 &&
             strncmp(kivMessageText(&world), "E0108S:", 7) == 0;
    kivCompanionEndWorld(&world);
    puts(ok ? "consumer ok" : "consumer FAILED");
    return ok ? 0 : 1;
}
