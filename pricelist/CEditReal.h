// An edit control for an unsigned decimal number: only digits, backspace and one decimal point can
// be typed; every other character is dropped without a sound.
#pragma once

#include <QLineEdit>
#include <string_view>

class CEditReal final : public QLineEdit {
    Q_OBJECT

public:
    explicit CEditReal(QWidget* parent = nullptr);

    // Whether a typed character (backspace is 8) goes on to the edit holding `text`. A "." is
    // refused while the text holds one anywhere, even when it is selected and would be replaced.
    static bool AcceptsCharacter(std::wstring_view text, int character);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
