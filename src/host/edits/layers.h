// Layers of a page and which shapes belong to them.
#pragma once

#include <string_view>
#include <vector>

#include "host/engine/engine.h"

namespace quorvel::host {

/// Index of the page's layer of that name in any letter case; -1 when it has none.
int layerNamed(const Store& store, PageId page, std::string_view name);
std::string layerName(const Store& store, PageId page, int layer);
int layerCount(const Store& store, PageId page);
/// The existing layer when there is one of the name. Refused for an empty name.
Outcome addLayer(Engine& engine, PageId page, std::string_view name, int& layer);

/// Indices of the layers that the shape belongs to, in order.
std::vector<int> layersOf(const Store& store, SheetId shape);
/// Members of a group follow.
Outcome setLayerMembership(Engine& engine, SheetId shape, int layer, bool member);

/// Puts a new instance on the page's layers with the names of its master's layers; missing layers are made.
void takeLayersOfMaster(Engine& engine, SheetId instance, MasterId master);
/// Puts a shape that was copied from the page `source` on the layers of those names on its own page, made when missing.
void takeLayersOfPage(Engine& engine, SheetId copy, PageId source);

}  // namespace quorvel::host
