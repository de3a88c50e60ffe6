// What the readers of one drawing share while they run.
#pragma once

#include <map>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "formats/common/carried.h"
#include "formats/package/zip_package.h"
#include "host/recalc/cell_address.h"
#include "host/sheet/store.h"

namespace quorvel::formats {

/// Numbers in files stay below, so that the engine has numbers left for new objects.
inline constexpr int largestFileNumber = 1 << 30;

/// A shape that names its master before all masters are read.
struct PendingLink {
  host::SheetId sheet;
  int instanceMaster = -1;  ///< file ID of the master of the instance that it is a member of
  int ownMaster = -1;       ///< file ID of the master that it names itself
  int masterShape = -1;     ///< number of the shape of `instanceMaster`; negative: none named
};

struct ReadState {
  ReadState(host::Store& engineStore, host::DocumentId fresh, const ZipPackage& source)
      : store(engineStore), document(fresh), package(source) {}

  host::Store& store;
  host::DocumentId document;
  const ZipPackage& package;
  std::shared_ptr<CarriedPackage> carriedPackage = std::make_shared<CarriedPackage>();
  std::unordered_map<int, host::SheetId> styles;
  std::unordered_map<int, host::MasterId> masters;
  std::vector<PendingLink> pending;
  host::SheetId sheet;                      ///< whose cells are being read
  std::vector<host::CellAddress> unvalued;  ///< cells with a formula and no value
  int madeMembers = 0;                      ///< members made for instances whose file left them out
  std::unordered_set<std::string> taken;    ///< keys of the parts whose contents are in the engine's data
  /// Images by part and attributes: shapes that show the same image share its bytes.
  std::map<std::string, std::shared_ptr<const host::ForeignData>> pictures;
};

/// What is carried with an object, made when missing. Only for objects of the drawing that is being read.
template <class T>
T& extrasOf(host::ExtrasPtr& extras) {
  if (!extras) extras = std::make_shared<T>();
  return const_cast<T&>(static_cast<const T&>(*extras));
}

struct ShapeSource;

/// How a format says what shapes hold; their nesting, text and links to masters are said the same way in both.
struct ShapeVocabulary {
  /// Takes a child of the sheet that is neither text nor data nor members. `behindText`: one of those came before it.
  void (*readChild)(ReadState& state, host::Sheet& sheet, pugi::xml_node child, bool behindText);
  /// Reads an image; false when the element holds none.
  bool (*readPicture)(ReadState& state, const ShapeSource& source, host::Sheet& sheet, pugi::xml_node node);
};

/// The place of the shape that is being read.
struct ShapeSource {
  host::PageId page;
  const Relationships& relationships;
  const ShapeVocabulary& vocabulary;
  std::string part = {};        ///< in packages
  std::string shapesTail = {};  ///< collects deleted and unknown elements among the top shapes
};

}  // namespace quorvel::formats
