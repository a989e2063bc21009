#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <string>

#include "support/fake_system.h"
#include "support/text_fakes.h"
#include "toolbox/diagnostics.h"

#if defined(_WIN32)
#include "support/box_answerer.h"
#endif

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

TEST_F(AssertionTest, TellsProgramFileLineAndExpression) {
    system.program = "C:\\app.exe";
    EXPECT_EQ(message("x > 0", "beam.cpp", 42),
              "Head\n\nProg: C:\\app.exe\nFile: beam.cpp\nLine: 42\n\nExpr: x > 0\n\nAdvice\n\n");
    const auto& box = faked.prompt.boxes.back();
    EXPECT_EQ(box.caption, "Title");
    EXPECT_EQ(box.owner, nullptr);
    EXPECT_EQ(box.flags, 0x12010u);
    system.program = "";
    EXPECT_NE(message("x", "f", 1).find("Prog: <program name unknown>\n"), std::string::npos);
}

TEST_F(AssertionTest, CutsWhatIsTooLong) {
    // With its label (6 characters) a line has 60.
    const std::string fits = std::string(50, 'p') + "1234";
    const std::string ends = "..." + std::string(47, 'p') + "1234";
    system.program = fits;
    EXPECT_NE(message("x", fits.c_str(), 1).find("Prog: " + fits + "\nFile: " + fits + '\n'),
              std::string::npos);
    system.program = 'p' + fits;
    EXPECT_NE(message("x", ('p' + fits).c_str(), 1).find("Prog: " + ends + "\nFile: " + ends),
              std::string::npos);

    const std::string cut = message(std::string(1000, 'e').c_str(), "f", 1);
    EXPECT_EQ(cut.size(), 540u);
    EXPECT_NE(cut.find("Expr: eee"), std::string::npos);
    EXPECT_NE(cut.find("eee...\n\nAdvice\n\n"), std::string::npos);

    for (unsigned int i = 0; i < 7; ++i) faked.strings.put(1060 + i, std::string(500, 'l'));
    const std::string longest = message(std::string(1000, 'e').c_str(), fits.c_str(), 1234567);
    EXPECT_EQ(longest.size(), 540u);
    EXPECT_NE(longest.find('\n' + std::string(59, 'l') + ".\n"), std::string::npos);
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
    EXPECT_EQ(toolbox::setAssertionHandler(answer), nullptr);
    theAnswer = toolbox::AssertionAnswer::goOn;
    _tvassert("a == b", "f.cpp", 7);
    EXPECT_EQ(failures, "f.cpp:7 a == b\n");
    EXPECT_EQ(faked.prompt.boxes.size(), 1u);  // the handler's own
    theAnswer = toolbox::AssertionAnswer::explain;
    TVASSERT(1 + 1 == 2);
    EXPECT_EQ(faked.prompt.boxes.size(), 1u);
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

void returnFromSignal(int) {
    std::fputs("signalled\n", stderr);
}

using AssertionDeathTest = AssertionTest;

TEST_F(AssertionDeathTest, EndsTheProgramByTheAnswer) {
    const auto fail = [this](int boxAnswer) {
        faked.prompt.answer = boxAnswer;
        _tvassert("x", "f", 1);
    };
    EXPECT_EXIT(fail(IDOK), aborted, "");
    EXPECT_EXIT(fail(0), aborted, "");
    EXPECT_EXIT(fail(kAbort), aborted, "");
    const auto failSignalled = [&] {
        std::signal(SIGABRT, returnFromSignal);
        fail(kAbort);
    };
    EXPECT_EXIT(failSignalled(), ::testing::ExitedWithCode(3), "signalled");
    const auto failHandled = [&] {
        theAnswer = toolbox::AssertionAnswer::end;
        failures = std::string(100, ' ');
        toolbox::setAssertionHandler(answer);
        faked.prompt.answer = kIgnore;
        _tvassert("x", "f", 1);
    };
    EXPECT_EXIT(failHandled(), aborted, "");
}

#if defined(_WIN32)

const toolbox::testing::BoxAnswerer* theAnswerer;

void tellWhatWasSeen(int) {
    for (const auto& box : theAnswerer->seen())
        std::fprintf(stderr, "[%s] %u buttons, %s icon: %s", box.caption.c_str(),
                     static_cast<unsigned int>(box.buttons.size()),
                     box.icon == LoadIconA(nullptr, IDI_HAND) ? "stop" : "other", box.text.c_str());
}

TEST(RealBoxDeathTest, ShowsTheApplicationsTextsAndEndsTheProgram) {
    const auto fail = [] {
        std::signal(SIGABRT, tellWhatWasSeen);
        const toolbox::testing::BoxAnswerer answerer({IDOK});
        theAnswerer = &answerer;
        _tvassert("span > 0", "beam.cpp", 99);
    };
    EXPECT_EXIT(fail(), ::testing::ExitedWithCode(3),
                "V\351rification \351chou\351e. 1 buttons, stop icon: Une v\351rification interne");
    EXPECT_EXIT(fail(), ::testing::ExitedWithCode(3),
                "diagnostics_test.exe\nFichier : beam.cpp\nLigne : 99\n\nExpression : span > 0");
}

#endif

}  // namespace
