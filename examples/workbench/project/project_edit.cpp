// The items wait in the edit while the others are in the project, and change places with them.
#include "project/project_edit.h"

#include <algorithm>
#include <numeric>

#include "project/open_project.h"

namespace {

/// True when each item stands in the project as it is here.
template <class Items, class Find>
bool areThere(const Items& items, Find find) {
    return std::ranges::all_of(items, [&](const auto& each) {
        const auto* const there = find(each.first);
        return there ? each.second && *there == *each.second : !each.second;
    });
}

template <class Items>
bool areOfTheSame(const Items& items, const Items& others) {
    return std::ranges::equal(
        items, others, {}, [](const auto& each) { return each.first; },
        [](const auto& each) { return each.first; });
}

std::size_t sizeOf(const std::optional<Beam>& beam) {
    if (!beam) return 0;
    return beam->name.length() + beam->section.length() + beam->loads.size() * sizeof(PointLoad);
}
std::size_t sizeOf(const std::optional<Label>& label) {
    return label ? label->tag.text.length() : 0;
}

template <class Items>
std::size_t sizeOfAll(const Items& items) {
    return std::transform_reduce(items.begin(), items.end(), items.capacity() * sizeof items[0],
                                 std::plus<>(),
                                 [](const auto& each) { return sizeOf(each.second); });
}

}  // namespace

ProjectEdit::ProjectEdit(OpenProject& project, StepName name, ProjectChange change)
    : project_(project), name_(std::move(name)), change_(std::move(change)) {}

bool ProjectEdit::isPointless() const {
    const Project& project = project_.project();
    return areThere(change_.beams, [&](std::uint32_t id) { return project.beam(id); }) &&
           areThere(change_.labels, [&](std::uint32_t id) { return project.label(id); });
}

Edit::Outcome ProjectEdit::apply() {
    if (isPointless()) return Pointless;
    exchange();
    return Done;
}

int ProjectEdit::revert() {
    exchange();
    return 1;
}

void ProjectEdit::exchange() {
    project_.beginExchange(change_.beams.size(), change_.labels.size());
    for (auto& [id, beam] : change_.beams) project_.exchange(id, beam);
    for (auto& [id, label] : change_.labels) project_.exchange(id, label);
}

CString ProjectEdit::text() const {
    return name_();
}

std::size_t ProjectEdit::size() const {
    return sizeof *this + sizeOfAll(change_.beams) + sizeOfAll(change_.labels);
}

Edit::Merging ProjectEdit::merge(Edit& later) {
    const auto* const next = dynamic_cast<const ProjectEdit*>(&later);
    if (!next || &next->project_ != &project_ ||
        !areOfTheSame(change_.beams, next->change_.beams) ||
        !areOfTheSame(change_.labels, next->change_.labels))
        return Apart;
    return isPointless() ? Annulled : Merged;
}
