// Prints what shows that the package works: versions, a laid out number, a text of the library.
#include <iostream>

#include "toolbox/formats.h"
#include "toolbox/messages.h"
#include "toolbox/text.h"
#include "toolbox/version.h"

#if defined(_WIN32)
#include <array>
#include <string>
#include <vector>

namespace {

/// The version that the system's file manager shows, "none" when the file has no such resource.
std::string fileVersion(HMODULE module) {
    std::array<char, MAX_PATH> path{};
    GetModuleFileNameA(module, path.data(), MAX_PATH);
    std::vector<char> data(GetFileVersionInfoSizeA(path.data(), nullptr));
    void* text = nullptr;
    UINT size = 0;
    if (data.empty() ||
        !GetFileVersionInfoA(path.data(), 0, static_cast<DWORD>(data.size()), data.data()) ||
        !VerQueryValueA(data.data(), "\\StringFileInfo\\040904E4\\FileVersion", &text, &size))
        return "none";
    return static_cast<char*>(text);
}

}  // namespace
#endif

int main() {
    RealFormatedValue inertia;
    inertia.setFormat(10, 2, Right);
    inertia = 8356.11;
    GMSG::language = GMSG::French;
    std::cout << "headers " << TOOLBOX_VERSION << ", library " << toolbox::version() << " ("
              << toolbox::versionText() << ")\n"
              << '[' << inertia.getStringValue() << "] " << GetString(nullptr, 1200) << '\n';
#if defined(_WIN32)
    // The module that has the library inside, and what it carries.
    const HMODULE dll = GetModuleHandleA("toolbox.dll");
    const HMODULE module = dll ? dll : GetModuleHandleA(nullptr);
    std::cout << (dll ? "toolbox.dll" : "static") << ": file version " << fileVersion(module)
              << ", menu " << (LoadMenuA(module, "M_WTAGOBJECT") ? "found" : "missing") << '\n';
#endif
}
