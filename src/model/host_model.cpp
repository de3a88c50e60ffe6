#include "model/host_model.h"

#include <cmath>
#include <limits>

namespace quorvel {
namespace {

Arguments list(std::initializer_list<Argument> arguments) { return {arguments.begin(), arguments.size()}; }

Maybe<double> asNumber(const Variant& value) {
  if (const auto* number = std::get_if<double>(&value)) return *number;
  if (const auto* whole = std::get_if<std::int64_t>(&value)) return static_cast<double>(*whole);
  if (const auto* truth = std::get_if<bool>(&value)) return *truth ? 1.0 : 0.0;
  return {};
}

Argument whole(int value) { return static_cast<std::int64_t>(value); }

/// All items of a collection with Count and Item, read before any of them is used.
template <class Item, class Collection>
std::vector<Item> itemsOf(const Collection& collection, int first) {
  std::vector<Item> items;
  const int count = collection.Count().or_(0);
  items.reserve(count);
  for (int i = 0; i < count; ++i) items.push_back(collection.Item(first + i));
  return items;
}

}  // namespace

Maybe<std::string> Handle::text(Member member, std::initializer_list<Argument> arguments) const {
  if (!backend_) return {};
  Maybe<Variant> value = infoOf(member).access == MemberAccess::C ? backend_->call(object_, member, list(arguments))
                                                                  : backend_->get(object_, member, list(arguments));
  if (!value || !std::holds_alternative<std::string>(*value)) return {};
  return std::get<std::string>(*value);
}

Maybe<double> Handle::number(Member member, std::initializer_list<Argument> arguments) const {
  if (!backend_) return {};
  const Maybe<Variant> value = backend_->get(object_, member, list(arguments));
  return value ? asNumber(*value) : Maybe<double>();
}

Maybe<int> Handle::integer(Member member, std::initializer_list<Argument> arguments) const {
  if (!backend_) return {};
  const Maybe<Variant> value = infoOf(member).access == MemberAccess::C
                                   ? backend_->call(object_, member, list(arguments))
                                   : backend_->get(object_, member, list(arguments));
  const Maybe<double> number = value ? asNumber(*value) : Maybe<double>();
  // A number that does not fit is not read at all, instead of as another one.
  constexpr double beyond = 1.0 + std::numeric_limits<int>::max();
  return number && std::fabs(*number) < beyond ? Maybe<int>(static_cast<int>(*number)) : Maybe<int>();
}

Maybe<bool> Handle::truth(Member member, std::initializer_list<Argument> arguments) const {
  const Maybe<double> value = number(member, arguments);
  return value ? Maybe<bool>(*value != 0) : Maybe<bool>();
}

bool Handle::put(Member member, const Argument& value, std::initializer_list<Argument> indices) const {
  return backend_ && backend_->put(object_, member, list(indices), value);
}

bool Handle::putText(Member member, const Maybe<std::string>& value, std::initializer_list<Argument> indices) const {
  return value && put(member, Argument(std::string_view(*value)), indices);
}

bool Handle::call(Member member, std::initializer_list<Argument> arguments) const {
  return backend_ && backend_->call(object_, member, list(arguments)).has();
}

ObjectRef Handle::reference(Member member, std::initializer_list<Argument> arguments, bool isCall) const {
  if (!backend_) return {};
  const Maybe<Variant> value =
      isCall ? backend_->call(object_, member, list(arguments)) : backend_->get(object_, member, list(arguments));
  const auto* found = value ? std::get_if<ObjectRef>(&*value) : nullptr;
  return found ? *found : ObjectRef{};
}

Document Application::ActiveDocument() const { return object<Document>(Member::Application_ActiveDocument); }
Page Application::ActivePage() const { return object<Page>(Member::Application_ActivePage); }
Window Application::ActiveWindow() const { return object<Window>(Member::Application_ActiveWindow); }
Windows Application::Windows() const { return object<class Windows>(Member::Application_Windows); }
Documents Application::Documents() const { return object<class Documents>(Member::Application_Documents); }
CommandBars Application::CommandBars() const { return object<class CommandBars>(Member::Application_CommandBars); }
Maybe<int> Application::BeginUndoScope(const Maybe<std::string>& name) const {
  if (!name) return {};
  return integer(Member::Application_BeginUndoScope, {std::string_view(*name)});
}
bool Application::EndUndoScope(int scope, bool commit) const {
  return call(Member::Application_EndUndoScope, {whole(scope), commit});
}
bool Application::QueueMarkerEvent(const Maybe<std::string>& context) const {
  return context && call(Member::Application_QueueMarkerEvent, {std::string_view(*context)});
}

Document Documents::Item(int index) const { return object<Document>(Member::Documents_Item, {whole(index)}); }
Document Documents::Item(std::string_view name) const { return object<Document>(Member::Documents_ItemByName, {name}); }
Document Documents::Add(const Maybe<std::string>& file) const {
  return file ? result<Document>(Member::Documents_Add, {std::string_view(*file)}) : Document();
}
Document Documents::Open(const Maybe<std::string>& file) const {
  return file ? result<Document>(Member::Documents_Open, {std::string_view(*file)}) : Document();
}
Document Documents::OpenEx(const Maybe<std::string>& file, int flags) const {
  return file ? result<Document>(Member::Documents_OpenEx, {std::string_view(*file), whole(flags)}) : Document();
}
std::vector<Document> Documents::all() const { return itemsOf<Document>(*this, 1); }

Pages Document::Pages() const { return object<class Pages>(Member::Document_Pages); }
Masters Document::Masters() const { return object<class Masters>(Member::Document_Masters); }
Shape Document::DocumentSheet() const { return object<Shape>(Member::Document_DocumentSheet); }
bool Document::SetProtection(const Maybe<std::string>& password, Maybe<int> bits) const {
  return password && bits && put(Member::Document_Protection, whole(*bits), {std::string_view(*password)});
}
bool Document::SaveAs(const Maybe<std::string>& file) const {
  return file && call(Member::Document_SaveAs, {std::string_view(*file)});
}

bool Document::FollowHyperlink(const Maybe<std::string>& address, const Maybe<std::string>& subAddress,
                               std::string_view extraInfo, std::string_view frame, bool newWindow) const {
  return address && subAddress &&
         call(Member::Document_FollowHyperlink,
              {std::string_view(*address), std::string_view(*subAddress), extraInfo, frame, newWindow});
}

Page Pages::Item(int index) const { return object<Page>(Member::Pages_Item, {whole(index)}); }
Page Pages::Item(std::string_view name) const { return object<Page>(Member::Pages_ItemByName, {name}); }
Page Pages::ItemU(std::string_view name) const { return object<Page>(Member::Pages_ItemU, {name}); }
Page Pages::Add() const { return result<Page>(Member::Pages_Add); }
std::vector<Page> Pages::all() const { return itemsOf<Page>(*this, 1); }

Page Page::BackPage() const { return object<Page>(Member::Page_BackPage); }
bool Page::SetBackPage(const Page& page) const { return put(Member::Page_BackPage, page.ref()); }
Document Page::Document() const { return object<class Document>(Member::Page_Document); }
Shapes Page::Shapes() const { return object<class Shapes>(Member::Page_Shapes); }
Shape Page::PageSheet() const { return object<Shape>(Member::Page_PageSheet); }
Connects Page::Connects() const { return object<class Connects>(Member::Page_Connects); }
Layers Page::Layers() const { return object<class Layers>(Member::Page_Layers); }
Shape Page::DrawRectangle(double x1, double y1, double x2, double y2) const {
  return result<Shape>(Member::Page_DrawRectangle, {x1, y1, x2, y2});
}
Shape Page::DrawLine(double x1, double y1, double x2, double y2) const {
  return result<Shape>(Member::Page_DrawLine, {x1, y1, x2, y2});
}
Shape Page::Import(const Maybe<std::string>& file) const {
  return file ? result<Shape>(Member::Page_Import, {std::string_view(*file)}) : Shape();
}
Shape Page::Drop(const Master& master, double x, double y) const {
  return result<Shape>(Member::Page_Drop, {master.ref(), x, y});
}
Shape Page::DropConnected(const Master& master, const Shape& target, int direction, const Master& connector) const {
  return result<Shape>(Member::Page_DropConnected, {master.ref(), target.ref(), whole(direction), connector.ref()});
}

Master Masters::Item(int index) const { return object<Master>(Member::Masters_Item, {whole(index)}); }
Master Masters::Item(std::string_view name) const { return object<Master>(Member::Masters_ItemByName, {name}); }
Master Masters::ItemU(std::string_view name) const { return object<Master>(Member::Masters_ItemU, {name}); }
std::vector<Master> Masters::all() const { return itemsOf<Master>(*this, 1); }

Shape Shapes::Item(int index) const { return object<Shape>(Member::Shapes_Item, {whole(index)}); }
Shape Shapes::Item(std::string_view name) const { return object<Shape>(Member::Shapes_ItemByName, {name}); }
Shape Shapes::ItemU(std::string_view name) const { return object<Shape>(Member::Shapes_ItemU, {name}); }
Shape Shapes::ItemFromID(int id) const { return object<Shape>(Member::Shapes_ItemFromID, {whole(id)}); }
std::vector<Shape> Shapes::all() const { return itemsOf<Shape>(*this, 1); }

Master Shape::Master() const { return object<class Master>(Member::Shape_Master); }
Shape Shape::Parent() const {
  const Handle parent = object<Handle>(Member::Shape_Parent);
  return parent.ref().kind == ObjectKind::Shape ? Shape(parent.backend(), parent.ref()) : Shape();
}
Page Shape::ContainingPage() const { return object<Page>(Member::Shape_ContainingPage); }
Shape Shape::ContainingShape() const { return object<Shape>(Member::Shape_ContainingShape); }
Document Shape::Document() const { return object<class Document>(Member::Shape_Document); }
Shapes Shape::Shapes() const { return object<class Shapes>(Member::Shape_Shapes); }
Cell Shape::Cells(std::string_view name) const { return object<Cell>(Member::Shape_Cells, {name}); }
Cell Shape::CellsU(std::string_view name) const { return object<Cell>(Member::Shape_CellsU, {name}); }
Cell Shape::CellsSRC(int section, int row, int column) const {
  return object<Cell>(Member::Shape_CellsSRC, {whole(section), whole(row), whole(column)});
}
Maybe<bool> Shape::CellExists(std::string_view name, int localOnly) const {
  return truth(Member::Shape_CellExists, {name, whole(localOnly)});
}
Maybe<int> Shape::AddNamedRow(int section, std::string_view name, int tag) const {
  return integer(Member::Shape_AddNamedRow, {whole(section), name, whole(tag)});
}
Maybe<int> Shape::AddRow(int section, int row, int tag) const {
  return integer(Member::Shape_AddRow, {whole(section), whole(row), whole(tag)});
}
Maybe<int> Shape::AddSection(int section) const { return integer(Member::Shape_AddSection, {whole(section)}); }
bool Shape::DeleteRow(int section, int row) const {
  return call(Member::Shape_DeleteRow, {whole(section), whole(row)});
}
bool Shape::DeleteSection(int section) const { return call(Member::Shape_DeleteSection, {whole(section)}); }
Maybe<int> Shape::RowType(int section, int row) const {
  return integer(Member::Shape_RowType, {whole(section), whole(row)});
}
bool Shape::SetRowType(int section, int row, Maybe<int> tag) const {
  return tag && put(Member::Shape_RowType, whole(*tag), {whole(section), whole(row)});
}
Section Shape::Section(int number) const { return object<class Section>(Member::Shape_Section, {whole(number)}); }
Hyperlinks Shape::Hyperlinks() const { return object<class Hyperlinks>(Member::Shape_Hyperlinks); }
Connects Shape::Connects() const { return object<class Connects>(Member::Shape_Connects); }
Connects Shape::FromConnects() const { return object<class Connects>(Member::Shape_FromConnects); }
Hyperlink Shape::AddHyperlink() const { return result<Hyperlink>(Member::Shape_AddHyperlink); }
Characters Shape::Characters() const { return object<class Characters>(Member::Shape_Characters); }
Layer Shape::Layer(int index) const { return object<class Layer>(Member::Shape_Layer, {whole(index)}); }
Shape Shape::DrawLine(double x1, double y1, double x2, double y2) const {
  return result<Shape>(Member::Shape_DrawLine, {x1, y1, x2, y2});
}
Shape Shape::DrawRectangle(double x1, double y1, double x2, double y2) const {
  return result<Shape>(Member::Shape_DrawRectangle, {x1, y1, x2, y2});
}
Shape Shape::Import(const Maybe<std::string>& file) const {
  return file ? result<Shape>(Member::Shape_Import, {std::string_view(*file)}) : Shape();
}
Shape Shape::Duplicate() const { return result<Shape>(Member::Shape_Duplicate); }
bool Shape::EndTextEdit(const Maybe<std::string>& typed) const {
  return typed && call(Member::Shape_EndTextEdit, {std::string_view(*typed)});
}

Maybe<std::string> Shape::UniqueID(int request) const { return text(Member::Shape_UniqueID, {whole(request)}); }

Row Section::Row(int index) const { return object<class Row>(Member::Section_Row, {whole(index)}); }

Cell Row::Cell(int column) const { return object<class Cell>(Member::Row_Cell, {whole(column)}); }

bool Cell::SetResult(int units, Maybe<double> value) const {
  return putValue(Member::Cell_Result, value, {whole(units)});
}
bool Cell::ResultForce(int units, Maybe<double> value) const {
  return putValue(Member::Cell_ResultForce, value, {whole(units)});
}
Maybe<int> Cell::ResultInt(int units, int round) const {
  return integer(Member::Cell_ResultInt, {whole(units), whole(round)});
}
Shape Cell::Shape() const { return object<class Shape>(Member::Cell_Shape); }
bool Cell::GlueTo(const Cell& target) const { return call(Member::Cell_GlueTo, {target.ref()}); }

bool Characters::SetBegin(Maybe<int> place) const { return place && put(Member::Characters_Begin, whole(*place)); }
bool Characters::SetEnd(Maybe<int> place) const { return place && put(Member::Characters_End, whole(*place)); }
bool Characters::AddCustomField(const Maybe<std::string>& formula, int format) const {
  return formula && call(Member::Characters_AddCustomField, {std::string_view(*formula), whole(format)});
}

Shape Selection::Group() const { return result<Shape>(Member::Selection_Group); }
Shape Selection::Item(int index) const { return object<Shape>(Member::Selection_Item, {whole(index)}); }
bool Selection::SetIterationMode(Maybe<int> mode) const {
  return mode && put(Member::Selection_IterationMode, whole(*mode));
}
std::vector<Shape> Selection::all() const { return itemsOf<Shape>(*this, 1); }

Window Windows::Item(int index) const { return object<Window>(Member::Windows_Item, {whole(index)}); }
std::vector<Window> Windows::all() const { return itemsOf<Window>(*this, 1); }

Document Window::Document() const { return object<class Document>(Member::Window_Document); }
Page Window::Page() const { return object<class Page>(Member::Window_Page); }
bool Window::SetPage(const class Page& page) const { return put(Member::Window_Page, page.ref()); }
Selection Window::Selection() const { return object<class Selection>(Member::Window_Selection); }
bool Window::SetViewFit(Maybe<int> fit) const { return fit && put(Member::Window_ViewFit, whole(*fit)); }
bool Window::Select(const Shape& shape, int action) const {
  return call(Member::Window_Select, {shape.ref(), whole(action)});
}

Layer Layers::Item(std::string_view name) const { return object<Layer>(Member::Layers_Item, {name}); }
Layer Layers::Item(int index) const { return object<Layer>(Member::Layers_ItemByIndex, {whole(index)}); }
Layer Layers::Add(std::string_view name) const { return result<Layer>(Member::Layers_Add, {name}); }

bool Layer::Add(const Shape& shape, int keepMembers) const {
  return call(Member::Layer_Add, {shape.ref(), whole(keepMembers)});
}
bool Layer::Remove(const Shape& shape, int keepMembers) const {
  return call(Member::Layer_Remove, {shape.ref(), whole(keepMembers)});
}
Cell Layer::CellsC(int column) const { return object<Cell>(Member::Layer_CellsC, {whole(column)}); }

Hyperlink Hyperlinks::Item(int index) const { return object<Hyperlink>(Member::Hyperlinks_Item, {whole(index)}); }
Hyperlink Hyperlinks::Add() const { return result<Hyperlink>(Member::Hyperlinks_Add); }
std::vector<Hyperlink> Hyperlinks::all() const { return itemsOf<Hyperlink>(*this, 0); }

Connect Connects::Item(int index) const { return object<Connect>(Member::Connects_Item, {whole(index)}); }
std::vector<Connect> Connects::all() const { return itemsOf<Connect>(*this, 1); }

Shape Connect::FromSheet() const { return object<Shape>(Member::Connect_FromSheet); }
Cell Connect::FromCell() const { return object<Cell>(Member::Connect_FromCell); }
Shape Connect::ToSheet() const { return object<Shape>(Member::Connect_ToSheet); }
Cell Connect::ToCell() const { return object<Cell>(Member::Connect_ToCell); }

CommandBar CommandBars::Item(int index) const { return object<CommandBar>(Member::CommandBars_Item, {whole(index)}); }
CommandBar CommandBars::Item(std::string_view name) const {
  return object<CommandBar>(Member::CommandBars_ItemByName, {name});
}
CommandBar CommandBars::Add(const Maybe<std::string>& name, int position, bool menuBar, bool temporary) const {
  if (!name) return {};
  return result<CommandBar>(Member::CommandBars_Add, {std::string_view(*name), whole(position), menuBar, temporary});
}
CommandBarControl CommandBars::FindControl(int id) const {
  return object<CommandBarControl>(Member::CommandBars_FindControl, {whole(id)});
}

CommandBarControls CommandBar::Controls() const { return object<CommandBarControls>(Member::CommandBar_Controls); }
bool CommandBar::SetHeight(Maybe<int> v) const { return v && put(Member::CommandBar_Height, whole(*v)); }
bool CommandBar::SetLeft(Maybe<int> v) const { return v && put(Member::CommandBar_Left, whole(*v)); }
bool CommandBar::SetPosition(Maybe<int> v) const { return v && put(Member::CommandBar_Position, whole(*v)); }
bool CommandBar::SetRowIndex(Maybe<int> v) const { return v && put(Member::CommandBar_RowIndex, whole(*v)); }
bool CommandBar::SetTop(Maybe<int> v) const { return v && put(Member::CommandBar_Top, whole(*v)); }
bool CommandBar::SetWidth(Maybe<int> v) const { return v && put(Member::CommandBar_Width, whole(*v)); }
bool CommandBar::SetProtection(Maybe<int> v) const { return v && put(Member::CommandBar_Protection, whole(*v)); }

CommandBarControl CommandBarControls::Add(int type, int before) const {
  return result<CommandBarControl>(Member::CommandBarControls_Add, {whole(type), whole(before)});
}
CommandBarControl CommandBarControls::Item(std::string_view caption) const {
  return object<CommandBarControl>(Member::CommandBarControls_ItemByName, {caption});
}
CommandBarControl CommandBarControls::Item(int index) const {
  return object<CommandBarControl>(Member::CommandBarControls_Item, {whole(index)});
}
std::vector<CommandBarControl> CommandBarControls::all() const { return itemsOf<CommandBarControl>(*this, 1); }

CommandBarControls CommandBarControl::Controls() const {
  return object<CommandBarControls>(Member::CommandBarControl_Controls);
}
bool CommandBarControl::SetState(Maybe<int> v) const { return v && put(Member::CommandBarControl_State, whole(*v)); }

}  // namespace quorvel
