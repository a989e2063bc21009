// Texts in runs. Every character is put on its own or with its run; one that the fonts lack leaves
// '?' and a note of what it was.
#include <algorithm>
#include <numeric>
#include <optional>
#include <utility>

#include "base/windows1252.h"
#include "canvas/font/symbol.h"
#include "canvas/font/widths.h"
#include "toolbox/canvas_text.h"

namespace canvas = toolbox::canvas;
namespace base = toolbox::base;

namespace {

constexpr char kNoBreakSpace = '\xA0';
constexpr char kSoftHyphen = '\xAD';

/// A raised or lowered character of Unicode.
struct Script {
    char byte;
    bool symbol;
    int level;
};

std::optional<Script> scriptOf(char32_t code) {
    constexpr std::string_view kSigns = "0123456789+-=()";
    if (code == 0x2071) return Script{'i', false, 1};
    if (code == 0x207F) return Script{'n', false, 1};
    const bool raised = code == 0x2070 || (code >= 0x2074 && code <= 0x207E);
    const bool lowered = code >= 0x2080 && code <= 0x208E;
    if (!raised && !lowered) return std::nullopt;
    const char sign = kSigns[code & 0xF];
    return Script{sign, sign == '-', raised ? 1 : -1};  // the minus of Symbol has the plus's length
}

bool isSpace(char32_t code) {
    return (code >= 0x2000 && code <= 0x200A) || code == 0x202F || code == 0x205F || code == 0x3000;
}

/// Windows-1252 bytes with their line ends as '\n'.
std::string withPlainBreaks(std::string_view text) {
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != '\r' || i + 1 == text.size() || text[i + 1] != '\n') plain += text[i];
    return plain;
}

bool canStand(char byte, bool symbol) {
    if (byte == '\n') return true;
    return canvas::hasCharacter(byte, symbol) && (symbol || byte != kSoftHyphen);
}

bool isRun(const TvTextRun& run) {
    return !run.bytes.empty() && run.level >= -1 && run.level <= 1 &&
           std::all_of(run.bytes.begin(), run.bytes.end(),
                       [&](char byte) { return canStand(byte, run.symbol); });
}

bool areRuns(const std::vector<TvTextRun>& runs) {
    const auto same = [](const TvTextRun& a, const TvTextRun& b) {
        return a.symbol == b.symbol && a.level == b.level;
    };
    return std::all_of(runs.begin(), runs.end(), isRun) &&
           std::adjacent_find(runs.begin(), runs.end(), same) == runs.end();
}

/// Whether each fault, in order, has its '?'.
bool areFaults(const std::vector<TvTextRun>& runs, const std::vector<TvTextFault>& faults) {
    auto run = runs.begin();
    std::size_t start = 0;
    std::size_t least = 0;
    for (const TvTextFault& fault : faults) {
        if (fault.place < least) return false;
        while (run != runs.end() && fault.place - start >= run->bytes.size())
            start += (run++)->bytes.size();
        if (run == runs.end() || run->symbol || run->bytes[fault.place - start] != '?')
            return false;
        least = fault.place + 1;
    }
    return true;
}

}  // namespace

TvText::TvText(std::string_view windows1252) {
    // Most texts have nothing but characters that stand as they are.
    const auto plain = [](char byte) { return canStand(byte, false); };
    if (windows1252.empty()) return;
    if (std::all_of(windows1252.begin(), windows1252.end(), plain)) {
        runs_.push_back({std::string(windows1252)});
        length_ = windows1252.size();
        return;
    }
    for (const char byte : withPlainBreaks(windows1252)) {
        if (plain(byte))
            put(byte, false, 0);
        else if (byte == kSoftHyphen)
            put('-', false, 0);
        else
            putMissing(static_cast<unsigned char>(byte));
    }
}

void TvText::put(char byte, bool symbol, int level) {
    if (runs_.empty() || runs_.back().symbol != symbol || runs_.back().level != level)
        runs_.push_back({{}, symbol, level});
    runs_.back().bytes += byte;
    ++length_;
}

void TvText::putMissing(char32_t code) {
    faults_.push_back({length_, code});
    put('?', false, 0);
}

void TvText::putCode(char32_t code) {
    const bool hyphen = code == 0x2010 || code == 0x2011 || code == 0xAD;
    const char byte = hyphen          ? '-'
                      : isSpace(code) ? kNoBreakSpace
                      : code == '?'   ? '?'
                                      : base::byteOf1252(code);
    const bool in1252 = (byte != '?' || code == '?') && canStand(byte, false);
    // The exponents 1, 2 and 3 have characters of their own, but "-2" shall stand on one level.
    const bool afterRaised = !runs_.empty() && runs_.back().level == 1;
    if (afterRaised && (code == 0xB9 || code == 0xB2 || code == 0xB3))
        put(code == 0xB9 ? '1' : static_cast<char>('0' + (code & 0xF)), false, 1);
    else if (in1252)
        put(byte, false, 0);
    else if (const auto script = scriptOf(code))
        put(script->byte, script->symbol, script->level);
    else if (const char sign = canvas::symbolOf(code))
        put(sign, true, 0);
    else
        putMissing(code);
}

TvText& TvText::addUtf8(std::string_view utf8) {
    const std::string plain = withPlainBreaks(utf8);
    for (std::string_view rest = plain; !rest.empty();) putCode(base::takeUtf8(rest));
    return *this;
}

TvText& TvText::append(const TvText& text, const int* level) {
    const TvText other = text;  // it may be this text
    for (const TvTextRun& run : other.runs_) {
        const int wanted = level ? *level : run.level;
        if (!runs_.empty() && runs_.back().symbol == run.symbol && runs_.back().level == wanted)
            runs_.back().bytes += run.bytes;
        else
            runs_.push_back({run.bytes, run.symbol, wanted});
    }
    for (const TvTextFault& fault : other.faults_)
        faults_.push_back({length_ + fault.place, fault.code});
    length_ += other.length_;
    return *this;
}

TvText& TvText::add(const TvText& text) {
    return append(text, nullptr);
}

TvText& TvText::superscript(const TvText& text) {
    constexpr int kRaised = 1;
    return append(text, &kRaised);
}

TvText& TvText::subscript(const TvText& text) {
    constexpr int kLowered = -1;
    return append(text, &kLowered);
}

std::string TvText::utf8() const {
    std::string text;
    for (const TvTextRun& run : runs_) {
        if (!run.symbol) {
            text += base::utf8From1252(run.bytes);
            continue;
        }
        for (const char byte : run.bytes)
            base::appendUtf8(text, byte == '\n' ? U'\n' : canvas::unicodeOfSymbol(byte));
    }
    return text;
}

std::string TvText::windows1252() const {
    return base::utf8To1252(utf8());
}

bool TvText::assign(std::vector<TvTextRun> runs, std::vector<TvTextFault> faults) {
    const bool sound = areRuns(runs) && areFaults(runs, faults);
    runs_ = sound ? std::move(runs) : std::vector<TvTextRun>();
    faults_ = sound ? std::move(faults) : std::vector<TvTextFault>();
    length_ = std::accumulate(
        runs_.begin(), runs_.end(), std::size_t{0},
        [](std::size_t sum, const TvTextRun& run) { return sum + run.bytes.size(); });
    return sound;
}
