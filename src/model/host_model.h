// The host's object model as the add-in sees it: small values that may be null, under the host's published names.
//
// Every call may fail and says so by its value: a reader gives Maybe<T>, a navigator a handle that may be null, a put
// or an action bool. Nothing throws, a call on a null handle fails, and a refused call leaves the host as it was. A
// handle does not keep its object: one to a deleted object acts as null. Positions are inches, y upward, measured from
// the lower left corner of the page or group; angles are degrees only where a units code says so.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/maybe.h"
#include "model/backend.h"

namespace quorvel {

class Application;
class Cell;
class Characters;
class CommandBar;
class CommandBarControl;
class CommandBarControls;
class CommandBars;
class Connect;
class Connects;
class Document;
class Documents;
class Hyperlink;
class Hyperlinks;
class Layer;
class Layers;
class Master;
class Masters;
class Page;
class Pages;
class Row;
class Section;
class Selection;
class Shape;
class Shapes;
class Window;
class Windows;

/// Published numbers that the logic passes.
namespace visio {
inline constexpr int sectionFirstComponent = 10;  ///< the first Geometry section; the n-th is 10 + n - 1
inline constexpr int sectionAction = 240;
inline constexpr int sectionLayer = 241;
inline constexpr int sectionUser = 242;
inline constexpr int sectionProp = 243;
inline constexpr int sectionHyperlink = 244;
inline constexpr int rowLast = -2;
inline constexpr int tagComponent = 137, tagMoveTo = 138, tagLineTo = 139, tagArcTo = 140, tagEllipticalArcTo = 144;
inline constexpr int columnPropFormat = 3, columnPropInvisible = 6, columnHyperlinkInvisible = 8,
                     columnLayerVisible = 4;
inline constexpr int unitsNone = 0, unitsInches = 65, unitsPoints = 50;
inline constexpr int selectModeSkipSuper = 256;
inline constexpr int windowDrawing = 1, windowPage = 128;
inline constexpr int protectShapes = 2;
inline constexpr int deselect = 1, select = 2;
inline constexpr int uniqueIdGet = 0, uniqueIdGetOrMake = 1, uniqueIdDelete = 2;
}  // namespace visio

/// What all handles share: the backend, the object, and forwarding.
class Handle {
 public:
  Handle() = default;
  Handle(Backend* backend, ObjectRef object) : backend_(object ? backend : nullptr), object_(object) {}

  /// False for null. True does not mean that the object still exists; a call on a deleted one fails.
  explicit operator bool() const { return backend_ != nullptr; }
  friend bool operator==(const Handle& a, const Handle& b) {
    return a.backend_ == b.backend_ && (!a.backend_ || a.object_ == b.object_);
  }
  const ObjectRef& ref() const { return object_; }
  Backend* backend() const { return backend_; }

 protected:
  Maybe<std::string> text(Member member, std::initializer_list<Argument> arguments = {}) const;
  Maybe<double> number(Member member, std::initializer_list<Argument> arguments = {}) const;
  Maybe<int> integer(Member member, std::initializer_list<Argument> arguments = {}) const;
  Maybe<bool> truth(Member member, std::initializer_list<Argument> arguments = {}) const;
  template <class T>
  T object(Member member, std::initializer_list<Argument> arguments = {}) const {
    return T(backend_, reference(member, arguments, false));
  }
  template <class T>
  T result(Member member, std::initializer_list<Argument> arguments = {}) const {
    return T(backend_, reference(member, arguments, true));
  }
  bool put(Member member, const Argument& value, std::initializer_list<Argument> indices = {}) const;
  bool putText(Member member, const Maybe<std::string>& value, std::initializer_list<Argument> indices = {}) const;
  template <class T>
  bool putValue(Member member, const Maybe<T>& value, std::initializer_list<Argument> indices = {}) const {
    return value && put(member, Argument(*value), indices);
  }
  bool call(Member member, std::initializer_list<Argument> arguments = {}) const;

 private:
  ObjectRef reference(Member member, std::initializer_list<Argument> arguments, bool isCall) const;

  Backend* backend_ = nullptr;
  ObjectRef object_;
};

class Application : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Application;

  /// Null when no document is open.
  Document ActiveDocument() const;
  /// The page shown in the active window; null without one.
  Page ActivePage() const;
  Window ActiveWindow() const;
  class Windows Windows() const;
  class Documents Documents() const;
  /// Such as "12.0".
  Maybe<std::string> Version() const { return text(Member::Application_Version); }
  /// 0 for a host without windows.
  Maybe<int> WindowHandle32() const { return integer(Member::Application_WindowHandle32); }
  class CommandBars CommandBars() const;
  /// Opens a scope that undoes as one; gives its number. Scopes nest, and the outermost one is the step.
  Maybe<int> BeginUndoScope(const Maybe<std::string>& name) const;
  /// Closes the scope; `commit` false rolls back all that was done in it. Fails for a number that is not the innermost.
  bool EndUndoScope(int scope, bool commit) const;
  /// Fail when there is nothing to undo or redo, and inside a scope.
  bool Undo() const { return call(Member::Application_Undo); }
  bool Redo() const { return call(Member::Application_Redo); }
  /// Runs a host command by number (its scope events are raised around it). Fails for a number the host lacks.
  bool DoCmd(int command) const { return call(Member::Application_DoCmd, {std::int64_t(command)}); }
  bool QueueMarkerEvent(const Maybe<std::string>& context) const;
};

class Documents : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Documents;

  /// 1-based, in order of opening. Fails outside 1 to Count.
  Document Item(int index) const;
  /// By file name, or by folder and file name, in any letter case.
  Document Item(std::string_view name) const;
  Maybe<int> Count() const { return integer(Member::Documents_Count); }
  /// A new drawing based on the template file; an empty name gives an empty drawing. Fails when the file can't be read.
  Document Add(const Maybe<std::string>& templateFile) const;
  /// Gives the open document when the file is open already. Fails when the file can't be read.
  Document Open(const Maybe<std::string>& fileName) const;
  /// `flags`: 1 copy, 2 read-only, 8 not listed, 16 minimized, 64 hidden, 128 macros disabled.
  Document OpenEx(const Maybe<std::string>& fileName, int flags) const;
  std::vector<Document> all() const;
};

class Document : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Document;

  class Pages Pages() const;
  class Masters Masters() const;
  /// File name with extension; for a new document the host's default name.
  Maybe<std::string> Name() const { return text(Member::Document_Name); }
  /// Folder with a trailing separator; empty for a document never saved.
  Maybe<std::string> Path() const { return text(Member::Document_Path); }
  /// Path and name; the name alone for a document never saved.
  Maybe<std::string> FullName() const { return text(Member::Document_FullName); }
  /// File name of the template that the document was based on; empty for a stencil or without one.
  Maybe<std::string> Template() const { return text(Member::Document_Template); }
  Shape DocumentSheet() const;
  Maybe<bool> Saved() const { return truth(Member::Document_Saved); }
  bool SetSaved(Maybe<bool> saved) const { return putValue(Member::Document_Saved, saved); }
  Maybe<int> Protection() const { return integer(Member::Document_Protection); }
  /// Fails when a password is set already and differs.
  bool SetProtection(const Maybe<std::string>& password, Maybe<int> bits) const;
  /// The folder or web address that relative addresses of hyperlinks start from; empty: the document's folder.
  Maybe<std::string> HyperlinkBase() const { return text(Member::Document_HyperlinkBase); }
  bool SetHyperlinkBase(const Maybe<std::string>& base) const { return putText(Member::Document_HyperlinkBase, base); }
  /// Fails for a document that was never saved, and when the file can't be written.
  bool Save() const { return call(Member::Document_Save); }
  bool SaveAs(const Maybe<std::string>& fileName) const;
  bool Close() const { return call(Member::Document_Close); }
  /// Goes where a hyperlink of this document with these columns leads, see Hyperlink::Follow. `frame` is not used.
  bool FollowHyperlink(const Maybe<std::string>& address, const Maybe<std::string>& subAddress,
                       std::string_view extraInfo = {}, std::string_view frame = {}, bool newWindow = false) const;
};

class Pages : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Pages;

  /// 1-based; background pages are among the others.
  Page Item(int index) const;
  Page Item(std::string_view name) const;
  /// By universal names first.
  Page ItemU(std::string_view name) const;
  Maybe<int> Count() const { return integer(Member::Pages_Count); }
  Page Add() const;
  std::vector<Page> all() const;
};

class Page : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Page;

  Maybe<std::string> Name() const { return text(Member::Page_Name); }
  /// Fails for an empty name and for one that another page of the document has.
  bool SetName(const Maybe<std::string>& name) const { return putText(Member::Page_Name, name); }
  /// The name that formulas and programs use in every language. A put of Name changes it too as long as they are one.
  Maybe<std::string> NameU() const { return text(Member::Page_NameU); }
  bool SetNameU(const Maybe<std::string>& name) const { return putText(Member::Page_NameU, name); }
  Maybe<bool> Background() const { return truth(Member::Page_Background); }
  bool SetBackground(Maybe<bool> background) const { return putValue(Member::Page_Background, background); }
  /// Null when the page has no background.
  Page BackPage() const;
  bool SetBackPage(const Page& page) const;
  class Document Document() const;
  class Shapes Shapes() const;
  Shape PageSheet() const;
  class Layers Layers() const;
  /// All glued ends of the page.
  class Connects Connects() const;
  Shape DrawRectangle(double x1, double y1, double x2, double y2) const;
  Shape DrawLine(double x1, double y1, double x2, double y2) const;
  /// Imports an image (PNG, JPEG, GIF, BMP), its pin in the middle of the page. Fails when the file can't be read.
  Shape Import(const Maybe<std::string>& fileName) const;
  /// Places an instance of the master with its pin at x, y, inside one undo step with all that handlers do. The handle
  /// is null when a handler removed the shape.
  Shape Drop(const Master& master, double x, double y) const;
  /// Drops next to `target`, which is on this page, and connects the two: with an instance of `connector`, glued
  /// from `target` to the new shape, or a plain line for a null one. `direction`: 1 above, 2 below, 3 left, 4 right, 0
  /// as 4. The handle is null when a handler removed the shape.
  Shape DropConnected(const Master& master, const Shape& target, int direction, const Master& connector) const;
  bool Paste() const { return call(Member::Page_Paste); }
  bool Delete() const { return call(Member::Page_Delete); }
};

class Masters : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Masters;

  Master Item(int index) const;
  Master Item(std::string_view name) const;
  /// By universal names first.
  Master ItemU(std::string_view name) const;
  Maybe<int> Count() const { return integer(Member::Masters_Count); }
  std::vector<Master> all() const;
};

class Master : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Master;

  Maybe<std::string> Name() const { return text(Member::Master_Name); }
  Maybe<std::string> NameU() const { return text(Member::Master_NameU); }
};

class Shapes : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Shapes;

  /// 1-based in stacking order, the lowest first. Fails outside 1 to Count.
  Shape Item(int index) const;
  /// The first shape of that name in stacking order.
  Shape Item(std::string_view name) const;
  /// By universal names first.
  Shape ItemU(std::string_view name) const;
  /// A shape of the page or of its groups by its ID.
  Shape ItemFromID(int id) const;
  Maybe<int> Count() const { return integer(Member::Shapes_Count); }
  std::vector<Shape> all() const;
};

class Shape : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Shape;

  /// Unique on the page. A document's or page's sheet answers 0.
  Maybe<int> ID() const { return integer(Member::Shape_ID); }
  /// "Sheet." and the ID.
  Maybe<std::string> NameID() const { return text(Member::Shape_NameID); }
  Maybe<std::string> Name() const { return text(Member::Shape_Name); }
  /// Any text but the empty one; two shapes may have one name.
  bool SetName(const Maybe<std::string>& name) const { return putText(Member::Shape_Name, name); }
  Maybe<std::string> NameU() const { return text(Member::Shape_NameU); }
  bool SetNameU(const Maybe<std::string>& name) const { return putText(Member::Shape_NameU, name); }
  /// With fields expanded.
  Maybe<std::string> Text() const { return text(Member::Shape_Text); }
  bool SetText(const Maybe<std::string>& value) const { return putText(Member::Shape_Text, value); }
  Maybe<std::string> Data1() const { return text(Member::Shape_Data1); }
  Maybe<std::string> Data2() const { return text(Member::Shape_Data2); }
  Maybe<std::string> Data3() const { return text(Member::Shape_Data3); }
  bool SetData1(const Maybe<std::string>& value) const { return putText(Member::Shape_Data1, value); }
  bool SetData2(const Maybe<std::string>& value) const { return putText(Member::Shape_Data2, value); }
  bool SetData3(const Maybe<std::string>& value) const { return putText(Member::Shape_Data3, value); }
  /// Null for a drawn shape. A member that came with its group's master has that master.
  class Master Master() const;
  /// The containing group; null when the shape's parent is its page, see ContainingPage.
  Shape Parent() const;
  Page ContainingPage() const;
  /// The group, or the page's sheet for a shape that is on the page itself.
  Shape ContainingShape() const;
  class Document Document() const;
  class Shapes Shapes() const;
  Maybe<bool> OneD() const { return truth(Member::Shape_OneD); }

  /// By universal name, in any letter case: "Prop.Task_ID", "User.x.Prompt", "Actions.Menu[1]", "Geometry1.X2", "PinX".
  /// Fails for a cell that does not exist, here or in the master.
  Cell Cells(std::string_view name) const;
  Cell CellsU(std::string_view name) const;
  /// By section number, 0-based row and column number.
  Cell CellsSRC(int section, int row, int column) const;
  /// `localOnly` not 0: rows inherited from the master do not count. A missing cell is false, not a failure.
  Maybe<bool> CellExists(std::string_view name, int localOnly) const;
  /// The new row's number. Fails when the sheet has a local row of the name.
  Maybe<int> AddNamedRow(int section, std::string_view name, int tag) const;
  /// `row` is the 0-based place, or visio::rowLast to append; gives the row's number. A hyperlink is always appended.
  Maybe<int> AddRow(int section, int row, int tag) const;
  Maybe<int> AddSection(int section) const;
  bool DeleteRow(int section, int row) const;
  bool DeleteSection(int section) const;
  Maybe<int> RowCount(int section) const { return integer(Member::Shape_RowCount, {std::int64_t(section)}); }
  Maybe<int> RowType(int section, int row) const;
  bool SetRowType(int section, int row, Maybe<int> tag) const;
  class Section Section(int number) const;
  class Hyperlinks Hyperlinks() const;
  Hyperlink AddHyperlink() const;
  /// The glued ends of this shape.
  class Connects Connects() const;
  /// The ends of other shapes that are glued to this one.
  class Connects FromConnects() const;
  class Characters Characters() const;
  /// Applies a named style of the document. Fails for a name that it lacks.
  bool SetStyle(const Maybe<std::string>& name) const { return putText(Member::Shape_Style, name); }
  Maybe<int> LayerCount() const { return integer(Member::Shape_LayerCount); }
  /// 1-based among the layers that the shape belongs to.
  class Layer Layer(int index) const;
  Shape DrawLine(double x1, double y1, double x2, double y2) const;
  Shape DrawRectangle(double x1, double y1, double x2, double y2) const;
  Shape Import(const Maybe<std::string>& fileName) const;
  /// Selected where its page is shown, unless shapes are being deleted. Null when a handler deleted it.
  Shape Duplicate() const;
  /// Fails while LockDelete is 1, and for a member of a group whose LockGroup is 1.
  bool Delete() const { return call(Member::Shape_Delete); }
  /// Makes a drawn shape a group that has no members yet.
  bool Group() const { return call(Member::Shape_Group); }
  /// The members move to the group's parent, and the group is deleted. Refused while LockGroup is 1.
  bool Ungroup() const { return call(Member::Shape_Ungroup); }
  bool BringForward() const { return call(Member::Shape_BringForward); }
  bool BringToFront() const { return call(Member::Shape_BringToFront); }
  bool FlipHorizontal() const { return call(Member::Shape_FlipHorizontal); }
  bool ReverseEnds() const { return call(Member::Shape_ReverseEnds); }
  bool UpdateAlignmentBox() const { return call(Member::Shape_UpdateAlignmentBox); }
  /// "{…}", the same for the life of the shape; `request` as in visio::uniqueId…. Empty: it has none.
  Maybe<std::string> UniqueID(int request) const;
  /// A user's text edit: raises BeforeShapeTextEdit; fails while LockTextEdit is 1.
  bool BeginTextEdit() const { return call(Member::Shape_BeginTextEdit); }
  /// Ends it with the text typed: raises TextChanged when it differs, then ShapeExitedTextEdit.
  bool EndTextEdit(const Maybe<std::string>& typed) const;
};

class Section : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Section;

  /// 0-based. Fails outside 0 to Count - 1.
  class Row Row(int index) const;
  Maybe<int> Count() const { return integer(Member::Section_Count); }
};

class Row : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Row;

  Maybe<std::string> Name() const { return text(Member::Row_Name); }
  /// Fails for a name that another row of the section has and for one that is no cell name.
  bool SetName(const Maybe<std::string>& name) const { return putText(Member::Row_Name, name); }
  /// The name in the names of the row's cells.
  Maybe<std::string> NameU() const { return text(Member::Row_NameU); }
  bool SetNameU(const Maybe<std::string>& name) const { return putText(Member::Row_NameU, name); }
  /// By column number; fails for a column that the section lacks.
  class Cell Cell(int column) const;
};

class Cell : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Cell;

  /// The formula as written, without a leading "=".
  Maybe<std::string> Formula() const { return text(Member::Cell_Formula); }
  Maybe<std::string> FormulaU() const { return text(Member::Cell_FormulaU); }
  /// Fails on a guarded cell and for text that is no formula. "No Formula" clears the cell.
  bool SetFormula(const Maybe<std::string>& formula) const { return putText(Member::Cell_Formula, formula); }
  bool SetFormulaU(const Maybe<std::string>& formula) const { return putText(Member::Cell_FormulaU, formula); }
  /// The same, also on a guarded cell.
  bool FormulaForce(const Maybe<std::string>& formula) const { return putText(Member::Cell_FormulaForce, formula); }
  bool FormulaForceU(const Maybe<std::string>& formula) const { return putText(Member::Cell_FormulaForceU, formula); }
  /// In the published units code: 0 as it is (internal units), 65 inches, 50 points. Fails for text that reads as
  /// no quantity.
  Maybe<double> Result(int units) const { return number(Member::Cell_Result, {std::int64_t(units)}); }
  bool SetResult(int units, Maybe<double> value) const;
  bool ResultForce(int units, Maybe<double> value) const;
  /// Inches, radians, days.
  Maybe<double> ResultIU() const { return number(Member::Cell_ResultIU); }
  bool SetResultIU(Maybe<double> value) const { return putValue(Member::Cell_ResultIU, value); }
  /// Rounded when `round` is not 0, else cut.
  Maybe<int> ResultInt(int units, int round) const;
  /// A duration reads as number, blank, two letters, point: "5 em.".
  Maybe<std::string> ResultStr(int units) const { return text(Member::Cell_ResultStr, {std::int64_t(units)}); }
  /// The universal name in its short form: "Prop.Task_ID" for the row's own cell.
  Maybe<std::string> Name() const { return text(Member::Cell_Name); }
  class Shape Shape() const;
  Maybe<int> Section() const { return integer(Member::Cell_Section); }
  Maybe<int> Row() const { return integer(Member::Cell_Row); }
  Maybe<int> Column() const { return integer(Member::Cell_Column); }
  /// Glues an end of a 1-D shape (this cell is BeginX or EndX) to a connection point or to a whole shape (PinX).
  bool GlueTo(const Cell& target) const;
};

class Characters : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Characters;

  /// 0-based places between the characters of the text, fields expanded; at first all of it. A put outside of the text
  /// fails; one that passes the other place moves that along.
  Maybe<int> Begin() const { return integer(Member::Characters_Begin); }
  bool SetBegin(Maybe<int> place) const;
  Maybe<int> End() const { return integer(Member::Characters_End); }
  bool SetEnd(Maybe<int> place) const;
  /// Inserts a field at Begin. Rows of the Fields section are in text order: at the start of the text it becomes row 1.
  bool AddCustomField(const Maybe<std::string>& formula, int format) const;
  /// What lies between Begin and End.
  Maybe<std::string> Text() const { return text(Member::Characters_Text); }
};

class Selection : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Selection;

  /// 1-based, in order of selecting.
  Shape Item(int index) const;
  Maybe<int> Count() const { return integer(Member::Selection_Count); }
  Maybe<int> IterationMode() const { return integer(Member::Selection_IterationMode); }
  bool SetIterationMode(Maybe<int> mode) const;
  bool Delete() const { return call(Member::Selection_Delete); }
  bool Copy() const { return call(Member::Selection_Copy); }
  /// The new group of the selected shapes, which are in one group or at the top of the page; members that are
  /// selected are grouped without their group, whatever IterationMode is. Null when a handler removed it.
  Shape Group() const;
  /// Ungroups every selected group; other shapes are not changed. Refused when none is a group or one of them is
  /// locked.
  bool Ungroup() const { return call(Member::Selection_Ungroup); }
  std::vector<Shape> all() const;
};

class Windows : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Windows;

  /// 1-based, in order of opening, whichever is active. Fails outside 1 to Count.
  Window Item(int index) const;
  Maybe<int> Count() const { return integer(Member::Windows_Count); }
  std::vector<Window> all() const;
};

class Window : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Window;

  Maybe<int> Type() const { return integer(Member::Window_Type); }
  Maybe<int> SubType() const { return integer(Member::Window_SubType); }
  Maybe<std::string> Caption() const { return text(Member::Window_Caption); }
  class Document Document() const;
  class Page Page() const;
  /// Shows the page, and clears the selection.
  bool SetPage(const class Page& page) const;
  class Selection Selection() const;
  /// 1 is 100 %; -1 while the whole page fits the window, -2 while its width does.
  Maybe<double> Zoom() const { return number(Member::Window_Zoom); }
  /// Takes 0.05 to 9.99, -1 and -2.
  bool SetZoom(Maybe<double> zoom) const { return putValue(Member::Window_Zoom, zoom); }
  /// 0 none, 1 the whole page, 2 its width.
  Maybe<int> ViewFit() const { return integer(Member::Window_ViewFit); }
  bool SetViewFit(Maybe<int> fit) const;
  /// `action`: visio::deselect or visio::select.
  bool Select(const Shape& shape, int action) const;
  bool DeselectAll() const { return call(Member::Window_DeselectAll); }
  bool Activate() const { return call(Member::Window_Activate); }
  /// The last window of a document closes the document.
  bool Close() const { return call(Member::Window_Close); }
};

class Layers : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Layers;

  /// Fails for a name that the page lacks.
  Layer Item(std::string_view name) const;
  /// 1-based.
  Layer Item(int index) const;
  Maybe<int> Count() const { return integer(Member::Layers_Count); }
  /// The existing layer when the name exists.
  Layer Add(std::string_view name) const;
};

class Layer : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Layer;

  Maybe<std::string> Name() const { return text(Member::Layer_Name); }
  bool Add(const Shape& shape, int keepMembers) const;
  bool Remove(const Shape& shape, int keepMembers) const;
  Cell CellsC(int column) const;
};

class Hyperlinks : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Hyperlinks;

  /// 0-based, unlike the other collections.
  Hyperlink Item(int index) const;
  Maybe<int> Count() const { return integer(Member::Hyperlinks_Count); }
  Hyperlink Add() const;
  std::vector<Hyperlink> all() const;
};

class Hyperlink : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Hyperlink;

  Maybe<std::string> Description() const { return text(Member::Hyperlink_Description); }
  Maybe<std::string> Address() const { return text(Member::Hyperlink_Address); }
  /// Page name, "/", shape name.
  Maybe<std::string> SubAddress() const { return text(Member::Hyperlink_SubAddress); }
  Maybe<bool> NewWindow() const { return truth(Member::Hyperlink_NewWindow); }
  /// For a page or shape the zoom: "zoom=150" in percent, "zoom=-1" the whole page, "zoom=-2" its width.
  Maybe<std::string> ExtraInfo() const { return text(Member::Hyperlink_ExtraInfo); }
  Maybe<std::string> Frame() const { return text(Member::Hyperlink_Frame); }
  Maybe<bool> IsDefaultLink() const { return truth(Member::Hyperlink_IsDefaultLink); }
  bool SetDescription(const Maybe<std::string>& v) const { return putText(Member::Hyperlink_Description, v); }
  bool SetAddress(const Maybe<std::string>& v) const { return putText(Member::Hyperlink_Address, v); }
  bool SetSubAddress(const Maybe<std::string>& v) const { return putText(Member::Hyperlink_SubAddress, v); }
  bool SetNewWindow(Maybe<bool> v) const { return putValue(Member::Hyperlink_NewWindow, v); }
  bool SetExtraInfo(const Maybe<std::string>& v) const { return putText(Member::Hyperlink_ExtraInfo, v); }
  bool SetFrame(const Maybe<std::string>& v) const { return putText(Member::Hyperlink_Frame, v); }
  bool SetIsDefaultLink(Maybe<bool> v) const { return putValue(Member::Hyperlink_IsDefaultLink, v); }
  /// Shows the page and selects the shape that it leads to, in this drawing or in one that is opened for it; files, web
  /// and mail addresses are opened by the system, programs only when the user agrees. Fails, and shows nothing, when
  /// the target does not exist or could not be opened.
  bool Follow() const { return call(Member::Hyperlink_Follow); }
  bool Delete() const { return call(Member::Hyperlink_Delete); }
};

class Connects : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Connects;

  /// 1-based. Fails outside 1 to Count.
  Connect Item(int index) const;
  Maybe<int> Count() const { return integer(Member::Connects_Count); }
  std::vector<Connect> all() const;
};

/// One end of a 1-D shape (From) that is glued to a shape (To).
class Connect : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::Connect;

  Shape FromSheet() const;
  /// BeginX or EndX of FromSheet.
  Cell FromCell() const;
  /// 9 the begin, 12 the end.
  Maybe<int> FromPart() const { return integer(Member::Connect_FromPart); }
  Shape ToSheet() const;
  /// The X cell of a connection point, or PinX for the whole shape.
  Cell ToCell() const;
  /// 3 the whole shape, 100 and the 0-based number for a connection point.
  Maybe<int> ToPart() const { return integer(Member::Connect_ToPart); }
};

class CommandBars : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::CommandBars;

  /// 1-based, in order of making.
  CommandBar Item(int index) const;
  CommandBar Item(std::string_view name) const;
  Maybe<int> Count() const { return integer(Member::CommandBars_Count); }
  /// `position`: 0 left, 1 top, 2 right, 3 bottom, 4 floating.
  CommandBar Add(const Maybe<std::string>& name, int position, bool menuBar, bool temporary) const;
  /// A menu of the host by number; fails for one that this release lacks.
  CommandBarControl FindControl(int id) const;
};

class CommandBar : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::CommandBar;

  Maybe<std::string> Context() const { return text(Member::CommandBar_Context); }
  bool SetContext(const Maybe<std::string>& context) const { return putText(Member::CommandBar_Context, context); }
  CommandBarControls Controls() const;
  Maybe<std::string> Name() const { return text(Member::CommandBar_Name); }
  bool Delete() const { return call(Member::CommandBar_Delete); }
  Maybe<bool> Enabled() const { return truth(Member::CommandBar_Enabled); }
  Maybe<int> Index() const { return integer(Member::CommandBar_Index); }
  /// Places and sizes are screen pixels; positions as for CommandBars::Add.
  Maybe<int> Height() const { return integer(Member::CommandBar_Height); }
  Maybe<int> Left() const { return integer(Member::CommandBar_Left); }
  Maybe<int> Position() const { return integer(Member::CommandBar_Position); }
  Maybe<int> RowIndex() const { return integer(Member::CommandBar_RowIndex); }
  Maybe<int> Top() const { return integer(Member::CommandBar_Top); }
  Maybe<int> Width() const { return integer(Member::CommandBar_Width); }
  Maybe<int> Protection() const { return integer(Member::CommandBar_Protection); }
  Maybe<bool> Visible() const { return truth(Member::CommandBar_Visible); }
  bool SetHeight(Maybe<int> v) const;
  bool SetLeft(Maybe<int> v) const;
  bool SetPosition(Maybe<int> v) const;
  bool SetRowIndex(Maybe<int> v) const;
  bool SetTop(Maybe<int> v) const;
  bool SetWidth(Maybe<int> v) const;
  bool SetProtection(Maybe<int> v) const;
  bool SetVisible(Maybe<bool> v) const { return putValue(Member::CommandBar_Visible, v); }
};

class CommandBarControls : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::CommandBarControls;

  /// `type` 1 is a button, 10 a menu. `before` is the 1-based index of the control after it, 0 for the end.
  CommandBarControl Add(int type, int before = 0) const;
  Maybe<int> Count() const { return integer(Member::CommandBarControls_Count); }
  /// 1-based.
  CommandBarControl Item(int index) const;
  /// The first of that caption, in any letter case and without its "&".
  CommandBarControl Item(std::string_view caption) const;
  std::vector<CommandBarControl> all() const;
};

/// A button or a menu; what only buttons have is refused by a menu.
class CommandBarControl : public Handle {
 public:
  using Handle::Handle;
  static constexpr ObjectKind kind = ObjectKind::CommandBarControl;

  Maybe<bool> BeginGroup() const { return truth(Member::CommandBarControl_BeginGroup); }
  bool SetBeginGroup(Maybe<bool> v) const { return putValue(Member::CommandBarControl_BeginGroup, v); }
  Maybe<std::string> Caption() const { return text(Member::CommandBarControl_Caption); }
  bool SetCaption(const Maybe<std::string>& v) const { return putText(Member::CommandBarControl_Caption, v); }
  /// The items of a menu; fails for a button.
  CommandBarControls Controls() const;
  bool Delete() const { return call(Member::CommandBarControl_Delete); }
  /// What a click does: raises Click on the listener, or runs OnAction.
  bool Execute() const { return call(Member::CommandBarControl_Execute); }
  Maybe<int> Id() const { return integer(Member::CommandBarControl_Id); }
  Maybe<std::string> OnAction() const { return text(Member::CommandBarControl_OnAction); }
  bool SetOnAction(const Maybe<std::string>& v) const { return putText(Member::CommandBarControl_OnAction, v); }
  Maybe<std::string> Parameter() const { return text(Member::CommandBarControl_Parameter); }
  bool SetParameter(const Maybe<std::string>& v) const { return putText(Member::CommandBarControl_Parameter, v); }
  bool Reset() const { return call(Member::CommandBarControl_Reset); }
  Maybe<std::string> Tag() const { return text(Member::CommandBarControl_Tag); }
  bool SetTag(const Maybe<std::string>& v) const { return putText(Member::CommandBarControl_Tag, v); }
  Maybe<std::string> TooltipText() const { return text(Member::CommandBarControl_TooltipText); }
  bool SetTooltipText(const Maybe<std::string>& v) const { return putText(Member::CommandBarControl_TooltipText, v); }
  /// Takes the face and mask that Platform::placeFace put on the clipboard; fails when there is none.
  bool PasteFace() const { return call(Member::CommandBarControl_PasteFace); }
  /// -1 down, 0 up.
  Maybe<int> State() const { return integer(Member::CommandBarControl_State); }
  bool SetState(Maybe<int> v) const;
};
using CommandBarButton = CommandBarControl;

/// The events of the host, each raised inside the call that caused it. A handler may call the host, delete the object
/// of the event or open a dialog.
class ApplicationEvents {
 public:
  virtual ~ApplicationEvents() = default;

  virtual void DocumentCreated(Document) {}
  virtual void DocumentOpened(Document) {}
  virtual void BeforeDocumentSave(Document) {}
  virtual void BeforeDocumentSaveAs(Document) {}
  virtual void DocumentSaved(Document) {}
  virtual void DocumentSavedAs(Document) {}
  virtual void BeforeDocumentClose(Document) {}
  virtual void PageAdded(Page) {}
  virtual void PageChanged(Page) {}
  virtual void ShapeAdded(Shape) {}
  virtual void BeforeShapeDelete(Shape) {}
  /// It was grouped or ungrouped.
  virtual void ShapeParentChanged(Shape) {}
  virtual void BeforeShapeTextEdit(Shape) {}
  virtual void ShapeExitedTextEdit(Shape) {}
  virtual void TextChanged(Shape) {}
  virtual void CellChanged(Cell) {}
  virtual void FormulaChanged(Cell) {}
  virtual void SelectionChanged(Window) {}
  virtual void WindowActivated(Window) {}
  virtual void AppActivated(Application) {}
  virtual void BeforeModal(Application) {}
  virtual void AfterModal(Application) {}
  virtual void EnterScope(int /*scope*/, std::string_view /*description*/) {}
  virtual void ExitScope(int /*scope*/, std::string_view /*description*/) {}
  virtual void MarkerEvent(int /*sequence*/, std::string_view /*context*/) {}
  virtual void MouseDown(int /*button*/, int /*shift*/, double /*x*/, double /*y*/) {}
  virtual void MouseMove(int /*button*/, int /*shift*/, double /*x*/, double /*y*/) {}
  /// A toolbar button was clicked.
  virtual void Click(CommandBarButton) {}
};

}  // namespace quorvel
