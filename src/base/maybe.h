// A value that a call may have failed to give, with one rule for conditions: a comparison with a missing value is
// false.
#pragma once

#include <concepts>
#include <optional>
#include <type_traits>
#include <utility>

namespace quorvel {

/// The result of a call that may fail. Unlike std::optional, every comparison with a missing value is false, `!=` and
/// `<` included: a condition on a failed read must not let its body run.
template <class T>
class Maybe {
 public:
  Maybe() = default;
  Maybe(std::nullopt_t) {}
  template <class U = T>
  requires(std::convertible_to<U, T> && !std::same_as<std::remove_cvref_t<U>, Maybe>) Maybe(U&& value)
      : value_(T(std::forward<U>(value))) {}

  explicit operator bool() const { return value_.has_value(); }
  bool has() const { return value_.has_value(); }

  /// Undefined when there is no value; test first or use `or_`.
  const T& operator*() const { return *value_; }
  const T* operator->() const { return &*value_; }

  /// The value, or `other` when there is none.
  T or_(T other) const& { return value_ ? *value_ : std::move(other); }
  T or_(T other) && { return value_ ? std::move(*value_) : std::move(other); }

  template <class U>
  friend bool operator==(const Maybe& a, const U& b) {
    return a.value_ && *a.value_ == b;
  }
  template <class U>
  friend bool operator!=(const Maybe& a, const U& b) {
    return a.value_ && !(*a.value_ == b);
  }
  template <class U>
  friend bool operator<(const Maybe& a, const U& b) {
    return a.value_ && *a.value_ < b;
  }
  template <class U>
  friend bool operator>(const Maybe& a, const U& b) {
    return a.value_ && b < *a.value_;
  }
  template <class U>
  friend bool operator<=(const Maybe& a, const U& b) {
    return a.value_ && !(b < *a.value_);
  }
  template <class U>
  friend bool operator>=(const Maybe& a, const U& b) {
    return a.value_ && !(*a.value_ < b);
  }

 private:
  std::optional<T> value_;
};

/// Assigns when there is a value; otherwise `target` does not change.
template <class T, class U>
bool keep(T& target, const Maybe<U>& value) {
  if (!value) return false;
  target = *value;
  return true;
}

}  // namespace quorvel
