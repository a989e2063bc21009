// What a test puts into the operations of an object that calls back.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>

namespace toolbox::testing {

class Actions {
  public:
    std::map<std::string, std::function<void()>> inside;
    std::string log;

  protected:
    /// Notes an operation and does in it, once, what the test put under its name. That may delete
    /// this object.
    int act(const std::string& what, int answer = 1) {
        log += what + " ";
        carryOut(what);
        return answer;
    }
    void carryOut(const std::string& what) {
        const auto found = inside.extract(what);
        if (found) found.mapped()();
    }
};

}  // namespace toolbox::testing
