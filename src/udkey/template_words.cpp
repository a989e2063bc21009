#include "udkey/template_words.h"

#include "udkey/dollars.h"

namespace toolbox::udkey {

TemplateWords::TemplateWords(std::string_view text) : text_(text) {
    constexpr std::size_t kUsualWord = 8;
    ends_.reserve(text.size() / kUsualWord + 1);
    forEachDollar(text, [this](std::size_t at) { ends_.push_back(at); });
    ends_.push_back(text.size());
}

}  // namespace toolbox::udkey
