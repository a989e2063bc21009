// Asks, completes, checks, and asks again where the answer was not taken.
#include "dialog/pickers/pick_flow.h"

#include <utility>

#include "dialog/pickers/file_filters.h"
#include "dialog/pickers/folders.h"
#include "toolbox/platform.h"

namespace toolbox::pickers {
namespace {

using Kind = PickQuestion::Kind;

/// A name that is no file's, with the extension that makes it one's.
CString existingName(const CString& name, const CString& extension, PickSource& source) {
    if (extension.empty() || source.exists(name)) return name;
    const CString completed = name + "." + extension;
    return source.exists(completed) ? completed : name;
}

void startAt(PickQuestion& question, const std::string& name) {
    const std::string folder = parentOf(name);
    if (!folder.empty()) question.folder = folder;
    if (question.kind == Kind::folder)
        question.folder = name;
    else
        question.file = CString(fileNameOf(name));
}

/// The files to open; false when one of them is not there.
bool acceptFiles(PickQuestion& question, SourceAnswer& answer, PickSource& source) {
    for (CString& name : answer.names) {
        name = existingName(name, question.extension, source);
        if (source.exists(name)) continue;
        source.tell(PickSource::Fault::missing, name);
        startAt(question, name.str());
        return false;
    }
    return true;
}

/// Brings the names to what they stand for; false for one that is not taken.
bool accept(PickQuestion& question, SourceAnswer& answer, PickSource& source) {
    if (!answer.foreign.empty()) {
        source.tell(PickSource::Fault::foreign, answer.foreign);
        return false;
    }
    if (question.kind == Kind::folder) return true;
    if (question.kind != Kind::save) return acceptFiles(question, answer, source);
    CString& name = answer.names.front();
    name =
        withExtension(name.str(), question.filters, answer.filterIndex, question.extension.view());
    if (!source.exists(name) || source.mayReplace(name)) return true;
    startAt(question, name.str());
    return false;
}

}  // namespace

bool PickSource::exists(const CString& name) {
    std::uint32_t attributes = 0;
    return platform::current().files->attributes(name, attributes) == ERROR_SUCCESS;
}

std::string startFolder(const CString& purpose, const std::string& first,
                        const std::string& otherwise) {
    for (const std::string& candidate : {first, rememberedFolder(purpose), otherwise}) {
        std::string folder = nearestFolder(candidate);
        if (!folder.empty()) return folder;
    }
    return {};
}

PickAnswer pick(PickQuestion question, PickSource& source) {
    for (;;) {
        SourceAnswer answer = source.ask(question);
        if (answer.outcome == PickOutcome::notShown) return {std::move(answer)};
        const bool chosen = answer.outcome == PickOutcome::chosen;
        if (!chosen || (answer.names.empty() && answer.foreign.empty())) return {};
        question.filterIndex = answer.filterIndex;
        if (accept(question, answer, source)) {
            const std::string first = answer.names.front().str();
            rememberFolder(question.purpose,
                           question.kind == Kind::folder ? first : parentOf(first));
            return {std::move(answer)};
        }
        if (!source.asksAgain()) return {};
    }
}

}  // namespace toolbox::pickers
