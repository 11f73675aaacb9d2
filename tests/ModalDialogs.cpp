// Driving modal dialogs from tests.
#include "tests/ModalDialogs.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QTest>
#include <QTimer>

#include "resources/DialogBuilder.h"

ModalWatch::ModalWatch(std::function<void(QDialog&)> action)
    : m_timer(std::make_unique<QTimer>()), m_fired(std::make_shared<bool>(false)) {
    m_timer->setInterval(5);
    QTimer* timer = m_timer.get();
    QObject::connect(timer, &QTimer::timeout, timer,
                     [timer, fired = m_fired, action = std::move(action)] {
                         auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
                         if (dialog == nullptr || !dialog->isVisible()) return;
                         timer->stop();
                         *fired = true;
                         action(*dialog);
                     });
    m_timer->start();
}

ModalWatch::~ModalWatch() = default;

bool ClickDlgItem(const QWidget& dialog, int id) {
    QWidget* item = GetDlgItem(dialog, id);
    if (item == nullptr) return false;
    // A check box answers on its box and its text, which need not reach the middle.
    const QPoint point = qobject_cast<QCheckBox*>(item) != nullptr ? QPoint(6, item->height() / 2)
                                                                   : item->rect().center();
    QTest::mouseClick(item, Qt::LeftButton, {}, point);
    return true;
}
