// One step of the user on a project: the beams and labels that it puts in the place of others.
#pragma once

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "project/project.h"
#include "toolbox/undo.h"

class OpenProject;

/// What comes in the place of the beams and labels with those identifiers; nothing: they go. Each
/// identifier stands at most once, and no label is left without its beam.
struct ProjectChange {
    template <class Item>
    using Items = std::vector<std::pair<std::uint32_t, std::optional<Item>>>;

    Items<Beam> beams;
    Items<Label> labels;
};

/// What the user did, in the language of the moment.
using StepName = std::function<CString()>;

/// Exchanges the items of a change for those of the project: undoing and redoing are the same.
class ProjectEdit : public Edit {
  public:
    ProjectEdit(OpenProject& project, StepName name, ProjectChange change);

    Outcome apply() override;
    int revert() override;
    [[nodiscard]] CString text() const override;
    [[nodiscard]] std::size_t size() const override;
    /// Of steps on the same things the first knows what was there before.
    Merging merge(Edit& later) override;

  private:
    [[nodiscard]] bool isPointless() const;
    void exchange();

    OpenProject& project_;
    StepName name_;
    ProjectChange change_;  // what is not in the project
};
