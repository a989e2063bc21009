// Text on the standard output and error, in UTF-8, and what the terminal is told of long work.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tbfile {

/// Makes the terminal show UTF-8 for its lifetime, and files get line ends as they are written.
/// From then on the user's wish to end is noted, and a pipe that nobody reads any more is an output
/// that fails. Must come before any file is opened: a standard stream that is closed is made one
/// that takes nothing, so that no file gets its number.
class Terminal {
  public:
    Terminal();
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

  private:
    unsigned before_ = 0;
};

/// The program's arguments in UTF-8, without its name.
[[nodiscard]] std::vector<std::string> arguments(int count, char** given);

void print(std::string_view utf8);
void printError(std::string_view utf8);
/// Writes what print() still holds; false when the standard output took less than was printed.
[[nodiscard]] bool finishOutput();
/// Throws Failure when that is known already. For commands that only print: the others go on, so
/// that the file that they make becomes whole.
void stopIfUnread();

/// Throws Failure when the user wants the program to end.
void stopIfInterrupted();

/// A bar on the standard error, where that is a terminal, for work that takes longer than a moment.
/// print() makes room for what it prints to a terminal.
/// Also where work notices that the user wants it to end: update() calls stopIfInterrupted().
class Progress {
  public:
    explicit Progress(std::uint64_t total);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void update(std::uint64_t done);

  private:
    std::uint64_t total_;
    bool shows_;
    std::chrono::steady_clock::time_point next_;
};

}  // namespace tbfile
