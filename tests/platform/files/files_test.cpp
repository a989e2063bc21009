#include <limits>
#include <tuple>

#include "platform/files/host_files.h"

namespace {

TEST_F(HostFiles, DispositionDecidesWhatOpeningDoes) {
    const std::tuple<std::string, std::uint32_t, std::uint32_t, ErrorCode, std::string> cases[] = {
        {"old", kWrite, CREATE_NEW, ERROR_FILE_EXISTS, "old bytes"},
        {"new", kWrite, CREATE_NEW, 0, ""},
        {"old", kWrite, CREATE_ALWAYS, 0, ""},
        {"old", kRead, CREATE_ALWAYS, 0, ""},
        {"old", kRead, OPEN_EXISTING, 0, "old bytes"},
        {"new", kRead, OPEN_EXISTING, ERROR_FILE_NOT_FOUND, "<none>"},
        {"old", kWrite, OPEN_ALWAYS, 0, "old bytes"},
        {"old", kWrite, TRUNCATE_EXISTING, 0, ""},
        {"new", kWrite, TRUNCATE_EXISTING, ERROR_FILE_NOT_FOUND, "<none>"},
        {"none/new", kWrite, CREATE_ALWAYS, ERROR_PATH_NOT_FOUND, "<none>"},
        {"none\\new", kRead, OPEN_EXISTING, ERROR_PATH_NOT_FOUND, "<none>"},
    };
    for (const auto& [name, access, disposition, error, after] : cases) {
        SCOPED_TRACE(name + " " + std::to_string(disposition));
        folder.write("old", "old bytes");
        std::filesystem::remove(folder / "new");
        EXPECT_EQ(open(folder / name, access, kShareAll, disposition), error);
        closeAll();
        EXPECT_EQ(folder.read(name), after);
    }
    EXPECT_EQ(open(folder.path(), kRead, kShareAll, OPEN_EXISTING), ERROR_ACCESS_DENIED);
    EXPECT_EQ(files.open(nullptr, kRead, 0, OPEN_EXISTING, last), ERROR_PATH_NOT_FOUND);
}

TEST_F(HostFiles, SharingIsRefusedToWhomTheFirstOrTheSecondDenies) {
    const struct {
        std::uint32_t firstAccess, firstShare, secondAccess, secondShare;
        ErrorCode error;
    } cases[] = {
        {kWrite, 0, kRead, kShareRead, ERROR_SHARING_VIOLATION},
        {kRead, kShareRead, kWrite, 0, ERROR_SHARING_VIOLATION},
        {kRead, 0, kRead, kShareRead, ERROR_SHARING_VIOLATION},
        {kWrite, kShareRead, kRead, kShareAll, 0},
        {kWrite, kShareAll, kWrite, kShareAll, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        const std::string name = folder.write("shared", "kept");
        ASSERT_EQ(open(name, c.firstAccess, c.firstShare, OPEN_EXISTING), 0u);
        // One who may not have the file must not have emptied it either.
        const std::uint32_t disposition =
            c.error && c.secondAccess & kWrite ? CREATE_ALWAYS : OPEN_EXISTING;
        EXPECT_EQ(open(name, c.secondAccess, c.secondShare, disposition), c.error);
        closeAll();
        EXPECT_EQ(folder.read("shared"), "kept");
    }
}

TEST_F(HostFiles, SeeksFromBothEndsAndBeyond4GiB) {
    ASSERT_EQ(open(folder / "data", kRead | kWrite, 0, CREATE_NEW), 0u);
    std::uint32_t count = 0;
    std::uint64_t number = 0;
    char buffer[8] = {};
    EXPECT_EQ(files.write(last, "0123456789", 10, count), 0u);
    EXPECT_EQ(files.seek(last, -3, SeekFrom::end, number), 0u);
    EXPECT_EQ(number, 7u);
    EXPECT_NE(files.readAt(last, std::numeric_limits<std::uint64_t>::max(), buffer, 8, count), 0u);

    // What was skipped reads as zeros and takes no room on most file systems.
    EXPECT_EQ(files.seek(last, 0x100000001, SeekFrom::begin, number), 0u);
    EXPECT_EQ(files.write(last, "x", 1, count), 0u);
    EXPECT_EQ(files.size(last, number), 0u);
    EXPECT_EQ(number, 0x100000002u);
    EXPECT_EQ(files.readAt(last, 0x100000000, buffer, 8, count), 0u);
    EXPECT_EQ(std::string(buffer, count), std::string("\0x", 2));
    EXPECT_EQ(files.flush(last), 0u);
}

#if !defined(_WIN32)
TEST_F(HostFiles, AFullDiskIsTold) {
    std::uint32_t count = 9;
    ASSERT_EQ(open("/dev/full", kWrite, 0, OPEN_EXISTING), 0u);
    EXPECT_EQ(files.write(last, "abc", 3, count), ERROR_DISK_FULL);
    EXPECT_EQ(count, 0u);
}
#endif

}  // namespace
