// Prints header and index as they are read, then fetches every section by its identifier, in
// another order than that of the file.
#include "stored_report.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <numeric>
#include <string>
#include <utility>

#include "section_store.h"
#include "section_texts.h"
#include "terminal.h"

namespace {

constexpr std::size_t kLineWidth = 78;

void printLine(const CString& line) {
    print((line + "\n").view());
}

CString isoDate(const TarvDate& date) {
    char text[16];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", date.getYear(), date.getMonth(),
                  date.getDay());
    return text;
}

void printHeader(const TarvFileHeader& header) {
    printLine(text(kHeader, header.getVersion(), header.getVersionFile(), header.getMask(),
                   header.getDescription()));
    printLine(text(kDates, isoDate(header.getdateCreation()), isoDate(header.getTimeStamp()),
                   isoDate(header.getnetDate()), header.getOffsetMasterNdx()));
}

void printIndex(TarvFileIndex& index) {
    printLine(text(kIndex, index.getDescription(), index.getNbrItem()));
    std::string line;
    unsigned long id = 0;
    for (int found = index.getFirstID(id); found; found = index.getNextID(id)) {
        const std::string entry =
            " " + std::to_string(id) + "@" + std::to_string(index.getOffset(id));
        if (line.size() + entry.size() > kLineWidth) printLine(std::exchange(line, {}));
        line += entry;
    }
    if (!line.empty()) printLine(line);
}

/// Fetches every section by its identifier, the heaviest first; true when each equals its own.
bool compare(TarvFileRead& file, const std::vector<Section>& sections) {
    std::vector<std::size_t> order(sections.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, std::greater<>(),
                             [&](std::size_t i) { return sections[i].mass; });
    const auto equal = std::ranges::count_if(order, [&](std::size_t i) {
        return fetchSection(file, static_cast<unsigned long>(i + 1)) == sections[i];
    });
    printLine(text(kFetched, equal, sections.size()));
    return static_cast<std::size_t>(equal) == sections.size();
}

bool fail(unsigned short reason, const char* fileName) {
    printError((text(reason, fileName) + "\n").view());
    return false;
}

}  // namespace

bool storeAndReadBack(const char* fileName, const std::vector<Section>& sections,
                      const TarvDate& date) {
    if (!saveSections(fileName, sections, date)) return fail(kNotWritten, fileName);
    TarvFileRead file;
    if (!file.open(fileName)) return fail(kNotReadable, fileName);
    print("\n");
    printLine(text(kStored, fileName));
    printHeader(*file.getHeader());
    printIndex(*file.getIndex());
    return compare(file, sections);
}
