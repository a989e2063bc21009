#include <ctime>
#include <utility>

#include "literal_expansion.h"
#include "udkey/keys_fixture.h"

namespace {

class Templates : public KeysFixture {
  protected:
    Templates() {
        startWithUsualKeys();
        manager_.numbers[1] = 230;
        manager_.reals[2] = 1.5;
        manager_.texts[3] = "beam";
    }
};

TEST_F(Templates, AreExpandedByTheRule) {
    struct Case {
        const char* text;
        const char* expanded;  // with the blanks around values stripped
    };
    const Case cases[] = {
        {"U=$VOLT$ V", "U=230 V"},
        {"$A$$VOLT$", "1.50230"},
        {"$VOLT$ and $VOLT$", "230 and 230"},
        {"$volt$ $NONE$ $VOLT$", "$volt$ $NONE$ 230"},
        {"5$ or $VOLT$", "5$ or 230"},
        {"x $LEN$ x", "x  x"},        // no value
        {"$A$ $VOLT", "1.50 $VOLT"},  // not closed: expansion stops there
        // Text that is a key takes the next token of that key, which later has none left: stop.
        {"VOLT$A$ $VOLT$ $NAME$", "VOLT1.50 230 $NAME$"},
        {"$A$VOLT$NAME$", "1.50VOLT$NAME$"},  // text that is a key, its dollar gone: stop
        {"$A$VOLT$NAME$ $VOLT$ $A$", "1.50VOLTbeam 230 $A$"},  // ... unless a later one is there
        {"$VOLTS$ $VOLT$", "230 $VOLT$"},  // an unknown word that begins with a key
        {"$$VOLT$$", "$230$"},
    };
    for (const Case& c : cases) {
        const auto isToken = [&](const std::string& word) {
            return manager_.isValidToken(word) != 0;
        };
        const auto valueOf = [&](const std::string& word) {
            return manager_.getFormatedString(manager_.getId(word), 1).str();
        };
        EXPECT_EQ(literal::expand(c.text, isToken, valueOf), c.expanded) << "case, not library";
        EXPECT_EQ(manager_.getParseString(c.text, 1), c.expanded) << c.text;
    }
    EXPECT_EQ(manager_.getParseString("U=$VOLT$ V", 0), "U=  230 V");
}

TEST_F(Templates, ReplaceOnlyMatchingKeys) {
    manager_.addIdToGroup(1, 50);
    manager_.setMatching(Ids{50, 2});
    EXPECT_EQ(manager_.isValidToken("VOLT"), 0) << "only its group is in the set";
    EXPECT_EQ(manager_.getParseString("$VOLT$ $A$", 1), "$VOLT$ 1.50");
    EXPECT_EQ(manager_.isTokenizeUDManager(), 1);
}

TEST_F(Templates, ReplaceAWordByTheKeysValueOrNothing) {
    RWCString text = "a $VOLTAGE$ b $VOLT$";
    EXPECT_EQ(manager_.replaceValue(text, "VOLT", 1), 1);
    EXPECT_EQ(text, "a 230 b $VOLT$");
    EXPECT_EQ(manager_.replaceValue(text, "A", 1), 0);
    EXPECT_EQ(manager_.replaceValue(text, "VO", 1), 1) << "no key's word";
    EXPECT_EQ(text, "a 230 b ");
    text = "open $VOLT";
    EXPECT_EQ(manager_.replaceValue(text, "VOLT", 1), 0);
    EXPECT_EQ(text, "open $VOLT");
}

/// Templates, keys and values from few characters, so that everything meets everything.
TEST(TemplateExpansion, EqualsTheLiteralAlgorithm) {
    UDManager::destroyStaticVars();
    UDManager::initStaticVars();
    TestManager manager;
    manager.path = "none.ini";
    const char* keys[] = {"A", "B", "AB", "ABC", "BA", " ", "", "C"};
    for (UINT id = 0; id < std::size(keys); ++id) {
        UDKeyData data = makeKey(keys[id], string(3));
        manager.addKey(id, data);
    }
    manager.initUDApp();
    manager.removeMatchingId(7);
    const char* values[] = {"", "A", "$", "$A", "A$", "$A$", "$B", "BC", "xyz", "$$"};
    unsigned chance = 7;
    const auto pick = [&](std::size_t n) {
        return (chance = chance * 1103515245 + 12345) / 65536 % static_cast<unsigned>(n);
    };
    for (int round = 0; round < 12000; ++round) {
        for (UINT id = 0; id < std::size(keys); ++id)
            manager.texts[id] = values[pick(4) ? pick(2) + 7 : pick(std::size(values))];
        std::string text;
        for (std::size_t n = pick(14); n > 0; --n)
            text += pick(2) ? "$" + std::string(keys[pick(std::size(keys))]) + "$"
                            : std::string(1, "$ABCx "[pick(6)]);
        const int strip = static_cast<int>(pick(2));
        const std::string expected = literal::expand(
            text, [&](const std::string& word) { return manager.isValidToken(word) != 0; },
            [&](const std::string& word) {
                return manager.getFormatedString(manager.getId(word), strip).str();
            });
        const std::vector<UINT> order = std::move(manager.fetched);
        manager.fetched.clear();
        ASSERT_EQ(manager.getParseString(text, strip), expected) << text;
        ASSERT_EQ(manager.fetched, order) << "values are fetched in the same order: " << text;
        manager.fetched.clear();
    }
    UDManager::destroyStaticVars();
}

/// Templates that leave the pass from left to right at their first token: a search of the result
/// for each token would take minutes.
TEST_F(Templates, OfAnyShapeTakeNearLinearTime) {
    manager_.texts[3] = "$A$";
    const auto repeated = [](const char* text) {
        std::string all;
        while (all.size() < 1 << 17) all += text;
        return all;
    };
    const std::string texts[] = {
        "VOLT" + repeated("$x$VOLT$"),             // unknown words between
        "$VOLTS" + repeated("$VOLT$ $A$"),         // each takes the place of the one before
        "NAME" + repeated("$VOLT$NAME$"),          // text that is a key
        repeated("VOLT$VOLT$$NAME$"),              // values that hold "$"
        repeated("$VOLTS$") + repeated("$VOLT$"),  // all places before all tokens
    };
    const std::clock_t before = std::clock();
    for (const std::string& text : texts)
        EXPECT_FALSE(manager_.getParseString(text, 1).empty()) << text.substr(0, 30);
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
    struct Case {
        const char* text;
        void (*meddle)(Meddling&);
        const char* expanded;
    };
    const auto end = [](Meddling& manager) { delete &manager; };
    const auto forget = [](Meddling& manager) { manager.freeMatchingKey(); };
    const auto learn = [](Meddling& manager) { manager.addMatchingId(3); };
    const auto free = [](Meddling& manager) { manager.freeUDApp(); };
    const Case cases[] = {
        {"$VOLT$ $VOLT$", end, "1 $VOLT$"},
        {"$VOLT$ $VOLT$", forget, "1 $VOLT$"},
        {"$VOLT$ $NAME$", learn, "1 beam"},
        // As soon as the result is searched.
        {"$VOLTS$ $VOLT$ $VOLT$", end, "1 $VOLT$ $VOLT$"},
        {"$VOLTS$ $VOLT$ $VOLT$", forget, "1 $VOLT$ $VOLT$"},
        {"$VOLTS$ $VOLT$ $NAME$", learn, "1 $VOLT$ beam"},
        {"$VOLTS$ $VOLT$ $VOLT$", free, "1 $VOLT$ $VOLT$"},
    };
    for (const Case& c : cases) {
        auto* manager = new Meddling(c.meddle);
        manager->setMatching(Ids{1});
        manager->numbers[1] = 1;
        manager->texts[3] = "beam";
        EXPECT_EQ(manager->getParseString(c.text, 1), c.expanded) << &c - cases;
        if (c.meddle != static_cast<void (*)(Meddling&)>(end)) delete manager;
    }
}

TEST_F(Templates, AreCheckedWithPositions) {
    manager_.removeMatchingId(2);
    struct Case {
        const char* text;
        const char* problems;  // kind@position:word, each with a blank after it
    };
    const Case cases[] = {
        {"plain $VOLT$$NAME$ text $VOLT$", ""},
        {"$NONE$ $VOLT$", "unknown@0:NONE "},
        {"a $A$", "notMatching@2:A "},
        {"$VOLT$ 5$", "unclosed@8: "},
        {"5$ or $VOLT$", "unknown@1: or  "},
        {"$NONE$VOLT$", "unknown@0:NONE "},
        {"$NONE$ $A$ $X", "unknown@0:NONE notMatching@7:A unclosed@11:X "},
        {"$VOLT$NAME$VOLT$", "keyInText@6:NAME "},
        {"NAME", "keyInText@0:NAME "},
    };
    const char* kinds[] = {"unknown", "notMatching", "unclosed", "keyInText"};
    for (const Case& c : cases) {
        std::string found;
        for (const toolbox::TemplateProblem& problem : manager_.checkTemplate(c.text)) {
            found += kinds[static_cast<int>(problem.kind)];
            found += "@" + std::to_string(problem.position) + ":" + problem.word.str() + " ";
        }
        EXPECT_EQ(found, c.problems) << c.text;
    }
    EXPECT_TRUE(manager_.fetched.empty()) << "no values are needed";
}

}  // namespace
