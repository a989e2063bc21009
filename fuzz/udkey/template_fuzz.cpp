// Expansion gives what the literal algorithm gives, whatever keys, values and template hold; and a
// template in which the check finds nothing is expanded to the end.
#include <algorithm>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "literal_expansion.h"
#include "require.h"
#include "toolbox/keys.h"

namespace {

class FuzzManager : public TokenizerUDManager {
  public:
    RWCString getProfilePath() override { return "none.ini"; }
    int getKeyValue(UINT id, FormatedValue* value) override {
        static_cast<StringFormatedValue&>(*value) = RWCString(values[id]);
        return id % 5 != 4;
    }
    std::vector<std::string> values;
};

}  // namespace

/// The lines of the input are the template, then a key and a value each.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream input({reinterpret_cast<const char*>(data), size});
    UDManager::destroyStaticVars();
    UDManager::initStaticVars();
    FuzzManager manager;
    StringFormat format;
    format.setWidth(4);
    std::string text, name, value;
    std::getline(input, text);
    for (UINT id = 0; id < 8 && std::getline(input, name) && std::getline(input, value); ++id) {
        UDKeyData key((RWCString(name)));
        key.setFormat(format);
        manager.addKey(id, key);
        manager.values.push_back(value);
    }
    manager.initUDApp();
    manager.removeMatchingId(3);

    for (const int strip : {0, 1}) {
        const auto isToken = [&](const std::string& word) {
            return manager.isValidToken(word) == 1;
        };
        const auto valueOf = [&](const std::string& word) {
            return manager.getFormatedString(manager.getId(word), strip).str();
        };
        const RWCString expanded = manager.getParseString(text, strip);
        require(expanded == literal::expand(text, isToken, valueOf));
        const bool plainValues = std::none_of(
            manager.values.begin(), manager.values.end(),
            [](const std::string& each) { return each.find('$') != std::string::npos; });
        if (plainValues && manager.checkTemplate(text).empty()) {
            require(expanded.view().find('$') == std::string_view::npos);
        }
    }
    for (const auto& problem : manager.checkTemplate(text)) {
        const bool token = problem.kind != toolbox::TemplateProblem::Kind::keyInText;
        require(problem.position <= text.size());
        require(!token || text[problem.position] == '$');
        require(text.compare(problem.position + (token ? 1 : 0), problem.word.length(),
                             problem.word.str()) == 0);
    }
    return 0;
}
