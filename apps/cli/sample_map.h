// The sample map "Order handling", made by the calls that a user's drops and entries cause.
#pragma once

#include <string>
#include <vector>

#include "session/session.h"

namespace quorvel::cli {

/// The place of a shape's pin on its page, in inches.
struct Place {
  double x = 0, y = 0;
};

struct SampleTask {
  Place place;
  std::string description, responsible;
  std::vector<std::string> supporting{};
  double time = 0;
  std::string timeUnits;  ///< one of the five of Time Units
  std::string frequency;
  std::string guidelines{}, resources{}, notes{};  ///< the first two in pieces separated by ";"
  std::string opensPage{}, opensTask{};  ///< the lower-level Task that its sub-task box refers to; empty: none
};

struct SampleConnector {
  Place place;
  std::string page, task;  ///< where the process continues
  std::string end{};       ///< its name in links; empty: ">" and the Task
};

/// Ends are a Task's ID or a connector's name.
struct SampleLink {
  std::string from, to, description;
};

struct SamplePage {
  std::string name, title;
  std::vector<SampleTask> tasks;  ///< numbered in this order
  std::vector<SampleConnector> connectors;
  std::vector<SampleLink> links;
};

/// In order_handling.cpp.
const std::vector<SamplePage>& orderHandling();
/// The map's own list of roles, as the document keeps it.
std::string orderHandlingRoles();

/// The map, not yet saved. On an error the handle is null and `error` is one sentence.
Document makeSampleMap(Session& session, std::string& error);

}  // namespace quorvel::cli
