// One call of each published member through its handle: the list for the sweep of null and deleted handles.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "model/host_model.h"

namespace quorvel {

/// Handles that one round of the sweep calls, all null or all to objects removed in one way. A kind that has none in
/// this round is null.
struct Subjects {
  Application application;
  Documents documents;
  Document document;
  Pages pages;
  Page page;
  Masters masters;
  Master master;
  Shapes shapes;
  Shape shape;
  Section section;
  Row row;
  Cell cell;
  Characters characters;
  Selection selection;
  Windows windows;
  Window window;
  Layers layers;
  Layer layer;
  Hyperlinks hyperlinks;
  Hyperlink hyperlink;
  Connects connects;
  Connect connect;
  CommandBars commandBars;
  CommandBar commandBar;
  CommandBarControls controls;
  CommandBarControl control;

  // Arguments that are valid in a running host.
  Shape otherShape;
  Page otherPage;
  Master otherMaster;
  Cell otherCell;
};

struct HandleCall {
  Member member;
  bool isPut;  ///< a property that is read and written is listed twice
  /// True when the call gave something or was done.
  std::function<bool(const Subjects&)> succeeds;
};

const std::vector<HandleCall>& handleCalls();

/// The handle of the member's object among the subjects.
const Handle& subjectOf(const Subjects& subjects, ObjectKind kind);

}  // namespace quorvel
