// A beam project: what one document of the workbench holds. Plain values; nothing here needs a
// window.
//
// The drawing's plane is in metres, x to the right and y up; a beam is horizontal and named by the
// place of its left support. Loads act downwards when positive. Beams and labels have identifiers
// of their own, from 1, which stay theirs as long as they are there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "toolbox/strings.h"
#include "toolbox/tags.h"

/// A force on a beam.
struct PointLoad {
    double position = 0;  ///< m, from the left support
    double force = 0;     ///< kN

    bool operator==(const PointLoad&) const = default;
};

/// A beam on two supports.
struct Beam {
    std::uint32_t id = 0;
    CString name;     ///< at most kNameMax bytes
    CString section;  ///< designation in the section table
    double x = 0, y = 0;
    double span = 6;     ///< m
    double uniform = 0;  ///< kN/m, over the whole span, the beam's own weight not counted
    std::vector<PointLoad> loads;

    bool operator==(const Beam&) const = default;
};

/// A label in the drawing: a tag anchored in the plane, whose $KEY$ tokens stand for values of a
/// beam.
struct Label {
    std::uint32_t id = 0;
    std::uint32_t beam = 0;
    std::uint32_t rank = 0;  ///< the greatest is drawn on top; 0: one that put() shall give it
    TvTag tag{};             ///< its text has at most kLabelMax bytes

    bool operator==(const Label&) const = default;
};

/// A tag as labels look at first, with a frame.
[[nodiscard]] TvTag labelTag(const CString& text, double x, double y);
/// With a frame or without; either way what is behind it does not show.
void setFramed(TvTag& tag, bool framed);

inline constexpr std::size_t kNameMax = 16;
inline constexpr std::size_t kLabelMax = 1000;
/// Point loads that a beam may carry: rows of the grid of formulas.
inline constexpr std::size_t kLoadsMax = 10;
inline constexpr double kSpanMin = 0.5, kSpanMax = 60;  ///< m
inline constexpr double kLoadMax = 10000;               ///< kN or kN/m, up or down

inline constexpr double kLengthStep = 0.1;  ///< m, of what the mouse picks
inline constexpr double kForceStep = 0.5;   ///< kN, kN/m

/// The nearest multiple of a step.
[[nodiscard]] double snapped(double value, double step);

/// True when a beam can be kept and computed: its span and loads are within the limits, every load
/// stands on it, and its texts have room. Its section is not looked at.
[[nodiscard]] bool isSound(const Beam& beam);
[[nodiscard]] bool isSound(const Label& label);

class Project {
  public:
    [[nodiscard]] const std::vector<Beam>& beams() const { return beams_; }
    [[nodiscard]] const std::vector<Label>& labels() const { return labels_; }
    /// As they are drawn, the last one on top.
    [[nodiscard]] std::vector<const Label*> labelsInOrder() const;
    /// Null when there is none with that identifier.
    [[nodiscard]] const Beam* beam(std::uint32_t id) const;
    [[nodiscard]] const Label* label(std::uint32_t id) const;

    /// Adds a beam or a label, which gets a new identifier, or takes the place of the one that has
    /// its identifier. Returns the identifier; 0, and nothing is changed, when it is not sound or
    /// when a label names no beam. A label without a rank is drawn on top of the others.
    std::uint32_t put(Beam beam);
    std::uint32_t put(Label label);
    // For the next that is added.
    [[nodiscard]] std::uint32_t newBeamId() const { return nextOf(beams_); }
    [[nodiscard]] std::uint32_t newLabelId() const { return nextOf(labels_); }
    [[nodiscard]] std::uint32_t newRank() const;

    /// Puts an item in the place of that with an identifier, or of none, and gives back what was
    /// there. Nothing is checked, and nothing thrown when makeRoom() was called for the items to
    /// come.
    void exchange(std::uint32_t id, std::optional<Beam>& beam);
    void exchange(std::uint32_t id, std::optional<Label>& label);
    void makeRoom(std::size_t beams, std::size_t labels);

    bool operator==(const Project&) const = default;

  private:
    template <class Item>
    [[nodiscard]] static std::uint32_t nextOf(const std::vector<Item>& items) {
        return items.empty() ? 1 : items.back().id + 1;
    }

    std::vector<Beam> beams_;  // ascending identifiers, as the labels
    std::vector<Label> labels_;
};

/// A project of `count` beams in rows, their sections, spans and loads taken in turn: for trying
/// large projects. Sections are designations of the section table.
[[nodiscard]] Project sampleProject(std::size_t count, const std::vector<CString>& sections);
