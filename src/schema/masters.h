// The masters of a map's shapes, and the classes that shapes belong to by their master's name.
#pragma once

#include <string_view>

namespace quorvel::schema {

/// What a shape is to a process map. It is decided by its master's name, never by its own.
enum class ShapeClass { Other, Task, TaskLink, ProcessConnector };

namespace masters {
inline constexpr std::string_view task = "Task", taskLink = "Task Link", connector = "Connector",
                                  processConnector = "Process Connector";
}  // namespace masters

/// The name up to the first ".": the host numbers a master that came twice, "Task.12" is a Task.
constexpr std::string_view firstPieceOf(std::string_view masterName) {
  return masterName.substr(0, masterName.find('.'));
}

/// Letter case counts. An empty name is that of a shape without a master.
constexpr ShapeClass classOfMaster(std::string_view masterName) {
  const std::string_view piece = firstPieceOf(masterName);
  if (piece == masters::task) return ShapeClass::Task;
  if (piece == masters::taskLink) return ShapeClass::TaskLink;
  if (piece == masters::connector || piece == masters::processConnector) return ShapeClass::ProcessConnector;
  return ShapeClass::Other;
}

/// Sub-shapes of a Task are found by their 1-based place in the group.
namespace taskMember {
inline constexpr int lowerBox = 2, subTaskBox = 3, descriptionBox = 4;
}

/// A drawing is a process map when the name of its template contains this word, whatever its letter case.
inline constexpr std::string_view productName = "Quorvel";

}  // namespace quorvel::schema
