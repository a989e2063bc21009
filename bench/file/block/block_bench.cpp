// Block files beside what the same bytes cost at least, and beside SQLite and LMDB.
//
//     block_bench [FOLDER [LARGEST N]]      default: /dev/shm 1000000
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <random>

#include "stopwatch.h"
#include "stores.h"
#include "toolbox/block_files.h"

using namespace bench;

namespace {

struct Names {
    std::string raw, ours, sqlite, lmdb;

    explicit Names(const std::string& folder)
        : raw(folder + "/raw"),
          ours(folder + "/blocks"),
          sqlite(folder + "/sqlite"),
          lmdb(folder + "/lmdb") {}
};

Job jobOf(std::size_t count, std::size_t bytes, bool shuffled) {
    Job job;
    job.ids.resize(count);
    std::iota(job.ids.begin(), job.ids.end(), 1000u);
    std::mt19937 random(1);
    if (shuffled) std::shuffle(job.ids.begin(), job.ids.end(), random);
    job.fetched = job.ids;
    std::shuffle(job.fetched.begin(), job.fetched.end(), random);
    job.data.assign(bytes, 'd');
    return job;
}

Way saving(const std::string& title, void (*save)(const std::string&, const Job&),
           const std::string& name, const Job& job) {
    const auto clear = [name] {
        std::filesystem::remove(name);
        std::filesystem::remove(name + "-lock");
    };
    return {title, [=, &job] { save(name, job); }, clear};
}

void compareStores(const Names& names, std::size_t count, std::size_t bytes, bool shuffled) {
    const Job job = jobOf(count, bytes, shuffled);
    const int rounds = count * bytes > 20'000'000 ? 3 : (count >= 100'000 ? 5 : 21);
    const auto title = [&](const char* what) {
        return std::string(what) + " " + std::to_string(count) + " x " + std::to_string(bytes) +
               (shuffled ? " shuffled" : " ascending");
    };
    const auto n = static_cast<double>(count);
    print(title("write"),
          compare({saving("floor", saveRaw, names.raw, job),
                   saving("ours", saveBlocks, names.ours, job),
                   saving("sqlite", saveSqlite, names.sqlite, job),
                   saving("lmdb", saveLmdb, names.lmdb, job)},
                  rounds),
          n);
    std::filesystem::remove(names.raw);
    const auto fetching = [&](std::size_t wanted) {
        return std::vector<Way>{{"floor", [&, wanted] { fetchRaw(names.ours, job, wanted); }},
                                {"ours", [&, wanted] { fetchBlocks(names.ours, job, wanted); }},
                                {"sqlite", [&, wanted] { fetchSqlite(names.sqlite, job, wanted); }},
                                {"lmdb", [&, wanted] { fetchLmdb(names.lmdb, job, wanted); }}};
    };
    print(title("open, read all"), compare(fetching(count), rounds), n);
    print(title("open, read one"), compare(fetching(1), 31), 1);
    for (const std::string& name : {names.ours, names.sqlite, names.lmdb, names.lmdb + "-lock"})
        std::filesystem::remove(name);
}

/// A pass that only reads, in pieces as large as the search's.
void readThrough(const std::string& name) {
    static std::vector<char> buffer(256 * 1024);
    const int file = ::open(name.c_str(), O_RDONLY);
    while (::read(file, buffer.data(), buffer.size()) > 0) {
    }
    ::close(file);
}

void search(const std::string& name) {
    TarvFileRead file;
    file.setFile(new APIFile(name.c_str(), GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING));
    if (TarvBlocFile().findBloc(0x12345678, file, 0) != 0) std::puts("found what is not there");
}

void compareSearches(const std::string& folder) {
    const std::string random = folder + "/random", ones = folder + "/ones";
    std::mt19937 chance(1);
    std::vector<std::uint32_t> words(1 << 18);
    std::ofstream randomFile(random, std::ios::binary), onesFile(ones, std::ios::binary);
    const std::string ff(words.size() * 4, '\xFF');
    for (int i = 0; i < 256; ++i) {
        for (std::uint32_t& word : words) word = static_cast<std::uint32_t>(chance());
        randomFile.write(reinterpret_cast<const char*>(words.data()), 1 << 20);
        onesFile.write(ff.data(), 1 << 20);
    }
    randomFile.close();
    onesFile.close();
    print("search 256 MiB, per MiB",
          compare({{"reading", [&] { readThrough(random); }},
                   {"random", [&] { search(random); }},
                   {"all 0xFF", [&] { search(ones); }}},
                  11),
          256);
    std::filesystem::remove(random);
    std::filesystem::remove(ones);
}

}  // namespace

int main(int argc, char** argv) {
    const std::string folder = std::string(argc > 1 ? argv[1] : "/dev/shm") + "/block_bench";
    const std::size_t largest = argc > 2 ? std::stoul(argv[2]) : 1'000'000;
    std::filesystem::create_directories(folder);
    const Names names(folder);
    for (std::size_t count = 1000; count <= largest; count *= 10)
        for (const bool shuffled : {false, true}) compareStores(names, count, 64, shuffled);
    compareStores(names, 10'000, 64 * 1024, false);
    compareSearches(folder);
    std::filesystem::remove_all(folder);
}
