// The file that errors are logged to.
#include <algorithm>
#include <fstream>
#include <memory>

#include "toolbox/messages.h"
#include "toolbox/platform.h"

namespace {

/// Null while no log file is open.
std::unique_ptr<std::ofstream>& logFile() {
    // Never destroyed: a report may come from the destructor of another static object.
    static auto& file = *new std::unique_ptr<std::ofstream>;
    return file;
}

/// A file stream knows one separator only where '\' is a character like any other.
std::string hostName(std::string name) {
#if !defined(_WIN32)
    std::replace(name.begin(), name.end(), '\\', '/');
#endif
    return name;
}

}  // namespace

int GMSG::OpenLogFile(const RWCString& path) {
    CloseLogFile();
    setLogStream(nullptr);
    if (!theMSG) return 0;
    std::string name = path.c_str();
    if (name.empty() &&
        toolbox::platform::current().files->createTemporary("ERR", name) != ERROR_SUCCESS)
        return 0;
    auto file = std::make_unique<std::ofstream>(hostName(name));
    if (!file->is_open()) return 0;
    *file << std::unitbuf;  // an error is in the file even when the process does not end well
    logFile() = std::move(file);
    setLogStream(logFile().get());
    return 1;
}

void GMSG::CloseLogFile() {
    if (!logFile()) return;
    setLogStream(nullptr);
    logFile().reset();
}
