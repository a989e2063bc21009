// The ways to keep blocks that are compared. Each saves the same blocks and fetches them by
// identifier; a failure ends the program.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

struct Job {
    std::vector<std::uint32_t> ids;      ///< in writing order
    std::vector<std::uint32_t> fetched;  ///< in reading order
    std::string data;                    ///< the data of every block
};

/// Fetches the first `count` of the job's fetched identifiers.
using Count = std::size_t;

// The floor: the same bytes in 1 MiB writes; a hash from identifier to offset and one pread each,
// over the file that the library wrote.
void saveRaw(const std::string& name, const Job& job);
void fetchRaw(const std::string& blockFile, const Job& job, Count count);

void saveBlocks(const std::string& name, const Job& job);
void fetchBlocks(const std::string& name, const Job& job, Count count);

// A table of blobs; one transaction, neither sync nor journal.
void saveSqlite(const std::string& name, const Job& job);
void fetchSqlite(const std::string& name, const Job& job, Count count);

// One transaction, no sync.
void saveLmdb(const std::string& name, const Job& job);
void fetchLmdb(const std::string& name, const Job& job, Count count);

}  // namespace bench
