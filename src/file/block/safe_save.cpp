#include "file/block/safe_save.h"

#include <cstdio>
#include <memory>

#include "file/block/fetch.h"
#include "file/block/parts.h"
#include "file/file_report.h"

namespace toolbox {
namespace {

/// Reads at rising offsets through one buffer.
class Window {
  public:
    explicit Window(APIFile& file) : file_(file) {}

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

bool isWhole(Window& window, const BlocItem& entry) {
    using base::load;
    const char* head = window.bytes(entry.offset, blocks::kHeadBytes);
    if (!head || load<std::uint32_t>(head) != entry.id) return false;
    const auto n = load<std::uint32_t>(head + blocks::kHeadBytes - 4);
    const char* tail =
        window.bytes(std::uint64_t{entry.offset} + blocks::kHeadBytes + n, blocks::kTailBytes);
    return tail && load<std::uint32_t>(tail + 8) == blocks::kTerminator;
}

}  // namespace

bool readsBack(const char* name) {
    TarvFileRead file;
    if (!file.open(name)) return false;
    Window window(*BlockFileParts::file(file));
    for (const BlocItem& entry : BlockFileParts::entries(*BlockFileParts::index(file)))
        if (!isWhole(window, entry)) return false;
    return true;
}

void backUp(const char* name) {
    if (!APIFile::Exists(name)) return;
    std::printf("%d", static_cast<int>(APIFile::createBak(name)));
}

SafeSave::SafeSave(std::string target) : target_(std::move(target)), beside_(target_ + ".~save") {}

SafeSave::~SafeSave() {
    if (created_) (void)platform::current().files->remove(beside_.c_str());
}

bool SafeSave::putInPlace() {
    if (!readsBack(beside_.c_str())) return false;
    backUp(target_.c_str());
    const platform::ErrorCode error =
        platform::current().files->replace(beside_.c_str(), target_.c_str());
    if (error != ERROR_SUCCESS) {
        reportFileError(error);
        return false;
    }
    created_ = false;
    return true;
}

}  // namespace toolbox
