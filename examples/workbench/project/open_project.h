// A project at work: the results of its beams, and the steps in which the user changed it.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "project/beam_results.h"
#include "project/project.h"
#include "project/project_edit.h"
#include "toolbox/undo.h"

class ProjectKeys;

/// What the user has selected in a project: nothing, a beam, one of a beam's point loads, a label.
struct Selection {
    enum Kind { Nothing, OneBeam, OneLoad, OneLabel };
    Kind kind = Nothing;
    std::uint32_t id = 0;  ///< of the beam or the label
    std::size_t load = 0;  ///< index of a point load

    bool operator==(const Selection&) const = default;
};

class OpenProject {
  public:
    /// Finds a section by its designation; null when there is none.
    using FindSection = std::function<const Section*(const CString& designation)>;

    explicit OpenProject(FindSection findSection) : findSection_(std::move(findSection)) {}

    [[nodiscard]] const Project& project() const { return project_; }
    /// Another project, without steps; its results are to be computed.
    void setProject(Project project);

    /// The results of the beam with this index in the project; null while they are not computed or
    /// its section is not known.
    [[nodiscard]] const BeamResults* results(std::size_t index) const;
    void forgetResults();
    void compute(std::size_t index);
    [[nodiscard]] std::size_t indexOf(std::uint32_t beam) const;
    [[nodiscard]] const Section* sectionOf(const Beam& beam) const {
        return findSection_(beam.section);
    }

    /// Makes the keys' values those of a beam. False when it has no results: keys would print as
    /// nothing.
    bool setCurrentKeys(ProjectKeys& keys, std::size_t index) const;

    // Changes by the user: steps that can be undone, each with its results. 0 or false: refused,
    // nothing changed. What changes nothing leaves no step. `step` is the number of its text; of 0
    // it is what the menu of Edit says.
    std::uint32_t put(Beam beam, unsigned short step = 0);
    /// All of them in one step, or none; each gets an identifier and a rank that it has not.
    bool put(std::vector<Label> labels, unsigned short step);
    /// What comes into the project is sound. Changes of one gesture other than 0 are one step.
    Edit::Outcome change(ProjectChange change, StepName name, unsigned gesture);
    /// To a place, with its labels.
    bool moveBeam(std::uint32_t id, double x, double y);
    /// Beams go with their labels.
    bool remove(const Selection& selection);

    [[nodiscard]] UndoStack& steps() { return steps_; }
    [[nodiscard]] const UndoStack& steps() const { return steps_; }

    /// What the user should have selected after a change: what was undone or redone, else the
    /// selection before as far as it is there. To be asked once after each.
    [[nodiscard]] Selection settled(const Selection& before);

  private:
    friend class ProjectEdit;

    bool perform(unsigned short step, ProjectChange items);
    // For edits: so many items are exchanged then. The results follow.
    void beginExchange(std::size_t beams, std::size_t labels);
    void exchange(std::uint32_t id, std::optional<Beam>& beam);
    void exchange(std::uint32_t id, std::optional<Label>& label);
    [[nodiscard]] bool has(const Selection& selection) const;

    FindSection findSection_;
    Project project_;
    BeamComputer computer_;
    std::vector<std::optional<BeamResults>> results_;  // of the beams, by their index
    Selection touched_;                                // by what was undone or redone last
    bool performing_ = false;                          // the user does something new
    UndoStack steps_;
};
