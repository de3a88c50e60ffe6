// An immutable text shared by reference count in one pointer: cells hold many equal texts.
#pragma once

#include <atomic>
#include <string>
#include <string_view>

namespace quorvel {

/// Empty text takes no memory. Copies share; comparing compares the characters.
class SharedText {
 public:
  SharedText() = default;
  explicit SharedText(std::string_view text) : body_(text.empty() ? nullptr : new Body{std::string(text), {1}}) {}
  SharedText(const SharedText& other) : body_(other.body_) { retain(); }
  SharedText(SharedText&& other) noexcept : body_(other.body_) { other.body_ = nullptr; }
  SharedText& operator=(SharedText other) noexcept {
    std::swap(body_, other.body_);
    return *this;
  }
  ~SharedText() {
    if (body_ && body_->count.fetch_sub(1) == 1) delete body_;
  }

  std::string_view view() const { return body_ ? std::string_view(body_->text) : std::string_view(); }
  std::string str() const { return std::string(view()); }
  bool empty() const { return !body_; }
  friend bool operator==(const SharedText& a, const SharedText& b) {
    return a.body_ == b.body_ || a.view() == b.view();
  }

 private:
  struct Body {
    std::string text;
    std::atomic<unsigned> count;
  };
  void retain() {
    if (body_) body_->count.fetch_add(1);
  }
  Body* body_ = nullptr;
};

}  // namespace quorvel
