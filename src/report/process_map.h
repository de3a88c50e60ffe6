// A drawing read as a process map: pages, Tasks, links, connectors, hyperlinks and lists as plain values.
//
// Everything that reports, checks, compares or prints a map starts from this value. It is read once and does not follow
// the drawing; it holds no file, no handle and makes no call.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/sheet/store.h"
#include "schema/masters.h"

namespace quorvel::report {

/// Which shape of the map a value was read from.
struct ShapeKey {
  std::size_t page = 0;  ///< index in ProcessMap::pages
  int shapeId = 0;       ///< the shape's ID on that page
  friend bool operator==(const ShapeKey&, const ShapeKey&) = default;
};

struct Task {
  ShapeKey shape;
  std::string uniqueId;  ///< "{…}", never changes; empty when it has none
  std::string id, description, responsibleRole;
  std::vector<std::string> supportingRoles;  ///< those that are filled, in order
  std::string guidelines, resources;         ///< entries joined by ";"
  std::string completionTime;                ///< number and unit, "15 em." for fifteen minutes; empty: none
  std::string frequency, notes;
  std::string linkedTask;  ///< the lower-level Task that the sub-task box shows; empty: none
};

/// What an end of a Task Link is glued to.
struct LinkEnd {
  enum class Kind { Loose, Task, ProcessConnector, OtherShape };
  Kind kind = Kind::Loose;
  int shapeId = 0;    ///< on the link's own page; a member of a group counts as its outermost group
  std::string label;  ///< a Task's ID, the ID that a connector shows, or the shape's name; empty: loose
};

struct TaskLink {
  ShapeKey shape;
  std::string uniqueId, description;
  std::string time;  ///< as Task::completionTime
  LinkEnd from, to;
};

struct ProcessConnector {
  ShapeKey shape;
  std::string uniqueId, shownId;
  std::string address;     ///< of its first hyperlink: the other drawing; empty for this one
  std::string subAddress;  ///< page name, "/", Task ID; empty without a target
};

struct Hyperlink {
  ShapeKey shape;     ///< the shape that has the row, a member of a Task for instance
  int ownerId = 0;    ///< the outermost group around it, or the shape itself
  std::string owner;  ///< the owner's label, as in LinkEnd
  std::string description, address, subAddress, extraInfo;
  std::string record;  ///< the Frame cell, in which the map keeps what kind of link it is
  bool isDefault = false;
};

struct MapPage {
  std::string name;
  bool background = false;
  int shapeCount = 0;         ///< shapes on the page itself, groups counted once
  std::string taskIdLetters;  ///< the letters of its Task IDs; empty before the first
  std::vector<Task> tasks;    ///< this and the following: in the order of the stack, shapes in groups left out
  std::vector<TaskLink> links;
  std::vector<ProcessConnector> connectors;
  std::vector<Hyperlink> hyperlinks;  ///< of all shapes, members of groups included
};

struct ProcessMap {
  std::string title, templateName;
  bool isStencil = false;
  bool isProcessMap = false;  ///< based on Quorvel's template, by its name
  std::vector<std::string> masters;
  std::vector<std::string> roles;  ///< the document's list
  std::vector<std::string> timeUnits, timeUnitAbbreviations, frequencies, frequencyAbbreviations;  ///< likewise
  std::vector<MapPage> pages;  ///< in the document's order, background pages included
};

/// The document must exist in the store. Cells that a drawing lacks read as empty.
ProcessMap readProcessMap(const host::Store& store, host::DocumentId document);

/// By the master of the shape, or of the instance that it is a member of.
schema::ShapeClass classOfShape(const host::Store& store, host::SheetId shape);
/// The shape's label in lists and pictures: a Task's ID, the ID that a connector shows, or the shape's name.
std::string labelOfShape(const host::Store& store, host::SheetId shape);

/// Address and sub-address as one text, joined by "#" when both are there.
std::string hyperlinkTarget(const std::string& address, const std::string& subAddress);

}  // namespace quorvel::report
