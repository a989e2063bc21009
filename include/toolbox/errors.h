// Error objects: a detected condition as a value.
//
// An ErrObj carries a condition code and, optionally, a text. Without a text it answers with a
// standard sentence that names the code, in the language set for all error objects of the process.
// It shows nothing itself and depends on nothing; GMSG is what reports to the user.
#pragma once

#include <memory>

#include "toolbox/export.h"

/// A plain value: each object owns its copy of its text.
class TB_API ErrObj {
  public:
    /// Language of the standard sentence.
    enum Language : int { English = 0, French = 1 };

    /// Null and the empty text both mean: no text.
    ErrObj(int code = 0, const char* text = nullptr);
    ErrObj(const ErrObj& other);
    virtual ~ErrObj();
    ErrObj& operator=(const ErrObj& other);

    /// The condition code.
    operator int() const noexcept { return code_; }

    // Both return the object, so that calls can be chained. The text is copied and may be this
    // object's own.
    ErrObj& setText(const char* text);
    ErrObj& setCode(int code) noexcept;

    /// The object's text, valid until it is changed; without one the standard sentence, in one
    /// buffer that all error objects share: the next such call of any of them overwrites it.
    /// With a language other than the two, the buffer is returned as the last call left it.
    [[nodiscard]] const char* getText() const noexcept;

    /// French at the start of the process.
    static void setLanguage(Language language) noexcept;
    [[nodiscard]] static Language getLanguage() noexcept;

  private:
    std::unique_ptr<char[]> text_;  ///< null when there is none, never empty
    int code_;
};
