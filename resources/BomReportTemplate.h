// The calculation dialog's template and the ids of its controls.
#pragma once

#include "resources/DialogTemplate.h"

inline constexpr int IDD_BOM_REPORT = 201;

inline constexpr int IDC_REPORT_SAVE = 200;
inline constexpr int IDC_REPORT_INSERT = 207;
inline constexpr int IDC_REPORT_CLOSE = 212;
inline constexpr int IDC_REPORT_ATTACH = 213;
inline constexpr int IDC_REPORT_FILE_LABEL = 214;
inline constexpr int IDC_REPORT_GRID = 216;
inline constexpr int IDC_REPORT_SHOW_PRICE = 221;

extern const DialogTemplate kBomReportTemplate;
