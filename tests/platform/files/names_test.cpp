#include <algorithm>
#include <tuple>

#include "platform/files/host_files.h"

namespace {

TEST_F(HostFiles, FindsByPattern) {
    for (const char* name : {"a.dat", "b.dat", "ab.da", "c", "sub.dat.old"})
        folder.write(name, "12345");
    std::filesystem::create_directory(folder / "sub");
    folder.write("sub/inner.dat", "");
    const std::tuple<const char*, std::vector<std::string>> cases[] = {
        {"*.*", {"a.dat", "ab.da", "b.dat", "c", "sub", "sub.dat.old"}},
        {"*.dat", {"a.dat", "b.dat"}},
        {"?b*a", {"ab.da"}},
        {"c.*", {"c"}},
        {"sub\\*", {"inner.dat"}},
        {"sub/inner.*", {"inner.dat"}},
        {"z*", {}},
        {"sub\\", {}},
    };
    for (const auto& [pattern, names] : cases) {
        SCOPED_TRACE(pattern);
        const std::string all = folder.path() + '\\' + pattern;
        std::vector<std::string> seen;
        for (const auto& found : files.find(all.c_str())) {
            seen.push_back(found.name);
            const bool isFolder = found.attributes & FILE_ATTRIBUTE_DIRECTORY;
            EXPECT_EQ(isFolder, found.name == "sub");
            EXPECT_EQ(found.size, isFolder || found.name == "inner.dat" ? 0u : 5u);
        }
        std::sort(seen.begin(), seen.end());
        EXPECT_EQ(seen, names);
        EXPECT_EQ(files.exists(all.c_str()), !names.empty());
    }
    EXPECT_FALSE(files.exists(nullptr));
}

TEST_F(HostFiles, TellsReadOnly) {
    const std::string name = folder.write("locked", "kept");
    EXPECT_EQ(files.setAttributes(name.c_str(), FILE_ATTRIBUTE_READONLY), 0u);
    EXPECT_FALSE(files.isReadableAndWritable(name.c_str()));
    EXPECT_EQ(open(name, kRead, kShareRead, OPEN_EXISTING), 0u);
    closeAll();
#if !defined(_WIN32)
    // Windows sees to this itself; elsewhere the super-user could write, were it not for the
    // library.
    const std::string other = folder.write("other", "other");
    EXPECT_EQ(open(name, kWrite, 0, OPEN_EXISTING), ERROR_ACCESS_DENIED);
    EXPECT_EQ(open(name, kWrite, 0, CREATE_ALWAYS), ERROR_ACCESS_DENIED);
    EXPECT_EQ(files.copy(other.c_str(), name.c_str(), false), ERROR_ACCESS_DENIED);
    EXPECT_EQ(files.remove(name.c_str()), ERROR_ACCESS_DENIED);
    EXPECT_EQ(folder.read("locked"), "kept");
#endif
    EXPECT_EQ(files.setAttributes(name.c_str(), FILE_ATTRIBUTE_NORMAL), 0u);
    EXPECT_EQ(files.remove(name.c_str()), 0u);
}

TEST_F(HostFiles, MissingNamesAndFoldersHaveTheirOwnCodes) {
    std::filesystem::create_directory(folder / "sub");
    const std::string sub = folder / "sub";
    const std::string none = folder / "none";
    const std::string deep = folder.path() + "\\none\\file";
    const std::string there = folder.write("there", "x");
    const char* const file = there.c_str();
    std::uint32_t attributes = 0;
    EXPECT_EQ(files.remove(deep.c_str()), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(files.remove(sub.c_str()), ERROR_ACCESS_DENIED);
    EXPECT_EQ(files.attributes(none.c_str(), attributes), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(files.replace(none.c_str(), file), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(files.replace(file, deep.c_str()), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(files.replace(file, sub.c_str()), ERROR_ACCESS_DENIED);
    EXPECT_EQ(files.copy(file, sub.c_str(), false), ERROR_ACCESS_DENIED);
    EXPECT_EQ(files.copy(sub.c_str(), none.c_str(), false), ERROR_ACCESS_DENIED);
    EXPECT_TRUE(files.isReadableAndWritable((sub + "\\").c_str()));
    EXPECT_EQ(folder.read("there"), "x");
}

TEST_F(HostFiles, TellWhichFileANameMeans) {
    folder.write("one", "");
    folder.write("other", "");
    std::filesystem::create_directory(folder / "sub");
    std::filesystem::create_hard_link(folder / "one", folder / "hard");
    const struct {
        const char *one, *other;
        bool same;
    } cases[] = {{"one", "one", true},
                 {"one", "other", false},
                 {"one", "hard", true},
                 {"one", "sub/../one", true},
                 {"none", "sub\\..\\.\\none", true},
                 {"none", "one", false},
                 {"none", "nine", false}};
    for (const auto& c : cases)
        EXPECT_EQ(files.isSameFile((folder / c.one).c_str(), (folder / c.other).c_str()), c.same)
            << c.one << ", " << c.other;
#if defined(_WIN32)
    EXPECT_TRUE(files.isSameFile((folder.path() + "\\B\342t").c_str(),
                                 (folder.path() + "\\b\302T").c_str()));
#endif
    std::string longer = folder.path();
    while (longer.size() < 600) longer += "/a folder of a long name";
    std::string full;
    EXPECT_EQ(files.fullName((longer + "/../x").c_str(), full), ERROR_SUCCESS);
    EXPECT_EQ(full.size(), longer.rfind('/') + 2);
}

}  // namespace
