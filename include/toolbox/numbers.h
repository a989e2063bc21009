// Typed numbers: a number, the rules of its entry, and the way between it and a text that a person
// typed.
//
//     TvDouble thickness(IDS_THICKNESS);       // "TVDOUBLE||0.5|40|8|6,2,R||0.7"
//     thickness.setUnits("mm");
//     double entered = 0;
//     CString why;
//     if (!thickness.scan("52", entered, &why))
//         show(why);                           // "The value must be between 0.50 mm and 40.00 mm."
//
// A number is written with digits, at most one decimal sign (a point or a comma, in every language;
// "5." and ",5" will do) and an exponent ("1.5e3"); blanks may surround it, a sign precede it.
// Nothing else is one: no unit, no grouping sign, no no-break space, no hexadecimal, no word for
// infinity. A number is taken, as the nearest that its type holds, or refused, never clipped: one
// beyond the type's range is refused, and so is one that the type would hold as zero although it
// is not ("1e-400").
//
// - Integers take no decimal sign: "2.0" and "2,5" are refused, since "1,000" is a thousand to many
//   people. An exponent is taken while the number is whole: "1e3", "2500e-2".
// - In English (GMSG::language) a comma that could separate thousands is refused, and the message
//   shows both readings: one to three digits that are not all zero, the comma, exactly three
//   digits ("1,250", "12,500e2"). "0,250", ",250", "1250,125" and "1,25" have one reading.
//
// Range and forbidden values are judged when a whole text is read; couldBecome() is for the time
// while it is being typed. All are plain values without shared state. Nothing throws.
#pragma once

#include <limits>
#include <vector>

#include "toolbox/export.h"
#include "toolbox/formats.h"
#include "toolbox/messages.h"
#include "toolbox/strings.h"

/// What typed numbers of all types have: the part of their rules that holds no number of the type.
///
/// The rules' resource text is "TVDOUBLE|message|minimum|maximum|default|format||forbidden
/// value|...", after the tag of the type: TVSHORT, TVUSHORT, TVLONG, TVULONG, TVFLOAT, TVDOUBLE.
/// Fields may be empty or missing; the seventh is empty. The message is a template for
/// TvFormatMessage: %1 is the first that there is of minimum, maximum and each forbidden value, %2
/// the next, in the number's format and with its units. Without one a sentence says what is
/// allowed. The format is "width,decimals,L" or R, for example "10,2,R". Numbers are written as
/// above, but a comma that could separate thousands is refused in every language: one rule means
/// the same in all.
///
/// A field that cannot be read, limits that leave no value, and a text without the tag are no
/// rules; CTvTrace is told which, with every category.
class TB_API TvNumberRules {
  public:
    /// Bits of the rules: those that the resource supplies or those that are broken. They are those
    /// of TvString where the two mean the same.
    enum Rule : unsigned char {
        HasMessage = 1,  ///< supplied only
        HasDefault = 2,  ///< supplied only
        Minimum = 4,
        Maximum = 8,
        ForbiddenValues = 64,
        HasFormat = 128  ///< never broken
    };

    /// The active rules: bits of Minimum, Maximum, ForbiddenValues and HasFormat.
    [[nodiscard]] unsigned char rules() const { return rules_; }
    /// The message's template; empty for the sentences of the library.
    [[nodiscard]] const CString& message() const { return message_; }

    /// What messages write after a number, and a control beside it ("mm"). Not a part of the
    /// rules: they come and go, the units stay. A text with units is refused by scan().
    void setUnits(const CString& units) { units_ = units; }
    [[nodiscard]] const CString& units() const { return units_; }

    /// Whether a text that begins with '=' is read as a formula (toolbox/parser.h) without cells:
    /// "=3*1.35" is 4.05. Off at first; not a part of the rules.
    ///
    /// The result counts with 15 significant digits, which gives the decimals that a person
    /// expects; one for an integer type must be whole with these. A comma between digits is a
    /// decimal sign, with the same refusal in English: no function has two arguments.
    void allowFormula(bool allowed) { formula_ = allowed; }
    /// Whether it is.
    [[nodiscard]] bool allowsFormula() const { return formula_; }

    // The format. Width 0 is none: as short as the number needs. Decimals are -1 when the format
    // gives none; integers have none.
    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int decimals() const { return decimals_; }
    [[nodiscard]] Justification justification() const { return justification_; }

    /// Sets the format as the resource's field does: a width of 1 to 80, below it the decimals (-1
    /// for as many as the number needs). False, and nothing changes, for others.
    bool setFormat(int width, int decimals, Justification justification = Right);

  protected:
    TvNumberRules() = default;
    /// Drops message and format, and the bits.
    void drop();

    // The rules of each type set them.
    CString message_;          ///< a template, empty for the library's sentences
    unsigned char rules_ = 0;  ///< active ones

  private:
    CString units_;
    int width_ = 0;
    int decimals_ = -1;
    Justification justification_ = Right;
    bool formula_ = false;
};

/// A number with its rules, for the types that have a name below. Use the names.
template <class T>
class TB_API TvNumber : public TvNumberRules {
  public:
    using Value = T;  ///< the type of the number

    /// 0, without rules.
    TvNumber() = default;
    /// 0 with the rules of a resource text; without rules when it cannot be read.
    template <toolbox::ResourceId Id>
    explicit TvNumber(Id resourceId) {
        setToResStr(static_cast<unsigned int>(resourceId));
    }

    /// Replaces the number, not checked, and returns it.
    T operator=(T value) { return value_ = value; }
    /// The number.
    [[nodiscard]] T value() const { return value_; }

    // Check `value`, or the object's own number when it is null. True when it breaks no rule. A
    // broken rule puts the message into `errorMessage`; `failedRules` receives the bits of all that
    // are broken, 0 for none. Either may be null. Not-a-number is beyond every limit that there is.
    bool isValid(CString* errorMessage, const T* value, char* failedRules) const;
    bool isValid(RWCString* errorMessage, const T* value, char* failedRules) const;
    bool isValid(RWCollectableString* errorMessage, const T* value, char* failedRules) const;

    /// Takes the rules of a resource text. False, and nothing changes, when the identifier is 0 or
    /// the text is missing, lacks the tag or supplies no rule.
    bool setToResStr(unsigned int resourceId);
    /// Drops all rules, the message, the default and the format. The number, its units and whether
    /// it may be a formula stay.
    void setToDefaults();

    /// Reads a text. True: it is a number that breaks no rule, and `value` is that. Otherwise
    /// `value` is left alone and `why`, unless null, has a sentence that says what is wrong, where,
    /// and what is allowed; never the empty text. The object's own number does not change.
    bool scan(const CString& text, T& value, CString* why) const;

    /// The text of a number. Without a format, or when that gives no decimals, it has as few digits
    /// as read back to the same bits, and an exponent of three digits outside 1e-5 to 1e16. With
    /// decimals it is rounded to them, ties to even; one that is wider than the format, or without
    /// a width than 40 characters, then has the shorter of both texts. Nothing is ever cut. A
    /// number narrower than its format is filled up with blanks. Infinities are "inf" and "-inf",
    /// not-a-number is "nan".
    [[nodiscard]] CString print(T value) const;

    /// `value` and `steps` times `size`, each taken as the shortest decimal number that reads back
    /// to its bits, so that seven steps of 0.1 from 0 are what "0.7" reads as. The result lies
    /// within the limits and the type's range: beyond them it is the nearer end. A forbidden value
    /// is stepped over while the limits have room; else the result is `value`. An integer's result
    /// is rounded to the nearest, ties away from zero. A value or size that is not finite gives
    /// `value`.
    [[nodiscard]] T step(T value, int steps, double size) const;

    /// True when the text, or one that begins with it, is written as a number: "", "-", "1e", "1,"
    /// and "12" are, "1x" is not. What its value would be does not count. A text that begins with
    /// '=' could become a formula where that is allowed.
    [[nodiscard]] bool couldBecome(const CString& text) const;
    /// True for the characters that such a text can have.
    [[nodiscard]] bool allows(char c) const;

    // The limits; without a rule the type's own.
    [[nodiscard]] T minimum() const { return minimum_; }
    [[nodiscard]] T maximum() const { return maximum_; }
    /// Makes them the limits. False, and nothing changes, when the first is not the lower.
    bool setLimits(T minimum, T maximum);
    /// The resource's default, which is not applied by itself; 0 when it supplies none.
    [[nodiscard]] T defaultValue() const { return defaultValue_; }
    /// The values that are not allowed though they lie within the limits.
    [[nodiscard]] const std::vector<T>& forbiddenValues() const { return forbiddenValues_; }

  private:
    struct Resource;

    [[nodiscard]] bool isForbidden(T value) const;
    [[nodiscard]] unsigned char brokenRules(T value) const;
    [[nodiscard]] CString ruleMessage(T value, unsigned char broken) const;
    [[nodiscard]] CString shown(T value) const;
    bool scanNumber(const CString& text, T& value, CString* why) const;
    bool scanFormula(const CString& text, T& value, CString* why) const;

    T value_ = 0;
    T minimum_ = std::numeric_limits<T>::lowest();
    T maximum_ = std::numeric_limits<T>::max();
    T defaultValue_ = 0;
    std::vector<T> forbiddenValues_;
};

// The types of numbers. A long has 32 bits on Windows and 64 elsewhere.
using TvShort = TvNumber<short>;
using TvUShort = TvNumber<unsigned short>;
using TvLong = TvNumber<long>;
using TvULong = TvNumber<unsigned long>;
using TvFloat = TvNumber<float>;
using TvDouble = TvNumber<double>;
