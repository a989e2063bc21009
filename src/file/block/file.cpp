// An open block file: what copies share, and who owns it.
#include "file/block/output.h"
#include "file/block/parts.h"
#include "toolbox/block_files.h"

using toolbox::BlockFileParts;
using toolbox::OwnedFile;

TarvFile::TarvFile() = default;
TarvFile::TarvFile(const TarvFile&) = default;
TarvFile& TarvFile::operator=(const TarvFile&) = default;

TarvFile::~TarvFile() {
    if (isOpen()) TarvFile::close();
}

int TarvFile::close() {
    output_.reset();
    file_.reset();
    fileType_ = NotOpen;
    freeHeader();
    freeIndex();
    return 1;
}

void TarvFile::setHeader(const TarvFileHeader& header) {
    header_ = std::make_shared<TarvFileHeader>(header);
}

void TarvFile::setIndex(const TarvFileIndex& index) {
    index_ = std::make_shared<TarvFileIndex>(index);
}

APIFile* TarvFile::getFile() const {
    if (output_) output_->share();
    return BlockFileParts::file(*this);
}

void TarvFile::setFile(APIFile* file) {
    if (file == BlockFileParts::file(*this)) return;
    const bool writes = output_ != nullptr;
    output_.reset();
    // What copies of this object share stays theirs.
    if (file_ && file_.use_count() == 1) file_->giveBack();
    file_ = file ? std::make_shared<OwnedFile>(file) : nullptr;
    if (file && writes) BlockFileParts::startOutput(*this, false);
}

TarvFileHeader* TarvFile::getHeader() const {
    return header_.get();
}

TarvFileIndex* TarvFile::getIndex() const {
    if (index_) BlockFileParts::unpack(*index_);
    return index_.get();
}

void TarvFile::freeHeader() {
    header_.reset();
}

void TarvFile::freeIndex() {
    index_.reset();
}

TarvFile::FileType TarvFile::getFileType() const {
    return fileType_;
}

void TarvFile::setFileType(FileType type) {
    fileType_ = type;
}

int TarvFile::canRead() const {
    return fileType_ == OpenForReading;
}

int TarvFile::canWrite() const {
    return fileType_ == OpenForWriting;
}

int TarvFile::isOpen() const {
    return fileType_ != NotOpen;
}
