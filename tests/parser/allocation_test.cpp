#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>

#include "toolbox/parser.h"

namespace {
int allocations = 0;
}

// Not inline: where only one of a pair is, the compiler takes them for a mismatch.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++allocations;
    if (void* block = std::malloc(size)) return block;
    throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
    std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

namespace {

TEST(Parsing, AllocatesNothing) {
    std::string terms = "1.5E3";
    while (terms.size() < 1 << 20) terms += "+SIN(A1:A9)/123456789012345678901234567890";
    const std::string digits(1 << 20, '7');
    for (const std::string& text : {terms, digits, std::string(1 << 20, '('), std::string("B7")}) {
        const int before = allocations;
        const auto found = toolbox::diagnoseFormula(text.c_str());
        EXPECT_EQ(allocations, before);
        EXPECT_EQ(found.kind == toolbox::CellKind::formula, text == terms || text == "B7");
    }
}

}  // namespace
