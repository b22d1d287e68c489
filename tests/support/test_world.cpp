#include "test_world.h"

#include <cstdlib>
#include <stdexcept>

namespace fenk::test {

TestWorld::TestWorld(void* controlTable) {
    if (kivCompanionInitWorld(&world_, controlTable) != 0)
        throw std::runtime_error("kivCompanionInitWorld failed");
    stream_ = open_memstream(&buffer_, &size_);
    world_.outputStream = stream_;
}

TestWorld::~TestWorld() {
    kivCompanionEndWorld(&world_);
    if (stream_) std::fclose(stream_);
    std::free(buffer_);
}

std::string TestWorld::output() {
    std::fflush(stream_);
    return std::string(buffer_, size_);
}

void TestWorld::clearOutput() {
    std::fflush(stream_);
    std::rewind(stream_);
    std::fflush(stream_);
}

}  // namespace fenk::test
