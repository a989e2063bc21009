// The thin containers of the library's signatures: CArray, an array that grows, RWTValSlist and
// RWTValOrderedVector, a list and a vector of values in the order in which they were appended. They
// own copies of their elements and are plain values themselves. Any index may be read: where there
// is no element, a default one is the answer.
#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <list>
#include <utility>
#include <vector>

/// `Arg` is the type in which elements are passed in; a reference is only read.
template <class T, class Arg = const T&>
class CArray {
  public:
    // How many elements it has.
    [[nodiscard]] int GetSize() const { return static_cast<int>(elements_.size()); }
    [[nodiscard]] bool IsEmpty() const { return elements_.empty(); }
    /// Cuts, or adds default elements. A negative size counts as 0.
    void SetSize(int size) { elements_.resize(size > 0 ? static_cast<std::size_t>(size) : 0); }

    // The element, or a default one outside the array.
    [[nodiscard]] const T& GetAt(int index) const { return (*this)[index]; }
    [[nodiscard]] const T& operator[](int index) const {
        static const T none{};
        return has(index) ? elements_[static_cast<std::size_t>(index)] : none;
    }
    /// Outside the array: a default element that is not part of it.
    [[nodiscard]] T& operator[](int index) {
        if (has(index)) return elements_[static_cast<std::size_t>(index)];
        outside_ = T{};
        return outside_;
    }

    /// Appends a copy and returns its index.
    int Add(Arg element) {
        elements_.push_back(element);
        return GetSize() - 1;
    }
    int Add(T&& element) {
        elements_.push_back(std::move(element));
        return GetSize() - 1;
    }
    /// Replaces an element; does nothing outside the array.
    void SetAt(int index, Arg element) {
        if (has(index)) elements_[static_cast<std::size_t>(index)] = element;
    }
    /// Replaces an element, growing the array up to it. A negative index does nothing.
    void SetAtGrow(int index, Arg element) {
        if (index < 0) return;
        T copy(element);
        if (!has(index)) SetSize(index + 1);
        elements_[static_cast<std::size_t>(index)] = std::move(copy);
    }
    /// Removes every element.
    void RemoveAll() { elements_.clear(); }

    // For loops; valid until the array changes.
    [[nodiscard]] auto begin() const { return elements_.begin(); }
    [[nodiscard]] auto end() const { return elements_.end(); }

  private:
    [[nodiscard]] bool has(int index) const { return index >= 0 && index < GetSize(); }

    std::vector<T> elements_;
    T outside_{};
};

/// A list that grows at its end.
template <class T>
class RWTValSlist {
  public:
    /// Appends a copy.
    void append(const T& value) { values_.push_back(value); }
    /// Removes every element.
    void clear() { values_.clear(); }

    // How many elements it has.
    [[nodiscard]] std::size_t entries() const { return values_.size(); }
    [[nodiscard]] bool isEmpty() const { return values_.empty(); }
    // The element at either end; a default one of an empty list.
    [[nodiscard]] T first() const { return values_.empty() ? T{} : values_.front(); }
    [[nodiscard]] T last() const { return values_.empty() ? T{} : values_.back(); }

    // For loops; valid while the list lives.
    [[nodiscard]] auto begin() const { return values_.begin(); }
    [[nodiscard]] auto end() const { return values_.end(); }

  private:
    std::list<T> values_;
};

/// A vector in the order of appending.
template <class T>
class RWTValOrderedVector {
  public:
    RWTValOrderedVector() = default;
    /// Empty, with room for this many elements.
    explicit RWTValOrderedVector(std::size_t room) { elements_.reserve(room); }
    // These elements, in their order.
    RWTValOrderedVector(std::initializer_list<T> elements) : elements_(elements) {}
    explicit RWTValOrderedVector(std::vector<T> elements) : elements_(std::move(elements)) {}

    // How many elements it has.
    [[nodiscard]] std::size_t entries() const { return elements_.size(); }
    [[nodiscard]] bool isEmpty() const { return elements_.empty(); }
    /// The element, or a default one where there is none.
    [[nodiscard]] const T& operator[](std::size_t index) const {
        static const T none{};
        return index < elements_.size() ? elements_[index] : none;
    }
    // The element at either end; a default one of an empty vector.
    [[nodiscard]] T first() const { return (*this)[0]; }
    [[nodiscard]] T last() const { return elements_.empty() ? T{} : elements_.back(); }

    /// Appends a copy.
    void append(const T& element) { elements_.push_back(element); }
    /// True when an element equals this one. Linear, like remove().
    [[nodiscard]] bool contains(const T& element) const { return find(element) != end(); }
    /// Removes the first element that equals this one; false when there is none.
    bool remove(const T& element) {
        const auto at = find(element);
        if (at == end()) return false;
        elements_.erase(at);
        return true;
    }
    /// Removes every element.
    void clear() { elements_.clear(); }

    // For loops; valid until the vector changes.
    [[nodiscard]] auto begin() const { return elements_.begin(); }
    [[nodiscard]] auto end() const { return elements_.end(); }

    friend bool operator==(const RWTValOrderedVector&, const RWTValOrderedVector&) = default;

  private:
    [[nodiscard]] auto find(const T& element) const { return std::find(begin(), end(), element); }

    std::vector<T> elements_;
};
