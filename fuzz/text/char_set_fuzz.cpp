// A set holds what a plain list of intervals holds, whatever its definition; and a definition put
// together from what the set holds, piece by piece, is valid and gives the same set.
#include <algorithm>
#include <cstdint>
#include <string>

#include "require.h"
#include "support/text_fakes.h"
#include "text/set_model.h"

namespace {

/// Sets, as a list of intervals of one character each, hold the same as the one they come from.
void checkPutTogether(const TvCharSet& set) {
    const CString members = set.getDetailedCharsSet();
    std::string definition;
    for (const char c : members.view()) definition.append({'[', '[', c, c, ']', ']'});
    const TvCharSet again((CString(definition)));
    require(again.isValid());
    require(again.getDetailedCharsSet() == members);
}

void check(const TvCharSet& set, const SetModel& model, const CString& text) {
    require(set.isValid() == model.valid);
    require(set.getDetailedCharsSet() == model.members());
    for (const char c : text.view().substr(0, 16)) require(set.charIsInSet(c) == model.has(c));
    const auto has = [&](char c) { return model.has(c); };
    require(set.allStringCharsAreInSet(text) == std::ranges::all_of(text.view(), has));
    require(set.atLeastOneStringCharIsInSet(text) == std::ranges::any_of(text.view(), has));
    require(set.getFriendlyCharsSet(false) == model.inWords("to", "and"));
    require(set.getFriendlyCharsSet(true) == model.inWords("to", "or"));
}

}  // namespace

/// The first byte is the length of the definition; a text to be looked at follows.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    toolbox::testing::FakedTexts texts;
    texts.strings.put(1095, "and");
    texts.strings.put(1096, "or");
    texts.strings.put(1097, "to");
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::string_view definition = bytes.substr(0, data[0]);
    const TvCharSet set((CString(definition)));
    check(set, SetModel(definition), CString(bytes.substr(definition.size())));
    checkPutTogether(set);
    return 0;
}
