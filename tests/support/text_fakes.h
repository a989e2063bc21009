// String tables and message boxes that a test fills and reads.
#pragma once

#include <algorithm>
#include <cstring>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "toolbox/platform.h"

namespace toolbox::testing {

/// Texts by module and number. English when a language was asked for and the English text is there.
class FakeStrings : public platform::StringResources {
  public:
    void put(unsigned int id, std::string text, HINSTANCE module = nullptr) {
        french_[{module, id}] = std::move(text);
    }
    void putEnglish(unsigned int id, std::string text) {
        english_[{nullptr, id}] = std::move(text);
    }

    int load(HINSTANCE module, unsigned int id, platform::Language language, char* out,
             int size) override {
        const Key key{module, id};
        const bool english = language == platform::Language::english && english_.contains(key);
        const Table& table = english ? english_ : french_;
        const auto entry = table.find(key);
        const std::string text = entry == table.end() ? "" : entry->second;
        const std::size_t kept = std::min(text.size(), static_cast<std::size_t>(size) - 1);
        std::memcpy(out, text.data(), kept);
        out[kept] = '\0';
        return static_cast<int>(kept);
    }

  private:
    using Key = std::pair<HINSTANCE, unsigned int>;
    using Table = std::map<Key, std::string>;
    Table french_;
    Table english_;
};

/// Keeps every box and answers it. In use from its construction to its end.
class RecordingPrompt : public platform::UserPrompt {
  public:
    struct Box {
        HWND owner;
        std::string text;
        std::string caption;
        unsigned int flags;
    };

    std::vector<Box> boxes;
    int answer = IDOK;
    HWND liveWindow = nullptr;       ///< the one window that exists
    std::vector<std::string> fatal;  ///< texts that would have ended the process
    std::string cursor;              ///< "wait " and "arrow " as they were shown

    int messageBox(HWND owner, const char* text, const char* caption, unsigned int flags) override {
        boxes.push_back({owner, text, caption, flags});
        return answer;
    }
    void fatalExit(const char* text) override { fatal.emplace_back(text); }
    bool isWindow(HWND window) override { return window && window == liveWindow; }
    void showWaitCursor(bool wait) override { cursor += wait ? "wait " : "arrow "; }

  private:
    platform::Replaced<platform::UserPrompt> guard_{platform::current().prompt, *this};
};

/// Both in place for its lifetime.
struct FakedTexts {
    FakeStrings strings;
    RecordingPrompt prompt;

  private:
    platform::Replaced<platform::StringResources> strings_{platform::current().strings, strings};
};

}  // namespace toolbox::testing
