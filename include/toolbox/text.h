// Validated texts and character sets, and the small text utilities around them.
//
// A TvString is a text field that checks itself by rules loaded from one string resource; TvCharSet
// is the set of characters that such rules name. The free functions load, show and trim plain
// character buffers. Texts are bytes in Windows-1252; all calls come from the user-interface
// thread.
#pragma once

#include "toolbox/char_sets.h"
#include "toolbox/containers.h"
#include "toolbox/export.h"
#include "toolbox/messages.h"
#include "toolbox/output_values.h"
#include "toolbox/strings.h"
#include "toolbox/win_types.h"

#pragma GCC diagnostic push
// The order of the virtual operations is fixed and has no destructor: a TvString is destroyed by
// its own type.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// A text with its rules. The resource text is "TVSTRING|message|minimum length|maximum length|
/// default|valid characters|invalid characters|forbidden value|..."; fields may be empty or
/// missing. The message is a template for TvFormatMessage: %1 is the first active rule of minimum,
/// maximum, valid characters, invalid characters and each forbidden value, %2 the next.
class TB_API TvString {
  public:
    /// Bits of the rules: those that the resource supplies, the active ones, or the broken ones.
    enum Rule : unsigned char {
        HasMessage = 1,  ///< supplied only
        HasDefault = 2,  ///< supplied only
        MinLength = 4,
        MaxLength = 8,
        ValidChars = 16,
        InvalidChars = 32,
        ForbiddenValues = 64
    };

    /// An empty text with the rules of a resource text; without rules when it cannot be read.
    explicit TvString(unsigned int resourceId);
    TvString(const TvString& other);
    TvString& operator=(const TvString& other);
    ~TvString() = default;

    /// Replaces the text, not checked, and returns a copy of it.
    CString operator=(const char* text);

    /// Checks `text`, or the object's own text when it is null. True when it breaks no rule. A
    /// broken rule puts the message into `errorMessage`; `failedRules` receives the bits of all
    /// that are broken, 0 for none. Either may be null. The two sets of characters cancel each
    /// other out: each is checked only while the other is empty.
    virtual bool isValid(RWCollectableString* errorMessage, const RWCollectableString* text,
                         char* failedRules) const;
    virtual bool isValid(RWCString* errorMessage, const RWCString* text, char* failedRules) const;
    virtual bool isValid(CString* errorMessage, const CString* text, char* failedRules) const;

    /// Takes the rules of a resource text. False, and nothing changes, when the identifier is 0 or
    /// there is no such text with the tag TVSTRING.
    virtual bool setToResStr(unsigned int resourceId);
    /// Drops all rules, the message and the default. The text stays.
    virtual void setToDefaults();
    /// Deletes from the text what either set forbids; here each applies even with the other.
    virtual void removeInvalidChars();

    /// The text.
    [[nodiscard]] const CString& value() const { return value_; }
    /// The resource's default; empty when it supplies none.
    [[nodiscard]] const CString& defaultValue() const { return defaultValue_; }
    // The limits; -1 for none.
    [[nodiscard]] int minLength() const { return minLength_; }
    [[nodiscard]] int maxLength() const { return maxLength_; }
    /// The bits of the active rules.
    [[nodiscard]] unsigned char rules() const { return rules_; }

  private:
    [[nodiscard]] unsigned char brokenRules(const CString& text) const;
    void bindArguments();

    CString value_;
    CString message_;
    CArray<TvOutVal, TvOutVal&> arguments_;  // of the message; they refer to the fields below
    int minLength_ = -1;
    int maxLength_ = -1;
    CString defaultValue_;
    TvCharSet validChars_;
    TvCharSet invalidChars_;
    CArray<CString> forbiddenValues_;
    unsigned char rules_ = 0;
};
#pragma GCC diagnostic pop

/// Reads the rules of resource text `resourceId` (see TvString). Returns the TvString::Rule bits of
/// the fields that it supplies. A field that is missing, empty or unreadable gives its default: -1,
/// an empty text, and resource text 1094 for the message. 0 when it supplies none, and also when
/// there is no such text or it lacks the tag; the outputs are then unchanged, but the list of
/// forbidden values is empty when the text exists. Any output may be null.
TB_API char TvStringParseResStr(unsigned int resourceId, CString* message, CString* defaultValue,
                                int* minLength, int* maxLength, CString* validChars,
                                CString* invalidChars, CArray<CString>* forbiddenValues);
TB_API char TvStringParseResStr(unsigned int resourceId, RWCString* message,
                                RWCString* defaultValue, int* minLength, int* maxLength,
                                RWCString* validChars, RWCString* invalidChars,
                                CArray<RWCString>* forbiddenValues);

// Reading one value from a text. The strings take it as it is. The numbers read what typed numbers
// do (toolbox/numbers.h): digits with a point or a comma, an exponent, a '+' or '-' in front,
// nothing but blanks around; no decimal sign for integers, and in English no comma that could
// separate thousands. Anything else, or a number outside the type's range, gives false and leaves
// `out` alone.
TB_API bool TvScanfSingle(const CString& text, CString* out);
TB_API bool TvScanfSingle(const CString& text, RWCString* out);
TB_API bool TvScanfSingle(const CString& text, RWCollectableString* out);
TB_API bool TvScanfSingle(const CString& text, unsigned char* out);
TB_API bool TvScanfSingle(const CString& text, short* out);
TB_API bool TvScanfSingle(const CString& text, int* out);
TB_API bool TvScanfSingle(const CString& text, unsigned int* out);
TB_API bool TvScanfSingle(const CString& text, long* out);
TB_API bool TvScanfSingle(const CString& text, unsigned long* out);
TB_API bool TvScanfSingle(const CString& text, float* out);
TB_API bool TvScanfSingle(const CString& text, double* out);

/// Replaces in `templ` the first "%1" by the first argument's text, the first "%2" by the second's
/// and so on, until a number does not occur; those without an argument stay. Each search also sees
/// the texts already inserted, and "%1" matches the start of "%10".
TB_API void TvFormatMessage(CString& result, const CString& templ,
                            const CArray<TvOutVal, TvOutVal&>& args);

/// Text `id` of a module, cut at 254 characters, in one of 16 buffers that are used in turn: it
/// is valid until the 16th call after it. A missing text is reported in a box, and the result is
/// the identifier in decimal. Never null.
TB_API char* GetString(HINSTANCE hInstance, unsigned int id);

/// Shows a task-modal box without owner and returns the button chosen. `flags` are its icon and
/// buttons.
TB_API int ShowMsgBox(const char* title, const char* text, unsigned int flags);

/// Removes the blanks at the start of `s`, of which the first `n` characters are looked at, by
/// moving those n characters and the next to the left; what follows them stays where it is, so `n`
/// is usually the length. Returns the new length. A text whose first n characters are all blanks is
/// left alone and gives 0; a text of fewer blanks than n becomes empty.
TB_API int Lead(char* s, int n);

/// Cuts blanks and line ends at the end of the first `n` characters of `s`, and whatever follows
/// them. Returns the new length. A text of blanks only is left alone, and so is any text when n is
/// below 2.
TB_API int Trail(char* s, int n);
