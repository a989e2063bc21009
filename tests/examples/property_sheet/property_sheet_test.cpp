// The example as its user sees it: another program, answered through its windows.
#include <gtest/gtest.h>

#include <string>

#include "resource.h"
#include "support/window_kit.h"

// After windows.h.
#include <commctrl.h>

namespace {

using namespace toolbox::testing;

/// The example while it runs, in the folder of this program.
class Example {
  public:
    explicit Example(const std::string& arguments) {
        char own[MAX_PATH] = "";
        GetModuleFileNameA(nullptr, own, sizeof own);
        const std::string path(own);
        std::string command =
            '"' + path.substr(0, path.find_last_of('\\') + 1) + "property_sheet.exe\" " + arguments;
        SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
        CreatePipe(&output_, &input_, &inherited, 0);
        STARTUPINFOA start{};
        start.cb = sizeof start;
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdOutput = start.hStdError = input_;
        EXPECT_TRUE(CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                   nullptr, &start, &process_));
        CloseHandle(input_);
    }
    ~Example() {
        TerminateProcess(process_.hProcess, 99);
        CloseHandle(process_.hProcess);
        CloseHandle(process_.hThread);
        CloseHandle(output_);
    }
    Example(const Example&) = delete;
    Example& operator=(const Example&) = delete;

    /// A visible window of the program; null when there is none.
    [[nodiscard]] HWND window(const char* windowClass) const {
        for (HWND found = nullptr;
             (found = FindWindowExA(nullptr, found, windowClass, nullptr)) != nullptr;) {
            DWORD process = 0;
            GetWindowThreadProcessId(found, &process);
            if (process == process_.dwProcessId && IsWindowVisible(found)) return found;
        }
        return nullptr;
    }
    [[nodiscard]] HWND sheet() const { return window("#32770"); }
    /// A control of the page that is shown; null when it has none.
    [[nodiscard]] HWND control(int id) const {
        for (HWND page = nullptr;
             (page = FindWindowExA(sheet(), page, "#32770", nullptr)) != nullptr;)
            if (IsWindowVisible(page) && GetDlgItem(page, id)) return GetDlgItem(page, id);
        return nullptr;
    }
    [[nodiscard]] bool has(int id) const {
        return pumpUntil([&] { return control(id) != nullptr; });
    }
    void enter(int id, const char* text) const {
        SendMessageA(control(id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text));
    }
    [[nodiscard]] std::string entry(int id) const {
        char text[64] = "";
        SendMessageA(control(id), WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
        return text;
    }
    /// Confirms the sheet, which shows a balloon instead.
    [[nodiscard]] bool isRefused() const {
        SendMessageA(sheet(), WM_COMMAND, IDOK, 0);
        return pumpUntil([&] { return window(TOOLTIPS_CLASSA) != nullptr; });
    }
    DWORD end() {
        EXPECT_EQ(WaitForSingleObject(process_.hProcess, 15000), DWORD{WAIT_OBJECT_0});
        DWORD code = 99;
        GetExitCodeProcess(process_.hProcess, &code);
        return code;
    }
    [[nodiscard]] std::string printed() const {
        char text[256] = "";
        DWORD length = 0;
        EXPECT_TRUE(ReadFile(output_, text, sizeof text - 1, &length, nullptr));
        return text;
    }

  private:
    HANDLE output_ = nullptr, input_ = nullptr;
    PROCESS_INFORMATION process_{};
};

TEST(PropertySheetExample, EditsABeamInBothLanguages) {
    struct Case {
        const char *language, *title, *result;
    };
    const Case cases[] = {
        {"en", "Beam properties", "Girder: 8.50 m of S235, 10.00 kN/m from 5.00 m to 7.50 m\r\n"},
        {"fr", "Propri\351t\351s de la poutre",
         "Girder : 8.50 m en S235, 10.00 kN/m de 5.00 m \340 7.50 m\r\n"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.language);
        Example example(c.language);
        ASSERT_TRUE(example.has(IDC_SPAN));
        EXPECT_EQ(textOf(example.sheet()), c.title);
        EXPECT_EQ(example.entry(IDC_SPAN), "6.00");
        example.enter(IDC_NAME, "Girder");
        example.enter(IDC_SPAN, "8,5");
        SendMessageA(example.sheet(), PSM_SETCURSEL, 1, 0);
        ASSERT_TRUE(example.has(IDC_FROM));
        example.enter(IDC_FROM, "5");
        example.enter(IDC_TO, "3");  // before the start
        ASSERT_TRUE(example.isRefused());
        example.enter(IDC_TO, "9");  // off the beam
        EXPECT_EQ(example.window(TOOLTIPS_CLASSA), nullptr);
        ASSERT_TRUE(example.isRefused());
        example.enter(IDC_TO, "7.5");
        SendMessageA(example.sheet(), WM_COMMAND, IDOK, 0);
        EXPECT_EQ(example.end(), 0u);
        EXPECT_EQ(example.printed(), c.result);
    }
}

TEST(PropertySheetExample, PrintsNothingWhenItIsCancelled) {
    Example example("en");
    ASSERT_TRUE(example.has(IDC_SPAN));
    PostMessageA(example.sheet(), WM_CLOSE, 0, 0);
    EXPECT_EQ(example.end(), 1u);
}

}  // namespace
