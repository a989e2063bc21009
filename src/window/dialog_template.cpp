// Dialogs in the language of the message service.
#include "window/dialog_template.h"

#include <cstring>

#include "toolbox/messages.h"
#include "toolbox/windowing.h"

namespace toolbox::window {
namespace {

struct Wanted {
    WORD primary;
    HRSRC found;
    LPCSTR name;
};

/// Any French will do for French: an application may have that of Canada.
BOOL CALLBACK takeLanguage(HMODULE module, LPCSTR type, LPCSTR, WORD language, LONG_PTR data) {
    auto* const wanted = reinterpret_cast<Wanted*>(data);
    if (PRIMARYLANGID(language) != wanted->primary) return TRUE;
    wanted->found = FindResourceExA(module, type, wanted->name, language);
    return !wanted->found;
}

FoundTemplate findIn(HINSTANCE module, const char* name) {
    const LPCSTR type = MAKEINTRESOURCEA(5);  // RT_DIALOG
    const bool french = GMSG::language == GMSG::French;
    const WORD language = french ? MAKELANGID(LANG_FRENCH, SUBLANG_FRENCH)
                                 : MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
    HRSRC found = FindResourceExA(module, type, name, language);
    if (!found) {
        Wanted wanted{PRIMARYLANGID(language), nullptr, name};
        EnumResourceLanguagesA(module, type, name, takeLanguage,
                               reinterpret_cast<LONG_PTR>(&wanted));
        found = wanted.found ? wanted.found : FindResourceA(module, name, type);
    }
    if (!found) return {};
    return {module, static_cast<const DLGTEMPLATE*>(LockResource(LoadResource(module, found))),
            SizeofResource(module, found)};
}

}  // namespace

FoundTemplate findTemplate(const char* name) {
    const auto own = static_cast<HINSTANCE>(GMSG::getInstance());
    for (const HINSTANCE module :
         {own, GetModuleHandleA(nullptr), WindowObject::getLibraryInstance()}) {
        const FoundTemplate found = module ? findIn(module, name) : FoundTemplate();
        if (found) return found;
    }
    return {};
}

TemplateCopy::TemplateCopy(const FoundTemplate& found)
    : words_((found.size + sizeof(DWORD) - 1) / sizeof(DWORD)) {
    if (found) std::memcpy(words_.data(), found.dialog, found.size);
}

DWORD TemplateCopy::read(std::size_t at) const {
    const std::size_t word = at / sizeof(DWORD);
    return word < words_.size() ? words_[word] : 0;
}

void TemplateCopy::write(std::size_t at, DWORD value) {
    const std::size_t word = at / sizeof(DWORD);
    if (word < words_.size()) words_[word] = value;
}

const DLGTEMPLATE* TemplateCopy::get() const {
    return reinterpret_cast<const DLGTEMPLATE*>(words_.data());
}

INT_PTR showDialog(const char* name, HWND parent, DLGPROC procedure, LPARAM data) {
    const FoundTemplate found = findTemplate(name);
    if (!found) return -1;
    return DialogBoxIndirectParamA(found.module, found.dialog, parent, procedure, data);
}

HWND createDialog(HINSTANCE module, const char* name, HWND parent, DLGPROC procedure, LPARAM data) {
    const FoundTemplate found = findIn(module, name);
    if (!found) return nullptr;
    return CreateDialogIndirectParamA(module, found.dialog, parent, procedure, data);
}

}  // namespace toolbox::window
