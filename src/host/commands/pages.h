// Pages of a drawing.
#pragma once

#include <string_view>

#include "host/engine/engine.h"

namespace quorvel::host {

/// A new foreground page behind the others, of the size of the first page, named "Page-n". PageAdded is raised. Null
/// when a listener removed it.
PageId addPage(Engine& engine, DocumentId document);
/// Refused for the last page of a drawing.
Outcome deletePage(Engine& engine, PageId page);
/// Refused for an empty name and for one that another page has in any letter case. PageChanged is raised.
/// Both names as long as they are one; else that of the kind.
Outcome renamePage(Engine& engine, PageId page, std::string_view name, NameKind kind);
Outcome setBackground(Engine& engine, PageId page, bool background);
/// `background` null: none. Refused for a page that is no background.
Outcome setBackPage(Engine& engine, PageId page, PageId background);

}  // namespace quorvel::host
