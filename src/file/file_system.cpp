// Failures of reads and writes, as the user sees them.
#include "file/file_system.h"

#include "toolbox/messages.h"

namespace toolbox {

bool isReadOnlyFile(const std::string& name) {
    std::uint32_t attributes = 0;
    return files().attributes(name.c_str(), attributes) == ERROR_SUCCESS &&
           (attributes & FILE_ATTRIBUTE_READONLY);
}

namespace {

/// The innermost; null when nothing is held back.
HeldFileErrors* holding = nullptr;

}  // namespace

HeldFileErrors::HeldFileErrors() : outer_(holding) {
    holding = this;
}

HeldFileErrors::~HeldFileErrors() {
    holding = outer_;
}

void reportFileError(platform::ErrorCode code) {
    if (holding) {
        if (holding->first_ == ERROR_SUCCESS) holding->first_ = code;
        return;
    }
    // The end of a file comes without a code, for which Windows has the text of a success.
    if (code == ERROR_SUCCESS) return;
    char text[1024] = "";
    if (GMSG::getLastErrorMsg(code, text) > 0) GMSG::errorMsg("%s", MB_OK | MB_ICONSTOP, text);
}

}  // namespace toolbox
