// The published object model over the engine: the in-memory host as the add-in, the command line and scripts see it.
#pragma once

#include <deque>

#include "host/commands/user_dialogs.h"
#include "host/edits/rows.h"
#include "host/engine/engine.h"
#include "model/backend.h"

namespace quorvel::host {

class InMemoryHost : public Backend {
 public:
  explicit InMemoryHost(EngineOptions options = {});

  Engine& engine() { return engine_; }
  const Engine& engine() const { return engine_; }
  Application app() { return Application(this, application()); }

  Maybe<Variant> get(const ObjectRef& object, Member member, Arguments arguments) override;
  bool put(const ObjectRef& object, Member member, Arguments indices, const Argument& value) override;
  Maybe<Variant> call(const ObjectRef& object, Member member, Arguments arguments) override;
  ObjectRef application() const override { return {ObjectKind::Application, 1, 0}; }
  void advise(ApplicationEvents& listener) override { engine_.events().advise(listener); }
  void unadvise(ApplicationEvents& listener) override { engine_.events().unadvise(listener); }
  std::vector<Refusal> refusals() const override { return {refusals_.begin(), refusals_.end()}; }
  std::size_t refusalCount() const override { return refusalCount_; }
  /// Takes the last refusal of that member out of those that are kept; nothing when none is.
  Maybe<Refusal> takeRefusalOf(Member member);

  // What a user does at the window, as the events say it.
  void activateApplication();
  void mouseDown(int button, int shift, double x, double y);
  void mouseMove(int button, int shift, double x, double y);
  void beginModal();
  void endModal();
  /// Types into cells of the shape in the dialog of shape data; formulas in the universal syntax.
  Outcome editShapeData(const Shape& shape, const std::vector<TypedCell>& cells);
  /// Find and Replace in the active window: on its page, or on all pages of its document.
  ReplaceOutcome replaceText(std::string_view find, std::string_view replacement, const ReplaceOptions& options = {},
                             bool allPages = true);

 private:
  // One pair for each kind of object, in the source named for it. They give nothing for a refusal, having called
  // refuse().
  Maybe<Variant> getApplication(Member member);
  Maybe<Variant> callApplication(Member member, Arguments arguments);
  Maybe<Variant> getDocuments(Member member, Arguments arguments);
  Maybe<Variant> callDocuments(Member member, Arguments arguments);
  Maybe<Variant> getDocument(DocumentId id, Member member);
  bool putDocument(DocumentId id, Member member, Arguments indices, const Argument& value);
  Maybe<Variant> callDocument(DocumentId id, Member member, Arguments arguments);
  Maybe<Variant> getPages(DocumentId id, Member member, Arguments arguments);
  Maybe<Variant> getMasters(DocumentId id, Member member, Arguments arguments);
  Maybe<Variant> getPage(PageId id, Member member);
  bool putPage(PageId id, Member member, const Argument& value);
  Maybe<Variant> callPage(PageId id, Member member, Arguments arguments);
  Maybe<Variant> getShapes(const ObjectRef& object, Member member, Arguments arguments);
  Maybe<Variant> getShape(SheetId id, Member member, Arguments arguments);
  bool putShape(SheetId id, Member member, Arguments indices, const Argument& value);
  Maybe<Variant> callShape(SheetId id, Member member, Arguments arguments);
  Maybe<Variant> getCharacters(const ObjectRef& object, Member member);
  bool putCharacters(const ObjectRef& object, Member member, const Argument& value);
  Maybe<Variant> getSectionOrRow(const ObjectRef& object, Member member, Arguments arguments);
  bool putRow(const ObjectRef& object, Member member, const Argument& value);
  Maybe<Variant> getCell(const CellAddress& cell, Member member, Arguments arguments);
  bool putCell(const CellAddress& cell, Member member, Arguments indices, const Argument& value);
  Maybe<Variant> getSelection(const ObjectRef& object, Member member, Arguments arguments);
  Maybe<Variant> callSelection(const ObjectRef& object, Member member);
  bool putSelection(const ObjectRef& object, const Argument& value);
  Maybe<Variant> getWindows(Member member, Arguments arguments);
  Maybe<Variant> getWindow(WindowId id, Member member);
  bool putWindow(WindowId id, Member member, const Argument& value);
  Maybe<Variant> callWindow(WindowId id, Member member, Arguments arguments);
  Maybe<Variant> getLayers(const ObjectRef& object, Member member, Arguments arguments);
  Maybe<Variant> callLayers(const ObjectRef& object, Member member, Arguments arguments);
  Maybe<Variant> getConnects(const ObjectRef& object, Member member, Arguments arguments);
  Maybe<Variant> getHyperlinks(const ObjectRef& object, Member member, Arguments arguments);
  Maybe<Variant> callHyperlinks(const ObjectRef& object, Member member);
  bool putHyperlink(const ObjectRef& object, Member member, const Argument& value);
  bool makeDefaultLink(const CellAddress& cell);
  Maybe<Variant> getCommandBars(const ObjectRef& object, Member member, Arguments arguments);
  bool putCommandBars(const ObjectRef& object, Member member, const Argument& value);
  Maybe<Variant> callCommandBars(const ObjectRef& object, Member member, Arguments arguments);

  class Current;
  /// Refuses a member that the object lacks, and a deleted object.
  bool admits(const ObjectRef& object, Member member);
  /// Refuses a text for the drawing that no file could hold.
  bool admitsTexts(const ObjectRef& object, Arguments arguments);
  /// The document, page and shape of the reference exist; a page that is out of its document counts as deleted.
  bool alive(const ObjectRef& object) const;
  /// Shapes of the snapshot as its iteration mode lists them.
  std::vector<SheetId> listed(const SelectionSnapshot& snapshot) const;
  Maybe<Variant> cellNamed(SheetId sheet, std::string_view name, Member member);

  std::nullopt_t refuse(std::string reason);
  /// See Refusal::isUnknownName.
  std::nullopt_t refuseName(std::string reason);
  /// Records the outcome's refusal, if it is one.
  bool settle(const Outcome& outcome);
  Maybe<Variant> settled(const Outcome& outcome);
  std::string describe(const ObjectRef& object) const;

  Engine engine_;
  std::deque<Refusal> refusals_;
  std::size_t refusalCount_ = 0;
  ObjectRef current_;
  Member currentMember_{};
  int nesting_ = 0;
  int lastMarker_ = 0;
};

// References by kind.
inline ObjectRef refTo(ObjectKind kind, std::uint32_t id, std::uint64_t part = 0) { return {kind, id, part}; }

// Arguments by place; a missing or unfit one gives nothing.
Maybe<int> integerAt(Arguments arguments, std::size_t place);
Maybe<double> numberAt(Arguments arguments, std::size_t place);
Maybe<std::string_view> textAt(Arguments arguments, std::size_t place);
Maybe<ObjectRef> referenceAt(Arguments arguments, std::size_t place, ObjectKind kind);
Maybe<double> numberOf(const Argument& value);  ///< finite ones only
Maybe<int> integerOf(const Argument& value);    ///< cut; nothing outside the range of int
Maybe<std::string_view> textOfArgument(const Argument& value);

}  // namespace quorvel::host
