// The grid's shared vocabulary: status codes, colours, opaque handles and the bits of a cell's
// properties, alignment and borders.
#pragma once

#include <cstdint>

// Results of the grid's operations.
inline constexpr int UG_SUCCESS = 0;
inline constexpr int UG_ERROR = 1;
inline constexpr int UG_REFUSED = 2;
inline constexpr int UG_NA = -1;  // the data source does not support the operation

// A colour as the grid keeps it: 0x00BBGGRR, the layout of the platform the grid came from.
using COLORREF = std::uint32_t;

constexpr COLORREF RGB(unsigned r, unsigned g, unsigned b) {
    return (r & 0xFFu) | ((g & 0xFFu) << 8) | ((b & 0xFFu) << 16);
}
constexpr unsigned GetRValue(COLORREF c) { return c & 0xFFu; }
constexpr unsigned GetGValue(COLORREF c) { return (c >> 8) & 0xFFu; }
constexpr unsigned GetBValue(COLORREF c) { return (c >> 16) & 0xFFu; }

// Fonts, pens and bitmaps belong to the widget layer; a cell carries only their handles.
// Handle 0 is "none"; the control hands out the others.
enum class UGFont : std::int32_t {};
enum class UGPen : std::int32_t {};
enum class UGBitmap : std::int32_t {};

// Sections of the control, as notifications name them.
inline constexpr int UG_GRID = 1;
inline constexpr int UG_TOPHEADING = 2;
inline constexpr int UG_SIDEHEADING = 3;
inline constexpr int UG_CORNERBUTTON = 4;
inline constexpr int UG_HSCROLL = 5;
inline constexpr int UG_VSCROLL = 6;
inline constexpr int UG_TAB = 7;

// Property bits of a cell, in the order of its properties.
inline constexpr std::uint32_t UGCELL_TEXT_SET = 0x1;
inline constexpr std::uint32_t UGCELL_MASK_SET = 0x2;
inline constexpr std::uint32_t UGCELL_LABEL_SET = 0x4;
inline constexpr std::uint32_t UGCELL_DATATYPE_SET = 0x8;
inline constexpr std::uint32_t UGCELL_PARAM_SET = 0x10;
inline constexpr std::uint32_t UGCELL_CELLTYPE_SET = 0x20;
inline constexpr std::uint32_t UGCELL_CELLTYPEEX_SET = 0x40;
inline constexpr std::uint32_t UGCELL_TEXTCOLOR_SET = 0x80;
inline constexpr std::uint32_t UGCELL_BACKCOLOR_SET = 0x100;
inline constexpr std::uint32_t UGCELL_HTEXTCOLOR_SET = 0x200;
inline constexpr std::uint32_t UGCELL_HBACKCOLOR_SET = 0x400;
inline constexpr std::uint32_t UGCELL_BORDERSTYLE_SET = 0x800;
inline constexpr std::uint32_t UGCELL_BORDER_SET = 0x1000;
inline constexpr std::uint32_t UGCELL_FONT_SET = 0x2000;
inline constexpr std::uint32_t UGCELL_BITMAP_SET = 0x4000;
inline constexpr std::uint32_t UGCELL_ALIGNMENT_SET = 0x8000;
inline constexpr std::uint32_t UGCELL_EXTRAMEMORY_SET = 0x10000;
inline constexpr std::uint32_t UGCELL_JOIN_SET = 0x20000;
inline constexpr std::uint32_t UGCELL_FORMAT_SET = 0x200000;
inline constexpr std::uint32_t UGCELL_FORMATVALUE_SET = 0x800000;
inline constexpr std::uint32_t UGCELL_READONLY_SET = 0x1000000;
inline constexpr std::uint32_t UGCELL_SHORTPARAM_SET = 0x2000000;

// Data types of a cell's value; numbers, booleans and times are kept as text.
inline constexpr short UGCELLDATA_STRING = 1;
inline constexpr short UGCELLDATA_NUMBER = 2;
inline constexpr short UGCELLDATA_BOOL = 3;
inline constexpr short UGCELLDATA_TIME = 4;
inline constexpr short UGCELLDATA_CURRENCY = 5;

// Alignment bits; with neither horizontal bit the text is left-aligned with a 3-pixel indent, and
// with no vertical bit it is centred vertically.
inline constexpr short UG_ALIGNCENTER = 2;
inline constexpr short UG_ALIGNRIGHT = 4;
inline constexpr short UG_ALIGNTOP = 16;
inline constexpr short UG_ALIGNVCENTER = 32;
inline constexpr short UG_ALIGNBOTTOM = 64;

// Border bits: one per side, drawn with the border pen, and two edge styles.
inline constexpr short UG_BDR_LTHIN = 1;
inline constexpr short UG_BDR_TTHIN = 2;
inline constexpr short UG_BDR_RTHIN = 4;
inline constexpr short UG_BDR_BTHIN = 8;
inline constexpr short UG_BDR_RECESSED = 0x1000;
inline constexpr short UG_BDR_RAISED = 0x2000;

// Messages that the built-in cell types send through OnCellTypeNotify.
inline constexpr long UGCT_DROPLISTSELECT = 51;  // parameter: index of the chosen option
inline constexpr long UGCT_CHECKBOXSET = 53;     // parameter: 1 checked, 0 cleared
