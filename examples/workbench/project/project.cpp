// Beams and labels are kept in the order of their identifiers and found by binary search.
#include "project/project.h"

#include <algorithm>
#include <cmath>

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
std::uint32_t putInto(std::vector<Item>& items, std::uint32_t& last, Item item) {
    if (item.id == 0) item.id = last + 1;
    const std::uint32_t id = item.id;
    last = std::max(last, id);
    const auto place = placeOf(items, id);
    if (place != items.end() && place->id == id)
        *place = std::move(item);
    else
        items.insert(place, std::move(item));
    return id;
}

template <class Item>
bool removeFrom(std::vector<Item>& items, std::uint32_t id) {
    return std::erase_if(items, [id](const Item& item) { return item.id == id; }) > 0;
}

}  // namespace

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
    return isPlace(label.x, label.y) && label.alignment <= Label::Right &&
           label.text.length() <= kLabelMax;
}

const Beam* Project::beam(std::uint32_t id) const {
    return find(beams_, id);
}
const Label* Project::label(std::uint32_t id) const {
    return find(labels_, id);
}

std::uint32_t Project::put(Beam beam) {
    return isSound(beam) ? putInto(beams_, lastBeam_, std::move(beam)) : 0;
}
std::uint32_t Project::put(Label label) {
    return isSound(label) && beam(label.beam) ? putInto(labels_, lastLabel_, std::move(label)) : 0;
}

bool Project::removeBeam(std::uint32_t id) {
    std::erase_if(labels_, [id](const Label& label) { return label.beam == id; });
    return removeFrom(beams_, id);
}
bool Project::removeLabel(std::uint32_t id) {
    return removeFrom(labels_, id);
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
