#pragma once

#include <memory>
#include <utility>

namespace tolva::rtf {

/// A value that many places hold at the cost of a pointer: copies share it, a change makes a copy of its own.
/// Compares by value. Memory stays in proportion to the source however often a short word repeats a long
/// definition.
template <class T>
class Shared {
  public:
    Shared() = default;
    Shared(T value) : value_(std::make_shared<T>(std::move(value))) {}

    const T& operator*() const { return value_ ? *value_ : plain(); }
    const T* operator->() const { return &**this; }

    /// The value for changing, no longer shared. Valid until the next copy of this object is made.
    T& own() {
        if (!value_ || value_.use_count() > 1)
            value_ = std::make_shared<T>(**this);
        return *value_;
    }

    friend bool operator==(const Shared& a, const Shared& b) { return a.value_ == b.value_ || *a == *b; }

  private:
    static const T& plain() {
        static const T value{};
        return value;
    }

    std::shared_ptr<T> value_;
};

} // namespace tolva::rtf
