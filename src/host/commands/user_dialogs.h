// What a user does in dialogs of the program: shape data, Find and Replace, and reports. Listeners see each as a scope
// with a modal dialog inside, and it is one undo step with all that they do.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/engine/engine.h"
#include "host/text/replace_text.h"

namespace quorvel::host {

constexpr int shapeDataScope = 1312, replaceScope = 1179;

struct TypedCell {
  std::string cell, formula;
};

/// The scope is entered, BeforeModal, the cells are written in their order, AfterModal, the scope is left. Refused,
/// with no event, when a cell is missing or guarded or a formula is none; what handlers make impossible later is
/// skipped.
Outcome editShapeData(Engine& engine, SheetId shape, const std::vector<TypedCell>& cells);

struct ReplaceOutcome {
  Outcome outcome = Outcome::done();
  int count = 0;  ///< occurrences that were replaced
};

/// The same for texts: each shape that changed raises TextChanged between the modal events. Shapes with LockTextEdit
/// are skipped, as the lock is after BeforeModal. Only the page, or all pages of the document when `page` is null.
ReplaceOutcome replaceText(Engine& engine, DocumentId document, PageId page, std::string_view find,
                           std::string_view replacement, const ReplaceOptions& options);

/// The Reports command for the active drawing, between the modal events. It changes nothing, so it is no step and no
/// scope. Refused without an active drawing, and where there are no reports.
Outcome showReports(Engine& engine);

}  // namespace quorvel::host
