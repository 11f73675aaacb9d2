// A module's modal dialogs step aside while the editor waits for input in the drawing or on the
// command line, as a CAD program hides a dialog that hands control to the editor: hidden when a
// prompt starts to wait, shown again once control is back with the dialog (the event loop runs
// and no prompt waits). A dialog hidden so keeps running modally: its module's code goes on
// after the prompt as if the dialog had never left.
#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <vector>

class QWidget;

class DialogsAside final : public QObject {
public:
    explicit DialogsAside(QObject* parent = nullptr);

    // A prompt starts to wait: every modal window shown now is hidden, and `host` (the window
    // that takes the input) comes to the front.
    void promptWaits(QWidget* host);
    // The prompt has its answer: the hidden windows come back unless another prompt follows
    // before the event loop runs again.
    void promptAnswered();
    bool anyAside() const { return !m_hidden.empty(); }

private:
    void restore();

    std::vector<QPointer<QWidget>> m_hidden;
    QTimer m_restore;
};
