// How many Tasks a page or a selection holds.
#pragma once

#include <string_view>

#include "addin/dsr_visio_connect.h"

namespace quorvel::addin {

/// `scope` is "Selected" (the active selection) or "Page" (the active page); any other counts nothing. Members of
/// groups are not counted.
int TaskCount(const dsrVisioConnect& connect, std::string_view scope);

/// Is there exactly one Task on the active page? As TaskCount, but ends at the second one: a drop must not cost more
/// on a page of many Tasks.
bool isOnlyTaskOnPage(const dsrVisioConnect& connect);

}  // namespace quorvel::addin
