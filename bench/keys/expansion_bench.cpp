// Expansion of templates with many tokens, against the literal algorithm and against what cannot be
// spared: one dictionary look-up for each token, and the text of its value.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <unordered_map>
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

void countTokens(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void expand(benchmark::State& state) {
    BenchManager& manager = startedManager();
    const RWCString text = makeTemplate(static_cast<std::size_t>(state.range(0))).text;
    for (auto _ : state) benchmark::DoNotOptimize(manager.getParseString(text, 1));
    countTokens(state);
}
BENCHMARK(expand)->Arg(10)->Arg(100)->Arg(1000)->Arg(10000);

void literally(benchmark::State& state) {
    BenchManager& manager = startedManager();
    const std::string text = makeTemplate(static_cast<std::size_t>(state.range(0))).text;
    const auto matching = manager.getMatching();
    for (auto _ : state) benchmark::DoNotOptimize(expandLiterally(manager, matching, text));
    countTokens(state);
}
BENCHMARK(literally)->Arg(10)->Arg(100)->Arg(1000)->Arg(10000);

using Ids = std::unordered_map<std::string, UINT>;

Ids makeIds() {
    Ids ids;
    for (UINT id = 0; id < kKeys; ++id) ids[BenchManager::keyString(id)] = id;
    return ids;
}

/// Words that are split already, found in a dictionary of the standard library, and their values.
void lookUpsAndValues(benchmark::State& state) {
    BenchManager& manager = startedManager();
    const Ids ids = makeIds();
    const Template made = makeTemplate(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        for (const std::string& word : made.words) {
            benchmark::DoNotOptimize(manager.getFormatedString(ids.find(word)->second, 1));
        }
    }
    countTokens(state);
}
BENCHMARK(lookUpsAndValues)->Arg(10)->Arg(100)->Arg(1000)->Arg(10000);

void lookUps(benchmark::State& state) {
    const Ids ids = makeIds();
    const Template made = makeTemplate(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        for (const std::string& word : made.words) benchmark::DoNotOptimize(ids.find(word));
    }
    countTokens(state);
}
BENCHMARK(lookUps)->Arg(10)->Arg(100)->Arg(1000)->Arg(10000);

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
