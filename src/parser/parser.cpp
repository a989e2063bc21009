// The grid: its cells, its budget, and reading formulas again only when something has changed.
#include "toolbox/parser.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <optional>
#include <utility>

#include "base/number_text.h"
#include "base/scaled_decimal.h"
#include "base/short_number.h"
#include "parser/formula.h"
#include "parser/program.h"
#include "toolbox/platform.h"

using toolbox::CellKind;
using toolbox::parser::Cell;
using toolbox::parser::kColumns;
using toolbox::parser::kRows;

namespace {

int errorFlag = 0;

/// Counts what may change the value of a formula, in any grid: a cell set, deleted or computed to
/// another value, a grid copied or assigned. A formula that was computed since is not computed
/// again.
std::uint64_t changes = 1;

/// Address space that the budget leaves to the rest of the program.
constexpr std::uint64_t kReserve = 1000;

/// Steps of a formula that is compiled while it is parsed; a longer one is parsed once more.
constexpr std::size_t kUsualSteps = 64;

bool insideGrid(int col, int row) {
    return col >= 0 && col < kColumns && row >= 0 && row < kRows;
}

void errorMessage(const char* text) {
    std::fputc('\a', stdout);
    std::fputs(text, stdout);
}

constexpr const char* kNoMemory = "Not enough memory to allocate cell.";

/// Stores a cell, or reports that there is no memory for it.
template <class Store>
void withinMemory(Store store) {
    try {
        store();
    } catch (const std::bad_alloc&) {
        errorMessage(kNoMemory);
    }
}

std::int64_t cost(const Cell& cell) {
    const auto evenLength = static_cast<std::int64_t>(cell.text.size() / 2 * 2);
    switch (cell.kind) {
        case CellKind::text:
            return evenLength + 10;
        case CellKind::formula:
            return evenLength + 18;
        default:
            return 16;
    }
}

void capitalize(char* text) {
    for (char* c = text; *c != '\0'; ++c) *c = toolbox::parser::capital(*c);
}

bool readName(const char* name, int& col, int& row) {
    return name && toolbox::parser::readCellName(name, col, row, [](char c) { return c; });
}

constexpr int kSignificantDigits = 8;

/// Rounds to the significant digits that setCell stores. Nothing for magnitudes far from 1, whose
/// rounding takes more than one exact operation.
std::optional<double> roundedToStore(double value) {
    using toolbox::base::kPowersOfTen;
    toolbox::base::ShortNumber number;
    if (!std::isfinite(value) ||
        !toolbox::base::roundExponent(value, kSignificantDigits - 1, number))
        return {};
    // The digits and the power of ten are exact doubles: one operation gives the nearest one.
    const int scale = number.exponent - number.decimals;
    const auto power = static_cast<std::size_t>(std::abs(scale));
    if (power >= kPowersOfTen.size()) return {};
    const auto digits = static_cast<double>(static_cast<std::int64_t>(number.digits));
    const auto ten = static_cast<double>(kPowersOfTen[power]);
    return std::copysign(scale < 0 ? digits / ten : digits * ten, value);
}

std::int32_t initialBudget() {
    const std::uint64_t available = toolbox::platform::current().system->availableVirtualMemory();
    if (available <= kReserve) return 0;
    return static_cast<std::int32_t>(
        std::min<std::uint64_t>(available - kReserve, std::numeric_limits<std::int32_t>::max()));
}

}  // namespace

Parser::CopyIsAChange::CopyIsAChange(const CopyIsAChange&) {
    ++changes;
}
Parser::CopyIsAChange& Parser::CopyIsAChange::operator=(const CopyIsAChange&) {
    ++changes;
    return *this;
}

Parser::Parser() : memoryLeft_(initialBudget()) {
    setError(0);
}
Parser::~Parser() = default;
Parser::Parser(const Parser& other) = default;
Parser& Parser::operator=(const Parser& other) = default;

void Parser::setCell(int row, int col, char* text) {
    setAt(row, col, text, text);
}
void Parser::setCell(int row, int col, const char* text) {
    setAt(row, col, text, nullptr);
}
void Parser::setCell(const char* cellName, char* text) {
    setByName(cellName, text, text);
}
void Parser::setCell(const char* cellName, const char* text) {
    setByName(cellName, text, nullptr);
}

void Parser::setCell(int row, int col, double value) {
    setError(0);
    currentRow_ = row;
    currentColumn_ = col;
    setNumber(value);
}

void Parser::setCell(const char* cellName, double value) {
    setError(0);
    readName(cellName, currentColumn_, currentRow_);
    setNumber(value);
}

void Parser::setNumber(double value) {
    const auto rounded = roundedToStore(value);
    if (!rounded) {
        char text[64];
        *toolbox::base::printGcvt(text, value, kSignificantDigits) = '\0';
        return act(text, nullptr);
    }
    if (!insideGrid(currentColumn_, currentRow_)) return;
    deleteCell(currentColumn_, currentRow_);
    Cell cell;
    cell.kind = CellKind::value;
    cell.value = *rounded;
    withinMemory([&] { store(std::move(cell)); });
}

void Parser::setAt(int row, int col, const char* text, char* capitals) {
    setError(0);
    if (!text) return;
    currentRow_ = row;
    currentColumn_ = col;
    act(text, capitals);
}

void Parser::setByName(const char* cellName, const char* text, char* capitals) {
    setError(0);
    if (!text) return;
    readName(cellName, currentColumn_, currentRow_);
    act(text, capitals);
}

void Parser::act(const char* text, char* capitals) {
    if (!insideGrid(currentColumn_, currentRow_)) return;
    deleteCell(currentColumn_, currentRow_);

    std::array<toolbox::parser::Step, kUsualSteps> room;
    toolbox::parser::Emitter code(room);
    const toolbox::parser::Parsed parsed = toolbox::parser::parseFormula(text, cells_, code);
    if (parsed.fault == toolbox::FormulaFault::tooDeep) errorMessage("Parser stack overflow.");
    if (parsed.kind != CellKind::text && capitals) capitalize(capitals);

    withinMemory([&] {
        Cell cell;
        cell.kind = parsed.kind;
        if (parsed.kind != CellKind::text) cell.value = parsed.value;
        if (parsed.kind != CellKind::value) cell.text = text;
        if (parsed.kind == CellKind::formula) {
            capitalize(cell.text.data());
            if (code.overflowed())
                cell.program = toolbox::parser::compileFormula(text, parsed.tokens);
            else
                cell.program.assign(code.steps().begin(), code.steps().end());
        }
        store(std::move(cell));
    });
}

void Parser::store(Cell cell) {
    const std::int64_t price = cost(cell);
    if (memoryLeft_ < price) {
        errorMessage(kNoMemory);
        return;
    }
    cells_[static_cast<std::size_t>(currentColumn_)][static_cast<std::size_t>(currentRow_)] =
        std::make_shared<Cell>(std::move(cell));
    ++changes;
    memoryLeft_ -= static_cast<std::int32_t>(price);
    lastColumn_ = std::max(lastColumn_, currentColumn_);
    lastRow_ = std::max(lastRow_, currentRow_);
}

void Parser::deleteCell(int col, int row) {
    auto& cell = cells_[static_cast<std::size_t>(col)][static_cast<std::size_t>(row)];
    if (!cell) return;
    memoryLeft_ += static_cast<std::int32_t>(cost(*cell));
    cell.reset();
    ++changes;
    changed_ = true;
    if (col == lastColumn_) lowerLastColumn();
    if (row == lastRow_) lowerLastRow();
}

void Parser::lowerLastColumn() {
    const auto isEmpty = [this](int col) {
        const auto& column = cells_[static_cast<std::size_t>(col)];
        return std::none_of(column.begin(), column.end(), [](const auto& cell) { return !!cell; });
    };
    while (lastColumn_ > 0 && isEmpty(lastColumn_)) --lastColumn_;
}

void Parser::lowerLastRow() {
    const auto isEmpty = [this](int row) {
        return std::none_of(cells_.begin(), cells_.end(), [row](const auto& column) {
            return !!column[static_cast<std::size_t>(row)];
        });
    };
    while (lastRow_ > 0 && isEmpty(lastRow_)) --lastRow_;
}

double Parser::getCell(int row, int col) {
    Cell* cell = find(row, col);
    if (!cell) return 0.0;
    if (cell->kind == CellKind::formula &&
        (cell->computedAt != changes || cell->computedIn != this))
        compute(*cell);
    if (cell->value == HUGE_VAL) setError(1);
    return cell->value;
}

void Parser::compute(Cell& cell) const {
    cell.computedAt = changes;
    cell.computedIn = this;
    const double value = toolbox::parser::run(cell.program, cells_);
    // Even when the formula names its own cell: the next read then computes another step.
    if (std::bit_cast<std::uint64_t>(value) != std::bit_cast<std::uint64_t>(cell.value)) ++changes;
    cell.value = value;
}

double Parser::getCell(const char* cellName) {
    int col = 0;
    int row = 0;
    return readName(cellName, col, row) ? getCell(row, col) : 0.0;
}

Cell* Parser::find(int row, int col) const {
    if (!insideGrid(col, row)) return nullptr;
    return cells_[static_cast<std::size_t>(col)][static_cast<std::size_t>(row)].get();
}

long Parser::getMemoryLeft() const {
    return memoryLeft_;
}
int Parser::isError() {
    return errorFlag;
}
void Parser::setError(int error) {
    errorFlag = error;
}

CellKind Parser::cellKind(int row, int col) const {
    const Cell* cell = find(row, col);
    return cell ? cell->kind : CellKind::empty;
}

CString Parser::cellText(int row, int col) const {
    const Cell* cell = find(row, col);
    return cell ? CString(cell->text) : CString();
}

int Parser::lastColumn() const {
    return lastColumn_;
}
int Parser::lastRow() const {
    return lastRow_;
}
bool Parser::isChanged() const {
    return changed_;
}
