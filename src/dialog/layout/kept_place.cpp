// The place of a window as it is kept from run to run.
#include "dialog/layout/kept_place.h"

#include <array>
#include <charconv>
#include <cstdlib>

namespace toolbox::dialog {
namespace {

constexpr std::string_view kMaximized = "max";
constexpr int kFarthest = 1'000'000;  // pixels: no screen is there
constexpr int kLowestDpi = 24, kHighestDpi = 2400;

}  // namespace

std::optional<int> takeNumber(std::string_view& text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || std::abs(value) > kFarthest) return {};
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (text.empty()) return value;
    if (!text.starts_with(' ')) return {};
    text.remove_prefix(1);
    return value;
}

std::string printPlace(const KeptPlace& place) {
    std::string text;
    for (const int number : {place.box.left, place.box.top, place.box.width(), place.box.height()})
        text += std::to_string(number) + " ";
    text += std::to_string(place.dpi);
    if (place.isMaximized) text.append(" ").append(kMaximized);
    return text;
}

std::optional<KeptPlace> scanPlace(std::string_view text) {
    std::array<int, 5> numbers{};
    for (int& number : numbers) {
        const std::optional<int> taken = takeNumber(text);
        if (!taken) return {};
        number = *taken;
    }
    const auto [left, top, width, height, dpi] = numbers;
    if (width <= 0 || height <= 0 || dpi < kLowestDpi || dpi > kHighestDpi) return {};
    if (!text.empty() && text != kMaximized) return {};
    return KeptPlace{{left, top, left + width, top + height}, dpi, !text.empty()};
}

Box placeAgain(const KeptPlace& kept, const Box& present, bool withSize, int dpi,
               std::span<const Box> screens) {
    const int width = withSize ? scaled(kept.box.width(), kept.dpi, dpi) : present.width();
    const int height = withSize ? scaled(kept.box.height(), kept.dpi, dpi) : present.height();
    const Box wanted{kept.box.left, kept.box.top, kept.box.left + width, kept.box.top + height};
    return ontoScreens(wanted, screens, withSize);
}

}  // namespace toolbox::dialog
