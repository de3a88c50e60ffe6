// From the engine's sheets to a scene.
#pragma once

#include <vector>

#include "host/sheet/store.h"
#include "render/cells/theme.h"
#include "render/scene/scene.h"

namespace quorvel::render {

class TextEngine;

struct SceneOptions {
  /// The document's themes, see readTheme(); cells whose values are in a theme are drawn plainly without one.
  std::vector<Theme> themes;
  bool paperBackground = true;  ///< white paper; else nothing behind the shapes
  bool withBackgroundPages = true;
  TextEngine* textEngine = nullptr;  ///< null: one of its own; a caller that draws often keeps one
};

/// The page with its background pages, or a master's contents. An empty scene for a page that is not there.
Scene buildScene(const host::Store& store, host::PageId page, const SceneOptions& options = {});

/// A sheet that shows the document's masters side by side, each with its name.
Scene buildMasterSheet(const host::Store& store, host::DocumentId document, const SceneOptions& options = {});

}  // namespace quorvel::render
