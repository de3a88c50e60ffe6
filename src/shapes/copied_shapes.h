// Handles copies: shapes that come to a page as part of a map, pasted or duplicated. What they bring from another
// drawing is merged into the lists of the page's document.
#pragma once

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// Calls the routine for the shape's class; logos and legends are removed, because a page has one of each.
void copied(dsrVisioConnect& connect, const Shape& shape, const Page& page);

/// Merges time units, frequency and roles, then gives the copy its ID. A refused question removes the copy or, where
/// the IDs were asked for, all that was pasted.
void copiedTask(dsrVisioConnect& connect, const Shape& task, const Page& page);
void copiedTaskLink(dsrVisioConnect& connect, const Shape& link, const Page& page);

/// Merges the frequency of a copied Task. False when the user refused: the Task is deleted then. Also false when a new
/// frequency finds no place in the list and the copy keeps its ID for now.
bool mergeFrequency(dsrVisioConnect& connect, const Shape& task, const Page& page);

/// Merges the roles of a copied Task. A role that the user does not want leaves its row empty.
void mergeRoles(dsrVisioConnect& connect, const Shape& task, const Page& page);

}  // namespace quorvel::addin
