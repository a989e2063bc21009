// Projects as the content of documents (document_files.h).
//
// One block describes the project, one each holds a beam or a label: identifier kProjectBlock, then
// kFirstBeamBlock and kFirstLabelBlock and the numbers after them without gaps; beams in the order
// of the project, labels in that of the drawing. Numbers are little-endian; texts have a fixed
// size, padded with zeros:
//     project  beams u32, labels u32
//     beam     id u32, name 16, section 16, x, y, span, uniform f64, loads u32,
//              of each load: position, force f64
//     label    beam u32, a set of one tag (tags.h), whose number is the label's identifier; zeros
//              up to a multiple of 4 bytes
// Every block is a multiple of 4 bytes long, so that a file whose index is lost can be searched.
//
// Versions 1 and 2 of the contents are read, too. In them each record ends with its CRC-32, u32,
// and in version 1 a label is
//     label    id u32, beam u32, x, y f64, alignment u32 (0 left, 1 centred, 2 right), border u32,
//              text 128
#pragma once

#include "project/project.h"
#include "toolbox/dates.h"
#include "toolbox/document_files.h"

inline constexpr unsigned long kProjectBlock = 1;
inline constexpr unsigned long kFirstBeamBlock = 0x10000000;
inline constexpr unsigned long kFirstLabelBlock = 0x20000000;
/// Of the contents, kept in the header.
inline constexpr unsigned long kProjectVersion = 3;

/// A project that a document stores. Derived classes say where it is.
class ProjectContent : public TvDocumentContent {
  public:
    int write(TarvFileWrite& file) override;
    int read(TarvFileRead& file) override;
    /// Everything that is intact, without what is doubtful; NotRead when that is nothing.
    int readRescued(TarvFileRead& file, const std::vector<TvDocumentLoss>& missing) override;

    /// The day on which the project was begun.
    [[nodiscard]] const TarvDate& created() const { return created_; }
    /// Beams and labels that the file read last should hold, and those that it does.
    [[nodiscard]] std::size_t expected() const { return expected_; }
    [[nodiscard]] std::size_t loaded() const { return loaded_; }
    /// read() then takes what is intact of a damaged project of an older version, too.
    void allowDamage(bool allowed) { allowsDamage_ = allowed; }
    /// The last read() found a project with items that are not intact, which the file, of an older
    /// version, does not tell.
    [[nodiscard]] bool isDamaged() const { return isDamaged_; }

  protected:
    /// The project that is written.
    [[nodiscard]] virtual const Project& project() const = 0;
    /// A project was read.
    virtual void setProject(Project project) = 0;
    /// Called now and then with what is done and how much there is to do.
    virtual void tellProgress(std::size_t done, std::size_t total);

  private:
    friend class ProjectReader;

    int readFrom(TarvFileRead& file, const std::vector<TvDocumentLoss>* missing);

    TarvDate created_;
    std::size_t expected_ = 0, loaded_ = 0;
    bool isDamaged_ = false;
    bool allowsDamage_ = false;
};
