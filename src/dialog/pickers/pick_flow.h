// What happens around a dialog: where it starts, what a chosen name becomes, the question before a
// file is replaced, the folder that is remembered. The dialog itself is a PickSource.
#pragma once

#include <string>

#include "toolbox/pickers.h"

namespace toolbox::pickers {

/// What a source gives.
struct SourceAnswer : PickAnswer {
    /// Of a chosen name that Windows-1252 cannot write, what can be shown; else empty.
    std::string foreign;
};

/// Who answers: the system's dialog, or a handler.
class PickSource {
  public:
    virtual ~PickSource() = default;
    /// Shows the dialog once.
    virtual SourceAnswer ask(const PickQuestion& question) = 0;
    [[nodiscard]] virtual bool exists(const CString& name);
    /// Whether a file that is there may be replaced.
    virtual bool mayReplace(const CString& name) = 0;
    /// Why a name is not taken.
    enum class Fault { foreign, missing };
    /// Says it.
    virtual void tell(Fault fault, const CString& name) = 0;
    /// Whether the dialog is shown again after a name that was not taken.
    [[nodiscard]] virtual bool asksAgain() const = 0;
};

/// The folder where a dialog starts: that of the file name, the remembered one, or the one given,
/// the first that is there or has one above it that is. With `first` set, that one before all.
[[nodiscard]] std::string startFolder(const CString& purpose, const std::string& first,
                                      const std::string& otherwise);

/// Asks until a name is taken or the source gives up, and remembers the folder.
[[nodiscard]] PickAnswer pick(PickQuestion question, PickSource& source);

}  // namespace toolbox::pickers
