// Reads a table of steel sections, prints it with what each section does as a beam, stores one
// block per section in a block file, reads the file back and shows what it holds. The columns are
// user-defined keys: a description or a format that the user changes is found again by later runs.
//
// Exit status: 0 all done; 1 the table has no section or cannot be read (nothing is written then),
// the file could not be written or read back, or the report not printed; 2 done but something was
// left out: lines of the table, a change of a key, a token of the label; 3 wrong arguments.
#include <algorithm>
#include <cmath>
#include <optional>

#include "date_words.h"
#include "options.h"
#include "section_csv.h"
#include "section_table.h"
#include "section_texts.h"
#include "services.h"
#include "stored_report.h"
#include "terminal.h"

namespace {

enum ExitStatus { kDone = 0, kFailed = 1, kLeftOut = 2, kWrongArguments = 3 };

void printLine(const CString& line) {
    print((line + "\n").view());
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
    printLine(text(kDeviation, 100 * mass, 100 * modulus));
}

void printBeams(SectionKeys& keys, const std::vector<Section>& sections, const Options& options) {
    printLine("\n" + text(kBeam, options.beam.span, options.beam.load));
    keys.setSelection(SectionKeys::beamColumns());
    print(sectionTable(keys, sections).view());
    printDeviation(keys, sections);

    printLine("\n" + text(kKeysUsed));
    print(legend(keys).view());
    printLine(text(kRestored, keys.restored()));

    printLine("\n" + text(kLabels));
    const CString label = options.label ? CString(options.label) : text(kUsualLabel);
    print(labels(keys, label, sections).view());
}

int run(const Options& options) {
    const std::vector<Section> sections = readSections(options.table);
    if (sections.empty()) {
        printError(GMSG::getLstErrorsInString().view());
        return kFailed;
    }
    printLine(text(kTitle) + ", " + dateInWords(options.date));
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
    if (!errors.isNull()) print(("\n" + text(kReported) + "\n" + errors).view());
    if (!isAllPrinted()) {
        printError((text(kNotPrinted) + "\n").view());
        return kFailed;
    }
    if (!stored) return kFailed;
    return complete ? kDone : kLeftOut;
}

}  // namespace

int main(int count, char** arguments) {
    prepareTerminal();
    const Services services(languageOf(count, arguments), registerSectionTexts);
    const std::optional<Options> options = parseOptions(count, arguments);
    if (options) return run(*options);
    printError((text(kUsage) + "\n" + text(kUsageOfKeys) + "\n").view());
    return kWrongArguments;
}
