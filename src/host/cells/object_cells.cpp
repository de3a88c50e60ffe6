// Cells that every sheet has once, in the published row and column numbers where those are known. Defaults are those of
// a drawing whose style sheets say nothing.
#include "host/cells/cell_rows.h"

namespace quorvel::host {
namespace {

using enum CellUnits;

constexpr RowCell shapeTransform[] = {
    {0, "PinX", Length},    {1, "PinY", Length}, {2, "Width", Length},  {3, "Height", Length}, {4, "LocPinX", Length},
    {5, "LocPinY", Length}, {6, "Angle", Angle}, {7, "FlipX", Boolean}, {8, "FlipY", Boolean}, {9, "ResizeMode"},
};

constexpr RowCell line[] = {
    {0, "LineWeight", Length, 0.01},
    {1, "LineColor", Colour},
    {2, "LinePattern", Number, 1},
    {3, "Rounding", Length},
    {4, "EndArrowSize", Number, 2},
    {5, "BeginArrow"},
    {6, "EndArrow"},
    {7, "LineCap"},
    {8, "BeginArrowSize", Number, 2},
    {9, "LineColorTrans"},
    {10, "CompoundType"},
};

constexpr RowCell fill[] = {
    {0, "FillForegnd", Colour, 1},
    {1, "FillBkgnd", Colour},
    {2, "FillPattern", Number, 1},
    {3, "ShdwForegnd", Colour},
    {4, "ShdwBkgnd", Colour, 1},
    {5, "ShdwPattern"},
    {6, "FillForegndTrans"},
    {7, "FillBkgndTrans"},
    {8, "ShdwForegndTrans"},
    {9, "ShdwBkgndTrans"},
    {10, "ShapeShdwType"},
    {11, "ShapeShdwOffsetX", Length},
    {12, "ShapeShdwOffsetY", Length},
    {13, "ShapeShdwObliqueAngle", Angle},
    {14, "ShapeShdwScaleFactor", Number, 1},
    {15, "ShapeShdwBlur", Length},
    {16, "ShapeShdwShow"},
};

constexpr RowCell endpoints[] = {
    {0, "BeginX", Length},
    {1, "BeginY", Length},
    {2, "EndX", Length},
    {3, "EndY", Length},
};

constexpr RowCell events[] = {
    {0, "TheData"}, {1, "TheText"}, {2, "EventDblClick"}, {3, "EventXFMod"}, {4, "EventDrop"}, {5, "EventMultiDrop"},
};

constexpr RowCell layerMembership[] = {
    {0, "LayerMember", Text},
};

constexpr RowCell styleProperties[] = {
    {0, "EnableLineProps", Boolean, 1},
    {1, "EnableFillProps", Boolean, 1},
    {2, "EnableTextProps", Boolean, 1},
    {3, "HideForApply", Boolean},
};

constexpr RowCell foreignImage[] = {
    {0, "ImgOffsetX", Length}, {1, "ImgOffsetY", Length}, {2, "ImgWidth", Length},
    {3, "ImgHeight", Length},  {4, "ClippingPath", Text},
};

constexpr RowCell page[] = {
    {0, "PageWidth", Length, 8.5},
    {1, "PageHeight", Length, 11},
    {2, "ShdwOffsetX", Length, 0.125},
    {3, "ShdwOffsetY", Length, -0.125},
    {4, "PageScale", Length, 1},
    {5, "DrawingScale", Length, 1},
    {6, "DrawingSizeType"},
    {7, "DrawingScaleType"},
    {8, "InhibitSnap", Boolean},
    {9, "UIVisibility"},
    {10, "ShdwType"},
    {11, "ShdwObliqueAngle", Angle},
    {12, "ShdwScaleFactor", Number, 1},
    {13, "DrawingResizeType"},
    {14, "PageLockReplace", Boolean},
    {15, "PageLockDuplicate", Boolean},
    {16, "PageColor", Colour, 1},
};

constexpr RowCell textBlock[] = {
    {0, "LeftMargin", Length},
    {1, "RightMargin", Length},
    {2, "TopMargin", Length},
    {3, "BottomMargin", Length},
    {4, "VerticalAlign", Number, 1},
    {5, "TextBkgnd", Colour},
    {6, "DefaultTabStop", Length, 0.5},
    {7, "TextDirection"},
    {8, "TextBkgndTrans"},
};

constexpr RowCell textTransform[] = {
    {0, "TxtPinX", Length},    {1, "TxtPinY", Length},    {2, "TxtWidth", Length}, {3, "TxtHeight", Length},
    {4, "TxtLocPinX", Length}, {5, "TxtLocPinY", Length}, {6, "TxtAngle", Angle},
};

constexpr RowCell alignment[] = {
    {0, "AlignLeft", Length}, {1, "AlignCenter", Length}, {2, "AlignRight", Length},
    {3, "AlignTop", Length},  {4, "AlignMiddle", Length}, {5, "AlignBottom", Length},
};

constexpr RowCell protection[] = {
    {0, "LockWidth", Boolean},        {1, "LockHeight", Boolean},        {2, "LockMoveX", Boolean},
    {3, "LockMoveY", Boolean},        {4, "LockAspect", Boolean},        {5, "LockDelete", Boolean},
    {6, "LockBegin", Boolean},        {7, "LockEnd", Boolean},           {8, "LockRotate", Boolean},
    {9, "LockCrop", Boolean},         {10, "LockVtxEdit", Boolean},      {11, "LockTextEdit", Boolean},
    {12, "LockFormat", Boolean},      {13, "LockGroup", Boolean},        {14, "LockCalcWH", Boolean},
    {15, "LockSelect", Boolean},      {16, "LockCustProp", Boolean},     {17, "LockFromGroupFormat", Boolean},
    {18, "LockThemeColors", Boolean}, {19, "LockThemeEffects", Boolean}, {20, "LockThemeConnectors", Boolean},
    {21, "LockThemeFonts", Boolean},  {22, "LockThemeIndex", Boolean},   {23, "LockReplace", Boolean},
    {24, "LockVariation", Boolean},
};

constexpr RowCell help[] = {
    {0, "HelpTopic", Text},
    {1, "Copyright", Text},
};

constexpr RowCell miscellaneous[] = {
    {0, "NoObjHandles", Boolean},
    {1, "NonPrinting", Boolean},
    {2, "NoCtlHandles", Boolean},
    {3, "NoAlignBox", Boolean},
    {4, "UpdateAlignBox", Boolean},
    {5, "HideText", Boolean},
    {8, "DynFeedback"},
    {9, "GlueType"},
    {10, "WalkPreference"},
    {11, "BegTrigger"},
    {12, "EndTrigger"},
    {13, "ObjType"},
    {14, "Comment", Text},
    {15, "IsDropSource", Boolean},
    {16, "NoLiveDynamics", Boolean},
    {17, "LocalizeMerge", Boolean},
    {18, "Calendar"},
    {19, "LangID"},
    {20, "ShapeKeywords", Text},
    {21, "DropOnPageScale", Number, 1},
    {22, "NoProofing", Boolean},
};

constexpr RowCell rulerAndGrid[] = {
    {0, "XRulerDensity", Number, 32}, {1, "YRulerDensity", Number, 32}, {4, "XRulerOrigin", Length},
    {5, "YRulerOrigin", Length},      {6, "XGridDensity", Number, 8},   {7, "YGridDensity", Number, 8},
    {8, "XGridSpacing", Length},      {9, "YGridSpacing", Length},      {10, "XGridOrigin", Length},
    {11, "YGridOrigin", Length},
};

constexpr RowCell document[] = {
    {0, "OutputFormat"},        {1, "LockPreview", Boolean},    {2, "AddMarkup", Boolean},
    {3, "ViewMarkup", Boolean}, {4, "PreviewQuality"},          {5, "PreviewScope"},
    {6, "DocLangID"},           {7, "DocLockReplace", Boolean}, {8, "DocLockDuplicatePage", Boolean},
    {9, "NoCoauth", Boolean},
};

constexpr RowCell image[] = {
    {0, "Gamma", Number, 1}, {1, "Contrast", Number, 0.5}, {2, "Brightness", Number, 0.5}, {3, "Sharpen"}, {4, "Blur"},
    {5, "Denoise"},          {6, "Transparency"},
};

constexpr RowCell group[] = {
    {0, "SelectMode", Number, 1},    {1, "DisplayMode", Number, 2},       {2, "IsDropTarget", Boolean},
    {3, "IsSnapTarget", Boolean, 1}, {4, "IsTextEditTarget", Boolean, 1}, {5, "DontMoveChildren", Boolean},
};

constexpr RowCell shapeLayout[] = {
    {0, "ShapePermeableX", Boolean},
    {1, "ShapePermeableY", Boolean},
    {2, "ShapePermeablePlace", Boolean},
    {3, "Relationships"},
    {8, "ShapeFixedCode"},
    {9, "ShapePlowCode"},
    {10, "ShapeRouteStyle"},
    {11, "ShapePlaceStyle"},
    {12, "ConFixedCode"},
    {13, "ConLineJumpCode"},
    {14, "ConLineJumpStyle"},
    {15, "ConLineJumpDirX"},
    {16, "ConLineJumpDirY"},
    {17, "ShapePlaceFlip"},
    {18, "ConLineRouteExt"},
    {19, "ShapeSplit"},
    {20, "ShapeSplittable"},
    {21, "DisplayLevel"},
};

constexpr RowCell pageLayout[] = {
    {0, "ResizePage", Boolean},
    {1, "EnableGrid", Boolean},
    {2, "DynamicsOff", Boolean},
    {3, "CtrlAsInput", Boolean},
    {4, "AvoidPageBreaks", Boolean},
    {8, "PlaceStyle"},
    {9, "RouteStyle"},
    {10, "PlaceDepth"},
    {11, "PlowCode"},
    {12, "LineJumpCode", Number, 1},
    {13, "LineJumpStyle"},
    {14, "PageLineJumpDirX"},
    {15, "PageLineJumpDirY"},
    {16, "LineToNodeX", Length, 0.125},
    {17, "LineToNodeY", Length, 0.125},
    {18, "BlockSizeX", Length, 0.25},
    {19, "BlockSizeY", Length, 0.25},
    {20, "AvenueSizeX", Length, 0.375},
    {21, "AvenueSizeY", Length, 0.375},
    {22, "LineToLineX", Length, 0.125},
    {23, "LineToLineY", Length, 0.125},
    {24, "LineJumpFactorX", Number, 0.66666666666667},
    {25, "LineJumpFactorY", Number, 0.66666666666667},
    {26, "LineAdjustFrom"},
    {27, "LineAdjustTo"},
    {28, "PlaceFlip"},
    {29, "LineRouteExt"},
    {30, "PageShapeSplit"},
};

constexpr RowCell printing[] = {
    {0, "PageLeftMargin", Length, 0.25},
    {1, "PageRightMargin", Length, 0.25},
    {2, "PageTopMargin", Length, 0.25},
    {3, "PageBottomMargin", Length, 0.25},
    {4, "ScaleX", Number, 1},
    {5, "ScaleY", Number, 1},
    {6, "PagesX", Number, 1},
    {7, "PagesY", Number, 1},
    {8, "CenterX", Boolean},
    {9, "CenterY", Boolean},
    {10, "OnPage", Boolean},
    {11, "PrintGrid", Boolean},
    {16, "PrintPageOrientation"},
    {17, "PaperKind"},
    {18, "PaperSource", Number, 7},
};

constexpr RowCell lineGradientProperties[] = {
    {0, "LineGradientDir"},
    {1, "LineGradientAngle", Angle, 1.5707963267949},
    {4, "LineGradientEnabled", Boolean},
};

constexpr RowCell fillGradientProperties[] = {
    {2, "FillGradientDir"},
    {3, "FillGradientAngle", Angle, 1.5707963267949},
    {5, "FillGradientEnabled", Boolean},
    {6, "RotateGradientWithShape", Boolean, 1},
    {7, "UseGroupGradient", Boolean},
};

constexpr RowCell quickStyleOfLine[] = {
    {0, "QuickStyleLineColor", Number, 100},
    {4, "QuickStyleLineMatrix", Number, 100},
};

constexpr RowCell quickStyleOfFill[] = {
    {1, "QuickStyleFillColor", Number, 100},
    {2, "QuickStyleShadowColor", Number, 100},
    {5, "QuickStyleFillMatrix", Number, 100},
    {6, "QuickStyleEffectsMatrix", Number, 100},
    {8, "QuickStyleType"},
    {9, "QuickStyleVariation"},
};

constexpr RowCell quickStyleOfText[] = {
    {3, "QuickStyleFontColor", Number, 100},
    {7, "QuickStyleFontMatrix", Number, 100},
};

constexpr RowCell effects[] = {
    {0, "ReflectionTrans"},
    {1, "ReflectionSize"},
    {2, "ReflectionDist", Length},
    {3, "ReflectionBlur", Length},
    {4, "GlowColor", Colour, 1},
    {5, "GlowColorTrans"},
    {6, "GlowSize", Length},
    {7, "SoftEdgesSize", Length},
    {8, "SketchSeed"},
    {9, "SketchEnabled", Boolean},
    {10, "SketchAmount", Number, 5},
    {11, "SketchLineWeight", Length, 0.04166666666666666},
    {12, "SketchLineChange", Number, 0.14},
    {13, "SketchFillChange", Number, 0.1},
};

constexpr RowCell bevel[] = {
    {0, "BevelTopType"},
    {1, "BevelTopWidth", Length},
    {2, "BevelTopHeight", Length},
    {3, "BevelBottomType"},
    {4, "BevelBottomWidth", Length},
    {5, "BevelBottomHeight", Length},
    {6, "BevelDepthColor", Colour, 1},
    {7, "BevelDepthSize", Length},
    {8, "BevelContourColor", Colour},
    {9, "BevelContourSize", Length},
    {10, "BevelMaterialType"},
    {11, "BevelLightingType"},
    {12, "BevelLightingAngle", Angle},
};

constexpr RowCell rotation3d[] = {
    {0, "RotationXAngle", Angle}, {1, "RotationYAngle", Angle},      {2, "RotationZAngle", Angle}, {3, "RotationType"},
    {4, "Perspective", Angle},    {5, "DistanceFromGround", Length}, {6, "KeepTextFlat", Boolean},
};

constexpr RowCell theme[] = {
    {0, "ColorSchemeIndex"}, {1, "EffectSchemeIndex"},   {2, "ConnectorSchemeIndex"}, {3, "FontSchemeIndex"},
    {4, "ThemeIndex"},       {5, "VariationColorIndex"}, {6, "VariationStyleIndex"},  {7, "EmbellishmentIndex"},
};

constexpr RowCell replacement[] = {
    {0, "ReplaceLockShapeData", Boolean},
    {1, "ReplaceLockText", Boolean},
    {2, "ReplaceLockFormat", Boolean},
    {3, "ReplaceCopyCells", Boolean},
};

constexpr CellRow rows[] = {
    {SectionNumber::Object, 1, StyleSource::None, shapeTransform},
    {SectionNumber::Object, 2, StyleSource::Line, line},
    {SectionNumber::Object, 3, StyleSource::Fill, fill},
    {SectionNumber::Object, 4, StyleSource::None, endpoints},
    {SectionNumber::Object, 5, StyleSource::None, events},
    {SectionNumber::Object, 6, StyleSource::None, layerMembership},
    {SectionNumber::Object, 8, StyleSource::None, styleProperties},
    {SectionNumber::Object, 9, StyleSource::None, foreignImage},
    {SectionNumber::Object, 10, StyleSource::None, page},
    {SectionNumber::Object, 11, StyleSource::Text, textBlock},
    {SectionNumber::Object, 12, StyleSource::None, textTransform},
    {SectionNumber::Object, 14, StyleSource::None, alignment},
    {SectionNumber::Object, 15, StyleSource::None, protection},
    {SectionNumber::Object, 16, StyleSource::None, help},
    {SectionNumber::Object, 17, StyleSource::None, miscellaneous},
    {SectionNumber::Object, 18, StyleSource::None, rulerAndGrid},
    {SectionNumber::Object, 20, StyleSource::None, document},
    {SectionNumber::Object, 21, StyleSource::None, image},
    {SectionNumber::Object, 22, StyleSource::None, group},
    {SectionNumber::Object, 23, StyleSource::None, shapeLayout},
    {SectionNumber::Object, 24, StyleSource::None, pageLayout},
    {SectionNumber::Object, 25, StyleSource::None, printing},
    {SectionNumber::Object, 26, StyleSource::Line, lineGradientProperties},
    {SectionNumber::Object, 26, StyleSource::Fill, fillGradientProperties},
    {SectionNumber::Object, 27, StyleSource::Line, quickStyleOfLine},
    {SectionNumber::Object, 27, StyleSource::Fill, quickStyleOfFill},
    {SectionNumber::Object, 27, StyleSource::Text, quickStyleOfText},
    {SectionNumber::Object, 28, StyleSource::Fill, effects},
    {SectionNumber::Object, 29, StyleSource::Fill, bevel},
    {SectionNumber::Object, 30, StyleSource::Fill, rotation3d},
    {SectionNumber::Object, 31, StyleSource::Fill, theme},
    {SectionNumber::Object, 32, StyleSource::None, replacement},
};

}  // namespace

std::span<const CellRow> objectCellRows() { return rows; }

}  // namespace quorvel::host
