// What kind of content each part of a package holds: by its extension, or said for the one part.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvel::formats {

class ContentTypes {
 public:
  /// Reads "[Content_Types].xml". Empty when it went well; else what is wrong with it.
  std::string parse(std::string& xml);

  /// Empty when nothing is said about the part.
  std::string typeOf(std::string_view part) const;
  /// Says the type of the part where the type of its extension is another.
  void set(std::string_view part, std::string_view type);
  /// The type of all parts with the extension, unless one is said already.
  void addDefault(std::string_view extension, std::string_view type);
  /// The same defaults and no parts.
  ContentTypes defaultsOnly() const;

  std::string xml() const;

 private:
  std::vector<std::pair<std::string, std::string>> defaults_;  ///< by extension in lower case
  std::vector<std::pair<std::string, std::string>> parts_;     ///< name as written, in order
  std::map<std::string, std::size_t, std::less<>> places_;     ///< part key to place in parts_
};

}  // namespace quorvel::formats
