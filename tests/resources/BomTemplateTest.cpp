// Template 200 holds the price-list editor's controls as its table gives them.
#include <gtest/gtest.h>

#include <array>
#include <iterator>
#include <string>

#include "resources/BomTemplate.h"

namespace {

const ControlTemplate kExpected[] = {
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

TEST(BomTemplate, HoldsTheEditorsControlsInTheirOrder) {
    EXPECT_EQ(kBomTemplate.id, 200);
    EXPECT_EQ(std::wstring(kBomTemplate.caption), L"BOM Template");
    EXPECT_EQ(kBomTemplate.cx, 393);
    EXPECT_EQ(kBomTemplate.cy, 248);
    EXPECT_EQ(std::wstring(kBomTemplate.fontFace), L"MS Sans Serif");
    EXPECT_EQ(kBomTemplate.fontPointSize, 8);
    ASSERT_EQ(kBomTemplate.controls.size(), std::size(kExpected));
    for (std::size_t i = 0; i < std::size(kExpected); ++i) {
        const ControlTemplate& got = kBomTemplate.controls[i];
        const ControlTemplate& want = kExpected[i];
        EXPECT_EQ(got.id, want.id) << i;
        EXPECT_EQ(got.kind, want.kind) << i;
        EXPECT_EQ(std::wstring(got.text), std::wstring(want.text)) << i;
        EXPECT_EQ((std::array{got.x, got.y, got.cx, got.cy}),
                  (std::array{want.x, want.y, want.cx, want.cy}))
            << i;
    }
}

TEST(BomTemplate, TheControlIdsAreTheOnesTheDialogUses) {
    EXPECT_EQ(IDC_PRICE_SAVE, 200);
    EXPECT_EQ(IDC_PRICE_GRID, 201);
    EXPECT_EQ(IDC_PRICE_NEW, 202);
    EXPECT_EQ(IDC_PRICE_OPEN, 203);
    EXPECT_EQ(IDC_PRICE_SAVE_AS, 204);
    EXPECT_EQ(IDC_PRICE_CLOSE, 205);
    EXPECT_EQ(IDC_PRICE_INSERT_ROW, 207);
    EXPECT_EQ(IDC_PRICE_DELETE_ROW, 208);
    EXPECT_EQ(IDC_PRICE_FILE_LABEL, 210);
    EXPECT_EQ(IDC_PRICE_MOVE_UP, 217);
    EXPECT_EQ(IDC_PRICE_MOVE_DOWN, 218);
    EXPECT_EQ(IDC_PRICE_MESSAGE, 1001);
}

}  // namespace
