// The header of a block file, as a value and as its 160 bytes.
#include <cstring>

#include "file/block/layout.h"
#include "file/block/output.h"
#include "file/block/parts.h"
#include "toolbox/block_files.h"

using toolbox::BlockFileParts;
using toolbox::BlockOutput;
using toolbox::base::load;
using toolbox::base::store;
namespace blocks = toolbox::blocks;

namespace {

using namespace toolbox::blocks::field;

constexpr std::size_t kCreation = kDates;
constexpr std::size_t kTimeStamp = kDates + 4;
constexpr std::size_t kNetDate = kDates + 8;

std::int32_t dayNumber(const TarvDate& date) {
    return static_cast<std::int32_t>(static_cast<long>(date));
}

TarvDate dateAt(const char* bytes) {
    return TarvDate(load<std::int32_t>(bytes));
}

}  // namespace

TarvFileHeader::TarvFileHeader() = default;
TarvFileHeader::TarvFileHeader(const TarvFileHeader&) = default;
TarvFileHeader& TarvFileHeader::operator=(const TarvFileHeader&) = default;
TarvFileHeader::~TarvFileHeader() = default;

int TarvFileHeader::read(TarvFile& file) {
    APIFile* source = file.getFile();
    char bytes[blocks::kHeaderBytes] = {};
    if (!source || !source->read(bytes, kEnd)) return 0;
    if (load<std::uint32_t>(bytes + kFormat) == blocks::kTerminator)
        return BlockFileParts::decode(*this, {bytes, blocks::kOldHeaderBytes});
    return source->read(bytes + kEnd, 4) && BlockFileParts::decode(*this, bytes);
}

bool BlockFileParts::decode(TarvFileHeader& header, std::span<const char> bytes) {
    if (bytes.size() < blocks::kOldHeaderBytes) return false;
    const char* at = bytes.data();
    header.version_ = load<std::uint32_t>(at + kVersion);
    header.mask_ = load<std::uint32_t>(at + kMask);
    header.description_ = RWCString(blocks::textIn(at + kDescription, blocks::kDescriptionBytes));
    header.dateCreation_ = dateAt(at + kCreation);
    header.timeStamp_ = dateAt(at + kTimeStamp);
    header.netDate_ = dateAt(at + kNetDate);
    header.offsetMasterNdx_ = load<std::uint32_t>(at + kIndexOffset);
    header.versionFile_ = load<std::uint32_t>(at + kFormat);
    if (header.versionFile_ == blocks::kTerminator) {
        header.versionFile_ = blocks::kOldestFormat;
        return true;
    }
    return bytes.size() >= blocks::kHeaderBytes &&
           load<std::uint32_t>(at + kEnd) == blocks::kTerminator;
}

std::array<char, blocks::kHeaderBytes> BlockFileParts::encode(const TarvFileHeader& header) {
    std::array<char, blocks::kHeaderBytes> all;
    char* const bytes = all.data();
    store(bytes + kVersion, header.version_);
    store(bytes + kMask, header.mask_);
    blocks::putText(bytes + kDescription, header.description_.view());
    store(bytes + kCreation, dayNumber(header.dateCreation_));
    store(bytes + kTimeStamp, dayNumber(header.timeStamp_));
    store(bytes + kNetDate, dayNumber(header.netDate_));
    store(bytes + kIndexOffset, header.offsetMasterNdx_);
    store(bytes + kFormat, blocks::kFormatWritten);
    store(bytes + kEnd, blocks::kTerminator);
    return all;
}

int TarvFileHeader::write(TarvFile& file) {
    const auto bytes = BlockFileParts::encode(*this);
    if (BlockOutput* output = BlockFileParts::output(file))
        return output->write(bytes.data(), bytes.size());
    APIFile* target = file.getFile();
    return target && BlockOutput(*target, nullptr, false).write(bytes.data(), bytes.size());
}

unsigned long TarvFileHeader::getLen() const {
    return blocks::kHeaderBytes;
}

unsigned long TarvFileHeader::getVersion() const {
    return version_;
}
unsigned long TarvFileHeader::getMask() const {
    return mask_;
}
RWCString TarvFileHeader::getDescription() const {
    return description_;
}
TarvDate TarvFileHeader::getdateCreation() const {
    return dateCreation_;
}
TarvDate TarvFileHeader::getTimeStamp() const {
    return timeStamp_;
}
TarvDate TarvFileHeader::getnetDate() const {
    return netDate_;
}
unsigned long TarvFileHeader::getOffsetMasterNdx() const {
    return offsetMasterNdx_;
}
unsigned long TarvFileHeader::getVersionFile() const {
    return versionFile_;
}
void TarvFileHeader::setVersion(unsigned long version) {
    version_ = static_cast<std::uint32_t>(version);
}
void TarvFileHeader::setMask(unsigned long mask) {
    mask_ = static_cast<std::uint32_t>(mask);
}
void TarvFileHeader::setDescription(const RWCString& description) {
    description_ = description;
}
void TarvFileHeader::setdateCreation(const TarvDate& date) {
    dateCreation_ = date;
}
void TarvFileHeader::setTimeStamp(const TarvDate& date) {
    timeStamp_ = date;
}
void TarvFileHeader::setnetDate(const TarvDate& date) {
    netDate_ = date;
}
void TarvFileHeader::setOffsetMasterNdx(unsigned long offset) {
    offsetMasterNdx_ = static_cast<std::uint32_t>(offset);
}
