// The streams, the signals and the bar of progress: what the two systems do differently is here.
#include "terminal/terminal.h"

#include <atomic>
#include <csignal>
#include <cstdio>

#include "terminal/characters.h"
#include "terminal/failure.h"

#if defined(_WIN32)
#include <fcntl.h>
#include <io.h>

#include "toolbox/win_types.h"
// clang-format off
#include <shellapi.h>  // stands on the types above
// clang-format on
#else
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#endif

namespace tbfile {
namespace {

std::atomic<bool> interrupted = false;
static_assert(std::atomic<bool>::is_always_lock_free);  // a signal handler may set it

#if defined(_WIN32)

BOOL WINAPI interrupt(DWORD event) {
    constexpr DWORD kTimeToEnd = 5000;
    interrupted = true;
    // Where the console goes away the program ends with this call: it has until then to tidy up.
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
        ::WaitForSingleObject(::GetCurrentProcess(), kTimeToEnd);
    return TRUE;
}

void noteInterrupts() {
    ::SetConsoleCtrlHandler(interrupt, TRUE);
}

#else

extern "C" void interrupt(int) {
    interrupted = true;
}

void noteInterrupts() {
    static_cast<void>(std::signal(SIGINT, interrupt));
    static_cast<void>(std::signal(SIGTERM, interrupt));
    // Who started the program so that it outlives the terminal does not want it to end with that.
    if (std::signal(SIGHUP, interrupt) == SIG_IGN) static_cast<void>(std::signal(SIGHUP, SIG_IGN));
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
}

/// Opened the wrong way round, so that using it fails as it would have.
void fillStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (::fcntl(stream, F_GETFD) == -1 && errno == EBADF)
            static_cast<void>(::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY));
}

#endif

bool goesToTerminal(std::FILE* stream) {
#if defined(_WIN32)
    return _isatty(_fileno(stream)) != 0;
#else
    return ::isatty(::fileno(stream)) != 0;
#endif
}

/// What the terminal shows in its last line, which the bar and printed lines share.
bool barShown = false;
bool lineBegun = false;

bool printsToTerminal() {
    static const bool kPrints = goesToTerminal(stdout);
    return kPrints;
}

void clearBar() {
    if (barShown) printError("\r" + std::string(50, ' ') + "\r");
    barShown = false;
}

}  // namespace

Terminal::Terminal() {
    noteInterrupts();
#if defined(_WIN32)
    before_ = GetConsoleOutputCP();
    SetConsoleOutputCP(CP_UTF8);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
#else
    fillStandardStreams();
#endif
}

Terminal::~Terminal() {
#if defined(_WIN32)
    if (before_ != 0) SetConsoleOutputCP(before_);
#endif
}

std::vector<std::string> arguments(int count, char** given) {
#if defined(_WIN32)
    static_cast<void>(count);
    static_cast<void>(given);
    int all = 0;
    wchar_t** wide = ::CommandLineToArgvW(::GetCommandLineW(), &all);
    std::vector<std::string> list;
    for (int i = 1; i < all; ++i) list.push_back(utf8Of(wide[i]));
    ::LocalFree(wide);
    return list;
#else
    return {given + 1, given + count};
#endif
}

void print(std::string_view utf8) {
    if (printsToTerminal() && !utf8.empty()) {
        clearBar();
        lineBegun = utf8.back() != '\n';
    }
    std::fwrite(utf8.data(), 1, utf8.size(), stdout);
}

void printError(std::string_view utf8) {
    std::fflush(stdout);
    std::fwrite(utf8.data(), 1, utf8.size(), stderr);
    std::fflush(stderr);
}

bool finishOutput() {
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

void stopIfUnread() {
    if (std::ferror(stdout)) throw Failure(Text::outputFailed);
}

void stopIfInterrupted() {
    if (interrupted) throw Failure(Text::interrupted);
}

Progress::Progress(std::uint64_t total)
    : total_(total),
      shows_(goesToTerminal(stderr)),
      next_(std::chrono::steady_clock::now() + std::chrono::milliseconds(500)) {}

Progress::~Progress() {
    clearBar();
}

void Progress::update(std::uint64_t done) {
    stopIfInterrupted();
    if (!shows_ || total_ == 0 || lineBegun) return;
    const auto now = std::chrono::steady_clock::now();
    if (now < next_) return;
    next_ = now + std::chrono::milliseconds(100);
    constexpr std::size_t kWidth = 40;
    const auto part = static_cast<std::size_t>(done >= total_ ? kWidth : done * kWidth / total_);
    const std::string percent = std::to_string(done >= total_ ? 100 : done * 100 / total_);
    printError("\r[" + std::string(part, '#') + std::string(kWidth - part, '.') + "] " + percent +
               " %");
    barShown = true;
}

}  // namespace tbfile
