// recover and repack: block files made of the blocks of others.
#include "commands.h"
#include "doubts.h"
#include "failure.h"
#include "json.h"
#include "open_file.h"
#include "toolbox/utf8.h"
#include "walk.h"
#include "writer.h"

namespace tbfile {
namespace {

/// Doubts about a block's frame; the others are about its right to be there.
constexpr unsigned kFrameDoubts = kLengthRepaired | kTerminatorWrong | kOtherId;

class Rescue final : public Walker {
  public:
    Rescue(const Options& options, OpenFile& open, Writer& writer)
        : options_(options), open_(open), writer_(writer) {}

    void block(const Found& found) override {
        if (options_.certain) {
            const unsigned doubts = found.doubts | (writer_.has(found.frame.id) ? kRepeatedId : 0u);
            if (doubts != 0) return tellDoubts(found, doubts, false);
        }
        writer_.add(open_.file, open_.probe, open_.map.shape, found.frame,
                    (found.doubts & kFrameDoubts) == 0);
        const unsigned doubts = found.doubts | (writer_.repeated() ? kRepeatedId : 0u);
        if (doubts != 0) tellDoubts(found, doubts, true);
    }

    void index(const Frame& frame) override {
        if (!open_.map.index || frame.offset != open_.map.index->frame.offset) ++oldIndexes_;
    }

    void loss(const Loss& loss) override {
        lostBytes_ += loss.to - loss.from;
        const std::string from = std::to_string(loss.from);
        const std::string to = std::to_string(loss.to);
        const std::string id = loss.id ? std::to_string(*loss.id) : "?";
        if (options_.json) {
            const char* kind = loss.kind == LossKind::cutOff       ? "cutOff"
                               : loss.kind == LossKind::indexBlock ? "index"
                                                                   : "damaged";
            losses_.add(jsonObject(
                {{"kind", std::string(kind)},
                 {"from", loss.from},
                 {"to", loss.to},
                 {"id", loss.id ? JsonValue(std::uint64_t{*loss.id}) : JsonValue(nullptr)}}));
            return;
        }
        print(say(loss.kind == LossKind::cutOff       ? Text::lossCut
                  : loss.kind == LossKind::indexBlock ? Text::lossIndex
                  : loss.id                           ? Text::lossBlock
                                                      : Text::lossBytes,
                  {from, to, id}) +
              "\n");
    }

    [[nodiscard]] bool sound() const { return lostBytes_ == 0 && doubtful_ == 0; }
    [[nodiscard]] std::uint64_t lostBytes() const { return lostBytes_; }
    [[nodiscard]] std::uint64_t doubtful() const { return doubtful_; }
    [[nodiscard]] std::uint64_t leftOut() const { return leftOut_; }
    [[nodiscard]] std::uint64_t oldIndexes() const { return oldIndexes_; }
    [[nodiscard]] Json losses() const { return losses_.done(); }
    [[nodiscard]] Json doubts() const { return doubts_.done(); }

  private:
    void tellDoubts(const Found& found, unsigned doubts, bool kept) {
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
    if (open.map.shape.layout().tail < blocks::kTailBytes) {
        const Label usual = usualIndexLabel();
        label.version = usual.version;
        label.recordVersion = usual.recordVersion;
    }
    return label;
}

/// What is wrong with the file beside its blocks.
struct Fault {
    const char* json;
    Text text;
};

std::vector<Fault> faultsOf(const Map& map) {
    std::vector<Fault> faults;
    if (!map.header.isReadable()) faults.push_back({"headerDamaged", Text::headerDamaged});
    if (map.formatDiffers()) faults.push_back({"headerLayout", Text::formatWrong});
    if (map.header.has(HeaderFault::date)) faults.push_back({"headerDate", Text::dateInvalid});
    if (!map.index && map.header.indexOffset == 0)
        faults.push_back({"neverCommitted", Text::neverCommitted});
    else if (!map.index)
        faults.push_back({"noIndex", Text::noIndex});
    else if (!map.index->isWhole() || !map.index->possible)
        faults.push_back({"indexDamaged", Text::indexDamaged});
    else if (!map.index->atItsPlace)
        faults.push_back({"indexMoved", Text::indexMoved});
    return faults;
}

void summarize(const Options& options, const Rescue& rescue, const Writer& writer,
               const std::vector<Fault>& faults) {
    if (options.json) {
        JsonArray general;
        for (const Fault& fault : faults)
            general.add(
                jsonObject({{"fault", std::string(fault.json)}, {"text", say(fault.text)}}));
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
    for (const Fault& fault : faults) print(say(fault.text) + "\n");
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
    Rescue rescue(options, open, writer);
    Walk(open.window, open.probe, open.map, rescue).run();
    const bool known = open.map.index && open.map.header.isReadable();
    if (writer.count() == 0 && !known) throw Failure(Text::nothingFound, {nameOf(options.input)});
    writer.finish(sane(open.map.header), indexLabel(open));
    output.finish();
    const std::vector<Fault> faults = faultsOf(open.map);
    summarize(options, rescue, writer, faults);
    return rescue.sound() && faults.empty() ? kSound : kFindings;
}

int repack(const Options& options) {
    checkTarget(options.output, options.input, options.force);
    OpenFile open(options.input);
    const Entries entries = open.entries();
    OutputFile output(options.output, open.file.access(), options.force, open.watch());
    Writer writer(output, entries.firsts.size());
    for (const BlocItem& entry : entries.firsts)
        writer.add(open.file, open.probe, open.map.shape, open.block(entry), true);
    writer.finish(open.map.header, indexLabel(open));
    output.finish();
    const Json leftOut = tellLeftOut(entries.repeated, options.json);
    if (options.json)
        print(jsonObject({{"output", nameOf(options.output)},
                          {"blocks", std::uint64_t{writer.count()}},
                          {"sizeBefore", open.file.size()},
                          {"size", writer.size()},
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
