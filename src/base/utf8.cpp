#include "toolbox/utf8.h"

#include "base/windows1252.h"

namespace toolbox {

std::string toUtf8(std::string_view windows1252) {
    return base::utf8From1252(windows1252);
}

std::string fromUtf8(std::string_view utf8) {
    return base::utf8To1252(utf8);
}

}  // namespace toolbox
