// In an item's text '&' underlines the character after it, "&&" is one '&', and what follows a tab
// is the item's key.
#include "undo/menu_label.h"

#include <algorithm>

namespace toolbox::undo {
namespace {

bool underlines(std::string_view label) {
    for (std::size_t i = 0; i + 1 < label.size(); ++i) {
        if (label[i] != '&') continue;
        if (label[i + 1] != '&') return true;
        ++i;
    }
    return false;
}

}  // namespace

CString menuLabel(const CString& text, std::string_view former) {
    const std::size_t tab = std::min(former.find('\t'), former.size());
    CString label = underlines(former.substr(0, tab)) ? "&" : "";
    for (const char c : text.view()) {
        if (c == '&') label += '&';
        label += static_cast<unsigned char>(c) < ' ' ? ' ' : c;
    }
    label += former.substr(tab);
    return label;
}

}  // namespace toolbox::undo
