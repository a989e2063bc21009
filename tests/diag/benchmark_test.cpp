#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>

#include "support/fake_system.h"
#include "support/temp_folder.h"
#include "toolbox/diagnostics.h"

namespace {

std::string printed(const Benchmark& benchmark) {
    const TempFolder folder;
    std::FILE* const file = std::fopen((folder / "table").c_str(), "wb");
    benchmark.print(file);
    std::fclose(file);
    return folder.read("table");
}

TEST(Benchmark, PrintsWholeSecondsSinceTheFirstEvent) {
    FakeSystem system;
    system.milliseconds = 0xFFFFFF00;  // about to start anew
    Benchmark benchmark;
    benchmark.set("start");
    system.milliseconds += 1900;
    benchmark.set("sections read");
    system.milliseconds += 1900;
    benchmark.set("a name that is longer than its forty characters");
    const std::string table =
        "     EVENT                      TIME            DELTA\n\n"
        "start                            0.00\n"
        "                                                 1.00\n"
        "sections read                    1.00\n"
        "                                                 2.00\n"
        "a name that is longer than its forty ch           3.00\n";
    EXPECT_EQ(printed(benchmark), table);
    std::ostringstream out;
    benchmark.print(out);
    EXPECT_EQ(out.str(), table);
}

}  // namespace
