// A document that survives: opened, edited, kept while it is edited, recovered.
//
//     documents_sample <file> [<recovery folder>]
//
// Each line of the standard input becomes a line of the document; "save" saves it, "quit" ends the
// program. When the input ends without "quit" the program ends as if it had been killed, and so it
// does when it is killed: the next start has the lines again.
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "toolbox/document_files.h"
#include "toolbox/messages.h"

namespace {

constexpr unsigned long kFirstLine = 1;

/// The content: one block for each line.
class Notes : public TvDocumentContent {
  public:
    std::vector<std::string> lines;

    int write(TarvFileWrite& file) override {
        unsigned long id = kFirstLine;
        for (const std::string& line : lines) {
            TarvBlocFile block;
            block.setID(id++);
            block.writeString(line.data(), static_cast<int>(line.size()));
            if (!file.writeBloc(block)) return 0;
        }
        return 1;
    }

    int read(TarvFileRead& file) override {
        std::vector<std::string> found;
        TarvBlocFile block;
        for (unsigned long id = kFirstLine; file.getIndex()->getOffset(id) != 0; ++id) {
            if (!file.getBloc(id, block)) return NotRead;
            found.emplace_back(block.getPData(), block.getLen());
        }
        lines = std::move(found);
        return Done;
    }
};

/// Takes unsaved work up without asking, and leaves every other decision as it is.
class Recovering : public TvDocumentDecisions {
  public:
    Recovery recoverWork(const TvRecoverable& work) override {
        std::cout << "recovering unsaved work, " << work.size << " bytes\n";
        return Recover;
    }
};

/// What the user has to know, if anything.
bool tell(const TvDocumentResult& result) {
    if (!result.text().isNull()) std::cout << result.text() << '\n';
    return result.ok;
}

int edit(TvDocumentFile& document, Notes& notes) {
    for (std::string line; std::getline(std::cin, line);) {
        if (line == "quit") return tell(document.close()) ? EXIT_SUCCESS : EXIT_FAILURE;
        if (line == "save") {
            if (tell(document.save())) std::cout << "saved\n" << std::flush;
            continue;
        }
        notes.lines.push_back(line);
        document.edited();
        if (!document.idle()) tell(document.lastAutosave());
        std::cout << notes.lines.size() << ": " << line << '\n' << std::flush;
    }
    std::cout << std::flush;
    std::_Exit(EXIT_FAILURE);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return EXIT_FAILURE;
    GMSG::language = GMSG::English;
    if (argc > 2) TvDocumentFile::setRecoveryFolder(argv[2]);
    Notes notes;
    Recovering decisions;
    TvDocumentFile document(notes, &decisions);
    document.setAutosave(1, 0);  // the state is kept after every line

    TvDocumentResult opened = document.open(argv[1]);
    if (opened.reason == TvDocumentResult::notThere) opened = document.saveAs(argv[1]);
    if (!tell(opened)) return EXIT_FAILURE;
    for (const std::string& line : notes.lines) std::cout << "   " << line << '\n';
    return edit(document, notes);
}
