// The relationships of one part: how parts of a package find each other.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel::formats {

struct Relationship {
  std::string id;
  std::string type;
  std::string target;  ///< as written
  std::string part;    ///< the part that it means; empty when external or leading nowhere
  bool external = false;
};

class Relationships {
 public:
  /// Reads the relationships part of `source`. Empty when it went well; else what is wrong with it.
  std::string parse(std::string_view source, std::string& xml);

  const std::vector<Relationship>& all() const { return all_; }
  bool empty() const { return all_.empty(); }
  /// Null when there is none.
  const Relationship* withId(std::string_view id) const;
  /// The first whose type ends in `typeEnd` ("/pages"): two families of type names differ only before that.
  const Relationship* ofType(std::string_view typeEnd) const;

  /// The id of the relationship to the part, made when there is none of that type.
  std::string idFor(std::string_view source, std::string_view type, std::string_view part);
  /// Ids that are not to be given to new relationships.
  void reserve(const std::vector<std::string>& ids) { reserved_.insert(ids.begin(), ids.end()); }
  /// Takes out what points to parts that are not kept.
  void keepOnly(const std::function<bool(const Relationship&)>& kept);

  std::string xml() const;

 private:
  std::vector<Relationship> all_;
  std::set<std::string, std::less<>> reserved_;
};

/// The relationship ids that a part's text uses, each as often as it does. They are written with the prefix `r`.
std::vector<std::string> usedIds(std::string_view xml);

}  // namespace quorvel::formats
