// What becomes of a dialog's answer, without a dialog.
#include "dialog/pickers/pick_flow.h"

#include <gtest/gtest.h>

#include <deque>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "dialog/pickers/file_filters.h"
#include "dialog/pickers/folders.h"
#include "dialog/pickers/pick_handler.h"
#include "support/settings_fixture.h"
#include "toolbox/messages.h"

namespace {

using namespace toolbox;
using namespace toolbox::pickers;
using Kind = PickQuestion::Kind;

SourceAnswer chosen(const std::string& name) {
    SourceAnswer answer;
    answer.outcome = PickOutcome::chosen;
    answer.names = {CString(name)};
    return answer;
}

/// A user who gives the answers in turn, and then leaves.
class ScriptedSource : public PickSource {
  public:
    std::deque<SourceAnswer> answers;
    std::set<std::string> files;
    bool agrees = false;
    std::vector<std::string> asked;  ///< folder|file of each dialog
    std::vector<std::string> told;

    SourceAnswer ask(const PickQuestion& question) override {
        asked.push_back(question.folder.str() + "|" + question.file.str());
        if (answers.empty()) return {};
        SourceAnswer answer = std::move(answers.front());
        answers.pop_front();
        return answer;
    }
    bool exists(const CString& name) override { return files.contains(name.str()); }
    bool mayReplace(const CString& name) override {
        told.push_back("replace " + name.str());
        return agrees;
    }
    void tell(Fault fault, const CString& name) override {
        told.push_back((fault == Fault::foreign ? "foreign " : "missing ") + name.str());
    }
    bool asksAgain() const override { return true; }
};

class PickFlow : public SettingsFixture {
  protected:
    PickFlow() {
        GMSG::initStaticVars();
        GMSG::setUseRegistry(0);
        GMSG::setDestName(RWCString(profileHolding("")));
        question_.purpose = "project";
        question_.folder = "start";
        question_.file = "draft";
        question_.extension = "tbf";
        question_.filters = *parseFilters("Projects|*.tbf");
    }
    ~PickFlow() override {
        GMSG::setUseRegistry(1);
        GMSG::destroyStaticVars();
    }
    PickAnswer ask(Kind kind) {
        question_.kind = kind;
        return pick(question_, source_);
    }

    PickQuestion question_;
    ScriptedSource source_;
};

TEST_F(PickFlow, AsksBeforeTheCompletedNameIsReplacedAndThenAgain) {
    source_.files = {"C:\\a\\plan.tbf"};
    source_.answers = {chosen("C:\\a\\plan"), chosen("C:\\a\\plan2")};
    const PickAnswer answer = ask(Kind::save);
    EXPECT_EQ(answer.outcome, PickOutcome::chosen);
    EXPECT_EQ(answer.names, std::vector<CString>{"C:\\a\\plan2.tbf"});
    EXPECT_EQ(source_.told, std::vector<std::string>{"replace C:\\a\\plan.tbf"});
    EXPECT_EQ(source_.asked, (std::vector<std::string>{"start|draft", "C:\\a|plan.tbf"}));
    EXPECT_EQ(rememberedFolder("project"), "C:\\a");
    source_.answers = {chosen("C:\\a\\plan.tbf")};
    source_.agrees = true;
    EXPECT_EQ(ask(Kind::save).names, std::vector<CString>{"C:\\a\\plan.tbf"});
}

TEST_F(PickFlow, OpensTheFileThatANameWithoutExtensionMeans) {
    source_.files = {"/a/plan.tbf", "/a/bare"};
    source_.answers = {chosen("/a/plan"), chosen("/b/typo"), chosen("/a/bare")};
    EXPECT_EQ(ask(Kind::open).names, std::vector<CString>{"/a/plan.tbf"});
    EXPECT_EQ(ask(Kind::open).names, std::vector<CString>{"/a/bare"});
    EXPECT_EQ(source_.told, std::vector<std::string>{"missing /b/typo"});
    EXPECT_EQ(source_.asked.back(), "/b|typo");
}

TEST_F(PickFlow, TellsOfANameThatCannotBeWrittenAndReturnsNone) {
    SourceAnswer several = chosen("/a/one");
    several.foreign = "/a/????";
    SourceAnswer failed;
    failed.outcome = PickOutcome::notShown;
    failed.reason = "why";
    source_.answers = {several, failed};
    const PickAnswer answer = ask(Kind::openSeveral);
    EXPECT_EQ(answer.outcome, PickOutcome::notShown);
    EXPECT_EQ(answer.reason, "why");
    EXPECT_TRUE(answer.names.empty());
    EXPECT_EQ(source_.told, std::vector<std::string>{"foreign /a/????"});
    EXPECT_EQ(rememberedFolder("project"), "");
    EXPECT_EQ(ask(Kind::open).outcome, PickOutcome::cancelled);
}

TEST_F(PickFlow, StartsWhereThePurposeWasOrAboveIt) {
    const std::string here = folder_.path();
    rememberFolder("project", here + "/gone");
    EXPECT_EQ(startFolder("project", "", "/"), here);
    EXPECT_EQ(startFolder("project", "/", here), "/");
    EXPECT_EQ(startFolder("import", "", here), here);
    EXPECT_EQ(startFolder("import", "", "nowhere/at all"), "");
}

struct Answering : PickHandler {
    std::string name;
    bool agrees = true;
    PickAnswer answer(const PickQuestion&) override { return {chosen(name)}; }
    bool replaces(const CString&) override { return agrees; }
};

TEST_F(PickFlow, LetsAHandlerAnswerInsteadOfTheUser) {
    Answering handler;
    handler.name = folder_ / "plan";
    folder_.write("plan.tbf", "");
    HandlerSource source;
    question_.kind = Kind::save;
    const PickHandlerScope scope(handler);
    EXPECT_EQ(pick(question_, source).names, std::vector<CString>{handler.name + ".tbf"});
    handler.agrees = false;
    EXPECT_EQ(pick(question_, source).outcome, PickOutcome::cancelled);
}

}  // namespace
