// verify: what a reader, or a program that trusts the file, would stumble over.
#include <algorithm>
#include <span>

#include "commands.h"
#include "doubts.h"
#include "failure.h"
#include "file/block/lookup.h"
#include "json.h"
#include "open_file.h"
#include "walk.h"

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
        findings.add({"description", Text::findDescription}, at, blocks::kIndexId);
    if (index->frame.length % blocks::kEntryBytes != 0)
        findings.add({"indexLength", Text::findIndexLength}, at);
    if (!index->ascending) findings.add({"indexOrder", Text::findIndexOrder}, at);
}

/// Looks at every block that the index names, in the order of the file.
class EntryCheck {
  public:
    /// `gaps`: what lies between the blocks is a finding too.
    EntryCheck(OpenFile& open, Findings& findings, bool gaps)
        : open_(open), findings_(findings), gaps_(gaps), end_(open.map.shape.start()) {}

    /// Whether the blocks and the indexes are all that the file has.
    [[nodiscard]] bool isAll() const { return all_; }

    void run() {
        const Index& index = *open_.map.index;
        checkIds(index.entries);
        if (index.ascending) {
            for (const BlocItem& entry : index.entries) check(entry);
        } else {
            std::vector<BlocItem> sorted = index.entries;
            std::ranges::stable_sort(sorted, {}, &BlocItem::offset);
            for (const BlocItem& entry : sorted) check(entry);
        }
        gapUpTo(index.frame.offset);
        if (!index.isWhole() || index.frame.end == open_.file.size()) return;
        all_ = false;
        if (gaps_) findings_.add({"trailingBytes", Text::findTrailing}, index.frame.end);
    }

  private:
    void checkIds(const std::vector<BlocItem>& entries) {
        toolbox::BlockLookup lookup;
        for (std::size_t i = 0; i < entries.size(); ++i)
            if (!lookup.add(std::span(entries).first(i), entries[i].id))
                findings_.add({"repeatedId", Text::findRepeated}, entries[i].offset, entries[i].id);
    }

    void gapUpTo(std::uint64_t next) {
        if (next <= end_) return;
        // What older commits left behind is no fault.
        for (std::uint64_t at = end_; at < next;) {
            const Frame frame = frameAt(open_.window, open_.map.shape, at, next);
            if (!frame.isWhole() || !frame.isIndex()) {
                all_ = false;
                if (gaps_) findings_.add({"gap", Text::findGap}, at, {}, std::to_string(next));
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
        };
        if (entry.offset < open_.map.shape.start() || !frame.hasHead)
            return add({"outside", Text::findOutside});
        if (frame.id != entry.id) return add({"otherId", Text::findOtherId});
        if (!frame.fits) return add({"tooLong", Text::findTooLong});
        if (!frame.terminated) add({"terminator", Text::findTerminator});
        if (!frame.padded) add({"description", Text::findDescription});
        if (entry.offset < end_) add({"overlap", Text::findOverlap});
        if (open_.map.header.wholeWords() && (frame.end - frame.offset) % 4 != 0)
            add({"notWholeWords", Text::findNotWords});
        end_ = std::max(end_, frame.end);
    }

    OpenFile& open_;
    Findings& findings_;
    bool gaps_;
    std::uint64_t end_;  ///< of what was looked at
    bool all_ = true;
};

/// Tells of what the index does not name.
class Unnamed final : public Walker {
  public:
    Unnamed(const OpenFile& open, Findings& findings)
        : open_(open), findings_(findings), hints_(open.map.index ? &*open.map.index : nullptr) {}

    void block(const Found& found) override {
        ++blocks_;
        if (found.evidence == Evidence::index || found.doubts & kOtherId) return;
        const Frame& frame = found.frame;
        const auto add = [&](const Finding& finding, const std::string& more = {}) {
            findings_.add(finding, frame.offset, frame.id, more);
        };
        if (open_.map.index) add({"notIndexed", Text::findNotIndexed});
        if (found.doubts & kTerminatorWrong) add({"terminator", Text::findTerminator});
        if (!frame.padded) add({"description", Text::findDescription});
        // What the index does not name is told of already.
        if (open_.map.index) return;
        for (const DoubtName& name : kDoubts)
            if (found.doubts & name.doubt & ~kTerminatorWrong)
                add({name.json, Text::findDoubtful}, say(name.text));
    }
    void index(const Frame&) override {}
    void loss(const Loss& loss) override {
        // What the index names was looked at already.
        if (loss.kind == LossKind::indexBlock || hints_.at(loss.from)) return;
        findings_.add({loss.kind == LossKind::cutOff ? "cutOff" : "strayBytes",
                       loss.kind == LossKind::cutOff ? Text::findCutOff : Text::findStray},
                      loss.from, loss.id, std::to_string(loss.to));
    }
    [[nodiscard]] std::size_t blocks() const { return blocks_; }

  private:
    const OpenFile& open_;
    Findings& findings_;
    Hints hints_;
    std::size_t blocks_ = 0;
};

int verifyFile(const Options& options) {
    OpenFile open(options.input,
                  options.quick ? Window::Reads::whatIsAsked : Window::Reads::everything);
    Findings findings(options.json);
    checkHeader(open, findings);
    std::size_t count = 0;
    if (!open.map.header.has(HeaderFault::tooShort)) {
        checkIndex(open, findings);
        bool all = false;
        if (open.map.index) {
            count = open.map.index->entries.size();
            EntryCheck check(open, findings, options.quick);
            check.run();
            all = open.map.index->isWhole() && findings.count() == 0 && check.isAll();
        }
        // A walk tells what the index does not name.
        if (!options.quick && !all) {
            Unnamed unnamed(open, findings);
            Walk(open.window, open.probe, open.map, unnamed).run();
            count = unnamed.blocks();
        }
        open.window.finish();
    }
    findings.finish(count, options.input);
    return findings.count() == 0 ? kSound : kFindings;
}

}  // namespace

int verify(const Options& options) {
    try {
        return verifyFile(options);
    } catch (const Shortened&) {
        throw Failure(Text::shortened, {nameOf(options.input)});
    }
}

}  // namespace tbfile
