#include "stores.h"

#include <fcntl.h>
#include <lmdb.h>
#include <sqlite3.h>
#include <unistd.h>

#include <bit>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "toolbox/block_files.h"

namespace bench {
namespace {

void must(bool ok, const char* what) {
    if (ok) return;
    std::fprintf(stderr, "block_bench: %s failed\n", what);
    std::exit(1);
}

std::size_t bytesOf(const Job& job) {
    return 160 + job.ids.size() * (148 + job.data.size() + 8) + 148;
}

/// The simplest hash that serves: open addressing, half full, one multiplication.
class Offsets {
  public:
    explicit Offsets(std::size_t count)
        : slots_(std::bit_ceil(count * 2)), shift_(32 - std::countr_zero(slots_.size())) {}

    std::uint32_t& operator[](std::uint32_t id) {
        std::size_t at = id * 0x9E3779B1u >> shift_;
        while (slots_[at].offset && slots_[at].id != id) at = (at + 1) & (slots_.size() - 1);
        slots_[at].id = id;
        return slots_[at].offset;
    }

  private:
    struct Slot {
        std::uint32_t id, offset;
    };
    std::vector<Slot> slots_;
    int shift_;
};

void readExactly(int file, void* to, std::size_t n, std::size_t offset) {
    must(pread(file, to, n, static_cast<off_t>(offset)) == static_cast<ssize_t>(n), "pread");
}

sqlite3* openSqlite(const std::string& name) {
    sqlite3* base = nullptr;
    must(sqlite3_open(name.c_str(), &base) == SQLITE_OK, "sqlite3_open");
    must(sqlite3_exec(base, "PRAGMA synchronous=OFF; PRAGMA journal_mode=OFF", nullptr, nullptr,
                      nullptr) == SQLITE_OK,
         "pragma");
    return base;
}

MDB_env* openLmdb(const std::string& name, unsigned flags) {
    MDB_env* environment = nullptr;
    must(mdb_env_create(&environment) == 0, "mdb_env_create");
    must(mdb_env_set_mapsize(environment, std::size_t{4} << 30) == 0, "mapsize");
    must(mdb_env_open(environment, name.c_str(), MDB_NOSUBDIR | MDB_NOSYNC | flags, 0644) == 0,
         "mdb_env_open");
    return environment;
}

}  // namespace

void saveRaw(const std::string& name, const Job& job) {
    static const std::string piece(1 << 20, 'r');
    const int file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    for (std::size_t left = bytesOf(job); left > 0;) {
        const std::size_t n = std::min(left, piece.size());
        must(::write(file, piece.data(), n) == static_cast<ssize_t>(n), "write");
        left -= n;
    }
    ::close(file);
}

void fetchRaw(const std::string& blockFile, const Job& job, Count count) {
    const int file = ::open(blockFile.c_str(), O_RDONLY);
    std::uint32_t header[40];
    readExactly(file, header, sizeof header, 0);
    std::vector<std::uint32_t> index(job.ids.size() * 2);
    readExactly(file, index.data(), index.size() * 4, header[37] + 136);
    Offsets offsets(job.ids.size());
    for (std::size_t i = 0; i < index.size(); i += 2) offsets[index[i]] = index[i + 1];
    std::vector<char> block(148 + job.data.size());
    for (std::size_t i = 0; i < count; ++i) {
        readExactly(file, block.data(), block.size(), offsets[job.fetched[i]]);
        must(std::memcmp(block.data(), &job.fetched[i], 4) == 0, "raw");
    }
    ::close(file);
}

void saveBlocks(const std::string& name, const Job& job) {
    TarvFileWrite file;
    must(file.open(name.c_str()), "open");
    TarvBlocFile block;
    for (const std::uint32_t id : job.ids) {
        block.setID(id);
        block.setData(job.data.size(), job.data.data());
        must(file.writeBloc(block), "writeBloc");
    }
    must(file.commit() && file.close(), "commit");
}

void fetchBlocks(const std::string& name, const Job& job, Count count) {
    TarvFileRead file;
    must(file.open(name.c_str()), "open");
    TarvBlocFile block;
    for (std::size_t i = 0; i < count; ++i)
        must(file.getBloc(job.fetched[i], block) && block.getLen() == job.data.size(), "getBloc");
}

void saveSqlite(const std::string& name, const Job& job) {
    sqlite3* base = openSqlite(name);
    sqlite3_exec(base, "CREATE TABLE block(id INTEGER PRIMARY KEY, data BLOB); BEGIN", nullptr,
                 nullptr, nullptr);
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(base, "INSERT INTO block VALUES(?,?)", -1, &insert, nullptr);
    for (const std::uint32_t id : job.ids) {
        sqlite3_bind_int64(insert, 1, id);
        sqlite3_bind_blob(insert, 2, job.data.data(), static_cast<int>(job.data.size()),
                          SQLITE_STATIC);
        must(sqlite3_step(insert) == SQLITE_DONE, "insert");
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    must(sqlite3_exec(base, "COMMIT", nullptr, nullptr, nullptr) == SQLITE_OK, "commit");
    sqlite3_close(base);
}

void fetchSqlite(const std::string& name, const Job& job, Count count) {
    sqlite3* base = openSqlite(name);
    sqlite3_stmt* select = nullptr;
    sqlite3_exec(base, "BEGIN", nullptr, nullptr, nullptr);
    sqlite3_prepare_v2(base, "SELECT data FROM block WHERE id=?", -1, &select, nullptr);
    std::vector<char> data(job.data.size());
    for (std::size_t i = 0; i < count; ++i) {
        sqlite3_bind_int64(select, 1, job.fetched[i]);
        must(sqlite3_step(select) == SQLITE_ROW, "select");
        std::memcpy(data.data(), sqlite3_column_blob(select, 0), data.size());
        sqlite3_reset(select);
    }
    sqlite3_finalize(select);
    sqlite3_exec(base, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(base);
}

void saveLmdb(const std::string& name, const Job& job) {
    MDB_env* environment = openLmdb(name, 0);
    MDB_txn* transaction = nullptr;
    MDB_dbi table = 0;
    must(mdb_txn_begin(environment, nullptr, 0, &transaction) == 0, "txn");
    must(mdb_dbi_open(transaction, nullptr, MDB_INTEGERKEY, &table) == 0, "dbi");
    for (std::uint32_t id : job.ids) {
        MDB_val key{sizeof id, &id};
        MDB_val value{job.data.size(), const_cast<char*>(job.data.data())};
        must(mdb_put(transaction, table, &key, &value, MDB_NOOVERWRITE) == 0, "put");
    }
    must(mdb_txn_commit(transaction) == 0, "commit");
    mdb_env_close(environment);
}

void fetchLmdb(const std::string& name, const Job& job, Count count) {
    MDB_env* environment = openLmdb(name, MDB_RDONLY);
    MDB_txn* transaction = nullptr;
    MDB_dbi table = 0;
    must(mdb_txn_begin(environment, nullptr, MDB_RDONLY, &transaction) == 0, "txn");
    must(mdb_dbi_open(transaction, nullptr, 0, &table) == 0, "dbi");
    std::vector<char> data(job.data.size());
    for (std::size_t i = 0; i < count; ++i) {
        std::uint32_t id = job.fetched[i];
        MDB_val key{sizeof id, &id};
        MDB_val value{};
        must(mdb_get(transaction, table, &key, &value) == 0, "get");
        std::memcpy(data.data(), value.mv_data, data.size());
    }
    mdb_txn_abort(transaction);
    mdb_env_close(environment);
}

}  // namespace bench
