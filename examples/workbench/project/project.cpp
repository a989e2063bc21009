// Beams and labels are kept in the order of their identifiers and found by binary search.
#include "project/project.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace {

bool isPlace(double x, double y) {
    constexpr double kFar = 1e6;  // m
    return std::fabs(x) <= kFar && std::fabs(y) <= kFar;
}

bool isLoad(double load) {
    return std::fabs(load) <= kLoadMax;
}

/// The position of `id` among items in ascending order, or of the first after it.
template <class Items>
auto placeOf(Items& items, std::uint32_t id) {
    return std::ranges::lower_bound(items, id, {}, [](const auto& item) { return item.id; });
}

template <class Item>
const Item* find(const std::vector<Item>& items, std::uint32_t id) {
    const auto place = placeOf(items, id);
    return place != items.end() && place->id == id ? &*place : nullptr;
}

template <class Item>
void exchangeIn(std::vector<Item>& items, std::uint32_t id, std::optional<Item>& item) {
    const auto place = placeOf(items, id);
    if (place == items.end() || place->id != id) {
        if (item) items.insert(place, *std::exchange(item, std::nullopt));
    } else if (item) {
        std::swap(*place, *item);
    } else {
        item = std::move(*place);
        items.erase(place);
    }
}

template <class Item>
void makeRoomIn(std::vector<Item>& items, std::size_t more) {
    const std::size_t needed = items.size() + more;
    if (needed > items.capacity()) items.reserve(std::max(needed, 2 * items.size()));
}

template <class Item>
std::uint32_t putInto(Project& project, Item item, std::uint32_t newId) {
    if (item.id == 0) item.id = newId;
    const std::uint32_t id = item.id;
    std::optional<Item> given(std::move(item));
    project.exchange(id, given);
    return id;
}

}  // namespace

TvTag labelTag(const CString& text, double x, double y) {
    constexpr double kPoints = 12, kMargin = 4, kLeastScale = 8;  // points; points a metre
    TvTag tag;
    tag.text = text.str();
    tag.anchor = {x, y};
    tag.font = {.size = kPoints, .color = {38, 46, 56}};
    tag.line = {{170, 160, 110}, 1, {}};
    tag.margin = kMargin;
    tag.minScale = kLeastScale;
    setFramed(tag, true);
    return tag;
}

void setFramed(TvTag& tag, bool framed) {
    tag.border = framed ? TvTagBorder::frame : TvTagBorder::none;
    tag.fill = framed ? TvColor{255, 253, 232} : TvColor{255, 255, 255};
}

double snapped(double value, double step) {
    // Dividing by how many there are in 1 gives the number nearest to the decimal one.
    const double parts = std::round(1 / step);
    return std::round(value * parts) / parts + 0.0;
}

bool isSound(const Beam& beam) {
    const auto stands = [&](const PointLoad& load) {
        return load.position >= 0 && load.position <= beam.span && isLoad(load.force);
    };
    return beam.name.length() <= kNameMax && beam.section.length() <= kNameMax &&
           isPlace(beam.x, beam.y) && beam.span >= kSpanMin && beam.span <= kSpanMax &&
           isLoad(beam.uniform) && beam.loads.size() <= kLoadsMax &&
           std::ranges::all_of(beam.loads, stands);
}

bool isSound(const Label& label) {
    return isPlace(label.tag.anchor.x, label.tag.anchor.y) && label.tag.check(nullptr) &&
           label.tag.text.length() <= kLabelMax;
}

const Beam* Project::beam(std::uint32_t id) const {
    return find(beams_, id);
}
const Label* Project::label(std::uint32_t id) const {
    return find(labels_, id);
}

std::uint32_t Project::put(Beam beam) {
    return isSound(beam) ? putInto(*this, std::move(beam), newBeamId()) : 0;
}
std::uint32_t Project::put(Label label) {
    if (!isSound(label) || !beam(label.beam)) return 0;
    if (label.rank == 0) label.rank = newRank();
    return putInto(*this, std::move(label), newLabelId());
}

std::vector<const Label*> Project::labelsInOrder() const {
    std::vector<const Label*> labels;
    for (const Label& label : labels_) labels.push_back(&label);
    std::ranges::stable_sort(labels, {}, &Label::rank);
    return labels;
}

std::uint32_t Project::newRank() const {
    std::uint32_t top = 0;
    for (const Label& label : labels_) top = std::max(top, label.rank);
    return top + 1;
}

void Project::exchange(std::uint32_t id, std::optional<Beam>& beam) {
    exchangeIn(beams_, id, beam);
}
void Project::exchange(std::uint32_t id, std::optional<Label>& label) {
    exchangeIn(labels_, id, label);
}

void Project::makeRoom(std::size_t beams, std::size_t labels) {
    makeRoomIn(beams_, beams);
    makeRoomIn(labels_, labels);
}

Project sampleProject(std::size_t count, const std::vector<CString>& sections) {
    constexpr std::size_t kInRow = 10;
    Project project;
    for (std::size_t i = 0; i < count; ++i) {
        Beam beam;
        beam.name = "P" + std::to_string(i + 1);
        if (!sections.empty()) beam.section = sections[i % sections.size()];
        beam.span = 3 + 0.5 * static_cast<double>(i % 13);
        const std::size_t row = i / kInRow;
        beam.x = 12 * static_cast<double>(i % kInRow);
        beam.y = -5 * static_cast<double>(row);
        beam.uniform = 2 + static_cast<double>(i % 7);
        for (std::size_t load = 0; load < i % 4; ++load)
            beam.loads.push_back({beam.span * static_cast<double>(load + 1) / 4,
                                  5 + static_cast<double>((i + load) % 5)});
        project.put(std::move(beam));
    }
    return project;
}
