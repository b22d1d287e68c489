// The host-system layer: temporary files, the recursive lock, thread ids.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
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

TEST(ThreadIds, AForkedChildSeesItsOwnIdentifiers) {
    uint32_t parent = fenk::currentProcessId();
    fenk::currentThreadId();
    int fds[2];
    ASSERT_EQ(pipe(fds), 0);
    pid_t child = fork();
    if (child == 0) {
        uint32_t ids[2] = {fenk::currentProcessId(), fenk::currentThreadId()};
        ssize_t n = write(fds[1], ids, sizeof ids);
        _exit(n == sizeof ids ? 0 : 1);
    }
    uint32_t ids[2] = {};
    ASSERT_EQ(read(fds[0], ids, sizeof ids), static_cast<ssize_t>(sizeof ids));
    close(fds[0]);
    close(fds[1]);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(ids[0], static_cast<uint32_t>(child));
    EXPECT_EQ(ids[1], static_cast<uint32_t>(child)) << "the child's only thread has the process's id";
    EXPECT_NE(ids[0], parent);
}
