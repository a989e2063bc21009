// Checks numbers against the limits of range texts. A message prints the limits as the kind of
// number that was checked.
#include "text/message_ranges.h"

#include <algorithm>
#include <array>
#include <limits>
#include <type_traits>

#include "base/number_scan.h"
#include "base/template_text.h"
#include "text/text_resources.h"
#include "toolbox/messages.h"

namespace toolbox::text {
namespace {

/// The next field of a list; commas in a row count as one. Nothing at the end.
std::optional<std::string_view> nextField(std::string_view& rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(','), rest.size()));
    if (rest.empty()) return {};
    const std::string_view field = rest.substr(0, rest.find(','));
    rest.remove_prefix(field.size());
    return field;
}

/// Room for a range text and its terminator.
using RangeBuffer = char[257 + 1];

template <class Limit>
struct Range {
    std::string_view message;
    Limit minimum;
    Limit maximum;
};

template <class Limit>
std::optional<Range<Limit>> parseRange(std::string_view text) {
    const auto message = nextField(text);
    const auto minimum = nextField(text);
    const auto maximum = nextField(text);
    if (!maximum) return {};
    return Range<Limit>{*message, leadingNumber<Limit>(*minimum), leadingNumber<Limit>(*maximum)};
}

void showRefusal(std::string_view message, MessageArguments limits) {
    MessageBuffer printed;
    base::printTemplateValues(printed, sizeof printed, std::string(message).c_str(), limits);
    platform::current().prompt->messageBox(
        GMSG::isValidParent() ? GMSG::getParent() : nullptr, printed,
        GMSG::language == GMSG::French ? "Erreur" : "Error", MB_ICONQUESTION | MB_TASKMODAL);
}

}  // namespace

template <class Number>
Number leadingNumber(std::string_view text) {
    if constexpr (std::is_floating_point_v<Number>) {
        return base::leadingReal(text);
    } else {
        using Limits = std::numeric_limits<Number>;
        return static_cast<Number>(
            std::clamp<long long>(base::leadingInteger(text), Limits::min(), Limits::max()));
    }
}

template <class Number>
int checkRange(Number value, unsigned short formatId) {
    using Limit = std::conditional_t<std::is_same_v<Number, float>, double, Number>;
    if (formatId == 0 || !GMSG::getInstance()) return 1;
    RangeBuffer text;
    if (GMSG::loadString(formatId, text, sizeof text) == 0) return 0;
    const auto range = parseRange<Limit>(text);
    if (!range || (static_cast<Number>(range->minimum) <= value &&
                   value <= static_cast<Number>(range->maximum)))
        return 1;
    showRefusal(range->message,
                std::array{messageArgument(range->minimum), messageArgument(range->maximum)});
    return 0;
}

template int leadingNumber(std::string_view);
template long leadingNumber(std::string_view);
template double leadingNumber(std::string_view);
template int checkRange(int, unsigned short);
template int checkRange(long, unsigned short);
template int checkRange(float, unsigned short);
template int checkRange(double, unsigned short);

std::optional<std::string> displayFormat(unsigned short formatId) {
    RangeBuffer text;
    if (formatId == 0 || GMSG::loadString(formatId, text, sizeof text) == 0) return {};
    std::string_view rest(text);
    std::optional<std::string_view> field;
    for (int i = 0; i < 4; ++i) field = nextField(rest);
    if (!field) return {};
    return std::string(*field);
}

}  // namespace toolbox::text

int GMSG::checkDouble(double& x, unsigned short formatId) {
    return toolbox::text::checkRange(x, formatId);
}
