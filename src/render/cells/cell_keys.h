// The cells that a picture is drawn from, looked up by name once.
#pragma once

#include "host/cells/cell_key.h"
#include "host/cells/cell_table.h"

namespace quorvel::render {

struct ObjectKeys {
#define QUORVEL_OBJECT_KEY(name) host::CellKey name = host::objectCellOrNew(#name)
  QUORVEL_OBJECT_KEY(PinX);
  QUORVEL_OBJECT_KEY(PinY);
  QUORVEL_OBJECT_KEY(Width);
  QUORVEL_OBJECT_KEY(Height);
  QUORVEL_OBJECT_KEY(LocPinX);
  QUORVEL_OBJECT_KEY(LocPinY);
  QUORVEL_OBJECT_KEY(Angle);
  QUORVEL_OBJECT_KEY(FlipX);
  QUORVEL_OBJECT_KEY(FlipY);
  QUORVEL_OBJECT_KEY(BeginX);
  QUORVEL_OBJECT_KEY(TxtPinX);
  QUORVEL_OBJECT_KEY(TxtPinY);
  QUORVEL_OBJECT_KEY(TxtWidth);
  QUORVEL_OBJECT_KEY(TxtHeight);
  QUORVEL_OBJECT_KEY(TxtLocPinX);
  QUORVEL_OBJECT_KEY(TxtLocPinY);
  QUORVEL_OBJECT_KEY(TxtAngle);
  QUORVEL_OBJECT_KEY(LineWeight);
  QUORVEL_OBJECT_KEY(LineColor);
  QUORVEL_OBJECT_KEY(LineColorTrans);
  QUORVEL_OBJECT_KEY(LinePattern);
  QUORVEL_OBJECT_KEY(LineCap);
  QUORVEL_OBJECT_KEY(Rounding);
  QUORVEL_OBJECT_KEY(LineGradientEnabled);
  QUORVEL_OBJECT_KEY(LineGradientDir);
  QUORVEL_OBJECT_KEY(LineGradientAngle);
  QUORVEL_OBJECT_KEY(BeginArrow);
  QUORVEL_OBJECT_KEY(EndArrow);
  QUORVEL_OBJECT_KEY(BeginArrowSize);
  QUORVEL_OBJECT_KEY(EndArrowSize);
  QUORVEL_OBJECT_KEY(FillForegnd);
  QUORVEL_OBJECT_KEY(FillForegndTrans);
  QUORVEL_OBJECT_KEY(FillBkgnd);
  QUORVEL_OBJECT_KEY(FillBkgndTrans);
  QUORVEL_OBJECT_KEY(FillPattern);
  QUORVEL_OBJECT_KEY(FillGradientEnabled);
  QUORVEL_OBJECT_KEY(FillGradientDir);
  QUORVEL_OBJECT_KEY(FillGradientAngle);
  QUORVEL_OBJECT_KEY(RotateGradientWithShape);
  QUORVEL_OBJECT_KEY(ShdwPattern);
  QUORVEL_OBJECT_KEY(ShdwForegnd);
  QUORVEL_OBJECT_KEY(ShdwForegndTrans);
  QUORVEL_OBJECT_KEY(ShapeShdwType);
  QUORVEL_OBJECT_KEY(ShapeShdwShow);
  QUORVEL_OBJECT_KEY(ShapeShdwBlur);
  QUORVEL_OBJECT_KEY(ShapeShdwOffsetX);
  QUORVEL_OBJECT_KEY(ShapeShdwOffsetY);
  QUORVEL_OBJECT_KEY(ShdwOffsetX);
  QUORVEL_OBJECT_KEY(ShdwOffsetY);
  QUORVEL_OBJECT_KEY(QuickStyleLineColor);
  QUORVEL_OBJECT_KEY(QuickStyleFillColor);
  QUORVEL_OBJECT_KEY(QuickStyleShadowColor);
  QUORVEL_OBJECT_KEY(QuickStyleFontColor);
  QUORVEL_OBJECT_KEY(QuickStyleLineMatrix);
  QUORVEL_OBJECT_KEY(QuickStyleFillMatrix);
  QUORVEL_OBJECT_KEY(QuickStyleFontMatrix);
  QUORVEL_OBJECT_KEY(QuickStyleType);
  QUORVEL_OBJECT_KEY(QuickStyleVariation);
  QUORVEL_OBJECT_KEY(ThemeIndex);
  QUORVEL_OBJECT_KEY(ColorSchemeIndex);
  QUORVEL_OBJECT_KEY(EffectSchemeIndex);
  QUORVEL_OBJECT_KEY(ConnectorSchemeIndex);
  QUORVEL_OBJECT_KEY(FontSchemeIndex);
  QUORVEL_OBJECT_KEY(VariationColorIndex);
  QUORVEL_OBJECT_KEY(VariationStyleIndex);
  QUORVEL_OBJECT_KEY(LeftMargin);
  QUORVEL_OBJECT_KEY(RightMargin);
  QUORVEL_OBJECT_KEY(TopMargin);
  QUORVEL_OBJECT_KEY(BottomMargin);
  QUORVEL_OBJECT_KEY(VerticalAlign);
  QUORVEL_OBJECT_KEY(TextBkgnd);
  QUORVEL_OBJECT_KEY(TextBkgndTrans);
  QUORVEL_OBJECT_KEY(TextDirection);
  QUORVEL_OBJECT_KEY(DefaultTabStop);
  QUORVEL_OBJECT_KEY(HideText);
  QUORVEL_OBJECT_KEY(DisplayMode);
  QUORVEL_OBJECT_KEY(LayerMember);
  QUORVEL_OBJECT_KEY(ImgOffsetX);
  QUORVEL_OBJECT_KEY(ImgOffsetY);
  QUORVEL_OBJECT_KEY(ImgWidth);
  QUORVEL_OBJECT_KEY(ImgHeight);
  QUORVEL_OBJECT_KEY(Transparency);
  QUORVEL_OBJECT_KEY(PageWidth);
  QUORVEL_OBJECT_KEY(PageHeight);
  QUORVEL_OBJECT_KEY(PageScale);
  QUORVEL_OBJECT_KEY(DrawingScale);
#undef QUORVEL_OBJECT_KEY
};

/// Columns of rows. Those of Geometry are in vertex rows and, for the switches, in the component row.
struct ColumnKeys {
#define QUORVEL_COLUMN_KEY(section, name) \
  host::Column section##name = host::columnOrNew(host::SectionNumber::section, #name)
  QUORVEL_COLUMN_KEY(Geometry, NoFill);
  QUORVEL_COLUMN_KEY(Geometry, NoLine);
  QUORVEL_COLUMN_KEY(Geometry, NoShow);
  QUORVEL_COLUMN_KEY(Geometry, X);
  QUORVEL_COLUMN_KEY(Geometry, Y);
  QUORVEL_COLUMN_KEY(Geometry, A);
  QUORVEL_COLUMN_KEY(Geometry, B);
  QUORVEL_COLUMN_KEY(Geometry, C);
  QUORVEL_COLUMN_KEY(Geometry, D);
  QUORVEL_COLUMN_KEY(Geometry, E);
  QUORVEL_COLUMN_KEY(Layer, Visible);
  QUORVEL_COLUMN_KEY(Hyperlink, Address);
  QUORVEL_COLUMN_KEY(Hyperlink, SubAddress);
  QUORVEL_COLUMN_KEY(Hyperlink, Description);
  QUORVEL_COLUMN_KEY(Hyperlink, Default);
  QUORVEL_COLUMN_KEY(Hyperlink, Invisible);
  QUORVEL_COLUMN_KEY(FillGradient, GradientStopColor);
  QUORVEL_COLUMN_KEY(FillGradient, GradientStopColorTrans);
  QUORVEL_COLUMN_KEY(FillGradient, GradientStopPosition);
  QUORVEL_COLUMN_KEY(LineGradient, GradientStopColor);
  QUORVEL_COLUMN_KEY(LineGradient, GradientStopColorTrans);
  QUORVEL_COLUMN_KEY(LineGradient, GradientStopPosition);
  QUORVEL_COLUMN_KEY(Character, Font);
  QUORVEL_COLUMN_KEY(Character, Size);
  QUORVEL_COLUMN_KEY(Character, Color);
  QUORVEL_COLUMN_KEY(Character, ColorTrans);
  QUORVEL_COLUMN_KEY(Character, Style);
  QUORVEL_COLUMN_KEY(Character, Case);
  QUORVEL_COLUMN_KEY(Character, Pos);
  QUORVEL_COLUMN_KEY(Character, FontScale);
  QUORVEL_COLUMN_KEY(Character, Letterspace);
  QUORVEL_COLUMN_KEY(Character, DblUnderline);
  QUORVEL_COLUMN_KEY(Character, Strikethru);
  QUORVEL_COLUMN_KEY(Paragraph, IndFirst);
  QUORVEL_COLUMN_KEY(Paragraph, IndLeft);
  QUORVEL_COLUMN_KEY(Paragraph, IndRight);
  QUORVEL_COLUMN_KEY(Paragraph, SpLine);
  QUORVEL_COLUMN_KEY(Paragraph, SpBefore);
  QUORVEL_COLUMN_KEY(Paragraph, SpAfter);
  QUORVEL_COLUMN_KEY(Paragraph, HorzAlign);
  QUORVEL_COLUMN_KEY(Paragraph, Bullet);
  QUORVEL_COLUMN_KEY(Paragraph, BulletStr);
  QUORVEL_COLUMN_KEY(Paragraph, BulletFontSize);
#undef QUORVEL_COLUMN_KEY
};

const ObjectKeys& objectKeys();
const ColumnKeys& columnKeys();

}  // namespace quorvel::render
