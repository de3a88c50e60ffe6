// The first drop of a shape: adds the rows, menus and shapes that an instance of one of the masters needs.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Marks logo and legend, and calls the routine below for an instance of one of the masters. Any other shape is not
/// changed. `page` is the shape's page; its lists and counters, and those of its document, are used.
void firstDrop(dsrVisioConnect& connect, const Shape& shape, const Page& page);

void firstDropOfProcessConnector(const Shape& connector, const Page& page);
void firstDropOfTaskLink(const dsrVisioConnect& connect, const Shape& link, const Page& page);
/// Asks for the page's letters when this is the page's only Task; a refusal removes the shape.
void firstDropOfTask(dsrVisioConnect& connect, const Shape& task, const Page& page);

}  // namespace quorvel::addin
