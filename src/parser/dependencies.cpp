// Which cells a formula names, and reading the formulas of a grid in the order of their
// dependencies: a depth-first visit, with a cell that is met again on its own path as the start of
// a cycle.
#include <algorithm>
#include <array>
#include <span>

#include "parser/formula.h"
#include "parser/program.h"
#include "toolbox/parser.h"

namespace toolbox {
namespace {

using parser::CellRef;
using parser::kColumns;
using parser::kRows;
using parser::Step;

std::vector<CellPosition> cellsNamedIn(std::span<const Step> program) {
    std::vector<CellPosition> named;
    const auto add = [&](int row, int col) {
        const CellPosition position{row, col};
        if (std::find(named.begin(), named.end(), position) == named.end())
            named.push_back(position);
    };
    for (const Step& step : program) {
        if (!parser::namesCell(step)) continue;
        const CellRef last = step.code == parser::kSumRange ? step.last : step.cell;
        for (int col = step.cell.col; col <= last.col; ++col)
            for (int row = step.cell.row; row <= last.row; ++row) add(row, col);
    }
    return named;
}

}  // namespace

std::vector<CellPosition> cellsNamedBy(const char* text) {
    if (!text) return {};
    parser::Emitter none({});
    const parser::Parsed parsed = parser::parseFormula(text, parser::kNoCells, none);
    if (parsed.kind != CellKind::formula) return {};
    return cellsNamedIn(parser::compileFormula(text, parsed.tokens));
}

namespace {

/// Visits the formulas of a grid depth first: a formula is read on the way back, when all that it
/// names has been.
class DependencyWalk {
  public:
    explicit DependencyWalk(Parser& grid) : grid_(grid) {}

    Recalculation run() {
        for (int col = 0; col < kColumns; ++col)
            for (int row = 0; row < kRows; ++row) visit({row, col});
        return std::move(result_);
    }

  private:
    enum class State : unsigned char { unseen, onPath, fresh, stale };

    /// False when the cell could not be computed. The path is at most as long as the grid is large.
    bool visit(CellPosition at) {
        if (grid_.cellKind(at.row, at.col) != CellKind::formula) return true;
        State& state =
            states_[static_cast<std::size_t>(at.col) * kRows + static_cast<std::size_t>(at.row)];
        if (state == State::onPath) {
            nameCycle(at);
            return false;
        }
        if (state != State::unseen) return state == State::fresh;

        state = State::onPath;
        path_.push_back(at);
        bool fresh = true;
        for (const CellPosition named : grid_.cellsNamedBy(at.row, at.col))
            fresh = visit(named) && fresh;
        path_.pop_back();
        state = fresh ? State::fresh : State::stale;
        if (fresh) {
            grid_.getCell(at.row, at.col);
            result_.order.push_back(at);
        }
        return fresh;
    }

    void nameCycle(CellPosition entry) {
        if (result_.cycle.empty())
            result_.cycle.assign(std::find(path_.begin(), path_.end(), entry), path_.end());
    }

    Parser& grid_;
    std::array<State, std::size_t{kColumns} * kRows> states_{};
    std::vector<CellPosition> path_;
    Recalculation result_;
};

}  // namespace
}  // namespace toolbox

std::vector<toolbox::CellPosition> Parser::cellsNamedBy(int row, int col) const {
    const toolbox::parser::Cell* cell = find(row, col);
    return cell ? toolbox::cellsNamedIn(cell->program) : std::vector<toolbox::CellPosition>{};
}

toolbox::Recalculation Parser::recalculate() {
    return toolbox::DependencyWalk(*this).run();
}
