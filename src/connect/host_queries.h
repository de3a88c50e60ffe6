// Small questions to the host that decide whether and how the add-in acts.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// "2002", "2003", "2007", or empty for any other host; what branches on the release then takes no branch.
std::string getVisioVersion(const dsrVisioConnect& connect);

// What an event leads to depends on the document and page that it happened in, which need not be the active ones: these
// take them as arguments. Each is false for a null handle.

/// Was the document based on a template whose name contains the product's?
bool hasQuorvelTemplate(const Document& document);
/// Has the document been initialized by the add-in?
bool isInitialized(const Document& document);
/// Both of these.
bool isMap(const Document& document);
/// Is it a page of a drawing, and no background page? False for the page of a master.
bool isForeground(const Page& page);
/// Is the shape on a foreground page of a map, itself or in a group?
bool isOnMapPage(const Shape& shape);

/// Of several selected shapes, in order of selecting, the last one whose master has exactly this name; null when there
/// is none.
Shape selectedShapeOfMaster(std::span<const Shape> selected, std::string_view masterName);

/// A window of the document, the active one where it has more; null for a document that is open without a window.
Window windowOf(const dsrVisioConnect& connect, const Document& document);
/// Makes the page the one that is shown and its window the active one. A document without a window stays as it is.
void showPage(const dsrVisioConnect& connect, const Page& page);
/// Makes nothing selected where the page is shown. Other pages and drawings keep their selections.
void deselectOn(const dsrVisioConnect& connect, const Page& page);

}  // namespace quorvel::addin
