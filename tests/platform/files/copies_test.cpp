#include <tuple>

#include "platform/files/host_files.h"

namespace {

/// More than is copied at once.
std::string manyBytes() {
    std::string bytes;
    for (int i = 0; i < 300'000; ++i) bytes += static_cast<char>(i % 251);
    return bytes;
}

TEST_F(HostFiles, CopiesBytesAndAttributes) {
    const std::string from = folder.write("from", manyBytes());
    const std::string to = folder / "to";
    EXPECT_EQ(files.copy(from.c_str(), to.c_str(), true), 0u);
    EXPECT_EQ(folder.read("to"), manyBytes());
    EXPECT_EQ(files.copy(from.c_str(), to.c_str(), true), ERROR_FILE_EXISTS);
    folder.write("from", "short");
    EXPECT_EQ(files.setAttributes(from.c_str(), FILE_ATTRIBUTE_READONLY), 0u);
    EXPECT_EQ(files.copy(from.c_str(), to.c_str(), false), 0u);
    EXPECT_EQ(folder.read("to"), "short");
    EXPECT_EQ(files.copy(from.c_str(), (folder / "fresh").c_str(), false), 0u);
    EXPECT_FALSE(files.isReadableAndWritable((folder / "fresh").c_str()));
}

TEST_F(HostFiles, RefusesCopiesThatWouldLoseSomething) {
    const std::string from = folder.write("from", "kept");
    const std::string none = folder / "none";
    EXPECT_EQ(files.copy(from.c_str(), from.c_str(), false), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(files.copy(none.c_str(), from.c_str(), false), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(folder.read("from"), "kept");
    // A file that a writer holds may be half written.
    ASSERT_EQ(open(from, kWrite, 0, OPEN_EXISTING), 0u);
    EXPECT_EQ(files.copy(from.c_str(), none.c_str(), false), ERROR_SHARING_VIOLATION);
    EXPECT_EQ(folder.read("none"), "<none>");
}

std::string compressed(const std::string& data, char algorithm = 'A', int size = 23) {
    return std::string("SZDD\x88\xF0'3") + algorithm + '\0' + static_cast<char>(size) +
           std::string(3, '\0') + data;
}

TEST_F(HostFiles, ExpandsCompressedFilesAndTellsDamagedOnes) {
    // Two characters, a repeat that reads what it writes, and blanks from before the start.
    const std::string data("\3AB\360\377d\0", 7);
    const std::string expanded = "ABABABABABABABABABAB   ";
    const std::tuple<std::string, std::int32_t, std::string> cases[] = {
        {compressed(data), 23, expanded},
#if !defined(_WIN32)
        // Some Windows systems expand all the data there is, whatever size is announced.
        {compressed(data + "left over"), 23, expanded},
        {compressed(data, 'A', 5), 5, expanded.substr(0, 5)},
#endif
        {manyBytes(), 300'000, manyBytes()},
        {"SZDD\x88\xF0'3A", 9, "SZDD\x88\xF0'3A"},
    };
    const std::string to = folder / "to";
    const auto expand = [&](const std::string& given) {
        return files.expandCopy(folder.write("from", given).c_str(), to.c_str());
    };
    for (const auto& [packed, result, bytes] : cases) {
        EXPECT_EQ(expand(packed), result);
        EXPECT_EQ(folder.read("to"), bytes) << result;
        std::filesystem::remove(to);
    }
    EXPECT_EQ(expand(compressed(data, 'B')), -8);
    const std::string plain = folder.write("plain", "plain");
    EXPECT_EQ(files.expandCopy(plain.c_str(), (folder / "none/to").c_str()), -2);
}

}  // namespace
