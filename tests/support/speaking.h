// A language of the program for the duration of a test.
#pragma once

#include "toolbox/messages.h"

namespace toolbox::testing {

class Speaking {
  public:
    explicit Speaking(GMSG::Language language) { GMSG::language = language; }
    ~Speaking() { GMSG::language = GMSG::French; }
    Speaking(const Speaking&) = delete;
    Speaking& operator=(const Speaking&) = delete;
};

}  // namespace toolbox::testing
