"""The document part that the stencil and the template share: settings, colours, fonts and style sheets."""

from package_writer import cell, element, numbered_row, part, point_cell, section

FONT = "Arial"

# The house colours. A Task's outline and its header are INK, so the plain rectangles and lines that the add-in draws
# around a Task (style Normal) have the same look.
INK = "#2B5876"
TEXT = "#1F2D3A"
TASK_FILL = "#EAF2F8"

NO_STYLE, TEXT_ONLY, NONE, NORMAL, GUIDE, CONNECTOR = range(6)

PALETTE = [
    "#000000", "#FFFFFF", "#FF0000", "#00FF00", "#0000FF", "#FFFF00", "#FF00FF", "#00FFFF",
    "#800000", "#008000", "#000080", "#808000", "#800080", "#008080", "#C0C0C0", "#E6E6E6",
    "#CDCDCD", "#B3B3B3", "#9A9A9A", "#808080", "#666666", "#4D4D4D", "#333333", "#1A1A1A",
]  # fmt: skip

# The root style has a value for every cell that a sheet may inherit, by group.
ROOT_NUMBERS = {
    "line": "LineWeight=0.01 LineColor=0 LinePattern=1 Rounding=0 EndArrowSize=2 BeginArrow=0 EndArrow=0 LineCap=0 "
    "BeginArrowSize=2 LineColorTrans=0 CompoundType=0",
    "fill": "FillForegnd=1 FillBkgnd=0 FillPattern=1 ShdwForegnd=0 ShdwPattern=0 FillForegndTrans=0 FillBkgndTrans=0 "
    "ShdwForegndTrans=0 ShapeShdwType=0 ShapeShdwOffsetX=0 ShapeShdwOffsetY=0 ShapeShdwObliqueAngle=0 "
    "ShapeShdwScaleFactor=1",
    "text": "LeftMargin=0 RightMargin=0 TopMargin=0 BottomMargin=0 VerticalAlign=1 TextBkgnd=0 DefaultTabStop=0.5 "
    "TextDirection=0 TextBkgndTrans=0",
    "protection": "LockWidth=0 LockHeight=0 LockMoveX=0 LockMoveY=0 LockAspect=0 LockDelete=0 LockBegin=0 LockEnd=0 "
    "LockRotate=0 LockCrop=0 LockVtxEdit=0 LockTextEdit=0 LockFormat=0 LockGroup=0 LockCalcWH=0 LockSelect=0 "
    "LockCustProp=0",
    "miscellaneous": "NoObjHandles=0 NonPrinting=0 NoCtlHandles=0 NoAlignBox=0 UpdateAlignBox=0 HideText=0 "
    "DynFeedback=0 GlueType=0 WalkPreference=0 BegTrigger=0 EndTrigger=0 ObjType=0 IsDropSource=0 NoLiveDynamics=0 "
    "LocalizeMerge=0 Calendar=0 DropOnPageScale=1",
    "events": "TheData=0 TheText=0 EventDblClick=0 EventXFMod=0 EventDrop=0",
    "rulers": "XRulerDensity=32 YRulerDensity=32 XRulerOrigin=0 YRulerOrigin=0 XGridDensity=8 YGridDensity=8 "
    "XGridSpacing=0 YGridSpacing=0 XGridOrigin=0 YGridOrigin=0",
    "image": "Gamma=1 Contrast=0.5 Brightness=0.5 Sharpen=0 Blur=0 Denoise=0 Transparency=0",
    "group": "SelectMode=1 DisplayMode=2 IsDropTarget=0 IsSnapTarget=1 IsTextEditTarget=1 DontMoveChildren=0",
    "layout": "ShapePermeableX=0 ShapePermeableY=0 ShapePermeablePlace=0 ShapeFixedCode=0 ShapePlowCode=0 "
    "ShapeRouteStyle=0 ShapePlaceStyle=0 ConFixedCode=0 ConLineJumpCode=0 ConLineJumpStyle=0 ConLineJumpDirX=0 "
    "ConLineJumpDirY=0 ShapePlaceFlip=0 ConLineRouteExt=0 ShapeSplit=0 ShapeSplittable=0",
    "page layout": "ResizePage=0 EnableGrid=0 DynamicsOff=0 CtrlAsInput=0 PlaceStyle=0 RouteStyle=0 PlaceDepth=0 "
    "PlowCode=0 LineJumpCode=1 LineJumpStyle=0 PageLineJumpDirX=0 PageLineJumpDirY=0 LineToNodeX=0.125 "
    "LineToNodeY=0.125 BlockSizeX=0.25 BlockSizeY=0.25 AvenueSizeX=0.375 AvenueSizeY=0.375 LineToLineX=0.125 "
    "LineToLineY=0.125 LineJumpFactorX=0.66666667 LineJumpFactorY=0.66666667 LineAdjustFrom=0 LineAdjustTo=0 "
    "PlaceFlip=0 LineRouteExt=0 PageShapeSplit=0",
    "print": "PageLeftMargin=0.25 PageRightMargin=0.25 PageTopMargin=0.25 PageBottomMargin=0.25 ScaleX=1 ScaleY=1 "
    "PagesX=1 PagesY=1 CenterX=0 CenterY=0 OnPage=0 PrintGrid=0 PrintPageOrientation=1 PaperKind=1 PaperSource=7",
    "page": "PageWidth=0 PageHeight=0 ShdwOffsetX=0 ShdwOffsetY=0 PageScale=0 DrawingScale=0 DrawingSizeType=0 "
    "DrawingScaleType=0 InhibitSnap=0 UIVisibility=0 ShdwType=0 ShdwObliqueAngle=0 ShdwScaleFactor=0 "
    "DrawingResizeType=0",
}
ROOT_TEXTS = {
    "Comment": "",
    "HelpTopic": "",
    "Copyright": "",
    "ShapeKeywords": "",
    "LayerMember": "",
    "LangID": "en-US",
}
ROOT_CHARACTER = (
    "Color=0 Style=0 Case=0 Pos=0 FontScale=1 DblUnderline=0 Overline=0 Strikethru=0 Letterspace=0 ColorTrans=0"
)
ROOT_PARAGRAPH = (
    "IndFirst=0 IndLeft=0 IndRight=0 SpLine=-1.2 SpBefore=0 SpAfter=0 HorzAlign=1 Bullet=0 BulletFontSize=-1 "
    "TextPosAfterBullet=0 Flags=0"
)


def _cells(pairs):
    return "".join(cell(*pair.split("=")) for pair in pairs.split())


def _style(identity, name, *content, parent=NORMAL):
    attributes = {"ID": identity, "NameU": name, "IsCustomNameU": 1, "Name": name, "IsCustomName": 1}
    if identity != NO_STYLE:
        attributes.update(LineStyle=parent, FillStyle=parent, TextStyle=parent)
    enabled = _cells("EnableLineProps=1 EnableFillProps=1 EnableTextProps=1 HideForApply=0")
    return element("StyleSheet", attributes, enabled, *content)


def _style_sheets():
    small_margins = [point_cell(name, 4) for name in ("LeftMargin", "RightMargin", "TopMargin", "BottomMargin")]
    no_height_margins = [cell("TopMargin", 0), cell("BottomMargin", 0)]
    return element(
        "StyleSheets",
        None,
        _style(
            NO_STYLE,
            "No Style",
            *(_cells(group) for group in ROOT_NUMBERS.values()),
            *(cell(name, text) for name, text in ROOT_TEXTS.items()),
            section(
                "Character",
                numbered_row(
                    0, cell("Font", FONT), _cells(ROOT_CHARACTER), point_cell("Size", 12), cell("LangID", "en-US")
                ),
            ),
            section("Paragraph", numbered_row(0, _cells(ROOT_PARAGRAPH), cell("BulletStr", ""))),
            section("Tabs", numbered_row(0)),
        ),
        # The add-in gives this style to labels in narrow bands: no outline, no margin above and below.
        _style(
            TEXT_ONLY,
            "Text Only",
            cell("LinePattern", 0),
            cell("FillPattern", 0),
            *no_height_margins,
        ),
        _style(NONE, "None", cell("LinePattern", 0), cell("FillPattern", 0)),
        _style(
            NORMAL,
            "Normal",
            cell("LineColor", INK),
            point_cell("LineWeight", 0.75),
            cell("FillForegnd", "#FFFFFF"),
            *small_margins,
            section("Character", numbered_row(0, cell("Color", TEXT), point_cell("Size", 10))),
            parent=NO_STYLE,
        ),
        _style(GUIDE, "Guide", _cells("LineWeight=0 LineColor=4 LinePattern=23 NonPrinting=1")),
        _style(
            CONNECTOR,
            "Connector",
            cell("FillPattern", 0),
            cell("TextBkgnd", 2),
            point_cell("LineWeight", 1),
            section("Character", numbered_row(0, point_cell("Size", 8))),
        ),
    )


def document_part(*user_rows):
    """The whole part; `user_rows` are in the document sheet's User section."""
    settings = element(
        "DocumentSettings",
        {
            "TopPage": 0,
            "DefaultTextStyle": NORMAL,
            "DefaultLineStyle": NORMAL,
            "DefaultFillStyle": NORMAL,
            "DefaultGuideStyle": GUIDE,
        },
        element("GlueSettings", None, "9"),
        element("SnapSettings", None, "295"),
        element("SnapExtensions", None, "34"),
        element("DynamicGridEnabled", None, "1"),
    )
    colors = [element("ColorEntry", {"IX": index, "RGB": color}) for index, color in enumerate(PALETTE)]
    face = {
        "NameU": FONT,
        "UnicodeRanges": "-536859905 -1073711037 9 0",
        "CharSets": "1073742335 -65536",
        "Panose": "2 11 6 4 2 2 2 2 2 4",
        "Flags": 325,
    }
    sheet = element(
        "DocumentSheet",
        {"NameU": "TheDoc", "IsCustomNameU": 1, "Name": "TheDoc", "IsCustomName": 1}
        | {"LineStyle": NO_STYLE, "FillStyle": NO_STYLE, "TextStyle": NO_STYLE},
        _cells("OutputFormat=0 LockPreview=0 AddMarkup=0 ViewMarkup=0 PreviewQuality=0 PreviewScope=0"),
        cell("DocLangID", "en-US"),
        section("User", *user_rows),
    )
    return part(
        "VisioDocument",
        settings,
        element("Colors", None, *colors),
        element("FaceNames", None, element("FaceName", face)),
        _style_sheets(),
        sheet,
    )
