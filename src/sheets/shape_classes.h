// How a shape is recognised as one of our classes: by its master's name or by the mark in Data1, never by its own name.
#pragma once

#include <string>
#include <string_view>

#include "model/host_model.h"
#include "schema/marks.h"
#include "schema/masters.h"

namespace quorvel::addin {

namespace marks = schema::marks;
namespace masters = schema::masters;
namespace taskMember = schema::taskMember;

/// The master's name up to the first "."; empty for a shape without a master. A member that came with its group's
/// master answers that master's name.
std::string classNameOf(const Shape& shape);

/// Each is false for a shape without a master. A member of a Task counts as a Task here; see `isTopLevel`.
bool IsTask(const Shape& shape);
bool IsTaskLink(const Shape& shape);
bool IsProcessConnector(const Shape& shape);

/// Does the shape stand on the page itself, in no group?
bool isTopLevel(const Shape& shape);

/// By its mark or by its name: boxes of older drawings bear only one of the two.
bool isSubTaskBox(const Shape& shape);

/// Does the selection hold a Process Connector or a sub-task box? Members of groups are looked at in their own right;
/// the selection keeps that way of walking.
bool containProcessConectorOrSubtask(const Selection& selection);

/// Are there members of another class than the first one's? Members without a master count as a class of their own.
bool FnDiffrentShape(const Selection& selection);

}  // namespace quorvel::addin
