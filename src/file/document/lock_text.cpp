// Lines of a name and a value, read one by one; what is missing makes the lock unreadable.
#include "file/document/lock_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <optional>

#include "toolbox/utf8.h"

namespace toolbox::locks {
namespace {

constexpr std::string_view kFirstLine = "Document lock 1";
constexpr std::string_view kProcess = "process";
constexpr std::string_view kTaken = "taken";
constexpr std::string_view kSeen = "seen";
constexpr std::size_t kTimeDigits = 20;
constexpr std::size_t kTokenDigits = 32;

struct TextField {
    std::string_view name;
    std::string LockHolder::*value;
};

constexpr auto kTexts = std::to_array<TextField>({{"user", &LockHolder::user},
                                                  {"host", &LockHolder::host},
                                                  {"machine", &LockHolder::machine},
                                                  {"boot", &LockHolder::boot},
                                                  {"start", &LockHolder::start},
                                                  {"token", &LockHolder::token}});

/// A text that stays in its line and in a dialog.
std::string tame(std::string_view text) {
    constexpr std::size_t kMost = 200;
    constexpr char kDelete = '\x7F';
    std::string tamed(text.substr(0, kMost));
    std::ranges::replace_if(
        tamed, [](char c) { return (c >= 0 && c < ' ') || c == kDelete; }, '?');
    return tamed;
}

std::string line(std::string_view name, std::string_view value) {
    return std::string(name) + ": " + std::string(value) + '\n';
}

/// A moment as people read it.
std::string dateText(std::int64_t seconds) {
    using namespace std::chrono;
    const sys_seconds moment{std::chrono::seconds(seconds)};
    const auto day = floor<days>(moment);
    const year_month_day date(day);
    const hh_mm_ss time(moment - day);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02u %02d:%02d UTC",
                  static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()), static_cast<int>(time.hours().count()),
                  static_cast<int>(time.minutes().count()));
    return text.data();
}

/// The number that a value begins with; none for one that begins with none.
template <class Number>
std::optional<Number> numberIn(std::string_view value) {
    Number number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    return error == std::errc() && number >= 0 ? std::optional(number) : std::nullopt;
}

/// The value of the line of that name; none when there is no such line.
std::optional<std::string_view> valueOf(std::string_view text, std::string_view name) {
    const std::string start = '\n' + std::string(name) + ": ";
    const std::size_t at = text.find(start);
    if (at == std::string_view::npos) return std::nullopt;
    const std::string_view rest = text.substr(at + start.size());
    return rest.substr(0, rest.find('\n'));
}

/// Same bytes, same digits, on every machine.
std::string digestOf(std::string_view bytes) {
    constexpr std::uint64_t kBasis = 14695981039346656037u;
    constexpr std::uint64_t kPrime = 1099511628211u;
    std::uint64_t sum = kBasis;
    for (const char byte : bytes) sum = (sum ^ static_cast<unsigned char>(byte)) * kPrime;
    std::array<char, 20> digits{};
    std::snprintf(digits.data(), digits.size(), "?%016llx", static_cast<unsigned long long>(sum));
    return digits.data();
}

bool isToken(std::string_view text) {
    return text.size() == kTokenDigits &&
           text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

}  // namespace

std::string seenLine(std::int64_t seconds) {
    const std::string digits = std::to_string(std::max<std::int64_t>(seconds, 0));
    return line(kSeen, std::string(kTimeDigits - digits.size(), '0') + digits);
}

std::string textOf(const LockHolder& holder) {
    std::string text = std::string(kFirstLine) + '\n';
    for (const TextField& field : kTexts)
        text += line(field.name, toUtf8(tame(holder.*field.value)));
    const std::int64_t taken = std::max<std::int64_t>(holder.taken, 0);
    return text + line(kProcess, std::to_string(holder.process)) +
           line(kTaken, std::to_string(taken) + " (" + dateText(taken) + ')') +
           seenLine(holder.seen);
}

LockHolder holderIn(std::string_view bytes) {
    LockHolder holder;
    const std::string start = std::string(kFirstLine) + '\n';
    const bool isLock = bytes.starts_with(start) && bytes.ends_with('\n');
    const auto process = numberIn<std::uint32_t>(valueOf(bytes, kProcess).value_or(""));
    const auto taken = numberIn<std::int64_t>(valueOf(bytes, kTaken).value_or(""));
    const auto seen = numberIn<std::int64_t>(valueOf(bytes, kSeen).value_or(""));
    bool isWhole = isLock && process && taken && seen;
    for (const TextField& field : kTexts) {
        const auto value = valueOf(bytes, field.name);
        isWhole = isWhole && value;
        holder.*field.value = tame(fromUtf8(value.value_or("")));
    }
    if (!isWhole || !isToken(holder.token)) {
        holder = {};
        holder.token = digestOf(bytes);
        return holder;
    }
    holder.process = *process;
    holder.taken = *taken;
    holder.seen = *seen;
    return holder;
}

}  // namespace toolbox::locks
