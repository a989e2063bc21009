// Expansion of templates with many tokens, against the literal algorithm and against what cannot be
// spared: one dictionary look-up for each token, and the text of its value.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "bench_manager.h"
#include "literal_expansion.h"

namespace {

constexpr UINT kKeys = 1000;

struct Template {
    std::string text;
    std::vector<std::string> words;  ///< its tokens
};

Template makeTemplate(std::size_t tokens) {
    std::mt19937 chance(1);
    Template made;
    for (std::size_t i = 0; i < tokens; ++i) {
        made.words.push_back(BenchManager::keyString(static_cast<UINT>(chance() % kKeys)));
        made.text += "label = $" + made.words.back() + "$, ";
    }
    return made;
}

BenchManager& startedManager() {
    static BenchManager manager("unused.ini");
    manager.declare(kKeys);
    manager.initUDApp();
    return manager;
}

/// The matching set is a plain ordered list here, which each test of a token searches.
std::string expandLiterally(BenchManager& manager, const RWTValOrderedVector<UINT>& matching,
                            const std::string& text) {
    return literal::expand(
        text,
        [&](const std::string& word) {
            const UINT id = manager.getId(word);
            return id != 0xFFFFFFFF && matching.contains(id);
        },
        [&](const std::string& word) {
            return manager.getFormatedString(manager.getId(word), 1).str();
        });
}

void tokens(benchmark::internal::Benchmark* benchmark) {
    benchmark->RangeMultiplier(10)->Range(10, 10000);
}

void countTokens(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// With what the application gives and what it costs to print it, or with empty values.
class Values {
  public:
    explicit Values(bool given) { startedManager().hasValues = given; }
    ~Values() { startedManager().hasValues = true; }
};

template <bool withValues>
void expand(benchmark::State& state) {
    BenchManager& manager = startedManager();
    const Values values(withValues);
    const RWCString text = makeTemplate(static_cast<std::size_t>(state.range(0))).text;
    for (auto _ : state) benchmark::DoNotOptimize(manager.getParseString(text, 1));
    countTokens(state);
}
BENCHMARK(expand<true>)->Apply(tokens);
BENCHMARK(expand<false>)->Apply(tokens);

template <bool withValues>
void literally(benchmark::State& state) {
    BenchManager& manager = startedManager();
    const Values values(withValues);
    const std::string text = makeTemplate(static_cast<std::size_t>(state.range(0))).text;
    const auto matching = manager.getMatching();
    for (auto _ : state) benchmark::DoNotOptimize(expandLiterally(manager, matching, text));
    countTokens(state);
}
BENCHMARK(literally<true>)->Apply(tokens);
BENCHMARK(literally<false>)->Apply(tokens);

/// What the rule asks of each token: its id, whether that matches, its record. The words are split
/// already.
void lookUps(benchmark::State& state) {
    const Template made = makeTemplate(static_cast<std::size_t>(state.range(0)));
    std::unordered_map<std::string, UINT> ids;
    std::unordered_set<UINT> matching;
    std::unordered_map<UINT, int> records;
    for (UINT id = 0; id < kKeys; ++id) {
        ids[BenchManager::keyString(id)] = id;
        matching.insert(id);
        records[id] = 0;
    }
    for (auto _ : state) {
        for (const std::string& word : made.words) {
            const UINT id = ids.find(word)->second;
            benchmark::DoNotOptimize(matching.contains(id));
            benchmark::DoNotOptimize(records.find(id));
        }
    }
    countTokens(state);
}
BENCHMARK(lookUps)->Apply(tokens);

/// Every other token is not a key's, so that its "$"s stay in the text.
void expandWithUnknownTokens(benchmark::State& state) {
    BenchManager& manager = startedManager();
    Template made = makeTemplate(static_cast<std::size_t>(state.range(0)));
    std::string text;
    for (std::size_t i = 0; i < made.words.size(); ++i) {
        text += (i % 2 ? "label = $" : "label = $NO_") + made.words[i] + "$, ";
    }
    for (auto _ : state) benchmark::DoNotOptimize(manager.getParseString(text, 1));
    countTokens(state);
}
BENCHMARK(expandWithUnknownTokens)->Arg(100)->Arg(10000);

}  // namespace

void checkExpansion() {
    BenchManager& manager = startedManager();
    const auto matching = manager.getMatching();
    std::mt19937 chance(2);
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (auto n = chance() % 30; n > 0; --n) {
            const char* pieces[] = {"$", "$$", "text", "KEY_1", "$NONE$", " "};
            const auto id = static_cast<UINT>(chance() % 20);
            text += chance() % 2 ? "$" + BenchManager::keyString(id) + "$"
                                 : pieces[chance() % std::size(pieces)];
        }
        if (manager.getParseString(text, 1) == expandLiterally(manager, matching, text)) continue;
        std::fprintf(stderr, "results differ: %s\n", text.c_str());
        std::exit(1);
    }
}
