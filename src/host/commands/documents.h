// Making, opening, saving and closing documents.
#pragma once

#include <functional>
#include <string>

#include "host/engine/engine.h"

namespace quorvel::host {

struct DocumentOutcome {
  Outcome outcome = Outcome::done();
  DocumentId document;
};

/// A drawing based on the template (empty: a bare drawing with one page). DocumentCreated is raised, with the drawing
/// active.
DocumentOutcome newDocument(Engine& engine, const std::string& templateFile);
/// The open document when the file is open already. DocumentOpened is raised. What `admits` refuses is not opened; it
/// is asked before any listener.
DocumentOutcome openDocument(Engine& engine, const std::string& fileName, bool readOnly, bool hidden, bool asCopy,
                             const std::function<Outcome(DocumentId)>& admits = {});
/// Save events are raised before and after it. An empty name saves under the present one.
Outcome saveDocument(Engine& engine, DocumentId document, const std::string& fileName);
/// Writes a copy aside without any event and without touching the document; for recovery and export.
Outcome writeCopy(Engine& engine, DocumentId document, const std::string& fileName);
/// BeforeDocumentClose is raised. What was not saved is lost: the caller asks the user before.
Outcome closeDocument(Engine& engine, DocumentId document);
/// The last window of a document closes the document.
Outcome closeWindow(Engine& engine, WindowId window);

}  // namespace quorvel::host
