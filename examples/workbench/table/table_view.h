// The result table of a document: one line for each beam, one column for each selected key.
#pragma once

#include "frame/view.h"
#include "table/table_columns.h"

void registerTableClass(HINSTANCE instance);

class TableView : public View {
  public:
    explicit TableView(Document& shown) : View(shown) {}

    void documentChanged(unsigned changes) override;
    [[nodiscard]] unsigned short nameText() const override;
    /// Carries out a command that is the table's own: copies, changes the marked column's format.
    /// False: it is none.
    bool command(int id);

  protected:
    LRESULT handleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    void createList();
    LRESULT notified(NMHDR& note);
    void giveText(NMLVDISPINFOA& wanted);
    [[nodiscard]] LRESULT findByName(const NMLVFINDITEMA& wanted) const;
    [[nodiscard]] LRESULT draw(NMLVCUSTOMDRAW& drawn) const;

    void showBeams();
    /// Selects the row of the document's selection.
    void showSelection();
    /// Makes the one row selected the document's selection; several are none.
    void takeSelection();
    void takeSelectionLater();
    void selectAll();
    void editRow(int row);
    void copyRows();

    void showColumns();
    void markColumn(int column);
    void takeColumnOrder();
    void hideColumn(int column);
    void editFormat(int column);
    /// That of the marked column; tells the user when there is none.
    void editMarkedFormat();

    // Menus, at screen coordinates.
    void openMenu(POINT place);
    void openRowMenu(POINT place);
    void openColumnMenu(POINT place, int column);
    /// Of the row that has the focus, for the keyboard.
    [[nodiscard]] POINT placeOfRow() const;

    HWND list_ = nullptr;
    TableColumns columns_;
    UINT markedKey_ = 0;           // 0: none
    bool showing_ = false;         // what the list tells meanwhile does not come from the user
    bool selectionMoved_ = false;  // the message that takes it is under way
};
