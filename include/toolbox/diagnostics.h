// Diagnostics: traces by category, failed assertions, and a stopwatch of named events.
//
// Traces and the Debug functions show nothing by themselves; setTraceSink makes traces visible. A
// failed assertion explains itself in a message box and ends the program, unless a handler that the
// application has set decides otherwise. All calls come from one thread.
#pragma once

#include <cstdint>
#include <cstdio>
#include <iosfwd>
#include <memory>

#include "toolbox/export.h"

#if defined(__GNUC__)
/// Lets the compiler compare a template with the arguments after it.
#define TB_PRINTS(text, first) __attribute__((format(printf, text, first)))
#else
#define TB_PRINTS(text, first)
#endif

/// Traces in printf's templates, each of some categories: the bits of a mask of 32.
class TB_API CTvTrace {
  public:
    /// The categories that are traced; none at the start.
    static void SetCurrentTraceCategoryEnabled(unsigned long mask);
    /// The mask that was set last.
    [[nodiscard]] static unsigned long GetCurrentTraceCategoryEnabled();

    /// Prints the text when `category` has a bit of the mask, cut at 511 characters, and passes it
    /// to the sink. Without a sink it is printed for nothing; with a category that is
    /// not traced the arguments are not looked at.
    static void Trace(unsigned long category, const char* format, ...) TB_PRINTS(2, 3);

  private:
    static std::uint32_t m_eCurrentTraceCategoryEnabled;
};

// Entry points that do nothing: applications call them throughout.
TB_API void Debug(const char* format, ...) TB_PRINTS(1, 2);
TB_API void Debug2(const char* format, ...) TB_PRINTS(1, 2);
TB_API void Debug3(const char* format, ...) TB_PRINTS(1, 2);
TB_API void Debug4(const char* format, ...) TB_PRINTS(1, 2);
TB_API void InitConsole();
TB_API void DestroyConsole();

/// Reports an assertion that failed and ends the program with abort(). The box shows the texts 1060
/// to 1066 of the application's resources, the program's path, file, line and expression. Its two
/// other answers, which the box does not offer, count all the same: Abort ends the program with
/// SIGABRT and exit code 3, Ignore returns.
TB_API void _tvassert(const char* expression, const char* file, int line);

/// Checks an expression in every build, debug or release.
#define TVASSERT(expression) \
    ((expression) ? static_cast<void>(0) : _tvassert(#expression, __FILE__, __LINE__))

namespace toolbox {

/// Gets each trace that is printed. A trace made by a sink is dropped. A sink may set another one
/// or none, which counts from the next trace on.
using TraceSink = void (*)(unsigned long category, const char* text);
/// Null, the initial state, is no sink. Returns the sink before.
TB_API TraceSink setTraceSink(TraceSink sink);

/// What is known of an assertion that failed.
struct FailedAssertion {
    const char* expression;  ///< as the source has it
    const char* file;        ///< of the source
    int line;                ///< in that file, from 1
};

/// What a handler decides.
enum class AssertionAnswer {
    explain,  ///< the box is shown and the program ends, as without a handler
    end,      ///< the program ends at once, with abort()
    goOn      ///< the assertion is ignored
};

/// Decides about an assertion that failed. One that fails in a handler is not brought to it. A
/// handler may set another one or none.
using AssertionHandler = AssertionAnswer (*)(const FailedAssertion& failed);
/// Null, the initial state, is no handler. Returns the handler before.
TB_API AssertionHandler setAssertionHandler(AssertionHandler handler);

}  // namespace toolbox

/// A stopwatch: notes named events with their times and prints them as a table. Times are whole
/// seconds since the first event, cut rather than rounded.
class TB_API Benchmark {
  public:
    /// Records only while active.
    explicit Benchmark(char active = 1);
    ~Benchmark();
    Benchmark(const Benchmark&) = delete;
    Benchmark& operator=(const Benchmark&) = delete;

    /// Begins (non-zero) or ceases to record; what was recorded stays.
    void activate(char active) { active_ = active; }
    /// Forgets all events; active or not as before.
    void reset();

    /// Notes an event now; the first 39 characters of its name are kept. When there is no memory
    /// for it, it is dropped with a line on the standard error output.
    void set(const char* name);

    // Events noted, and events that there is room for.
    [[nodiscard]] int getCount() const { return count_; }
    [[nodiscard]] int getCapacity() const { return capacity_; }

    // A heading, then a line for each event with its time, before it (but the first) a line with
    // the time since the event before. Nothing when there is no event.
    void print(std::FILE* out) const;
    void print(std::ostream& out) const;

  private:
    struct Event {
        char name[40];
        double time;
    };
    template <class Write>
    void printLines(const Write& write) const;
    [[nodiscard]] bool makeRoom();

    char active_;
    std::int32_t start_ = 0;
    std::int32_t count_ = 0;
    std::int32_t capacity_ = 0;
    std::unique_ptr<Event[]> events_;
};
