// verify: what a reader, or a program that trusts the file, would stumble over.
#include <algorithm>
#include <span>

#include "commands/commands.h"
#include "commands/doubts.h"
#include "commands/open_file.h"
#include "terminal/failure.h"
#include "terminal/json.h"

namespace tbfile {
namespace {

struct Finding {
    const char* json;
    Text text;
};

class Findings {
  public:
    explicit Findings(bool json) : json_(json) {
        if (json_) print("{\"findings\":[");
    }

    /// %1 in the text is the offset, %2 the identifier.
    void add(const Finding& finding, std::uint64_t offset, std::optional<std::uint32_t> id = {},
             const std::string& more = {}) {
        const std::string text =
            say(finding.text, {std::to_string(offset), id ? std::to_string(*id) : "?", more});
        if (json_)
            print((count_ > 0 ? ",\n " : "\n ") +
                  jsonObject({{"finding", std::string(finding.json)},
                              {"offset", offset},
                              {"id", id ? JsonValue(std::uint64_t{*id}) : JsonValue(nullptr)},
                              {"text", text}})
                      .text);
        else
            print(text + "\n");
        ++count_;
    }

    [[nodiscard]] std::uint64_t count() const { return count_; }

    void finish(std::size_t blocks, const Path& file) const {
        if (json_)
            print("],\n\"file\":" +
                  jsonObject({{"name", nameOf(file)},
                              {"blocks", std::uint64_t{blocks}},
                              {"sound", count_ == 0}})
                      .text +
                  "}\n");
        else if (count_ == 0)
            print(say(Text::allSound, {nameOf(file), grouped(blocks)}) + "\n");
        else
            print(say(Text::findings, {nameOf(file), grouped(count_), grouped(blocks)}) + "\n");
    }

  private:
    bool json_;
    std::uint64_t count_ = 0;
};

void checkHeader(const OpenFile& open, Findings& findings) {
    struct Rule {
        HeaderFault fault;
        Finding finding;
        std::uint64_t offset;
    };
    static constexpr Rule kRules[] = {
        {HeaderFault::tooShort, {"headerTooShort", Text::findTooShort}, 0},
        {HeaderFault::terminator, {"headerTerminator", Text::findHeaderEnd}, 156},
        {HeaderFault::format, {"headerFormat", Text::findFormat}, 152},
        {HeaderFault::description, {"headerDescription", Text::findHeaderText}, 8},
        {HeaderFault::date, {"headerDate", Text::findDate}, 136},
    };
    const Header& header = open.map.header;
    for (const Rule& rule : kRules)
        if (header.has(rule.fault)) findings.add(rule.finding, rule.offset);
    if (open.map.formatDiffers() && !header.has(HeaderFault::format) &&
        !header.has(HeaderFault::tooShort))
        findings.add({"headerLayout", Text::findLayout}, 152);
}

void checkIndex(const OpenFile& open, Findings& findings) {
    const std::uint32_t named = open.map.header.indexOffset;
    const Index* index = open.map.index ? &*open.map.index : nullptr;
    if (!index) {
        findings.add(named == 0 ? Finding{"neverCommitted", Text::neverCommitted}
                                : Finding{"noIndex", Text::findNoIndex},
                     named);
        return;
    }
    const std::uint64_t at = index->frame.offset;
    if (!index->atItsPlace) findings.add({"indexMoved", Text::findIndexMoved}, at);
    if (!index->isWhole()) findings.add({"indexDamaged", Text::findIndexDamaged}, at);
    if (!index->frame.padded)
        findings.add({"description", Text::findDescription}, at, toolbox::kMasterIndexId);
    if (index->frame.length % sizeof(BlocItem) != 0)
        findings.add({"indexLength", Text::findIndexLength}, at);
    if (!index->ascending) findings.add({"indexOrder", Text::findIndexOrder}, at);
}

void checkChecksums(const OpenFile& open, Findings& findings) {
    if (!open.map.checksums) return;
    if (const auto fault = faultOf(*open.map.checksums))
        findings.add({fault->json, fault->text}, open.map.checksums->frame.offset);
}

/// Looks at every block that the index names, in the order of the file.
class EntryCheck {
  public:
    /// `sums`: blocks are compared with the sums that the file has of them.
    EntryCheck(OpenFile& open, Findings& findings, bool sums)
        : open_(open), findings_(findings), end_(open.map.shape.start), sums_(sums) {}

    /// Whether the file has more than the blocks and the indexes.
    [[nodiscard]] bool hasGaps() const { return !gaps_.empty(); }
    /// Whether something was told of the block that an entry places there.
    [[nodiscard]] bool hasTold(std::uint64_t offset) const {
        return std::ranges::binary_search(told_, offset);
    }
    /// Makes what lies between the blocks, and after them, findings.
    void tellGaps() const {
        const std::uint64_t size = open_.file.size();
        for (const Gap& gap : gaps_)
            findings_.add(gap.to == size ? Finding{"trailingBytes", Text::findTrailing}
                                         : Finding{"gap", Text::findGap},
                          gap.from, {}, std::to_string(gap.to));
    }

    void run() {
        const Index& index = *open_.map.index;
        checkIds(index.entries);
        if (std::ranges::is_sorted(index.entries, {}, &BlocItem::offset)) {
            for (const BlocItem& entry : index.entries) check(entry);
        } else {
            std::vector<BlocItem> sorted = index.entries;
            std::ranges::stable_sort(sorted, {}, &BlocItem::offset);
            for (const BlocItem& entry : sorted) check(entry);
        }
        gapUpTo(index.frame.offset);
        if (index.isWhole() && index.frame.end < open_.file.size())
            gaps_.push_back({index.frame.end, open_.file.size()});
    }

  private:
    struct Gap {
        std::uint64_t from;
        std::uint64_t to;
    };

    void checkIds(const std::vector<BlocItem>& entries) {
        EntryFinder lookup;
        for (std::size_t i = 0; i < entries.size(); ++i)
            if (!lookup.add(std::span(entries).first(i), entries[i].id))
                findings_.add({"repeatedId", Text::findRepeated}, entries[i].offset, entries[i].id);
    }

    void gapUpTo(std::uint64_t next) {
        if (next <= end_) return;
        // What older commits left behind is no fault.
        for (std::uint64_t at = end_; at < next;) {
            const Frame frame = frameAt(open_.window, open_.map.shape, at, next);
            if (!frame.isWhole() || !(frame.isIndex() || frame.isChecksumList())) {
                gaps_.push_back({at, next});
                return;
            }
            at = frame.end;
        }
    }

    void check(const BlocItem& entry) {
        gapUpTo(entry.offset);
        const Frame frame = frameAt(open_.window, open_.map.shape, entry.offset, open_.file.size());
        const auto add = [&](const Finding& finding) {
            findings_.add(finding, entry.offset, entry.id);
            if (told_.empty() || told_.back() != entry.offset) told_.push_back(entry.offset);
        };
        if (entry.offset < open_.map.shape.start || !frame.hasHead)
            return add({"outside", Text::findOutside});
        if (frame.id != entry.id) return add({"otherId", Text::findOtherId});
        if (!frame.fits) return add({"tooLong", Text::findTooLong});
        if (!frame.terminated) add({"terminator", Text::findTerminator});
        if (!frame.padded) add({"description", Text::findDescription});
        if (entry.offset < end_) add({"overlap", Text::findOverlap});
        if (open_.map.header.wholeWords() && (frame.end - frame.offset) % 4 != 0)
            add({"notWholeWords", Text::findNotWords});
        const BlockSum* const row = open_.sumOf(entry.offset);
        const bool isTold = !told_.empty() && told_.back() == entry.offset;
        if (row) end_ = std::max(end_, row->offset + std::uint64_t{row->length});
        if (row && sums_ && !isTold && sumAt(open_.window, row->offset, row->length) != row->sum)
            add({"wrongChecksum", Text::findChecksum});
        end_ = std::max(end_, frame.end);
    }

    OpenFile& open_;
    Findings& findings_;
    std::uint64_t end_;  ///< of what was looked at
    bool sums_;
    std::vector<Gap> gaps_;
    std::vector<std::uint64_t> told_;  ///< ascending places
};

/// Tells what a walk finds: everything that the check of the entries has not told already.
class WalkCheck {
  public:
    WalkCheck(const OpenFile& open, const EntryCheck* entries, Findings& findings)
        : open_(open), entries_(entries), findings_(findings) {}

    void take(const WalkFinding& found) {
        if (found.kind == WalkFinding::Kind::block)
            block(found);
        else if (found.kind == WalkFinding::Kind::index)
            index(found.frame);
        else if (found.kind != WalkFinding::Kind::checksums)
            loss(found);
    }
    [[nodiscard]] std::size_t blocks() const { return blocks_; }

  private:
    void block(const WalkFinding& found) {
        ++blocks_;
        const Frame& frame = found.frame;
        const auto add = [&](const Finding& finding, const std::string& more = {}) {
            findings_.add(finding, frame.offset, frame.id, more);
        };
        const bool isListed = found.evidence == Evidence::checksum;
        const bool isNamed =
            isListed || found.evidence == Evidence::index || found.doubts & toolbox::kOtherId;
        if (found.isMisplaced) add({"misplaced", Text::findMisplaced});
        if (!isNamed) {
            if (open_.map.index) add({"notIndexed", Text::findNotIndexed});
            if (found.doubts & toolbox::kTerminatorWrong) add({"terminator", Text::findTerminator});
            if (!frame.padded) add({"description", Text::findDescription});
        }
        // What is wrong with an entry's place is told already. That the index does not name a block
        // leaves nothing certain about it.
        if (isNamed ? entries_ && entries_->hasTold(frame.offset) : open_.map.index.has_value())
            return;
        if (found.isReframed) add({"frameDamaged", Text::findFrame});
        for (const DoubtName& name : kDoubts)
            if (found.doubts & name.doubt & ~(isNamed ? 0u : +toolbox::kTerminatorWrong))
                add({name.json, Text::findDoubtful},
                    say(name.text, {std::to_string(found.indexId)}));
    }
    /// An index is told of when it is damaged in a way that a walk sees through.
    void index(const Frame& frame) {
        if (!frame.isIndex()) findings_.add({"otherId", Text::findOtherId}, frame.offset, frame.id);
    }
    void loss(const WalkFinding& found) {
        // The current index and the list were looked at already.
        if (open_.map.checksums && found.from == open_.map.checksums->frame.offset) return;
        if (open_.map.index && found.from == open_.map.index->frame.offset) return;
        if (entries_ && entries_->hasTold(found.from)) return;
        const bool isCutOff = found.kind == WalkFinding::Kind::cutOff;
        findings_.add(
            {isCutOff ? "cutOff" : "strayBytes", isCutOff ? Text::findCutOff : Text::findStray},
            found.from, found.id, std::to_string(found.to));
    }

    const OpenFile& open_;
    const EntryCheck* entries_;
    Findings& findings_;
    std::size_t blocks_ = 0;
};

/// What the index leaves open is told by a walk.
std::size_t walkThrough(OpenFile& open, EntryCheck* entries, Findings& findings) {
    const std::uint64_t before = findings.count();
    WalkCheck check(open, entries, findings);
    open.walk.run([&](const WalkFinding& found) {
        check.take(found);
        return true;
    });
    // A gap that a walk makes nothing of is a gap all the same.
    if (entries && findings.count() == before) entries->tellGaps();
    return check.blocks();
}

int verifyFile(const Options& options) {
    OpenFile open(options.input,
                  options.quick ? FileReader::Reads::whatIsAsked : FileReader::Reads::everything);
    const auto expectWhole = [&](bool isWhole) {
        if (!isWhole) throw Failure(Text::shortened, {nameOf(options.input)});
    };
    Findings findings(options.json);
    checkHeader(open, findings);
    std::size_t count = 0;
    if (!open.map.header.has(HeaderFault::tooShort)) {
        checkIndex(open, findings);
        checkChecksums(open, findings);
        std::optional<EntryCheck> entries;
        if (open.map.index) {
            count = open.indexedBlocks();
            entries.emplace(open, findings, !options.quick);
            entries->run();
            expectWhole(!open.window.hasStopped());
        }
        expectWhole(open.window.finish());
        const bool all =
            entries && open.map.index->isWhole() && findings.count() == 0 && !entries->hasGaps();
        if (options.quick && entries)
            entries->tellGaps();
        else if (!options.quick && !all)
            count = walkThrough(open, entries ? &*entries : nullptr, findings);
    }
    findings.finish(count, options.input);
    return findings.count() == 0 ? kSound : kFindings;
}

}  // namespace

int verify(const Options& options) {
    return verifyFile(options);
}

}  // namespace tbfile
