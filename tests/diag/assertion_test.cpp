#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include "support/fake_system.h"
#include "support/text_fakes.h"
#include "toolbox/diagnostics.h"

namespace {

constexpr int kAbort = 3;
constexpr int kIgnore = 5;

struct AssertionTest : ::testing::Test {
    AssertionTest() {
        const char* const texts[] = {
            "Head", "Prog: ", "File: ", "Line: ", "Expr: ", "Advice", "Title"};
        for (unsigned int i = 0; i < 7; ++i) faked.strings.put(1060 + i, texts[i]);
        faked.prompt.answer = kIgnore;  // returns
    }
    ~AssertionTest() override { toolbox::setAssertionHandler(nullptr); }

    std::string message(const char* expression, const char* file, int line) {
        _tvassert(expression, file, line);
        return faked.prompt.boxes.back().text;
    }

    toolbox::testing::FakedTexts faked;
    FakeSystem system;
};

TEST_F(AssertionTest, TellsProgramFileLineAndExpressionAndCutsWhatIsTooLong) {
    system.program = "C:\\app.exe";
    EXPECT_EQ(message("x > 0", "beam.cpp", 42),
              "Head\n\nProg: C:\\app.exe\nFile: beam.cpp\nLine: 42\n\nExpr: x > 0\n\nAdvice\n\n");
    // With its label (6 characters) a line has 60.
    const std::string fits = std::string(50, 'p') + "1234";
    system.program = 'p' + fits;
    EXPECT_NE(message("x", fits.c_str(), 1).find("Prog: ..." + fits.substr(3) + "\nFile: " + fits),
              std::string::npos);
    for (unsigned int i = 0; i < 7; ++i) faked.strings.put(1060 + i, std::string(500, 'l'));
    EXPECT_EQ(message(std::string(1000, 'e').c_str(), fits.c_str(), 1234567).size(), 540u);
}

toolbox::AssertionAnswer theAnswer;
std::string failures;

toolbox::AssertionAnswer answer(const toolbox::FailedAssertion& failed) {
    failures += std::string(failed.file) + ':' + std::to_string(failed.line) + ' ' +
                failed.expression + '\n';
    if (failures.size() < 100) _tvassert("in the handler", "h", 1);  // shows the box
    return theAnswer;
}

TEST_F(AssertionTest, IsDecidedByTheHandlerFirst) {
    failures.clear();
    toolbox::setAssertionHandler(answer);
    theAnswer = toolbox::AssertionAnswer::goOn;
    _tvassert("a == b", "f.cpp", 7);
    EXPECT_EQ(failures, "f.cpp:7 a == b\n");
    EXPECT_EQ(faked.prompt.boxes.size(), 1u);  // the handler's own
    theAnswer = toolbox::AssertionAnswer::explain;
    TVASSERT(1 + 1 == 2);
    TVASSERT(1 + 1 == 3);
    EXPECT_EQ(faked.prompt.boxes.size(), 3u);
    EXPECT_NE(failures.find("1 + 1 == 3"), std::string::npos);
}

// How the process ends: POSIX tells the signal, Windows the exit code 3.
#if defined(_WIN32)
const auto aborted = ::testing::ExitedWithCode(3);
#else
const auto aborted = ::testing::KilledBySignal(SIGABRT);
#endif

using AssertionDeathTest = AssertionTest;

TEST_F(AssertionDeathTest, EndsTheProgramByTheAnswer) {
    const auto fail = [this](int boxAnswer) {
        faked.prompt.answer = boxAnswer;
        _tvassert("x", "f", 1);
    };
    for (const int button : {IDOK, 0, kAbort}) EXPECT_EXIT(fail(button), aborted, "");
    theAnswer = toolbox::AssertionAnswer::end;
    failures = std::string(100, ' ');
    toolbox::setAssertionHandler(answer);
    EXPECT_EXIT(fail(kIgnore), aborted, "");
}

}  // namespace
