// Formulas: the library against the grid done step by step and against muParser.
//
// Before anything is timed, the library and the step-by-step grid are given the same generated
// texts, three million unless --texts=N says otherwise, and must agree on every kind, value, text
// and flag.

#include <benchmark/benchmark.h>
#include <muParser.h>
#include <unistd.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "agreement.h"
#include "literal_grid.h"
#include "parser/formula.h"
#include "toolbox/parser.h"

namespace {

/// What an engineering sheet computes; all three accept every one of them and agree on the value.
constexpr auto kFormulas = std::to_array<const char*>(
    {"A1*B1+C1", "(A1+B1)*C1/12", "A1*A1*A1*B1/12", "5*A1*B1^4/(384*C1*D1)", "sqrt(A1^2+B1^2)",
     "2.5*(A1-1.5)+0.75", "A1/B1-C1/D1", "-A1+2*(B1-1.5E3)", "sin(A1)*cos(B1)",
     "3.14159265*A1*A1/4*7850", "(1+2)*3-4/5", "12.5*0.25+100"});
constexpr std::array<double, 4> kCellValues = {3, 0.125, 210000, 77.5};

void fillCells(Parser& grid, literal::Grid& steps) {
    for (std::size_t i = 0; i < kCellValues.size(); ++i) {
        const int col = static_cast<int>(i);
        grid.setCell(0, col, kCellValues[i]);
        steps.setCell(0, col, std::to_string(kCellValues[i]).c_str());
    }
}

bool agree(long texts) {
    const Agreement result = compareGrids(texts, 20);
    if (result.agrees)
        std::fprintf(stderr, "%ld texts agree, %ld of them formulas.\n", texts, result.formulas);
    else
        std::fprintf(stderr, "They differ on: %s\n", result.differsOn.c_str());
    return result.agrees;
}

class MuParser {
  public:
    MuParser() : values_(kCellValues) {
        const char* names[] = {"A1", "B1", "C1", "D1"};
        for (std::size_t i = 0; i < values_.size(); ++i) parser_.DefineVar(names[i], &values_[i]);
    }
    double evaluate(const char* text) {
        parser_.SetExpr(text);
        return parser_.Eval();
    }

  private:
    mu::Parser parser_;
    std::array<double, 4> values_;
};

bool agreeWithMuParser() {
    Parser grid;
    literal::Grid steps;
    fillCells(grid, steps);
    MuParser peer;
    for (const char* text : kFormulas) {
        grid.setCell(1, 0, text);
        const double ours = grid.getCell(1, 0);
        if (std::fabs(ours - peer.evaluate(text)) > 1e-12 * std::fabs(ours)) {
            std::fprintf(stderr, "muParser differs on: %s\n", text);
            return false;
        }
    }
    return true;
}

template <class Evaluate>
void overFormulas(benchmark::State& state, Evaluate evaluate) {
    for (auto _ : state)
        for (const char* text : kFormulas) benchmark::DoNotOptimize(evaluate(text));
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(kFormulas.size()));
}

toolbox::parser::CellTable filledTable() {
    toolbox::parser::CellTable cells;
    for (std::size_t i = 0; i < kCellValues.size(); ++i) {
        cells[i][0] = std::make_shared<toolbox::parser::Cell>();
        cells[i][0]->kind = toolbox::CellKind::value;
        cells[i][0]->value = kCellValues[i];
    }
    return cells;
}

void parseLibrary(benchmark::State& state) {
    const auto cells = filledTable();
    std::array<toolbox::parser::Step, 64> room;
    overFormulas(state, [&](const char* text) {
        toolbox::parser::Emitter code(room);
        return toolbox::parser::parseFormula(text, cells, code).value;
    });
}
BENCHMARK(parseLibrary);

void parseStepByStep(benchmark::State& state) {
    Parser grid;
    literal::Grid steps;
    fillCells(grid, steps);
    std::array<char, literal::kLongestText> copy;
    overFormulas(state, [&](const char* text) {
        // The text is put in capitals where it is, so each round takes a fresh one.
        std::memcpy(copy.data(), text, std::strlen(text) + 1);
        int kind;
        return steps.parse(copy.data(), &kind);
    });
}
BENCHMARK(parseStepByStep);

void parseMuParser(benchmark::State& state) {
    MuParser peer;
    overFormulas(state, [&](const char* text) { return peer.evaluate(text); });
}
BENCHMARK(parseMuParser);

template <class Grid>
void setFormulas(benchmark::State& state, Grid& grid) {
    overFormulas(state, [&](const char* text) {
        grid.setCell(1, 0, text);
        return 0;
    });
}

void setCellLibrary(benchmark::State& state) {
    Parser grid;
    literal::Grid steps;
    fillCells(grid, steps);
    setFormulas(state, grid);
}
BENCHMARK(setCellLibrary);

void setCellStepByStep(benchmark::State& state) {
    Parser grid;
    literal::Grid steps;
    fillCells(grid, steps);
    setFormulas(state, steps);
}
BENCHMARK(setCellStepByStep);

/// The formulas that name a cell, one in each row of two columns.
template <class Grid>
std::vector<int> fillFormulas(Grid& grid) {
    std::vector<int> rows;
    for (const char* text : kFormulas)
        if (std::strpbrk(text, "ABCD") && rows.size() < 9) {
            rows.push_back(static_cast<int>(rows.size()) + 1);
            grid.setCell(rows.back(), 0, text);
        }
    return rows;
}

template <class Grid>
void readFormulas(benchmark::State& state, Grid& grid) {
    const std::vector<int> rows = fillFormulas(grid);
    for (auto _ : state)
        for (const int row : rows) benchmark::DoNotOptimize(grid.getCell(row, 0));
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(rows.size()));
}

/// What a read costs when a cell has changed since.
void runLibrary(benchmark::State& state) {
    const auto cells = filledTable();
    std::vector<std::vector<toolbox::parser::Step>> programs;
    for (const char* text : kFormulas)
        if (std::strpbrk(text, "ABCD") && programs.size() < 9)
            programs.push_back(toolbox::parser::compileFormula(text, std::strlen(text)));
    for (auto _ : state)
        for (const auto& program : programs)
            benchmark::DoNotOptimize(toolbox::parser::run(program, cells));
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(programs.size()));
}
BENCHMARK(runLibrary);

void getCellLibrary(benchmark::State& state) {
    Parser grid;
    literal::Grid steps;
    fillCells(grid, steps);
    readFormulas(state, grid);
}
BENCHMARK(getCellLibrary);

void getCellStepByStep(benchmark::State& state) {
    Parser grid;
    literal::Grid steps;
    fillCells(grid, steps);
    readFormulas(state, steps);
}
BENCHMARK(getCellStepByStep);

/// A megabyte of digits, of parentheses and of terms: the time per byte is that of a small text.
void longText(benchmark::State& state) {
    const auto length = static_cast<std::size_t>(state.range(0));
    std::string text;
    while (text.size() < length) text += "1+A1*";
    text.resize(length / 5 * 5);
    text += '2';
    Parser grid;
    for (auto _ : state) benchmark::DoNotOptimize(toolbox::diagnoseFormula(text.c_str()).kind);
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}
BENCHMARK(longText)->Arg(1 << 10)->Arg(1 << 20);

}  // namespace

int main(int argc, char** argv) {
    long texts = 3'000'000;
    for (int i = 1; i < argc; ++i)
        if (std::string_view(argv[i]).starts_with("--texts=")) {
            texts = std::atol(argv[i] + std::strlen("--texts="));
            argv[i] = argv[--argc];
        }
    // The library's messages are none of this program's output.
    std::fflush(stdout);
    const int terminal = dup(1);
    if (!std::freopen("/dev/null", "w", stdout)) return 1;
    const bool ok = agree(texts) && agreeWithMuParser();
    std::fflush(stdout);
    dup2(terminal, 1);
    if (!ok) return 1;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
