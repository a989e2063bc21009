#include <ctime>
#include <tuple>
#include <utility>

#include "literal_expansion.h"
#include "udkey/keys_fixture.h"

namespace {

/// What the rule gives, word by word.
std::string literally(TestManager& manager, const std::string& text, int strip) {
    const auto isToken = [&](const std::string& word) { return manager.isValidToken(word) != 0; };
    const auto valueOf = [&](const std::string& word) {
        return manager.getFormatedString(manager.getId(word), strip).str();
    };
    return literal::expand(text, isToken, valueOf);
}

class Templates : public KeysFixture {
  protected:
    Templates() {
        startWithUsualKeys();
        manager_.values[1] = "230";
        manager_.values[2] = "1.5";
        manager_.values[3] = "beam";
    }
};

using TemplateExpansion = KeysFixture;

/// Templates, keys and values from few characters, so that everything meets everything.
TEST_F(TemplateExpansion, EqualsTheLiteralAlgorithm) {
    const char* keys[] = {"A", "B", "AB", "ABC", "BA", " ", "", "C"};
    for (UINT id = 0; id < std::size(keys); ++id)
        declare(id, makeKey(keys[id], made<StringFormat>(3, Left)));
    manager_.initUDApp();
    manager_.removeMatchingId(7);
    const char* values[] = {"", "A", "$", "$A", "A$", "$A$", "$B", "BC", "xyz", "$$"};
    for (int round = 0; round < 12000; ++round) {
        for (UINT id = 0; id < std::size(keys); ++id)
            manager_.values[id] = values[pick(4) ? pick(2) + 7 : pick(std::size(values))];
        std::string text;
        for (unsigned n = pick(14); n > 0; --n)
            text += pick(2) ? "$" + std::string(keys[pick(std::size(keys))]) + "$"
                            : std::string(1, "$ABCx "[pick(6)]);
        const int strip = static_cast<int>(pick(2));
        const std::string expected = literally(manager_, text, strip);
        const std::vector<UINT> order = std::exchange(manager_.fetched, {});
        ASSERT_EQ(manager_.getParseString(text, strip), expected) << text;
        ASSERT_EQ(std::exchange(manager_.fetched, {}), order)
            << "values are fetched in the same order: " << text;
    }
}

/// Templates that leave the pass from left to right at their first token: a search of the result
/// for each token would take minutes.
TEST_F(Templates, OfAnyShapeTakeNearLinearTime) {
    manager_.values[3] = "$A$";
    const std::pair<const char*, const char*> texts[] = {
        {"VOLT", "$x$VOLT$"},       // unknown words between
        {"$VOLTS", "$VOLT$ $A$"},   // each takes the place of the one before
        {"NAME", "$VOLT$NAME$"},    // text that is a key
        {"", "VOLT$VOLT$$NAME$"}};  // values that hold "$"
    const std::clock_t before = std::clock();
    for (const auto& [start, repeated] : texts) {
        std::string text = start;
        while (text.size() < 1 << 17) text += repeated;
        EXPECT_FALSE(manager_.getParseString(text, 1).empty()) << start;
    }
    EXPECT_LT((std::clock() - before) / CLOCKS_PER_SEC, 20);
}

/// A manager whose first value does something to it, its end included.
class Meddling : public TestManager {
  public:
    explicit Meddling(void (*meddle)(Meddling&)) : meddle_(meddle) {}
    int getKeyValue(UINT id, FormatedValue* value) override {
        const int result = TestManager::getKeyValue(id, value);
        if (meddle_) std::exchange(meddle_, nullptr)(*this);
        return result;
    }

  private:
    void (*meddle_)(Meddling&);
};

TEST_F(Templates, SurviveWhatTheApplicationDoesMeanwhile) {
    using Meddle = void (*)(Meddling&);
    const Meddle end = [](Meddling& manager) { delete &manager; };
    const Meddle forget = [](Meddling& manager) { manager.freeMatchingKey(); };
    const Meddle learn = [](Meddling& manager) { manager.addMatchingId(3); };
    const Meddle free = [](Meddling& manager) { manager.freeUDApp(); };
    const std::tuple<const char*, Meddle, const char*> cases[] = {
        {"$VOLT$ $VOLT$", end, "1 $VOLT$"},
        {"$VOLT$ $NAME$", learn, "1 beam"},
        // As soon as the result is searched.
        {"$VOLTS$ $VOLT$ $VOLT$", end, "1 $VOLT$ $VOLT$"},
        {"$VOLTS$ $VOLT$ $VOLT$", forget, "1 $VOLT$ $VOLT$"},
        {"$VOLTS$ $VOLT$ $VOLT$", free, "1 $VOLT$ $VOLT$"},
    };
    for (const auto& [text, meddle, expanded] : cases) {
        auto* manager = new Meddling(meddle);
        manager->setMatching(Ids{1});
        manager->values[1] = "1";
        manager->values[3] = "beam";
        EXPECT_EQ(manager->getParseString(text, 1), expanded) << text;
        if (meddle != end) delete manager;
    }
}

TEST_F(Templates, AreCheckedWithPositions) {
    manager_.removeMatchingId(2);
    // Of each problem kind@position:word, with a blank after it.
    const std::pair<const char*, const char*> cases[] = {
        {"plain $VOLT$$NAME$ text $VOLT$", ""},
        {"$VOLT$ 5$", "unclosed@8: "},
        {"$NONE$ $A$ $X", "unknown@0:NONE notMatching@7:A unclosed@11:X "},
        {"$VOLT$NAME$VOLT$", "keyInText@6:NAME "},
    };
    const char* kinds[] = {"unknown", "notMatching", "unclosed", "keyInText"};
    for (const auto& [text, problems] : cases) {
        std::string found;
        for (const toolbox::TemplateProblem& problem : manager_.checkTemplate(text)) {
            found += kinds[static_cast<int>(problem.kind)];
            found += "@" + std::to_string(problem.position) + ":" + problem.word.str() + " ";
        }
        EXPECT_EQ(found, problems) << text;
    }
    EXPECT_TRUE(manager_.fetched.empty()) << "no values are needed";
}

}  // namespace
