// The controls of fields: what they show, as text, and how it is put there.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "toolbox/dates.h"

namespace toolbox::dialog {

/// The window's text. A character that Windows-1252 does not have is kForeign in it.
[[nodiscard]] std::string entryOf(HWND control);
/// Leaves a control alone that has this text.
void showEntry(HWND control, const std::string& text);
/// No more than `limit` characters can be typed then, but for what the control holds; any number
/// for 0 and less.
void limitEntry(HWND control, int limit);

[[nodiscard]] bool hasSeveralLines(HWND control);
/// Visible and enabled by its own style, whether or not its dialog is.
[[nodiscard]] bool takesInput(HWND control);
/// Selects what the user has to change.
void selectEntry(HWND control);

/// A list box of single selection or a combo box.
class ChoiceControl {
  public:
    explicit ChoiceControl(HWND control);

    /// False for other controls.
    [[nodiscard]] bool isChoice() const { return kind_ != Kind::none; }
    /// The entries are texts, not something that the program draws.
    [[nodiscard]] bool hasTexts() const;
    [[nodiscard]] bool hasEditField() const;
    /// Place of the entry chosen or typed, -1 for none.
    [[nodiscard]] int index() const;
    void choose(int index) const;
    /// The text chosen or typed.
    [[nodiscard]] std::string text() const;
    void chooseText(const std::string& text) const;

  private:
    enum class Kind { none, list, combo };

    [[nodiscard]] LRESULT send(UINT toCombo, UINT toList, WPARAM wParam = 0,
                               LPARAM lParam = 0) const;
    [[nodiscard]] std::string textAt(int index) const;
    [[nodiscard]] int find(const std::string& text) const;

    HWND control_;
    Kind kind_ = Kind::none;
};

/// A check box or radio button; a radio button.
[[nodiscard]] bool isButton(HWND control);
[[nodiscard]] bool isRadioButton(HWND control);
/// The button of the group that is chosen, from 0; -1 for none.
[[nodiscard]] int chosenOf(const std::vector<HWND>& buttons);
void chooseOf(const std::vector<HWND>& buttons, int chosen);

[[nodiscard]] bool isDatePicker(HWND control);
/// Date 0 0 0 when none is chosen.
[[nodiscard]] TarvDate pickedDate(HWND picker);
/// An invalid date chooses none, where the picker allows that.
void pickDate(HWND picker, const TarvDate& date);

}  // namespace toolbox::dialog
