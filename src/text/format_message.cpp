#include <charconv>
#include <string>

#include "toolbox/text.h"

void TvFormatMessage(CString& result, const CString& templ,
                     const CArray<TvOutVal, TvOutVal&>& args) {
    std::string text = templ.str();
    char placeholder[12] = "%";
    for (int n = 1;; ++n) {
        const char* end = std::to_chars(placeholder + 1, placeholder + sizeof placeholder, n).ptr;
        const std::string_view wanted(placeholder, static_cast<std::size_t>(end - placeholder));
        const std::size_t at = text.find(wanted);
        if (at == std::string::npos) break;
        if (n <= args.GetSize()) text.replace(at, wanted.size(), args.GetAt(n - 1).getStr().str());
    }
    result = CString(std::move(text));
}
