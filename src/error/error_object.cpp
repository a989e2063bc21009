// Error objects, and the one buffer in which their standard sentence is made.
#include <charconv>
#include <cstring>
#include <string_view>

#include "toolbox/errors.h"

namespace {

constexpr std::string_view kBefore = "Condition # ";
constexpr std::string_view kEnglish = " detected";
constexpr std::string_view kFrench = " detectee";
constexpr std::size_t kLongestCode = sizeof "-2147483648";  // with the sentence's terminator
static_assert(kEnglish.size() == kFrench.size());

ErrObj::Language currentLanguage = ErrObj::French;
char sentence[kBefore.size() + kLongestCode + kFrench.size()];

void writeSentence(int code, std::string_view after) noexcept {
    char* at = sentence + kBefore.copy(sentence, kBefore.size());
    at = std::to_chars(at, sentence + sizeof sentence, code).ptr;
    at += after.copy(at, after.size());
    *at = '\0';
}

std::unique_ptr<char[]> copyOf(const char* text) {
    if (!text || !*text) return nullptr;
    const std::size_t size = std::strlen(text) + 1;
    std::unique_ptr<char[]> copy(new char[size]);
    std::memcpy(copy.get(), text, size);
    return copy;
}

}  // namespace

ErrObj::ErrObj(int code, const char* text) : text_(copyOf(text)), code_(code) {}

ErrObj::ErrObj(const ErrObj& other) : ErrObj(other.code_, other.text_.get()) {}

ErrObj::~ErrObj() = default;

ErrObj& ErrObj::operator=(const ErrObj& other) {
    return setText(other.text_.get()).setCode(other.code_);
}

ErrObj& ErrObj::setText(const char* text) {
    text_ = copyOf(text);
    return *this;
}

ErrObj& ErrObj::setCode(int code) noexcept {
    code_ = code;
    return *this;
}

const char* ErrObj::getText() const noexcept {
    if (text_) return text_.get();
    if (currentLanguage == English) writeSentence(code_, kEnglish);
    if (currentLanguage == French) writeSentence(code_, kFrench);
    return sentence;
}

void ErrObj::setLanguage(Language language) noexcept {
    currentLanguage = language;
}

ErrObj::Language ErrObj::getLanguage() noexcept {
    return currentLanguage;
}
