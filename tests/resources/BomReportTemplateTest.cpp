// Template 201, "BOM Report": its controls, and a layout that holds together.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDialog>
#include <QFontMetrics>
#include <QLabel>
#include <QPushButton>
#include <algorithm>
#include <string>

#include "resources/BomReportTemplate.h"
#include "resources/DialogBuilder.h"

namespace {

const ControlTemplate* Find(int id) {
    for (const ControlTemplate& control : kBomReportTemplate.controls) {
        if (control.id == id) return &control;
    }
    return nullptr;
}

QRect Units(const ControlTemplate& control) {
    return {control.x, control.y, control.cx, control.cy};
}

TEST(BomReportTemplate, TheFileLabelStandsBesideItsCaption) {
    ASSERT_EQ(FindDialogTemplate(IDD_BOM_REPORT), &kBomReportTemplate);
    const auto current =
        std::find_if(kBomReportTemplate.controls.begin(), kBomReportTemplate.controls.end(),
                     [](const ControlTemplate& control) {
                         return std::wstring(control.text) == L"Current file:";
                     });
    ASSERT_NE(current, kBomReportTemplate.controls.end());
    const ControlTemplate* label = Find(IDC_REPORT_FILE_LABEL);
    EXPECT_EQ(label->y, current->y);
    EXPECT_GE(label->x, current->x + current->cx);
}

TEST(BomReportTemplate, ControlsStayInsideAndNeverOverlap) {
    const QRect client(0, 0, kBomReportTemplate.cx, kBomReportTemplate.cy);
    const auto& controls = kBomReportTemplate.controls;
    for (std::size_t i = 0; i < controls.size(); ++i) {
        EXPECT_TRUE(client.adjusted(4, 4, -4, -4).contains(Units(controls[i]))) << controls[i].id;
        for (std::size_t j = i + 1; j < controls.size(); ++j)
            EXPECT_FALSE(Units(controls[i]).intersects(Units(controls[j])))
                << controls[i].id << " and " << controls[j].id;
    }
}

TEST(BomReportTemplate, TheButtonsFormAColumnBesideTheGrid) {
    const ControlTemplate* grid = Find(IDC_REPORT_GRID);
    const ControlTemplate* close = Find(IDC_REPORT_CLOSE);
    for (const int id : {IDC_REPORT_ATTACH, IDC_REPORT_SAVE, IDC_REPORT_INSERT,
                         IDC_REPORT_SHOW_PRICE, IDC_REPORT_CLOSE}) {
        const ControlTemplate* control = Find(id);
        EXPECT_EQ(control->x, close->x) << id;
        EXPECT_EQ(control->cx, close->cx) << id;
        EXPECT_GT(control->x, grid->x + grid->cx) << id;
    }
    EXPECT_EQ(Find(IDC_REPORT_ATTACH)->y, grid->y);
    EXPECT_EQ(close->y + close->cy, grid->y + grid->cy);
}

TEST(BomReportTemplate, BuildsWithEveryControlNamedAfterItsId) {
    QDialog dialog;
    BuildDialog(dialog, kBomReportTemplate, TemplateFont(kBomReportTemplate));
    EXPECT_EQ(dialog.windowTitle(), "BOM Report");
    EXPECT_NE(qobject_cast<QLabel*>(GetDlgItem(dialog, IDC_REPORT_GRID)), nullptr);
    const auto* check = qobject_cast<QCheckBox*>(GetDlgItem(dialog, IDC_REPORT_SHOW_PRICE));
    ASSERT_NE(check, nullptr);
    EXPECT_EQ(check->text(), "Show Price");
    const auto* close = qobject_cast<QPushButton*>(GetDlgItem(dialog, IDC_REPORT_CLOSE));
    ASSERT_NE(close, nullptr);
    EXPECT_TRUE(close->isDefault());
    for (const int id : {IDC_REPORT_ATTACH, IDC_REPORT_SAVE, IDC_REPORT_INSERT}) {
        const auto* button = qobject_cast<QPushButton*>(GetDlgItem(dialog, id));
        ASSERT_NE(button, nullptr) << id;
        EXPECT_FALSE(button->isDefault()) << id;
        // The label fits its button with room to spare on either side.
        const QString label = QString(button->text()).remove(QLatin1Char('&'));
        EXPECT_LE(QFontMetrics(button->font()).horizontalAdvance(label) + 12, button->width())
            << id;
    }
}

}  // namespace
