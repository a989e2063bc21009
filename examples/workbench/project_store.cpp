#include "project_store.h"

#include <algorithm>
#include <array>
#include <optional>

#include "toolbox/block_files.h"

namespace {

constexpr const char* kFileDescription = "Beam project";
/// Blocks in a row that a search may miss before the rest of the file counts as lost: each search
/// reads the file to its end.
constexpr int kMissesMax = 32;
constexpr std::size_t kProgressEvery = 100;

using Record = VarRecord;
using Number = std::uint32_t;

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

void put(Record& record, const Beam& beam) {
    put(record, beam.id);
    put<kNameMax>(record, beam.name);
    put<kNameMax>(record, beam.section);
    record << beam.x << beam.y << beam.span << beam.uniform;
    put(record, static_cast<Number>(beam.loads.size()));
    for (const PointLoad& load : beam.loads) record << load.position << load.force;
}
Beam takeBeam(Record& record) {
    Beam beam;
    beam.id = takeNumber(record);
    beam.name = takeText<kNameMax>(record);
    beam.section = takeText<kNameMax>(record);
    record >> beam.x >> beam.y >> beam.span >> beam.uniform;
    const Number loads = takeNumber(record);
    if (loads > kLoadsMax) throw VarRecord::VarRecordException();
    beam.loads.resize(loads);
    for (PointLoad& load : beam.loads) record >> load.position >> load.force;
    return beam;
}

void put(Record& record, const Label& label) {
    put(record, label.id);
    put(record, label.beam);
    record << label.x << label.y;
    put(record, label.alignment);
    put(record, Number{label.border});
    put<kLabelMax>(record, label.text);
}
Label takeLabel(Record& record) {
    Label label;
    label.id = takeNumber(record);
    label.beam = takeNumber(record);
    record >> label.x >> label.y;
    label.alignment = static_cast<Label::Alignment>(takeNumber(record));
    label.border = takeNumber(record) != 0;
    label.text = takeText<kLabelMax>(record);
    return label;
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
            put(block, item);
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

/// The blocks of a file, whole or not.
class Reader {
  public:
    Reader(const char* name, const StoreProgress& progress);

    LoadedProject load();

  private:
    [[nodiscard]] bool find(unsigned long id, TarvBlocFile& block);
    template <class Item, class Take>
    void loadAll(unsigned long first, Number count, Take take);
    template <class Item, class Take>
    std::optional<Item> fetch(unsigned long id, Take take);

    TarvFileRead file_;
    bool isWhole_ = false;      // header and index were found
    unsigned long behind_ = 0;  // where the last block found begins its search for the next
    const StoreProgress& progress_;
    LoadedProject loaded_;
};

Reader::Reader(const char* name, const StoreProgress& progress) : progress_(progress) {
    isWhole_ = file_.open(name) == 1 && file_.getHeader()->getDescription() == kFileDescription;
    if (isWhole_ || !APIFile::Exists(name)) return;
    file_.close();
    file_.setFile(new APIFile(name, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING));
    file_.setFileType(TarvFile::OpenForReading);
}

/// Without an index blocks are searched for in the order in which they were written.
bool Reader::find(unsigned long id, TarvBlocFile& block) {
    if (isWhole_) return file_.getBloc(id, block) == 1;
    if (!file_.getFile() || !file_.getFile()->isValid()) return false;
    const unsigned long found = block.findBloc(id, file_, behind_);
    if (found == 0) return false;
    behind_ = found;
    return block.readBloc(file_) == 1;
}

template <class Item, class Take>
std::optional<Item> Reader::fetch(unsigned long id, Take take) {
    TarvBlocFile block;
    if (!find(id, block)) return std::nullopt;
    try {
        return take(block);
    } catch (const VarRecord::VarRecordException&) {
        return std::nullopt;  // shorter than what it should hold
    }
}

template <class Item, class Take>
void Reader::loadAll(unsigned long first, Number count, Take take) {
    int misses = 0;
    for (Number i = 0; i < count && misses < kMissesMax; ++i) {
        std::optional<Item> item = fetch<Item>(first + i, take);
        const bool taken = item && item->id != 0 && loaded_.project.put(std::move(*item)) != 0;
        misses = taken ? 0 : misses + 1;
        loaded_.loaded += taken;
        const std::size_t done = loaded_.project.beams().size() + loaded_.project.labels().size();
        if (progress_ && done % kProgressEvery == 0) progress_(done, loaded_.expected);
    }
}

LoadedProject Reader::load() {
    // A file that cannot be opened is kept as an object all the same.
    if (!file_.getFile() || !file_.getFile()->isValid()) loaded_.error.setCode(kNotRead);
    if (isWhole_ && file_.getHeader()->getVersion() > kProjectVersion)
        loaded_.error.setCode(kTooNew);
    if (loaded_.error != 0) return std::move(loaded_);
    if (isWhole_) loaded_.created = file_.getHeader()->getdateCreation();

    struct Counts {
        Number beams, labels;
    };
    const auto counts = fetch<Counts>(kProjectBlock, [](Record& record) {
        const Number beams = takeNumber(record);
        return Counts{beams, takeNumber(record)};
    });
    // Without the counts every block is looked for until too many in a row are missing.
    const Number beams = counts ? counts->beams : kFirstLabelBlock - kFirstBeamBlock;
    const Number labels = counts ? counts->labels : kFirstLabelBlock - kFirstBeamBlock;
    if (counts) loaded_.expected = std::size_t{beams} + labels;
    loadAll<Beam>(kFirstBeamBlock, beams, takeBeam);
    loadAll<Label>(kFirstLabelBlock, labels, takeLabel);
    if (!isWhole_ || !counts || loaded_.loaded != loaded_.expected)
        loaded_.error.setCode(isWhole_ || counts || loaded_.loaded > 0 ? kDamaged : kNotAProject);
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
    put(counts, static_cast<Number>(project.beams().size()));
    put(counts, static_cast<Number>(project.labels().size()));
    Writer writer(file, progress, project.beams().size() + project.labels().size());
    return file.writeBloc(counts) && writer.write(project.beams(), kFirstBeamBlock, "Beam") &&
           writer.write(project.labels(), kFirstLabelBlock, "Label") && file.commit();
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
