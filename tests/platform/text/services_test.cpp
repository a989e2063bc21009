// What every implementation of the text, prompt and system services keeps to. Runs against the
// host's own.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <tuple>

#include "toolbox/platform.h"
#include "toolbox/text.h"

namespace toolbox::platform {
namespace {

std::string loaded(unsigned int id, Language language, HINSTANCE module = nullptr) {
    char text[200];
    const int length = current().strings->load(module, id, language, text, sizeof text);
    EXPECT_EQ(text[length], '\0');
    return {text, static_cast<std::size_t>(length)};
}

TEST(StringResources, GivesTheLanguageAskedFor) {
    for (const auto& [id, french, english] : {std::tuple{1063u, "Ligne\240: ", "Line: "},
                                              {1097u, "\340", "to"},
                                              {4000000000u, "", ""}}) {
        EXPECT_EQ(loaded(id, Language::french), french);
        EXPECT_EQ(loaded(id, Language::english), english);
    }
}

TEST(StringResources, CutsAndTerminates) {
    char text[] = "GGGGGG";
    EXPECT_EQ(current().strings->load(nullptr, 1019, Language::english, text, 0), 0);
    EXPECT_EQ(text[0], 'G');
    EXPECT_EQ(current().strings->load(nullptr, 1019, Language::system, text, 5), 4);
    EXPECT_EQ(text[4], '\0');
    EXPECT_EQ(text[5], 'G');
}

#if !defined(_WIN32)
TEST(StringResources, RegisteredTablesStandBeforeTheSuppliedOne) {
    static constexpr auto kOwn =
        std::to_array<StringEntry>({{1019, "table", nullptr}, {7, nullptr, "seven"}});
    const HINSTANCE module = registerStrings(kOwn);
    EXPECT_EQ(loaded(1019, Language::english, module), "table");
    EXPECT_EQ(loaded(7, Language::french, module), "seven");

    setApplicationStrings(kOwn);
    EXPECT_EQ(loaded(1019, Language::english), "table");
    EXPECT_EQ(loaded(1095, Language::english), "and");
    setApplicationStrings({});
    EXPECT_EQ(loaded(1019, Language::english), "Master index");
    EXPECT_EQ(loaded(1019, Language::english, reinterpret_cast<HINSTANCE>(0x10)), "");
}

TEST(UserPrompt, GivesTheAnswerThatChangesNothing) {
    for (const auto& [flags, answer] : {std::pair{MB_OK, IDOK},
                                        {MB_YESNO | MB_ICONQUESTION, IDNO},
                                        {MB_YESNOCANCEL | MB_TASKMODAL, IDCANCEL}}) {
        ::testing::internal::CaptureStderr();
        EXPECT_EQ(current().prompt->messageBox(nullptr, "100%s%n", "Caption", flags), answer);
        EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Caption: 100%s%n\n");
    }
}
#endif

TEST(SystemInfo, ExplainsTheErrorsThatTheLibraryReports) {
    for (const auto code : {ERROR_FILE_NOT_FOUND, ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION,
                            ERROR_HANDLE_EOF, ERROR_DISK_FULL})
        EXPECT_NE(current().system->errorText(static_cast<ErrorCode>(code)), "") << code;
}

TEST(SystemInfo, KnowsTheLocalDate) {
    const std::time_t before = std::time(nullptr);
    const LocalDate today = current().system->today();
    const std::time_t times[] = {before, std::time(nullptr)};
    EXPECT_TRUE(std::ranges::any_of(times, [&](std::time_t time) {
        const std::tm* local = std::localtime(&time);
        return std::tie(today.year, today.month, today.day) ==
               std::tuple(local->tm_year + 1900, local->tm_mon + 1, local->tm_mday);
    }));
}

}  // namespace
}  // namespace toolbox::platform
