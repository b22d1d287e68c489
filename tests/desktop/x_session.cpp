#include "x_session.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <thread>

namespace fenk::test {
namespace {

using Clock = std::chrono::steady_clock;

// Starts /bin/sh -c script in a process group of its own, which gets
// SIGKILL should the test process die first. With out, its standard output
// is the write end of a pipe whose read end goes to *out.
pid_t spawnShell(const std::string& script, int* out) {
    int fds[2] = {-1, -1};
    if (out && pipe(fds) != 0) return -1;
    pid_t parent = getpid();
    pid_t pid = fork();
    if (pid == 0) {
        setpgid(0, 0);
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (getppid() != parent) _exit(127);
        int null = open("/dev/null", O_RDWR);
        dup2(null, 0);
        dup2(out ? fds[1] : null, 1);
        dup2(null, 2);
        if (out) close(fds[0]);
        execl("/bin/sh", "sh", "-c", script.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    if (out) {
        close(fds[1]);
        if (pid < 0) close(fds[0]);
        else *out = fds[0];
    }
    if (pid > 0) setpgid(pid, pid);
    return pid;
}

// Waits for the child until the deadline; past it the whole group is killed.
int reap(pid_t pid, Clock::time_point deadline) {
    int status = 0;
    while (Clock::now() < deadline) {
        if (waitpid(pid, &status, WNOHANG) == pid) return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    kill(-pid, SIGKILL);
    waitpid(pid, &status, 0);
    return -1;
}

uint32_t bigEndian(const std::string& data, size_t offset) {
    auto byte = [&](size_t i) { return static_cast<uint32_t>(static_cast<unsigned char>(data[offset + i])); };
    return byte(0) << 24 | byte(1) << 16 | byte(2) << 8 | byte(3);
}

int luminance(uint32_t rgb) {
    return static_cast<int>(((rgb >> 16) & 0xFF) * 30 + ((rgb >> 8) & 0xFF) * 59 + (rgb & 0xFF) * 11) / 100;
}

}  // namespace

std::string XServer::start() {
    if (runCommand("command -v Xvfb", 10).empty()) return "Xvfb is not installed";
    int fds[2];
    if (pipe(fds) != 0) return "no pipe";
    pid_t parent = getpid();
    pid_ = fork();
    if (pid_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (getppid() != parent) _exit(127);
        close(fds[0]);
        int null = open("/dev/null", O_RDWR);
        dup2(null, 0);
        dup2(null, 1);
        dup2(null, 2);
        std::string fd = std::to_string(fds[1]);
        execlp("Xvfb", "Xvfb", "-displayfd", fd.c_str(), "-screen", "0", "1024x768x24", "-nolisten", "tcp",
               "-noreset", static_cast<char*>(nullptr));
        _exit(127);
    }
    close(fds[1]);
    if (pid_ < 0) {
        close(fds[0]);
        return "cannot fork";
    }
    // The server writes its display number once it accepts clients.
    std::string number;
    auto deadline = Clock::now() + std::chrono::seconds(30);
    while (Clock::now() < deadline && (number.empty() || number.back() != '\n')) {
        pollfd p{fds[0], POLLIN, 0};
        if (poll(&p, 1, 200) <= 0) continue;
        char c;
        if (read(fds[0], &c, 1) != 1) break;
        number += c;
    }
    close(fds[0]);
    if (number.empty() || number.back() != '\n') {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
        pid_ = -1;
        return "Xvfb did not start";
    }
    number.pop_back();
    display_ = ":" + number;
    return "";
}

std::string runCommand(const std::string& command, int seconds, int* status) {
    int out = -1;
    pid_t pid = spawnShell(command, &out);
    if (pid < 0) {
        if (status) *status = -1;
        return "";
    }
    std::string text;
    auto deadline = Clock::now() + std::chrono::seconds(seconds);
    char buffer[65536];
    while (Clock::now() < deadline) {
        pollfd p{out, POLLIN, 0};
        if (poll(&p, 1, 100) <= 0) continue;
        ssize_t got = read(out, buffer, sizeof buffer);
        if (got <= 0) break;
        text.append(buffer, static_cast<size_t>(got));
    }
    close(out);
    int result = reap(pid, deadline);
    if (status) *status = result;
    return text;
}

Helper::Helper(const std::string& script) : pid_(spawnShell(script, nullptr)) {}

Helper::~Helper() { finish(0); }

bool Helper::done() {
    int status = 0;
    if (pid_ <= 0) return true;
    if (waitpid(pid_, &status, WNOHANG) != pid_) return false;
    status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    kill(-pid_, SIGKILL);  // anything the script left running
    pid_ = -1;
    return true;
}

int Helper::finish(int seconds) {
    if (pid_ <= 0) return status_;
    status_ = reap(pid_, Clock::now() + std::chrono::seconds(seconds));
    kill(-pid_, SIGKILL);
    pid_ = -1;
    return status_;
}

bool readWindowDump(const std::string& data, Image& image) {
    if (data.size() < 100) return false;
    uint32_t headerSize = bigEndian(data, 0);
    uint32_t version = bigEndian(data, 4);
    uint32_t format = bigEndian(data, 8);
    uint32_t width = bigEndian(data, 16);
    uint32_t height = bigEndian(data, 20);
    uint32_t byteOrder = bigEndian(data, 28);
    uint32_t bitsPerPixel = bigEndian(data, 44);
    uint32_t bytesPerLine = bigEndian(data, 48);
    uint32_t colours = bigEndian(data, 76);
    constexpr uint32_t kZPixmap = 2;
    if (version != 7 || format != kZPixmap || (bitsPerPixel != 32 && bitsPerPixel != 24)) return false;
    size_t start = headerSize + static_cast<size_t>(colours) * 12;
    if (width == 0 || height == 0 || data.size() < start + static_cast<size_t>(bytesPerLine) * height) return false;
    image.width = static_cast<int>(width);
    image.height = static_cast<int>(height);
    image.pixels.assign(static_cast<size_t>(width) * height, 0);
    size_t step = bitsPerPixel / 8;
    for (uint32_t y = 0; y < height; ++y)
        for (uint32_t x = 0; x < width; ++x) {
            const auto* p = reinterpret_cast<const unsigned char*>(data.data() + start + y * bytesPerLine + x * step);
            // Masks are 0xFF0000, 0xFF00, 0xFF on this depth; byte order 0 is
            // least significant first.
            uint32_t pixel = byteOrder == 0 ? (p[2] << 16 | p[1] << 8 | p[0]) : (p[step - 3] << 16 | p[step - 2] << 8 | p[step - 1]);
            image.pixels[static_cast<size_t>(y) * width + x] = pixel;
        }
    return true;
}

std::vector<Band> darkBands(const Image& image, int width) {
    std::vector<Band> bands;
    bool inBand = false;
    for (int y = 0; y < image.height; ++y) {
        int left = -1;
        int right = -1;
        for (int x = 0; x < std::min(width, image.width); ++x)
            if (luminance(image.at(x, y)) < 96) {
                if (left < 0) left = x;
                right = x;
            }
        if (left < 0) {
            inBand = false;
            continue;
        }
        if (!inBand) bands.push_back(Band{y, y, left, right});
        Band& band = bands.back();
        band.bottom = y;
        band.left = std::min(band.left, left);
        band.right = std::max(band.right, right);
        inBand = true;
    }
    return bands;
}

}  // namespace fenk::test
