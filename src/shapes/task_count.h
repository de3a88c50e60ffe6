// How many Tasks a page or a selection holds.
#pragma once

#include <string_view>

#include "addin/dsr_visio_connect.h"

namespace quorvel::addin {

/// `scope` is "Selected" (the active selection) or "Page" (the active page); any other counts nothing. Members of
/// groups are not counted.
int TaskCount(const dsrVisioConnect& connect, std::string_view scope);

}  // namespace quorvel::addin
