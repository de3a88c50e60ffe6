// Members of the application, its documents, their pages and masters.
#include <algorithm>

#include "base/text.h"
#include "host/automation/in_memory_host.h"
#include "host/commands/documents.h"
#include "host/commands/drop_connected.h"
#include "host/commands/follow_hyperlink.h"
#include "host/commands/pages.h"
#include "host/commands/shapes.h"

namespace quorvel::host {
namespace {

std::vector<DocumentId> listedDocuments(const Engine& engine) {
  std::vector<DocumentId> documents = engine.store().documents();
  std::erase(documents, engine.clipboard().document);
  return documents;
}

}  // namespace

Maybe<Variant> InMemoryHost::getApplication(Member member) {
  switch (member) {
    case Member::Application_ActiveDocument: {
      const DocumentId id = engine_.activeDocument();
      return Variant(id ? refTo(ObjectKind::Document, id.value) : ObjectRef{});
    }
    case Member::Application_ActivePage: {
      const WindowState* window = engine_.activeWindow();
      return Variant(window && window->page ? refTo(ObjectKind::Page, window->page.value) : ObjectRef{});
    }
    case Member::Application_ActiveWindow: {
      const WindowState* window = engine_.activeWindow();
      return Variant(window ? refTo(ObjectKind::Window, window->id.value) : ObjectRef{});
    }
    case Member::Application_Windows:
      return Variant(refTo(ObjectKind::Windows, 1));
    case Member::Application_Documents:
      return Variant(refTo(ObjectKind::Documents, 1));
    case Member::Application_Version:
      return Variant(engine_.version());
    case Member::Application_WindowHandle32:
      return Variant(std::int64_t{0});
    case Member::Application_CommandBars:
      return Variant(refTo(ObjectKind::CommandBars, 1));
    default:
      return refuse("not a property");
  }
}

Maybe<Variant> InMemoryHost::callApplication(Member member, Arguments arguments) {
  switch (member) {
    case Member::Application_BeginUndoScope: {
      const Maybe<std::string_view> name = textAt(arguments, 0);
      if (!name) return refuse("a scope needs a name");
      // What is changed need not be shown, so the active document would not do.
      const int scope = engine_.undo().begin({}, std::string(*name), UndoLog::Owner::Script);
      const std::string description(*name);
      engine_.events().raise([&](ApplicationEvents& listener) { listener.EnterScope(scope, description); });
      return Variant(std::int64_t{scope});
    }
    case Member::Application_EndUndoScope: {
      const int scope = integerAt(arguments, 0).or_(0);
      const std::string description(engine_.undo().name(scope));
      if (!engine_.undo().endByScript(scope, numberAt(arguments, 1).or_(0) != 0))
        return refuse("the number is not that of the innermost scope that a script has opened");
      engine_.leaveOutDeleted();
      engine_.events().raise([&](ApplicationEvents& listener) { listener.ExitScope(scope, description); });
      return Variant(std::monostate());
    }
    case Member::Application_Undo:
    case Member::Application_Redo: {
      const DocumentId document = engine_.activeDocument();
      const bool undo = member == Member::Application_Undo;
      const bool moved = document && (undo ? engine_.undo().undo(document) : engine_.undo().redo(document));
      if (!moved)
        return refuse(engine_.undo().isOpen() ? "a scope is open" : undo ? "nothing to undo" : "nothing to redo");
      engine_.leaveOutDeleted();
      return Variant(std::monostate());
    }
    case Member::Application_DoCmd: {
      const Maybe<int> command = integerAt(arguments, 0);
      if (command != shapeDataScope && command != replaceScope) return refuse("the host has no such command");
      const std::string description = *command == shapeDataScope ? "Shape Data" : "Replace";
      engine_.events().raise([&](ApplicationEvents& listener) { listener.EnterScope(*command, description); });
      engine_.events().raise([&](ApplicationEvents& listener) { listener.ExitScope(*command, description); });
      return Variant(std::monostate());
    }
    case Member::Application_QueueMarkerEvent: {
      const Maybe<std::string_view> context = textAt(arguments, 0);
      if (!context) return refuse("a marker needs its text");
      const int sequence = ++lastMarker_;
      const std::string text(*context);
      engine_.events().raise([&](ApplicationEvents& listener) { listener.MarkerEvent(sequence, text); });
      return Variant(std::int64_t{sequence});
    }
    default:
      return refuse("not an action");
  }
}

Maybe<Variant> InMemoryHost::getDocuments(Member member, Arguments arguments) {
  const std::vector<DocumentId> documents = listedDocuments(engine_);
  if (member == Member::Documents_Count) return Variant(static_cast<std::int64_t>(documents.size()));
  if (member == Member::Documents_ItemByName) {
    const std::string_view name = textAt(arguments, 0).or_("");
    for (const DocumentId id : documents) {
      const Document& document = *engine_.store().document(id);
      if (equalIgnoringCase(document.name, name) || equalIgnoringCase(document.path + document.name, name))
        return Variant(refTo(ObjectKind::Document, id.value));
    }
    return refuse("no document of this name is open");
  }
  if (member != Member::Documents_Item) return refuse("not a property");
  const int index = integerAt(arguments, 0).or_(0);
  if (index < 1 || index > static_cast<int>(documents.size())) return refuse("the index lies outside 1 to Count");
  return Variant(refTo(ObjectKind::Document, documents[static_cast<std::size_t>(index) - 1].value));
}

Maybe<Variant> InMemoryHost::callDocuments(Member member, Arguments arguments) {
  const Maybe<std::string_view> file = textAt(arguments, 0);
  if (!file) return refuse("a file name is missing");
  const std::string name(*file);
  constexpr int openCopy = 1, openReadOnly = 2, openHidden = 64;
  const int flags = integerAt(arguments, 1).or_(0);
  DocumentOutcome made;
  if (member == Member::Documents_Add) {
    made = newDocument(engine_, name);
  } else if (member == Member::Documents_Open) {
    made = openDocument(engine_, name, false, false, false);
  } else if (member == Member::Documents_OpenEx) {
    made = openDocument(engine_, name, (flags & openReadOnly) != 0, (flags & openHidden) != 0, (flags & openCopy) != 0);
  } else {
    return refuse("not an action");
  }
  if (!settle(made.outcome)) return {};
  return Variant(refTo(ObjectKind::Document, made.document.value));
}

Maybe<Variant> InMemoryHost::getDocument(DocumentId id, Member member) {
  const Document& document = *engine_.store().document(id);
  switch (member) {
    case Member::Document_Pages:
      return Variant(refTo(ObjectKind::Pages, id.value));
    case Member::Document_Masters:
      return Variant(refTo(ObjectKind::Masters, id.value));
    case Member::Document_Name:
      return Variant(document.name);
    case Member::Document_Path:
      return Variant(document.path);
    case Member::Document_FullName:
      return Variant(document.path + document.name);
    case Member::Document_Template:
      return Variant(document.isStencil ? std::string() : document.properties.templateName);
    case Member::Document_DocumentSheet:
      return Variant(refTo(ObjectKind::Shape, document.sheet.value));
    case Member::Document_HyperlinkBase:
      return Variant(document.properties.hyperlinkBase);
    case Member::Document_Saved:
      return Variant(document.saved);
    case Member::Document_Protection:
      return Variant(std::int64_t{document.protection});
    default:
      return refuse("not a property");
  }
}

bool InMemoryHost::putDocument(DocumentId id, Member member, Arguments indices, const Argument& value) {
  Document& document = engine_.edit().documentFields(id);
  if (member == Member::Document_HyperlinkBase) {
    const Maybe<std::string_view> base = textOfArgument(value);
    if (!base) {
      refuse("a text is needed");
      return false;
    }
    if (document.properties.hyperlinkBase == *base) return true;
    document.properties.hyperlinkBase = *base;
    engine_.undo().noteChanged(id);
    return true;
  }
  const Maybe<int> number = integerOf(value);
  if (member == Member::Document_Saved && number) {
    document.saved = *number != 0;
    engine_.undo().noteSaved(id);
    return true;
  }
  if (member == Member::Document_Protection && number) {
    const Maybe<std::string_view> password = textAt(indices, 0);
    // A missing password equals none, and differs from none either.
    if (!document.protectionPassword.empty() && !(password == std::string_view(document.protectionPassword))) {
      refuse("the password is wrong");
      return false;
    }
    document.protection = *number;
    document.protectionPassword = document.protection ? std::string(password.or_("")) : std::string();
    return true;
  }
  refuse("the property can't be put so");
  return false;
}

Maybe<Variant> InMemoryHost::callDocument(DocumentId id, Member member, Arguments arguments) {
  switch (member) {
    case Member::Pages_Add: {
      const PageId page = addPage(engine_, id);
      return Variant(engine_.store().page(page) ? refTo(ObjectKind::Page, page.value) : ObjectRef{});
    }
    case Member::Document_Save:
      return settled(saveDocument(engine_, id, {}));
    case Member::Document_SaveAs: {
      const Maybe<std::string_view> file = textAt(arguments, 0);
      if (!file || file->empty()) return refuse("a file name is missing");
      return settled(saveDocument(engine_, id, std::string(*file)));
    }
    case Member::Document_Close:
      return settled(closeDocument(engine_, id));
    case Member::Document_FollowHyperlink: {
      const Maybe<std::string_view> address = textAt(arguments, 0), place = textAt(arguments, 1);
      if (!address || !place) return refuse("an address and a sub-address are needed; both may be empty");
      return settled(followHyperlink(engine_, id,
                                     {.address = std::string(*address),
                                      .subAddress = std::string(*place),
                                      .extraInfo = std::string(textAt(arguments, 2).or_("")),
                                      .newWindow = numberAt(arguments, 4).or_(0) != 0}));
    }
    default:
      return refuse("not an action");
  }
}

Maybe<Variant> InMemoryHost::getPages(DocumentId id, Member member, Arguments arguments) {
  const auto& pages = engine_.store().document(id)->pages;
  if (member == Member::Pages_Count) return Variant(static_cast<std::int64_t>(pages.size()));
  if (member == Member::Pages_ItemByName || member == Member::Pages_ItemU) {
    const NameKind kind = member == Member::Pages_ItemU ? NameKind::Universal : NameKind::Local;
    const PageId page = engine_.store().pageNamed(id, textAt(arguments, 0).or_(""), kind);
    if (!page) return refuse("no page of this name");
    return Variant(refTo(ObjectKind::Page, page.value));
  }
  const int index = integerAt(arguments, 0).or_(0);
  if (index < 1 || index > static_cast<int>(pages.size())) return refuse("the index lies outside 1 to Count");
  return Variant(refTo(ObjectKind::Page, pages[static_cast<std::size_t>(index) - 1].value));
}

Maybe<Variant> InMemoryHost::getMasters(DocumentId id, Member member, Arguments arguments) {
  const auto& masters = engine_.store().document(id)->masters;
  if (member == Member::Masters_Count) return Variant(static_cast<std::int64_t>(masters.size()));
  if (member == Member::Masters_ItemByName || member == Member::Masters_ItemU) {
    const NameKind kind = member == Member::Masters_ItemU ? NameKind::Universal : NameKind::Local;
    const MasterId master = engine_.store().masterNamed(id, textAt(arguments, 0).or_(""), kind);
    if (!master) return refuse("no master of this name");
    return Variant(refTo(ObjectKind::Master, master.value));
  }
  const int index = integerAt(arguments, 0).or_(0);
  if (index < 1 || index > static_cast<int>(masters.size())) return refuse("the index lies outside 1 to Count");
  return Variant(refTo(ObjectKind::Master, masters[static_cast<std::size_t>(index) - 1].value));
}

Maybe<Variant> InMemoryHost::getPage(PageId id, Member member) {
  const Page& page = *engine_.store().page(id);
  switch (member) {
    case Member::Page_Name:
      return Variant(page.name);
    case Member::Page_NameU:
      return Variant(page.universalName);
    case Member::Page_Background:
      return Variant(page.background);
    case Member::Page_BackPage:
      return Variant(page.backPage ? refTo(ObjectKind::Page, page.backPage.value) : ObjectRef{});
    case Member::Page_Document:
      return Variant(refTo(ObjectKind::Document, page.document.value));
    case Member::Page_Shapes:
      return Variant(refTo(ObjectKind::Shapes, id.value, 1));
    case Member::Page_PageSheet:
      return Variant(refTo(ObjectKind::Shape, page.sheet.value));
    case Member::Page_Connects:
      return Variant(refTo(ObjectKind::Connects, id.value));
    case Member::Page_Layers:
      return Variant(refTo(ObjectKind::Layers, id.value));
    default:
      return refuse("not a property");
  }
}

bool InMemoryHost::putPage(PageId id, Member member, const Argument& value) {
  switch (member) {
    case Member::Page_Name:
    case Member::Page_NameU:
      return settle(renamePage(engine_, id, textOfArgument(value).or_(""),
                               member == Member::Page_Name ? NameKind::Local : NameKind::Universal));
    case Member::Page_Background: {
      const Maybe<double> background = numberOf(value);
      if (!background) break;
      return settle(setBackground(engine_, id, *background != 0));
    }
    case Member::Page_BackPage: {
      const auto* page = std::get_if<ObjectRef>(&value);
      if (!page || (page->kind != ObjectKind::Page && page->kind != ObjectKind::None)) break;
      return settle(setBackPage(engine_, id, PageId{page->kind == ObjectKind::Page ? page->id : 0}));
    }
    default:
      break;
  }
  refuse("the property can't be put so");
  return false;
}

Maybe<Variant> InMemoryHost::callPage(PageId id, Member member, Arguments arguments) {
  const auto shape = [&](const ShapeOutcome& made) -> Maybe<Variant> {
    if (!settle(made.outcome)) return {};
    return Variant(made.shape ? refTo(ObjectKind::Shape, made.shape.value) : ObjectRef{});
  };
  switch (member) {
    case Member::Page_DrawRectangle:
    case Member::Page_DrawLine: {
      double at[4];
      for (std::size_t i = 0; i < 4; ++i) {
        const Maybe<double> number = numberAt(arguments, i);
        if (!number) return refuse("four coordinates are needed");
        at[i] = *number;
      }
      return shape(member == Member::Page_DrawLine ? drawLine(engine_, id, {}, at[0], at[1], at[2], at[3])
                                                   : drawRectangle(engine_, id, {}, at[0], at[1], at[2], at[3]));
    }
    case Member::Page_Import:
      return shape(importImage(engine_, id, {}, std::string(textAt(arguments, 0).or_(""))));
    case Member::Page_Drop: {
      const Maybe<ObjectRef> master = referenceAt(arguments, 0, ObjectKind::Master);
      const Maybe<double> x = numberAt(arguments, 1), y = numberAt(arguments, 2);
      if (!master || !x || !y) return refuse("a master and a place are needed");
      return shape(dropMaster(engine_, MasterId{master->id}, id, *x, *y));
    }
    case Member::Page_DropConnected: {
      const Maybe<ObjectRef> master = referenceAt(arguments, 0, ObjectKind::Master),
                             target = referenceAt(arguments, 1, ObjectKind::Shape),
                             connector = referenceAt(arguments, 3, ObjectKind::Master);
      if (!master || !target) return refuse("a master and a shape to connect it to are needed");
      return shape(dropConnected(engine_, id, MasterId{master->id}, SheetId{target->id}, integerAt(arguments, 2).or_(0),
                                 MasterId{connector ? connector->id : 0}));
    }
    case Member::Page_Paste:
      return settled(paste(engine_, id));
    case Member::Page_Delete:
      return settled(deletePage(engine_, id));
    default:
      return refuse("not an action");
  }
}

}  // namespace quorvel::host
