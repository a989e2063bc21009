// What is around the system's dialogs.
#include "dialog/pickers/system_dialog_win32.h"

#include "dialog/dialog_phase_win32.h"
#include "dialog/pickers/pick_handler.h"
#include "dialog/pickers/wide_names.h"
#include "toolbox/messages.h"
#include "toolbox/platform.h"

namespace toolbox::pickers {
namespace {

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

bool SystemSource::exists(const CString& name) {
    return GetFileAttributesW(nameOfAnyLength(name).c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool SystemSource::mayReplace(const CString& name) {
    return platform::current().prompt->messageBox(
               owner_, printed(kReplaceFile, name), GMSG::getAppTitle(),
               MB_YESNO | MB_DEFBUTTON2 | MB_ICONEXCLAMATION | MB_TASKMODAL) == IDYES;
}

void SystemSource::tell(Fault fault, const CString& name) {
    const TextId text = fault == Fault::foreign ? kForeignName : kNoFile;
    platform::current().prompt->messageBox(owner_, printed(text, name), GMSG::getAppTitle(),
                                           MB_OK | MB_ICONEXCLAMATION | MB_TASKMODAL);
}

PickAnswer pickBy(const PickQuestion& question, SystemSource& system) {
    if (PickHandler::installed()) {
        HandlerSource handler;
        return pick(question, handler);
    }
    PickAnswer answer;
    {
        const dialog::DialogPhase phase(system.owner());
        answer = pick(question, system);
    }
    if (answer.outcome == PickOutcome::notShown)
        GMSG::errorMsg(kNotShown, MB_ICONEXCLAMATION, answer.reason);
    return answer;
}

}  // namespace toolbox::pickers
