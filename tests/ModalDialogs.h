// Acting on a modal dialog from a test while the code under test waits in its event loop.
#pragma once

#include <functional>
#include <memory>

class QDialog;
class QTimer;
class QWidget;

// Runs the action on the next modal dialog as soon as it is shown (polling the event loop), once,
// for as long as the watch lives.
class ModalWatch final {
public:
    explicit ModalWatch(std::function<void(QDialog&)> action);
    ~ModalWatch();
    ModalWatch(const ModalWatch&) = delete;
    ModalWatch& operator=(const ModalWatch&) = delete;

    bool fired() const { return *m_fired; }

private:
    std::unique_ptr<QTimer> m_timer;
    std::shared_ptr<bool> m_fired;
};

// A left click on the dialog's control of this id; false when there is none.
bool ClickDlgItem(const QWidget& dialog, int id);
