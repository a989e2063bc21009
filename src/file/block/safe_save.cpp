// A save is whole when its index names only blocks that stand in the file from their identifier to
// their terminator; nothing else takes the old file's place.
#include "file/block/safe_save.h"

#include <cstdio>

#include "file/block/fetch.h"
#include "file/block/parts.h"
#include "file/file_system.h"
#include "toolbox/messages.h"

namespace toolbox {
namespace {

/// Reads at rising offsets through one buffer.
class RisingReader {
  public:
    explicit RisingReader(APIFile& file) : file_(file) {}

    /// `n` bytes at `offset`; null when the file ends before.
    const char* bytes(std::uint64_t offset, std::uint32_t n) {
        if (offset < start_ || offset + n > start_ + held_) {
            start_ = offset;
            held_ = blocks::readAt(file_, offset, bytes_.get(), kBytes);
        }
        return n <= held_ ? bytes_.get() + (offset - start_) : nullptr;
    }

  private:
    static constexpr std::uint32_t kBytes = 64 * 1024;

    APIFile& file_;
    std::unique_ptr<char[]> bytes_ = std::make_unique_for_overwrite<char[]>(kBytes);
    std::uint64_t start_ = 0;
    std::uint32_t held_ = 0;
};

bool isWhole(RisingReader& reader, const BlocItem& entry) {
    using base::load;
    const char* head = reader.bytes(entry.offset, blocks::kHeadBytes);
    if (!head || load<std::uint32_t>(head) != entry.id) return false;
    const auto n = load<std::uint32_t>(head + blocks::kHeadBytes - 4);
    const char* tail =
        reader.bytes(std::uint64_t{entry.offset} + blocks::kHeadBytes + n, blocks::kTailBytes);
    return tail && load<std::uint32_t>(tail + 8) == blocks::kTerminator;
}

/// Whether an open block file reads back: its header, its index and both ends of every block.
bool readsBack(std::unique_ptr<APIFile> open) {
    TarvFileRead file;
    BlockFileParts::attach(file, std::move(open));
    if (!file.open("")) return false;
    RisingReader reader(*BlockFileParts::file(file));
    for (const BlocItem& entry : BlockFileParts::entries(*BlockFileParts::index(file)))
        if (!isWhole(reader, entry)) return false;
    return true;
}

void reportKept(platform::ErrorCode error, const std::string& name) {
    constexpr unsigned short kKept = 1020;
    constexpr unsigned short kFlags = MB_OK | MB_ICONSTOP;
    char reason[512] = "";
    GMSG::getLastErrorMsg(error, reason);
    RWCString text;
    // A program without the library's texts still names the file.
    if (GMSG::getString(kKept, text, reason, name.c_str()) == 0)
        GMSG::errorMsg("%s\n%s", kFlags, reason, name.c_str());
    else
        GMSG::errorMsg("%s", kFlags, text.c_str());
}

}  // namespace

void backUp(const char* name) {
    if (!APIFile::Exists(name)) return;
    std::printf("%d", static_cast<int>(APIFile::createBak(name)));
}

std::unique_ptr<APIFile> SafeSave::create() {
    std::string target;
    platform::ErrorCode error = ERROR_PATH_NOT_FOUND;
    if (!name_.empty()) error = files().followLinks(name_.c_str(), target);
    const bool isThere = error == ERROR_SUCCESS;
    if (isThere && isReadOnlyFile(target)) error = ERROR_ACCESS_DENIED;
    if (error == ERROR_SUCCESS || error == ERROR_FILE_NOT_FOUND)
        error = fresh_.create(target, isThere ? target.c_str() : nullptr);
    return fresh_.apiFile(error);
}

bool SafeSave::putInPlace() {
    if (fresh_.file().flush() != ERROR_SUCCESS || !readsBack(fresh_.apiFile())) return false;
    backUp(name_.c_str());
    const platform::ErrorCode error = fresh_.putInPlace();
    if (error != ERROR_SUCCESS) {
        reportKept(error, fresh_.keep());
        return false;
    }
    // The file is in place whatever this says.
    (void)files().flushFolderOf(fresh_.target().c_str());
    return true;
}

}  // namespace toolbox
