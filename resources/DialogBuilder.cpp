// Dialogs made from templates, with Qt Widgets standing in for the Windows controls.
#include "resources/DialogBuilder.h"

#include <QCheckBox>
#include <QDialog>
#include <QFontMetrics>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

// Names handed to Qt's font machinery are made at run time, never QStringLiteral: Qt keeps them
// (substitutions, the font cache) after the module is unloaded, and a literal's characters would
// be unloaded with it.
QString RuntimeName(const char* name) { return QString::fromLatin1(name); }

void RegisterFaceSubstitutes() {
    static const bool registered = [] {
        QFont::insertSubstitutions(RuntimeName("MS Sans Serif"),
                                   {RuntimeName("Liberation Sans"), RuntimeName("Arial"),
                                    RuntimeName("DejaVu Sans")});
        QFont::insertSubstitutions(RuntimeName("Courier"),
                                   {RuntimeName("Liberation Mono"), RuntimeName("Courier New"),
                                    RuntimeName("Nimbus Mono PS"), RuntimeName("DejaVu Sans Mono")});
        return true;
    }();
    (void)registered;
}

int MulDiv(int value, int numerator, int denominator) {
    const long long product = static_cast<long long>(value) * numerator;
    const long long half = denominator / 2;
    return static_cast<int>(product >= 0 ? (product + half) / denominator
                                         : (product - half) / denominator);
}

QWidget* MakeStandardControl(const ControlTemplate& control, QWidget* parent) {
    const QString text = QString::fromWCharArray(control.text);
    switch (control.kind) {
        case ControlKind::PushButton:
        case ControlKind::DefPushButton: {
            auto* button = new QPushButton(text, parent);
            button->setAutoDefault(false);
            button->setDefault(control.kind == ControlKind::DefPushButton);
            return button;
        }
        case ControlKind::Static: {
            auto* label = new QLabel(text, parent);
            // A Windows static control draws its text from the top left corner.
            label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
            return label;
        }
        case ControlKind::GroupBox: {
            // A group box only frames the controls over it: like its Windows namesake it lets
            // clicks through to them, whatever the order it was made in.
            auto* box = new QGroupBox(text, parent);
            box->setAttribute(Qt::WA_TransparentForMouseEvents);
            return box;
        }
        case ControlKind::CheckBox:
            return new QCheckBox(text, parent);
        case ControlKind::Edit:
            return new QLineEdit(text, parent);
    }
    return nullptr;
}

}  // namespace

QFont TemplateFont(const DialogTemplate& dialogTemplate) {
    RegisterFaceSubstitutes();
    QFont font(QString::fromWCharArray(dialogTemplate.fontFace));
    font.setPointSize(dialogTemplate.fontPointSize);
    return font;
}

DialogBaseUnits BaseUnitsOf(const QFont& font) {
    const QFontMetrics metrics(font);
    const int alphabet = metrics.horizontalAdvance(
        QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"));
    return {(alphabet / 26 + 1) / 2, metrics.height()};
}

QRect DialogUnitsToPixels(const QRect& units, DialogBaseUnits base) {
    return {MulDiv(units.x(), base.cx, 4), MulDiv(units.y(), base.cy, 8),
            MulDiv(units.width(), base.cx, 4), MulDiv(units.height(), base.cy, 8)};
}

void BuildDialog(QDialog& dialog, const DialogTemplate& dialogTemplate, const QFont& controlFont,
                 const ControlFactory& factory) {
    const DialogBaseUnits base = BaseUnitsOf(TemplateFont(dialogTemplate));
    dialog.setWindowTitle(QString::fromWCharArray(dialogTemplate.caption));
    dialog.setFont(controlFont);
    dialog.setFixedSize(
        DialogUnitsToPixels({0, 0, dialogTemplate.cx, dialogTemplate.cy}, base).size());
    for (const ControlTemplate& control : dialogTemplate.controls) {
        QWidget* widget = factory ? factory(control, &dialog) : nullptr;
        if (widget == nullptr) widget = MakeStandardControl(control, &dialog);
        if (control.id != IDC_STATIC) widget->setObjectName(QString::number(control.id));
        widget->setFont(controlFont);
        widget->setGeometry(
            DialogUnitsToPixels({control.x, control.y, control.cx, control.cy}, base));
        if (control.kind == ControlKind::GroupBox) widget->lower();
    }
}

QWidget* GetDlgItem(const QWidget& dialog, int id) {
    return dialog.findChild<QWidget*>(QString::number(id));
}

void EnableDlgItem(const QWidget& dialog, int id, bool enable) {
    if (QWidget* item = GetDlgItem(dialog, id)) item->setEnabled(enable);
}
