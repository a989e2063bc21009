// A project is written block by block. A whole file has all that its counts tell; of a rescued one
// every item is taken that its index names and that reads as one.
#include "project/project_store.h"

#include <algorithm>
#include <array>
#include <utility>

#include "toolbox/block_files.h"

namespace {

constexpr const char* kFileDescription = "Beam project";
constexpr std::size_t kProgressEvery = 100;
constexpr unsigned long kLastWithSums = 2;  // version
constexpr unsigned long kLabelBlocksEnd = 2 * kFirstLabelBlock - kFirstBeamBlock;

// Bytes of the records; those of a beam's point loads come on top.
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
    if (record.getLen() != size) throw VarRecord::VarRecordException();
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
    if (record.getLen() < kBeamSize) throw VarRecord::VarRecordException();
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

/// CRC-32 as in the older versions: the polynomial 0xEDB88320, reflected, from ones and inverted.
Number oldChecksum(std::string_view bytes) {
    constexpr Number kPolynomial = 0xEDB88320;
    constexpr int kBits = 8;
    Number sum = ~Number{0};
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < kBits; ++bit) sum = (sum >> 1) ^ ((sum & 1) ? kPolynomial : 0);
    }
    return ~sum;
}

/// The values of a record of an older version. False when its checksum is another.
bool takeOffSum(const Record& record, Record& values) {
    if (record.getLen() < kChecksumSize) return false;
    const unsigned size = record.getLen() - kChecksumSize;
    Record end;
    end.setData(kChecksumSize, record.getPData() + size);
    values.setData(size, record.getPData());
    return takeNumber(end) == oldChecksum({record.getPData(), size});
}

/// False when the record does not hold what was put into it.
template <class Item>
bool taken(const Record& record, unsigned long version, Item& item) {
    Record values = record;
    if (version <= kLastWithSums && !takeOffSum(record, values)) return false;
    try {
        take(values, item);
    } catch (const VarRecord::VarRecordException&) {
        return false;
    }
    return true;
}

/// The order of labels is that of their blocks.
void setPlace(Beam&, unsigned long) {}
void setPlace(Label& label, unsigned long block) {
    label.rank = static_cast<Number>(block - kFirstLabelBlock + 1);
}

std::vector<unsigned long> idsBetween(TarvFileRead& file, unsigned long first, unsigned long end) {
    std::vector<unsigned long> ids;
    unsigned long id = 0;
    TarvFileIndex* const index = file.getIndex();
    for (bool more = index && index->getFirstID(id); more; more = index->getNextID(id) != 0)
        if (id >= first && id < end) ids.push_back(id);
    std::ranges::sort(ids);
    return ids;
}

}  // namespace

/// Reads the items of a file into a project.
class ProjectReader {
  public:
    /// Without the blocks of which something is wrong.
    ProjectReader(TarvFileRead& file, ProjectContent& content,
                  const std::vector<TvDocumentLoss>& losses)
        : file_(file), content_(content), version_(file.getHeader()->getVersion()) {
        for (const TvDocumentLoss& loss : losses)
            if (loss.id) wrong_.push_back(*loss.id);
    }

    /// False when an item is missing, not intact, or there twice.
    bool load();
    [[nodiscard]] Project& project() { return project_; }
    [[nodiscard]] std::size_t expected() const { return expected_; }
    [[nodiscard]] std::size_t loaded() const {
        return project_.beams().size() + project_.labels().size();
    }

  private:
    template <class Item>
    bool loadAll(unsigned long first, unsigned long end, Number counted);
    template <class Item>
    bool keepAll(std::vector<Item> items);
    [[nodiscard]] bool isWrong(unsigned long id) const {
        return std::ranges::find(wrong_, id) != wrong_.end();
    }
    /// An identifier that comes twice is a loss: nobody knows which of the two it is.
    [[nodiscard]] bool isThere(const Beam& beam) const { return project_.beam(beam.id); }
    [[nodiscard]] bool isThere(const Label& label) const { return project_.label(label.id); }

    TarvFileRead& file_;
    ProjectContent& content_;
    unsigned long version_;
    std::vector<unsigned long> wrong_;
    std::size_t expected_ = 0;
    Project project_;
};

/// Keeps items in the order of their identifiers: a project takes the last of them quickly.
template <class Item>
bool ProjectReader::keepAll(std::vector<Item> items) {
    std::ranges::stable_sort(items, {}, &Item::id);
    bool all = true;
    for (Item& item : items)
        if (item.id == 0 || isThere(item) || project_.put(std::move(item)) == 0)
            all = false;
        else if (loaded() % kProgressEvery == 0)
            content_.tellProgress(loaded(), expected_);
    return all;
}

template <class Item>
bool ProjectReader::loadAll(unsigned long first, unsigned long end, Number counted) {
    const std::vector<unsigned long> ids = idsBetween(file_, first, end);
    bool all = ids.size() == counted;
    std::vector<Item> items;
    for (const unsigned long id : ids) {
        TarvBlocFile block;
        Item item;
        if (isWrong(id) || !file_.getBloc(id, block) || !taken(block, version_, item)) {
            all = false;
            continue;
        }
        setPlace(item, id);
        items.push_back(std::move(item));
    }
    return keepAll(std::move(items)) && all;
}

bool ProjectReader::load() {
    // A search for each block that is missing would read the file each time.
    file_.getHeader()->setMask(0);
    TarvBlocFile block;
    Counts counts;
    const bool counted = !isWrong(kProjectBlock) && file_.getBloc(kProjectBlock, block) &&
                         taken(block, version_, counts);
    expected_ = std::size_t{counts.beams} + counts.labels;
    const bool hasBeams = loadAll<Beam>(kFirstBeamBlock, kFirstLabelBlock, counts.beams);
    const bool hasLabels = loadAll<Label>(kFirstLabelBlock, kLabelBlocksEnd, counts.labels);
    return counted && hasBeams && hasLabels;
}

void ProjectContent::tellProgress(std::size_t, std::size_t) {}

/// `missing` is null for a file that is whole.
int ProjectContent::readFrom(TarvFileRead& file, const std::vector<TvDocumentLoss>* missing) {
    const TarvFileHeader& header = *file.getHeader();
    isDamaged_ = false;
    if (header.getDescription() != kFileDescription) return NotRead;
    if (header.getVersion() > kProjectVersion) return NewerVersion;
    const TarvDate created = header.getdateCreation();
    ProjectReader reader(file, *this, missing ? *missing : std::vector<TvDocumentLoss>());
    const bool complete = reader.load();
    isDamaged_ = !complete && !missing;
    if (!complete && (!missing || reader.loaded() == 0)) return NotRead;
    created_ = created;
    loaded_ = reader.loaded();
    expected_ = std::max(reader.expected(), loaded_);
    setProject(std::move(reader.project()));
    return Done;
}

int ProjectContent::read(TarvFileRead& file) {
    const std::vector<TvDocumentLoss> none;
    return readFrom(file, allowsDamage_ ? &none : nullptr);
}

int ProjectContent::readRescued(TarvFileRead& file, const std::vector<TvDocumentLoss>& missing) {
    return readFrom(file, &missing);
}

int ProjectContent::write(TarvFileWrite& file) {
    TarvFileHeader header = *file.getHeader();
    header.setDescription(kFileDescription);
    header.setVersion(kProjectVersion);
    header.setdateCreation(created_);
    file.setHeader(header);

    const Project& whole = project();
    const std::size_t total = whole.beams().size() + whole.labels().size();
    std::size_t done = 0;
    const auto store = [&](unsigned long id, const char* what, const auto& item) {
        TarvBlocFile block;
        block.setID(id);
        block.setDescription(what);
        put(block, item);
        if (++done % kProgressEvery == 0) tellProgress(done, total);
        return file.writeBloc(block) == 1;
    };
    bool written = store(kProjectBlock, kFileDescription,
                         Counts{static_cast<Number>(whole.beams().size()),
                                static_cast<Number>(whole.labels().size())});
    unsigned long id = kFirstBeamBlock;
    for (const Beam& beam : whole.beams()) written = written && store(id++, "Beam", beam);
    id = kFirstLabelBlock;
    for (const Label* const label : whole.labelsInOrder())
        written = written && store(id++, "Label", *label);
    return written ? 1 : 0;
}
