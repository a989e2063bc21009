// Reads a table of steel sections, prints it with what each section does as a beam, stores one
// block per section in a block file, reads the file back and shows what it holds. The columns are
// user-defined keys: a description or a format that the user changes is found again by later runs.
//
// Exit status: 0 all done, 1 the file could not be written or read back, 2 done but something was
// left out: lines of the table, a change of a key, a token of the label; 3 wrong arguments.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>
#include <optional>
#include <string>

#include "labels.h"
#include "options.h"
#include "section_csv.h"
#include "section_store.h"
#include "section_table.h"
#include "section_texts.h"
#include "terminal.h"
#include "toolbox/messages.h"

namespace {

enum ExitStatus { kDone = 0, kFailed = 1, kLeftOut = 2, kWrongArguments = 3 };

/// The library's services for the length of the program. Errors are collected, not shown in boxes.
class Services {
  public:
    explicit Services(GMSG::Language language) {
        GMSG::initStaticVars();
        UDManager::initStaticVars();
        GMSG::setErrorReportingOption(GMSG::ReportInList);
        GMSG::language = language;
        registerSectionTexts();
    }
    ~Services() {
        UDManager::destroyStaticVars();
        GMSG::destroyStaticVars();
    }
    Services(const Services&) = delete;
    Services& operator=(const Services&) = delete;

  private:
    GMSG service_;
};

std::string number(unsigned long value) {
    return std::to_string(value);
}

std::string isoDate(const TarvDate& date) {
    char text[16];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", date.getYear(), date.getMonth(),
                  date.getDay());
    return text;
}

void printHeader(const TarvFileHeader& header) {
    print("Header: version " + number(header.getVersion()) + ", format " +
          number(header.getVersionFile()) + ", mask " + number(header.getMask()) + ", \"" +
          header.getDescription().str() + "\"\n" + "  created " +
          isoDate(header.getdateCreation()) + ", stamped " + isoDate(header.getTimeStamp()) +
          ", net " + isoDate(header.getnetDate()) + ", index at " +
          number(header.getOffsetMasterNdx()) + "\n");
}

void printIndex(TarvFileIndex& index) {
    print("Index \"" + index.getDescription().str() + "\": " + number(index.getNbrItem()) +
          " blocks, identifier@offset\n");
    std::string line;
    unsigned long id = 0;
    for (int found = index.getFirstID(id); found; found = index.getNextID(id)) {
        const std::string entry = " " + number(id) + "@" + number(index.getOffset(id));
        if (line.size() + entry.size() > 78) print(std::exchange(line, {}) + "\n");
        line += entry;
    }
    if (!line.empty()) print(line + "\n");
}

/// Fetches every section by its identifier, the heaviest first; true when each equals its own.
bool compare(TarvFileRead& file, const std::vector<Section>& sections) {
    std::vector<std::size_t> order(sections.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, std::greater<>(),
                             [&](std::size_t i) { return sections[i].mass; });
    std::size_t equal = 0;
    for (const std::size_t i : order)
        if (fetchSection(file, static_cast<unsigned long>(i + 1)) == sections[i]) ++equal;
    print("Fetched by identifier, heaviest first: " + std::to_string(equal) + " of " +
          std::to_string(sections.size()) + " equal\n");
    return equal == sections.size();
}

bool storeAndReadBack(const char* fileName, const std::vector<Section>& sections,
                      const TarvDate& date) {
    if (!saveSections(fileName, sections, date)) {
        print(std::string(fileName) + ": not written\n");
        return false;
    }
    TarvFileRead file;
    if (!file.open(fileName)) {
        print(std::string(fileName) + ": not readable\n");
        return false;
    }
    print("\nStored in " + std::string(fileName) + "\n");
    printHeader(*file.getHeader());
    printIndex(*file.getIndex());
    return compare(file, sections);
}

RWCString text(unsigned short id) {
    RWCString text;
    GMSG::getString(id, text);
    return text;
}

void change(SectionKeys& keys, const std::vector<KeyChange>& changes) {
    for (const KeyChange& change : changes) {
        const bool kept = change.what == KeyChange::What::description
                              ? keys.describe(change.key, change.value)
                              : keys.format(change.key, change.value);
        if (!kept) GMSG::errorMsg(kNotChanged, MB_ICONEXCLAMATION, change.key, change.value);
    }
}

/// How far the formulas are from the table, which is rounded, in percent.
void printDeviation(SectionKeys& keys, const std::vector<Section>& sections) {
    double mass = 0;
    double modulus = 0;
    for (const Section& section : sections) {
        keys.setCurrent(section);
        mass = std::max(mass, std::fabs(keys.figures().mass / section.mass - 1));
        modulus = std::max(modulus, std::fabs(keys.figures().modulus / section.welY - 1));
    }
    RWCString line;
    GMSG::getString(kDeviation, line, 100 * mass, 100 * modulus);
    print(line.str() + "\n");
}

void printBeams(SectionKeys& keys, const std::vector<Section>& sections, const Options& options) {
    RWCString title;
    GMSG::getString(kBeam, title, options.beam.span, options.beam.load);
    print("\n" + title.str() + "\n");
    keys.setSelection(SectionKeys::beamColumns());
    print(sectionTable(keys, sections).view());
    printDeviation(keys, sections);

    print("\n" + text(kKeysUsed).str() + "\n");
    print(legend(keys).view());
    RWCString restored;
    GMSG::getString(kRestored, restored, keys.restored());
    print(restored.str() + "\n");

    print("\n" + text(kLabels).str() + "\n");
    const RWCString label = options.label ? RWCString(options.label) : text(kUsualLabel);
    print(labels(keys, label, sections).view());
}

int run(const Options& options) {
    const std::vector<Section> sections = readSections(options.table);
    print(text(kTitle).str() + ", " + dateLine(options.date).str() + "\n");
    {
        SectionKeys keys(options.keys, options.beam);
        change(keys, options.changes);
        keys.setSelection(SectionKeys::sectionColumns());
        print(sectionTable(keys, sections).view());
        printBeams(keys, sections, options);
    }
    const bool complete = GMSG::getLstErrorsInString().isNull();
    const bool stored = storeAndReadBack(options.file, sections, options.date);

    const RWCString errors = GMSG::getLstErrorsInString();
    if (!errors.isNull()) print("\nReported:\n" + errors.str());
    if (!stored) return kFailed;
    return complete ? kDone : kLeftOut;
}

}  // namespace

int main(int count, char** arguments) {
    prepareTerminal();
    const std::optional<Options> options = parseOptions(count, arguments);
    if (!options) {
        std::fputs(kUsage, stderr);
        return kWrongArguments;
    }
    const Services services(options->language);
    return run(*options);
}
