#include "udkey/template_words.h"

namespace toolbox::udkey {

TemplateWords::TemplateWords(std::string_view text) : text_(text) {
    for (std::size_t at = text.find('$'); at != std::string_view::npos;
         at = text.find('$', at + 1)) {
        ends_.push_back(at);
    }
    ends_.push_back(text.size());
}

}  // namespace toolbox::udkey
