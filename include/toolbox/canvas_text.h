// Texts of drawings: what a text is made of, how it is measured, where it breaks and stands.
//
// Texts are measured by the published widths of the standard fonts of PDF, never by those of a
// device, so that a drawing breaks and aligns its texts alike on the screen, on paper and in a
// file:
//
//     const TvText stress = TvText::fromUtf8(u8"\u03C3 \u2264 235 N/mm\u00B2");
//     const TvFont font{TvFont::Times, 9};
//     const double width = font.measure(stress).width;                 // points
//
// The widths are those of the Adobe Font Metrics files of the fourteen standard fonts (version
// 003.001 of the text fonts, 001.008 of Symbol), in Windows-1252. They were held against the fonts
// of the Liberation family, which are made to have the same widths: all agree within a thousandth
// of the size but for macron, plus-minus, mu and divide, in which the two families differ.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "toolbox/export.h"
#include "toolbox/strings.h"

/// A point of a drawing.
struct TvPoint {
    // Coordinates.
    double x = 0;
    double y = 0;
    bool operator==(const TvPoint&) const = default;
};

/// A colour; black from the start.
struct TvColor {
    // Parts from 0 to 255.
    unsigned char red = 0;
    unsigned char green = 0;
    unsigned char blue = 0;
    bool operator==(const TvColor&) const = default;
};

/// Characters of a text that stand together in one font, on one level.
struct TvTextRun {
    std::string bytes{};  ///< in Windows-1252, or in the encoding of Symbol; '\n' breaks the line
    bool symbol = false;  ///< of the Symbol font
    int level = 0;        ///< 1 is raised, -1 lowered, both at 0.6 of the size
    bool operator==(const TvTextRun&) const = default;
};

/// A character that the fonts do not have; '?' stands in its place.
struct TvTextFault {
    std::size_t place = 0;  ///< characters before it in the text
    char32_t code = 0;      ///< Unicode; kNotUtf8 for a byte that is not UTF-8

    /// The code of what is no character.
    static constexpr char32_t kNotUtf8 = 0xFFFFFFFF;
    bool operator==(const TvTextFault&) const = default;
};

struct TvFont;

/// A text in runs. "\n" and "\r\n" break lines. Other control characters, and the bytes that
/// Windows-1252 leaves undefined, are in no font. A soft hyphen is a hyphen.
class TB_API TvText {
  public:
    TvText() = default;  ///< the empty text
    // A text in Windows-1252; a null pointer is the empty one.
    TvText(std::string_view windows1252);
    TvText(const char* windows1252) : TvText(std::string_view(windows1252 ? windows1252 : "")) {}
    TvText(const std::string& windows1252) : TvText(std::string_view(windows1252)) {}
    template <toolbox::AnyString String>
    TvText(const String& windows1252) : TvText(windows1252.view()) {}
    /// A text in UTF-8: what Windows-1252 lacks comes from Symbol (Greek letters, mathematical
    /// signs, arrows), raised and lowered digits are runs of their own level, spaces of other
    /// widths are no-break spaces.
    [[nodiscard]] static TvText fromUtf8(std::string_view utf8) { return TvText().addUtf8(utf8); }
#if defined(__cpp_char8_t)
    [[nodiscard]] static TvText fromUtf8(const char8_t* utf8) {
        return fromUtf8(reinterpret_cast<const char*>(utf8));
    }
#endif

    // Each appends, and returns the text.
    TvText& add(const TvText& text);
    TvText& addUtf8(std::string_view utf8);
    // All runs of the other text become raised, or lowered.
    TvText& superscript(const TvText& text);
    TvText& subscript(const TvText& text);

    /// The pieces that it is made of, in their order.
    [[nodiscard]] const std::vector<TvTextRun>& runs() const {
        return runs_;
    }
    /// Characters that no font has, in order.
    [[nodiscard]] const std::vector<TvTextFault>& faults() const {
        return faults_;
    }
    /// Characters, line breaks included.
    [[nodiscard]] std::size_t length() const {
        return length_;
    }
    /// The text in UTF-8, all on one level.
    [[nodiscard]] std::string utf8() const;
    /// The text in Windows-1252; characters of Symbol that it lacks are '?'.
    [[nodiscard]] std::string windows1252() const;
    /// The text with line breaks in place of blanks, so that no line is wider than `width` points
    /// where that can be. A word is never cut, be it too wide; no-break spaces do not break.
    [[nodiscard]] TvText wrapped(const TvFont& font, double width) const;
    bool operator==(const TvText&) const = default;

    /// Rebuilds a text from runs and faults. False, and the text is empty, when they are none that
    /// the other operations make: a byte without a character, an empty run, two runs that should be
    /// one, a level other than -1 to 1, a fault where there is no '?' or out of order.
    bool assign(std::vector<TvTextRun> runs, std::vector<TvTextFault> faults);

  private:
    void put(char byte, bool symbol, int level);
    void putMissing(char32_t code);
    void putCode(char32_t code);
    TvText& append(const TvText& text, const int* level);

    std::vector<TvTextRun> runs_;
    std::vector<TvTextFault> faults_;
    std::size_t length_ = 0;
};

/// The size of a text in points.
struct TvTextExtent {
    double width = 0;   ///< of its widest line
    double height = 0;  ///< 1.2 times the font's size for each line
    int lines = 0;      ///< at least 1
};

/// A font with its size and colour. A plain value.
struct TB_API TvFont {
    /// The standard families.
    enum Family : unsigned char { Helvetica, Times, Courier };

    Family family = Helvetica;  ///< which of them
    double size = 10;           ///< points
    bool bold = false;          ///< heavier
    bool italic = false;        ///< slanted
    TvColor color{};            ///< black at first

    // Of the size: what a line takes above its baseline and below it. All characters lie within.
    static constexpr double kAscent = 0.95;
    static constexpr double kDescent = 0.25;
    static constexpr double kLine = kAscent + kDescent;  ///< from one baseline to the next

    /// The text's extent. Symbol has one face, whatever the font.
    [[nodiscard]] TvTextExtent measure(const TvText& text) const;
    /// Width of one byte in thousandths of the size; 0 where there is no character.
    [[nodiscard]] int advance(char byte, bool symbol = false) const;
    bool operator==(const TvFont&) const = default;
};

/// Where a text lies from its point, along its direction.
enum class TvAlign : unsigned char { left, center, right };

/// Where a text lies from its point, across its direction: the point is at the top of the first
/// line, in the middle of the lines, on the first baseline, or at the bottom of the last line. In a
/// text of one line the middle is that of its digits and capitals.
enum class TvLevel : unsigned char { top, middle, baseline, bottom };

/// How a text stands at its point. A plain value.
struct TvTextPlace {
    TvAlign align = TvAlign::left;      ///< each line, too, is aligned so
    TvLevel level = TvLevel::baseline;  ///< of the whole text
    double angle = 0;                   ///< of the direction of reading, about the point
    bool operator==(const TvTextPlace&) const = default;
};

/// Characters of a text where they stand on the page.
struct TvPlacedRun {
    std::string_view bytes{};  ///< of the text's run, a line of it
    bool symbol = false;       ///< in the Symbol font
    TvPoint at{};              ///< left end of the baseline
    double size = 0;           ///< of the letters, points
    double width = 0;          ///< points
    bool first = false;        ///< it begins a line
};

/// Where the runs of a text stand, line by line, for classes that draw texts. `at` and the place
/// are those of the page. They borrow the bytes of `text`.
[[nodiscard]] TB_API std::vector<TvPlacedRun> tvPlaceText(TvPoint at, const TvText& text,
                                                          const TvFont& font,
                                                          const TvTextPlace& place);
