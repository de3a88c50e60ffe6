// Small questions to the host that decide whether and how the add-in acts.
#pragma once

#include <string>
#include <string_view>

#include "addin/dsr_visio_connect.h"

namespace quorvel::addin {

/// "2002", "2003", "2007", or empty for any other host; what branches on the release then takes no branch.
std::string getVisioVersion(const dsrVisioConnect& connect);

/// Was the document based on a template that bears the product's name? False for a null document.
bool hasQuorvelTemplate(const Document& document);
/// The same of the active document; false without one.
bool isQuorvelDocument(const dsrVisioConnect& connect);
/// Has the active document been initialized by the add-in?
bool isInitialized(const dsrVisioConnect& connect);

/// Is the active window a drawing window that shows a page? Shuts out master and sheet windows.
bool inPageWindow(const dsrVisioConnect& connect);
/// Is the active page a foreground page? False without one.
bool onForegroundPage(const dsrVisioConnect& connect);

/// The shape selected last whose master bears exactly this name; null when there is none.
Shape selectedShapeOfMaster(const dsrVisioConnect& connect, std::string_view masterName);

}  // namespace quorvel::addin
