// Template 200, "BOM Template": the price-list editor.
#include "resources/BomTemplate.h"

namespace {

constexpr ControlTemplate kControls[] = {
    {205, ControlKind::DefPushButton, L"&Close", 332, 212, 50, 14},
    {200, ControlKind::PushButton, L"&Save", 332, 172, 50, 14},
    {201, ControlKind::Static, L"", 8, 23, 312, 212},
    {202, ControlKind::PushButton, L"&New", 332, 132, 50, 14},
    {203, ControlKind::PushButton, L"&Open", 332, 152, 50, 14},
    {204, ControlKind::PushButton, L"&Save As", 332, 192, 50, 14},
    {207, ControlKind::PushButton, L"&Insert Row", 332, 30, 50, 14},
    {208, ControlKind::PushButton, L"&Delete Row", 332, 50, 50, 14},
    {1001, ControlKind::Static, L"", 213, 5, 180, 13},
    {210, ControlKind::Static, L"", 50, 10, 250, 8},
    {IDC_STATIC, ControlKind::Static, L"Current file:", 10, 10, 40, 8},
    {217, ControlKind::PushButton, L"&Move Up", 332, 70, 50, 14},
    {218, ControlKind::PushButton, L"&Move Down", 332, 90, 50, 14},
    {IDC_STATIC, ControlKind::GroupBox, L"", 327, 20, 60, 90},
    {IDC_STATIC, ControlKind::GroupBox, L"", 327, 120, 60, 115},
};

}  // namespace

const DialogTemplate kBomTemplate{
    IDD_BOM_TEMPLATE, L"BOM Template", 393, 248, L"MS Sans Serif", 8, kControls};
