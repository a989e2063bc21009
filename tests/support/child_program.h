// Programs that a test runs and that may end in the middle.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "toolbox/platform.h"

/// Runs the program of that name, which lies beside this one, to its end; gives its exit code.
inline int runBeside(const std::string& name, const std::vector<std::string>& arguments) {
    std::filesystem::path program = toolbox::platform::current().system->programPath();
    program.replace_filename(name + program.extension().string());
    std::string command = '"' + program.string() + '"';
    for (const std::string& argument : arguments) command += " \"" + argument + '"';
#if defined(_WIN32)
    command = '"' + command + '"';  // the shell takes the outermost quotes away
    return std::system(command.c_str());
#else
    constexpr int kStatusBits = 8;
    return std::system(command.c_str()) >> kStatusBits;
#endif
}
