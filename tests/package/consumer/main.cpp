// Prints what shows that the package works: versions, a laid out number, a text of the library.
#include <iostream>

#include "toolbox/formats.h"
#include "toolbox/messages.h"
#include "toolbox/text.h"
#include "toolbox/version.h"

#if defined(_WIN32)
#include <windows.h>
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
    std::cout << (dll ? "toolbox.dll" : "static") << ": menu "
              << (LoadMenuA(module, "M_WTAGOBJECT") ? "found" : "missing") << '\n';
#endif
}
