// A world for fuzz targets whose printed output is kept in memory and taken
// after each call.
#ifndef FENK_FUZZ_CAPTURE_H
#define FENK_FUZZ_CAPTURE_H

#include <cstdio>
#include <cstdlib>
#include <string>

#include "fenkapi.h"
#include "kivapit.h"

struct FuzzCapture {
    KivGlobal world;
    char* buffer = nullptr;
    size_t size = 0;
    FILE* stream = nullptr;

    FuzzCapture() {
        if (kivCompanionInitWorld(&world, nullptr) != 0) std::abort();
        stream = open_memstream(&buffer, &size);
        world.outputStream = stream;
    }
    // Everything printed since the last take.
    std::string take() {
        std::fflush(stream);
        std::string text(buffer, size);
        std::rewind(stream);
        return text;
    }
};

#endif
