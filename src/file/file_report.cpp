#include "file/file_report.h"

#include "toolbox/messages.h"

namespace toolbox {

void reportFileError(platform::ErrorCode code) {
    // The end of a file comes without a code, for which Windows has the text of a success.
    if (code == ERROR_SUCCESS) return;
    char text[1024] = "";
    if (GMSG::getLastErrorMsg(code, text) > 0) GMSG::errorMsg("%s", MB_OK | MB_ICONSTOP, text);
}

}  // namespace toolbox
