#include "failure/handle_calls.h"

namespace quorvel {
namespace {

bool done(bool result) { return result; }
bool done(const Handle& handle) { return static_cast<bool>(handle); }
template <class T>
bool done(const Maybe<T>& value) {
  return value.has();
}

}  // namespace

#define CALL(member, ...) {Member::member, false, [](const Subjects& s) { return done(__VA_ARGS__); }},
#define PUT(member, ...) {Member::member, true, [](const Subjects& s) { return done(__VA_ARGS__); }},

const std::vector<HandleCall>& handleCalls() {
  static const std::vector<HandleCall> calls{
      // clang-format off
      CALL(Application_ActiveDocument, s.application.ActiveDocument())
      CALL(Application_ActivePage, s.application.ActivePage())
      CALL(Application_ActiveWindow, s.application.ActiveWindow())
      CALL(Application_Windows, s.application.Windows())
      CALL(Application_Documents, s.application.Documents())
      CALL(Application_Version, s.application.Version())
      CALL(Application_WindowHandle32, s.application.WindowHandle32())
      CALL(Application_CommandBars, s.application.CommandBars())
      CALL(Application_BeginUndoScope, s.application.BeginUndoScope("scope"))
      CALL(Application_EndUndoScope, s.application.EndUndoScope(1, true))
      CALL(Application_Undo, s.application.Undo())
      CALL(Application_Redo, s.application.Redo())
      CALL(Application_DoCmd, s.application.DoCmd(1312))
      CALL(Application_QueueMarkerEvent, s.application.QueueMarkerEvent("marker"))
      CALL(Documents_Item, s.documents.Item(1))
      CALL(Documents_ItemByName, s.documents.Item("Drawing1"))
      CALL(Documents_Count, s.documents.Count())
      CALL(Documents_Add, s.documents.Add(""))
      CALL(Documents_Open, s.documents.Open("missing.vsdx"))
      CALL(Documents_OpenEx, s.documents.OpenEx("missing.vsdx", 2))
      CALL(Document_Pages, s.document.Pages())
      CALL(Document_Masters, s.document.Masters())
      CALL(Document_Name, s.document.Name())
      CALL(Document_Path, s.document.Path())
      CALL(Document_FullName, s.document.FullName())
      CALL(Document_Template, s.document.Template())
      CALL(Document_DocumentSheet, s.document.DocumentSheet())
      CALL(Document_Saved, s.document.Saved())
      PUT(Document_Saved, s.document.SetSaved(true))
      CALL(Document_Protection, s.document.Protection())
      PUT(Document_Protection, s.document.SetProtection("secret", 2))
      CALL(Document_HyperlinkBase, s.document.HyperlinkBase())
      PUT(Document_HyperlinkBase, s.document.SetHyperlinkBase("1"))
      CALL(Document_Save, s.document.Save())
      CALL(Document_SaveAs, s.document.SaveAs("/nowhere/at-all.vsdx"))
      CALL(Document_Close, s.document.Close())
      CALL(Document_FollowHyperlink, s.document.FollowHyperlink("", "Page-1"))
      CALL(Pages_Item, s.pages.Item(1))
      CALL(Pages_ItemByName, s.pages.Item("Page-1"))
      CALL(Pages_ItemU, s.pages.ItemU("Page-1"))
      CALL(Pages_Count, s.pages.Count())
      CALL(Pages_Add, s.pages.Add())
      CALL(Page_Name, s.page.Name())
      PUT(Page_Name, s.page.SetName("1"))
      CALL(Page_NameU, s.page.NameU())
      PUT(Page_NameU, s.page.SetNameU("1"))
      CALL(Page_Background, s.page.Background())
      PUT(Page_Background, s.page.SetBackground(true))
      CALL(Page_BackPage, s.page.BackPage())
      PUT(Page_BackPage, s.page.SetBackPage(s.otherPage))
      CALL(Page_Document, s.page.Document())
      CALL(Page_Shapes, s.page.Shapes())
      CALL(Page_PageSheet, s.page.PageSheet())
      CALL(Page_Layers, s.page.Layers())
      CALL(Page_Connects, s.page.Connects())
      CALL(Page_DrawRectangle, s.page.DrawRectangle(0, 0, 1, 1))
      CALL(Page_DrawLine, s.page.DrawLine(0, 0, 1, 1))
      CALL(Page_Import, s.page.Import("missing.png"))
      CALL(Page_Drop, s.page.Drop(s.otherMaster, 1, 1))
      CALL(Page_DropConnected, s.page.DropConnected(s.otherMaster, s.otherShape, 4, s.otherMaster))
      CALL(Page_Paste, s.page.Paste())
      CALL(Page_Delete, s.page.Delete())
      CALL(Masters_Item, s.masters.Item(1))
      CALL(Masters_ItemByName, s.masters.Item("Box"))
      CALL(Masters_ItemU, s.masters.ItemU("Box"))
      CALL(Masters_Count, s.masters.Count())
      CALL(Master_Name, s.master.Name())
      CALL(Master_NameU, s.master.NameU())
      CALL(Shapes_Item, s.shapes.Item(1))
      CALL(Shapes_ItemByName, s.shapes.Item("Sheet.1"))
      CALL(Shapes_ItemU, s.shapes.ItemU("Sheet.1"))
      CALL(Shapes_ItemFromID, s.shapes.ItemFromID(1))
      CALL(Shapes_Count, s.shapes.Count())
      CALL(Shape_ID, s.shape.ID())
      CALL(Shape_NameID, s.shape.NameID())
      CALL(Shape_Name, s.shape.Name())
      PUT(Shape_Name, s.shape.SetName("1"))
      CALL(Shape_NameU, s.shape.NameU())
      PUT(Shape_NameU, s.shape.SetNameU("1"))
      CALL(Shape_Text, s.shape.Text())
      PUT(Shape_Text, s.shape.SetText("1"))
      CALL(Shape_Data1, s.shape.Data1())
      PUT(Shape_Data1, s.shape.SetData1("1"))
      CALL(Shape_Data2, s.shape.Data2())
      PUT(Shape_Data2, s.shape.SetData2("1"))
      CALL(Shape_Data3, s.shape.Data3())
      PUT(Shape_Data3, s.shape.SetData3("1"))
      CALL(Shape_Master, s.shape.Master())
      CALL(Shape_Parent, s.shape.Parent())
      CALL(Shape_ContainingPage, s.shape.ContainingPage())
      CALL(Shape_ContainingShape, s.shape.ContainingShape())
      CALL(Shape_Document, s.shape.Document())
      CALL(Shape_Shapes, s.shape.Shapes())
      CALL(Shape_OneD, s.shape.OneD())
      CALL(Shape_Cells, s.shape.Cells("PinX"))
      CALL(Shape_CellsU, s.shape.CellsU("PinX"))
      CALL(Shape_CellsSRC, s.shape.CellsSRC(1, 1, 0))
      CALL(Shape_CellExists, s.shape.CellExists("PinX", 0))
      CALL(Shape_AddNamedRow, s.shape.AddNamedRow(visio::sectionUser, "made", 0))
      CALL(Shape_AddRow, s.shape.AddRow(visio::sectionAction, visio::rowLast, 0))
      CALL(Shape_AddSection, s.shape.AddSection(11))
      CALL(Shape_DeleteRow, s.shape.DeleteRow(visio::sectionUser, 0))
      CALL(Shape_DeleteSection, s.shape.DeleteSection(visio::sectionUser))
      CALL(Shape_RowCount, s.shape.RowCount(visio::sectionUser))
      CALL(Shape_RowType, s.shape.RowType(10, 1))
      PUT(Shape_RowType, s.shape.SetRowType(10, 1, 139))
      CALL(Shape_Section, s.shape.Section(visio::sectionUser))
      CALL(Shape_Hyperlinks, s.shape.Hyperlinks())
      CALL(Shape_AddHyperlink, s.shape.AddHyperlink())
      CALL(Shape_Connects, s.shape.Connects())
      CALL(Shape_FromConnects, s.shape.FromConnects())
      CALL(Shape_Characters, s.shape.Characters())
      PUT(Shape_Style, s.shape.SetStyle("1"))
      CALL(Shape_LayerCount, s.shape.LayerCount())
      CALL(Shape_Layer, s.shape.Layer(1))
      CALL(Shape_DrawLine, s.shape.DrawLine(0, 0, 1, 1))
      CALL(Shape_DrawRectangle, s.shape.DrawRectangle(0, 0, 1, 1))
      CALL(Shape_Import, s.shape.Import("missing.png"))
      CALL(Shape_Duplicate, s.shape.Duplicate())
      CALL(Shape_Delete, s.shape.Delete())
      CALL(Shape_Group, s.shape.Group())
      CALL(Shape_Ungroup, s.shape.Ungroup())
      CALL(Shape_BringForward, s.shape.BringForward())
      CALL(Shape_BringToFront, s.shape.BringToFront())
      CALL(Shape_FlipHorizontal, s.shape.FlipHorizontal())
      CALL(Shape_ReverseEnds, s.shape.ReverseEnds())
      CALL(Shape_UniqueID, s.shape.UniqueID(visio::uniqueIdGetOrMake))
      CALL(Shape_UpdateAlignmentBox, s.shape.UpdateAlignmentBox())
      CALL(Shape_BeginTextEdit, s.shape.BeginTextEdit())
      CALL(Shape_EndTextEdit, s.shape.EndTextEdit("typed"))
      CALL(Section_Row, s.section.Row(0))
      CALL(Section_Count, s.section.Count())
      CALL(Row_Name, s.row.Name())
      PUT(Row_Name, s.row.SetName("1"))
      CALL(Row_NameU, s.row.NameU())
      PUT(Row_NameU, s.row.SetNameU("1"))
      CALL(Row_Cell, s.row.Cell(0))
      CALL(Cell_Formula, s.cell.Formula())
      PUT(Cell_Formula, s.cell.SetFormula("1"))
      CALL(Cell_FormulaU, s.cell.FormulaU())
      PUT(Cell_FormulaU, s.cell.SetFormulaU("1"))
      PUT(Cell_FormulaForce, s.cell.FormulaForce("1"))
      PUT(Cell_FormulaForceU, s.cell.FormulaForceU("1"))
      CALL(Cell_Result, s.cell.Result(0))
      PUT(Cell_Result, s.cell.SetResult(0, 1.0))
      PUT(Cell_ResultForce, s.cell.ResultForce(0, 1.0))
      CALL(Cell_ResultIU, s.cell.ResultIU())
      PUT(Cell_ResultIU, s.cell.SetResultIU(1.0))
      CALL(Cell_ResultInt, s.cell.ResultInt(0, 1))
      CALL(Cell_ResultStr, s.cell.ResultStr(0))
      CALL(Cell_Name, s.cell.Name())
      CALL(Cell_Shape, s.cell.Shape())
      CALL(Cell_Section, s.cell.Section())
      CALL(Cell_Row, s.cell.Row())
      CALL(Cell_Column, s.cell.Column())
      CALL(Cell_GlueTo, s.cell.GlueTo(s.otherCell))
      CALL(Characters_Begin, s.characters.Begin())
      PUT(Characters_Begin, s.characters.SetBegin(0))
      CALL(Characters_End, s.characters.End())
      PUT(Characters_End, s.characters.SetEnd(0))
      CALL(Characters_AddCustomField, s.characters.AddCustomField("1", 0))
      CALL(Characters_Text, s.characters.Text())
      CALL(Selection_Item, s.selection.Item(1))
      CALL(Selection_Count, s.selection.Count())
      CALL(Selection_IterationMode, s.selection.IterationMode())
      PUT(Selection_IterationMode, s.selection.SetIterationMode(256))
      CALL(Selection_Delete, s.selection.Delete())
      CALL(Selection_Copy, s.selection.Copy())
      CALL(Selection_Group, s.selection.Group())
      CALL(Selection_Ungroup, s.selection.Ungroup())
      CALL(Windows_Item, s.windows.Item(1))
      CALL(Windows_Count, s.windows.Count())
      CALL(Window_Type, s.window.Type())
      CALL(Window_SubType, s.window.SubType())
      CALL(Window_Caption, s.window.Caption())
      CALL(Window_Document, s.window.Document())
      CALL(Window_Page, s.window.Page())
      PUT(Window_Page, s.window.SetPage(s.otherPage))
      CALL(Window_Selection, s.window.Selection())
      CALL(Window_Zoom, s.window.Zoom())
      PUT(Window_Zoom, s.window.SetZoom(2.0))
      CALL(Window_ViewFit, s.window.ViewFit())
      PUT(Window_ViewFit, s.window.SetViewFit(1))
      CALL(Window_Select, s.window.Select(s.otherShape, visio::select))
      CALL(Window_DeselectAll, s.window.DeselectAll())
      CALL(Window_Activate, s.window.Activate())
      CALL(Window_Close, s.window.Close())
      CALL(Layers_Item, s.layers.Item("Visible"))
      CALL(Layers_ItemByIndex, s.layers.Item(1))
      CALL(Layers_Count, s.layers.Count())
      CALL(Layers_Add, s.layers.Add("Made"))
      CALL(Layer_Name, s.layer.Name())
      CALL(Layer_Add, s.layer.Add(s.otherShape, 1))
      CALL(Layer_Remove, s.layer.Remove(s.otherShape, 1))
      CALL(Layer_CellsC, s.layer.CellsC(4))
      CALL(Hyperlinks_Item, s.hyperlinks.Item(0))
      CALL(Hyperlinks_Count, s.hyperlinks.Count())
      CALL(Hyperlinks_Add, s.hyperlinks.Add())
      CALL(Hyperlink_Description, s.hyperlink.Description())
      PUT(Hyperlink_Description, s.hyperlink.SetDescription("1"))
      CALL(Hyperlink_Address, s.hyperlink.Address())
      PUT(Hyperlink_Address, s.hyperlink.SetAddress("1"))
      CALL(Hyperlink_SubAddress, s.hyperlink.SubAddress())
      PUT(Hyperlink_SubAddress, s.hyperlink.SetSubAddress("1"))
      CALL(Hyperlink_NewWindow, s.hyperlink.NewWindow())
      PUT(Hyperlink_NewWindow, s.hyperlink.SetNewWindow(1))
      CALL(Hyperlink_ExtraInfo, s.hyperlink.ExtraInfo())
      PUT(Hyperlink_ExtraInfo, s.hyperlink.SetExtraInfo("1"))
      CALL(Hyperlink_Frame, s.hyperlink.Frame())
      PUT(Hyperlink_Frame, s.hyperlink.SetFrame("1"))
      CALL(Hyperlink_IsDefaultLink, s.hyperlink.IsDefaultLink())
      PUT(Hyperlink_IsDefaultLink, s.hyperlink.SetIsDefaultLink(1))
      CALL(Hyperlink_Follow, s.hyperlink.Follow())
      CALL(Hyperlink_Delete, s.hyperlink.Delete())
      CALL(Connects_Item, s.connects.Item(1))
      CALL(Connects_Count, s.connects.Count())
      CALL(Connect_FromSheet, s.connect.FromSheet())
      CALL(Connect_FromCell, s.connect.FromCell())
      CALL(Connect_FromPart, s.connect.FromPart())
      CALL(Connect_ToSheet, s.connect.ToSheet())
      CALL(Connect_ToCell, s.connect.ToCell())
      CALL(Connect_ToPart, s.connect.ToPart())
      CALL(CommandBars_Item, s.commandBars.Item(1))
      CALL(CommandBars_ItemByName, s.commandBars.Item("Made"))
      CALL(CommandBars_Count, s.commandBars.Count())
      CALL(CommandBars_Add, s.commandBars.Add("Made", 1, false, true))
      CALL(CommandBars_FindControl, s.commandBars.FindControl(30002))
      CALL(CommandBar_Context, s.commandBar.Context())
      PUT(CommandBar_Context, s.commandBar.SetContext("1"))
      CALL(CommandBar_Controls, s.commandBar.Controls())
      CALL(CommandBar_Name, s.commandBar.Name())
      CALL(CommandBar_Delete, s.commandBar.Delete())
      CALL(CommandBar_Enabled, s.commandBar.Enabled())
      CALL(CommandBar_Height, s.commandBar.Height())
      PUT(CommandBar_Height, s.commandBar.SetHeight(1))
      CALL(CommandBar_Index, s.commandBar.Index())
      CALL(CommandBar_Left, s.commandBar.Left())
      PUT(CommandBar_Left, s.commandBar.SetLeft(1))
      CALL(CommandBar_Position, s.commandBar.Position())
      PUT(CommandBar_Position, s.commandBar.SetPosition(1))
      CALL(CommandBar_RowIndex, s.commandBar.RowIndex())
      PUT(CommandBar_RowIndex, s.commandBar.SetRowIndex(1))
      CALL(CommandBar_Top, s.commandBar.Top())
      PUT(CommandBar_Top, s.commandBar.SetTop(1))
      CALL(CommandBar_Width, s.commandBar.Width())
      PUT(CommandBar_Width, s.commandBar.SetWidth(1))
      CALL(CommandBar_Protection, s.commandBar.Protection())
      PUT(CommandBar_Protection, s.commandBar.SetProtection(1))
      CALL(CommandBar_Visible, s.commandBar.Visible())
      PUT(CommandBar_Visible, s.commandBar.SetVisible(1))
      CALL(CommandBarControls_Add, s.controls.Add(1))
      CALL(CommandBarControls_Count, s.controls.Count())
      CALL(CommandBarControls_Item, s.controls.Item(1))
      CALL(CommandBarControls_ItemByName, s.controls.Item("Caption"))
      CALL(CommandBarControl_BeginGroup, s.control.BeginGroup())
      PUT(CommandBarControl_BeginGroup, s.control.SetBeginGroup(1))
      CALL(CommandBarControl_Caption, s.control.Caption())
      PUT(CommandBarControl_Caption, s.control.SetCaption("1"))
      CALL(CommandBarControl_Controls, s.control.Controls())
      CALL(CommandBarControl_Delete, s.control.Delete())
      CALL(CommandBarControl_Execute, s.control.Execute())
      CALL(CommandBarControl_Id, s.control.Id())
      CALL(CommandBarControl_OnAction, s.control.OnAction())
      PUT(CommandBarControl_OnAction, s.control.SetOnAction("1"))
      CALL(CommandBarControl_Parameter, s.control.Parameter())
      PUT(CommandBarControl_Parameter, s.control.SetParameter("1"))
      CALL(CommandBarControl_Reset, s.control.Reset())
      CALL(CommandBarControl_Tag, s.control.Tag())
      PUT(CommandBarControl_Tag, s.control.SetTag("1"))
      CALL(CommandBarControl_TooltipText, s.control.TooltipText())
      PUT(CommandBarControl_TooltipText, s.control.SetTooltipText("1"))
      CALL(CommandBarControl_PasteFace, s.control.PasteFace())
      CALL(CommandBarControl_State, s.control.State())
      PUT(CommandBarControl_State, s.control.SetState(1))
      // clang-format on
  };
  return calls;
}

#undef CALL
#undef PUT

const Handle& subjectOf(const Subjects& subjects, ObjectKind kind) {
  switch (kind) {
    case ObjectKind::Documents:
      return subjects.documents;
    case ObjectKind::Document:
      return subjects.document;
    case ObjectKind::Pages:
      return subjects.pages;
    case ObjectKind::Page:
      return subjects.page;
    case ObjectKind::Masters:
      return subjects.masters;
    case ObjectKind::Master:
      return subjects.master;
    case ObjectKind::Shapes:
      return subjects.shapes;
    case ObjectKind::Shape:
      return subjects.shape;
    case ObjectKind::Section:
      return subjects.section;
    case ObjectKind::Row:
      return subjects.row;
    case ObjectKind::Cell:
      return subjects.cell;
    case ObjectKind::Characters:
      return subjects.characters;
    case ObjectKind::Selection:
      return subjects.selection;
    case ObjectKind::Windows:
      return subjects.windows;
    case ObjectKind::Window:
      return subjects.window;
    case ObjectKind::Layers:
      return subjects.layers;
    case ObjectKind::Layer:
      return subjects.layer;
    case ObjectKind::Hyperlinks:
      return subjects.hyperlinks;
    case ObjectKind::Hyperlink:
      return subjects.hyperlink;
    case ObjectKind::Connects:
      return subjects.connects;
    case ObjectKind::Connect:
      return subjects.connect;
    case ObjectKind::CommandBars:
      return subjects.commandBars;
    case ObjectKind::CommandBar:
      return subjects.commandBar;
    case ObjectKind::CommandBarControls:
      return subjects.controls;
    case ObjectKind::CommandBarControl:
      return subjects.control;
    default:
      return subjects.application;
  }
}

}  // namespace quorvel
