// Names of settings, as the settings operations of GMSG (messages.h) take them.
#pragma once

#include <concepts>
#include <type_traits>

#include "toolbox/export.h"
#include "toolbox/strings.h"

namespace toolbox {

/// The section or the entry of a setting: a text, or the number of a text resource, which is looked
/// up as GMSG::loadString does when the name is made. A missing text gives the empty name, under
/// which nothing is stored or found.
class TB_API SettingName {
  public:
    SettingName(const char* name) : text_(name) {}        ///< null is the empty name
    SettingName(const ByteString& name) : text_(name) {}  ///< the text
    /// The text of a resource; see the class.
    template <class Id>
    requires std::integral<Id> || std::is_enum_v<Id> SettingName(Id resource)
        : text_(loaded(static_cast<unsigned short>(resource))) {}

    /// The name.
    [[nodiscard]] const RWCString& text() const noexcept { return text_; }

  private:
    [[nodiscard]] static RWCString loaded(unsigned short resource);

    RWCString text_;
};

}  // namespace toolbox
