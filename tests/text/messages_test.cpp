#include "toolbox/messages.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <optional>
#include <sstream>
#include <tuple>

#include "support/text_fakes.h"

namespace {

using toolbox::testing::FakedTexts;

HINSTANCE const kModule = reinterpret_cast<HINSTANCE>(0x1000);
HWND const kWindow = reinterpret_cast<HWND>(0x2000);

struct MessageServiceTest : ::testing::Test {
    MessageServiceTest() {
        GMSG::initStaticVars();
        service.emplace();
    }
    ~MessageServiceTest() override {
        GMSG::setInstance(nullptr);
        GMSG::setParent(nullptr);
        GMSG::language = GMSG::French;
        GMSG::destroyStaticVars();
    }
    auto& boxes() { return texts.prompt.boxes; }

    FakedTexts texts;
    std::optional<GMSG> service;
};

int viaVaList(unsigned short id, char* buf, int size, ...) {
    std::va_list args;
    va_start(args, size);
    const int length = GMSG::getStringVaList(id, buf, size, args);
    va_end(args);
    return length;
}

TEST_F(MessageServiceTest, LooksInTheModuleBeforeTheApplicationAndSpeaksItsLanguage) {
    texts.strings.put(1, "application");
    texts.strings.put(2, "only here");
    texts.strings.putEnglish(2, "english");
    texts.strings.put(1, "module", kModule);
    GMSG::setInstance(kModule);
    char text[20];
    EXPECT_EQ(GMSG::loadString(1, text, sizeof text), 6);
    EXPECT_STREQ(text, "module");
    EXPECT_EQ(GMSG::loadString(2, text, 5), 4);
    EXPECT_STREQ(text, "only");
    GMSG::language = GMSG::English;
    GMSG::loadString(2, text, sizeof text);
    EXPECT_STREQ(text, "english");
}

TEST_F(MessageServiceTest, PrintsArgumentsOfEveryType) {
    texts.strings.put(1, "%s %s %s|%d %u %ld|%c %.2f %g|%-4hd|%*d");
    const RWCString library("lib");
    RWCString text;
    enum { kThree = 3 };
    const int length = GMSG::getString(1, text, "char", CString("cstring"), library, -1, 7u, 8L,
                                       'x', 0.5f, 1e10, short{2}, kThree, true);
    EXPECT_EQ(length, 39);
    EXPECT_EQ(text, "char cstring lib|-1 7 8|x 0.50 1e+010|2   |  1");
    char buffer[8];
    viaVaList(1, buffer, sizeof buffer, "va", "list", "x", 1, 1u, 1L, 'x', 1., 1., 1, 1, 1);
    EXPECT_STREQ(buffer, "va list");
}

TEST_F(MessageServiceTest, ShowsAReportInABox) {
    GMSG::setAppTitle("Bridge");
    GMSG::setParent(kWindow);
    texts.prompt.liveWindow = kWindow;
    texts.prompt.answer = IDNO;
    texts.strings.put(1019, "Text %d of %s");
    EXPECT_EQ(GMSG::errorMsg(1019, MB_YESNO | MB_ICONQUESTION, 5, "file"), IDNO);
    EXPECT_EQ(GMSG::errorMsg("100% %s", 0x8134, "sure"), IDNO);
    EXPECT_EQ(GMSG::errorMsg(0, MB_OK), 0);
    ASSERT_EQ(boxes().size(), 2u);
    EXPECT_EQ(boxes()[0].text, "Text 5 of file");
    EXPECT_EQ(boxes()[0].caption, "Bridge");
    EXPECT_EQ(boxes()[0].owner, kWindow);
    EXPECT_EQ(boxes()[1].flags, 0x1A134u);

    texts.prompt.liveWindow = nullptr;
    GMSG::errorMsg("%s", MB_OK, std::string(5000, '%'));
    EXPECT_EQ(boxes()[2].text, std::string(511, '%'));
    EXPECT_EQ(boxes()[2].owner, nullptr);
    EXPECT_EQ(GMSG::getParent(), nullptr);
    service.reset();
    GMSG::destroyStaticVars();
    EXPECT_EQ(GMSG::errorMsg("early %d", MB_OK, 1), IDNO);
}

TEST_F(MessageServiceTest, CollectsReportsAndWritesTheLog) {
    std::ostringstream log;
    GMSG::setErrorReportingOption(GMSG::ReportInList);
    GMSG::errorMsg("before the log", MB_OK);
    GMSG::setLogStream(&log);
    EXPECT_EQ(GMSG::errorMsg("%d", MB_OK, 1), 0);
    EXPECT_EQ(GMSG::errorMsg(404, MB_OK), 0);
    GMSG::errorMsg("two", MB_OK);
    EXPECT_EQ(log.str(), "1\ntwo\n");
    EXPECT_EQ(GMSG::getLastErrorMsg(), "two");
    GMSG::setErrorReportingOption(GMSG::ReportNothing);
    EXPECT_EQ(GMSG::getLstErrorsInString(), "before the log\n1\ntwo\n");
    EXPECT_EQ(GMSG::errorMsg("dropped", MB_OK), 0);
    EXPECT_TRUE(boxes().empty());
    GMSG::setErrorReportingOption(GMSG::ReportInList);
    EXPECT_EQ(GMSG::getLstErrorsInString(), "");
}

TEST_F(MessageServiceTest, ChecksRanges) {
    const std::tuple<const char*, double, const char*> cases[] = {
        // no message: accepted
        {"From %g to %g,1,2.5", 2.5, nullptr},
        {"From %g to %g,1,2.5", 0.5, "From 1 to 2.5"},
        {"From %.1f to %.1f,,, 1,+3,%8.2f", 3.5, "From 1.0 to 3.0"},
        {"%s %d %s %n,1,2", 9, "1 2  "},
        {"m,x,y", 1, "m"},
    };
    GMSG::setInstance(kModule);
    for (const auto& [rule, value, message] : cases) {
        texts.strings.put(1, rule);
        boxes().clear();
        double x = value;
        EXPECT_EQ(GMSG::checkDouble(x, 1), message ? 0 : 1) << rule;
        ASSERT_EQ(boxes().size(), message ? 1u : 0u) << rule;
        if (message) {
            EXPECT_EQ(boxes()[0].text, message);
        }
    }
    double x = 9;
    EXPECT_EQ(GMSG::checkDouble(x, 404), 0);
    GMSG::setInstance(nullptr);
    EXPECT_EQ(GMSG::checkDouble(x, 404), 1);
}

TEST(MessageConversions, PrintRealsWithTheirDecimals) {
    const std::tuple<double, int, const char*> cases[] = {{0.25, 2, ".25"},
                                                          {12.6, 0, "13"},
                                                          {0.001, 2, ".00"},
                                                          {-0.3, 0, "-"},
                                                          {5, -3, "5"},
                                                          {99999.5, 2, "99999.5"},
                                                          {123456.0, -100, "1.e+005"},
                                                          {-HUGE_VAL, 2, "-inf"},
                                                          {std::nan(""), 2, "nan"}};
    char text[64];
    for (const auto& [value, decimals, expected] : cases)
        EXPECT_STREQ(GMSG::ftoa(value, decimals, text, 0), expected)
            << value << " with " << decimals;
    EXPECT_STREQ(GMSG::ftoa(-0.0, 3, text, 1), "");
    for (const double value : {-99999.0 + 1.0 / 3, -1.0 / 3, -1e5 - 1.0 / 3, -0.00001, -1.5e308}) {
        for (const int decimals : {0, 1, 5, 300, 1100, INT_MAX}) {
            std::string room(static_cast<std::size_t>(std::min(decimals, 1100)) + 17, 'G');
            GMSG::ftoa(value, decimals, room.data(), 0);
            EXPECT_EQ(room.back(), 'G') << value << " with " << decimals;
            EXPECT_LT(room.find('\0'), room.size()) << value << " with " << decimals;
        }
    }
}

TEST(MessageConversions, PrintIntegersAndStripBlanks) {
    char text[22];
    EXPECT_STREQ(GMSG::ntoa(0, text, 1), "");
    EXPECT_EQ(GMSG::ntoa(LONG_MIN, text, 1), std::to_string(LONG_MIN));
    for (const auto& [given, stripped] : {std::pair{"  a b ", "a b"}, {"   ", ""}}) {
        std::string blanks = given;
        EXPECT_STREQ(GMSG::strip(blanks.data()), stripped);
    }
}

}  // namespace
