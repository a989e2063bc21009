// How an operation that calls back learns that its object was destroyed meanwhile, and how it goes
// through a set that the callbacks may change. Applications need none of it.
//
//     int Command::tell() {
//         const toolbox::detail::Watch self(life_);     // life_ is a Watched member
//         tool->told();                                 // may delete this command
//         if (self.gone()) return 0;                    // touches no member
//
// Objects and what watches them belong to one thread.
#pragma once

#include <cstddef>

namespace toolbox::detail {

template <class Note = std::nullptr_t>
class Watch;

/// The member of an object that is watched.
template <class Note = std::nullptr_t>
class Watched {
  public:
    // Watched by nobody; what watches an object does not watch its copies.
    Watched() = default;
    Watched(const Watched&) noexcept {}
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): nothing is taken
    Watched& operator=(const Watched&) noexcept { return *this; }
    /// Tells every watch.
    ~Watched() {
        for (Watch<Note>* each = innermost_; each; each = each->outer_) each->watched_ = nullptr;
    }
    /// Calls `visit` with the note of every watch, the innermost first.
    template <class Visit>
    void eachNote(Visit visit) {
        for (Watch<Note>* each = innermost_; each; each = each->outer_) visit(each->note);
    }

  private:
    friend class Watch<Note>;
    Watch<Note>* innermost_ = nullptr;
};

/// Watches an object, usually from the stack; watches may end in any order.
template <class Note>
class Watch {
  public:
    /// Until the watch ends.
    explicit Watch(Watched<Note>& watched, Note kept = Note())
        : note(kept), watched_(&watched), outer_(watched.innermost_) {
        watched.innermost_ = this;
    }
    ~Watch() {
        if (!watched_) return;
        Watch** link = &watched_->innermost_;
        while (*link != this) link = &(*link)->outer_;
        *link = outer_;
    }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    /// The object was destroyed.
    [[nodiscard]] bool gone() const { return !watched_; }

    /// What the object shall find in the watch, when that is more than that there is one.
    mutable Note note;  // mutable, for watches are const to those who make them

  private:
    friend class Watched<Note>;
    mutable Watched<Note>* watched_;
    Watch* outer_;
};

/// Calls `tell` with each member that the set has now, in order, but for those that have left when
/// their turn comes. `owner` watches the object that holds the set; false when that was destroyed
/// meanwhile, and then nobody else was told.
template <class Set, class Note, class Tell>
bool tellEach(const Set& set, const Watch<Note>& owner, Tell tell) {
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): `tell` may change the set
    const Set members = set;
    for (int i = 0; i < members.nItem(); ++i) {
        const auto member = members[i];
        if (set[i] != member && !set.isInSet(member)) continue;
        tell(member);
        if (owner.gone()) return false;
    }
    return true;
}

}  // namespace toolbox::detail
