// Template 201, "BOM Report": the calculation dialog, its grid with the actions beside it.
#include "resources/BomReportTemplate.h"

namespace {

// In tab order: the grid first, so the keys go to the bill as the dialog opens.
constexpr ControlTemplate kControls[] = {
    {IDC_STATIC, ControlKind::Static, L"Current file:", 7, 8, 42, 8},
    {214, ControlKind::Static, L"", 50, 8, 297, 8},
    {216, ControlKind::Static, L"", 7, 21, 340, 218},
    {213, ControlKind::PushButton, L"&Attach New", 355, 21, 56, 14},
    {200, ControlKind::PushButton, L"&Save to file", 355, 39, 56, 14},
    {207, ControlKind::PushButton, L"&Insert", 355, 57, 56, 14},
    {221, ControlKind::CheckBox, L"Show Price", 355, 79, 56, 10},
    {212, ControlKind::DefPushButton, L"&Close", 355, 225, 56, 14},
};

}  // namespace

const DialogTemplate kBomReportTemplate{
    IDD_BOM_REPORT, L"BOM Report", 418, 246, L"MS Sans Serif", 8, kControls};
