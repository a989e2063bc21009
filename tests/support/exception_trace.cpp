// Prints where a test program of Windows met a fault, on stderr: the code, and of each place on the
// stack the module and where that lies. It looks at faults before anybody else does, so one that
// happens while the program ends (destructors, DLLs that are detached) is told too. ctest shows
// what a test printed only when it failed; a fault that somebody handles costs a few lines that
// nobody sees.
#include <windows.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>

namespace {

constexpr int kMostTraces = 5;     // a fault in a handler's handler would go on for ever
constexpr ULONG kMostFrames = 32;  // the first few are this handler and the system's dispatcher

/// The C++ run-time's and the system's own memory may be gone at a program's end: the stack serves.
[[gnu::format(gnu_printf, 1, 2)]] void print(const char* format, ...) {
    char text[MAX_PATH + 100];
    va_list values;
    va_start(values, format);
    std::vsnprintf(text, sizeof text, format, values);
    va_end(values);
    DWORD written;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), text, static_cast<DWORD>(std::strlen(text)), &written,
              nullptr);
}

void printPlace(const void* address) {
    MEMORY_BASIC_INFORMATION region{};
    VirtualQuery(address, &region, sizeof region);
    char name[MAX_PATH] = "(no module)";
    GetModuleFileNameA(static_cast<HMODULE>(region.AllocationBase), name, sizeof name - 1);
    print("from %p, in %s at %p\n", address, name, region.AllocationBase);
}

LONG CALLBACK trace(EXCEPTION_POINTERS* fault) {
    static volatile LONG traces = 0;
    const EXCEPTION_RECORD& record = *fault->ExceptionRecord;
    // Errors of the system only: what is thrown, and notes to debuggers, have other bits. A stack
    // that overflowed has no room for a trace.
    if (record.ExceptionCode >> 28 != 0xC || record.ExceptionCode == EXCEPTION_STACK_OVERFLOW ||
        InterlockedIncrement(&traces) > kMostTraces)
        return EXCEPTION_CONTINUE_SEARCH;

    print("\nexception 0x%08lx, thread %lu\n", record.ExceptionCode, GetCurrentThreadId());
    printPlace(record.ExceptionAddress);
    void* frames[kMostFrames];
    const ULONG count = CaptureStackBackTrace(0, kMostFrames, frames, nullptr);
    for (ULONG i = 0; i < count; ++i) printPlace(frames[i]);
    return EXCEPTION_CONTINUE_SEARCH;
}

const PVOID installed = AddVectoredExceptionHandler(1, trace);

}  // namespace
