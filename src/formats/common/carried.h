// What a drawing's file holds that the engine's data has no place for, kept with the objects so that a save writes
// it back. Everything here is optional: an object made by the engine has none of it. Members that begin with `older`
// are XML in the vocabulary of the single-file format of older releases; only that format writes them back.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "formats/package/content_types.h"
#include "formats/package/packed_bytes.h"
#include "formats/package/relationships.h"
#include "host/sheet/store.h"

namespace quorvel::formats {

using AttributeList = std::vector<std::pair<std::string, std::string>>;

/// A cell as the file writes it, kept where our own writing of the same cell would read differently: numbers with more
/// digits than they need, units that the cell has anyway, formulas that do not parse. It counts only as long
/// as the cell still is what this text reads as.
struct CarriedCell {
  host::Column column = 0;
  std::string name;  ///< empty: the name that the cell table gives
  bool hasValue = false, hasUnit = false, hasFormula = false, hasError = false;
  std::string value, unit, formula, error;
  bool formulaIsBroken = false;
  bool valueIsContent = false;  ///< the value is the element's own text, as that of several lines may be
  AttributeList attributes;     ///< that we don't know
  std::string contents;         ///< raw XML
  std::string older;            ///< the whole element; also for one that only says "inherited" and is no cell
  int olderPlace = 0;           ///< the vocabulary that it was read in: 0 the core, else that of a later release …
  std::string olderFallback;    ///< … and the element that the core has instead
};

struct CarriedRow : host::Extras {
  AttributeList attributes;
  std::vector<CarriedCell> cells;
  std::string contents;  ///< raw XML of children that are no cells, and of cells that could not be taken in
  AttributeList olderAttributes;
  std::string olderContents;

  const CarriedCell* find(host::Column column) const {
    for (const CarriedCell& cell : cells) {
      if (cell.column == column) return &cell;
    }
    return nullptr;
  }
};

struct CarriedSection : host::Extras {
  AttributeList attributes;
  std::string contents;
  std::string olderContents;
};

/// A name that the file left to its default is not written as long as it is unchanged.
struct CarriedName {
  bool known = false;
  std::string name, universalName;                  ///< as read
  bool hasName = false, hasUniversalName = false;   ///< as written in the file
  std::string isCustomName, isCustomUniversalName;  ///< the attributes' text; empty: absent
};

struct CarriedPackage;

struct CarriedSheet : host::Extras {
  CarriedName names;
  AttributeList attributes;
  std::string contents;                  ///< raw XML of elements that we don't know, before the text …
  std::string tail;                      ///< … and behind it
  std::string deletedMembers;            ///< raw XML of the members that this instance's file says are deleted
  std::vector<int> deletedMasterShapes;  ///< their numbers in the master
  std::string text;                      ///< the Text element as written, kept where our own writing would differ
  std::shared_ptr<const host::TextBody> textRead;  ///< what it was read as
  unsigned emptyData = 0;                          ///< bit n: the element Data<n+1> exists and is empty
  bool lacksText = false;         ///< the file left the Text element out although its fields show something else than
  std::string fieldsWithoutText;  ///< the master's; what they showed then
  /// Where relationship ids in the raw XML lead somewhere. Null: there are none.
  std::shared_ptr<const CarriedPackage> linksFrom;
  std::string linksFromPart;
  bool lacksType = false;      ///< the Type is the master's
  bool omittedInFile = false;  ///< a member of an instance that the file does not mention
  std::string olderContents;
};

struct CarriedForeign : host::Extras {
  AttributeList attributes;
  std::string contents;
  std::string part;  ///< the part that held the bytes
  std::string relationshipType;
  std::string contentType;
  bool olderLacksHeader = false;  ///< the older file held the bitmap without the header that bitmap files begin with
};

/// A part that we don't know.
struct CarriedPart {
  std::string name;
  std::string contentType;
  PackedBytes bytes;
};

/// The package that a document came from. Also decides whether part names and relationships of a page or master are
/// those of this package or, after copying between documents, mean nothing here.
struct CarriedPackage {
  ContentTypes contentTypes;
  std::vector<CarriedPart> parts;
  Relationships root, document, masters, pages;
  std::string documentPart, mastersPart, pagesPart, corePart, applicationPart, customPart;
};

struct CarriedPage : host::Extras {
  std::shared_ptr<const CarriedPackage> package;
  std::string part;
  std::string listId;  ///< relationship id in the list of pages or masters
  Relationships relationships;
  CarriedName names;
  AttributeList attributes;                     ///< of the entry in the list
  std::string contents;                         ///< raw XML in the entry, a master's icon included
  AttributeList contentsAttributes;             ///< of the part's root element
  std::string contentsTail;                     ///< raw XML behind shapes and connects
  std::map<std::string, std::string> connects;  ///< our writing of a connect to the file's, where they differ
  std::string deletedShapes;
  std::string olderContents;
};

struct CarriedDocument : host::Extras {
  std::shared_ptr<const CarriedPackage> package;
  AttributeList documentAttributes, mastersAttributes, pagesAttributes;  ///< of the parts' root elements
  std::string settings;                                                  ///< the DocumentSettings element
  std::string colours;  ///< the Colors element, and what it was read as
  std::map<int, std::uint32_t> coloursRead;
  std::string contents;  ///< elements of the document part that we don't know
  std::string mastersTail, pagesTail;
  std::string core, application, custom;  ///< the property parts
  AttributeList olderAttributes;
  std::map<std::string, std::string> olderElements;  ///< by name; under "" those of other namespaces
};

struct CarriedFont : host::Extras {
  AttributeList attributes;
  int olderNumber = -1;  ///< what cells of an older file call it
};

template <class T>
const T* carried(const host::ExtrasPtr& extras) {
  return dynamic_cast<const T*>(extras.get());
}

}  // namespace quorvel::formats
