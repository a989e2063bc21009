// Every change is an exchange of items by an edit on the stack; results are computed with it.
#include "project/open_project.h"

#include <algorithm>
#include <memory>

#include "project/project_keys.h"
#include "resources/workbench_texts.h"
#include "toolbox/diagnostics.h"

void OpenProject::setProject(Project project) {
    steps_.clear();
    project_ = std::move(project);
    touched_ = {};
    forgetResults();
}

const BeamResults* OpenProject::results(std::size_t index) const {
    TVASSERT(results_.size() == project_.beams().size());
    return index < results_.size() && results_[index] ? &*results_[index] : nullptr;
}

void OpenProject::forgetResults() {
    results_.assign(project_.beams().size(), std::nullopt);
}

void OpenProject::compute(std::size_t index) {
    const Beam& beam = project_.beams()[index];
    const Section* const section = sectionOf(beam);
    results_[index].reset();
    if (section) results_[index] = computer_.compute(beam, *section);
}

std::size_t OpenProject::indexOf(std::uint32_t beam) const {
    const auto place = std::ranges::lower_bound(project_.beams(), beam, {}, &Beam::id);
    return static_cast<std::size_t>(place - project_.beams().begin());
}

bool OpenProject::setCurrentKeys(ProjectKeys& keys, std::size_t index) const {
    static const Section none;
    static const BeamResults nothing;
    if (index >= project_.beams().size()) return false;
    const Beam& beam = project_.beams()[index];
    const Section* const section = sectionOf(beam);
    const BeamResults* const found = results(index);
    keys.setCurrent(beam, section ? *section : none, found ? *found : nothing);
    return found != nullptr;
}

Edit::Outcome OpenProject::change(ProjectChange change, StepName name, unsigned gesture) {
    performing_ = true;
    const Edit::Outcome outcome = steps_.perform(
        std::make_unique<ProjectEdit>(*this, std::move(name), std::move(change)), gesture);
    performing_ = false;
    return outcome;
}

bool OpenProject::perform(unsigned short step, ProjectChange items) {
    return change(
               std::move(items), [step] { return text(step); }, 0) != Edit::Failed;
}

std::uint32_t OpenProject::put(Beam beam, unsigned short step) {
    if (!isSound(beam)) return 0;
    if (step == 0) step = beam.id == 0 ? kStepAddBeam : kStepEditBeam;
    if (beam.id == 0) beam.id = project_.newBeamId();
    const std::uint32_t id = beam.id;
    ProjectChange change;
    change.beams.emplace_back(id, std::move(beam));
    return perform(step, std::move(change)) ? id : 0;
}

bool OpenProject::put(std::vector<Label> labels, unsigned short step) {
    ProjectChange change;
    std::uint32_t id = project_.newLabelId(), rank = project_.newRank();
    for (Label& label : labels) {
        if (!isSound(label) || !project_.beam(label.beam)) return false;
        if (label.id == 0) label.id = id++;
        if (label.rank == 0) label.rank = rank++;
        const std::uint32_t key = label.id;
        change.labels.emplace_back(key, std::move(label));
    }
    return perform(step, std::move(change));
}

bool OpenProject::moveBeam(std::uint32_t id, double x, double y) {
    const Beam* const found = project_.beam(id);
    if (!found) return false;
    Beam beam = *found;
    beam.x = x;
    beam.y = y;
    bool isSoundThere = isSound(beam);
    ProjectChange change;
    for (Label label : project_.labels()) {
        if (label.beam != id) continue;
        label.tag.anchor.x += x - found->x;
        label.tag.anchor.y += y - found->y;
        isSoundThere &= isSound(label);
        change.labels.emplace_back(label.id, std::move(label));
    }
    change.beams.emplace_back(id, std::move(beam));
    return isSoundThere && perform(kStepMoveBeam, std::move(change));
}

bool OpenProject::remove(const Selection& selection) {
    if (!has(selection)) return false;
    ProjectChange change;
    switch (selection.kind) {
        case Selection::OneBeam:
            change.beams.emplace_back(selection.id, std::nullopt);
            for (const Label& label : project_.labels())
                if (label.beam == selection.id) change.labels.emplace_back(label.id, std::nullopt);
            return perform(kStepDeleteBeam, std::move(change));
        case Selection::OneLabel:
            change.labels.emplace_back(selection.id, std::nullopt);
            return perform(kStepDeleteLabel, std::move(change));
        case Selection::OneLoad: {
            Beam beam = *project_.beam(selection.id);
            beam.loads.erase(beam.loads.begin() + static_cast<std::ptrdiff_t>(selection.load));
            return put(std::move(beam), kStepDeleteLoad) != 0;
        }
        default:
            return false;
    }
}

void OpenProject::beginExchange(std::size_t beams, std::size_t labels) {
    touched_ = {};
    project_.makeRoom(beams, labels);
    results_.reserve(project_.beams().capacity());
}

void OpenProject::exchange(std::uint32_t id, std::optional<Beam>& beam) {
    const std::size_t before = project_.beams().size();
    project_.exchange(id, beam);
    const std::size_t index = indexOf(id), after = project_.beams().size();
    const auto place = results_.begin() + static_cast<std::ptrdiff_t>(index);
    if (after < before)
        results_.erase(place);
    else if (after > before)
        results_.insert(place, std::nullopt);
    if (after >= before) compute(index);
    if (!performing_) touched_ = {Selection::OneBeam, id};
}

void OpenProject::exchange(std::uint32_t id, std::optional<Label>& label) {
    const Label* const before = project_.label(id);
    const std::uint32_t beam = before ? before->beam : label ? label->beam : 0;
    project_.exchange(id, label);
    // The labels of a beam go with it.
    if (!performing_ && !(touched_ == Selection{Selection::OneBeam, beam}))
        touched_ = {Selection::OneLabel, id};
}

bool OpenProject::has(const Selection& selection) const {
    if (selection.kind == Selection::OneLabel) return project_.label(selection.id) != nullptr;
    const Beam* const beam = project_.beam(selection.id);
    return beam && selection.kind != Selection::Nothing &&
           (selection.kind == Selection::OneBeam || selection.load < beam->loads.size());
}

Selection OpenProject::settled(const Selection& before) {
    const Selection touched = std::exchange(touched_, {});
    // A load of the beam stays selected.
    const bool isAboutIt = touched.id == before.id && (touched.kind == Selection::OneLabel) ==
                                                          (before.kind == Selection::OneLabel);
    if (has(touched) && !(has(before) && isAboutIt)) return touched;
    if (has(before)) return before;
    if (before.kind == Selection::OneLoad && project_.beam(before.id))
        return {Selection::OneBeam, before.id};
    return {};
}
