// diff: what tells two block files apart.
#include <algorithm>
#include <compare>
#include <cstring>
#include <map>

#include "commands/commands.h"
#include "commands/days.h"
#include "commands/open_file.h"
#include "terminal/json.h"
#include "toolbox/utf8.h"

namespace tbfile {
namespace {

/// A block by its identifier and, where several have that, by its number among them: 1 is the one
/// that readers see.
struct Which {
    std::uint32_t id;
    std::uint64_t number = 1;

    auto operator<=>(const Which&) const = default;

    [[nodiscard]] std::string text() const {
        const std::string name = std::to_string(id);
        return number == 1 ? name : name + " (" + std::to_string(number) + ")";
    }
};

class Differences {
  public:
    explicit Differences(bool json) : json_(json) {
        if (json_) print("{\"differences\":[");
    }

    void header(const char* field, Text name, const std::string& a, const std::string& b) {
        if (a == b) return;
        tell(jsonObject({{"header", std::string(field)}, {"a", a}, {"b", b}}),
             say(Text::diffHeader, {say(name), visible(a), visible(b)}));
    }
    void onlyIn(const char* side, Text text, const Which& which) {
        block(which, {"onlyIn", std::string(side)}, say(text, {which.text()}));
    }
    void damaged(const char* side, Text text, const Which& which) {
        block(which, {"damaged", std::string(side)}, say(text, {which.text()}));
    }
    void field(const Which& which, const char* field, Text name, const std::string& a,
               const std::string& b) {
        if (a == b) return;
        const JsonMember both{"field", std::string(field)};
        tell(jsonObject({idOf(which), numberOf(which), both, {"a", a}, {"b", b}}),
             say(Text::diffBlock, {which.text(), say(name), visible(a), visible(b)}));
    }
    void data(const Which& which, std::uint64_t at) {
        tell(jsonObject(
                 {idOf(which), numberOf(which), {"field", std::string("data")}, {"from", at}}),
             say(Text::diffData, {which.text(), std::to_string(at)}));
    }

    [[nodiscard]] int finish() const {
        if (json_)
            print("],\"equal\":" + std::string(count_ == 0 ? "true" : "false") + "}\n");
        else
            print(say(count_ == 0 ? Text::diffNone : Text::diffCount, {grouped(count_)}) + "\n");
        return count_ == 0 ? kSound : kFindings;
    }

  private:
    static JsonMember idOf(const Which& which) { return {"id", std::uint64_t{which.id}}; }
    static JsonMember numberOf(const Which& which) { return {"number", which.number}; }

    void block(const Which& which, const JsonMember& what, const std::string& text) {
        tell(jsonObject({idOf(which), numberOf(which), what}), text);
    }
    void tell(const Json& json, const std::string& text) {
        if (json_)
            print((count_ > 0 ? ",\n " : "\n ") + json.text);
        else
            print(text + "\n");
        stopIfUnread();
        ++count_;
    }

    bool json_;
    std::uint64_t count_ = 0;
};

/// Where the data of two blocks differs first; their length when it does not.
std::uint64_t firstDifference(OpenFile& a, const Frame& inA, OpenFile& b, const Frame& inB) {
    constexpr std::uint64_t kPiece = 64 * 1024;
    const std::uint64_t length = std::min(inA.length, inB.length);
    for (std::uint64_t done = 0; done < length;) {
        const auto n = static_cast<std::size_t>(std::min(kPiece, length - done));
        const char* left = a.window.at(inA.offset + a.map.shape.head + done, n);
        const char* right = b.window.at(inB.offset + b.map.shape.head + done, n);
        if (!left || !right) return done;
        if (std::memcmp(left, right, n) != 0) {
            const auto* other = std::mismatch(left, left + n, right).first;
            return done + static_cast<std::uint64_t>(other - left);
        }
        done += n;
    }
    return length;
}

/// What is no date is told by its number, so that two different ones differ.
std::string dayOrNumber(std::int32_t day) {
    const std::string text = dayText(day);
    return text.empty() ? std::to_string(day) : text;
}

void compareHeaders(const Header& a, const Header& b, bool dates, Differences& differences) {
    const auto number = [&](const char* field, Text name, std::uint32_t x, std::uint32_t y) {
        differences.header(field, name, std::to_string(x), std::to_string(y));
    };
    number("version", Text::nameVersion, a.version, b.version);
    number("mask", Text::nameMask, a.mask, b.mask);
    differences.header("description", Text::nameDescription, toolbox::toUtf8(a.description),
                       toolbox::toUtf8(b.description));
    number("formatVersion", Text::nameFormat, a.shape.format, b.shape.format);
    if (!dates) return;
    differences.header("created", Text::nameCreated, dayOrNumber(a.dates[0]),
                       dayOrNumber(b.dates[0]));
    differences.header("stamped", Text::nameStamped, dayOrNumber(a.dates[1]),
                       dayOrNumber(b.dates[1]));
    differences.header("net", Text::nameNet, dayOrNumber(a.dates[2]), dayOrNumber(b.dates[2]));
}

void compareBlocks(OpenFile& a, const BlocItem& entryA, OpenFile& b, const BlocItem& entryB,
                   const Which& which, Differences& differences) {
    const std::optional<Frame> inA = a.blockOf(entryA);
    const std::optional<Frame> inB = b.blockOf(entryB);
    if (!inA) differences.damaged("a", Text::diffDamagedA, which);
    if (!inB) differences.damaged("b", Text::diffDamagedB, which);
    if (!inA || !inB) return;
    const Label labelA = labelOf(a.window, a.map.shape, *inA);
    const Label labelB = labelOf(b.window, b.map.shape, *inB);
    const auto number = [&](const char* field, Text name, std::uint32_t x, std::uint32_t y) {
        differences.field(which, field, name, std::to_string(x), std::to_string(y));
    };
    differences.field(which, "description", Text::nameDescription,
                      toolbox::toUtf8(labelA.description), toolbox::toUtf8(labelB.description));
    number("version", Text::nameVersion, labelA.version, labelB.version);
    number("recordVersion", Text::nameRecordVersion, labelA.recordVersion, labelB.recordVersion);
    number("length", Text::nameLength, inA->length, inB->length);
    const std::uint64_t at = firstDifference(a, *inA, b, *inB);
    if (at < std::min(inA->length, inB->length)) differences.data(which, at);
}

/// Those blocks that an earlier one hides from readers.
std::map<Which, BlocItem> numbered(const std::vector<BlocItem>& repeated) {
    std::map<std::uint32_t, std::uint64_t> last;
    std::map<Which, BlocItem> blocks;
    for (const BlocItem& entry : repeated) {
        const std::uint64_t before = last.try_emplace(entry.id, 1).first->second++;
        blocks.insert({{entry.id, before + 1}, entry});
    }
    return blocks;
}

void compareFirsts(OpenFile& a, const std::vector<BlocItem>& inA, OpenFile& b,
                   const std::vector<BlocItem>& inB, Differences& differences) {
    EntryFinder findA;
    EntryFinder findB;
    for (const BlocItem& entry : inA) {
        const auto other = findB.find(inB, entry.id);
        if (other)
            compareBlocks(a, entry, b, inB[*other], {entry.id}, differences);
        else
            differences.onlyIn("a", Text::diffOnlyA, {entry.id});
    }
    for (const BlocItem& entry : inB)
        if (!findA.find(inA, entry.id)) differences.onlyIn("b", Text::diffOnlyB, {entry.id});
}

void compareRepeated(OpenFile& a, const std::map<Which, BlocItem>& inA, OpenFile& b,
                     const std::map<Which, BlocItem>& inB, Differences& differences) {
    for (const auto& [which, entry] : inA) {
        const auto other = inB.find(which);
        if (other != inB.end())
            compareBlocks(a, entry, b, other->second, which, differences);
        else
            differences.onlyIn("a", Text::diffOnlyA, which);
    }
    for (const auto& [which, entry] : inB)
        if (!inA.contains(which)) differences.onlyIn("b", Text::diffOnlyB, which);
}

}  // namespace

int compare(const Options& options) {
    OpenFile a(options.input);
    OpenFile b(options.output);
    const Entries inA = a.entries();
    const Entries inB = b.entries();
    Differences differences(options.json);
    compareHeaders(a.map.header, b.map.header, !options.ignoreDates, differences);
    compareFirsts(a, inA.firsts, b, inB.firsts, differences);
    compareRepeated(a, numbered(inA.repeated), b, numbered(inB.repeated), differences);
    return differences.finish();
}

}  // namespace tbfile
