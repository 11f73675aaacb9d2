// The price-list editor's dialog template and the ids of its controls.
#pragma once

#include "resources/DialogTemplate.h"

inline constexpr int IDD_BOM_TEMPLATE = 200;

inline constexpr int IDC_PRICE_SAVE = 200;
inline constexpr int IDC_PRICE_GRID = 201;
inline constexpr int IDC_PRICE_NEW = 202;
inline constexpr int IDC_PRICE_OPEN = 203;
inline constexpr int IDC_PRICE_SAVE_AS = 204;
inline constexpr int IDC_PRICE_CLOSE = 205;
inline constexpr int IDC_PRICE_INSERT_ROW = 207;
inline constexpr int IDC_PRICE_DELETE_ROW = 208;
inline constexpr int IDC_PRICE_FILE_LABEL = 210;
inline constexpr int IDC_PRICE_MOVE_UP = 217;
inline constexpr int IDC_PRICE_MOVE_DOWN = 218;
inline constexpr int IDC_PRICE_MESSAGE = 1001;

extern const DialogTemplate kBomTemplate;
