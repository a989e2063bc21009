// Reads a table of steel sections, prints it, stores one block per section in a block file, reads
// the file back and shows what it holds.
//
//     section_report [--french] [--date YYYYMMDD] TABLE.csv FILE.tbf
//
// Exit status: 0 all done, 1 the file could not be written or read back, 2 done but lines of the
// table were left out or it could not be read, 3 wrong arguments.
#include <algorithm>
#include <cstdio>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>

#include "section_csv.h"
#include "section_store.h"
#include "section_table.h"
#include "section_texts.h"
#include "terminal.h"
#include "toolbox/messages.h"

namespace {

enum ExitStatus { kDone = 0, kFailed = 1, kLinesLeftOut = 2, kWrongArguments = 3 };

struct Options {
    GMSG::Language language = GMSG::English;
    TarvDate date;
    const char* table = nullptr;
    const char* file = nullptr;
};

std::optional<Options> parse(int count, char** arguments) {
    Options options;
    for (int i = 1; i < count; ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--french") {
            options.language = GMSG::French;
        } else if (argument == "--date" && i + 1 < count) {
            options.date = TarvDate(arguments[++i]);
            if (!options.date.isValid()) return std::nullopt;
        } else if (argument.starts_with("-") || options.file) {
            return std::nullopt;
        } else {
            (options.table ? options.file : options.table) = arguments[i];
        }
    }
    return options.file ? std::optional(options) : std::nullopt;
}

/// The message service for the length of the program. Errors are collected, not shown in boxes.
class MessageService {
  public:
    explicit MessageService(GMSG::Language language) {
        GMSG::initStaticVars();
        GMSG::setErrorReportingOption(GMSG::ReportInList);
        GMSG::language = language;
        registerSectionTexts();
    }
    ~MessageService() { GMSG::destroyStaticVars(); }
    MessageService(const MessageService&) = delete;
    MessageService& operator=(const MessageService&) = delete;

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

int run(const Options& options) {
    const std::vector<Section> sections = readSections(options.table);
    const bool complete = GMSG::getLstErrorsInString().isNull();

    RWCString title;
    GMSG::getString(kTitle, title);
    print(title.str() + ", " + dateLine(options.date).str() + "\n");
    print(sectionTable(sections).view());
    const bool stored = storeAndReadBack(options.file, sections, options.date);

    const RWCString errors = GMSG::getLstErrorsInString();
    if (!errors.isNull()) print("\nReported:\n" + errors.str());
    if (!stored) return kFailed;
    return complete ? kDone : kLinesLeftOut;
}

}  // namespace

int main(int count, char** arguments) {
    prepareTerminal();
    const std::optional<Options> options = parse(count, arguments);
    if (!options) {
        std::fputs("usage: section_report [--french] [--date YYYYMMDD] TABLE.csv FILE.tbf\n",
                   stderr);
        return kWrongArguments;
    }
    const MessageService messages(options->language);
    return run(*options);
}
