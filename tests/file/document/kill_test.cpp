// Programs that are killed while they work on a document, and many that work on one.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <thread>
#include <tuple>

#include "file/document/proof_kit.h"
#include "support/child_program.h"

using namespace proof_kit;

namespace {

constexpr int kStep = kThorough ? 1 : 7;
constexpr int kSaves = kThorough ? 1000 : 50;

class DocumentProof : public testing::Test {
  protected:
    TempFolder folder;
    TempFolder recovery;
    TempFolder notes;
    const std::string name = folder / "plan.dat";

    void SetUp() override { TvDocumentFile::setRecoveryFolder(RWCString(recovery.path())); }
    void TearDown() override { TvDocumentFile::setRecoveryFolder({}); }

    void start(const std::string& text) const {
        Plan plan(text);
        TvDocumentFile file(plan);
        ASSERT_TRUE(file.saveAs(RWCString(name)));
    }
    [[nodiscard]] int work(const std::string& how, const std::string& log, int number,
                           const std::string& more = "sighted") const {
        return runBeside("document_worker",
                         {how, name, recovery.path(), notes / log, std::to_string(number), more});
    }
};

/// What a killed program had been told.
struct Told {
    int kept = 0;
    int saved = 0;
    bool closing = false;

    explicit Told(const std::string& notes) {
        std::ifstream file(notes);
        std::string what;
        for (int version = 0; file >> what >> version;) {
            if (what == "kept") kept = version;
            if (what == "saved") saved = version;
            closing = closing || what == "closing";
        }
    }
};

TEST_F(DocumentProof, LosesNothingWhereverItsProgramIsKilled) {
    int call = 1 - kStep;
    for (int status = 9; status == 9;) {
        start(versionText(0));
        std::filesystem::remove(folder / "plan.bak");
        status = work("kill", "told", call += kStep);
        SCOPED_TRACE(call);
        ASSERT_TRUE(status == 9 || status == 0) << status;
        const Told told(notes / "told");
        const int onDisk = versionOf(textIn(name));
        EXPECT_GE(onDisk, told.saved);
        int best = onDisk;
        for (const TvRecoverable& item : TvDocumentFile::recoverable({RWCString(name)})) {
            EXPECT_TRUE(item.whole);
            best = std::max(best, versionOf(textIn(item.state.str())));
            EXPECT_EQ(TvDocumentFile::discard(item), 1);
        }
        EXPECT_TRUE(best >= told.kept || told.closing) << best;

        Desk desk;
        ASSERT_TRUE(desk->open(RWCString(name)));
        ASSERT_EQ(desk->hasLock(), 1);
        desk.edit(versionText(9));
        ASSERT_TRUE(desk->save());
        desk->close();
        ASSERT_EQ(textIn(name), versionText(9));
        EXPECT_EQ(folder.names(), (std::vector<std::string>{"plan.bak", "plan.dat"}));
        EXPECT_EQ(recovery.names(), std::vector<std::string>{});
        if (HasFailure()) break;
    }
    RecordProperty("calls", call);
    EXPECT_GT(call, 100);
}

/// Programs, saves of each, and whether share modes mean nothing.
class SharedDocument : public DocumentProof,
                       public testing::WithParamInterface<std::tuple<int, int, const char*>> {};

TEST_P(SharedDocument, KeepsEverySave) {
    start("zero");
    const auto [programs, saves, how] = GetParam();
    std::vector<std::thread> running;
    std::vector<int> status(static_cast<std::size_t>(programs));
    for (int each = 0; each < programs; ++each)
        running.emplace_back([&, each] {
            status[static_cast<std::size_t>(each)] =
                work("save", "told" + std::to_string(each), saves, how);
        });
    for (std::thread& program : running) program.join();
    EXPECT_EQ(std::ranges::count(status, 0), programs);

    const std::string text = textIn(name);
    EXPECT_EQ(text.size(), (1 + static_cast<unsigned>(saves * programs)) * kWord);
    for (int each = 0; each < programs; ++each) {
        std::ifstream told(notes / ("told" + std::to_string(each)));
        for (std::string word; told >> word;) EXPECT_NE(text.find(word), std::string::npos) << word;
    }
    auto names = folder.names();
    // What a reader kept from its place, where the system lets it.
    std::erase_if(names,
                  [](const std::string& each) { return each.starts_with("plan.dat.saved-"); });
    EXPECT_EQ(names, (std::vector<std::string>{"plan.bak", "plan.dat"}));
}

INSTANTIATE_TEST_SUITE_P(Programs, SharedDocument,
                         testing::Values(std::tuple(2, kSaves / 2, "sighted"),
                                         std::tuple(10, kSaves / 10, "sighted"),
                                         std::tuple(10, kSaves / 50, "blind")));

}  // namespace
