// Realises a dialog template as the children of a QDialog, placing every control where the Windows
// dialog manager would: dialog units turned into pixels with the template font's average character
// width and height.
#pragma once

#include <QFont>
#include <QRect>
#include <functional>

#include "resources/DialogTemplate.h"

class QDialog;
class QWidget;

struct DialogBaseUnits {
    int cx = 0;  // average character width, pixels
    int cy = 0;  // character height, pixels
};

// The template's font at its point size. Windows faces that Linux lacks are looked for under
// metric-compatible names ("MS Sans Serif" as Liberation Sans, "Courier" as Liberation Mono).
QFont TemplateFont(const DialogTemplate& dialogTemplate);
// The font's base units as Windows computes them: the width of "A".."Z""a".."z" / 52, rounded,
// and the full character height.
DialogBaseUnits BaseUnitsOf(const QFont& font);
// x and width by cx / 4, y and height by cy / 8, each rounded.
QRect DialogUnitsToPixels(const QRect& units, DialogBaseUnits base);

// Makes the control of a template entry, or returns null to let the builder make the standard one
// (the way a dialog subclasses one of its controls with a class of its own).
using ControlFactory = std::function<QWidget*(const ControlTemplate&, QWidget* parent)>;

// Sets the caption and the fixed client size and creates every control as a child of the dialog,
// in template order (which is the tab order), named after its id (`objectName` "216"), shown in
// `controlFont`. The sizes come from the template font, whatever `controlFont` is.
void BuildDialog(QDialog& dialog, const DialogTemplate& dialogTemplate, const QFont& controlFont,
                 const ControlFactory& factory = {});

// The control of this id among the dialog's children, or null.
QWidget* GetDlgItem(const QWidget& dialog, int id);
// Enables or disables the control of this id; an unknown id changes nothing.
void EnableDlgItem(const QWidget& dialog, int id, bool enable);
