// Writes the shapes of a page's or master's part of a package, and collects the parts of their images.
#pragma once

#include <map>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "formats/common/carried.h"
#include "formats/package/relationships.h"
#include "formats/package/xml_writing.h"
#include "host/sheet/store.h"

namespace quorvel::formats {

/// Images of all shapes, one part for each: equal images share a part, and a part keeps its name while it can.
class ImageParts {
 public:
  /// `taken` are the keys of the part names that are in use.
  explicit ImageParts(std::unordered_set<std::string>& taken) : taken_(taken) {}

  struct Part {
    std::string name, contentType;
    const host::ForeignData* picture = nullptr;
  };
  const Part& partOf(const host::ForeignData& picture);
  /// In the order of first use.
  std::vector<const Part*> all() const;

 private:
  std::unordered_set<std::string>& taken_;
  std::map<std::string, Part> parts_;  ///< by contents and old name
  std::vector<const Part*> order_;
  std::unordered_map<const host::ForeignData*, const Part*> known_;
  int next_ = 1;
};

/// The page or master's part that is being written.
struct PartContext {
  const host::Store& store;
  std::string part;
  Relationships& relationships;
  ImageParts& pictures;
  std::unordered_set<host::MasterId> usedMasters = {};
  std::unordered_set<host::SheetId> leftOut = {};   ///< members that are not written
  const CarriedPage* carry = nullptr;               ///< what the page or master carries; may be null
  std::map<std::string, std::size_t> usedIds = {};  ///< relationship ids that were written, with how often
};

void writeShape(XmlWriter& writer, PartContext& context, host::SheetId shape);

}  // namespace quorvel::formats
