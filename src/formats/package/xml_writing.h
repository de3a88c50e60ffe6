// Writing XML straight into a text: large parts are written once, front to back, and need no tree.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvel::formats {

inline constexpr std::string_view xmlDeclaration = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";

/// Appends with markup escaped. Bytes that are no UTF-8 become U+FFFD and characters that XML cannot hold are left out,
/// so that the result is always well-formed.
void appendEscaped(std::string& out, std::string_view text, bool inAttribute);

class XmlWriter {
 public:
  XmlWriter& start(std::string_view name);
  XmlWriter& attribute(std::string_view name, std::string_view value);
  XmlWriter& attribute(std::string_view name, long value);
  XmlWriter& text(std::string_view text);
  /// Well-formed XML, unchanged.
  XmlWriter& raw(std::string_view xml);
  /// Closes the innermost element; one without contents closes itself.
  XmlWriter& end();
  /// The same with a tag of its own in any case.
  XmlWriter& endWhole();

  std::string take() { return std::move(out_); }

 private:
  void closeStart();
  std::string out_;
  std::vector<std::string> open_;
  bool startIsOpen_ = false;
};

}  // namespace quorvel::formats
