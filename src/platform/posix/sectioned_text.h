// A text of entries under section headers, kept line by line so that a change leaves all other
// bytes as they are: what profile files and the registry's file have in common.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace toolbox::platform::posix {

/// What a line is, and the name it goes by.
struct LineMeaning {
    enum class Kind { blank, header, entry };
    Kind kind = Kind::blank;
    std::string name;  ///< in the form that names are compared in
};

/// How one notation reads its lines.
struct LineSyntax {
    /// The length of the first line of `text`, which is not empty, with its line break.
    std::size_t (*lineLength)(std::string_view text);
    /// `line` comes with its line break.
    LineMeaning (*meaning)(std::string_view line);
    /// A carriage return alone ends a line.
    bool endsAtReturn;
};

/// Finding and changing one entry costs the same whatever the number of entries. Of equal section
/// names the first counts, of equal entry names in a section too. What stands before the first
/// header is the section with the empty name.
class SectionedText {
  public:
    SectionedText(const LineSyntax& syntax, std::string_view text);

    /// The line of an entry with its line break; null when there is none. Valid until a change.
    [[nodiscard]] const std::string* find(const std::string& section,
                                          const std::string& entry) const;

    /// Replaces the line of an entry (`line` comes without a line break); a new entry goes after
    /// the last line of its section that is not blank, a new section with `header` to the end.
    /// False when the line stands there already.
    bool put(const std::string& section, std::string_view header, const std::string& entry,
             std::string_view line);

    /// False when there is no such entry.
    bool erase(const std::string& section, const std::string& entry);

    [[nodiscard]] std::string text() const;

  private:
    struct Section {
        std::string header;  ///< with its line break
        std::vector<std::string> lines;
        std::string blankEnd;  ///< the blank lines after them, in one piece
        std::unordered_map<std::string, std::size_t> entries;  ///< by name: place in lines
        bool hasTwins = false;                                 ///< equal entry names
    };

    [[nodiscard]] std::string_view lineBreakOf(std::string_view line) const;
    static void addLine(Section& section, std::string_view line, LineMeaning meaning);
    Section& openSection(const std::string& name, std::string_view header);
    void appendEntry(Section& section, const std::string& entry, std::string_view line);
    void endWithBreak(std::string& lines) const;

    LineSyntax syntax_;
    std::string lineBreak_ = "\r\n";
    std::vector<Section> sections_;
    std::unordered_map<std::string, std::size_t> byName_;  ///< place in sections_
};

}  // namespace toolbox::platform::posix
