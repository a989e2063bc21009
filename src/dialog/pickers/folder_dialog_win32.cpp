// Folders by the system's tree, which every version of the system has. What it needs of COM is
// there for as long as it is shown.
#include "dialog/pickers/folders.h"
#include "dialog/pickers/system_dialog_win32.h"
#include "dialog/pickers/wide_names.h"
// Need the declarations of the system first.
#include <objbase.h>
#include <shlobj.h>
#include <shlwapi.h>

using toolbox::PickAnswer;
using toolbox::PickOutcome;
using toolbox::PickQuestion;
namespace pickers = toolbox::pickers;

namespace {

/// COM for this thread. Not available where the thread has it in another way already.
class [[nodiscard]] ComPhase {
  public:
    ComPhase() : result_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
    ~ComPhase() {
        if (SUCCEEDED(result_)) CoUninitialize();
    }
    ComPhase(const ComPhase&) = delete;
    ComPhase& operator=(const ComPhase&) = delete;
    [[nodiscard]] bool isThere() const { return SUCCEEDED(result_); }

  private:
    HRESULT result_;
};

/// The whole name of a folder of any length; empty for what lies in no file system.
std::wstring pathOf(PCIDLIST_ABSOLUTE folder) {
    IShellFolder* desktop = nullptr;
    if (FAILED(SHGetDesktopFolder(&desktop))) return {};
    STRRET name{};
    wchar_t* text = nullptr;
    std::wstring path;
    const auto child = reinterpret_cast<PCUITEMID_CHILD>(folder);
    if (SUCCEEDED(desktop->GetDisplayNameOf(child, SHGDN_FORPARSING, &name)) &&
        SUCCEEDED(StrRetToStrW(&name, child, &text))) {
        path = text;
        CoTaskMemFree(text);
    }
    desktop->Release();
    return path;
}

/// Puts the dialog on its folder when it stands, and keeps it open for a name that is no folder's.
int CALLBACK folderEvent(HWND dialog, UINT message, LPARAM, LPARAM start) {
    if (message == BFFM_INITIALIZED && start) SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, start);
    return message == BFFM_VALIDATEFAILEDW ? 1 : 0;
}

class SystemFolders final : public pickers::SystemSource {
  public:
    using SystemSource::SystemSource;
    pickers::SourceAnswer ask(const PickQuestion& question) override;
};

pickers::SourceAnswer SystemFolders::ask(const PickQuestion& question) {
    const ComPhase com;
    const std::wstring title = pickers::systemName(question.title.view());
    const std::wstring start = pickers::systemName(question.folder.view());
    wchar_t shownName[MAX_PATH];
    BROWSEINFOW browse{};
    browse.hwndOwner = owner();
    browse.pszDisplayName = shownName;
    browse.lpszTitle = title.c_str();
    browse.ulFlags = BIF_RETURNONLYFSDIRS;
    if (com.isThere()) browse.ulFlags |= BIF_NEWDIALOGSTYLE | BIF_EDITBOX | BIF_VALIDATE;
    if (!question.newFolder) browse.ulFlags |= BIF_NONEWFOLDERBUTTON;
    browse.lpfn = folderEvent;
    browse.lParam = start.empty() ? 0 : reinterpret_cast<LPARAM>(start.c_str());

    pickers::SourceAnswer answer;
    PIDLIST_ABSOLUTE const folder = SHBrowseForFolderW(&browse);
    if (!folder) return answer;
    const std::wstring path = pathOf(folder);
    CoTaskMemFree(folder);
    if (path.empty()) return answer;
    answer.outcome = PickOutcome::chosen;
    pickers::addName(answer, pickers::portableName(path.data(), path.size()));
    return answer;
}

}  // namespace

struct TvFolderDialog::State {
    PickQuestion question;
    CString folder;
    PickAnswer answer;
    bool isOpen = false;

    int run(HWND owner);
};

int TvFolderDialog::State::run(HWND owner) {
    if (isOpen) {
        answer = {PickOutcome::notShown, {}, pickers::printed(pickers::kIsOpen), 0};
        return 0;
    }
    isOpen = true;
    question.kind = PickQuestion::Kind::folder;
    question.folder = CString(pickers::startFolder(question.purpose, folder.str(), std::string()));
    SystemFolders system(pickers::ownerOf(owner));
    answer = pickers::pickBy(question, system);
    isOpen = false;
    if (answer.outcome != PickOutcome::chosen) return 0;
    folder = answer.names.front();
    return 1;
}

TvFolderDialog::TvFolderDialog(const CString& purpose) : state_(std::make_shared<State>()) {
    state_->question.purpose = purpose;
}

TvFolderDialog::~TvFolderDialog() = default;

void TvFolderDialog::setTitle(const CString& title) {
    state_->question.title = title;
}

void TvFolderDialog::setFolder(const CString& folder) {
    state_->folder = folder;
}

void TvFolderDialog::setNewFolder(int allowed) {
    state_->question.newFolder = allowed != 0;
}

int TvFolderDialog::run(HWND owner) {
    const std::shared_ptr<State> state = state_;  // the object may be deleted meanwhile
    return state->run(owner);
}

PickOutcome TvFolderDialog::getOutcome() const {
    return state_->answer.outcome;
}

CString TvFolderDialog::getReason() const {
    return state_->answer.reason;
}

CString TvFolderDialog::getFolder() const {
    return state_->folder;
}
