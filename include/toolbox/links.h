// Links between one object and many: a client and its server, a child and its parent. Each object
// holds its end of the link as a member, and whichever end is asked to connect or disconnect, both
// agree afterwards. Destroying an end unlinks it, so neither ever points to what is gone.
//
//     class Sheet;
//     class Book {
//       public:
//         Many<Book, Sheet> sheets;       // constructed with (this, &Sheet::book, 5)
//     };
//     class Sheet {
//       public:
//         One<Sheet, Book> book;          // constructed with (this, &Book::sheets)
//     };
//
// An owner may have a member function called at every change of its end, with the end, the other
// object and 1 after linking, 0 after unlinking. The end that was asked is told first, each when
// its own end has changed and the other's has not yet. Such a function may link, unlink and delete
// anything, both owners included: what it does stands, the operation under way is given up, and
// either end has heard of each of its own changes, once and in order. It is also called while its
// owner is being destroyed; an end that is being destroyed refuses new links.
//
// Neither end may be copied: a copy would belong to another owner. The ends that are linked to each
// other belong to one thread.
#pragma once

#include "toolbox/detail/watch.h"
#include "toolbox/sets.h"

template <class Owner, class Other>
class Many;

/// The end that is linked to at most one object.
template <class Owner, class Other>
class One {
  public:
    /// A member function of the owner that is told of every change.
    using Callback = void (Owner::*)(One& end, Other* other, int connected);
    /// The matching end in the other object's class.
    using ManyMember = Many<Other, Owner> Other::*;

    /// `owner` holds this member, `manyMember` is the matching end in the other object. Links to
    /// `peer` at once when there is one.
    One(Owner* owner, ManyMember manyMember, Callback callback = nullptr, Other* peer = nullptr)
        : owner_(owner), callback_(callback), manyMember_(manyMember) {
        if (peer) connectTo(peer);
    }
    One(const One&) = delete;
    /// Links to the object that `source` is linked to, instead of the one it was linked to.
    One& operator=(const One& source) {
        if (this == &source) return *this;
        const Watch self(life_);
        const Watch from(source.life_);
        disconnect();
        if (!self.gone() && !from.gone() && !peer_) connectTo(source.peer_);
        return *this;
    }
    ~One() {
        closed_ = true;
        disconnect();
        // Who still holds the owner, because it was to be told of the end of the link only now.
        life_.eachNote([this](Peer*& holder) {
            if (Peer* end = std::exchange(holder, nullptr)) end->drop(owner_);
        });
    }

    /// Leaves the object that it was linked to and links to `other`; null only leaves (and the
    /// callback hears of that as well: null, 1). 1 when it is linked to `other` afterwards; 0 when
    /// a callback wanted it otherwise or there is no memory.
    int connectTo(Other* other) {
        if (peer_ == other) return 1;
        if (!other) return leave();
        Peer& end = other->*manyMember_;
        if (closed_ || end.closed_) return 0;
        const Watch self(life_);
        PeerWatch there(end.life_);
        disconnect();
        if (self.gone() || there.gone()) return 0;
        if (peer_) return peer_ == other;
        peer_ = other;
        there.note = this;
        notify(other, 1);
        if (self.gone() || there.gone() || peer_ != other) return 0;
        if (end.isInSet(owner_) || end.connectTo(owner_)) return 1;
        if (!self.gone() && !there.gone() && peer_ == other && !end.isInSet(owner_)) {
            unset();
            notify(other, 0);
        }
        return 0;
    }
    /// 0 when it was not linked, or a callback linked it to the same object again.
    int disconnect() {
        if (!peer_) return 0;
        Other* old = unset();
        Peer& end = old->*manyMember_;
        const Watch leaving(life_, end.isInSet(owner_) ? &end : nullptr);
        notify(old, 0);
        if (leaving.gone()) return 1;
        if (peer_ == old) return 0;
        if (leaving.note) leaving.note->disconnect(owner_);  // which is there, and not told yet
        return leaving.gone() || peer_ != old;
    }

    /// The object it is linked to, or null.
    operator Other*() const { return peer_; }

  private:
    friend class Many<Other, Owner>;
    using Peer = Many<Other, Owner>;
    // Its note is the end that still holds the owner while this one does not point there.
    using Watch = toolbox::detail::Watch<Peer*>;
    using PeerWatch = toolbox::detail::Watch<One*>;

    void notify(Other* other, int connected) {
        if (callback_) (owner_->*callback_)(*this, other, connected);
    }
    int leave() {
        const Watch self(life_);
        disconnect();
        if (self.gone() || peer_) return 0;
        notify(nullptr, 1);
        return !self.gone() && !peer_;
    }
    /// Points to nothing any more, so that the other end, when it is destroyed, leaves it alone.
    Other* unset() {
        Other* old = std::exchange(peer_, nullptr);
        (old->*manyMember_).life_.eachNote([this](One*& end) {
            if (end == this) end = nullptr;
        });
        return old;
    }

    Other* peer_ = nullptr;
    Owner* owner_;
    Callback callback_;
    ManyMember manyMember_;
    bool closed_ = false;  // being destroyed
    mutable toolbox::detail::Watched<Peer*> life_;
};

/// The end that is linked to any number of objects, in the order in which they were linked. Each of
/// them is linked to one owner only: linking it here takes it from where it was.
template <class Owner, class Other>
class Many {
  public:
    /// A member function of the owner that is told of every change.
    using Callback = void (Owner::*)(Many& end, Other* other, int connected);
    /// The matching end in the other objects' class.
    using OneMember = One<Other, Owner> Other::*;

    /// `owner` holds this member, `oneMember` is the matching end in the other objects.
    Many(Owner* owner, OneMember oneMember, int increment = 10, Callback callback = nullptr)
        : others_(0, increment), owner_(owner), callback_(callback), oneMember_(oneMember) {}
    Many(const Many&) = delete;
    /// Moves the objects: they are linked to one owner only, so `source` is left empty although it
    /// is passed as constant.
    Many& operator=(const Many& source) {
        if (this == &source) return *this;
        const Watch self(life_);
        const Watch from(source.life_);
        disconnectAll();
        if (self.gone() || from.gone()) return *this;
        const SetPointer<Other> moved = source;
        for (int i = 0; i < moved.nItem() && !self.gone() && !from.gone(); ++i)
            if (source.isInSet(moved[i])) connectTo(moved[i]);
        return *this;
    }
    ~Many() {
        closed_ = true;
        while (getCount() > 0) disconnect(others_[0]);
        // Who still points to the owner, because it was to be told of the end of the link only now.
        life_.eachNote([this](Peer*& pointing) {
            Peer* end = std::exchange(pointing, nullptr);
            if (end && end->peer_ == owner_) end->disconnect();
        });
    }

    /// 1 when it is linked to `other` afterwards; 0 for null, when a callback wanted it otherwise
    /// and when there is no memory.
    int connectTo(Other* other) {
        if (isInSet(other)) return 1;
        if (!other) return 0;
        Peer& end = other->*oneMember_;
        if (closed_ || end.closed_) return 0;
        const Watch self(life_);
        PeerWatch there(end.life_);
        if (end.peer_ != owner_) end.disconnect();
        if (self.gone() || there.gone()) return 0;
        if (isInSet(other)) return 1;
        if ((end.peer_ && end.peer_ != owner_) || !others_.add(other)) return 0;
        if (!end.peer_) there.note = this;
        notify(other, 1);
        if (self.gone() || there.gone() || !isInSet(other)) return 0;
        if (!end.peer_) return end.connectTo(owner_);
        if (end.peer_ == owner_) return 1;
        drop(other);
        return 0;
    }
    /// 0 when it was not linked to `other`, or a callback linked it again.
    int disconnect(Other* other) {
        if (!isInSet(other)) return 0;
        Peer& end = other->*oneMember_;
        remove(other);
        const Watch leaving(life_, end.peer_ == owner_ ? &end : nullptr);
        notify(other, 0);
        if (leaving.gone()) return 1;
        if (isInSet(other)) return 0;
        if (leaving.note) leaving.note->disconnect();  // which is there, and not told yet
        return leaving.gone() || !isInSet(other);
    }
    /// 1 also for an index out of range, which does nothing.
    int disconnect(int index) {
        if (index >= 0 && index < getCount()) disconnect(others_[index]);
        return 1;
    }
    /// Unlinks all that it is linked to now, the first one first; what a callback links stays.
    /// Always 1.
    int disconnectAll() {
        const Watch self(life_);
        toolbox::detail::tellEach(others_, self, [this](Other* other) { disconnect(other); });
        return 1;
    }

    /// 1 when it is linked to `other`.
    [[nodiscard]] int isInSet(Other* other) const { return others_.isInSet(other); }
    /// -1 when it is not linked to `other`.
    [[nodiscard]] int getIndex(Other* other) const { return others_.findItem(other); }
    /// How many objects it is linked to.
    [[nodiscard]] int getCount() const { return others_.nItem(); }
    /// An index out of range gives the first object, null when there is none.
    Other* operator[](int index) const { return others_[index]; }
    /// Copies them to `out`, which has room for getCount() of them.
    void copyTo(Other** out) const { others_.copyTo(out); }
    /// Exchanges the places of two objects; 0 when an index is out of range or both are the same.
    int swap(int i, int j) { return others_.exchangeItem(i, j); }
    /// A copy of the set, which links nothing.
    operator SetPointer<Other>() const { return others_; }

  private:
    friend class One<Other, Owner>;
    using Peer = One<Other, Owner>;
    // Its note is the end that still points to the owner while this one does not hold it.
    using Watch = toolbox::detail::Watch<Peer*>;
    using PeerWatch = toolbox::detail::Watch<Many*>;

    void notify(Other* other, int connected) {
        if (callback_) (owner_->*callback_)(*this, other, connected);
    }
    /// Holds it no more, so that the other end, when it is destroyed, leaves this one alone.
    void remove(Other* other) {
        others_.remove(other);
        (other->*oneMember_).life_.eachNote([this](Many*& end) {
            if (end == this) end = nullptr;
        });
    }
    /// The same with a word to the owner, for one that points elsewhere.
    void drop(Other* other) {
        if (!isInSet(other)) return;
        remove(other);
        notify(other, 0);
    }

    SetPointer<Other> others_;
    Owner* owner_;
    Callback callback_;
    OneMember oneMember_;
    bool closed_ = false;  // being destroyed
    mutable toolbox::detail::Watched<Peer*> life_;
};
