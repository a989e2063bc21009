// What every implementation of the text and prompt services keeps to. Runs against the host's own.
#include <gtest/gtest.h>

#include <array>
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

}  // namespace
}  // namespace toolbox::platform
