// Files by the system's dialog for names of 16-bit characters.
#include <utility>

#include "dialog/pickers/file_filters.h"
#include "dialog/pickers/folders.h"
#include "dialog/pickers/system_dialog_win32.h"
#include "dialog/pickers/wide_names.h"
#include "toolbox/diagnostics.h"
// Need the declarations of the system first.
#include <cderr.h>
#include <commdlg.h>

using toolbox::PickAnswer;
using toolbox::PickOutcome;
using toolbox::PickQuestion;
namespace pickers = toolbox::pickers;

namespace {

using Kind = PickQuestion::Kind;

constexpr std::size_t kOneName = 0x8000;            // the system's longest
constexpr std::size_t kSeveralNames = 0x100000;     // some thousands
constexpr std::size_t kMostCharacters = 0x4000000;  // where growing ends

/// One call of the system's dialog, with what it points to.
class FileDialogCall {
  public:
    FileDialogCall(HWND owner, const PickQuestion& question) : question_(question) {
        ask_.lStructSize = sizeof ask_;
        ask_.hwndOwner = owner;
        ask_.lpstrFilter = filter_.empty() ? nullptr : filter_.c_str();
        ask_.nFilterIndex = filter_.empty() ? 0 : static_cast<DWORD>(question.filterIndex) + 1;
        ask_.lpstrInitialDir = folder_.empty() ? nullptr : folder_.c_str();
        ask_.lpstrTitle = title_.empty() ? nullptr : title_.c_str();
        // Neither an extension nor OFN_FILEMUSTEXIST for one name: the system adds extensions to
        // names that have one of another type, and may look for the file before it has added one.
        ask_.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST;
        if (question.kind == Kind::save) ask_.Flags |= OFN_NOREADONLYRETURN;
        if (question.kind == Kind::openSeveral)
            ask_.Flags |= OFN_ALLOWMULTISELECT | OFN_FILEMUSTEXIST;
    }

    pickers::SourceAnswer run() {
        std::size_t room = question_.kind == Kind::openSeveral ? kSeveralNames : kOneName;
        std::wstring name = startName();
        for (;;) {
            buffer_.assign(room, L'\0');
            name.copy(buffer_.data(), room - 1);
            ask_.lpstrFile = buffer_.data();
            ask_.nMaxFile = static_cast<DWORD>(room);
            const bool saves = question_.kind == Kind::save;
            if (saves ? GetSaveFileNameW(&ask_) : GetOpenFileNameW(&ask_)) return chosen();
            const DWORD error = CommDlgExtendedError();
            if (error == FNERR_BUFFERTOOSMALL && room < kMostCharacters)
                room *= 8;
            else if (error == FNERR_INVALIDFILENAME && !name.empty())
                name.clear();  // what the application proposed is no name
            else
                return failed(error);
        }
    }

  private:
    [[nodiscard]] std::wstring startName() const {
        const std::wstring file = pickers::systemName(question_.file.view());
        if (file.empty() || folder_.empty()) return file;
        return folder_ + (folder_.ends_with(L'\\') ? L"" : L"\\") + file;
    }

    [[nodiscard]] pickers::SourceAnswer chosen() const {
        pickers::SourceAnswer answer;
        answer.outcome = PickOutcome::chosen;
        answer.filterIndex =
            ask_.nFilterIndex > 0 ? static_cast<int>(ask_.nFilterIndex) - 1 : question_.filterIndex;
        const std::u16string all = pickers::portableName(buffer_.data(), buffer_.size());
        if (question_.kind == Kind::openSeveral)
            for (const std::u16string& name : pickers::severalNames(all))
                pickers::addName(answer, name);
        else
            pickers::addName(answer, all.substr(0, all.find(u'\0')));
        return answer;
    }

    [[nodiscard]] static pickers::SourceAnswer failed(DWORD error) {
        pickers::SourceAnswer answer;
        if (error == 0) return answer;
        answer.outcome = PickOutcome::notShown;
        const bool isMemory = error == CDERR_MEMALLOCFAILURE || error == CDERR_MEMLOCKFAILURE ||
                              error == CDERR_INITIALIZATION;
        answer.reason = isMemory ? pickers::printed(pickers::kNoMemory)
                                 : pickers::printed(pickers::kErrorNumber, error);
        return answer;
    }

    const PickQuestion& question_;
    OPENFILENAMEW ask_{};
    std::wstring filter_ = pickers::systemName(pickers::systemFilter(question_.filters));
    std::wstring folder_ = pickers::systemName(question_.folder.view());
    std::wstring title_ = pickers::systemName(question_.title.view());
    std::wstring buffer_;
};

class SystemFiles final : public pickers::SystemSource {
  public:
    using SystemSource::SystemSource;
    pickers::SourceAnswer ask(const PickQuestion& question) override {
        return FileDialogCall(owner(), question).run();
    }
};

}  // namespace

struct TvFileDialog::State {
    PickQuestion question;  // its folder: that of setFolder()
    CString file;
    PickAnswer answer;
    bool isOpen = false;

    int run(Kind kind, HWND owner);
};

int TvFileDialog::State::run(Kind kind, HWND owner) {
    if (isOpen) {
        answer = {PickOutcome::notShown, {}, pickers::printed(pickers::kIsOpen), 0};
        return 0;
    }
    isOpen = true;
    PickQuestion asked = question;
    asked.kind = kind;
    asked.folder = CString(pickers::startFolder(question.purpose, pickers::parentOf(file.view()),
                                                question.folder.str()));
    asked.file = CString(pickers::fileNameOf(file.view()));
    SystemFiles system(pickers::ownerOf(owner));
    answer = pickers::pickBy(asked, system);
    isOpen = false;
    if (answer.outcome != PickOutcome::chosen) return 0;
    question.filterIndex = answer.filterIndex;
    file = answer.names.front();
    return 1;
}

TvFileDialog::TvFileDialog(const CString& purpose) : state_(std::make_shared<State>()) {
    state_->question.purpose = purpose;
}

TvFileDialog::~TvFileDialog() = default;

void TvFileDialog::setTitle(const CString& title) {
    state_->question.title = title;
}

int TvFileDialog::setFilter(const CString& filter) {
    auto filters = pickers::parseFilters(filter.view());
    if (!filters) {
        CTvTrace::Trace(0xFFFFFFFF, "No list of file types: %s", filter.c_str());
        return 0;
    }
    state_->question.filters = std::move(*filters);
    setFilterIndex(state_->question.filterIndex);
    return 1;
}

int TvFileDialog::setFilterText(unsigned short id) {
    RWCString text;
    GMSG::getString(id, text);
    return setFilter(CString(text));
}

void TvFileDialog::setFilterIndex(int index) {
    const bool isThere =
        index >= 0 && static_cast<std::size_t>(index) < state_->question.filters.size();
    state_->question.filterIndex = isThere ? index : 0;
}

int TvFileDialog::getFilterIndex() const {
    return state_->question.filterIndex;
}

void TvFileDialog::setDefaultExtension(const CString& extension) {
    std::string_view plain = extension.view();
    if (plain.starts_with('.')) plain.remove_prefix(1);
    state_->question.extension = CString(plain);
}

void TvFileDialog::setFile(const CString& name) {
    state_->file = name;
}

void TvFileDialog::setFolder(const CString& folder) {
    state_->question.folder = folder;
}

// The object may be deleted while its dialog is open: the call keeps what it needs.

int TvFileDialog::open(HWND owner) {
    const std::shared_ptr<State> state = state_;
    return state->run(Kind::open, owner);
}

int TvFileDialog::openSeveral(HWND owner) {
    const std::shared_ptr<State> state = state_;
    return state->run(Kind::openSeveral, owner);
}

int TvFileDialog::save(HWND owner) {
    const std::shared_ptr<State> state = state_;
    return state->run(Kind::save, owner);
}

PickOutcome TvFileDialog::getOutcome() const {
    return state_->answer.outcome;
}

CString TvFileDialog::getReason() const {
    return state_->answer.reason;
}

CString TvFileDialog::getFile() const {
    return state_->file;
}

std::vector<CString> TvFileDialog::getFiles() const {
    return state_->answer.names;
}
