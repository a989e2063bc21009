// The list control of the list of keys: a report that asks for the texts of what it shows.
#pragma once

#include <utility>
#include <vector>

#include "dialog/keys/key_list_model.h"
#include "toolbox/controls.h"

namespace toolbox::keys {

/// Columns, in their order.
enum Column : int { kKey, kDescription, kHeader, kUnits, kSample, kPlace };

/// Its keys become commands of the dialog, which are posted: Alt with an arrow key those of the
/// buttons that move, F2 that of the description, Ctrl with C or Insert that of copying.
class KeyListView : public TvListView {
  public:
    ~KeyListView() override { detach(); }

    /// With headings in the program's language, and as wide as the user made them in a former run.
    void addKeyColumns();
    /// Keeps their widths, when the user changed one that counts: that of the description does not.
    void keepColumns() const;
    /// The description takes what the other columns leave.
    void fitColumns();

    /// As many rows as the model has, with its selection, and with the focus on a key that is in
    /// sight. Rows stay where they are scrolled to.
    void show(const KeyListModel& model, UINT focused);
    /// What the user selected, in the order of the rows.
    [[nodiscard]] Ids selectedIds(const KeyListModel& model) const;
    /// The key of the row with the focus; `otherwise` when none has it.
    [[nodiscard]] UINT focusedId(const KeyListModel& model, UINT otherwise) const;
    void selectAll();

    /// Rows that can be seen, as far as the model has them: from the first to before the last.
    [[nodiscard]] std::pair<std::size_t, std::size_t> rowsInSight(const KeyListModel& model) const;
    void redraw(std::pair<std::size_t, std::size_t> rows);

    /// Where a menu opens that a key asks for: below the row with the focus, on the screen.
    [[nodiscard]] POINT belowFocus() const;

    // For dragging.

    /// The row in front of which a point of the client area lies, up to the one after the last.
    [[nodiscard]] std::size_t rowBefore(POINT point) const;
    /// Upper edge of a row, or the lower one of the last.
    [[nodiscard]] int edgeOf(std::size_t row) const;
    /// Height of a row in pixels.
    [[nodiscard]] int rowHeight() const;
    /// -1 or 1 when a point is above or below the rows that can be seen, else 0.
    [[nodiscard]] int beyond(POINT point) const;

    /// True while the program itself changes what is selected.
    [[nodiscard]] bool isShowing() const { return showing_; }

  protected:
    LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    /// The command of a key; 0 for a key that is the control's own.
    [[nodiscard]] static int commandOf(UINT message, WPARAM key);
    void deselect();
    [[nodiscard]] RECT rowArea(std::size_t row) const;

    std::vector<int> widths_;  // of the columns at first
    bool showing_ = false;
    bool fitting_ = false;
};

}  // namespace toolbox::keys
