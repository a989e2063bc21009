// String resources of a module, in the language asked for where the module has it.
#include <algorithm>

#include "platform/host.h"

namespace toolbox::platform {
namespace {

constexpr UINT kCodePage = 1252;
constexpr unsigned int kStringsPerBlock = 16;  // the resource compiler groups strings by sixteen

WORD systemLanguage(Language language) {
    return language == Language::french ? MAKELANGID(LANG_FRENCH, SUBLANG_FRENCH)
                                        : MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);
}

/// LoadString always answers in the thread's language; this walks the string block itself.
int loadInLanguage(HINSTANCE module, unsigned int id, Language language, char* out, int size) {
    const HRSRC block =
        FindResourceExW(module, MAKEINTRESOURCEW(6),  // RT_STRING
                        MAKEINTRESOURCEW(id / kStringsPerBlock + 1), systemLanguage(language));
    if (!block) return 0;
    const auto* text = static_cast<const WCHAR*>(LockResource(LoadResource(module, block)));
    if (!text) return 0;
    const WCHAR* end = text + SizeofResource(module, block) / sizeof(WCHAR);
    for (unsigned int i = id % kStringsPerBlock; i > 0 && text < end; --i) text += 1 + *text;
    if (text >= end || *text == 0 || text + 1 + *text > end) return 0;
    // One UTF-16 unit gives one byte of a single-byte code page, so cutting before converting
    // works.
    const int kept = std::min<int>(*text, size - 1);
    const int written =
        WideCharToMultiByte(kCodePage, 0, text + 1, kept, out, size - 1, nullptr, nullptr);
    out[written] = '\0';
    return written;
}

class ModuleStrings final : public StringResources {
  public:
    int load(HINSTANCE module, unsigned int id, Language language, char* out, int size) override {
        if (size <= 0) return 0;
        out[0] = '\0';
        if (size == 1) return 0;
        if (language != Language::system) {
            if (const int length = loadInLanguage(module, id, language, out, size)) return length;
        }
        const int length = LoadStringA(module, id, out, size);
        if (length <= 0) out[0] = '\0';
        return std::max(length, 0);
    }
};

}  // namespace

HINSTANCE libraryModule() {
    // In a program that links the library statically it is the program.
    static const char here = 0;
    HMODULE module = nullptr;
    GetModuleHandleExA(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        &here, &module);
    return module;
}

StringResources& hostStrings() {
    static ModuleStrings strings;
    return strings;
}

}  // namespace toolbox::platform
