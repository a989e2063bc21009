// Who is told of a set's changes, and of its end.
#include <new>

#include "toolbox/tags.h"

TvTagListener::~TvTagListener() {
    if (set_) set_->listeners_.remove(this);
}

int TvTagListener::listenTo(TvTagSet* set) {
    if (set == set_) return 1;
    if (set && (set->ending_ || !set->listeners_.add(this))) return 0;
    if (set_) set_->listeners_.remove(this);
    set_ = set;
    return 1;
}

TvTagSet::TvTagSet() : listeners_(0, 4) {}

TvTagSet::~TvTagSet() {
    ending_ = true;
    while (listeners_.nItem() > 0) {
        TvTagListener* const listener = listeners_[0];
        listeners_.remove(listener);
        listener->set_ = nullptr;
        tellOne(listener);
    }
}

void TvTagSet::tellOne(TvTagListener* listener) {
    try {
        listener->tagsChanged();
    } catch (const std::bad_alloc&) {
        // It shows what it had; the others are told all the same.
    }
}

/// 1, for the operation that made the change.
int TvTagSet::tell(bool tags, bool selection) {
    if (tags) ++changes_;
    if (selection) ++selectionChanges_;
    const toolbox::detail::Watch self(life_);
    tellEach(listeners_, self, [](TvTagListener* each) { TvTagSet::tellOne(each); });
    return 1;
}
