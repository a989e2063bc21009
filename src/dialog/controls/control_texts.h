// What the controls decide about texts: hints and tips, entries of lists, completion, recent
// entries, paths that are too long.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace toolbox::controls {

/// The two parts of a tip's text.
struct TipParts {
    std::string hint;
    std::string tip;
};

/// "hint\ntip"; a text without a line break is both.
[[nodiscard]] TipParts tipParts(std::string_view text);

/// The parts of a resource text between '|', without empty ones.
[[nodiscard]] std::vector<std::string> entriesOf(std::string_view text);

/// An edit field's text and selection, which ends at `to`.
struct FieldText {
    std::string text;
    std::size_t from = 0;
    std::size_t to = 0;
};

/// Whether an edit from one state to the other inserted something at the end, in place of the
/// selection or of nothing, and the caret stands after it.
[[nodiscard]] bool isInsertionAtEnd(const FieldText& before, const FieldText& after);

/// Recent entries with another one in front, which is there once; at most so many.
[[nodiscard]] std::vector<std::string> withNewest(std::vector<std::string> entries,
                                                  const std::string& newest, std::size_t most);

/// Whether a setting gives a text back as it was.
[[nodiscard]] bool canBeKept(std::string_view text);

/// How wide a text is drawn.
using Measure = std::function<int(std::string_view text)>;

/// A path that is no wider than `width`. Of what is too long the folders in the middle become
/// "...", as few of them as need be, the ones next to the drive or share first; then the drive or
/// share goes; then the middle of the name. Empty where there is not even room for the dots.
[[nodiscard]] std::string shortenedPath(std::string_view path, int width, const Measure& measure);

/// '&' as an ordinary character in the text of a static or a menu.
[[nodiscard]] std::string withoutMnemonics(std::string_view text);

}  // namespace toolbox::controls
