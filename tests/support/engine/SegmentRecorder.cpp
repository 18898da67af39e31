// Loaded before the speech library, it writes down what the engine recognised: each segment that a program
// asks for, as a line "INDEX LENGTH" and so many bytes, into the file that TULVANE_TEST_SEGMENTS names. A
// test compares with it what arrived, since no program of ours writes a transcript anywhere. The first
// segment takes TULVANE_TEST_PAUSE milliseconds longer, where that is set: time in which the engine is at
// work.
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

struct whisper_context;

namespace {

// Opened at once: the thread that asks for segments may open nothing for writing.
int openFile()
{
    const char* const name = std::getenv("TULVANE_TEST_SEGMENTS");
    return name == nullptr ? -1 : open(name, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
}

long pauseOf(const char* text)
{
    return text == nullptr ? 0 : std::strtol(text, nullptr, 10);
}

const int file = openFile();
const long milliseconds = pauseOf(std::getenv("TULVANE_TEST_PAUSE"));

} // namespace

extern "C" __attribute__((visibility("default"))) const char*
whisper_full_get_segment_text(whisper_context* context, int index)
{
    using Original = const char* (*)(whisper_context*, int);
    static const auto original =
        reinterpret_cast<Original>(dlsym(RTLD_NEXT, "whisper_full_get_segment_text"));
    const char* const text = original(context, index);
    if (index == 0 && milliseconds > 0)
        usleep(static_cast<useconds_t>(milliseconds * 1000));
    if (file >= 0 && text != nullptr) {
        dprintf(file, "%d %zu\n", index, std::strlen(text));
        [[maybe_unused]] const ssize_t written = write(file, text, std::strlen(text));
    }
    return text;
}
