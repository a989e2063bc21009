// The project keeps labels with their beams, as values; the tool works on a set of their tags. An
// edit is carried out on the set first, and the difference then put into the project as one step.
#include "drawing/label_tool.h"

#include <utility>
#include <vector>

#include "drawing/drawing_layout.h"
#include "drawing/drawing_view.h"
#include "frame/workbench.h"
#include "resources/workbench_texts.h"

LabelTool::LabelTool(DrawingView& view)
    : TvTagTool(view.getHWND(), tags, nullptr),
      view_(view),
      keys_(std::make_shared<LabelKeys>(view.shown().work())) {
    setUndo(&view.shown().steps());
    listenTo(&tags);
    follow();
}

const Project& LabelTool::project() const {
    return view_.project();
}

void LabelTool::follow() {
    if (isBusy_) return;
    isBusy_ = true;
    std::vector<TvTagState> states;
    std::size_t place = 0;
    for (const Label* const label : project().labelsInOrder()) {
        const auto known = tags.find(label->id);
        if (!known || *known != label->tag || tags.place(label->id) != place)
            states.push_back({label->id, std::make_shared<const TvTag>(label->tag), place});
        ++place;
    }
    for (const TvTagId id : tags.ids())
        if (!project().label(id)) states.push_back({id});
    if (!states.empty()) tags.putStates(states);
    const Selection& chosen = view_.shown().selection();
    if (chosen.kind != Selection::OneLabel)
        tags.setSelection({});
    else if (!tags.isSelected(chosen.id))
        tags.setSelection({&chosen.id, 1});
    isBusy_ = false;
    refresh();
}

void LabelTool::tagsChanged() {
    if (!isBusy_ && tagSet()) followSelection();
}

void LabelTool::followSelection() {
    Document& document = view_.shown();
    const std::vector<TvTagId> selected = tags.selection();
    const Selection& chosen = document.selection();
    if (selected.empty()) {
        if (chosen.kind == Selection::OneLabel) document.select({});
        return;
    }
    if (chosen.kind == Selection::OneLabel && tags.isSelected(chosen.id)) return;
    const TvTagId id = selected.back();
    if (const Beam* const beam = beamOf(id, *tags.find(id)))
        document.workbench().showHint(text(kLabelHint, beam->name));
    document.select({Selection::OneLabel, id});
}

const Beam* LabelTool::beamOf(TvTagId id, const TvTag& tag) const {
    if (const Label* const label = project().label(id)) return project().beam(label->beam);
    return nearestBeam(project(), {tag.anchor.x, tag.anchor.y});
}

TokenizerUDManager* LabelTool::keysOf(TvTagId id, const TvTag& tag) {
    const Beam* const beam = beamOf(id, tag);
    return beam ? keys_->of(beam->id) : nullptr;
}

std::optional<ProjectChange> LabelTool::difference() const {
    ProjectChange change;
    std::uint32_t rank = 0;
    for (const TvTagId id : tags.ids()) {
        const auto tag = tags.find(id);
        const Beam* const beam = beamOf(id, *tag);
        if (!beam) return std::nullopt;
        const Label* const known = project().label(id);
        rank = known && known->rank > rank ? known->rank : rank + 1;
        Label label{.id = id, .beam = beam->id, .rank = rank, .tag = *tag};
        if (known && *known == label) continue;
        if (!isSound(label)) return std::nullopt;
        change.labels.emplace_back(id, std::move(label));
    }
    for (const Label& label : project().labels())
        if (!tags.find(label.id)) change.labels.emplace_back(label.id, std::nullopt);
    return change;
}

Edit::Outcome LabelTool::perform(std::unique_ptr<Edit> edit, unsigned gesture) {
    const std::shared_ptr<Edit> step = std::move(edit);
    isBusy_ = true;
    Edit::Outcome outcome = step->apply();
    if (outcome == Edit::Done) {
        std::optional<ProjectChange> change = difference();
        const auto name = [step] { return step->text(); };
        outcome = change ? view_.shown().change(std::move(*change), name, gesture) : Edit::Failed;
        if (outcome == Edit::Failed) step->revert();
    }
    isBusy_ = false;
    if (outcome == Edit::Failed) report(text(kLabelRefused));
    followSelection();
    return outcome;
}

int LabelTool::edit(TvTag& tag) {
    if (tag.text.empty()) tag.text = text(kNewLabel).str();
    const DialogPhase phase(view_.shown().workbench());
    // The view may go while the dialog is open, the document stays.
    const std::shared_ptr<LabelKeys> kept = keys_;
    return TvTagTool::edit(tag);
}

void LabelTool::report(const CString& why) {
    view_.shown().workbench().showBox(why, MB_ICONEXCLAMATION);
}

void LabelTool::reveal(const TvTagOnPage& tag) {
    view_.reveal(pixelsOf(tag.box));
}

void LabelTool::placeNew() {
    place(labelTag("", 0, 0));
}
