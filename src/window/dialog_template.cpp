// Dialogs in the language of the message service.
#include "window/dialog_template.h"

#include "toolbox/messages.h"

namespace toolbox::window {
namespace {

const DLGTEMPLATE* findTemplate(HINSTANCE module, const char* name) {
    const WORD language = GMSG::language == GMSG::French
                              ? MAKELANGID(LANG_FRENCH, SUBLANG_FRENCH)
                              : MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
    HRSRC found = FindResourceExA(module, MAKEINTRESOURCEA(5), name, language);  // RT_DIALOG
    if (!found) found = FindResourceA(module, name, MAKEINTRESOURCEA(5));
    if (!found) return nullptr;
    return static_cast<const DLGTEMPLATE*>(LockResource(LoadResource(module, found)));
}

}  // namespace

INT_PTR showDialog(const char* name, HWND parent, DLGPROC procedure, LPARAM data) {
    const auto own = static_cast<HINSTANCE>(GMSG::getInstance());
    for (const HINSTANCE module : {own, GetModuleHandleA(nullptr)}) {
        const DLGTEMPLATE* const found = module ? findTemplate(module, name) : nullptr;
        if (found) return DialogBoxIndirectParamA(module, found, parent, procedure, data);
    }
    return -1;
}

HWND createDialog(HINSTANCE module, const char* name, HWND parent, DLGPROC procedure, LPARAM data) {
    const DLGTEMPLATE* const found = findTemplate(module, name);
    return found ? CreateDialogIndirectParamA(module, found, parent, procedure, data) : nullptr;
}

}  // namespace toolbox::window
