// A block by itself, read and written at the file's position.
#include "base/codec.h"
#include "file/block/fetch.h"
#include "file/block/output.h"
#include "file/block/parts.h"
#include "toolbox/block_files.h"

using toolbox::BlockFileParts;
using toolbox::BlockOutput;
namespace blocks = toolbox::blocks;

namespace {
/// What is asked for when nothing tells how long a block is.
constexpr std::uint64_t kProbableBlock = 4096;
}  // namespace

TarvBlocFile::TarvBlocFile() = default;
TarvBlocFile::TarvBlocFile(const TarvBlocFile&) = default;

TarvBlocFile& TarvBlocFile::operator=(const TarvBlocFile& other) {
    if (this == &other) return *this;
    VarRecord::operator=(other);
    description_ = other.description_;
    version_ = other.version_;
    return *this;
}

int TarvBlocFile::read(unsigned long id, TarvFile& file, unsigned long offset, int search) {
    APIFile* source = file.getFile();
    if (!source) return 0;
    char word[4] = {};
    int result = 0;
    if (offset <= blocks::kMostBytes && source->SeekTo(static_cast<long>(offset)) &&
        source->read(word, sizeof word) &&
        toolbox::base::load<std::uint32_t>(word) == static_cast<std::uint32_t>(id))
        result = readBloc(file);
    if (result != 1 && search == 1 && findBloc(id, file, 0) != 0) result = readBloc(file);
    if (result == 1) setID(id);
    return result;
}

int TarvBlocFile::readBloc(TarvFile& file) {
    APIFile* source = file.getFile();
    if (!source) return 0;
    const unsigned long afterId = source->CurOffset();
    if (afterId < 4 || afterId > blocks::kMostBytes) return 0;
    const std::uint64_t start = afterId - 4;
    const std::uint32_t bytes = blocks::fetch(*source, {start, std::nullopt, kProbableBlock},
                                              blocks::layoutOf(file), *this);
    if (bytes == 0) return 0;
    return start + bytes > blocks::kMostBytes || source->SeekTo(static_cast<long>(start + bytes));
}

unsigned long TarvBlocFile::findBloc(unsigned long id, TarvFile& file, unsigned long offset) {
    APIFile* source = file.getFile();
    if (!source) return 0;
    const std::uint64_t found = blocks::scan(*source, offset, static_cast<std::uint32_t>(id));
    if (found == 0 || found > blocks::kMostBytes) return 0;
    return source->SeekTo(static_cast<long>(found)) ? static_cast<unsigned long>(found) : 0;
}

int TarvBlocFile::write(TarvFile& file) const {
    if (BlockOutput* output = BlockFileParts::output(file)) return output->write(*this);
    APIFile* target = file.getFile();
    return target && BlockOutput(*target, nullptr, false).write(*this);
}

unsigned long TarvBlocFile::getBlocLen() const {
    return getLen() + static_cast<unsigned long>(blocks::kHeadBytes + blocks::kTailBytes);
}

unsigned int TarvBlocFile::getVersionVarrec() const {
    return VarRecord::getVersion();
}

void TarvBlocFile::setVersionVarrec(unsigned int version) {
    VarRecord::setVersion(version);
}

unsigned int TarvBlocFile::getVersion() const {
    return version_;
}

void TarvBlocFile::setVersion(unsigned int version) {
    version_ = version;
}

RWCString TarvBlocFile::getDescription() const {
    return description_;
}

void TarvBlocFile::setDescription(const RWCString& description) {
    description_ = description;
}
