// Acting on a modal dialog from a test while the code under test waits in its event loop.
#pragma once

#include <functional>

class QDialog;
class QWidget;

// Runs `action` on the next modal dialog as soon as it is shown (polling the event loop), once.
void WhenModal(std::function<void(QDialog&)> action);

// A left click in the middle of the dialog's control of this id; false when there is none.
bool ClickDlgItem(const QWidget& dialog, int id);
