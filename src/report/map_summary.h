// What a drawing says as a process map: its Tasks, links and connectors as values.
#pragma once

#include <string>
#include <vector>

#include "host/sheet/store.h"

namespace quorvel::report {

struct TaskSummary {
  int shapeId = 0;
  std::string id, description, responsibleRole, completionTime, frequency;
  std::vector<std::string> supportingRoles;  ///< those that are filled, in order
  std::string linkedTask;                    ///< the lower-level Task that the sub-task box names; empty: none
};

struct LinkSummary {
  int shapeId = 0;
  std::string description, time;
  std::string from,
      to;  ///< what the ends are glued to: a Task's ID, a connector's shown ID, or a shape's name; empty: loose
};

struct ConnectorSummary {
  int shapeId = 0;
  std::string shownId;
  std::string target;  ///< the first hyperlink's address and sub-address; empty: none
};

struct HyperlinkSummary {
  std::string on;  ///< a Task's ID, a connector's shown ID, or the shape's name
  std::string description, address, subAddress;
};

struct PageSummary {
  std::string name;
  bool background = false;
  int shapeCount = 0;  ///< at the top of the page
  std::vector<TaskSummary> tasks;
  std::vector<LinkSummary> links;
  std::vector<ConnectorSummary> connectors;
  std::vector<HyperlinkSummary> hyperlinks;
};

struct MapSummary {
  std::string title, templateName;
  bool isStencil = false;
  bool isProcessMap = false;  ///< based on our template, by its name
  std::vector<std::string> masters;
  std::vector<PageSummary> pages;
};

MapSummary summarize(const host::Store& store, host::DocumentId document);

}  // namespace quorvel::report
