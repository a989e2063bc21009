// recover and repack: block files made of the blocks of others.
#include "commands/commands.h"
#include "commands/days.h"
#include "commands/doubts.h"
#include "commands/open_file.h"
#include "commands/writer.h"
#include "terminal/failure.h"
#include "terminal/json.h"
#include "toolbox/utf8.h"

namespace tbfile {
namespace {

/// Doubts about a block's frame; the others are about its right to be there.
constexpr unsigned kFrameDoubts =
    toolbox::kLengthRepaired | toolbox::kTerminatorWrong | toolbox::kOtherId;

/// What is wrong with the file beside its blocks.
struct Fault {
    const char* json;
    std::string text;
};

class Rescue {
  public:
    Rescue(const Options& options, OpenFile& open, Writer& writer)
        : options_(options), open_(open), writer_(writer) {}

    void take(const WalkFinding& found) {
        if (found.kind == WalkFinding::Kind::block)
            block(found);
        else if (found.kind == WalkFinding::Kind::index)
            index(found.frame);
        else if (found.kind == WalkFinding::Kind::checksums)
            list(found.frame);
        else
            loss(found);
    }

    [[nodiscard]] bool sound() const { return lostBytes_ == 0 && doubtful_ == 0; }
    [[nodiscard]] std::uint64_t lostBytes() const { return lostBytes_; }
    [[nodiscard]] std::uint64_t doubtful() const { return doubtful_; }
    [[nodiscard]] std::uint64_t leftOut() const { return leftOut_; }
    [[nodiscard]] std::uint64_t oldIndexes() const { return oldIndexes_; }
    /// Blocks that are where the index names them.
    [[nodiscard]] std::uint64_t named() const { return named_; }
    /// What is wrong with blocks that are kept all the same.
    [[nodiscard]] const std::vector<Fault>& notes() const { return notes_; }
    [[nodiscard]] Json losses() const { return losses_.done(); }
    [[nodiscard]] Json doubts() const { return doubts_.done(); }

  private:
    void block(const WalkFinding& found) {
        const Frame& frame = found.frame;
        if (!frame.padded) note("description", Text::findDescription, frame);
        if (open_.map.header.wholeWords() && (frame.end - frame.offset) % 4 != 0)
            note("notWholeWords", Text::findNotWords, frame);
        if (found.isMisplaced) note("misplaced", Text::findMisplaced, frame);
        if (found.isReframed) note("frameDamaged", Text::findFrame, frame);
        if (found.evidence == Evidence::index || found.evidence == Evidence::checksum) ++named_;
        if (options_.certain) {
            const unsigned doubts = found.doubts | (writer_.has(found.frame.id) ? kRepeatedId : 0u);
            if (doubts != 0) return tellDoubts(found, doubts, false);
        }
        writer_.add(open_.file, open_.probe, open_.map.shape, found.frame,
                    (found.doubts & kFrameDoubts) == 0 && !found.isReframed);
        // What the file's own list does not vouch for the new one does not either.
        const bool isListed = open_.map.checksums && open_.map.checksums->proves();
        if (found.doubts != 0 || (isListed && found.evidence != Evidence::checksum))
            writer_.leaveSumOut();
        const unsigned doubts = found.doubts | (writer_.repeated() ? kRepeatedId : 0u);
        if (doubts != 0) tellDoubts(found, doubts, true);
    }

    void index(const Frame& frame) {
        if (!open_.map.index || frame.offset != open_.map.index->frame.offset) ++oldIndexes_;
        if (!frame.isIndex()) note("otherId", Text::findOtherId, frame);
    }

    /// The new file gets a list of its own.
    void list(const Frame& frame) {
        if (open_.map.checksums && frame.offset == open_.map.checksums->frame.offset) ++named_;
    }

    void loss(const WalkFinding& loss) {
        lostBytes_ += loss.to - loss.from;
        const std::string from = std::to_string(loss.from);
        const std::string to = std::to_string(loss.to);
        const std::string id = loss.id ? std::to_string(*loss.id) : "?";
        if (options_.json) {
            const char* kind = loss.kind == WalkFinding::Kind::cutOff             ? "cutOff"
                               : loss.kind == WalkFinding::Kind::damagedIndex     ? "index"
                               : loss.kind == WalkFinding::Kind::damagedChecksums ? "checksums"
                                                                                  : "damaged";
            losses_.add(jsonObject(
                {{"kind", std::string(kind)},
                 {"from", loss.from},
                 {"to", loss.to},
                 {"id", loss.id ? JsonValue(std::uint64_t{*loss.id}) : JsonValue(nullptr)}}));
            return;
        }
        print(say(loss.kind == WalkFinding::Kind::cutOff             ? Text::lossCut
                  : loss.kind == WalkFinding::Kind::damagedIndex     ? Text::lossIndex
                  : loss.kind == WalkFinding::Kind::damagedChecksums ? Text::lossChecksums
                  : loss.id                                          ? Text::lossBlock
                                                                     : Text::lossBytes,
                  {from, to, id}) +
              "\n");
    }

    /// Of each kind the first is told.
    void note(const char* json, Text text, const Frame& frame) {
        for (const Fault& fault : notes_)
            if (fault.json == std::string_view(json)) return;
        notes_.push_back(
            {json, say(text, {std::to_string(frame.offset), std::to_string(frame.id)})});
    }

    void tellDoubts(const WalkFinding& found, unsigned doubts, bool kept) {
        ++doubtful_;
        if (!kept) ++leftOut_;
        const std::string at = std::to_string(found.frame.offset);
        const std::string id = std::to_string(found.frame.id);
        JsonArray names;
        for (const DoubtName& name : kDoubts) {
            if (!(doubts & name.doubt)) continue;
            if (options_.json)
                names.add({'"' + std::string(name.json) + '"'});
            else
                print(say(Text::doubtLine,
                          {id, at, say(name.text, {std::to_string(found.indexId)})}) +
                      "\n");
        }
        // In text they are told one by one and not kept: there may be very many.
        if (!options_.json) return;
        doubts_.add(jsonObject({{"id", std::uint64_t{found.frame.id}},
                                {"from", found.frame.offset},
                                {"length", std::uint64_t{found.frame.length}},
                                {"kept", kept},
                                {"doubts", names.done()}}));
    }

    const Options& options_;
    OpenFile& open_;
    Writer& writer_;
    std::uint64_t lostBytes_ = 0;
    std::uint64_t doubtful_ = 0;
    std::uint64_t leftOut_ = 0;
    std::uint64_t oldIndexes_ = 0;
    std::uint64_t named_ = 0;
    std::vector<Fault> notes_;
    JsonArray losses_;
    JsonArray doubts_;
};

/// The header's fields as far as they can be what was written.
Header sane(Header header) {
    if (header.has(HeaderFault::description) && !header.isReadable()) header.description.clear();
    for (std::int32_t& day : header.dates)
        if (dayText(day).empty()) day = -1;
    return header;
}

Label indexLabel(OpenFile& open) {
    if (!open.map.index || !open.map.index->isWhole()) return usualIndexLabel();
    Label label = labelOf(open.probe, open.map.shape, open.map.index->frame);
    if (!open.map.shape.isWritten()) {
        const Label usual = usualIndexLabel();
        label.version = usual.version;
        label.recordVersion = usual.recordVersion;
    }
    return label;
}

std::vector<Fault> faultsOf(const BlockFileMap& map, const Rescue& rescue) {
    std::vector<Fault> faults;
    const auto add = [&](const char* json, Text text, const std::string& place = {},
                         const std::string& id = {}) {
        faults.push_back({json, say(text, {place, id})});
    };
    const Header& header = map.header;
    if (!header.isReadable()) add("headerDamaged", Text::headerDamaged);
    if (map.formatDiffers()) add("headerLayout", Text::formatWrong);
    if (header.isReadable() && header.has(HeaderFault::format) && !map.formatDiffers())
        add("headerFormat", Text::findFormat, "152");
    if (header.isReadable() && header.has(HeaderFault::description))
        add("headerDescription", Text::findHeaderText, "8");
    if (header.has(HeaderFault::date)) add("headerDate", Text::dateInvalid);
    const Index* index = map.index ? &*map.index : nullptr;
    if (!index && header.indexOffset == 0) add("neverCommitted", Text::neverCommitted);
    if (!index && header.indexOffset != 0) add("noIndex", Text::noIndex);
    if (index && (!index->isWhole() || !index->possible)) {
        add("indexDamaged", Text::indexDamaged);
    } else if (index) {
        const std::string at = std::to_string(index->frame.offset);
        if (!index->atItsPlace) add("indexMoved", Text::indexMoved);
        if (!index->frame.padded)
            add("description", Text::findDescription, at, std::to_string(toolbox::kMasterIndexId));
        if (index->frame.length % sizeof(BlocItem) != 0)
            add("indexLength", Text::findIndexLength, at);
        if (!index->ascending) add("indexOrder", Text::findIndexOrder);
        // Doubts and losses tell of most; of an entry that is repeated nothing else does.
        if (rescue.sound() && rescue.named() != index->entries.size())
            add("indexDamaged", Text::indexDamaged);
    }
    if (map.checksums)
        if (const auto fault = faultOf(*map.checksums))
            add(fault->json, fault->text, std::to_string(map.checksums->frame.offset));
    faults.insert(faults.end(), rescue.notes().begin(), rescue.notes().end());
    return faults;
}

void summarize(const Options& options, const Rescue& rescue, const Writer& writer,
               const std::vector<Fault>& faults) {
    if (options.json) {
        JsonArray general;
        for (const Fault& fault : faults)
            general.add(jsonObject({{"fault", std::string(fault.json)}, {"text", fault.text}}));
        print(jsonObject({{"output", nameOf(options.output)},
                          {"rescued", std::uint64_t{writer.count()}},
                          {"doubtful", rescue.doubtful()},
                          {"leftOut", rescue.leftOut()},
                          {"lostBytes", rescue.lostBytes()},
                          {"oldIndexes", rescue.oldIndexes()},
                          {"faults", general.done()},
                          {"losses", rescue.losses()},
                          {"doubtfulBlocks", rescue.doubts()}})
                  .text +
              "\n");
        return;
    }
    for (const Fault& fault : faults) print(fault.text + "\n");
    print(say(Text::rescued, {grouped(writer.count()), nameOf(options.output)}) + "\n");
    if (rescue.doubtful() > 0)
        print(say(options.certain ? Text::doubtfulLeftOut : Text::doubtfulKept,
                  {grouped(rescue.doubtful())}) +
              "\n");
    if (rescue.lostBytes() > 0) print(say(Text::lostBytes, {grouped(rescue.lostBytes())}) + "\n");
}

}  // namespace

int recover(const Options& options) {
    checkTarget(options.output, options.input, options.force);
    OpenFile open(options.input);
    OutputFile output(options.output, open.file.access(), options.force, open.watch());
    Writer writer(output, open.map.index ? open.map.index->entries.size() : 0);
    if (open.map.checksums) writer.keepSums();
    Rescue rescue(options, open, writer);
    open.walk.run([&](const WalkFinding& found) {
        rescue.take(found);
        return true;
    });
    const bool known = open.map.index && open.map.header.isReadable();
    if (writer.count() == 0 && !known) throw Failure(Text::nothingFound, {nameOf(options.input)});
    writer.finish(sane(open.map.header), indexLabel(open));
    output.finish();
    const std::vector<Fault> faults = faultsOf(open.map, rescue);
    summarize(options, rescue, writer, faults);
    return rescue.sound() && faults.empty() ? kSound : kFindings;
}

int repack(const Options& options) {
    checkTarget(options.output, options.input, options.force);
    OpenFile open(options.input);
    const Entries entries = open.entries();
    OutputFile output(options.output, open.file.access(), options.force, open.watch());
    Writer writer(output, entries.firsts.size());
    const bool hasList = open.map.checksums.has_value();
    if (options.checksums || hasList) writer.keepSums();
    for (const BlocItem& entry : entries.firsts) {
        writer.add(open.file, open.probe, open.map.shape, open.block(entry), true);
        // What the file's own list does not vouch for the new one does only when that is asked for.
        const bool isUnknown = hasList && open.map.checksums->proves() && !open.sumOf(entry.offset);
        if (isUnknown && !options.checksums) writer.leaveSumOut();
    }
    writer.finish(open.map.header, indexLabel(open));
    output.finish();
    const Json leftOut = tellLeftOut(entries.repeated, options.json);
    if (options.json)
        print(jsonObject({{"output", nameOf(options.output)},
                          {"blocks", std::uint64_t{writer.count()}},
                          {"sizeBefore", open.file.size()},
                          {"size", writer.size()},
                          {"checksums", options.checksums || hasList},
                          {"repeated", leftOut}})
                  .text +
              "\n");
    else
        print(say(Text::repacked, {grouped(writer.count()), nameOf(options.output),
                                   grouped(open.file.size()), grouped(writer.size())}) +
              "\n");
    return entries.repeated.empty() ? kSound : kFindings;
}

}  // namespace tbfile
