// A field that cannot be read is left out, and the trace told: half a rule would refuse what is
// right or, unseen, take what is wrong.
#include "dialog/numbers/number_rules.h"

#include <string>
#include <type_traits>

#include "base/entered_number.h"
#include "base/trimmed.h"
#include "text/text_resources.h"
#include "toolbox/diagnostics.h"
#include "toolbox/numbers.h"

namespace toolbox::numbers {
namespace {

/// Somebody who looks at any traces wants to see these.
constexpr unsigned long kEveryCategory = 0xFFFFFFFF;

template <class T>
constexpr std::string_view kTag;
template <>
constexpr std::string_view kTag<short> = "TVSHORT";
template <>
constexpr std::string_view kTag<unsigned short> = "TVUSHORT";
template <>
constexpr std::string_view kTag<long> = "TVLONG";
template <>
constexpr std::string_view kTag<unsigned long> = "TVULONG";
template <>
constexpr std::string_view kTag<float> = "TVFLOAT";
template <>
constexpr std::string_view kTag<double> = "TVDOUBLE";

/// Cuts what precedes the first separator off the rest.
std::string_view takeField(std::string_view& rest, char separator = '|') {
    const std::size_t end = rest.find(separator);
    const std::string_view field = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return field;
}

template <class T>
bool readNumber(std::string_view field, T& out) {
    return base::readEntry(field, true, out).fault == base::EntryFault::none;
}

/// "width,decimals,L" or R; the two latter may be missing.
bool readLayout(std::string_view field, NumberLayout& out) {
    NumberLayout layout;
    if (!readNumber(takeField(field, ','), layout.width)) return false;
    const std::string_view decimals = base::trimmed(takeField(field, ','));
    if (!decimals.empty() && (!readNumber(decimals, layout.decimals) || layout.decimals < 0))
        return false;
    const std::string_view letter = base::trimmed(field);
    if (!letter.empty() && letter != "L" && letter != "R") return false;
    if (!isLayout(layout.width, layout.decimals)) return false;
    layout.justification = letter == "L" ? Left : Right;
    out = layout;
    return true;
}

template <class T>
class RulesReader {
  public:
    explicit RulesReader(unsigned int id) : id_(id) {}

    SuppliedRules<T> read() {
        const std::string text = text::loadText(id_);
        std::string_view rest = text;
        if (takeField(rest) != kTag<T>) {
            complain("no text with the tag", kTag<T>);
            return {};
        }
        rules_.message = takeField(rest);
        if (!rules_.message.empty()) rules_.bits |= TvNumberRules::HasMessage;
        takeNumber(rest, TvNumberRules::Minimum, "minimum", rules_.minimum);
        takeNumber(rest, TvNumberRules::Maximum, "maximum", rules_.maximum);
        takeNumber(rest, TvNumberRules::HasDefault, "default", rules_.defaultValue);
        takeLayout(takeField(rest));
        const std::string_view unused = takeField(rest);
        if (!unused.empty()) complain("a seventh field, which is to be empty:", unused);
        while (!rest.empty()) {
            T value{};
            const std::size_t before = rest.size();
            takeNumber(rest, TvNumberRules::ForbiddenValues, "forbidden value", value, true);
            if (rest.size() == before) break;
        }
        dropEmptyRange();
        if (rules_.bits == 0) complain("no rule in", text);
        return rules_;
    }

  private:
    void takeNumber(std::string_view& rest, TvNumberRules::Rule bit, const char* what, T& out,
                    bool isForbidden = false) {
        const std::string_view field = takeField(rest);
        if (field.empty()) return;
        if (!readNumber(field, out)) return complain(what, field);
        rules_.bits |= bit;
        if (isForbidden) rules_.forbidden.push_back(out);
    }

    void takeLayout(std::string_view field) {
        if (field.empty()) return;
        if (!readLayout(field, rules_.layout)) return complain("format", field);
        rules_.bits |= TvNumberRules::HasFormat;
    }

    void dropEmptyRange() {
        constexpr unsigned char kBoth = TvNumberRules::Minimum | TvNumberRules::Maximum;
        if ((rules_.bits & kBoth) != kBoth || rules_.minimum <= rules_.maximum) return;
        complain("minimum above the maximum", shortestText(rules_.maximum));
        rules_.bits = static_cast<unsigned char>(rules_.bits & ~kBoth);
    }

    void complain(const char* what, std::string_view field) const {
        CTvTrace::Trace(kEveryCategory, "number rule %u: %s \"%s\"", id_, what,
                        std::string(field).c_str());
    }

    unsigned int id_;
    SuppliedRules<T> rules_;
};

}  // namespace

bool isLayout(int width, int decimals) {
    constexpr int kWidest = 80;
    return width >= 1 && width <= kWidest && decimals >= -1 && decimals < width;
}

template <class T>
SuppliedRules<T> readRules(unsigned int id) {
    return RulesReader<T>(id).read();
}

template SuppliedRules<short> readRules(unsigned int);
template SuppliedRules<unsigned short> readRules(unsigned int);
template SuppliedRules<long> readRules(unsigned int);
template SuppliedRules<unsigned long> readRules(unsigned int);
template SuppliedRules<float> readRules(unsigned int);
template SuppliedRules<double> readRules(unsigned int);

}  // namespace toolbox::numbers
