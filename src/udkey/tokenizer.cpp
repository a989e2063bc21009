// The manager that expands tokens.
#include "udkey/expansion.h"
#include "udkey/shared.h"

namespace udkey = toolbox::udkey;

int TokenizerUDManager::isTokenizeUDManager() {
    return 1;
}

namespace {

/// The key of a word, if its id is in the matching set.
const udkey::KeyEntry* matchingKey(std::string_view word, udkey::ManagerState& state) {
    const udkey::Shared* all = udkey::ready();
    const udkey::KeyEntry* entry = all ? all->keys.find(word) : nullptr;
    const bool valid =
        entry && entry->id() != udkey::kNoId && state.of(*all).matching.contains(entry->id());
    return valid ? entry : nullptr;
}

}  // namespace

RWCString TokenizerUDManager::getParseString(const RWCString& text, int strip) {
    class Source final : public udkey::TokenSource {
      public:
        Source(TokenizerUDManager& manager, int strip)
            : manager_(manager), state_(manager.state_), strip_(strip) {}
        const udkey::KeyEntry* token(std::string_view word) override {
            return state_->managerIsGone ? nullptr : matchingKey(word, *state_);
        }
        void appendValue(const udkey::KeyEntry& key, std::string& out) override {
            manager_.appendFormatted(key, strip_, out);
        }

      private:
        TokenizerUDManager& manager_;
        std::shared_ptr<udkey::ManagerState> state_;  ///< outlives a manager that a value deletes
        int strip_;
    };
    Source source(*this, strip);
    return udkey::Expansion(text.view(), source).run();
}

int TokenizerUDManager::isValidToken(const RWCString& word) const {
    return matchingKey(word.view(), *state_) != nullptr;
}

int TokenizerUDManager::replaceValue(RWCString& text, const RWCString& word, int strip) {
    const udkey::TokenPlace place = udkey::findToken(text.view(), word.view());
    if (!place.found()) return 0;
    const RWCString value = getFormatedString(getId(word), strip);
    text.str().replace(place.start, place.end + 1 - place.start, value.str());
    return 1;
}
