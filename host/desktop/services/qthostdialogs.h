// The host's own dialogs on Qt: the file dialog behind `acedGetFileD` and the alert box behind
// `acedAlert`. Every editor of a Qt host answers those two calls with these.
#pragma once

#include <QString>
#include <string>

class QWidget;

// The title of the host's boxes: the application's display name.
QString hostDialogTitle();

// Flags 1: a file to create (save dialog, overwrite confirmed); 2: an existing file (open dialog).
// The extension ("prc") filters the list and is appended to a name typed without one. RTNORM with
// the chosen path, or RTERROR (-5001) when the user cancels.
int runFileDialog(QWidget* parent, const std::wstring& title, const std::wstring& defaultName,
                  const std::wstring& extension, int flags, std::wstring& path);

// The alert box: the message (leading line breaks dropped) with an OK button. RTNORM.
int showAlertBox(QWidget* parent, const std::wstring& message);
