// Saves a project block by block, and loads one in two steps: every block where the index says;
// when one is missing or damaged, all blocks that a walk through the whole file finds, of which the
// checksums tell those that are intact.
#include "project/project_store.h"

#include <algorithm>
#include <array>
#include <utility>

#include "project/crc32.h"
#include "toolbox/block_files.h"
#include "toolbox/file_walk.h"

namespace {

constexpr const char* kFileDescription = "Beam project";
constexpr std::size_t kProgressEvery = 100;
constexpr unsigned long kLabelBlocksEnd = 2 * kFirstLabelBlock - kFirstBeamBlock;

// Bytes of the records without their checksum; those of a beam's point loads come on top.
constexpr unsigned kCountsSize = 8, kBeamSize = 72, kPointLoadSize = 16, kOldLabelSize = 160;
constexpr std::size_t kOldLabelText = 128;
constexpr unsigned kChecksumSize = 4;

using Record = VarRecord;
using Number = std::uint32_t;

/// How many beams and labels a project has.
struct Counts {
    Number beams = 0, labels = 0;
};

void put(Record& record, Number value) {
    record << static_cast<int>(value);
}
Number takeNumber(Record& record) {
    int value = 0;
    record >> value;
    return static_cast<Number>(value);
}

template <std::size_t Size>
void put(Record& record, const CString& text) {
    std::array<char, Size> bytes{};
    std::ranges::copy(text.view().substr(0, Size), bytes.begin());
    record.writeString(bytes.data(), Size);
}
template <std::size_t Size>
CString takeText(Record& record) {
    std::array<char, Size> bytes{};
    record.readString(bytes.data(), Size);
    const auto end = std::ranges::find(bytes, '\0');
    return {bytes.data(), static_cast<std::size_t>(end - bytes.begin())};
}

/// A longer record is as damaged as a shorter one, whose missing numbers may read as zeros.
void expectSize(const Record& record, unsigned size) {
    if (record.getLen() != size + kChecksumSize) throw VarRecord::VarRecordException();
}

void put(Record& record, const Counts& counts) {
    put(record, counts.beams);
    put(record, counts.labels);
}
void take(Record& record, Counts& counts) {
    expectSize(record, kCountsSize);
    counts.beams = takeNumber(record);
    counts.labels = takeNumber(record);
}

void put(Record& record, const Beam& beam) {
    put(record, beam.id);
    put<kNameMax>(record, beam.name);
    put<kNameMax>(record, beam.section);
    record << beam.x << beam.y << beam.span << beam.uniform;
    put(record, static_cast<Number>(beam.loads.size()));
    for (const PointLoad& load : beam.loads) record << load.position << load.force;
}
void take(Record& record, Beam& beam) {
    if (record.getLen() < kBeamSize + kChecksumSize) throw VarRecord::VarRecordException();
    beam.id = takeNumber(record);
    beam.name = takeText<kNameMax>(record);
    beam.section = takeText<kNameMax>(record);
    record >> beam.x >> beam.y >> beam.span >> beam.uniform;
    const Number loads = takeNumber(record);
    if (loads > kLoadsMax) throw VarRecord::VarRecordException();
    expectSize(record, kBeamSize + kPointLoadSize * loads);
    beam.loads.resize(loads);
    for (PointLoad& load : beam.loads) record >> load.position >> load.force;
}

void put(Record& record, const Label& label) {
    put(record, label.beam);
    TvTagSet one;
    one.insert(0, label.id, label.tag);
    one.store(record);
    static constexpr char kZeros[4] = {};
    record.writeString(kZeros, (4 - record.getLen() % 4) % 4);
}

/// As version 1 has it; at the record's start.
void takeOld(Record& record, Label& label) {
    expectSize(record, kOldLabelSize);
    label.id = takeNumber(record);
    label.beam = takeNumber(record);
    double x = 0, y = 0;
    record >> x >> y;
    const Number alignment = takeNumber(record);
    const bool framed = takeNumber(record) != 0;
    label.tag = labelTag(takeText<kOldLabelText>(record), x, y);
    setFramed(label.tag, framed);
    if (alignment > static_cast<Number>(TvAlign::right)) throw VarRecord::VarRecordException();
    label.tag.align = static_cast<TvAlign>(alignment);
}
void take(Record& record, Label& label) {
    Record old = record;
    label.beam = takeNumber(record);
    TvTagSet one;
    if (!one.load(record, nullptr)) return takeOld(old, label);
    if (one.count() != 1) throw VarRecord::VarRecordException();
    label.id = one.ids()[0];
    label.tag = *one.find(label.id);
}

/// What follows the values of a record.
Number checksum(const Record& record, unsigned size) {
    return crc32({record.getPData(), size});
}
template <class Item>
void putChecked(Record& record, const Item& item) {
    put(record, item);
    put(record, checksum(record, record.getLen()));
}
bool isIntact(const Record& record) {
    if (record.getLen() < kChecksumSize) return false;
    const unsigned size = record.getLen() - kChecksumSize;
    Record end;
    end.setData(kChecksumSize, record.getPData() + size);
    return takeNumber(end) == checksum(record, size);
}

/// False when the record does not hold what was put into it.
template <class Item>
bool taken(Record& record, Item& item) {
    if (!isIntact(record)) return false;
    try {
        take(record, item);
    } catch (const VarRecord::VarRecordException&) {
        return false;
    }
    return true;
}

/// Writes blocks one after another and tells how far it is.
class Writer {
  public:
    Writer(TarvFileWrite& file, const StoreProgress& progress, std::size_t total)
        : file_(file), progress_(progress), total_(total) {}

    template <class Item>
    bool write(const std::vector<Item>& items, unsigned long first, const char* what) {
        return std::ranges::all_of(items, [&](const Item& item) {
            TarvBlocFile block;
            block.setID(first++);
            block.setDescription(what);
            putChecked(block, item);
            if (progress_ && ++done_ % kProgressEvery == 0) progress_(done_, total_);
            return file_.writeBloc(block) == 1;
        });
    }

  private:
    TarvFileWrite& file_;
    const StoreProgress& progress_;
    std::size_t total_;
    std::size_t done_ = 0;
};

/// Items with the block that each was in.
template <class Item>
using Found = std::vector<std::pair<unsigned long, Item>>;

/// The project of a file, whole or not.
class Reader {
  public:
    Reader(const char* name, const StoreProgress& progress);

    LoadedProject load();

  private:
    /// Everything, each block where the index says. False when something is missing or too much.
    bool loadWhole();
    template <class Item>
    bool loadAll(unsigned long first, Number count);
    /// What is left, wherever it is.
    void recover();
    template <class Item>
    void take(const toolbox::WalkFinding& found, Found<Item>& items);
    template <class Item>
    void keepFirst(Found<Item>& items);

    template <class Item>
    [[nodiscard]] bool keepAll(std::vector<Item> items);
    template <class Item>
    bool keep(Item item);
    [[nodiscard]] const Beam* same(const Beam& beam) const { return loaded_.project.beam(beam.id); }
    [[nodiscard]] const Label* same(const Label& label) const {
        return loaded_.project.label(label.id);
    }
    [[nodiscard]] std::vector<unsigned long> indexed();
    void tellProgress();

    const char* name_;
    TarvFileRead file_;
    bool isWhole_ = false;  // header and index were found
    bool hasCounts_ = false;
    const StoreProgress& progress_;
    LoadedProject loaded_;
};

Reader::Reader(const char* name, const StoreProgress& progress) : name_(name), progress_(progress) {
    const bool opened = file_.open(name) == 1;
    isWhole_ = opened && file_.getHeader()->getDescription() == kFileDescription;
    if (opened || !APIFile::Exists(name)) return;
    file_.setFile(new APIFile(name, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING));
    file_.setFileType(TarvFile::OpenForReading);
}

/// Identifiers in the index.
std::vector<unsigned long> Reader::indexed() {
    std::vector<unsigned long> ids;
    TarvFileIndex* const index = file_.getIndex();
    unsigned long id = 0;
    if (!index || !index->getFirstID(id)) return ids;
    do ids.push_back(id);
    while (index->getNextID(id));
    return ids;
}

std::size_t countBetween(const std::vector<unsigned long>& ids, unsigned long first,
                         unsigned long end) {
    return static_cast<std::size_t>(
        std::ranges::count_if(ids, [=](unsigned long id) { return id >= first && id < end; }));
}

/// An identifier that comes twice is a loss: nobody knows which of the two it is.
template <class Item>
bool Reader::keep(Item item) {
    if (item.id == 0 || same(item) || loaded_.project.put(std::move(item)) == 0) return false;
    tellProgress();
    return true;
}

void Reader::tellProgress() {
    const std::size_t done = loaded_.project.beams().size() + loaded_.project.labels().size();
    if (progress_ && done % kProgressEvery == 0) progress_(done, loaded_.expected);
}

/// Keeps items in the order of their identifiers: a project takes the last of them quickly.
template <class Item>
bool Reader::keepAll(std::vector<Item> items) {
    std::ranges::stable_sort(items, {}, &Item::id);
    bool all = true;
    for (Item& item : items) all = keep(std::move(item)) && all;
    return all;
}

/// The order of labels is that of their blocks.
void setPlace(Beam&, unsigned long) {}
void setPlace(Label& label, unsigned long block) {
    label.rank = static_cast<Number>(block - kFirstLabelBlock + 1);
}

template <class Item>
bool Reader::loadAll(unsigned long first, Number count) {
    std::vector<Item> items;
    for (Number i = 0; i < count; ++i) {
        TarvBlocFile block;
        if (!file_.getBloc(first + i, block) || !taken(block, items.emplace_back())) return false;
        setPlace(items.back(), first + i);
    }
    return keepAll(std::move(items));
}

bool Reader::loadWhole() {
    if (!isWhole_) return false;
    // A search for each block that is missing would read the file each time.
    file_.getHeader()->setMask(0);
    TarvBlocFile block;
    Counts counts;
    if (!file_.getBloc(kProjectBlock, block) || !taken(block, counts)) return false;
    loaded_.expected = std::size_t{counts.beams} + counts.labels;
    const std::vector<unsigned long> ids = indexed();
    return countBetween(ids, kFirstBeamBlock, kFirstLabelBlock) == counts.beams &&
           countBetween(ids, kFirstLabelBlock, kLabelBlocksEnd) == counts.labels &&
           loadAll<Beam>(kFirstBeamBlock, counts.beams) &&
           loadAll<Label>(kFirstLabelBlock, counts.labels);
}

/// Takes an item from a block that the walk found; its checksum tells whether it is one.
template <class Item>
void Reader::take(const toolbox::WalkFinding& found, Found<Item>& items) {
    TarvBlocFile block;
    Item item;
    if (block.read(found.frame.id, file_, static_cast<unsigned long>(found.from), 0) &&
        taken(block, item))
        items.emplace_back(found.frame.id, std::move(item));
}

/// Of several blocks with one identifier the first counts.
template <class Item>
void Reader::keepFirst(Found<Item>& found) {
    std::ranges::stable_sort(found, {}, &std::pair<unsigned long, Item>::first);
    const auto rest = std::ranges::unique(found, {}, &std::pair<unsigned long, Item>::first);
    std::vector<Item> items;
    for (auto each = found.begin(); each != rest.begin(); ++each)
        setPlace(items.emplace_back(std::move(each->second)), each->first);
    static_cast<void>(keepAll(std::move(items)));
}

void Reader::recover() {
    loaded_.project = {};
    Found<Counts> counts;
    Found<Beam> beams;
    Found<Label> labels;
    const toolbox::SystemFileSource source(name_);
    TarvFileWalk(source).run([&](const toolbox::WalkFinding& found) {
        const unsigned long id = found.frame.id;
        if (found.kind != toolbox::WalkFinding::Kind::block) return true;
        if (id == kProjectBlock) take(found, counts);
        if (id >= kFirstBeamBlock && id < kFirstLabelBlock) take(found, beams);
        if (id >= kFirstLabelBlock && id < kLabelBlocksEnd) take(found, labels);
        return true;
    });

    hasCounts_ = !counts.empty();
    const std::vector<unsigned long> ids = indexed();
    const auto expected = [&](unsigned long first, unsigned long end, Number counted) {
        return std::max<std::size_t>(countBetween(ids, first, end), counted);
    };
    const Counts known = hasCounts_ ? counts.front().second : Counts{};
    loaded_.expected = expected(kFirstBeamBlock, kFirstLabelBlock, known.beams) +
                       expected(kFirstLabelBlock, kLabelBlocksEnd, known.labels);
    keepFirst(beams);
    keepFirst(labels);
}

LoadedProject Reader::load() {
    // A file that cannot be opened is kept as an object all the same.
    if (!file_.getFile() || !file_.getFile()->isValid()) loaded_.error.setCode(kNotRead);
    if (isWhole_ && file_.getHeader()->getVersion() > kProjectVersion)
        loaded_.error.setCode(kTooNew);
    if (loaded_.error != 0) return std::move(loaded_);
    if (isWhole_) loaded_.created = file_.getHeader()->getdateCreation();

    const bool complete = loadWhole();
    if (!complete) recover();
    loaded_.loaded = loaded_.project.beams().size() + loaded_.project.labels().size();
    if (loaded_.expected > 0) loaded_.expected = std::max(loaded_.expected, loaded_.loaded);
    if (!complete)
        loaded_.error.setCode(isWhole_ || hasCounts_ || loaded_.loaded > 0 ? kDamaged
                                                                           : kNotAProject);
    return std::move(loaded_);
}

bool writeAll(TarvFileWrite& file, const Project& project, const TarvDate& created,
              const StoreProgress& progress) {
    TarvFileHeader header = *file.getHeader();
    header.setDescription(kFileDescription);
    header.setVersion(kProjectVersion);
    header.setdateCreation(created);
    file.setHeader(header);

    TarvBlocFile counts;
    counts.setID(kProjectBlock);
    counts.setDescription(kFileDescription);
    putChecked(counts, Counts{static_cast<Number>(project.beams().size()),
                              static_cast<Number>(project.labels().size())});
    std::vector<Label> labels;
    for (const Label* const label : project.labelsInOrder()) labels.push_back(*label);
    Writer writer(file, progress, project.beams().size() + project.labels().size());
    return file.writeBloc(counts) && writer.write(project.beams(), kFirstBeamBlock, "Beam") &&
           writer.write(labels, kFirstLabelBlock, "Label") && file.commit();
}

}  // namespace

LoadedProject loadProject(const char* file, const StoreProgress& progress) {
    return Reader(file, progress).load();
}

ErrObj saveProject(const Project& project, const char* file, const TarvDate& created,
                   const StoreProgress& progress) {
    TarvFileWrite writer;
    writer.setSafeSave(1);
    const bool written = writer.open(file) && writeAll(writer, project, created, progress);
    // Closing also takes an unfinished file away.
    return ErrObj(writer.close() && written ? 0 : kNotWritten);
}
