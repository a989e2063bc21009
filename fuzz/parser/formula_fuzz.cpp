// A text is a formula for the grid exactly when it is one for an evaluator that works another way,
// but for formulas that nest too deep, and both give the same value.

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "recursive_evaluator.h"
#include "toolbox/parser.h"

namespace {

using toolbox::CellKind;
using toolbox::FormulaFault;

void require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "violated: %s\n", what);
    std::abort();
}

bool same(double a, double b) {
    return (std::isnan(a) && std::isnan(b)) ||
           std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

struct Filled {
    const char* name;
    double value;
};
constexpr Filled kFilled[] = {{"A1", 3}, {"A2", -0.5}, {"B1", 1e200}, {"C7", 0.125}, {"J9", -7e-9}};

class Sheet {
  public:
    Sheet() {
        for (const auto& [name, value] : kFilled) {
            grid_.setCell(name, value);
            at(name) = value;
        }
        grid_.setCell("B2", "a text");
        at("B2") = HUGE_VAL;
    }

    /// Puts the text in J10 and holds the grid to the other evaluator's answer.
    void check(const std::string& text) {
        std::string capitals = text;
        for (char& c : capitals)
            if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
        const auto expected = recursive::evaluate(capitals, cells_);

        Parser::setError(3);
        const auto diagnosis = toolbox::diagnoseFormula(text.c_str());
        require(Parser::isError() == 3, "a diagnosis leaves the error flag");
        require(diagnosis.position <= text.size(), "a fault lies in the text");
        std::string given = text;
        grid_.setCell("J10", given.data());
        const CellKind kind = grid_.cellKind(9, 9);
        require(kind == diagnosis.kind, "the diagnosis is what setCell does");

        if (kind == CellKind::text) {
            require(!expected || diagnosis.fault == FormulaFault::tooDeep, "no formula is missed");
            require(diagnosis.fault != FormulaFault::none, "a text has its fault");
            require(given == text && grid_.cellText(9, 9).str() == text, "a text stays whole");
        } else {
            require(expected.has_value(), "nothing else is a formula");
            require(expected->namesCell == (kind == CellKind::formula), "the kind is right");
            require(given == capitals, "a formula is put in capitals");
            checkValue(capitals, expected->value);
        }
        require(toolbox::cellsNamedBy(text.c_str()).empty() == (kind != CellKind::formula),
                "only formulas name cells");
        clear();
    }

  private:
    double& at(const char* name) {
        return cells_[static_cast<std::size_t>(name[0] - 'A')]
                     [static_cast<std::size_t>(std::atoi(name + 1) - 1)];
    }

    /// The first read computes with the value that setting gave J10, should the text name it.
    void checkValue(const std::string& capitals, double atSetting) {
        at("J10") = atSetting;
        const double value = recursive::evaluate(capitals, cells_)->value;
        require(same(grid_.getCell("J10"), value), "both compute the same value");
        require((Parser::isError() != 0) == (value == HUGE_VAL), "the error flag tells HUGE_VAL");
    }

    void clear() {
        grid_.setCell("J10", 0);
        at("J10") = 0;
    }

    Parser grid_;
    recursive::Cells cells_{};
};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    // The grid tells on standard output when a formula nests too deep.
    return std::freopen("/dev/null", "w", stdout) ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    text.resize(std::min(text.find('\0'), text.size()));
    static Sheet sheet;
    sheet.check(text);
    return 0;
}
