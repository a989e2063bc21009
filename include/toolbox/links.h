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
// object and 1 after linking, 0 after unlinking. What such a function links or unlinks itself
// stands: the operation under way is then given up with 0. It is also called while its owner is
// being destroyed. Neither end may be copied: a copy would belong to another owner.
#pragma once

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
        disconnect();
        connectTo(source.peer_);
        return *this;
    }
    ~One() { disconnect(); }

    /// Leaves the object that it was linked to and links to `other`; null only leaves (on
    /// purpose the callback hears of that as well: null, 1). 1 when it is linked to `other`
    /// afterwards, 0 when there is no memory for that.
    int connectTo(Other* other) {
        if (peer_ == other) return 1;
        disconnect();
        if (peer_) return 0;
        peer_ = other;
        notify(other, 1);
        if (!other) return 1;
        if (peer_ != other) return 0;
        Many<Other, Owner>& end = other->*manyMember_;
        if (end.isInSet(owner_) || end.connectTo(owner_)) return 1;
        if (peer_ == other) {
            peer_ = nullptr;
            notify(other, 0);
        }
        return 0;
    }
    /// 0 when it was not linked.
    int disconnect() {
        if (!peer_) return 0;
        Other* old = std::exchange(peer_, nullptr);
        notify(old, 0);
        (old->*manyMember_).disconnect(owner_);
        return 1;
    }

    /// The object it is linked to, or null.
    operator Other*() const { return peer_; }

  private:
    void notify(Other* other, int connected) {
        if (callback_) (owner_->*callback_)(*this, other, connected);
    }

    Other* peer_ = nullptr;
    Owner* owner_;
    Callback callback_;
    ManyMember manyMember_;
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
    /// On purpose, moves the objects: they are linked to one owner only, so `source` is left empty
    /// although it is passed as constant.
    Many& operator=(const Many& source) {
        if (this == &source) return *this;
        disconnectAll();
        const SetPointer<Other> moved = source;
        for (int i = 0; i < moved.nItem(); ++i) connectTo(moved[i]);
        return *this;
    }
    ~Many() { disconnectAll(); }

    /// 1 when it is linked to `other` afterwards; 0 for null and when there is no memory for that.
    int connectTo(Other* other) {
        if (isInSet(other)) return 1;
        if (!other) return 0;
        One<Other, Owner>& end = other->*oneMember_;
        if (end && end != owner_) end.disconnect();
        if (!others_.add(other)) return 0;
        notify(other, 1);
        if (!isInSet(other)) return 0;
        return end == owner_ ? 1 : end.connectTo(owner_);
    }
    /// 0 when it was not linked to `other`.
    int disconnect(Other* other) {
        if (!others_.remove(other)) return 0;
        notify(other, 0);
        One<Other, Owner>& end = other->*oneMember_;
        if (end == owner_) end.disconnect();
        return 1;
    }
    /// 1 also for an index out of range, which does nothing.
    int disconnect(int index) {
        if (index >= 0 && index < getCount()) disconnect(others_[index]);
        return 1;
    }
    /// Unlinks all of them, the first one first. Always 1.
    int disconnectAll() {
        while (getCount() > 0) disconnect(others_[0]);
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
    void notify(Other* other, int connected) {
        if (callback_) (owner_->*callback_)(*this, other, connected);
    }

    SetPointer<Other> others_;
    Owner* owner_;
    Callback callback_;
    OneMember oneMember_;
};
