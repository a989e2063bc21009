// Expansion gives what the literal algorithm gives, whatever keys, values and template hold; and a
// template in which the check finds nothing is expanded to the end.
#include <algorithm>
#include <array>
#include <cstdint>
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

/// Lines of the input: a key and a value each, but for the last, which is the template.
struct Input {
    std::vector<std::string> names;
    std::vector<std::string> values;
    std::string text;

    explicit Input(std::string_view bytes) {
        std::vector<std::string> lines(1);
        for (const char c : bytes) {
            if (c == '\n' && lines.size() < 17) {
                lines.emplace_back();
            } else {
                lines.back() += c;
            }
        }
        text = lines.back();
        for (std::size_t i = 0; i + 2 < lines.size(); i += 2) {
            names.push_back(lines[i]);
            values.push_back(lines[i + 1]);
        }
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Input input({reinterpret_cast<const char*>(data), size});
    UDManager::destroyStaticVars();
    UDManager::initStaticVars();
    FuzzManager manager;
    manager.values = input.values;
    StringFormat format;
    format.setWidth(4);
    for (UINT id = 0; id < input.names.size(); ++id) {
        UDKeyData key((RWCString(input.names[id])));
        key.setFormat(format);
        manager.addKey(id, key);
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
        const RWCString expanded = manager.getParseString(input.text, strip);
        require(expanded == literal::expand(input.text, isToken, valueOf));
        const bool plainValues = std::none_of(
            input.values.begin(), input.values.end(),
            [](const std::string& value) { return value.find('$') != std::string::npos; });
        if (plainValues && manager.checkTemplate(input.text).empty()) {
            require(expanded.view().find('$') == std::string_view::npos);
        }
    }
    for (const auto& problem : manager.checkTemplate(input.text)) {
        const bool token = problem.kind != toolbox::TemplateProblem::Kind::keyInText;
        require(problem.position <= input.text.size());
        require(!token || input.text[problem.position] == '$');
        require(input.text.compare(problem.position + (token ? 1 : 0), problem.word.length(),
                                   problem.word.str()) == 0);
    }
    return 0;
}
