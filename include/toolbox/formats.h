// Formats: how one value is laid out as text of a fixed width, as in the column of a table.
//
// A format has a width in characters, a justification and, for reals, a number of decimals, and can
// be saved to a short text. A formatted value is a value together with its format. All are plain
// values without shared state, and nothing throws.
//
// A result is as long as its format's width: what is longer is cut, what is shorter padded with
// blanks, up to 16777216 characters (a greater width counts as that). It is empty for a negative
// width, and when there is no memory for it. Numbers print the same characters on every system and
// under every locale: '.' as decimal point, ties rounded to even, at least three digits in an
// exponent, "inf", "-inf" and "nan".
#pragma once

#include "toolbox/export.h"
#include "toolbox/strings.h"
#include "toolbox/win_types.h"

#if defined(_WIN32)
class UDKeyData;
#endif

/// Side of the column that a value is aligned to. Any other value counts as Right.
enum Justification : int { Left = 0, Right = 1 };

/// What all formats answer. The int results are 1 for yes, done or accepted, and 0 for no; what is
/// not accepted changes nothing.
class TB_API FormatType {
  public:
    virtual ~FormatType();

    /// 1 when the other format is of the same kind with the same fields.
    virtual int operator==(const FormatType& other) const = 0;
    /// Takes over the fields of a format of the same kind; 0 for another kind.
    virtual int setFormat(const FormatType& other) = 0;
#if defined(_WIN32)
    /// Lets the user edit the description and the format of a key whose format is of this kind, in
    /// a modal dialog over `parent` (null for none). 1 when the user confirmed: `key` has what was
    /// entered, in the format object that it had; one that is a UDManager's copy is handed back
    /// with setKeyDesc() and setKeyFormat(). 0 and nothing changed when the user cancelled, when
    /// the key's format is of another kind (no dialog is shown), and for "no format" always.
    ///
    /// Widths are accepted from 1 (reals: 2) to 80, decimals to width - 2; what was beyond and is
    /// not touched stays. The dialog names these limits, and warns when its sample does not fit. A
    /// description has no '|', and no blanks around it. DLG_FORMAT_NUMBER, DLG_FORMAT_REAL and
    /// DLG_FORMAT_STRING are looked up in GMSG's module, the application and the library.
    virtual int setFormatDlg(HWND parent, UDKeyData& key) = 0;
#endif
    /// The saved form: width (and decimals) right-aligned in 4 columns, each with a "-", then "L"
    /// or "R": "  12-R", "  10-   2-L". A number of more than 4 columns is written whole, but does
    /// not read back.
    virtual RWCString saveStringFormat() = 0;
    /// Reads a saved form. 0 and no change when a part is missing. Otherwise every part is applied
    /// by its setter, even after one was refused; 0 when one was, or for a letter but "L" and "R".
    virtual int restoreStringFormat(const RWCString& text) = 0;
    /// The name of the class, "NumberFormat"; never null.
    [[nodiscard]] virtual const char* getClassName() const = 0;
    /// The kind's keyword in saved records: "NUM", "REAL", "STRING" or "NONE".
    virtual RWCString getFormatName() = 0;
    /// 1 when the other format is of this format's kind; always 0 for "no format".
    [[nodiscard]] virtual int isA(const FormatType& other) const = 0;
    // Each kind answers 1 to exactly one of these, "no format" to none: an integer format is not a
    // real one, and a real format is not a number one.
    [[nodiscard]] virtual int isString() const = 0;
    [[nodiscard]] virtual int isReal() const = 0;
    [[nodiscard]] virtual int isNumber() const = 0;

    // A field that the kind does not have is 0.
    [[nodiscard]] virtual int getWidth() const = 0;
    [[nodiscard]] virtual Justification getJustify() const = 0;
    [[nodiscard]] virtual int getPrecision() const = 0;

    // What each kind accepts differs; see the classes.
    virtual int setWidth(int width) = 0;
    virtual int setJustify(Justification justify) = 0;
    virtual int setPrecision(int precision) = 0;

    /// The kind's name for users, at most 98 characters: text 1200 (integers), 1201 (reals) or 1202
    /// (strings) of the window's module, of the application for null. Empty where there is none.
    [[nodiscard]] virtual RWCString getTypeName(HWND window) const;
};

/// Format of integers. Any width is accepted; setting a precision is accepted and ignored.
class TB_API NumberFormat : public virtual FormatType {
  public:
    /// Width 0, right.
    NumberFormat();
    NumberFormat(const NumberFormat& other);
    /// The defaults when the other format is of another kind.
    NumberFormat(const FormatType& other);
    ~NumberFormat() override;
    NumberFormat& operator=(const NumberFormat& other);

    int operator==(const FormatType& other) const override;
    /// 1 when width and justification are equal.
    int operator==(const NumberFormat& other) const;
    int operator!=(const NumberFormat& other) const { return !(*this == other); }

    int setFormat(const FormatType& other) override;
#if defined(_WIN32)
    int setFormatDlg(HWND parent, UDKeyData& key) override;
#endif
    /// Sets both; always 1.
    int setFormat(int width, Justification justify);
    RWCString saveStringFormat() override;
    int restoreStringFormat(const RWCString& text) override;
    [[nodiscard]] const char* getClassName() const override;
    RWCString getFormatName() override;
    [[nodiscard]] int isA(const FormatType& other) const override;
    [[nodiscard]] int isString() const override;
    [[nodiscard]] int isReal() const override;
    [[nodiscard]] int isNumber() const override;
    [[nodiscard]] int getWidth() const override;
    [[nodiscard]] Justification getJustify() const override;
    [[nodiscard]] int getPrecision() const override;
    int setWidth(int width) override;
    int setJustify(Justification justify) override;
    int setPrecision(int precision) override;
    [[nodiscard]] RWCString getTypeName(HWND window) const override;

    /// Assigns through the setters; a format of another kind changes nothing.
    virtual NumberFormat& operator=(const FormatType& other);

    /// The printed value. One that does not fit the width, its sign counted, is printed with an
    /// exponent and as many decimals as the width has room for, counting two digits of the
    /// exponent: its third is cut off ("1e+00" for 123456 in 5 columns).
    [[nodiscard]] RWCString getString(int value) const;
    /// 1 when the value prints in full: all its digits, no exponent.
    [[nodiscard]] int fits(int value) const;

  private:
    int width_ = 0;
    Justification justify_ = Right;
};

/// Format of reals, the only kind that checks: a width is accepted from 2 on, a precision when it
/// is less than the width at that moment minus 1. So the width is set first; and a precision that a
/// later, smaller width made too large is not taken over by copies (theirs is then 0).
class TB_API RealFormat : public virtual FormatType {
  public:
    /// Width 0, right, precision 0.
    RealFormat();
    RealFormat(const RealFormat& other);
    /// The defaults when the other format is of another kind.
    RealFormat(const FormatType& other);
    ~RealFormat() override;
    RealFormat& operator=(const RealFormat& other);

    int operator==(const FormatType& other) const override;
    /// 1 when width, precision and justification are equal.
    int operator==(const RealFormat& other) const;
    int operator!=(const RealFormat& other) const { return !(*this == other); }

    int setFormat(const FormatType& other) override;
#if defined(_WIN32)
    int setFormatDlg(HWND parent, UDKeyData& key) override;
#endif
    /// Stops at the first value that is not accepted, in the order width, precision, justification.
    int setFormat(int width, int precision, Justification justify);
    RWCString saveStringFormat() override;
    int restoreStringFormat(const RWCString& text) override;
    [[nodiscard]] const char* getClassName() const override;
    RWCString getFormatName() override;
    [[nodiscard]] int isA(const FormatType& other) const override;
    [[nodiscard]] int isString() const override;
    [[nodiscard]] int isReal() const override;
    [[nodiscard]] int isNumber() const override;
    [[nodiscard]] int getWidth() const override;
    [[nodiscard]] Justification getJustify() const override;
    [[nodiscard]] int getPrecision() const override;
    int setWidth(int width) override;
    int setJustify(Justification justify) override;
    int setPrecision(int precision) override;
    [[nodiscard]] RWCString getTypeName(HWND window) const override;

    /// Assigns through the setters, which may refuse; a format of another kind changes nothing.
    virtual RealFormat& operator=(const FormatType& other);

    /// The printed value: with the format's decimals, or as many as fit, when the integer part, the
    /// sign and a point fit the width; otherwise with an exponent, cut as NumberFormat's. Zero and
    /// negative values count a column for the sign, even when none is printed.
    virtual RWCString getString(double value);
    /// 1 when the value prints with all the format's decimals, without exponent and with nothing
    /// cut off. Zero needs a column for the sign here, too. An override of getString() is not
    /// asked.
    [[nodiscard]] int fits(double value) const;

  private:
    int width_ = 0;
    Justification justify_ = Right;
    int precision_ = 0;
};

/// Format of strings. Any width is accepted, no precision is.
class TB_API StringFormat : public virtual FormatType {
  public:
    /// Width 0, left.
    StringFormat();
    StringFormat(const StringFormat& other);
    /// The defaults when the other format is of another kind.
    StringFormat(const FormatType& other);
    ~StringFormat() override;
    StringFormat& operator=(const StringFormat& other);

    int operator==(const FormatType& other) const override;
    /// 1 when width and justification are equal.
    int operator==(const StringFormat& other) const;
    int operator!=(const StringFormat& other) const { return !(*this == other); }

    int setFormat(const FormatType& other) override;
#if defined(_WIN32)
    int setFormatDlg(HWND parent, UDKeyData& key) override;
#endif
    /// Sets both; always 1.
    int setFormat(int width, Justification justify);
    RWCString saveStringFormat() override;
    int restoreStringFormat(const RWCString& text) override;
    [[nodiscard]] const char* getClassName() const override;
    RWCString getFormatName() override;
    [[nodiscard]] int isA(const FormatType& other) const override;
    [[nodiscard]] int isString() const override;
    [[nodiscard]] int isReal() const override;
    [[nodiscard]] int isNumber() const override;
    [[nodiscard]] int getWidth() const override;
    [[nodiscard]] Justification getJustify() const override;
    [[nodiscard]] int getPrecision() const override;
    int setWidth(int width) override;
    int setJustify(Justification justify) override;
    int setPrecision(int precision) override;
    [[nodiscard]] RWCString getTypeName(HWND window) const override;

    /// Assigns through the setters; a format of another kind changes nothing.
    virtual StringFormat& operator=(const FormatType& other);

    /// The text, padded to the width; a longer one keeps its start whatever the justification.
    [[nodiscard]] RWCString getString(const RWCString& text) const;
    /// 1 when nothing of the text is cut off.
    [[nodiscard]] int fits(const RWCString& text) const;

  private:
    int width_ = 0;
    Justification justify_ = Left;
};

/// "No format". It accepts every setting and keeps none, its saved form is empty and cannot be
/// restored, and it equals every format (another format does not equal it).
class TB_API NoFormatType : public virtual FormatType {
  public:
    NoFormatType();
    NoFormatType(const NoFormatType& other);
    /// Takes over nothing: there is nothing to keep.
    NoFormatType(const FormatType& other);
    ~NoFormatType() override;
    NoFormatType& operator=(const NoFormatType& other);

    int operator==(const FormatType& other) const override;
    /// Always 1.
    int operator==(const NoFormatType&) const { return 1; }
    int operator!=(const NoFormatType&) const { return 0; }

    int setFormat(const FormatType& other) override;
#if defined(_WIN32)
    int setFormatDlg(HWND parent, UDKeyData& key) override;
#endif
    RWCString saveStringFormat() override;
    int restoreStringFormat(const RWCString& text) override;
    [[nodiscard]] const char* getClassName() const override;
    RWCString getFormatName() override;
    [[nodiscard]] int isA(const FormatType& other) const override;
    [[nodiscard]] int isString() const override;
    [[nodiscard]] int isReal() const override;
    [[nodiscard]] int isNumber() const override;
    [[nodiscard]] int getWidth() const override;
    [[nodiscard]] Justification getJustify() const override;
    [[nodiscard]] int getPrecision() const override;
    int setWidth(int width) override;
    int setJustify(Justification justify) override;
    int setPrecision(int precision) override;

    /// Changes nothing.
    virtual NoFormatType& operator=(const FormatType& other);
};

/// A value together with its format. It is a full format of its kind: every operation of FormatType
/// applies to it.
class TB_API FormatedValue : public virtual FormatType {
  public:
    ~FormatedValue() override;

    /// The value, printed by its format.
    virtual RWCString getStringValue() = 0;
};

/// An integer with its format; 0 at first.
class TB_API NumberFormatedValue : public NumberFormat, public FormatedValue {
  public:
    NumberFormatedValue();
    NumberFormatedValue(const NumberFormatedValue& other);
    ~NumberFormatedValue() override;

    using NumberFormat::operator=;  ///< a format assigned sets the format only
    NumberFormatedValue& operator=(const NumberFormatedValue& other);
    /// Sets the value only.
    NumberFormatedValue& operator=(int value);
    // The value alone; the format stays.
    [[nodiscard]] int getValue() const { return value_; }
    void setValue(int value) { value_ = value; }

    /// Compares the formats.
    int operator==(const FormatType& other) const override;
    /// 1 when width, justification and value are equal.
    int operator==(const NumberFormatedValue& other) const;
    int operator!=(const NumberFormatedValue& other) const { return !(*this == other); }

    [[nodiscard]] const char* getClassName() const override;
    [[nodiscard]] int isA(const FormatType& other) const override;
    RWCString getStringValue() override;

  private:
    int value_ = 0;
};

/// A real with its format; 0.0 at first.
class TB_API RealFormatedValue : public RealFormat, public FormatedValue {
  public:
    RealFormatedValue();
    RealFormatedValue(const RealFormatedValue& other);
    ~RealFormatedValue() override;

    using RealFormat::operator=;  ///< a format assigned sets the format only
    RealFormatedValue& operator=(const RealFormatedValue& other);
    /// Sets the value only.
    RealFormatedValue& operator=(double value);
    // The value alone; the format stays.
    [[nodiscard]] double getValue() const { return value_; }
    void setValue(double value) { value_ = value; }

    /// Compares the formats.
    int operator==(const FormatType& other) const override;
    /// 1 when width, justification and precision are equal and the values differ by less than a
    /// unit of the last decimal (0.1 for precision 0). Infinities and not-a-number equal nothing.
    int operator==(const RealFormatedValue& other) const;
    int operator!=(const RealFormatedValue& other) const { return !(*this == other); }

    [[nodiscard]] const char* getClassName() const override;
    [[nodiscard]] int isA(const FormatType& other) const override;
    RWCString getStringValue() override;

  private:
    double value_ = 0.0;
};

/// A string with its format; empty at first.
class TB_API StringFormatedValue : public StringFormat, public FormatedValue {
  public:
    StringFormatedValue();
    StringFormatedValue(const StringFormatedValue& other);
    ~StringFormatedValue() override;

    using StringFormat::operator=;  ///< a format assigned sets the format only
    StringFormatedValue& operator=(const StringFormatedValue& other);
    /// Sets the value only.
    StringFormatedValue& operator=(const RWCString& value);
    // The value alone; the format stays.
    [[nodiscard]] RWCString getValue() const { return value_; }
    void setValue(const RWCString& value) { value_ = value; }

    /// Compares the formats.
    int operator==(const FormatType& other) const override;
    /// 1 when width and justification are equal. The texts are not compared.
    int operator==(const StringFormatedValue& other) const;
    int operator!=(const StringFormatedValue& other) const { return !(*this == other); }

    [[nodiscard]] const char* getClassName() const override;
    [[nodiscard]] int isA(const FormatType& other) const override;
    RWCString getStringValue() override;

  private:
    RWCString value_;
};

/// The value of "no format": it prints as the empty text and equals everything. Its class name is
/// "NoFormatType".
class TB_API NoFormatedValue : public NoFormatType, public FormatedValue {
  public:
    NoFormatedValue();
    NoFormatedValue(const NoFormatedValue& other);
    ~NoFormatedValue() override;
    using NoFormatType::operator=;  ///< a format assigned sets the format only
    NoFormatedValue& operator=(const NoFormatedValue& other);

    int operator==(const FormatType& other) const override;
    /// Always 1.
    int operator==(const NoFormatedValue&) const { return 1; }
    int operator!=(const NoFormatedValue&) const { return 0; }

    [[nodiscard]] int isA(const FormatType& other) const override;
    RWCString getStringValue() override;
};

#include "toolbox/detail/format_comparisons.h"  // of formats of different kinds
