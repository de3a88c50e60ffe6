// The class of a shape, by its master's name or by the mark in Data1, never by its own name.
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

/// The master's name up to the first "."; empty for a shape without a master. For a member that came with its
/// group's master, that master's name.
std::string classNameOf(const Shape& shape);

/// Each is false for a shape without a master. A member of a Task counts as a Task here; see `isWholeTask`.
bool IsTask(const Shape& shape);
bool IsTaskLink(const Shape& shape);
bool IsProcessConnector(const Shape& shape);

/// True when the shape is on the page itself and in no group.
bool isTopLevel(const Shape& shape);

/// A Task that is on the page itself, and no member of a Task or of another group.
bool isWholeTask(const Shape& shape);

/// By its mark or by its name: boxes of older drawings have only one of the two.
bool isSubTaskBox(const Shape& shape);

/// True when the selection holds a Process Connector or a sub-task box. Members of groups are visited too; the
/// selection's iteration mode stays changed.
bool containProcessConectorOrSubtask(const Selection& selection);

/// True when the members are of several classes. Members without a master count as a class of their own.
bool FnDiffrentShape(const Selection& selection);

}  // namespace quorvel::addin
