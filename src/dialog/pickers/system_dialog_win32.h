// What the system's own dialogs need around them: their owner, names in 16-bit characters, and
// saying what went wrong.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "dialog/pickers/pick_flow.h"
#include "text/printed_text.h"

namespace toolbox::pickers {

using text::printed;

/// Numbers of texts.
enum TextId : unsigned short {
    kReplaceFile = 1390,
    kForeignName = 1391,
    kNotShown = 1392,
    kIsOpen = 1393,
    kNoMemory = 1394,
    kErrorNumber = 1395,
    kNoFile = 1396
};

[[nodiscard]] std::wstring systemName(std::string_view bytes);
[[nodiscard]] std::u16string portableName(const wchar_t* name, std::size_t length);

/// Puts the name into the answer, or what can be shown of it.
void addName(SourceAnswer& answer, const std::u16string& name);

/// The window that a dialog is put over: the top of `owner`, or for null the frame's window, or the
/// active one.
[[nodiscard]] HWND ownerOf(HWND owner);

/// The system's dialogs with the questions that the library asks of the user.
class SystemSource : public PickSource {
  public:
    explicit SystemSource(HWND owner) : owner_(owner) {}
    [[nodiscard]] bool exists(const CString& name) override;
    bool mayReplace(const CString& name) override;
    void tell(Fault fault, const CString& name) override;
    [[nodiscard]] bool asksAgain() const override { return true; }
    [[nodiscard]] HWND owner() const { return owner_; }

  private:
    HWND owner_;
};

/// Asks the handler, or else the system's dialog, and reports through the message service what
/// could not be shown.
[[nodiscard]] PickAnswer pickBy(const PickQuestion& question, SystemSource& system);

}  // namespace toolbox::pickers
