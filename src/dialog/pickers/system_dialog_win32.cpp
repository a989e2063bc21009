// The frame is looked at again at the end of a dialog: it may have been closed from within.
#include "dialog/pickers/system_dialog_win32.h"

#include "dialog/pickers/pick_handler.h"
#include "dialog/pickers/wide_names.h"
#include "toolbox/messages.h"
#include "toolbox/platform.h"
#include "toolbox/windowing.h"

namespace toolbox::pickers {
namespace {

std::wstring currentFolder() {
    std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
    folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
    return folder;
}

/// The system takes longer names only with a prefix that keeps it from looking at them.
std::wstring nameOfAnyLength(const CString& name) {
    const std::wstring wide = systemName(name.view());
    if (wide.size() < MAX_PATH) return wide;
    return wide.starts_with(L"\\\\") ? L"\\\\?\\UNC" + wide.substr(1) : L"\\\\?\\" + wide;
}

}  // namespace

std::wstring systemName(std::string_view bytes) {
    const std::u16string wide = wideOf(bytes);
    return {wide.begin(), wide.end()};
}

std::u16string portableName(const wchar_t* name, std::size_t length) {
    return {name, name + length};
}

void addName(SourceAnswer& answer, const std::u16string& name) {
    if (const auto exact = exact1252(name))
        answer.names.emplace_back(*exact);
    else if (answer.foreign.empty())
        answer.foreign = shown1252(name);
}

HWND ownerOf(HWND owner) {
    if (owner) return GetAncestor(owner, GA_ROOT);
    const MDI* const frame = MDIApplication::getPMDI();
    return frame && frame->getFrame() ? frame->getFrame() : GetActiveWindow();
}

DialogPhase::DialogPhase() : frame_(MDIApplication::getPMDI()), folder_(currentFolder()) {
    if (!frame_) return;
    wasFrozen_ = frame_->isAcceleratorFrozen() != 0;
    frame_->freezeAccelerator();
    frame_->setModelessDispatch(0);
}

DialogPhase::~DialogPhase() {
    if (!folder_.empty() && currentFolder() != folder_) SetCurrentDirectoryW(folder_.c_str());
    if (!frame_ || frame_ != MDIApplication::getPMDI()) return;
    frame_->setModelessDispatch(1);
    if (!wasFrozen_) frame_->thawAccelerator();
}

bool SystemSource::exists(const CString& name) {
    return GetFileAttributesW(nameOfAnyLength(name).c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool SystemSource::mayReplace(const CString& name) {
    return platform::current().prompt->messageBox(
               owner_, textWith(kReplaceFile, name), GMSG::getAppTitle(),
               MB_YESNO | MB_DEFBUTTON2 | MB_ICONEXCLAMATION | MB_TASKMODAL) == IDYES;
}

void SystemSource::tell(Fault fault, const CString& name) {
    const TextId text = fault == Fault::foreign ? kForeignName : kNoFile;
    platform::current().prompt->messageBox(owner_, textWith(text, name), GMSG::getAppTitle(),
                                           MB_OK | MB_ICONEXCLAMATION | MB_TASKMODAL);
}

PickAnswer pickBy(const PickQuestion& question, PickSource& system) {
    if (PickHandler::installed()) {
        HandlerSource handler;
        return pick(question, handler);
    }
    PickAnswer answer;
    {
        const DialogPhase phase;
        answer = pick(question, system);
    }
    if (answer.outcome == PickOutcome::notShown)
        GMSG::errorMsg(kNotShown, MB_ICONEXCLAMATION, answer.reason);
    return answer;
}

}  // namespace toolbox::pickers
