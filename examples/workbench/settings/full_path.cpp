// Names are completed and compared by the system, whatever their length.
#include "settings/full_path.h"

#include <windows.h>

#include <string>

namespace {

std::wstring wide(const CString& text) {
    const int length = static_cast<int>(text.length());
    std::wstring out(text.length(), L'\0');
    out.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_ACP, 0, text.c_str(), length, out.data(), length)));
    return out;
}

CString narrow(const std::wstring& text) {
    constexpr std::size_t kMost = 4;  // bytes of a character in any code page
    const int length = static_cast<int>(text.size());
    std::string out(kMost * text.size(), '\0');
    out.resize(static_cast<std::size_t>(
        WideCharToMultiByte(CP_ACP, 0, text.c_str(), length, out.data(),
                            static_cast<int>(out.size()), nullptr, nullptr)));
    return CString(out);
}

std::string inUpperCase(const CString& name) {
    std::string upper = name.str();
    CharUpperBuffA(upper.data(), static_cast<DWORD>(upper.size()));
    return upper;
}

}  // namespace

CString fullPath(const CString& name) {
    // The system's function for names of bytes stops at MAX_PATH.
    const std::wstring given = wide(name);
    const DWORD size = GetFullPathNameW(given.c_str(), 0, nullptr, nullptr);
    std::wstring full(size, L'\0');
    // Where there is no room the answer is the size again.
    const DWORD length = size > 0 ? GetFullPathNameW(given.c_str(), size, full.data(), nullptr) : 0;
    if (length == 0 || length >= size) return name;
    full.resize(length);
    return narrow(full);
}

bool isSamePath(const CString& one, const CString& other) {
    return inUpperCase(one) == inUpperCase(other);
}
