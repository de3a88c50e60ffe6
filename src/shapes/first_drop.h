// The first time that a shape enters a page: plain instances of our masters become working shapes.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Marks logo and legend, and hands an instance of one of our masters to its class's routine below. Any other shape is
/// left as it is. `page` is the page that the shape has come to, its document the one whose lists and counters count.
void firstDrop(dsrVisioConnect& connect, const Shape& shape, const Page& page);

void firstDropOfProcessConnector(const Shape& connector, const Page& page);
void firstDropOfTaskLink(const dsrVisioConnect& connect, const Shape& link, const Page& page);
/// Asks for the page's letters when this is the page's only Task; a refusal removes the shape.
void firstDropOfTask(dsrVisioConnect& connect, const Shape& task, const Page& page);

}  // namespace quorvel::addin
