// diff: what tells two block files apart.
#include <algorithm>
#include <cstring>

#include "commands.h"
#include "file/block_lookup.h"
#include "json.h"
#include "open_file.h"
#include "toolbox/utf8.h"

namespace tbfile {
namespace {

class Differences {
  public:
    explicit Differences(bool json) : json_(json) {
        if (json_) print("{\"differences\":[");
    }

    void header(const char* field, Text name, const std::string& a, const std::string& b) {
        if (a == b) return;
        tell(jsonObject({{"header", std::string(field)}, {"a", a}, {"b", b}}),
             say(Text::diffHeader, {say(name), a, b}));
    }
    void onlyIn(const char* side, Text text, std::uint32_t id) {
        tell(jsonObject({{"id", std::uint64_t{id}}, {"onlyIn", std::string(side)}}),
             say(text, {std::to_string(id)}));
    }
    void block(std::uint32_t id, const char* field, Text name, const std::string& a,
               const std::string& b) {
        if (a == b) return;
        tell(jsonObject(
                 {{"id", std::uint64_t{id}}, {"field", std::string(field)}, {"a", a}, {"b", b}}),
             say(Text::diffBlock, {std::to_string(id), say(name), a, b}));
    }
    void data(std::uint32_t id, std::uint64_t at) {
        tell(jsonObject({{"id", std::uint64_t{id}}, {"field", std::string("data")}, {"from", at}}),
             say(Text::diffData, {std::to_string(id), std::to_string(at)}));
    }

    [[nodiscard]] int finish() const {
        if (json_)
            print("],\"equal\":" + std::string(count_ == 0 ? "true" : "false") + "}\n");
        else
            print(say(count_ == 0 ? Text::diffNone : Text::diffCount, {grouped(count_)}) + "\n");
        return count_ == 0 ? kSound : kFindings;
    }

  private:
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
        const char* left = a.window.at(inA.offset + a.map.shape.layout().head() + done, n);
        const char* right = b.window.at(inB.offset + b.map.shape.layout().head() + done, n);
        if (!left || !right) return done;
        if (std::memcmp(left, right, n) != 0) {
            const auto* other = std::mismatch(left, left + n, right).first;
            return done + static_cast<std::uint64_t>(other - left);
        }
        done += n;
    }
    return length;
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
    differences.header("created", Text::nameCreated, dayText(a.dates[0]), dayText(b.dates[0]));
    differences.header("stamped", Text::nameStamped, dayText(a.dates[1]), dayText(b.dates[1]));
    differences.header("net", Text::nameNet, dayText(a.dates[2]), dayText(b.dates[2]));
}

void compareBlocks(OpenFile& a, const BlocItem& entryA, OpenFile& b, const BlocItem& entryB,
                   Differences& differences) {
    const std::uint32_t id = entryA.id;
    const Frame inA = a.block(entryA);
    const Frame inB = b.block(entryB);
    const Label labelA = labelOf(a.window, a.map.shape, inA);
    const Label labelB = labelOf(b.window, b.map.shape, inB);
    const auto number = [&](const char* field, Text name, std::uint32_t x, std::uint32_t y) {
        differences.block(id, field, name, std::to_string(x), std::to_string(y));
    };
    differences.block(id, "description", Text::nameDescription, toolbox::toUtf8(labelA.description),
                      toolbox::toUtf8(labelB.description));
    number("version", Text::nameVersion, labelA.version, labelB.version);
    number("recordVersion", Text::nameRecordVersion, labelA.recordVersion, labelB.recordVersion);
    number("length", Text::nameLength, inA.length, inB.length);
    const std::uint64_t at = firstDifference(a, inA, b, inB);
    if (at < std::min(inA.length, inB.length)) differences.data(id, at);
}

}  // namespace

int compare(const Options& options) {
    OpenFile a(options.input);
    OpenFile b(options.output);
    const std::vector<BlocItem> inA = a.entries();
    const std::vector<BlocItem> inB = b.entries();
    toolbox::BlockLookup findA;
    toolbox::BlockLookup findB;
    Differences differences(options.json);
    compareHeaders(a.map.header, b.map.header, !options.ignoreDates, differences);
    for (const BlocItem& entry : inA) {
        const auto other = findB.find(inB, entry.id);
        if (other)
            compareBlocks(a, entry, b, inB[*other], differences);
        else
            differences.onlyIn("a", Text::diffOnlyA, entry.id);
    }
    for (const BlocItem& entry : inB)
        if (!findA.find(inA, entry.id)) differences.onlyIn("b", Text::diffOnlyB, entry.id);
    return differences.finish();
}

}  // namespace tbfile
