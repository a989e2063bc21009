// The content's blocks go through a gathering writer into the file that is being replaced.
#include "file/document/draft.h"

#include <memory>

#include "file/block/output.h"
#include "file/block/parts.h"
#include "file/document/block_document.h"
#include "file/file_system.h"
#include "platform/scoped_file.h"

namespace toolbox::document {
namespace {

using platform::ErrorCode;

/// What a failed write of the content was for; `held` has the system's word for it.
Fault writeFault(const HeldFileErrors& held, const std::string& name, Reason otherwise) {
    if (held.first() != ERROR_SUCCESS) return faultOf(held.first(), Doing::writing, name);
    return {otherwise, ERROR_SUCCESS};
}

}  // namespace

Fault Draft::create(const std::string& target, const std::string& like) {
    return faultOf(fresh_.create(target, like.empty() ? nullptr : like.c_str()), Doing::writing,
                   target);
}

Fault Draft::fill(TvDocumentContent& content) {
    const std::string name = fresh_.target();
    ErrorCode shown = ERROR_SUCCESS;
    {
        const HeldFileErrors held;
        TarvFileWrite file;
        BlockFileParts::attach(file, fresh_.apiFile());
        file.setChecksums(1);
        if (!file.open(name.c_str())) return writeFault(held, name, Reason::deviceFailed);
        BlockFileParts::startOutput(file, true);
        if (!BlockFileParts::output(file)->seekToEnd())
            return writeFault(held, name, Reason::deviceFailed);
        if (content.write(file) == 0) return writeFault(held, name, Reason::contentRefused);
        if (!file.commit() || !file.close()) return writeFault(held, name, Reason::contentRefused);
        shown = held.first();
    }
    // The content took no notice of it: it was a file of its own, of which the user shall know.
    reportFileError(shown);
    return prove();
}

bool Draft::open(TarvFileRead& file) const {
    BlockFileParts::attach(file, fresh_.apiFile());
    return file.open(fresh_.target().c_str()) != 0;
}

Fault Draft::prove() {
    const std::string& name = fresh_.target();
    const HeldFileErrors held;
    const ErrorCode flushed = fresh_.file().flush();
    if (flushed != ERROR_SUCCESS) return faultOf(flushed, Doing::writing, name);
    TarvFileRead file;
    const bool isProved =
        open(file) && file.getChecksumState() == TarvFileRead::ChecksumsCurrent && isWhole(file);
    if (!isProved) return writeFault(held, name, Reason::deviceFailed);
    mark_ = markOf(*BlockFileParts::file(file), extentOf(file));
    return {};
}

ErrorCode Draft::putInPlace(const std::function<bool()>& mayReplace) {
    const ErrorCode error = fresh_.putInPlace(mayReplace);
    // The file is in place whatever the folder says.
    if (error == ERROR_SUCCESS) (void)files().flushFolderOf(fresh_.target().c_str());
    return error;
}

ErrorCode copyInto(const std::string& from, const std::string& to) {
    constexpr std::size_t kAtOnce = 256 * 1024;
    platform::ScopedFile source(files(), from.c_str(), GENERIC_READ, FILE_SHARE_READ,
                                OPEN_EXISTING);
    if (!source.valid()) return source.error();
    platform::ScopedFile target(files(), to.c_str(), GENERIC_READ | GENERIC_WRITE, 0,
                                TRUNCATE_EXISTING);
    if (!target.valid()) return target.error();
    const auto bytes = std::make_unique_for_overwrite<char[]>(kAtOnce);
    for (;;) {
        std::uint32_t got = 0;
        if (const ErrorCode error = source.read(bytes.get(), kAtOnce, got)) return error;
        if (got == 0) break;
        if (const ErrorCode error = target.write(bytes.get(), got)) return error;
    }
    const ErrorCode flushed = files().flush(target.handle());
    const ErrorCode closed = target.close();
    return flushed != ERROR_SUCCESS ? flushed : closed;
}

}  // namespace toolbox::document
