#include "file/file_report.h"

namespace toolbox {

void reportFileError(platform::ErrorCode code) {
    const std::string text = platform::current().system->errorText(code);
    if (code == ERROR_SUCCESS || text.empty()) return;
    platform::current().prompt->messageBox(nullptr, text.c_str(), "", MB_ICONSTOP | MB_TASKMODAL);
}

}  // namespace toolbox
