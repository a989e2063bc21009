// Block files with and without checksums, and the sums alone.
//
//     checksum_bench [FOLDER [ROUNDS]]      default: /dev/shm 31
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "base/crc32c.h"
#include "stopwatch.h"
#include "toolbox/block_files.h"

using namespace bench;

namespace {

/// How the sums are made, if at all.
enum class Sums { none, instruction, tables };

struct Job {
    std::uint32_t count;
    std::string data;
};

void must(bool ok, const char* what) {
    if (ok) return;
    std::fprintf(stderr, "checksum_bench: %s failed\n", what);
    std::exit(1);
}

void save(const std::string& name, const Job& job, Sums sums) {
    toolbox::base::useCrc32cTables(sums == Sums::tables);
    TarvFileWrite file;
    file.setChecksums(sums != Sums::none ? 1 : 0);
    must(file.open(name.c_str()) != 0, "open");
    TarvBlocFile block;
    for (std::uint32_t id = 1; id <= job.count; ++id) {
        block.setID(id);
        block.setData(job.data.size(), job.data.data());
        must(file.writeBloc(block) != 0, "writeBloc");
    }
    must(file.commit() != 0 && file.close() != 0, "commit");
}

void fetch(const std::string& name, const Job& job, Sums sums) {
    toolbox::base::useCrc32cTables(sums == Sums::tables);
    TarvFileRead file;
    must(file.open(name.c_str()) != 0, "open");
    TarvBlocFile block;
    for (std::uint32_t id = 1; id <= job.count; ++id)
        must(file.getBloc(id, block) != 0 && block.getLen() == job.data.size(), "getBloc");
}

void compareJob(const std::string& folder, const Job& job, int rounds) {
    const std::string plain = folder + "/plain", summed = folder + "/summed";
    const auto saving = [&](const char* title, const std::string& name, Sums sums) {
        return Way{title, [=, &job] { save(name, job, sums); },
                   [=] { std::filesystem::remove(name); }};
    };
    const auto fetching = [&](const char* title, const std::string& name, Sums sums) {
        return Way{title, [=, &job] { fetch(name, job, sums); }};
    };
    const std::string size = std::to_string(job.count) + " x " + std::to_string(job.data.size());
    print("write " + size,
          compare({saving("without", plain, Sums::none),
                   saving("instruction", summed, Sums::instruction),
                   saving("tables", summed, Sums::tables)},
                  rounds),
          job.count);
    print("read " + size,
          compare({fetching("without", plain, Sums::none),
                   fetching("instruction", summed, Sums::instruction),
                   fetching("tables", summed, Sums::tables)},
                  rounds),
          job.count);
}

void compareSums(int rounds) {
    const std::string bytes(64 * 1024, 's');
    constexpr int kTimes = 256;
    static volatile std::uint32_t sink = 0;
    const auto summing = [&](const char* title, auto sum) {
        return Way{title, [&bytes, sum] {
                       for (int i = 0; i < kTimes; ++i) sink = sum(bytes, sink);
                   }};
    };
    print("sum 64 KiB",
          compare({summing("instruction", toolbox::base::crc32cByInstruction),
                   summing("tables", toolbox::base::crc32cByTables)},
                  rounds),
          kTimes);
}

}  // namespace

int main(int argc, char** argv) {
    const std::string folder = std::string(argc > 1 ? argv[1] : "/dev/shm") + "/checksum_bench";
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 31;
    if (!toolbox::base::hasCrc32cInstruction()) std::puts("no instruction: tables both times");
    std::filesystem::create_directories(folder);
    compareJob(folder, {2000, std::string(64 * 1024, 'd')}, rounds);
    compareJob(folder, {100'000, std::string(64, 'd')}, rounds);
    if (toolbox::base::hasCrc32cInstruction()) compareSums(rounds);
    std::filesystem::remove_all(folder);
}
