// Range checks of numbers by a text that holds the message and the limits.
#include <array>
#include <optional>
#include <string_view>

#include "base/number_scan.h"
#include "base/template_text.h"
#include "text/message_buffers.h"
#include "text/text_resources.h"
#include "toolbox/messages.h"

namespace {

using namespace toolbox;

/// The next field of a list; commas in a row count as one. Nothing at the end.
std::optional<std::string_view> nextField(std::string_view& rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(','), rest.size()));
    if (rest.empty()) return {};
    const std::string_view field = rest.substr(0, rest.find(','));
    rest.remove_prefix(field.size());
    return field;
}

struct Range {
    std::string message;
    double minimum;
    double maximum;
};

std::optional<Range> parseRange(std::string_view text) {
    const auto message = nextField(text);
    const auto minimum = nextField(text);
    const auto maximum = nextField(text);
    if (!maximum) return {};
    return Range{std::string(*message), base::leadingReal(*minimum), base::leadingReal(*maximum)};
}

}  // namespace

int GMSG::checkDouble(double& x, unsigned short formatId) {
    if (formatId == 0 || !getInstance()) return 1;
    constexpr int kRoom = 257 + 1;
    char rule[kRoom];
    if (loadString(formatId, rule, kRoom) == 0) return 0;
    const std::optional<Range> range = parseRange(rule);
    if (!range || (range->minimum <= x && x <= range->maximum)) return 1;

    const MessageArgument limits[] = {range->minimum, range->maximum};
    text::MessageBuffer printed;
    base::printTemplateValues(printed, sizeof printed, range->message.c_str(), limits);
    platform::current().prompt->messageBox(isValidParent() ? getParent() : nullptr, printed,
                                           language == French ? "Erreur" : "Error",
                                           MB_ICONQUESTION | MB_TASKMODAL);
    return 0;
}
