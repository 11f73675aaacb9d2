// Dialog templates realised as Qt dialogs: controls where the Windows dialog manager puts them.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QWindow>

#include "resources/BomTemplate.h"
#include "resources/DialogBuilder.h"

namespace {

struct Conversion {
    QRect units;
    DialogBaseUnits base;
    QRect pixels;
};

// x and width scale by cx / 4, y and height by cy / 8, each rounded half away from zero.
const Conversion kConversions[] = {
    {{332, 212, 50, 14}, {6, 13}, {498, 345, 75, 23}},
    {{8, 23, 312, 212}, {6, 13}, {12, 37, 468, 345}},
    {{10, 10, 40, 8}, {7, 15}, {18, 19, 70, 15}},
    {{0, 0, 393, 248}, {7, 16}, {0, 0, 688, 496}},
    {{1, 1, 1, 1}, {6, 12}, {2, 2, 2, 2}},  // 1.5 rounds up
};

TEST(DialogBuilder, DialogUnitsBecomePixelsWithTheFontsBaseUnits) {
    for (const auto& [units, base, pixels] : kConversions) {
        EXPECT_EQ(DialogUnitsToPixels(units, base), pixels) << units.x() << "," << units.y();
    }
}

TEST(DialogBuilder, EveryControlStandsWhereItsTemplateSays) {
    QDialog dialog;
    BuildDialog(dialog, kBomTemplate, TemplateFont(kBomTemplate));
    const DialogBaseUnits base = BaseUnitsOf(TemplateFont(kBomTemplate));

    ASSERT_EQ(FindDialogTemplate(IDD_BOM_TEMPLATE), &kBomTemplate);
    EXPECT_EQ(FindDialogTemplate(4711), nullptr);
    EXPECT_EQ(dialog.windowTitle(), "BOM Template");
    EXPECT_EQ(dialog.size(), DialogUnitsToPixels({0, 0, 393, 248}, base).size());
    for (const ControlTemplate& control : kBomTemplate.controls) {
        if (control.id == IDC_STATIC) continue;
        const QWidget* widget = GetDlgItem(dialog, control.id);
        ASSERT_NE(widget, nullptr) << control.id;
        EXPECT_EQ(widget->geometry(),
                  DialogUnitsToPixels({control.x, control.y, control.cx, control.cy}, base))
            << control.id;
    }
    const auto* close = qobject_cast<QPushButton*>(GetDlgItem(dialog, IDC_PRICE_CLOSE));
    ASSERT_NE(close, nullptr);
    EXPECT_EQ(close->text(), "&Close");
    EXPECT_TRUE(close->isDefault());
    const auto* save = qobject_cast<QPushButton*>(GetDlgItem(dialog, IDC_PRICE_SAVE));
    ASSERT_NE(save, nullptr);
    EXPECT_FALSE(save->isDefault());
    EXPECT_NE(qobject_cast<QLabel*>(GetDlgItem(dialog, IDC_PRICE_GRID)), nullptr);
    EXPECT_EQ(dialog.findChildren<QGroupBox*>().size(), 2);
    const auto labels = dialog.findChildren<QLabel*>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(),
                            [](const QLabel* label) { return label->text() == "Current file:"; }));
}

TEST(DialogBuilder, TheTabOrderIsTheTemplateOrder) {
    QDialog dialog;
    BuildDialog(dialog, kBomTemplate, TemplateFont(kBomTemplate));
    const auto buttons = dialog.findChildren<QPushButton*>(Qt::FindDirectChildrenOnly);
    QStringList order;
    for (const QPushButton* button : buttons) order << button->objectName();
    EXPECT_EQ(order, QStringList({"205", "200", "202", "203", "204", "207", "208", "217", "218"}));
}

// Group boxes come last in the template, so they lie over the buttons they frame; a click on a
// button must still reach the button, as it does on Windows.
TEST(DialogBuilder, AClickOnAButtonInAGroupBoxReachesTheButton) {
    QDialog dialog;
    BuildDialog(dialog, kBomTemplate, TemplateFont(kBomTemplate));
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    for (auto* button : dialog.findChildren<QPushButton*>()) {
        const QPoint centre = button->geometry().center();
        EXPECT_EQ(dialog.childAt(centre), button) << button->objectName().toStdString();
        int clicks = 0;
        QObject::connect(button, &QPushButton::clicked, [&clicks] { ++clicks; });
        QTest::mouseClick(dialog.windowHandle(), Qt::LeftButton, Qt::NoModifier, centre);
        EXPECT_EQ(clicks, 1) << button->objectName().toStdString();
    }
}

TEST(DialogBuilder, AFactoryMakesTheControlsADialogSubclassesAndTheFontIsTheDialogs) {
    QDialog dialog;
    QFont courier(QStringLiteral("Courier"));
    courier.setPointSize(8);
    BuildDialog(dialog, kBomTemplate, courier,
                [](const ControlTemplate& control, QWidget* parent) -> QWidget* {
                    if (control.id != IDC_PRICE_MESSAGE) return nullptr;
                    return new QCheckBox(QStringLiteral("made here"), parent);
                });
    const auto* message = qobject_cast<QCheckBox*>(GetDlgItem(dialog, IDC_PRICE_MESSAGE));
    ASSERT_NE(message, nullptr);
    EXPECT_EQ(message->text(), "made here");
    EXPECT_EQ(GetDlgItem(dialog, IDC_PRICE_OPEN)->font().family(), courier.family());
    // The sizes still come from the template's font.
    const DialogBaseUnits base = BaseUnitsOf(TemplateFont(kBomTemplate));
    EXPECT_EQ(dialog.size(), DialogUnitsToPixels({0, 0, 393, 248}, base).size());

    EnableDlgItem(dialog, IDC_PRICE_OPEN, false);
    EXPECT_FALSE(GetDlgItem(dialog, IDC_PRICE_OPEN)->isEnabled());
    EnableDlgItem(dialog, 4711, false);  // unknown ids change nothing
}

}  // namespace
