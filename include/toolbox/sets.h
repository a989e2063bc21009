// Small sets of pointers that keep the order in which their elements were placed: the tools of a
// command, the commands of a context, the children of a frame.
//
// Everything lies in one block that grows by a fixed increment and shrinks as soon as more than one
// increment is spare. Elements are found by a linear search and compared bit by bit; there is no
// key. A set never owns what its pointers point to.
//
// Int results are 1 for done or yes and 0 for refused or no; what is refused changes nothing. A set
// for which there is no more memory refuses to grow.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

/// `T` is a pointer or handle, or another type whose equality is that of its bytes.
template <class T>
class ContigSet {
    static_assert(std::is_trivially_copyable_v<T> && std::has_unique_object_representations_v<T>);

  public:
    /// Empty, without a block. An increment below 1 counts as 1 where elements are appended.
    explicit ContigSet(int increment) : increment_(increment) {}
    /// A copy has the increment and no spare room. It is empty when there is no memory for it.
    ContigSet(const ContigSet& other) : increment_(other.increment_) { copyItems(other); }
    /// Takes the elements and keeps its own increment.
    ContigSet& operator=(const ContigSet& other) {
        if (this == &other) return *this;
        init();
        copyItems(other);
        return *this;
    }
    virtual ~ContigSet() { std::free(items_); }

    /// True only for the very same object: equal contents do not make sets equal.
    bool operator==(const ContigSet& other) const { return this == &other; }

    /// Number of elements.
    virtual int nItem() const { return count_; }
    /// Removes every element and frees the block.
    virtual void init() {
        count_ = 0;
        reallocMem(0);
    }

    /// Appends an element that is not in the set yet.
    virtual int add(T item) { return isInSet(item) ? 0 : append(item); }
    /// Appends an element, even if already present.
    virtual int addNoCheck(T item) { return append(item); }
    /// The same at index 0; the other elements move up.
    virtual int insert(T item) { return isInSet(item) ? 0 : prepend(item); }
    /// The same for an element that may be in the set.
    virtual int insertNoCheck(T item) { return prepend(item); }

    /// Removes the first element that equals `item`; the others keep their order.
    virtual int remove(T item) { return removeByIndex(findItem(item)); }
    /// The same by index; 0 out of range.
    virtual int removeByIndex(int index) {
        if (!has(index)) return 0;
        std::memmove(items_ + index, items_ + index + 1, bytes(count_ - index - 1));
        --count_;
        if (capacity_ - count_ > increment_) reallocMem(count_);
        return 1;
    }

    /// 1 when an element equals `item`.
    virtual int isInSet(T item) const { return findItem(item) >= 0; }
    /// Index of the first element that equals `item`, -1 when there is none.
    virtual int findItem(T item) const {
        const T* found = search(items_, count_, item);
        return found == items_ + count_ ? -1 : static_cast<int>(found - items_);
    }

    /// Refuses an item that is in the set already, other than at `index`.
    virtual int replaceItem(int index, T item) {
        if (!has(index) || (!same(items_[index], item) && isInSet(item))) return 0;
        items_[index] = item;
        return 1;
    }
    /// Exchanges two elements; 0 also when `i` is `j`.
    virtual int exchangeItem(int i, int j) {
        if (!has(i) || !has(j) || i == j) return 0;
        std::swap(items_[i], items_[j]);
        return 1;
    }

    // Set operations. The new sets have the larger of the two increments.

    /// These elements, then those of `other` that are not among them yet.
    virtual ContigSet operator+(const ContigSet& other) const {
        ContigSet sum(largerIncrement(other));
        sum.copyItems(*this);
        sum += other;
        return sum;
    }
    /// add()s each element of `other`.
    virtual ContigSet& operator+=(const ContigSet& other) {
        for (int i = 0, n = other.count_; i < n; ++i) add(other.items_[i]);
        return *this;
    }
    /// Those of these elements that `other` does not hold.
    virtual ContigSet operator-(const ContigSet& other) const { return filtered(other, 0); }
    /// Removes each element of `other`, once for each time that `other` holds it.
    virtual ContigSet& operator-=(const ContigSet& other) {
        if (this == &other) init();
        for (int i = 0; i < other.count_; ++i) remove(other.items_[i]);
        return *this;
    }
    /// Those of these elements that `other` holds too.
    virtual ContigSet operator*(const ContigSet& other) const { return filtered(other, 1); }
    /// Keeps those that `other` holds too.
    virtual ContigSet& operator*=(const ContigSet& other) { return *this = *this * other; }

    /// An index out of range gives the element at index 0; in an empty set a null one.
    T operator[](int index) const {
        if (has(index)) return items_[index];
        return count_ > 0 ? items_[0] : T{};
    }

    /// The elements one after the other, until the set changes.
    [[nodiscard]] const T* data() const { return items_; }

  protected:
    /// Elements that the block has room for.
    [[nodiscard]] int capacity() const { return capacity_; }
    /// Makes room for exactly `n` elements, 0 frees the block. Refuses less than the set holds.
    int reallocMem(int n) {
        if (n == capacity_) return 1;
        if (n < count_ || static_cast<std::size_t>(n) > kMaxBytes / sizeof(T)) return 0;
        if (n == 0) {
            std::free(items_);
            items_ = nullptr;
        } else {
            void* block = std::realloc(static_cast<void*>(items_), bytes(n));
            if (!block) return 0;
            items_ = static_cast<T*>(block);
        }
        capacity_ = n;
        return 1;
    }
    /// Moves the elements up by `n` slots, which become zero; the count stays.
    int offsetMem(int n) {
        const std::int64_t needed = std::int64_t{count_} + n;
        if (needed > capacity_ && !growTo(needed + std::max(increment_, 0))) return 0;
        if (!items_) return 0;
        std::memmove(items_ + n, items_, bytes(count_));
        std::memset(static_cast<void*>(items_), 0, bytes(n));
        return 1;
    }

    /// That of the set that grows faster.
    [[nodiscard]] int largerIncrement(const ContigSet& other) const {
        return std::max(increment_, other.increment_);
    }

  private:
    static constexpr std::size_t kMaxBytes = PTRDIFF_MAX;

    static std::size_t bytes(int n) { return static_cast<std::size_t>(n) * sizeof(T); }
    static bool same(const T& a, const T& b) {
        if constexpr (std::is_scalar_v<T>)
            return a == b;
        else
            return std::memcmp(&a, &b, sizeof(T)) == 0;
    }
    static const T* search(const T* items, int count, const T& item) {
        if constexpr (std::is_scalar_v<T>)
            return std::find(items, items + count, item);
        else
            return std::find_if(items, items + count,
                                [&](const T& other) { return same(other, item); });
    }
    [[nodiscard]] bool has(int index) const { return index >= 0 && index < count_; }

    int growTo(std::int64_t n) {
        return n <= std::numeric_limits<int>::max() ? reallocMem(static_cast<int>(n)) : 0;
    }
    int append(T item) {
        if (capacity_ <= count_ && !growTo(std::int64_t{capacity_} + std::max(increment_, 1)))
            return 0;
        items_[count_++] = item;
        return 1;
    }
    int prepend(T item) {
        if (!offsetMem(1)) return 0;
        items_[0] = item;
        ++count_;
        return 1;
    }
    void copyItems(const ContigSet& other) {
        if (other.count_ == 0 || !reallocMem(other.count_)) return;
        std::memcpy(static_cast<void*>(items_), other.items_, bytes(other.count_));
        count_ = other.count_;
    }
    [[nodiscard]] ContigSet filtered(const ContigSet& other, int held) const {
        ContigSet kept(largerIncrement(other));
        for (int i = 0; i < count_; ++i)
            if (other.isInSet(items_[i]) == held) kept.append(items_[i]);
        return kept;
    }

    int capacity_ = 0;
    int count_ = 0;
    int increment_;
    T* items_ = nullptr;  // capacity_ slots, null while there are none
};

/// A set of untyped pointers that may refuse null pointers.
class SetPointerVoid : public ContigSet<void*> {
    using Base = ContigSet<void*>;

  public:
    /// With `allowNull` 0 every operation that stores an element refuses a null one.
    explicit SetPointerVoid(int allowNull = 0, int increment = 10)
        : Base(increment), allowNull_(allowNull) {}
    SetPointerVoid(const SetPointerVoid& other) = default;
    /// Takes the elements by addNoCheck(), so a set that refuses null pointers drops them.
    SetPointerVoid& operator=(const SetPointerVoid& other) {
        if (this == &other) return *this;
        init();
        for (int i = 0; i < other.nItem(); ++i) addNoCheck(other[i]);
        return *this;
    }

    int add(void* item) override { return takes(item) ? Base::add(item) : 0; }
    int addNoCheck(void* item) override { return takes(item) ? Base::addNoCheck(item) : 0; }
    int insert(void* item) override { return takes(item) ? Base::insert(item) : 0; }
    int insertNoCheck(void* item) override { return takes(item) ? Base::insertNoCheck(item) : 0; }
    int replaceItem(int index, void* item) override {
        return takes(item) ? Base::replaceItem(index, item) : 0;
    }

    using Base::operator+;
    using Base::operator+=;
    using Base::operator-;
    using Base::operator-=;
    using Base::operator*;
    using Base::operator*=;
    // The new set allows null pointers when either of the two does.
    SetPointerVoid operator+(const SetPointerVoid& other) const {
        return joined(other, Base::operator+(other));
    }
    SetPointerVoid operator-(const SetPointerVoid& other) const {
        return joined(other, Base::operator-(other));
    }
    SetPointerVoid operator*(const SetPointerVoid& other) const {
        return joined(other, Base::operator*(other));
    }

  private:
    [[nodiscard]] bool takes(const void* item) const { return item || allowNull_; }
    [[nodiscard]] SetPointerVoid joined(const SetPointerVoid& other, const Base& elements) const {
        SetPointerVoid set(allowNull_ || other.allowNull_, largerIncrement(other));
        for (int i = 0; i < elements.nItem(); ++i) set.addNoCheck(elements[i]);
        return set;
    }

    int allowNull_;
};

/// SetPointerVoid for pointers to one type; a plain value with the same operations.
template <class T>
class SetPointer {
  public:
    /// As SetPointerVoid's.
    explicit SetPointer(int allowNull = 0, int increment = 10) : set_(allowNull, increment) {}

    /// True only for the very same object.
    bool operator==(const SetPointer& other) const { return this == &other; }

    // The member's class is known, and saying it saves the way through the table of virtual
    // functions in loops over a set.
    [[nodiscard]] int nItem() const { return set_.SetPointerVoid::nItem(); }
    void init() { set_.init(); }
    int add(T* item) { return set_.add(item); }
    int addNoCheck(T* item) { return set_.addNoCheck(item); }
    int insert(T* item) { return set_.insert(item); }
    int insertNoCheck(T* item) { return set_.insertNoCheck(item); }
    int remove(T* item) { return set_.remove(item); }
    int removeByIndex(int index) { return set_.removeByIndex(index); }
    [[nodiscard]] int isInSet(T* item) const { return set_.SetPointerVoid::findItem(item) >= 0; }
    [[nodiscard]] int findItem(T* item) const { return set_.SetPointerVoid::findItem(item); }
    int replaceItem(int index, T* item) { return set_.replaceItem(index, item); }
    int exchangeItem(int i, int j) { return set_.exchangeItem(i, j); }

    // As SetPointerVoid's.
    SetPointer operator+(const SetPointer& other) const { return SetPointer(set_ + other.set_); }
    SetPointer operator-(const SetPointer& other) const { return SetPointer(set_ - other.set_); }
    SetPointer operator*(const SetPointer& other) const { return SetPointer(set_ * other.set_); }
    SetPointer& operator+=(const SetPointer& other) {
        set_ += other.set_;
        return *this;
    }
    SetPointer& operator-=(const SetPointer& other) {
        set_ -= other.set_;
        return *this;
    }
    SetPointer& operator*=(const SetPointer& other) {
        set_ *= other.set_;
        return *this;
    }
    /// An index out of range gives the first element, in an empty set null.
    T* operator[](int index) const { return static_cast<T*>(set_[index]); }
    /// Copies the elements to `out`, which has room for nItem() of them.
    void copyTo(T** out) const {
        std::transform(set_.data(), set_.data() + nItem(), out,
                       [](void* item) { return static_cast<T*>(item); });
    }

  private:
    explicit SetPointer(const SetPointerVoid& set) : set_(set) {}

    SetPointerVoid set_;
};
