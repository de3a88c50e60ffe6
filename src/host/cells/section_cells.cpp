// Cells of rows that a sheet may have any number of.
#include "host/cells/cell_rows.h"

namespace quorvel::host {
namespace {

using enum CellUnits;

constexpr RowCell character[] = {
    {0, "Font"},
    {1, "Color", Colour},
    {2, "Style"},
    {3, "Case"},
    {4, "Pos"},
    {5, "FontScale", Number, 1},
    {6, "Locale"},
    {7, "Size", Length, 0.16666666666666666},
    {8, "DblUnderline", Boolean},
    {9, "Overline", Boolean},
    {10, "Strikethru", Boolean},
    {11, "Highlight", Colour},
    {12, "Perpendicular", Boolean},
    {13, "DoubleStrikethrough", Boolean},
    {14, "RTLText", Boolean},
    {15, "UseVertical", Boolean},
    {16, "Letterspace", Length},
    {17, "ColorTrans"},
    {18, "AsianFont"},
    {19, "ComplexScriptFont"},
    {20, "LocalizeFont"},
    {21, "ComplexScriptSize", Number, -1},
    {22, "LangID"},
};

constexpr RowCell paragraph[] = {
    {0, "IndFirst", Length},
    {1, "IndLeft", Length},
    {2, "IndRight", Length},
    {3, "SpLine", Length, -1.2},
    {4, "SpBefore", Length},
    {5, "SpAfter", Length},
    {6, "HorzAlign", Number, 1},
    {7, "Bullet"},
    {8, "BulletStr", Text},
    {9, "BulletFont"},
    {10, "LocalizeBulletFont"},
    {11, "BulletFontSize", Length, -1},
    {12, "TextPosAfterBullet", Length},
    {13, "Flags"},
};

constexpr RowCell scratch[] = {
    {0, "X", Length}, {1, "Y", Length}, {2, "A"}, {3, "B"}, {4, "C"}, {5, "D"},
};

constexpr RowCell connection[] = {
    {0, "X", Length}, {1, "Y", Length},        {2, "DirX"},         {3, "DirY"}, {4, "Type"},
    {5, "D"},         {6, "AutoGen", Boolean}, {7, "Prompt", Text},
};

constexpr RowCell textField[] = {
    {0, "Value"}, {1, "EditMode"}, {2, "Format", Text}, {3, "Type"},       {4, "UICat"},
    {5, "UICod"}, {6, "UIFmt"},    {7, "Calendar"},     {8, "ObjectKind"},
};

constexpr RowCell control[] = {
    {0, "X", Length}, {1, "Y", Length}, {2, "XDyn", Length},        {3, "YDyn", Length},
    {4, "XCon"},      {5, "YCon"},      {6, "CanGlue", Boolean, 1}, {8, "Prompt", Text},
};

constexpr RowCell component[] = {
    {0, "NoFill", Boolean}, {1, "NoLine", Boolean},      {2, "NoShow", Boolean},
    {3, "NoSnap", Boolean}, {4, "NoQuickDrag", Boolean}, {5, "Path"},
};

constexpr RowCell vertex[] = {
    {0, "X", Length}, {1, "Y", Length}, {2, "A"}, {3, "B"}, {4, "C"}, {5, "D"}, {6, "E"},
};

constexpr RowCell action[] = {
    {0, "Menu", Text},          {1, "Prompt", Text},         {2, "Help", Text},        {3, "Action"},
    {4, "Checked", Boolean},    {5, "Disabled", Boolean},    {6, "ReadOnly", Boolean}, {7, "Invisible", Boolean},
    {8, "BeginGroup", Boolean}, {9, "FlyoutChild", Boolean}, {14, "TagName", Text},    {15, "ButtonFace", Text},
    {16, "SortKey", Text},
};

constexpr RowCell layer[] = {
    {0, "Name", Text},        {2, "Color", Number, 255}, {3, "Status"},        {4, "Visible", Boolean, 1},
    {5, "Print", Boolean, 1}, {6, "Active", Boolean},    {7, "Lock", Boolean}, {8, "Snap", Boolean, 1},
    {9, "Glue", Boolean, 1},  {10, "NameUniv", Text},    {11, "ColorTrans"},
};

constexpr RowCell user[] = {
    {0, "Value"},
    {1, "Prompt", Text},
};

constexpr RowCell property[] = {
    {0, "Value"},
    {1, "Prompt", Text},
    {2, "Label", Text},
    {3, "Format", Text},
    {4, "SortKey", Text},
    {5, "Type"},
    {6, "Invisible", Boolean},
    {7, "Verify", Boolean},
    {8, "DataLinked", Boolean},
    {14, "LangID"},
    {15, "Calendar"},
};

constexpr RowCell hyperlink[] = {
    {0, "Description", Text}, {1, "Address", Text}, {2, "SubAddress", Text},
    {3, "ExtraInfo", Text},   {4, "Frame", Text},   {5, "NewWindow", Boolean},
    {6, "Default", Boolean},  {7, "SortKey", Text}, {8, "Invisible", Boolean},
};

constexpr RowCell reviewer[] = {
    {0, "Name", Text}, {1, "Initials", Text}, {2, "Color", Colour}, {3, "ReviewerID"}, {4, "CurrentIndex"},
};

constexpr RowCell annotation[] = {
    {0, "X", Length},  {1, "Y", Length},     {2, "ReviewerID"}, {3, "MarkerIndex"},
    {4, "Date", Date}, {5, "Comment", Text}, {6, "LangID"},
};

constexpr RowCell actionTag[] = {
    {0, "X", Length},   {1, "Y", Length},        {2, "TagName", Text},     {3, "XJustify"},          {4, "YJustify"},
    {5, "DisplayMode"}, {6, "ButtonFace", Text}, {7, "Disabled", Boolean}, {8, "Description", Text},
};

constexpr RowCell fillGradient[] = {
    {0, "GradientStopColor", Colour, 1},
    {1, "GradientStopColorTrans"},
    {2, "GradientStopPosition"},
};

constexpr RowCell lineGradient[] = {
    {0, "GradientStopColor", Colour, 1},
    {1, "GradientStopColorTrans"},
    {2, "GradientStopPosition"},
};

constexpr CellRow rows[] = {
    {SectionNumber::Character, 0, StyleSource::Text, character},
    {SectionNumber::Paragraph, 0, StyleSource::Text, paragraph},
    {SectionNumber::Scratch, 0, StyleSource::None, scratch},
    {SectionNumber::Connection, 0, StyleSource::None, connection},
    {SectionNumber::TextField, 0, StyleSource::None, textField},
    {SectionNumber::Control, 0, StyleSource::None, control},
    {SectionNumber::Geometry, 0, StyleSource::None, component},
    {SectionNumber::Geometry, 1, StyleSource::None, vertex},
    {SectionNumber::Action, 0, StyleSource::None, action},
    {SectionNumber::Layer, 0, StyleSource::None, layer},
    {SectionNumber::User, 0, StyleSource::None, user},
    {SectionNumber::Property, 0, StyleSource::None, property},
    {SectionNumber::Hyperlink, 0, StyleSource::None, hyperlink},
    {SectionNumber::Reviewer, 0, StyleSource::None, reviewer},
    {SectionNumber::Annotation, 0, StyleSource::None, annotation},
    {SectionNumber::ActionTag, 0, StyleSource::None, actionTag},
    {SectionNumber::FillGradient, 0, StyleSource::Fill, fillGradient},
    {SectionNumber::LineGradient, 0, StyleSource::Line, lineGradient},
};

}  // namespace

std::span<const CellRow> sectionCellRows() { return rows; }

}  // namespace quorvel::host
