// A private X server for the desktop tests, the X tools that drive it, and
// the reading of its screenshots.
#ifndef FENK_TESTS_DESKTOP_X_SESSION_H
#define FENK_TESTS_DESKTOP_X_SESSION_H

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <vector>

namespace fenk::test {

// Xvfb on a display number of its own choosing. The server dies with the
// process that started it (it keeps the display open to the end).
class XServer {
public:
    // Empty when the server is running, else why it is not.
    std::string start();
    const std::string& display() const { return display_; }

private:
    pid_t pid_ = -1;
    std::string display_;
};

// Runs a shell command with a time limit; answers its standard output, and
// its exit status in status.
std::string runCommand(const std::string& command, int seconds, int* status = nullptr);

// A shell script that runs beside the test (it drives dialogs while the
// library waits in them). Ended, with everything it started, by finish().
class Helper {
public:
    explicit Helper(const std::string& script);
    ~Helper();
    // True once the script has ended.
    bool done();
    // Waits up to seconds for the script to end on its own; answers its exit
    // status, or -1 if it had to be stopped.
    int finish(int seconds);

private:
    pid_t pid_ = -1;
    int status_ = -1;
};

// A screenshot: 0xRRGGBB pixels, row by row.
struct Image {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels;
    uint32_t at(int x, int y) const { return pixels[static_cast<size_t>(y) * width + x]; }
};

// Reads an X window dump (as xwd writes it, 24 or 32 bits a pixel); false
// when the data is not one.
bool readWindowDump(const std::string& data, Image& image);

// A band of rows holding dark pixels, with the columns they span.
struct Band {
    int top;
    int bottom;
    int left;
    int right;
};

// The bands of dark pixels in columns [0, width), from the top.
std::vector<Band> darkBands(const Image& image, int width);

}  // namespace fenk::test

#endif
