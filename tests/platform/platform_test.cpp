// The host-system layer: temporary files, the recursive lock, thread ids.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <thread>

#include "platform/lock.h"
#include "platform/temp_file.h"
#include "platform/thread_ids.h"

TEST(TempFile, IsNewPrivateAndReadWrite) {
    char first[fenk::kTempPathCapacity];
    char second[fenk::kTempPathCapacity];
    FILE* a = fenk::openTempFile(first);
    FILE* b = fenk::openTempFile(second);
    ASSERT_NE(a, nullptr);
    ASSERT_NE(b, nullptr);
    EXPECT_STRNE(first, second);
    struct stat info{};
    ASSERT_EQ(stat(first, &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u);
    std::fputs("line\n", a);
    std::rewind(a);
    char back[16] = {};
    ASSERT_NE(std::fgets(back, sizeof back, a), nullptr);
    EXPECT_STREQ(back, "line\n");
    std::fclose(a);
    std::fclose(b);
    unlink(first);
    unlink(second);
}

TEST(TempFile, FailsCleanlyWhereNoFileCanBeMade) {
    const char* saved = std::getenv("TMPDIR");
    std::string keep = saved ? saved : "";
    setenv("TMPDIR", "/nonexistent/fenk", 1);
    char path[fenk::kTempPathCapacity];
    EXPECT_EQ(fenk::openTempFile(path), nullptr);
    if (saved) setenv("TMPDIR", keep.c_str(), 1);
    else unsetenv("TMPDIR");
}

TEST(Lock, IsRecursiveAndAbsentLockFails) {
    KivCriticalSection lock;
    ASSERT_TRUE(fenk::createLock(&lock));
    EXPECT_TRUE(fenk::enterLock(&lock));
    EXPECT_TRUE(fenk::enterLock(&lock));
    fenk::leaveLock(&lock);
    fenk::leaveLock(&lock);
    EXPECT_FALSE(fenk::enterLock(nullptr));
    fenk::destroyLock(&lock);
}

TEST(ThreadIds, DifferPerThreadAndShareTheProcess) {
    uint32_t mine = fenk::currentThreadId();
    uint32_t other = 0, otherProcess = 0;
    std::thread t([&] {
        other = fenk::currentThreadId();
        otherProcess = fenk::currentProcessId();
    });
    t.join();
    EXPECT_NE(mine, other);
    EXPECT_EQ(otherProcess, fenk::currentProcessId());
    EXPECT_EQ(fenk::currentProcessId(), static_cast<uint32_t>(getpid()));
}
