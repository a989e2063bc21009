// Sets of characters. What they say in words is in text/char_set_words.cpp, which has the texts.
#include <array>
#include <bitset>

#include "toolbox/char_sets.h"

namespace {

constexpr auto kControlNames = std::to_array<const char*>({
    "{NUL}",       "{SOH}",
    "{STX}",       "{ETX}",
    "{EOT}",       "{ENQ}",
    "{ACK}",       "{bell (alert)}",
    "{backspace}", "{horizontal tab}",
    "{new line}",  "{vertical tab}",
    "{formfeed}",  "{carriage return}",
    "{SO}",        "{ST}",
    "{SLE}",       "{CSL}",
    "{DC2}",       "{DC3}",
    "{DC4}",       "{NAK}",
    "{SYN}",       "{ETB}",
    "{CAN}",       "{EM}",
    "{STB}",       "{ESC}",
    "{FS}",        "{GS}",
    "{RS}",        "{US}",
});
static_assert(kControlNames.size() == 32);

using Members = std::bitset<256>;

Members membersOf(const TvCharSet& set) {
    Members members;
    const CString all = set.getDetailedCharsSet();
    for (const char c : all.view()) members.set(static_cast<unsigned char>(c));
    return members;
}

}  // namespace

CString TvCharSet::operator=(const CString& definition) {
    definition_ = definition;
    return definition_;
}

bool TvCharSet::getNextCharOrInterval(int& index, CString& piece) const {
    constexpr int kIntervalLength = 6;
    piece.Empty();
    const int length = definition_.GetLength();
    if (index < 0 || index >= length) {
        index = -1;
        return true;
    }
    if (definition_[index] != '[' || index + 1 >= length || definition_[index + 1] != '[') {
        piece += definition_[index++];
        return true;
    }
    const int first = static_cast<signed char>(definition_[index + 2]);
    const int last = static_cast<signed char>(definition_[index + 3]);
    if (index + kIntervalLength > length || first > last || definition_[index + 4] != ']' ||
        definition_[index + 5] != ']') {
        index = -1;
        return false;
    }
    for (int c = first; c <= last; ++c) piece += static_cast<char>(c);
    index += kIntervalLength;
    return true;
}

bool TvCharSet::isValid() const {
    CString piece;
    for (int index = 0; index >= 0;) {
        if (!getNextCharOrInterval(index, piece)) return false;
    }
    return true;
}

CString TvCharSet::getDetailedCharsSet() const {
    CString all;
    CString piece;
    for (int index = 0; index >= 0;) {
        getNextCharOrInterval(index, piece);
        all += piece;
    }
    return all;
}

bool TvCharSet::charIsInSet(char c) const {
    CString piece;
    for (int index = 0; index >= 0;) {
        getNextCharOrInterval(index, piece);
        if (piece.view().find(c) != std::string_view::npos) return true;
    }
    return false;
}

bool TvCharSet::allStringCharsAreInSet(const CString& text) const {
    const Members members = membersOf(*this);
    for (const char c : text.view())
        if (!members[static_cast<unsigned char>(c)]) return false;
    return true;
}

bool TvCharSet::atLeastOneStringCharIsInSet(const CString& text) const {
    const Members members = membersOf(*this);
    for (const char c : text.view())
        if (members[static_cast<unsigned char>(c)]) return true;
    return false;
}

CString TvCharSet::getVisibleChar(const char& c) {
    const auto code = static_cast<unsigned char>(c);
    if (code < kControlNames.size()) return kControlNames[code];
    if (code == 255) return "{ascii 255}";
    return CString(&c, 1);
}
