// The parts of the strings that are not inline.
#include "toolbox/strings.h"

#include <ostream>

namespace toolbox {

std::ostream& operator<<(std::ostream& out, const ByteString& text) {
    return out.write(text.data(), static_cast<std::streamsize>(text.length()));
}

}  // namespace toolbox
