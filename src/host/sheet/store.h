// All documents of one application: pages, masters, styles and sheets by number. Plain data without events or undo;
// file formats fill it directly, all other code changes it through host/undo/editor.h.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/maybe.h"
#include "host/formula/local_syntax.h"
#include "host/sheet/ids.h"
#include "host/sheet/sheet.h"
#include "host/sheet/theme_values.h"

namespace quorvel::host {

/// Drawings name things twice: as formulas and programs call them everywhere, and as people read them in their
/// language.
enum class NameKind : std::uint8_t { Local, Universal };

/// A new name of that kind. A local name is both as long as the two are the same; a universal one is both for an object
/// without a local one.
void rename(std::string& local, std::string& universal, std::string_view name, NameKind kind);

/// A glued end, as files keep it beside the formulas that do the gluing.
struct Connect {
  int fromShape = 0;
  std::string fromCell;  ///< "BeginX", "EndX", …
  int fromPart = 0;
  int toShape = 0;
  std::string toCell;  ///< "PinX", "Connections.X1", …
  int toPart = 0;
};

/// A page of a drawing, or the contents of a master.
struct Page {
  PageId id;
  DocumentId document;
  int fileId = 0;  ///< the file's page ID
  std::string name, universalName;
  bool background = false;
  PageId backPage;  ///< null: none
  SheetId sheet;
  std::vector<SheetId> shapes;  ///< top level, in stacking order
  std::unordered_map<int, SheetId> byShapeId;
  int lastShapeId = 0;
  std::vector<Connect> connects;
  MasterId master;  ///< set when these are a master's contents
  ExtrasPtr extras;
};

struct Master {
  MasterId id;
  DocumentId document;
  int fileId = 0;
  std::string name, universalName;
  std::string uniqueId, baseId;  ///< "{…}"; a master copied into a drawing keeps its base
  std::string prompt;
  bool hidden = false;
  PageId contents;
  ExtrasPtr extras;
};

struct FontFace {
  std::string name;
  ExtrasPtr extras;
};

struct DocumentProperties {
  std::string title, subject, creator, manager, company, category, keywords, description, hyperlinkBase;
  std::string templateName;                                     ///< file name only
  std::string timeCreated, timeSaved, timeEdited, timePrinted;  ///< ISO 8601, UTC; empty: never
  std::map<std::string, std::string> custom;
  /// What kind of value a custom property has: "Number", "Date" or "Boolean"; text has no entry.
  std::map<std::string, std::string> customKinds;
};

struct Document {
  DocumentId id;
  std::string name;  ///< file name with extension, or the default name
  std::string path;  ///< folder with trailing separator; empty: never saved
  bool isStencil = false;
  bool readOnly = false;
  bool saved = true;
  int protection = 0;
  std::string protectionPassword;
  DocumentProperties properties;
  SheetId sheet;
  std::vector<PageId> pages;
  std::vector<MasterId> masters;
  std::vector<SheetId> styles;  ///< Sheet::shapeId is the style's ID
  SheetId defaultLineStyle, defaultFillStyle, defaultTextStyle, defaultGuideStyle;
  std::map<int, std::uint32_t> colours;  ///< the file's own colour entries, index to 0xRRGGBB
  std::vector<FontFace> fonts;           ///< by font number where cells hold numbers (older files)
  ExtrasPtr extras;
};

/// A page that is out of its document, with its sheets and its place among the pages.
struct DetachedPage {
  std::unique_ptr<Page> page;
  std::vector<std::unique_ptr<Sheet>> sheets;
  std::size_t place = 0;
};

/// A master that is out of its document, with its contents and its place among the masters.
struct DetachedMaster {
  std::unique_ptr<Master> master;
  std::unique_ptr<Page> contents;
  std::vector<std::unique_ptr<Sheet>> sheets;
  std::size_t place = 0;
};

/// A style that is out of its document, with its place among the styles.
struct DetachedStyle {
  std::unique_ptr<Sheet> sheet;
  std::size_t place = 0;
};

class Store {
 public:
  Document* document(DocumentId id);
  const Document* document(DocumentId id) const;
  Page* page(PageId id);
  const Page* page(PageId id) const;
  Master* master(MasterId id);
  const Master* master(MasterId id) const;
  /// Null for a deleted sheet.
  Sheet* sheet(SheetId id) { return id.value < sheets_.size() ? sheets_[id.value].get() : nullptr; }
  const Sheet* sheet(SheetId id) const { return id.value < sheets_.size() ? sheets_[id.value].get() : nullptr; }
  const std::vector<DocumentId>& documents() const { return order_; }

  /// A document with its sheet and the style "No Style" (ID 0), without pages.
  DocumentId addDocument(std::string name);
  /// With everything in it.
  void removeDocument(DocumentId id);
  /// At `place` among the pages (-1: last), with its sheet and a fresh file ID.
  PageId addPage(DocumentId document, std::string name, int place = -1);
  MasterId addMaster(DocumentId document, std::string name);  ///< with empty contents
  SheetId addStyle(DocumentId document, int styleId, std::string name);
  /// A shape on the page (parent null) or in a group, at the top of the stack. `shapeId` 0 takes the page's next.
  SheetId addShape(PageId page, SheetId parent, SheetKind kind, int shapeId = 0);
  /// Takes a page with all its sheets out of its document; the undo log keeps what is out.
  DetachedPage takePage(PageId id);
  void putPage(DetachedPage page);
  /// The same for a master and a style; nothing in the document may use them any more.
  DetachedMaster takeMaster(MasterId id);
  void putMaster(DetachedMaster master);
  DetachedStyle takeStyle(SheetId id);
  void putStyle(DetachedStyle style);

  /// Takes a shape with its members out of its page: the sheets leave the store, so that their ids find nothing.
  std::vector<std::unique_ptr<Sheet>> takeSubtree(SheetId root);
  /// Puts it back under the same ids, at `place` among its parent's or page's children.
  void putSubtree(std::vector<std::unique_ptr<Sheet>> sheets, std::size_t place);

  /// Moves a shape with its members into a group of its page (null: to the top of the page), at the place of the stack
  /// there. Gives its place in the stack that it left.
  std::size_t stand(SheetId shape, SheetId parent, std::size_t place);

  FormulaPool& formulas() const { return formulas_; }
  /// How a user writes formulas and numbers; what is stored is always universal.
  const FormulaLocale& locale() const { return locale_; }
  void setLocale(const FormulaLocale& locale) { locale_ = locale; }

  /// Gives the values of the documents' themes; null: themes give none.
  const ThemeValues* themes() const { return themes_; }
  void setThemes(const ThemeValues* themes) { themes_ = themes; }

  /// The document's style of that name in any letter case; null when it has none.
  SheetId styleNamed(DocumentId document, std::string_view name) const;
  SheetId styleWithId(DocumentId document, int styleId) const;
  /// By names of that kind first, then by those of the other. Null when there is none.
  PageId pageNamed(DocumentId document, std::string_view name, NameKind kind = NameKind::Local) const;
  MasterId masterNamed(DocumentId document, std::string_view name, NameKind kind = NameKind::Local) const;
  /// The first shape among them.
  SheetId shapeNamed(const std::vector<SheetId>& shapes, std::string_view name, NameKind kind) const;
  /// Siblings of a shape: its group's members or its page's shapes.
  std::vector<SheetId>& siblings(const Sheet& shape);
  const std::vector<SheetId>& siblings(const Sheet& shape) const;
  /// The shape and all below it, parents before members.
  std::vector<SheetId> subtree(SheetId root) const;
  /// The outermost shape of the same instance: the one that has the master. Itself for a drawn shape. Groups that
  /// were drawn around members within the instance are passed by.
  SheetId instanceRoot(SheetId shape) const;
  /// The master of a shape or of the instance that it is a member of by inheritance; null for drawn shapes.
  MasterId masterOf(SheetId shape) const;
  /// Its own name, or the master's name (or "Sheet") "." ID.
  std::string shapeName(const Sheet& shape, NameKind kind = NameKind::Local) const;

 private:
  SheetId newSheet(SheetKind kind, DocumentId document, PageId page);
  /// The page's own sheet and those of its shapes leave the store.
  std::vector<std::unique_ptr<Sheet>> takeSheetsOf(PageId id);
  void putSheets(std::vector<std::unique_ptr<Sheet>> sheets);

  std::vector<std::unique_ptr<Sheet>> sheets_{1};
  std::vector<std::unique_ptr<Page>> pages_{1};
  std::vector<std::unique_ptr<Master>> masters_{1};
  std::vector<std::unique_ptr<Document>> documents_{1};
  std::vector<DocumentId> order_;
  mutable FormulaPool formulas_;
  FormulaLocale locale_;
  const ThemeValues* themes_ = nullptr;
};

}  // namespace quorvel::host
