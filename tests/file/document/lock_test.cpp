// What a lock tells of its holder, and what is made of one that is met.
#include <gtest/gtest.h>

#include "file/document/lock_kit.h"
#include "support/fake_system.h"
#include "toolbox/utf8.h"

using namespace lock_kit;
using toolbox::DocumentLock;
namespace locks = toolbox::locks;

namespace {

struct LockTest : testing::Test {
    TempFolder folder;
    FaultyFiles files;
    const std::string name = folder.write("plan.dat", "x");
    const std::string lockName = name + ".lock";
};

TEST_F(LockTest, TellsOthersWhoHasIt) {
    DocumentLock lock;
    EXPECT_EQ(DocumentLock::look(name).outcome, LockOutcome::free);
    ASSERT_EQ(lock.take(name).outcome, LockOutcome::taken);
    toolbox::platform::SystemInfo& system = *toolbox::platform::current().system;
    EXPECT_NE(folder.read("plan.dat.lock").find("\nuser: " + toolbox::toUtf8(system.userName())),
              std::string::npos);
    DocumentLock second;
    const toolbox::LockReport met = second.take(name);
    EXPECT_EQ(met.outcome, LockOutcome::held);
    EXPECT_EQ(met.holder.host, system.hostName());
    EXPECT_EQ(met.holder.process, system.processId());
    EXPECT_GE(met.age, 0);
    EXPECT_FALSE(second.isTaken());
    EXPECT_EQ(second.takeOver(name, met.holder).outcome, LockOutcome::held) << "it lives";

    DocumentLock moved = std::move(lock);
    EXPECT_TRUE(moved.isStillOurs());
    moved.release();
    EXPECT_EQ(folder.names(), std::vector<std::string>{"plan.dat"});
    EXPECT_EQ(second.take(name).outcome, LockOutcome::taken);
}

TEST_F(LockTest, IsOneForAllNamesOfADocument) {
    DocumentLock lock;
    ASSERT_EQ(lock.take(name).outcome, LockOutcome::taken);
    std::vector<std::string> names{
        folder / "./plan.dat",
        folder / "../" + std::filesystem::path(folder.path()).filename().string() + "/plan.dat"};
#if defined(_WIN32)
    names.push_back(folder / "PLAN.DAT");
#else
    std::filesystem::create_symlink("plan.dat", folder / "link");
    names.push_back(folder / "link");
#endif
    for (const std::string& other : names)
        EXPECT_EQ(DocumentLock::look(other).outcome, LockOutcome::held) << other;
    EXPECT_EQ(DocumentLock::look(folder / "plan").outcome, LockOutcome::free);
}

TEST_F(LockTest, OfAnotherIsJudgedByItsText) {
    const LockHolder ours = locks::ourselves();
    const auto text = [&](auto change) {
        LockHolder holder = ours;
        change(holder);
        return locks::textOf(holder);
    };
    const std::string whole = locks::textOf(ours);
    const struct {
        const char* what;
        std::string bytes;
        LockOutcome outcome;
    } cases[] = {
        {"another start", locks::textOf(leftBehind()), LockOutcome::left},
        {"another boot", text([](LockHolder& h) { h.boot += "x"; }), LockOutcome::left},
        {"no such process", text([](LockHolder& h) { h.process = 0x7FFFFFF0; }), LockOutcome::left},
        {"ours, and given up", whole, LockOutcome::left},
        {"another host", text([](LockHolder& h) { h.host = "PC-12"; }), LockOutcome::elsewhere},
        {"another machine of that name", text([](LockHolder& h) { h.machine += "x"; }),
         LockOutcome::elsewhere},
        {"empty", "", LockOutcome::elsewhere},
        {"cut", whole.substr(0, whole.size() - 1), LockOutcome::elsewhere},
        {"no token", text([](LockHolder& h) { h.token = "?0"; }), LockOutcome::elsewhere},
        {"somebody's own file", std::string(100'000, '\xFF'), LockOutcome::elsewhere},
    };
    for (const bool isBlind : {false, true}) {
        files.ignoresShares = isBlind;
        for (const auto& c : cases) {
            SCOPED_TRACE(c.what);
            folder.write("plan.dat.lock", c.bytes);
            const toolbox::LockReport met = DocumentLock::look(name);
            EXPECT_EQ(met.outcome, c.outcome);
            EXPECT_GE(met.age, 0);
            DocumentLock lock;
            const bool mustDecide = c.outcome == LockOutcome::elsewhere;
            EXPECT_EQ(lock.take(name).outcome,
                      mustDecide ? LockOutcome::elsewhere : LockOutcome::takenOver);
            EXPECT_EQ(lock.isTaken(), !mustDecide);
            if (!mustDecide) continue;
            EXPECT_EQ(lock.takeOver(name, leftBehind()).outcome, c.outcome) << "not the one";
            EXPECT_EQ(folder.read("plan.dat.lock"), c.bytes);
            EXPECT_EQ(lock.takeOver(name, met.holder).outcome, LockOutcome::takenOver);
            EXPECT_TRUE(lock.isStillOurs());
        }
    }
    EXPECT_EQ(folder.names(), std::vector<std::string>{"plan.dat"});
}

TEST_F(LockTest, ThatWasTakenOverIsNoticedAndLeftToItsNewHolder) {
    DocumentLock lock;
    ASSERT_EQ(lock.take(name).outcome, LockOutcome::taken);
    ASSERT_EQ(files.replace(lockName.c_str(), (folder / "away").c_str()), 0u);
    EXPECT_FALSE(lock.isStillOurs());
    LockHolder other = locks::ourselves();
    other.host = "PC-12";
    other.user = "Zo\xE9";
    const std::string theirs = locks::textOf(other);
    folder.write("plan.dat.lock", theirs);
    EXPECT_FALSE(lock.isStillOurs());
    lock.refresh();
    lock.release();
    EXPECT_EQ(folder.read("plan.dat.lock"), theirs);
    EXPECT_EQ(DocumentLock::look(name).holder.user, other.user);
}

TEST_F(LockTest, IsImpossibleWhereNoFileCanBeMade) {
    const struct {
        FileCall call;
        toolbox::platform::ErrorCode error;  // 0: the disk takes ten bytes more
    } faults[] = {
        {FileCall::createLike, ERROR_ACCESS_DENIED}, {FileCall::createLike, ERROR_DISK_FULL},
        {FileCall::write, ERROR_DISK_FULL},          {FileCall::write, 0},
        {FileCall::flush, ERROR_WRITE_FAULT},        {FileCall::renameNew, ERROR_WRITE_FAULT}};
    for (const auto& fault : faults) {
        SCOPED_TRACE(&fault - faults);
        if (fault.error == 0)
            files.shorten(fault.call, 1, 10);
        else
            files.fail(fault.call, 1, fault.error);
        DocumentLock lock;
        const toolbox::LockReport met = lock.take(name);
        EXPECT_EQ(met.outcome, LockOutcome::impossible);
        EXPECT_EQ(met.error, fault.error == 0 ? ERROR_DISK_FULL : fault.error);
        EXPECT_EQ(folder.names(), std::vector<std::string>{"plan.dat"});
    }
    DocumentLock lock;
    for (const std::string& bad : {folder.path(), std::string(), folder / "none/plan.dat"})
        EXPECT_EQ(lock.take(bad).outcome, LockOutcome::impossible) << bad;
    EXPECT_EQ(lock.take(folder / "new.dat").outcome, LockOutcome::taken) << "not there yet";
}

TEST_F(LockTest, ShowsItsAgeAndDecidesNothingByTheClock) {
    FakeSystem system;
    DocumentLock lock;
    constexpr std::time_t kTaken = 1'000'000;
    system.seconds = kTaken;
    ASSERT_EQ(lock.take(name).outcome, LockOutcome::taken);
    const struct {
        std::time_t now;
        std::int64_t age;
    } times[] = {{kTaken, 0}, {kTaken + 90, 90}, {kTaken - 5000, 0}, {-1, 0}};
    for (const auto& time : times) {
        system.seconds = time.now;
        const toolbox::LockReport met = DocumentLock::look(name);
        EXPECT_EQ(met.outcome, LockOutcome::held);
        EXPECT_EQ(met.age, time.age) << time.now;
    }
    system.seconds = kTaken + 60;
    lock.refresh();
    system.seconds += 7;
    const toolbox::LockReport met = DocumentLock::look(name);
    EXPECT_EQ(met.age, 7);
    EXPECT_EQ(met.holder.taken, kTaken);
    EXPECT_TRUE(lock.isStillOurs());
}

}  // namespace
