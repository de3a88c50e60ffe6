// What number, text and date formats have in common: quoted and escaped literals and the blanks between them.
#pragma once

#include <string>
#include <string_view>

namespace quorvel::host {

class FormatScanner {
 public:
  explicit FormatScanner(std::string_view format) : format_(format) {}

  bool atEnd() const { return at_ >= format_.size(); }
  char current() const { return format_[at_]; }
  char next() const { return at_ + 1 < format_.size() ? format_[at_ + 1] : '\0'; }
  std::string_view rest() const { return format_.substr(at_); }
  std::size_t position() const { return at_; }
  void skip(std::size_t count) {
    at_ += count;
    afterQuoted_ = false;
  }

  /// Takes a quoted piece, an escaped character or blanks into `text`; false when something else is here. A blank
  /// between two quoted pieces only separates them.
  bool takeLiteral(std::string& text) {
    const char c = current();
    if (c == '\'' || c == '"') {
      const auto end = format_.find(c, at_ + 1);
      const bool closed = end != std::string_view::npos;
      text.append(format_.substr(at_ + 1, (closed ? end : format_.size()) - at_ - 1));
      at_ = closed ? end + 1 : format_.size();
      afterQuoted_ = true;
      return true;
    }
    if (c == '\\') {
      if (at_ + 1 < format_.size()) text += format_[at_ + 1];
      at_ += 2;
      afterQuoted_ = true;
      return true;
    }
    if (c != ' ') return false;
    std::size_t end = at_;
    while (end < format_.size() && format_[end] == ' ') ++end;
    const bool separates = afterQuoted_ && end < format_.size() && (format_[end] == '\'' || format_[end] == '"');
    if (!separates) text.append(end - at_, ' ');
    at_ = end;
    afterQuoted_ = false;
    return true;
  }

  /// How often the current character is repeated here.
  std::size_t runLength() const {
    std::size_t end = at_;
    while (end < format_.size() && format_[end] == format_[at_]) ++end;
    return end - at_;
  }

 private:
  std::string_view format_;
  std::size_t at_ = 0;
  bool afterQuoted_ = false;
};

/// A date format applied to days since 1899-12-30.
std::string formatDate(double days, std::string_view format, int language);
/// A format such as "[h]:mm" applied to a number of days that passed.
std::string formatElapsed(double days, std::string_view format);
/// The format has a place for a part of a date or a time.
bool hasDatePlaces(std::string_view format);
/// The format has a place in square brackets for elapsed time.
bool hasElapsedPlaces(std::string_view format);

}  // namespace quorvel::host
