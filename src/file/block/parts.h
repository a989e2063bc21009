// The way from one part of the block files into the private fields of another.
#pragma once

#include <array>
#include <memory>
#include <span>
#include <string_view>

#include "file/block/lookup.h"
#include "file/block/output.h"
#include "toolbox/block_files.h"

namespace toolbox {

/// Deletes its file at the end, unless it was given back.
class OwnedFile {
  public:
    explicit OwnedFile(APIFile* file) : file_(file) {}
    ~OwnedFile() { delete file_; }
    OwnedFile(const OwnedFile&) = delete;
    OwnedFile& operator=(const OwnedFile&) = delete;

    [[nodiscard]] APIFile* get() const { return file_; }
    void giveBack() { file_ = nullptr; }

  private:
    APIFile* file_;
};

/// Private fields, by what they mean.
class BlockFileParts {
  public:
    /// The file underneath, without the consequences that TarvFile::getFile has; null when none.
    [[nodiscard]] static APIFile* file(const TarvFile& f) {
        return f.file_ ? f.file_->get() : nullptr;
    }
    static void attach(TarvFile& f, std::unique_ptr<APIFile> file) {
        f.output_.reset();
        f.file_ = std::make_shared<OwnedFile>(file.release());
    }
    /// What a file open for writing writes through; null for others.
    [[nodiscard]] static BlockOutput* output(const TarvFile& f) { return f.output_.get(); }
    static void startOutput(TarvFile& f, bool gathers) {
        f.output_ = std::make_shared<BlockOutput>(*file(f), f.file_, gathers);
    }
    [[nodiscard]] static bool isShared(const TarvFile& f) { return f.output_.use_count() > 1; }

    /// Takes the fields from the bytes of a header: 160, or 156 of format version 100.
    [[nodiscard]] static bool decode(TarvFileHeader& header, std::span<const char> bytes);
    /// The bytes that it writes.
    [[nodiscard]] static std::array<char, blocks::kHeaderBytes> encode(
        const TarvFileHeader& header);

    static void setFormat(TarvFileHeader& header, std::uint32_t version) {
        header.versionFile_ = version;
    }

    /// What a block read from a file gets but for its data.
    static void label(TarvBlocFile& block, std::string_view description, std::uint32_t blockVersion,
                      std::uint32_t recordVersion) {
        block.description_.str().assign(description);
        block.version_ = blockVersion;
        block.VarRecord::setVersion(recordVersion);
    }
    [[nodiscard]] static std::string_view description(const TarvBlocFile& block) {
        return block.description_.view();
    }

    /// The index without the consequences that TarvFile::getIndex has; null when there is none.
    [[nodiscard]] static TarvFileIndex* index(const TarvFile& f) { return f.index_.get(); }
    /// The entries, in the data of the record where they are not unpacked yet.
    [[nodiscard]] static std::span<const BlocItem> entries(const TarvFileIndex& index);
    [[nodiscard]] static std::optional<std::uint32_t> find(const TarvFileIndex& index,
                                                           std::uint32_t id) {
        return index.lookup_->find(entries(index), id);
    }
    /// Sets the offset of an entry; adds one, at the end, when there is none.
    static void place(TarvFileIndex& index, std::uint32_t id, std::uint32_t offset);
    /// Takes the entries from the data just read, which nobody else sees before unpack().
    static void takePacked(TarvFileIndex& index, std::uint64_t fileSize) {
        index.takePacked(fileSize);
    }
    static void unpack(TarvFileIndex& index) { index.unpack(); }
};

}  // namespace toolbox
