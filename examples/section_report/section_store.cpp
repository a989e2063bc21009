// One block per section; the header gets its description and its dates.
#include "section_store.h"

#include <algorithm>
#include <array>

#include "section_texts.h"

namespace {

using DesignationField = std::array<char, kDesignationMax>;

TarvBlocFile blockOf(const Section& section, unsigned long id) {
    TarvBlocFile block;
    block.setID(id);
    block.setDescription(section.designation);
    DesignationField designation{};
    std::ranges::copy(section.designation.view(), designation.begin());
    block.writeString(designation.data(), kDesignationMax);
    for (const Column& column : kColumns) block << section.*column.value;
    return block;
}

Section sectionOf(TarvBlocFile& block) {
    Section section;
    DesignationField designation{};
    block.readString(designation.data(), kDesignationMax);
    const auto end = std::ranges::find(designation, '\0');
    section.designation =
        CString(designation.data(), static_cast<std::size_t>(end - designation.begin()));
    for (const Column& column : kColumns) block >> section.*column.value;
    return section;
}

TarvFileHeader datedHeader(const TarvFileHeader& header, const TarvDate& date) {
    TarvFileHeader dated = header;
    dated.setDescription(text(kTitle));
    dated.setdateCreation(date);
    dated.setTimeStamp(date);
    dated.setnetDate(date);
    return dated;
}

}  // namespace

bool saveSections(const char* fileName, const std::vector<Section>& sections,
                  const TarvDate& date) {
    TarvFileWrite file;
    if (!file.open(fileName)) return false;
    file.setHeader(datedHeader(*file.getHeader(), date));
    unsigned long id = 0;
    for (const Section& section : sections)
        if (!file.writeBloc(blockOf(section, ++id))) return false;
    return file.commit() && file.close();
}

std::optional<Section> fetchSection(TarvFileRead& file, unsigned long id) {
    TarvBlocFile block;
    if (!file.getBloc(id, block)) return std::nullopt;
    try {
        return sectionOf(block);
    } catch (const VarRecord::VarRecordException&) {
        return std::nullopt;  // the block is shorter than a section
    }
}
