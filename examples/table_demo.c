/* A small application: make a world, show which slots of the table are
 * filled, family by family, and call a few accessors through the table. */
#include <stdio.h>

#include "fenkapi.h"
#include "kivapit.h"

struct Family {
    const char* name;
    const char* slots; /* ranges "a-b" and single slots, comma-separated */
};

static const struct Family families[] = {
    {"rule selection", "0"},
    {"world accessors", "1-4,10-18,44,54-62,73,90-92,96,235,236,242-244"},
    {"fixed answers", "5,36-43,45-53,86,87"},
    {"codec entry points", "6,7,20,21,23,34,35,192,193,219,220,232"},
    {"raising and guarded print", "22,105,172,177,230,231"},
    {"return-code texts", "292"},
    {"tracing and dumps", "19,32,33,69,70,237-240,246,249,250"},
    {"companion forwarders", "222-227"},
    {"trace store and window", "25-29,31"},
    {"value printer", "115-129,134-148,194,213-218,221,228,229,233,291"},
    {"time types", "195-212,234,302-340"},
    {"child worlds and settings", "94,95,149,167,176,178,182-185,191,301"},
    {"value utilities", "65-68,88,89,100,101,113,114,150-165,169-171,173,179-181,241,251-290,298-300,341"},
    {"working memory", "24,97-99,102-104,106-112,130-133,166,168,174,175,187-190,245,247,248"},
};

static void countFamily(const char* list, int* filled, int* total) {
    const char* p = list;
    *filled = *total = 0;
    while (*p) {
        int first = 0, last;
        while (*p >= '0' && *p <= '9') first = first * 10 + (*p++ - '0');
        last = first;
        if (*p == '-') {
            ++p;
            last = 0;
            while (*p >= '0' && *p <= '9') last = last * 10 + (*p++ - '0');
        }
        for (int s = first; s <= last; ++s) {
            ++*total;
            if (apiTbl[s]) ++*filled;
        }
        if (*p == ',') ++p;
    }
}

int main(void) {
    KivGlobal world;
    if (kivCompanionInitWorld(&world, NULL) != 0) {
        fprintf(stderr, "cannot make a world\n");
        return 1;
    }

    printf("apiTbl: %d slots\n", KIV_SLOT_COUNT);
    int allFilled = 0;
    for (size_t i = 0; i < sizeof families / sizeof families[0]; ++i) {
        int filled, total;
        countFamily(families[i].slots, &filled, &total);
        allFilled += filled;
        printf("  %-28s %3d of %3d filled\n", families[i].name, filled, total);
    }
    printf("  %-28s %3d of 316\n\n", "in all", allFilled);

    printf("printLimit after the defaults: %lld\n", (long long)world.printLimit);
    kivStoreLevel(&world, 3);
    printf("level 3 -> levelMask 0x%X, fetched back as level %d\n",
           (unsigned)world.privateState->levelMask, kivFetchLevel(&world));
    int32_t code = kivStoreEncoderFlags(&world, 0x40000020u);
    printf("encoder flags 0x40000020 -> stored 0x%08X, answer %d\n",
           (unsigned)kivFetchEncoderFlags(&world), code);
    printf("message: %s", kivMessageText(&world));
    printf("slot 37 answers %lld; slot 36 answers 0x%08X\n",
           (long long)KIV_SLOT(KivAnswerMinusOneWideFn, 37)(),
           (unsigned)KIV_SLOT(KivAnswerMinusOneFn, 36)());

    kivCompanionEndWorld(&world);
    return 0;
}
