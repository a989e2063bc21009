// The version that the library was compiled with.
#include "toolbox/version.h"

namespace toolbox {

int version() {
    return TOOLBOX_VERSION;
}

const char* versionText() {
    return TOOLBOX_VERSION_TEXT;
}

}  // namespace toolbox
