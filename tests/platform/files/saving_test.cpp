// What saving a file as a whole needs: where links lead, new files with an old one's rights.
#include "platform/files/host_files.h"

#if defined(_WIN32)
#include <vector>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

TEST_F(HostFiles, CreatesOnlyWhatIsNotThere) {
    const std::string name = folder / "new";
    ASSERT_EQ(files.createLike(name.c_str(), nullptr, 0, last), 0u);
    std::uint32_t count = 0;
    EXPECT_EQ(files.write(last, "x", 1, count), 0u);
    FileHandle second = 0;
    EXPECT_EQ(files.open(name.c_str(), kRead, kShareRead, OPEN_EXISTING, second),
              ERROR_SHARING_VIOLATION);
    EXPECT_EQ(files.close(last), 0u);
    EXPECT_EQ(files.flushFolderOf(name.c_str()), 0u);

    EXPECT_EQ(files.createLike(name.c_str(), nullptr, 0, second), ERROR_FILE_EXISTS);
    EXPECT_EQ(second, toolbox::platform::kNoFile);
    EXPECT_EQ(folder.read("new"), "x");
    EXPECT_EQ(files.createLike((folder / "none/new").c_str(), name.c_str(), 0, second),
              ERROR_PATH_NOT_FOUND);
}

TEST_F(HostFiles, RenamesToANameThatNobodyHas) {
    const std::string from = folder.write("from", "new");
    const std::string taken = folder.write("taken", "old");
    const std::string free = folder / "free";
    EXPECT_EQ(files.renameNew(from.c_str(), taken.c_str()), ERROR_ALREADY_EXISTS);
    EXPECT_EQ(folder.read("taken"), "old");
    EXPECT_EQ(files.renameNew(from.c_str(), free.c_str()), 0u);
    EXPECT_EQ(folder.read("free"), "new");
    EXPECT_EQ(files.renameNew(from.c_str(), (folder / "other").c_str()), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(files.renameNew(free.c_str(), (folder / "none/x").c_str()), ERROR_PATH_NOT_FOUND);
    const auto found = files.find(free.c_str());
    ASSERT_EQ(found.size(), 1u);
    const std::int64_t age = std::time(nullptr) - found[0].written / 1'000'000'000;
    EXPECT_TRUE(age >= -2 && age < 100) << age;
}

#if defined(_WIN32)

std::vector<char> accessList(const std::string& name) {
    DWORD size = 0;
    GetFileSecurityA(name.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<char> list(size);
    EXPECT_TRUE(
        GetFileSecurityA(name.c_str(), DACL_SECURITY_INFORMATION, list.data(), size, &size));
    return list;
}

TEST_F(HostFiles, ANewFileHasTheAccessListOfTheOld) {
    const std::string old = folder.write("old", "x");
    const std::string ordinary = folder.write("ordinary", "x");
    SECURITY_DESCRIPTOR nobody;
    alignas(ACL) char empty[64];
    auto* acl = reinterpret_cast<ACL*>(empty);
    ASSERT_TRUE(InitializeAcl(acl, sizeof empty, ACL_REVISION));
    ASSERT_TRUE(InitializeSecurityDescriptor(&nobody, SECURITY_DESCRIPTOR_REVISION));
    ASSERT_TRUE(SetSecurityDescriptorDacl(&nobody, TRUE, acl, FALSE));
    ASSERT_TRUE(SetFileSecurityA(old.c_str(), DACL_SECURITY_INFORMATION, &nobody));
    ASSERT_NE(accessList(old), accessList(ordinary));

    ASSERT_EQ(files.createLike((folder / "new").c_str(), old.c_str(), 0, last), 0u);
    EXPECT_EQ(files.close(last), 0u);
    EXPECT_EQ(accessList(folder / "new"), accessList(old));
}

#else

TEST_F(HostFiles, ANewFileHasTheRightsOfTheOldWhateverTheMask) {
    const struct {
        mode_t old, mask, fresh;
    } cases[] = {{0600, 0, 0600}, {07755, 077, 0755}, {0, 027, 0640}};
    constexpr uid_t kOther = 12345;
    const std::string old = folder.write("old", "x");
    const std::string name = folder / "new";
    // To give files away takes a right.
    const bool given = ::chown(old.c_str(), kOther, kOther + 1) == 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        ASSERT_EQ(::chmod(old.c_str(), c.old), 0);
        const mode_t mask = ::umask(c.mask);
        const std::string like = c.old ? old : folder / "none";
        EXPECT_EQ(files.createLike(name.c_str(), like.c_str(), 0, last), 0u);
        ::umask(mask);
        EXPECT_EQ(files.close(last), 0u);
        struct stat facts {};
        ASSERT_EQ(::lstat(name.c_str(), &facts), 0);
        EXPECT_EQ(facts.st_mode & 07777, c.fresh);
        EXPECT_EQ(facts.st_uid, given && c.old ? kOther : ::geteuid());
        EXPECT_EQ(facts.st_gid, given && c.old ? kOther + 1 : ::getegid());
        ::unlink(name.c_str());
    }
}

TEST_F(HostFiles, LinksAreFollowedOnlyWhereAskedFor) {
    const std::string target = folder.write("target", "kept");
    const std::string link = folder / "link";
    const std::string chain = folder / "chain";
    const std::string lost = folder / "lost";
    std::filesystem::create_symlink("target", link);
    std::filesystem::create_symlink(link, chain);
    std::filesystem::create_symlink("none", lost);
    std::filesystem::create_symlink("circle", folder / "circle");
    std::string found;
    EXPECT_EQ(files.followLinks(chain.c_str(), found), 0u);
    EXPECT_EQ(found, target);
    EXPECT_EQ(files.followLinks(lost.c_str(), found), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(found, folder / "none");
    EXPECT_EQ(files.followLinks((folder / "circle").c_str(), found), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(files.followLinks("/dev/null", found), ERROR_ACCESS_DENIED);

    for (const std::string& planted : {link, lost})
        EXPECT_EQ(files.createLike(planted.c_str(), nullptr, 0, last), ERROR_FILE_EXISTS);
    EXPECT_EQ(folder.read("target"), "kept");
    EXPECT_EQ(folder.read("none"), "<none>");
}

TEST_F(HostFiles, PipesAreRefusedAtOnceAndDevicesNotCopied) {
    const std::string pipe = folder / "pipe";
    const std::string to = folder / "to";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const std::uint32_t access : {kRead, kWrite, kRead | kWrite})
        EXPECT_EQ(open(pipe, access, kShareAll, OPEN_ALWAYS), ERROR_ACCESS_DENIED) << access;
    EXPECT_EQ(open("/dev/null", kWrite, 0, CREATE_ALWAYS), 0u);
    EXPECT_EQ(::fcntl(static_cast<int>(last), F_GETFL) & O_NONBLOCK, 0);

    for (const char* from : {pipe.c_str(), "/dev/zero"}) {
        EXPECT_EQ(files.copy(from, to.c_str(), false), ERROR_ACCESS_DENIED) << from;
        EXPECT_LT(files.expandCopy(from, to.c_str()), 0) << from;
    }
    EXPECT_EQ(files.copy(folder.write("from", "x").c_str(), pipe.c_str(), false),
              ERROR_ACCESS_DENIED);
    EXPECT_EQ(folder.read("to"), "<none>");
}

#endif

}  // namespace
