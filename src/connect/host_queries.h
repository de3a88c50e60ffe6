// Small queries of the host that event handlers and commands share.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "connect/dsr_visio_connect.h"

namespace quorvel::addin {

/// "2002", "2003", "2007", or empty for any other host.
std::string getVisioVersion(const dsrVisioConnect& connect);

// The consequences of an event depend on the document and page of the event, which need not be the active ones: these
// take them as arguments. Each is false for a null handle.

/// True when the name of the document's template contains the product's name.
bool hasQuorvelTemplate(const Document& document);
/// True when the add-in has initialized the document.
bool isInitialized(const Document& document);
/// Both of these.
bool isMap(const Document& document);
/// True for a page of a drawing that is no background page. False for the page of a master.
bool isForeground(const Page& page);
/// True when the shape is on a foreground page of a map, in a group or not.
bool isOnMapPage(const Shape& shape);

/// Of several selected shapes, in order of selecting, the last one whose master has exactly this name; null when there
/// is none.
Shape selectedShapeOfMaster(std::span<const Shape> selected, std::string_view masterName);

/// A window of the document, the active one if it is one of them; null for a document that is open without a window.
Window windowOf(const dsrVisioConnect& connect, const Document& document);
/// Shows the page and activates its window. Does nothing for a document without a window.
void showPage(const dsrVisioConnect& connect, const Page& page);
/// Clears the selection of the window that shows the page. Other pages and drawings keep their selections. Does nothing
/// while shapes are being added.
void deselectOn(const dsrVisioConnect& connect, const Page& page);

}  // namespace quorvel::addin
