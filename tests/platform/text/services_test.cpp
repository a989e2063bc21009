// The text and prompt services where the library itself provides them.
#include <gtest/gtest.h>

#include <array>
#include <tuple>

#include "toolbox/platform.h"
#include "toolbox/text.h"

#if !defined(_WIN32)
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace toolbox::platform {
namespace {

std::string loaded(unsigned int id, Language language, HINSTANCE module = nullptr) {
    char text[200];
    const int length = current().strings->load(module, id, language, text, sizeof text);
    EXPECT_EQ(text[length], '\0');
    return {text, static_cast<std::size_t>(length)};
}

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

TEST(SystemInfo, TellsProcessesApart) {
    SystemInfo& system = *current().system;
    const auto ours = system.processStart(system.processId());
    ASSERT_TRUE(ours.has_value());
    EXPECT_NE(*ours, "");
    EXPECT_EQ(system.processStart(system.processId()), ours);
    EXPECT_FALSE(system.processStart(0x7FFFFFF0).has_value());
    EXPECT_NE(system.hostName(), "");
    EXPECT_NE(system.userName(), "");
#if !defined(_WIN32)
    EXPECT_NE(system.processStart(static_cast<std::uint32_t>(::getppid())), ours);
    const pid_t ended = ::fork();
    if (ended == 0) ::_exit(0);
    siginfo_t facts{};
    ASSERT_EQ(::waitid(P_PID, static_cast<id_t>(ended), &facts, WEXITED | WNOWAIT), 0);
    EXPECT_FALSE(system.processStart(static_cast<std::uint32_t>(ended)).has_value())
        << "nobody has asked for it yet";
    ::waitpid(ended, nullptr, 0);
#endif
}

}  // namespace
}  // namespace toolbox::platform
