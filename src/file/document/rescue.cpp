// The walk's findings, written down as they come.
#include "file/document/rescue.h"

#include "file/block/checksums.h"
#include "file/file_system.h"
#include "toolbox/file_walk.h"

namespace toolbox::document {
namespace {

/// What a walk finds, as the content of another file.
class FoundBlocks final : public TvDocumentContent {
  public:
    FoundBlocks(const FileSource& source, std::vector<TvDocumentLoss>& missing)
        : source_(source), walk_(source), reader_(source), missing_(missing) {}

    int write(TarvFileWrite& file) override {
        takeHeader(*file.getHeader());
        walk_.run([&](const WalkFinding& finding) {
            take(finding, file);
            return true;
        });
        return count_ > 0;
    }
    int read(TarvFileRead& /*file*/) override { return NotRead; }

    [[nodiscard]] std::size_t count() const { return count_; }

  private:
    void takeHeader(TarvFileHeader& header) const {
        const BlockFileHeader& found = walk_.map().header;
        if (!found.isReadable()) return;
        header.setVersion(found.version);
        header.setDescription(RWCString(found.description));
        const auto& [creation, stamp, net] = found.dates;
        if (creation >= 0) header.setdateCreation(TarvDate(creation));
        if (stamp >= 0) header.setTimeStamp(TarvDate(stamp));
        if (net >= 0) header.setnetDate(TarvDate(net));
    }

    void take(const WalkFinding& finding, TarvFileWrite& file) {
        if (finding.kind == WalkFinding::Kind::block) return block(finding, file);
        if (!finding.isLoss()) return;
        const auto kind = finding.kind == WalkFinding::Kind::cutOff    ? TvDocumentLoss::CutOff
                          : finding.kind == WalkFinding::Kind::damaged ? TvDocumentLoss::Missing
                                                                       : TvDocumentLoss::Index;
        missing_.push_back({kind, finding.id, finding.from, finding.to});
    }

    void block(const WalkFinding& finding, TarvFileWrite& file) {
        const BlockFrame& frame = finding.frame;
        if (frame.id == blocks::kChecksumsId) return;
        // What is known to be something else than was written is no content.
        const bool kept = (finding.doubts & kWrongSum) == 0 && writeBlock(frame, file);
        if (kept) ++count_;
        if (kept && finding.doubts == 0) return;
        const auto kind = kept ? TvDocumentLoss::Doubtful : TvDocumentLoss::Missing;
        missing_.push_back({kind, frame.id, finding.from, finding.to});
    }

    bool writeBlock(const BlockFrame& frame, TarvFileWrite& file) {
        const BlockShape& shape = walk_.map().shape;
        const BlockLabel label = labelOf(reader_, shape, frame);
        TarvBlocFile block;
        block.setID(frame.id);
        block.setDescription(RWCString(label.description));
        block.setVersion(label.version);
        block.VarRecord::setVersion(label.recordVersion);
        if (!block.setData(frame.length, nullptr)) return false;
        const std::size_t got =
            source_.readAt(frame.offset + shape.head, block.getPData(), frame.length);
        return got == frame.length && file.writeBloc(block) != 0;
    }

    const FileSource& source_;
    TarvFileWalk walk_;
    FileReader reader_;
    std::vector<TvDocumentLoss>& missing_;
    std::size_t count_ = 0;
};

}  // namespace

Rescue::~Rescue() {
    if (!place_.empty()) discard(place_);
}

Fault Rescue::run(const std::string& name) {
    const SystemFileSource source(name.c_str());
    if (source.error() != ERROR_SUCCESS) return faultOf(source.error(), Doing::reading, name);
    const platform::ErrorCode made = files().createTemporary("tbr", place_);
    if (made != ERROR_SUCCESS) return faultOf(made, Doing::writing, place_);
    if (const Fault fault = draft_.create(place_, {})) return fault;
    FoundBlocks found(source, missing_);
    const Fault fault = draft_.fill(found);
    if (fault && found.count() == 0) return {Reason::notADocument, ERROR_SUCCESS};
    return fault;
}

}  // namespace toolbox::document
